// SPDX-License-Identifier: Apache-2.0
#include "foundation/parser_limits.h"

#include <unordered_map>
#include <vector>

#include <xercesc/sax/Locator.hpp>
#include <xercesc/validators/DTD/DTDAttDef.hpp>
#include <xercesc/validators/DTD/DTDElementDecl.hpp>
#include <xercesc/validators/DTD/DTDEntityDecl.hpp>
#include <xercesc/validators/common/ContentSpecNode.hpp>

#include "foundation/entity_budget.h"
#include "foundation/failure.h"
#include "foundation/limits.h"

namespace quen::internal {

void ParserLimits::CheckDoctype(const char16_t* inSystemId) const {
  // Here and not where the resource is asked for: the engine leaks a little for each subset refused
  // there.
  if (entities_ != nullptr && inSystemId != nullptr && *inSystemId != 0)
    Refuse(u"The external DTD subset '" + wstring(inSystemId) + u"' is not read");
}

void ParserLimits::CheckEntity(const xercesc::DTDEntityDecl& inEntity, bool inIsParameter) const {
  if (entities_ != nullptr && !inEntity.isExternal() &&
      !entities_->Knows(inIsParameter, OrEmpty(inEntity.getName()),
                        std::u16string_view(inEntity.getValue(), inEntity.getValueLen()))) {
    Refuse(u"The entity '" + OrEmpty(inEntity.getName()) +
           u"' is declared through a parameter entity");
  }
}

void ParserLimits::CheckModel(const xercesc::DTDElementDecl& inElement) {
  if (entities_ == nullptr || inElement.getModelType() != xercesc::DTDElementDecl::Children) return;
  std::unordered_map<std::u16string_view, std::size_t> repeats;
  std::size_t places = 0;
  std::vector<const xercesc::ContentSpecNode*> waiting{
      const_cast<xercesc::DTDElementDecl&>(inElement).getContentSpec()};
  while (!waiting.empty()) {
    const xercesc::ContentSpecNode* const node = waiting.back();
    waiting.pop_back();
    if (node == nullptr) continue;
    if (node->getType() == xercesc::ContentSpecNode::Leaf && node->getElement() != nullptr) {
      ++places;
      if (++repeats[node->getElement()->getRawName()] > kMaxModelRepeats) RefuseModel();
    }
    waiting.push_back(node->getFirst());
    waiting.push_back(node->getSecond());
  }
  modelWork_ += std::uint64_t{places} * places;
  if (places > kMaxModelPlaces || modelWork_ > kMaxModelWork) RefuseModel();
}

namespace {
std::u16string_view WithoutPrefix(std::u16string_view inName) {
  return inName.substr(inName.find(u':') + 1);
}
}  // namespace

void ParserLimits::CheckDefault(const xercesc::DTDElementDecl& inElement,
                                const xercesc::DTDAttDef& inAttribute) {
  const bool hasDefault = inAttribute.getDefaultType() == xercesc::XMLAttDef::Default ||
                          inAttribute.getDefaultType() == xercesc::XMLAttDef::Fixed;
  if (!hasDefault) return;
  if (entities_ != nullptr && ++attributeDefaults_ > kMaxAttributeDefaults)
    Refuse(u"The DTD has more attribute defaults than the limit of this library");
  const char16_t* const value = inAttribute.getValue();
  defaultsOf_[std::u16string(WithoutPrefix(inElement.getFullName()))] +=
      std::u16string_view(value != nullptr ? value : u"").size() + kReferenceCost;
}

void ParserLimits::StartElement(const xercesc::XMLElementDecl& inDeclaration, unsigned int inUri,
                                const xercesc::RefVectorOf<xercesc::XMLAttr>& inAttributes,
                                XMLSize_t inCount) {
  if (++depth_ > kMaxDepth) Refuse(u"The elements nest deeper than the limit of this library");
  // The engine numbers element names and namespace names as it meets them.
  if (inDeclaration.getId() > kMaxDistinctNames || inUri > kMaxDistinctNames) RefuseNames();
  if (inCount > 0) CheckAttributes(inAttributes, inCount);
  if (defaultsOf_.empty()) return;
  const auto defaults =
      defaultsOf_.find(std::u16string(WithoutPrefix(inDeclaration.getFullName())));
  if (defaults != defaultsOf_.end()) defaulted_ += defaults->second;
  if (defaulted_ > kMaxExpansion)
    Refuse(u"The attribute defaults expand beyond the limit of this library");
}

void ParserLimits::CheckAttributes(const xercesc::RefVectorOf<xercesc::XMLAttr>& inAttributes,
                                   XMLSize_t inCount) {
  if (inCount > kMaxAttributes)
    Refuse(u"The element has more attributes than the limit of this library");
  attributeWork_ += std::uint64_t{inCount} * inCount;
  attributeCount_ += inCount;
  if (attributeWork_ > kMaxAttributeWork + kAttributeWorkPerAttribute * attributeCount_)
    Refuse(u"The elements have more attributes than the limit of this library");
  for (XMLSize_t i = 0; i < inCount; ++i) {
    const xercesc::XMLAttr* const attribute = inAttributes.elementAt(i);
    const std::u16string_view name(attribute->getName());
    if (attributeNames_.Add(attribute->getQName()) > kMaxDistinctNames) RefuseNames();
    const bool declaresNamespace =
        std::u16string_view(attribute->getPrefix()) == u"xmlns" || name == u"xmlns";
    if (declaresNamespace && (namespaces_.Add(attribute->getValue()) > kMaxDistinctNames ||
                              prefixes_.Add(name) > kMaxDistinctPrefixes)) {
      RefuseNames();
    }
  }
}

void ParserLimits::RefuseResource(const wstring& inLocation) const {
  Refuse(u"The external resource '" + inLocation + u"' is not read");
}

void ParserLimits::RefuseNames() const {
  Refuse(u"The document has more different names than the limit of this library");
}

void ParserLimits::RefuseModel() const {
  Refuse(u"The content model is larger than the limit of this library");
}

void ParserLimits::Refuse(wstring inMessage) const {
  InputFailure failure{std::move(inMessage)};
  if (place_ != nullptr) {
    failure.line = static_cast<std::size_t>(place_->getLineNumber());
    failure.column = static_cast<std::size_t>(place_->getColumnNumber());
  }
  throw ParseStop{std::move(failure)};
}

}  // namespace quen::internal

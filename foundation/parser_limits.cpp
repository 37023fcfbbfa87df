// SPDX-License-Identifier: Apache-2.0
#include "foundation/parser_limits.h"

#include <unordered_map>

#include <xercesc/sax/Locator.hpp>
#include <xercesc/validators/DTD/DTDAttDef.hpp>
#include <xercesc/validators/DTD/DTDElementDecl.hpp>
#include <xercesc/validators/DTD/DTDEntityDecl.hpp>
#include <xercesc/validators/common/ContentSpecNode.hpp>

#include "foundation/entity_budget.h"
#include "foundation/failure.h"
#include "foundation/limits.h"

namespace quen::internal {

void ParserLimits::CheckDoctype(const char16_t* inSystemId) {
  hasDoctype_ = true;
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

namespace {
// Calls back with each name in the content model.
template <class Callback>
void ForEachName(const xercesc::DTDElementDecl& inElement, const Callback& inCallback) {
  std::vector<const xercesc::ContentSpecNode*> waiting{
      const_cast<xercesc::DTDElementDecl&>(inElement).getContentSpec()};
  while (!waiting.empty()) {
    const xercesc::ContentSpecNode* const node = waiting.back();
    waiting.pop_back();
    if (node == nullptr) continue;
    if (node->getType() == xercesc::ContentSpecNode::Leaf && node->getElement() != nullptr)
      inCallback(node->getElement()->getRawName());
    waiting.push_back(node->getFirst());
    waiting.push_back(node->getSecond());
  }
}

// Of an attribute that takes one of a list, in names; 0 for others.
std::uint64_t ListOf(const xercesc::XMLAttDef& inAttribute) {
  const char16_t* const list = inAttribute.getEnumeration();
  return list == nullptr ? 0 : std::u16string_view(list).size() / kUnitsPerDeclaredName;
}
}  // namespace

void ParserLimits::CheckModel(const xercesc::DTDElementDecl& inElement) {
  if (entities_ == nullptr || inElement.getModelType() != xercesc::DTDElementDecl::Children) return;
  std::unordered_map<std::u16string_view, std::size_t> repeats;
  std::size_t places = 0;
  ForEachName(inElement, [&](const char16_t* name) {
    ++places;
    if (++repeats[name] > kMaxModelRepeats) RefuseModel();
  });
  modelWork_ += std::uint64_t{places} * places;
  if (places > kMaxModelPlaces || modelWork_ > kMaxModelWork) RefuseModel();
}

namespace {
std::u16string_view WithoutPrefix(std::u16string_view inName) {
  return inName.substr(inName.find(u':') + 1);
}
}  // namespace

void ParserLimits::CheckAttribute(const xercesc::DTDElementDecl& inElement,
                                  const xercesc::DTDAttDef& inAttribute) {
  if (entities_ != nullptr) {
    const std::uint64_t list = ListOf(inAttribute);
    AddDeclaredWork(list * list);
  }
  const bool hasDefault = inAttribute.getDefaultType() == xercesc::XMLAttDef::Default ||
                          inAttribute.getDefaultType() == xercesc::XMLAttDef::Fixed;
  if (!hasDefault) return;
  if (entities_ != nullptr && ++attributeDefaults_ > kMaxAttributeDefaults)
    Refuse(u"The DTD has more attribute defaults than the limit of this library");
  const char16_t* const value = inAttribute.getValue();
  defaultsOf_[std::u16string(WithoutPrefix(inElement.getFullName()))] +=
      std::u16string_view(value != nullptr ? value : u"").size() + kNodeCost;
}

void ParserLimits::StartElement(const xercesc::XMLElementDecl& inDeclaration, unsigned int inUri,
                                const xercesc::RefVectorOf<xercesc::XMLAttr>& inAttributes,
                                XMLSize_t inCount) {
  if (++depth_ > kMaxDepth) Refuse(u"The elements nest deeper than the limit of this library");
  // The engine numbers element names and namespace names as it meets them.
  if (inDeclaration.getId() > kMaxDistinctNames || inUri > kMaxDistinctNames) RefuseNames();
  if (inCount > 0) CheckAttributes(inAttributes, inCount);
  if (hasDoctype_) CheckDeclaredWork(inDeclaration, inAttributes, inCount);
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

const ParserLimits::Declared& ParserLimits::DeclaredFor(const xercesc::DTDElementDecl& inElement) {
  const auto [declared, isNew] = declared_.try_emplace(&inElement);
  Declared& known = declared->second;
  if (!isNew) return known;
  ForEachName(inElement, [&](const char16_t*) { ++known.names; });
  if (!inElement.hasAttDefs()) return known;
  const xercesc::XMLAttDefList& attributes = inElement.getAttDefList();
  for (XMLSize_t i = 0; i < attributes.getAttDefCount(); ++i) {
    const bool isRequired =
        attributes.getAttDef(i).getDefaultType() == xercesc::XMLAttDef::Required;
    known.attributes += isRequired ? kRequiredAttributeWork : 1;
  }
  return known;
}

void ParserLimits::CheckDeclaredWork(const xercesc::XMLElementDecl& inDeclaration,
                                     const xercesc::RefVectorOf<xercesc::XMLAttr>& inAttributes,
                                     XMLSize_t inCount) {
  declaredNodes_ += 1 + inCount;
  std::uint64_t work = namesOfOpen_.empty() ? 0 : namesOfOpen_.back();
  namesOfOpen_.push_back(0);
  if (inDeclaration.getObjectType() == xercesc::XMLElementDecl::DTD) {
    const auto& element = static_cast<const xercesc::DTDElementDecl&>(inDeclaration);
    const Declared& known = DeclaredFor(element);
    namesOfOpen_.back() = known.names;
    work += known.attributes;
    for (XMLSize_t i = 0; known.attributes > 0 && i < inCount; ++i) {
      const xercesc::XMLAttr* const attribute = inAttributes.elementAt(i);
      if (attribute->getType() != xercesc::XMLAttDef::Enumeration &&
          attribute->getType() != xercesc::XMLAttDef::Notation)
        continue;
      if (const auto* const definition = element.getAttDef(attribute->getQName()))
        work += ListOf(*definition);
    }
  }
  AddDeclaredWork(work);
}

void ParserLimits::AddDeclaredWork(std::uint64_t inWork) {
  declaredWork_ += inWork;
  if (declaredWork_ > kMaxDeclaredWork + kDeclaredWorkPerNode * declaredNodes_)
    Refuse(u"The DTD declares more for the elements than the limit of this library");
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

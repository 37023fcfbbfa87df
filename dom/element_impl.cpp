// SPDX-License-Identifier: Apache-2.0
#include "dom/element_impl.h"

#include "dom/attr_iterator.h"
#include "dom/clauses.h"
#include "dom/element_iterator.h"
#include "dom/tree_copy.h"
#include "foundation/failure.h"

namespace quen {

using internal::Guarded;
using internal::NodeClauses;
using internal::OrEmpty;

CQuenXMLElementImpl2w::~CQuenXMLElementImpl2w() = default;

wstring CQuenXMLElementImpl2w::GetValue() const {
  constexpr const char16_t* kContext = u"CQuenXMLElementImpl2w::GetValue()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(
      kContext, [&] { return IsElement() ? ElementValue() : CQuenXMLNodeImpl2w::GetValue(); });
}

void CQuenXMLElementImpl2w::SetValue(const wstring& inValue) {
  constexpr const char16_t* kContext = u"CQuenXMLElementImpl2w::SetValue()";
  CheckInitialized(kContext);
  Guarded<NodeClauses>(kContext, [&] {
    IsElement() ? SetElementValue(inValue) : CQuenXMLNodeImpl2w::SetValue(inValue);
  });
}

wstring CQuenXMLElementImpl2w::GetAttribute(const wstring& inName) const {
  constexpr const char16_t* kContext = u"CQuenXMLElementImpl2w::GetAttribute()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext,
                              [&] { return OrEmpty(Element()->getAttribute(inName.c_str())); });
}

void CQuenXMLElementImpl2w::SetAttribute(const wstring& inName, const wstring& inValue) {
  constexpr const char16_t* kContext = u"CQuenXMLElementImpl2w::SetAttribute()";
  CheckInitialized(kContext);
  Guarded<NodeClauses>(kContext, [&] {
    xercesc::DOMAttr* const attribute = Element()->getAttributeNode(inName.c_str());
    if (attribute != nullptr) {
      internal::SetAttributeText(attribute, inValue);
    } else {
      Element()->setAttribute(inName.c_str(), inValue.c_str());
    }
  });
}

void CQuenXMLElementImpl2w::RemoveAttribute(const wstring& inName) {
  constexpr const char16_t* kContext = u"CQuenXMLElementImpl2w::RemoveAttribute()";
  CheckInitialized(kContext);
  Guarded<NodeClauses>(kContext, [&] {
    if (Element()->getAttributeNode(inName.c_str()) == nullptr) return;
    // removeAttribute() would give the node to the next attribute that is made, under the handles
    // on it.
    Element()->getAttributes()->removeNamedItem(inName.c_str());
  });
}

bool CQuenXMLElementImpl2w::HasAttribute(const wstring& inName) const {
  return FindAttribute(inName) != nullptr;
}

bool CQuenXMLElementImpl2w::HasAttribute(const wstring& inName, const wstring& inValue) const {
  const xercesc::DOMAttr* const attribute = FindAttribute(inName);
  return attribute != nullptr && inValue == attribute->getValue();
}

// The engine's name ends at a zero unit.
const xercesc::DOMAttr* CQuenXMLElementImpl2w::FindAttribute(const wstring& inName) const {
  const xercesc::DOMAttr* const attribute = Element()->getAttributeNode(inName.c_str());
  return attribute != nullptr && inName == attribute->getName() ? attribute : nullptr;
}

bool CQuenXMLElementImpl2w::HasParent() const {
  CheckInitialized(u"CQuenXMLElementImpl2w::GetParent()");
  const xercesc::DOMNode* const parent = node_->getParentNode();
  return parent != nullptr && parent->getNodeType() == xercesc::DOMNode::ELEMENT_NODE;
}

element_iteratorImpl2w CQuenXMLElementImpl2w::begin() const {
  constexpr const char16_t* kContext = u"CQuenXMLElementImpl2w::begin()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] { return element_iteratorImpl2w(this); });
}

element_iteratorImpl2w CQuenXMLElementImpl2w::end() const {
  constexpr const char16_t* kContext = u"CQuenXMLElementImpl2w::end()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] { return element_iteratorImpl2w(this).AtEnd(); });
}

element_iteratorImpl2w CQuenXMLElementImpl2w::find(const wstring& inName) const {
  constexpr const char16_t* kContext = u"CQuenXMLElementImpl2w::find()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] { return element_iteratorImpl2w(this).find(inName); });
}

bool CQuenXMLElementImpl2w::empty() const {
  CheckInitialized(u"CQuenXMLElementImpl2w::empty()");
  return internal::FirstChildElement(node_) == nullptr;
}

namespace {

constexpr const char16_t* kEndContext = u"CQuenXMLElementImpl2w::end()";
constexpr const char16_t* kInsertContext = u"element_iteratorImpl2w::insert()";

}  // namespace

CQuenXMLElementImpl2w CQuenXMLElementImpl2w::AppendElement(const wstring& inName) {
  CheckInitialized(kEndContext);
  return Guarded<NodeClauses>(kInsertContext, [&] {
    xercesc::DOMElement* const child = node_->getOwnerDocument()->createElement(inName.c_str());
    internal::AppendNew(Element(), child);
    return CQuenXMLElementImpl2w(child);
  });
}

void CQuenXMLElementImpl2w::AppendNew(const CQuenXMLNodeImpl2w& inNew) {
  Guarded<NodeClauses>(u"CQuenXMLNodeImpl2w::AppendChild()",
                       [&] { internal::AppendNew(Element(), inNew.GetDOMNode()); });
}

CQuenXMLElementImpl2w CQuenXMLElementImpl2w::AppendElement(const CQuenXMLElement2w& inElement) {
  CheckInitialized(kEndContext);
  return Guarded<NodeClauses>(kInsertContext, [&] {
    inElement.GetImpl()->CheckInitialized(kInsertContext);
    return CQuenXMLElementImpl2w(CQuenXMLNodeImpl2w(
        node_->appendChild(internal::LocalNode(node_, inElement.GetImpl()->GetDOMNode()))));
  });
}

element_iteratorImpl2w CQuenXMLElementImpl2w::GetParentIterator() const {
  constexpr const char16_t* kContext = u"CQuenXMLElementImpl2w::GetParentIterator()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] {
    const CQuenXMLElementImpl2w parent(GetParent());
    if (parent == nullptr) {
      ThrowXMLException2w(kContext, kOutOfRange,
                          u"Current node is at root, can not get parent iterator.");
    }
    const CQuenXMLElementImpl2w grandparent(parent.GetParent());
    if (grandparent == nullptr) {
      ThrowXMLException2w(kContext, kOutOfRange,
                          u"The parent node is root, can not get parent iterator.");
    }
    return element_iteratorImpl2w(&grandparent).At(parent);
  });
}

element_iteratorImpl2w CQuenXMLElementImpl2w::GetSiblingIterator() const {
  constexpr const char16_t* kContext = u"CQuenXMLElementImpl2w::GetSiblingIterator()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] {
    if (!HasParent()) {
      ThrowXMLException2w(kContext, kOutOfRange,
                          u"Current node is at root, can not get sibling iterator.");
    }
    const CQuenXMLElementImpl2w parent(GetParent());
    return element_iteratorImpl2w(&parent).At(*this);
  });
}

attr_iteratorImpl2w CQuenXMLElementImpl2w::attr_begin() const {
  constexpr const char16_t* kContext = u"CQuenXMLElementImpl2w::attr_begin()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] { return attr_iteratorImpl2w(*this); });
}

attr_iteratorImpl2w CQuenXMLElementImpl2w::attr_end() const {
  constexpr const char16_t* kContext = u"CQuenXMLElementImpl2w::attr_end()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] { return attr_iteratorImpl2w(*this).AtEnd(); });
}

attr_iteratorImpl2w CQuenXMLElementImpl2w::attr_find(const wstring& inName) const {
  constexpr const char16_t* kContext = u"CQuenXMLElementImpl2w::attr_find()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] { return attr_iteratorImpl2w(*this).find(inName); });
}

bool CQuenXMLElementImpl2w::attr_empty() const {
  CheckInitialized(u"CQuenXMLElementImpl2w::attr_empty()");
  return !node_->hasAttributes();
}

}  // namespace quen

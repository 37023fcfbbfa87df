// SPDX-License-Identifier: Apache-2.0
#ifndef QUENXML2_DOM_ELEMENT_IMPL_H_
#define QUENXML2_DOM_ELEMENT_IMPL_H_

#include "dom/node_impl.h"

namespace quen {

class CQuenXMLElementImpl2w : public CQuenXMLNodeImpl2w {
 public:
  CQuenXMLElementImpl2w() = default;
  explicit CQuenXMLElementImpl2w(xercesc::DOMNode* inNode) : CQuenXMLNodeImpl2w(inNode) {}
  CQuenXMLElementImpl2w(const CQuenXMLElementImpl2w& inOther) = default;
  CQuenXMLElementImpl2w& operator=(const CQuenXMLElementImpl2w& inOther) = default;
  // Null if `inNode` is no element; throws 8 if it is null itself.
  explicit CQuenXMLElementImpl2w(const CQuenXMLNodeImpl2w& inNode)
      : CQuenXMLNodeImpl2w(inNode.GetNodeType() == CQuenXMLNode2w::ElementNode ? inNode.GetDOMNode()
                                                                               : nullptr) {}

  ~CQuenXMLElementImpl2w() override;
  wstring GetValue() const override;
  void SetValue(const wstring& inValue) override;

  wstring GetAttribute(const wstring& inName) const;
  void SetAttribute(const wstring& inName, const wstring& inValue);
  void RemoveAttribute(const wstring& inName);
  bool HasParent() const;

  element_iteratorImpl2w begin() const;
  element_iteratorImpl2w end() const;
  element_iteratorImpl2w find(const wstring& inName) const;
  bool empty() const;
  // What inserting at the end does, without the walk that an iterator takes to count.
  CQuenXMLElementImpl2w AppendElement(const wstring& inName);
  CQuenXMLElementImpl2w AppendElement(const CQuenXMLElement2w& inElement);
  element_iteratorImpl2w GetParentIterator() const;
  element_iteratorImpl2w GetSiblingIterator() const;

  attr_iteratorImpl2w attr_begin() const;
  attr_iteratorImpl2w attr_end() const;
  attr_iteratorImpl2w attr_find(const wstring& inName) const;
  bool attr_empty() const;

  // AppendChild for a node that was just made by a factory of this element's document.
  void AppendNew(const CQuenXMLNodeImpl2w& inNew);

  // Null at the end of the chain.
  CQuenXMLElementImpl2w FirstChildElement() const {
    return CQuenXMLElementImpl2w(internal::FirstChildElement(node_));
  }
  CQuenXMLElementImpl2w NextSiblingElement() const {
    return CQuenXMLElementImpl2w(internal::NextSiblingElement(node_));
  }
  // Whether the qualified name is exactly `inName`.
  bool IsNamed(const wstring& inName) const { return inName == node_->getNodeName(); }
  // Whether there is an attribute of exactly this name, and with exactly this value.
  bool HasAttribute(const wstring& inName) const;
  bool HasAttribute(const wstring& inName, const wstring& inValue) const;

  xercesc::DOMElement* Element() const { return static_cast<xercesc::DOMElement*>(node_); }

 private:
  // False in a copy of an element handle that was assigned a node of another kind through its base.
  bool IsElement() const { return node_->getNodeType() == xercesc::DOMNode::ELEMENT_NODE; }
  const xercesc::DOMAttr* FindAttribute(const wstring& inName) const;
};

}  // namespace quen

#endif  // QUENXML2_DOM_ELEMENT_IMPL_H_

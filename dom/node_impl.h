// SPDX-License-Identifier: Apache-2.0
//
// What stands behind a handle: a pointer to a DOM node, and the operations on it.
//
// An implementation does not own its node, but for the document's, and costs nothing to make on the
// stack. Operations begin with the readiness check; foreign exceptions become the library's own
// here.
#ifndef QUENXML2_DOM_NODE_IMPL_H_
#define QUENXML2_DOM_NODE_IMPL_H_

#include <vector>

#include <quenxml2/dom.h>
#include <xercesc/dom/DOM.hpp>

namespace quen {

class CQuenXMLNodeImpl2w {
 public:
  using NodeType = CQuenXMLNode2w::NodeType;

  CQuenXMLNodeImpl2w() = default;
  explicit CQuenXMLNodeImpl2w(xercesc::DOMNode* inNode) : node_(inNode) {}
  CQuenXMLNodeImpl2w(const CQuenXMLNodeImpl2w& inOther) = default;
  CQuenXMLNodeImpl2w& operator=(const CQuenXMLNodeImpl2w& inOther) = default;

  virtual ~CQuenXMLNodeImpl2w();
  virtual wstring GetName() const;
  virtual wstring GetValue() const;
  virtual NodeType GetNodeType() const;
  virtual wstring GetNamespaceURI() const;
  virtual wstring GetPrefix() const;
  virtual bool HasChildNodes() const;
  virtual bool HasAttributes() const;
  virtual CQuenXMLNodeImpl2w GetParent() const;
  virtual CQuenXMLNodeImpl2w GetNextSibling() const;
  virtual CQuenXMLNodeImpl2w GetPreviousSibling() const;
  virtual CQuenXMLNodeImpl2w GetFirstChild() const;
  virtual CQuenXMLNodeImpl2w GetLastChild() const;
  virtual std::unique_ptr<CQuenXMLDocumentImpl2w> GetOwnerDocument() const;
  virtual wstring GetSubset() const;
  virtual wstring GetFormattedSubset() const;
  virtual void SetValue(const wstring& inValue);
  virtual void SetPrefix(const wstring& inPrefix);
  virtual CQuenXMLNodeImpl2w InsertBefore(const CQuenXMLNodeImpl2w& inNew,
                                          const CQuenXMLNodeImpl2w& inRef);
  virtual CQuenXMLNodeImpl2w AppendChild(const CQuenXMLNodeImpl2w& inNew);
  virtual CQuenXMLNodeImpl2w ReplaceChild(const CQuenXMLNodeImpl2w& inNew,
                                          const CQuenXMLNodeImpl2w& inOld);
  virtual CQuenXMLNodeImpl2w RemoveChild(const CQuenXMLNodeImpl2w& inOld);
  virtual void AppendSubset(const wstring& inXML);
  virtual CQuenXMLNodeImpl2w Clone(bool inDeep) const;
  virtual std::vector<CQuenXMLNode2w> SelectNodes(const wstring& inExpression) const;

  // The first node that the expression selects, null if there is none. What SelectSingleNode is
  // made of, without a handle.
  CQuenXMLNodeImpl2w SelectFirst(const wstring& inExpression) const;

  xercesc::DOMNode* GetDOMNode() const { return node_; }

  bool operator==(const CQuenXMLNodeImpl2w& inOther) const { return node_ == inOther.node_; }
  bool operator!=(const CQuenXMLNodeImpl2w& inOther) const { return node_ != inOther.node_; }
  bool operator==(const QuenXMLDOMNode2w_NullPtr*) const { return node_ == nullptr; }
  bool operator!=(const QuenXMLDOMNode2w_NullPtr*) const { return node_ != nullptr; }

  // Raises `inContext`, 8, "Node was not initialized" if there is no node.
  void CheckInitialized(const char16_t* inContext) const {
    if (node_ == nullptr) ThrowNotInitialized(inContext);
  }

 protected:
  wstring ElementValue() const;
  void SetElementValue(const wstring& inValue);

  xercesc::DOMNode* node_ = nullptr;

 private:
  [[noreturn]] static void ThrowNotInitialized(const char16_t* inContext);
  std::vector<xercesc::DOMNode*> Select(const wstring& inExpression, bool inFirstOnly) const;
};

namespace internal {

// The document that `inNode` belongs to; a document belongs to itself.
xercesc::DOMDocument* DocumentOf(const xercesc::DOMNode* inNode);

// `inNew` itself if it belongs to the document of `inTarget`, else a deep copy of it made there.
xercesc::DOMNode* LocalNode(const xercesc::DOMNode* inTarget, xercesc::DOMNode* inNew);

// What an iterator says that stands on nothing.
wstring IndexMessage(std::int32_t inIndex);

// Steps over everything that is no element; null at the end of the chain.
xercesc::DOMElement* FirstChildElement(const xercesc::DOMNode* inParent);
xercesc::DOMElement* LastChildElement(const xercesc::DOMNode* inParent);
xercesc::DOMElement* NextSiblingElement(xercesc::DOMNode* inNode);
xercesc::DOMElement* PreviousSiblingElement(const xercesc::DOMNode* inNode);

}  // namespace internal
}  // namespace quen

#endif  // QUENXML2_DOM_NODE_IMPL_H_

// SPDX-License-Identifier: Apache-2.0
#include "dom/node_impl.h"

#include "dom/clauses.h"
#include "dom/document_impl.h"
#include "dom/location_path.h"
#include "dom/node_access.h"
#include "dom/tree_copy.h"
#include "dom/xalan_selection.h"
#include "foundation/failure.h"
#include "foundation/impl_utils.h"
#include "foundation/parser.h"
#include "foundation/xml_writer.h"

namespace quen {

using internal::Guarded;
using internal::NodeClauses;
using internal::OrEmpty;
using xercesc::DOMNode;

namespace {

DOMNode* FirstText(const DOMNode* inElement) {
  DOMNode* child = inElement->getFirstChild();
  while (child != nullptr && child->getNodeType() != DOMNode::TEXT_NODE)
    child = child->getNextSibling();
  return child;
}

}  // namespace

CQuenXMLNodeImpl2w::~CQuenXMLNodeImpl2w() = default;

void CQuenXMLNodeImpl2w::ThrowNotInitialized(const char16_t* inContext) {
  ThrowXMLException2w(inContext, kNotInitialized, u"Node was not initialized");
}

wstring CQuenXMLNodeImpl2w::GetName() const {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::GetName()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] { return OrEmpty(node_->getNodeName()); });
}

wstring CQuenXMLNodeImpl2w::GetValue() const {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::Value()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] {
    return GetNodeType() == CQuenXMLNode2w::ElementNode ? ElementValue()
                                                        : OrEmpty(node_->getNodeValue());
  });
}

CQuenXMLNodeImpl2w::NodeType CQuenXMLNodeImpl2w::GetNodeType() const {
  CheckInitialized(u"CQuenXMLNodeImpl2w::GetNodeType()");
  return static_cast<NodeType>(node_->getNodeType());
}

wstring CQuenXMLNodeImpl2w::GetNamespaceURI() const {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::GetNamespaceURI()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] { return OrEmpty(node_->getNamespaceURI()); });
}

wstring CQuenXMLNodeImpl2w::GetPrefix() const {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::GetPrefix()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] { return OrEmpty(node_->getPrefix()); });
}

bool CQuenXMLNodeImpl2w::HasChildNodes() const {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::HasChildNodes()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] { return node_->hasChildNodes(); });
}

bool CQuenXMLNodeImpl2w::HasAttributes() const {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::HasAttributes()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] { return node_->hasAttributes(); });
}

CQuenXMLNodeImpl2w CQuenXMLNodeImpl2w::GetParent() const {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::GetParent()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] { return CQuenXMLNodeImpl2w(node_->getParentNode()); });
}

CQuenXMLNodeImpl2w CQuenXMLNodeImpl2w::GetNextSibling() const {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::GetNextSibling()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext,
                              [&] { return CQuenXMLNodeImpl2w(node_->getNextSibling()); });
}

CQuenXMLNodeImpl2w CQuenXMLNodeImpl2w::GetPreviousSibling() const {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::GetPreviousSibling()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext,
                              [&] { return CQuenXMLNodeImpl2w(node_->getPreviousSibling()); });
}

CQuenXMLNodeImpl2w CQuenXMLNodeImpl2w::GetFirstChild() const {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::GetFirstChild()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] { return CQuenXMLNodeImpl2w(node_->getFirstChild()); });
}

CQuenXMLNodeImpl2w CQuenXMLNodeImpl2w::GetLastChild() const {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::GetLastChild()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] { return CQuenXMLNodeImpl2w(node_->getLastChild()); });
}

std::unique_ptr<CQuenXMLDocumentImpl2w> CQuenXMLNodeImpl2w::GetOwnerDocument() const {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::GetOwnerDocument()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] {
    xercesc::DOMDocument* const owner = node_->getOwnerDocument();
    // A document has no owner to copy.
    if (owner == nullptr) ThrowXMLException2w(kContext, kUnknownFailure, u"Unknown Exception");
    return std::make_unique<CQuenXMLDocumentImpl2w>(owner);
  });
}

wstring CQuenXMLNodeImpl2w::GetSubset() const {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::GetSubset()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] { return internal::XmlText(node_, false); });
}

wstring CQuenXMLNodeImpl2w::GetFormattedSubset() const {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::GetFormattedSubset()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] { return internal::XmlText(node_, true); });
}

void CQuenXMLNodeImpl2w::SetValue(const wstring& inValue) {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::SetValue()";
  CheckInitialized(kContext);
  Guarded<NodeClauses>(kContext, [&] {
    if (GetNodeType() == CQuenXMLNode2w::ElementNode) {
      SetElementValue(inValue);
    } else if (node_->getNodeType() == DOMNode::ATTRIBUTE_NODE) {
      internal::SetAttributeText(static_cast<xercesc::DOMAttr*>(node_), inValue);
    } else {
      node_->setNodeValue(inValue.c_str());
    }
  });
}

wstring CQuenXMLNodeImpl2w::ElementValue() const {
  const DOMNode* const text = FirstText(node_);
  return text != nullptr ? OrEmpty(static_cast<const xercesc::DOMText*>(text)->getData())
                         : wstring();
}

void CQuenXMLNodeImpl2w::SetElementValue(const wstring& inValue) {
  DOMNode* const text = FirstText(node_);
  if (text != nullptr) {
    static_cast<xercesc::DOMText*>(text)->setData(inValue.c_str());
  } else {
    internal::AppendNew(static_cast<xercesc::DOMElement*>(node_),
                        node_->getOwnerDocument()->createTextNode(inValue.c_str()));
  }
}

void CQuenXMLNodeImpl2w::SetPrefix(const wstring& inPrefix) {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::SetPrefix()";
  CheckInitialized(kContext);
  Guarded<NodeClauses>(kContext, [&] {
    node_->setPrefix(inPrefix.c_str());
    // The engine leaves it where its old name was, and finds neither it nor its neighbours then.
    if (node_->getNodeType() == DOMNode::ATTRIBUTE_NODE)
      internal::SortRenamed(static_cast<xercesc::DOMAttr*>(node_));
  });
}

CQuenXMLNodeImpl2w CQuenXMLNodeImpl2w::InsertBefore(const CQuenXMLNodeImpl2w& inNew,
                                                    const CQuenXMLNodeImpl2w& inRef) {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::InsertBefore()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] {
    if (inNew.node_ == nullptr) return CQuenXMLNodeImpl2w();
    DOMNode* const node = internal::LocalNode(node_, inNew.node_);
    return CQuenXMLNodeImpl2w(node_->insertBefore(node, inRef.node_));
  });
}

CQuenXMLNodeImpl2w CQuenXMLNodeImpl2w::AppendChild(const CQuenXMLNodeImpl2w& inNew) {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::AppendChild()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] {
    if (inNew.node_ == nullptr) return CQuenXMLNodeImpl2w();
    DOMNode* const node = internal::LocalNode(node_, inNew.node_);
    return CQuenXMLNodeImpl2w(node_->appendChild(node));
  });
}

CQuenXMLNodeImpl2w CQuenXMLNodeImpl2w::ReplaceChild(const CQuenXMLNodeImpl2w& inNew,
                                                    const CQuenXMLNodeImpl2w& inOld) {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::ReplaceChild()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] {
    if (inNew.node_ == nullptr) return CQuenXMLNodeImpl2w();
    internal::CheckIsChild(node_, inOld.node_);
    // The engine would remove a node that is to replace itself.
    if (inNew.node_ == inOld.node_) return inOld;
    DOMNode* const node = internal::LocalNode(node_, inNew.node_);
    return CQuenXMLNodeImpl2w(node_->replaceChild(node, inOld.node_));
  });
}

CQuenXMLNodeImpl2w CQuenXMLNodeImpl2w::RemoveChild(const CQuenXMLNodeImpl2w& inOld) {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::RemoveChild()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] {
    internal::CheckIsChild(node_, inOld.node_);
    return CQuenXMLNodeImpl2w(node_->removeChild(inOld.node_));
  });
}

void CQuenXMLNodeImpl2w::AppendSubset(const wstring& inXML) {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::AppendSubset()";
  CheckInitialized(kContext);
  Guarded<NodeClauses>(kContext, [&] {
    DOMNode* parsed = nullptr;
    CQuenXMLImplUtils2w::BuildDOMNodeFromXMLString(inXML, &parsed);
    if (parsed == nullptr)
      ThrowXMLException2w(kContext, kUnknownFailure, u"Parsed document node is NULL");
    const internal::DocumentPtr document(static_cast<xercesc::DOMDocument*>(parsed));
    node_->appendChild(
        internal::ImportDeep(internal::DocumentOf(node_), document->getDocumentElement()));
  });
}

CQuenXMLNodeImpl2w CQuenXMLNodeImpl2w::Clone(bool inDeep) const {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::Clone()";
  CheckInitialized(kContext);
  return Guarded<NodeClauses>(kContext, [&] {
    DOMNode* const clone = inDeep ? internal::CloneDeep(node_) : node_->cloneNode(false);
    if (clone == nullptr) ThrowXMLException2w(kContext, kUnknownFailure, u"DOM node is NULL");
    return CQuenXMLNodeImpl2w(clone);
  });
}

std::vector<DOMNode*> CQuenXMLNodeImpl2w::Select(const wstring& inExpression,
                                                 bool inFirstOnly) const {
  constexpr const char16_t* kContext = u"CQuenXMLNodeImpl2w::SelectNodes()";
  CheckInitialized(kContext);
  return Guarded<internal::SelectClauses>(kContext, [&] {
    std::vector<DOMNode*> nodes;
    if (internal::DocumentOf(node_) == nullptr)
      ThrowXMLException2w(kContext, kXslFailure, u"Document node is NULL.");
    const std::u16string_view expression(inExpression.c_str());
    if (internal::SelectDirectly(*node_, expression, inFirstOnly, nodes) ==
        internal::Direct::kDeclined) {
      internal::SelectWithXalan(*node_, wstring(expression), inFirstOnly, nodes);
    }
    return nodes;
  });
}

std::vector<CQuenXMLNode2w> CQuenXMLNodeImpl2w::SelectNodes(const wstring& inExpression) const {
  const std::vector<DOMNode*> nodes = Select(inExpression, false);
  return Guarded<NodeClauses>(u"CQuenXMLNodeImpl2w::SelectNodes()", [&] {
    // Each is made as a null one in its place and then given its node.
    std::vector<CQuenXMLNode2w> handles(nodes.size(), CQuenXMLNode2w());
    for (std::size_t i = 0; i < nodes.size(); ++i) handles[i].impl_->node_ = nodes[i];
    return handles;
  });
}

CQuenXMLNodeImpl2w CQuenXMLNodeImpl2w::SelectFirst(const wstring& inExpression) const {
  const std::vector<DOMNode*> nodes = Select(inExpression, true);
  return nodes.empty() ? CQuenXMLNodeImpl2w() : CQuenXMLNodeImpl2w(nodes.front());
}

namespace internal {

wstring IndexMessage(std::int32_t inIndex) {
  return u"Index is out of range, current index = " + Decimal(inIndex) + u"\n";
}

xercesc::DOMDocument* DocumentOf(const DOMNode* inNode) {
  if (inNode->getNodeType() != DOMNode::DOCUMENT_NODE) return inNode->getOwnerDocument();
  // The engine's own signatures hand documents out without const.
  return const_cast<xercesc::DOMDocument*>(static_cast<const xercesc::DOMDocument*>(inNode));
}

DOMNode* LocalNode(const DOMNode* inTarget, DOMNode* inNew) {
  // The engine looks for the new node among the ancestors of the target, but not at the target.
  if (inNew == inTarget)
    throw xercesc::DOMException(xercesc::DOMException::HIERARCHY_REQUEST_ERR, 0);
  xercesc::DOMDocument* const document = DocumentOf(inTarget);
  return document == DocumentOf(inNew) ? inNew : ImportDeep(document, inNew);
}

namespace {

xercesc::DOMElement* SkipForward(DOMNode* inNode) {
  while (inNode != nullptr) {
    const NodeFacts facts = FactsOf(inNode);
    if (facts.type == DOMNode::ELEMENT_NODE) break;
    inNode = facts.next;
  }
  return static_cast<xercesc::DOMElement*>(inNode);
}

xercesc::DOMElement* SkipBackward(DOMNode* inNode) {
  while (inNode != nullptr && inNode->getNodeType() != DOMNode::ELEMENT_NODE)
    inNode = inNode->getPreviousSibling();
  return static_cast<xercesc::DOMElement*>(inNode);
}

}  // namespace

xercesc::DOMElement* FirstChildElement(const DOMNode* inParent) {
  return SkipForward(inParent->getFirstChild());
}
xercesc::DOMElement* LastChildElement(const DOMNode* inParent) {
  return SkipBackward(inParent->getLastChild());
}
xercesc::DOMElement* NextSiblingElement(DOMNode* inNode) {
  return SkipForward(FactsOf(inNode).next);
}
xercesc::DOMElement* PreviousSiblingElement(const DOMNode* inNode) {
  return SkipBackward(inNode->getPreviousSibling());
}

}  // namespace internal
}  // namespace quen

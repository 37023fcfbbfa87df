// SPDX-License-Identifier: Apache-2.0
//
// The shape of the tree, node by node: children, siblings, and the three leaf kinds.
#include <quenxml2/data.h>

#include "data/addressing.h"
#include "data/clauses.h"
#include "dom/document_impl.h"

namespace quen {

using internal::DataClauses;
using internal::Guarded;

namespace {

void CheckPosition(const internal::Cursor& inCursor) {
  if (inCursor == nullptr) {
    ThrowXMLException2w(u"CQuenXMLDataImpl::AddChildNode()", kNoPosition,
                        u"Position does not exist");
  }
}

// Appends a node that was just made. The short way is for elements alone.
void AppendTo(CQuenXMLNodeImpl2w& ioParent, const CQuenXMLNodeImpl2w& inNew) {
  xercesc::DOMNode* const parent = ioParent.GetDOMNode();
  if (parent != nullptr && parent->getNodeType() == xercesc::DOMNode::ELEMENT_NODE) {
    CQuenXMLElementImpl2w(parent).AppendNew(inNew);
  } else {
    ioParent.AppendChild(inNew);
  }
}

// The first direct child of `inElement` of that kind, null if there is none.
CQuenXMLNodeImpl2w FirstChildOf(const CQuenXMLElementImpl2w& inElement,
                                CQuenXMLNode2w::NodeType inType) {
  CQuenXMLNodeImpl2w child = inElement.GetFirstChild();
  while (child.GetDOMNode() != nullptr && child.GetNodeType() != inType)
    child = child.GetNextSibling();
  return child;
}

// The element that a read or removal of a leaf is about; null where nothing is to be done.
CQuenXMLElementImpl2w LeafParent(const internal::Cursor& inCursor, const wstring& inPath,
                                 bool& outIsThere) {
  outIsThere = !inPath.empty() || inCursor != nullptr;
  if (!outIsThere) return CQuenXMLElementImpl2w();
  return inPath.empty() ? internal::ElementAtCursor(inCursor)
                        : internal::ElementFromXPath(inCursor, inPath);
}

void GetLeaf(const internal::Cursor& inCursor, const wstring& inPath,
             CQuenXMLNode2w::NodeType inType, wstring& outText) {
  bool isThere = false;
  const CQuenXMLElementImpl2w element = LeafParent(inCursor, inPath, isThere);
  if (!isThere) return;
  const CQuenXMLNodeImpl2w leaf = FirstChildOf(element, inType);
  if (leaf.GetDOMNode() != nullptr) outText = leaf.GetValue();
}

void RemoveLeaf(const internal::Cursor& inCursor, const wstring& inPath,
                CQuenXMLNode2w::NodeType inType) {
  bool isThere = false;
  CQuenXMLElementImpl2w element = LeafParent(inCursor, inPath, isThere);
  if (!isThere) return;
  const CQuenXMLNodeImpl2w leaf = FirstChildOf(element, inType);
  if (leaf.GetDOMNode() != nullptr) element.RemoveChild(leaf);
}

}  // namespace

void CQuenXMLDataImpl2w::AddChildNode(const wstring& inName, const wstring& inPath) {
  CheckPosition(cursor_);
  const CQuenXMLElementImpl2w child = document_.Impl().CreateElement(inName);
  if (inPath.empty()) {
    AppendTo(*cursor_->GetImpl(), child);
  } else {
    internal::RequireElement(cursor_, inPath, u"CQuenXMLDataImpl2w::AddChildNode").AppendNew(child);
  }
}

void CQuenXMLDataImpl2w::AddChildNodeNS(const wstring& inName, const wstring& inNamespaceURI,
                                        const wstring& inPath) {
  CheckPosition(cursor_);
  const CQuenXMLElementImpl2w child = document_.Impl().CreateElementNS(inName, inNamespaceURI);
  if (inPath.empty()) {
    AppendTo(*cursor_->GetImpl(), child);
  } else {
    internal::RequireElement(cursor_, inPath, u"CQuenXMLDataImpl2w::AddChildNodeNS")
        .AppendNew(child);
  }
}

void CQuenXMLDataImpl2w::AddSiblingNode(const wstring& inName, const wstring& inPath) {
  CheckPosition(cursor_);
  const CQuenXMLElementImpl2w sibling = document_.Impl().CreateElement(inName);
  const CQuenXMLNodeImpl2w node =
      inPath.empty()
          ? *cursor_->GetImpl()
          : internal::RequireElement(cursor_, inPath, u"CQuenXMLDataImpl2w::AddSiblingNode");
  node.GetParent().AppendChild(sibling);
}

// Steps that the three kinds of leaf share, behind its making.
void CQuenXMLDataImpl2w::AddLeaf(const CQuenXMLNode2w& inLeaf, const wstring& inPath,
                                 const char16_t* inContext) {
  if (!inPath.empty()) {
    internal::RequireElement(cursor_, inPath, inContext).AppendChild(*inLeaf.GetImpl());
  } else if (cursor_ != nullptr) {
    cursor_->AppendChild(inLeaf);
  } else if (inLeaf.GetNodeType() != CQuenXMLNode2w::CDATASectionNode) {
    // A comment or processing instruction may stand before the root; a CDATA section may not.
    document_.AppendChild(inLeaf);
  }
}

void CQuenXMLDataImpl2w::AddComment(const wstring& inText, const wstring& inPath) {
  constexpr const char16_t* kContext = u"CQuenXMLDataImpl2w::AddComment";
  Guarded<DataClauses>(kContext,
                       [&] { AddLeaf(document_.CreateComment(inText), inPath, kContext); });
}

void CQuenXMLDataImpl2w::AddCDATA(const wstring& inText, const wstring& inPath) {
  constexpr const char16_t* kContext = u"CQuenXMLDataImpl2w::AddCDATA";
  Guarded<DataClauses>(kContext, [&] { AddLeaf(document_.CreateCDATA(inText), inPath, kContext); });
}

void CQuenXMLDataImpl2w::AddProcessingInstruction(const wstring& inTarget, const wstring& inData,
                                                  const wstring& inPath) {
  constexpr const char16_t* kContext = u"CQuenXMLDataImpl2w::AddProcessingInstruction";
  Guarded<DataClauses>(kContext,
                       [&] { AddLeaf(document_.CreatePI(inTarget, inData), inPath, kContext); });
}

void CQuenXMLDataImpl2w::GetComment(wstring& outText, const wstring& inPath) {
  GetLeaf(cursor_, inPath, CQuenXMLNode2w::CommentNode, outText);
}

void CQuenXMLDataImpl2w::GetCDATA(wstring& outText, const wstring& inPath) {
  if (cursor_ == nullptr && !inPath.empty())
    internal::ThrowPathNotFound(u"CQuenXMLDataImpl2w::GetCDATA");
  GetLeaf(cursor_, inPath, CQuenXMLNode2w::CDATASectionNode, outText);
}

void CQuenXMLDataImpl2w::GetProcessingInstruction(wstring& outTarget, wstring& outData,
                                                  const wstring& inPath) const {
  if (inPath.empty() && cursor_ == nullptr) return;
  const CQuenXMLElementImpl2w element =
      inPath.empty() ? internal::ElementAtCursor(cursor_)
                     : internal::RequireElement(cursor_, inPath,
                                                u"CQuenXMLDataImpl2w::GetProcessingInstruction");
  const CQuenXMLNodeImpl2w leaf = FirstChildOf(element, CQuenXMLNode2w::ProcessingInstructionNode);
  if (leaf.GetDOMNode() == nullptr) return;
  outTarget = leaf.GetName();
  outData = leaf.GetValue();
}

void CQuenXMLDataImpl2w::RemoveComment(const wstring& inPath) {
  RemoveLeaf(cursor_, inPath, CQuenXMLNode2w::CommentNode);
}

void CQuenXMLDataImpl2w::RemoveCDATA(const wstring& inPath) {
  RemoveLeaf(cursor_, inPath, CQuenXMLNode2w::CDATASectionNode);
}

void CQuenXMLDataImpl2w::RemoveProcessingInstruction(const wstring&, const wstring& inPath) {
  RemoveLeaf(cursor_, inPath, CQuenXMLNode2w::ProcessingInstructionNode);
}

}  // namespace quen

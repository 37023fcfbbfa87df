// SPDX-License-Identifier: Apache-2.0
//
// The cursor: its moves, which raise nothing, and its path.
#include <quenxml2/data.h>

#include "data/addressing.h"
#include "data/clauses.h"

namespace quen {

using xercesc::DOMNode;

std::int32_t CQuenXMLDataImpl2w::CursorTo(const wstring& inPath) {
  if (inPath.empty()) return 0;
  return internal::ZeroOnFailure([&] {
    const CQuenXMLElementImpl2w element = internal::FindElement(cursor_, inPath);
    if (element.GetDOMNode() == nullptr) return 0;
    *cursor_ = CQuenXMLNode2w(element);
    return 1;
  });
}

// Goes from the cursor to the first element along the way; 0 leaves the cursor where it was.
std::int32_t CQuenXMLDataImpl2w::MoveCursor(Step inStart, Step inStep) {
  if (cursor_ == nullptr || hasRoot_ != 1) return 0;
  return internal::ZeroOnFailure([&] {
    CQuenXMLNodeImpl2w node = (cursor_->GetImpl()->*inStart)();
    while (node.GetDOMNode() != nullptr && node.GetNodeType() != CQuenXMLNode2w::ElementNode)
      node = (node.*inStep)();
    if (node.GetDOMNode() == nullptr) return 0;
    *cursor_ = CQuenXMLNode2w(node);
    return 1;
  });
}

std::int32_t CQuenXMLDataImpl2w::CursorToFirstChild() {
  return MoveCursor(&CQuenXMLNodeImpl2w::GetFirstChild, &CQuenXMLNodeImpl2w::GetNextSibling);
}

std::int32_t CQuenXMLDataImpl2w::CursorToLastChild() {
  return MoveCursor(&CQuenXMLNodeImpl2w::GetLastChild, &CQuenXMLNodeImpl2w::GetPreviousSibling);
}

std::int32_t CQuenXMLDataImpl2w::CursorToNextSibling() {
  return MoveCursor(&CQuenXMLNodeImpl2w::GetNextSibling, &CQuenXMLNodeImpl2w::GetNextSibling);
}

std::int32_t CQuenXMLDataImpl2w::CursorToPreviousSibling() {
  return MoveCursor(&CQuenXMLNodeImpl2w::GetPreviousSibling,
                    &CQuenXMLNodeImpl2w::GetPreviousSibling);
}

std::int32_t CQuenXMLDataImpl2w::CursorToParent() {
  if (cursor_ == nullptr || hasRoot_ != 1) return 0;
  return internal::ZeroOnFailure([&] {
    *cursor_ = CQuenXMLNode2w(cursor_->GetImpl()->GetParent());
    return 1;
  });
}

wstring CQuenXMLDataImpl2w::GetPath() const {
  if (cursor_ == nullptr) return wstring();
  std::vector<wstring> steps;
  for (const DOMNode* node = cursor_->GetImpl()->GetDOMNode();
       node != nullptr && node->getNodeType() != DOMNode::DOCUMENT_NODE;
       node = node->getParentNode()) {
    if (node->getNodeType() != DOMNode::ELEMENT_NODE) continue;
    wstring step =
        u"/" + internal::OrEmpty(static_cast<const xercesc::DOMElement*>(node)->getTagName());
    const wstring index = GetIndexValue(node);
    if (!index.empty()) step += u"[" + index + u"]";
    steps.push_back(std::move(step));
  }
  wstring path;
  for (auto step = steps.rbegin(); step != steps.rend(); ++step) path += *step;
  return path;
}

const wstring CQuenXMLDataImpl2w::GetIndexValue(const DOMNode* inNode) const {
  return internal::OrEmpty(
      static_cast<const xercesc::DOMElement*>(inNode)->getAttribute(u"_quenxmlidx"));
}

wstring CQuenXMLDataImpl2w::GetNodeAtCursor() const {
  if (cursor_ == nullptr) return wstring();
  return internal::ElementAtCursor(cursor_).GetName();
}

CQuenXMLNode2w CQuenXMLDataImpl2w::GetCursor() {
  if (cursor_ == nullptr)
    ThrowXMLException2w(u"CQuenXMLDataImpl2w::GetCursor", kNoCursor, u"cursor is NULL");
  return *cursor_;
}

void CQuenXMLDataImpl2w::SetCursor(const CQuenXMLNode2w& inNode) {
  constexpr const char16_t* kContext = u"CQuenXMLDataImpl2w::SetCursor";
  const DOMNode* const node = inNode.GetImpl()->GetDOMNode();
  if (node == nullptr) ThrowXMLException2w(kContext, kNoCursor, u"input node is NULL");
  if (cursor_ == nullptr) internal::ThrowPathNotFound(kContext);
  // The document of the tree, which the cursor too belongs to, wherever it stands.
  if (internal::DocumentOf(node) != document_.GetImpl()->GetDOMNode()) {
    ThrowXMLException2w(kContext, kNoSuchResource,
                        u"input node must be from the same DOM document");
  }
  *cursor_ = inNode;
}

}  // namespace quen

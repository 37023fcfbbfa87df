// SPDX-License-Identifier: Apache-2.0
#include "data/addressing.h"

namespace quen::internal {

void ThrowPathNotFound(const char16_t* inContext) {
  ThrowXMLException2w(inContext, kPathNotFound, u"Path not found");
}

CQuenXMLNodeImpl2w FindNode(const Cursor& inCursor, const wstring& inPath) {
  return inCursor != nullptr ? inCursor->GetImpl()->SelectFirst(inPath) : CQuenXMLNodeImpl2w();
}

CQuenXMLElementImpl2w FindElement(const Cursor& inCursor, const wstring& inPath) {
  const CQuenXMLNodeImpl2w node = FindNode(inCursor, inPath);
  // Converting a null node would be a failure.
  return node.GetDOMNode() != nullptr ? CQuenXMLElementImpl2w(node) : CQuenXMLElementImpl2w();
}

CQuenXMLElementImpl2w RequireElement(const Cursor& inCursor, const wstring& inPath,
                                     const char16_t* inContext) {
  const CQuenXMLElementImpl2w element = FindElement(inCursor, inPath);
  if (element.GetDOMNode() == nullptr) ThrowPathNotFound(inContext);
  return element;
}

CQuenXMLElementImpl2w ElementFromXPath(const Cursor& inCursor, const wstring& inPath) {
  constexpr const char16_t* kContext = u"CQuenXMLDataImpl2w::GetElementFromXPath";
  const CQuenXMLNodeImpl2w node = FindNode(inCursor, inPath);
  if (node.GetDOMNode() == nullptr) ThrowPathNotFound(kContext);
  const CQuenXMLElementImpl2w element(node);
  if (element.GetDOMNode() == nullptr)
    ThrowXMLException2w(kContext, kPathNotFound, u"Path does not resolve to an Element Node");
  return element;
}

CQuenXMLElementImpl2w ElementAtCursor(const Cursor& inCursor) {
  return CQuenXMLElementImpl2w(*inCursor->GetImpl());
}

}  // namespace quen::internal

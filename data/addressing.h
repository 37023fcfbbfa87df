// SPDX-License-Identifier: Apache-2.0
//
// How a path finds its node: an XPath expression with the cursor as its context node.
//
// The results are implementations on the stack: an addressing path costs no handle.
#ifndef QUENXML2_DATA_ADDRESSING_H_
#define QUENXML2_DATA_ADDRESSING_H_

#include <memory>

#include "dom/element_impl.h"
#include "foundation/failure.h"

namespace quen::internal {

using Cursor = std::unique_ptr<CQuenXMLNode2w>;

[[noreturn]] void ThrowPathNotFound(const char16_t* inContext);

// The first node that the path selects, of any kind; null if there is none, or no cursor.
CQuenXMLNodeImpl2w FindNode(const Cursor& inCursor, const wstring& inPath);

// The same if it is an element, else null.
CQuenXMLElementImpl2w FindElement(const Cursor& inCursor, const wstring& inPath);

// The same, raising `inContext`, 1013, "Path not found" where there is no element.
CQuenXMLElementImpl2w RequireElement(const Cursor& inCursor, const wstring& inPath,
                                     const char16_t* inContext);

// The element that a path names, told apart from a node of another kind: raises the context
// "CQuenXMLDataImpl2w::GetElementFromXPath", 1013, and one of two messages.
CQuenXMLElementImpl2w ElementFromXPath(const Cursor& inCursor, const wstring& inPath);

// The element at the cursor, which is there: null if it stands on a node of another kind, so that
// operations on the result raise 8; raises 8 itself if the cursor stands on nothing.
CQuenXMLElementImpl2w ElementAtCursor(const Cursor& inCursor);

}  // namespace quen::internal

#endif  // QUENXML2_DATA_ADDRESSING_H_

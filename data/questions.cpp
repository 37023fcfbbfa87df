// SPDX-License-Identifier: Apache-2.0
//
// Questions about the tree at a path. They change nothing.
#include <quenxml2/data.h>

#include "data/addressing.h"
#include "data/clauses.h"

namespace quen {

std::int32_t CQuenXMLDataImpl2w::PathExists(const wstring& inPath) const {
  if (hasRoot_ != 1 || inPath.empty()) return 0;
  return internal::ZeroOnFailure(
      [&] { return internal::FindElement(cursor_, inPath).GetDOMNode() != nullptr ? 1 : 0; });
}

std::int32_t CQuenXMLDataImpl2w::HasChildren(const wstring& inPath) const {
  if (hasRoot_ != 1 || cursor_ == nullptr) return 0;
  if (inPath.empty()) return cursor_->HasChildNodes() ? 1 : 0;
  const CQuenXMLElementImpl2w element = internal::FindElement(cursor_, inPath);
  return element.GetDOMNode() != nullptr && element.HasChildNodes() ? 1 : 0;
}

std::int32_t CQuenXMLDataImpl2w::HasChildElement(const wstring& inPath) const {
  if (hasRoot_ != 1 || cursor_ == nullptr) return 0;
  if (inPath.empty()) return internal::ElementAtCursor(cursor_).empty() ? 0 : 1;
  const CQuenXMLElementImpl2w element = internal::FindElement(cursor_, inPath);
  return element.GetDOMNode() != nullptr && !element.empty() ? 1 : 0;
}

void CQuenXMLDataImpl2w::GetNumChildren(std::uint32_t& outCount, const wstring& inPath) {
  std::uint32_t count = 0;
  if (!inPath.empty()) {
    const CQuenXMLElementImpl2w element = internal::ElementFromXPath(cursor_, inPath);
    for (CQuenXMLNodeImpl2w child = element.GetFirstChild(); child.GetDOMNode() != nullptr;
         child = child.GetNextSibling()) {
      ++count;
    }
  } else if (cursor_ != nullptr) {
    const CQuenXMLElementImpl2w element = internal::ElementAtCursor(cursor_);
    element.CheckInitialized(u"CQuenXMLElementImpl2w::begin()");
    for (CQuenXMLElementImpl2w child = element.FirstChildElement(); child.GetDOMNode() != nullptr;
         child = child.NextSiblingElement()) {
      ++count;
    }
  }
  outCount = count;
}

}  // namespace quen

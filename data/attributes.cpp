// SPDX-License-Identifier: Apache-2.0
//
// Attributes by path. The numeric forms format and parse around the text form, which they reach as
// a virtual operation; a text that is no number raises nothing here.
#include <quenxml2/data.h>

#include "data/addressing.h"
#include "data/clauses.h"
#include "data/value_text.h"

namespace quen {
namespace {

template <class Number>
void GetNumber(const CQuenXMLDataImpl2w& inTree, const wstring& inName, Number& outValue,
               const wstring& inPath) {
  wstring text;
  inTree.GetAttr(inName, text, inPath);
  internal::ReadNumber(text, outValue);
}

}  // namespace

void CQuenXMLDataImpl2w::SetAttr(const wstring& inName, double inValue, const wstring& inPath) {
  SetAttr(inName, internal::TextOf(inValue), inPath);
}
void CQuenXMLDataImpl2w::SetAttr(const wstring& inName, float inValue, const wstring& inPath) {
  SetAttr(inName, internal::TextOf(inValue), inPath);
}
void CQuenXMLDataImpl2w::SetAttr(const wstring& inName, std::uint32_t inValue,
                                 const wstring& inPath) {
  SetAttr(inName, internal::TextOf(inValue), inPath);
}
void CQuenXMLDataImpl2w::SetAttr(const wstring& inName, std::int32_t inValue,
                                 const wstring& inPath) {
  SetAttr(inName, internal::TextOf(inValue), inPath);
}

void CQuenXMLDataImpl2w::SetAttr(const wstring& inName, const wstring& inValue,
                                 const wstring& inPath) {
  if (!inPath.empty()) {
    internal::ElementFromXPath(cursor_, inPath).SetAttribute(inName, inValue);
  } else if (cursor_ != nullptr) {
    internal::ElementAtCursor(cursor_).SetAttribute(inName, inValue);
  }
}

void CQuenXMLDataImpl2w::GetAttr(const wstring& inName, double& outValue,
                                 const wstring& inPath) const {
  GetNumber(*this, inName, outValue, inPath);
}
void CQuenXMLDataImpl2w::GetAttr(const wstring& inName, float& outValue,
                                 const wstring& inPath) const {
  GetNumber(*this, inName, outValue, inPath);
}
void CQuenXMLDataImpl2w::GetAttr(const wstring& inName, std::uint32_t& outValue,
                                 const wstring& inPath) const {
  GetNumber(*this, inName, outValue, inPath);
}
void CQuenXMLDataImpl2w::GetAttr(const wstring& inName, std::int32_t& outValue,
                                 const wstring& inPath) const {
  GetNumber(*this, inName, outValue, inPath);
}

void CQuenXMLDataImpl2w::GetAttr(const wstring& inName, wstring& outValue,
                                 const wstring& inPath) const {
  if (!inPath.empty()) {
    outValue = internal::RequireElement(cursor_, inPath, u"CQuenXMLDataImpl2w::GetAttr")
                   .GetAttribute(inName);
  } else if (cursor_ != nullptr) {
    outValue = internal::ElementAtCursor(cursor_).GetAttribute(inName);
  }
}

std::int32_t CQuenXMLDataImpl2w::HasAttr(const wstring& inName, const wstring& inPath) {
  if (!inPath.empty()) {
    return internal::ZeroOnFailure([&] {
      const CQuenXMLElementImpl2w element = internal::FindElement(cursor_, inPath);
      return element.GetDOMNode() != nullptr && element.HasAttribute(inName) ? 1 : 0;
    });
  }
  if (cursor_ == nullptr) return 0;
  const CQuenXMLElementImpl2w element = internal::ElementAtCursor(cursor_);
  element.CheckInitialized(u"CQuenXMLElementImpl2w::attr_begin()");
  return element.HasAttribute(inName) ? 1 : 0;
}

void CQuenXMLDataImpl2w::RemoveAttr(const wstring& inName, const wstring& inPath) {
  if (!inPath.empty()) {
    internal::ElementFromXPath(cursor_, inPath).RemoveAttribute(inName);
  } else if (cursor_ != nullptr) {
    internal::ElementAtCursor(cursor_).RemoveAttribute(inName);
  }
}

}  // namespace quen

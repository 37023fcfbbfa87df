// SPDX-License-Identifier: Apache-2.0
//
// Values by path. The numeric forms format and parse around the text form, which they reach as a
// virtual operation.
#include <quenxml2/data.h>

#include "data/addressing.h"
#include "data/value_text.h"
#include "dom/document_impl.h"

namespace quen {
namespace {

template <class Number>
void GetNumber(const CQuenXMLDataImpl2w& inTree, Number& outValue, const wstring& inPath) {
  wstring text;
  inTree.GetData(text, inPath);
  if (!internal::ReadNumber(text, outValue)) {
    ThrowXMLException2w(u"CQuenXMLDataImpl::GetData()", kConversionFailure,
                        u"Data conversion error");
  }
}

}  // namespace

void CQuenXMLDataImpl2w::AddData(double inValue, const wstring& inPath) {
  AddData(internal::TextOf(inValue), inPath);
}
void CQuenXMLDataImpl2w::AddData(float inValue, const wstring& inPath) {
  AddData(internal::TextOf(inValue), inPath);
}
void CQuenXMLDataImpl2w::AddData(std::uint32_t inValue, const wstring& inPath) {
  AddData(internal::TextOf(inValue), inPath);
}
void CQuenXMLDataImpl2w::AddData(std::int32_t inValue, const wstring& inPath) {
  AddData(internal::TextOf(inValue), inPath);
}

void CQuenXMLDataImpl2w::AddData(const wstring& inValue, const wstring& inPath) {
  if (inPath.empty()) {
    ThrowXMLException2w(u"CQuenXMLDataImpl2::AddData", kPathNotFound,
                        u"Empty Path not allowed in AddData()");
  }
  // The last '/' cuts off the leaf. One that also is the first belongs to a path of one segment,
  // which names the element to write.
  const std::size_t slash = inPath.rfind(u'/');
  wstring parentPath;
  wstring leaf;
  if (slash == wstring::npos) {
    leaf = inPath;
  } else if (slash == 0) {
    parentPath = inPath;
  } else {
    parentPath = inPath.substr(0, slash);
    leaf = inPath.substr(slash + 1);
  }
  if (cursor_ == nullptr) return;
  CQuenXMLElementImpl2w element = parentPath.empty() ? internal::ElementAtCursor(cursor_)
                                                     : internal::FindElement(cursor_, parentPath);
  if (element.GetDOMNode() == nullptr) return;
  if (leaf.empty()) {
    element.SetValue(inValue);
    return;
  }
  CQuenXMLElementImpl2w child = document_.Impl().CreateElement(leaf);
  child.SetValue(inValue);
  element.AppendNew(child);
}

void CQuenXMLDataImpl2w::SetData(double inValue, const wstring& inPath) {
  SetData(internal::TextOf(inValue), inPath);
}
void CQuenXMLDataImpl2w::SetData(float inValue, const wstring& inPath) {
  SetData(internal::TextOf(inValue), inPath);
}
void CQuenXMLDataImpl2w::SetData(std::uint32_t inValue, const wstring& inPath) {
  SetData(internal::TextOf(inValue), inPath);
}
void CQuenXMLDataImpl2w::SetData(std::int32_t inValue, const wstring& inPath) {
  SetData(internal::TextOf(inValue), inPath);
}

void CQuenXMLDataImpl2w::SetData(const wstring& inValue, const wstring& inPath) {
  if (!inPath.empty()) {
    internal::ElementFromXPath(cursor_, inPath).SetValue(inValue);
    return;
  }
  if (cursor_ == nullptr)
    ThrowXMLException2w(u"CQuenXMLDataImpl2w::SetData", kPathNotFound, u"Cursor not Initialized");
  internal::ElementAtCursor(cursor_).SetValue(inValue);
}

void CQuenXMLDataImpl2w::GetData(double& outValue, const wstring& inPath) const {
  GetNumber(*this, outValue, inPath);
}
void CQuenXMLDataImpl2w::GetData(float& outValue, const wstring& inPath) const {
  GetNumber(*this, outValue, inPath);
}
void CQuenXMLDataImpl2w::GetData(std::uint32_t& outValue, const wstring& inPath) const {
  GetNumber(*this, outValue, inPath);
}
void CQuenXMLDataImpl2w::GetData(std::int32_t& outValue, const wstring& inPath) const {
  GetNumber(*this, outValue, inPath);
}

void CQuenXMLDataImpl2w::GetData(wstring& outValue, const wstring& inPath) const {
  if (!inPath.empty()) {
    outValue = internal::RequireElement(cursor_, inPath, u"CQuenXMLDataImpl2w::GetData").GetValue();
  } else if (cursor_ != nullptr) {
    outValue = cursor_->GetValue();
  }
}

void CQuenXMLDataImpl2w::RemoveData(const wstring& inPath) {
  if (hasRoot_ != 1 || (inPath.empty() && cursor_ == nullptr)) return;
  const CQuenXMLNodeImpl2w victim =
      inPath.empty() ? *cursor_->GetImpl()
                     : internal::RequireElement(cursor_, inPath, u"CQuenXMLDataImpl2w::RemoveData");
  const bool isFirst = victim == document_.Impl().GetFirstChild();
  CQuenXMLNodeImpl2w parent = victim.GetParent();
  parent.RemoveChild(victim);
  if (inPath.empty()) *cursor_ = CQuenXMLNode2w(parent);
  if (isFirst) hasRoot_ = 0;
}

}  // namespace quen

// SPDX-License-Identifier: Apache-2.0
//
// Subsets: pieces of the tree as XML text, and text and trees grafted in.
#include <quenxml2/data.h>

#include "data/addressing.h"
#include "dom/document_impl.h"
#include "foundation/impl_utils.h"

namespace quen {
namespace {

// What a path selects, of any kind. Raises `inContext`, 1013 where it selects nothing.
CQuenXMLNodeImpl2w RequireNode(const internal::Cursor& inCursor, const wstring& inPath,
                               const char16_t* inContext) {
  const CQuenXMLNodeImpl2w node = internal::FindNode(inCursor, inPath);
  if (node.GetDOMNode() == nullptr) internal::ThrowPathNotFound(inContext);
  return node;
}

// A class that replaces CursorToRoot may leave a tree with a root and without a cursor.
CQuenXMLNode2w& RequireCursor(const internal::Cursor& inCursor) {
  if (inCursor == nullptr) internal::ThrowPathNotFound(u"CQuenXMLDataImpl2w::AppendSubset");
  return *inCursor;
}

}  // namespace

void CQuenXMLDataImpl2w::GetSubset(wstring& outXML, const wstring& inPath) const {
  if (hasRoot_ != 1 || (inPath.empty() && cursor_ == nullptr)) return;
  outXML = inPath.empty()
               ? cursor_->GetSubset()
               : RequireNode(cursor_, inPath, u"CQuenXMLDataImpl2w::GetSubset").GetSubset();
}

void CQuenXMLDataImpl2w::GetFormattedSubset(wstring& outXML, const wstring& inPath) const {
  if (hasRoot_ != 1 || (inPath.empty() && cursor_ == nullptr)) return;
  outXML = inPath.empty() ? cursor_->GetFormattedSubset()
                          : RequireNode(cursor_, inPath, u"CQuenXMLDataImpl2w::GetFormattedSubset")
                                .GetFormattedSubset();
}

void CQuenXMLDataImpl2w::GetSubset(CQuenXMLDataImpl2w& ioTarget, const wstring& inPath) const {
  wstring text;
  if (!inPath.empty()) {
    text = RequireNode(cursor_, inPath, u"CQuenXMLDataImpl2w::GetSubset").GetSubset();
  } else if (hasRoot_ == 1 && cursor_ != nullptr) {
    text = cursor_->GetSubset();
  }
  ioTarget.AppendSubset(text, u"");
}

void CQuenXMLDataImpl2w::GetUTF8Subset(string& outXML) const { outXML = document_.GetUTF8Subset(); }

void CQuenXMLDataImpl2w::AppendSubset(const wstring& inXML, const wstring& inPath) {
  if (!inPath.empty()) {
    internal::ElementFromXPath(cursor_, inPath).AppendSubset(inXML);
  } else if (hasRoot_ == 0) {
    document_.LoadXML(inXML);
    CursorToNewRoot();
  } else {
    RequireCursor(cursor_).AppendSubset(inXML);
  }
}

void CQuenXMLDataImpl2w::AppendSubset(const CQuenXMLDataImpl2w& inOther, const wstring& inPath) {
  if (inOther.hasRoot_ == 0) return;
  if (!inPath.empty()) {
    internal::ElementFromXPath(cursor_, inPath)
        .AppendChild(inOther.document_.Impl().GetDocumentElement());
  } else if (hasRoot_ == 0) {
    document_ = inOther.document_;
    CursorToNewRoot();
  } else {
    RequireCursor(cursor_).AppendChild(inOther.document_.GetDocumentElement());
  }
}

void CQuenXMLDataImpl2w::AppendUTF8Subset(const string& inXML) {
  AppendSubset(gImplUtils.TranscodeFromUTF8(inXML), u"");
}

}  // namespace quen

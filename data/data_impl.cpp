// SPDX-License-Identifier: Apache-2.0
//
// The frame of the data tree: how it is made, copied and assigned, and its root. The other
// operations stand in the files beside this one.
#include <quenxml2/data.h>

#include "data/addressing.h"
#include "data/clauses.h"

namespace quen {

using internal::DataClauses;
using internal::Guarded;

CQuenXMLDataImpl2w::CQuenXMLDataImpl2w() = default;

CQuenXMLDataImpl2w::CQuenXMLDataImpl2w(const wstring& inXML) {
  if (inXML.empty()) return;
  Guarded<DataClauses>(u"CQuenXMLDataImpl2w::CQuenXMLDataImpl2w(wstring)", [&] {
    document_.LoadXML(inXML);
    hasRoot_ = 1;
    CQuenXMLDataImpl2w::CursorToRoot();
  });
}

CQuenXMLDataImpl2w::CQuenXMLDataImpl2w(const CQuenXMLDataImpl2w& inOther) {
  Guarded<DataClauses>(u"CQuenXMLDataImpl2w::CQuenXMLDataImpl2w(inCQuenXMLDataImpl2w)", [&] {
    document_ = inOther.document_;
    hasRoot_ = inOther.hasRoot_;
    if (hasRoot_ == 1) CQuenXMLDataImpl2w::CursorToRoot();
  });
}

CQuenXMLDataImpl2w::~CQuenXMLDataImpl2w() = default;

CQuenXMLDataImpl2w& CQuenXMLDataImpl2w::operator=(const wstring& inXML) {
  document_.LoadXML(inXML);
  CursorToNewRoot();
  return *this;
}

CQuenXMLDataImpl2w& CQuenXMLDataImpl2w::operator=(const CQuenXMLDataImpl2w& inOther) {
  if (this == &inOther) return *this;
  Guarded<DataClauses>(u"CQuenXMLDataImpl2w::operator=(inCQuenXMLDataImpl2w)", [&] {
    if (inOther.hasRoot_ == 0) {
      ThrowXMLException2w(u"CQuenXMLDataImpl::operator= ()", kNoSourceRoot,
                          u"Error getting RHS Root Element");
    }
    document_ = inOther.document_;
    CursorToNewRoot();
  });
  return *this;
}

// A class that replaces CursorToRoot may leave the cursor, which must not stay on what is gone.
std::int32_t CQuenXMLDataImpl2w::CursorToNewRoot() {
  hasRoot_ = 1;
  if (cursor_ != nullptr) *cursor_ = CQuenXMLNode2w(CQuenXMLNodeImpl2w());
  return CursorToRoot();
}

void CQuenXMLDataImpl2w::AddRootNode(const wstring& inName) {
  if (hasRoot_ == 1) {
    ThrowXMLException2w(u"CQuenXMLDataImpl2w::AddRootNode()", kRootExists,
                        u"Root node already exists");
  }
  Guarded<DataClauses>(u"CQuenXMLDataImpl2w::AddRootNode", [&] {
    document_.AppendChild(document_.CreateElement(inName));
    CursorToNewRoot();
  });
}

std::int32_t CQuenXMLDataImpl2w::HasRoot() const { return hasRoot_ != 0 ? 1 : 0; }

std::int32_t CQuenXMLDataImpl2w::CursorToRoot() {
  return internal::ZeroOnFailure([&] {
    if (hasRoot_ == 0) return 0;
    const CQuenXMLElement2w root = document_.GetDocumentElement();
    if (cursor_ == nullptr) {
      cursor_ = std::make_unique<CQuenXMLNode2w>(root);
    } else {
      *cursor_ = root;
    }
    return 1;
  });
}

CQuenXMLNode2w CQuenXMLDataImpl2w::GetElementFromXPath(const wstring& inPath) const {
  return CQuenXMLNode2w(internal::ElementFromXPath(cursor_, inPath));
}

}  // namespace quen

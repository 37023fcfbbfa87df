// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/narrow_dom.h>

#include "narrow/crossing.h"

namespace quen {

using internal::CopyOfTwin;
using internal::Narrow;
using internal::NarrowText;
using internal::NarrowTwin;
using internal::TwinAs;
using internal::Wide;

CQuenXMLNode2::CQuenXMLNode2(const CQuenXMLNode2& inOther) : CQuenXMLNode2(*inOther.twin_) {}
CQuenXMLNode2::~CQuenXMLNode2() = default;

string CQuenXMLNode2::GetName() const {
  return NarrowText([&] { return twin_->GetName(); });
}
string CQuenXMLNode2::GetValue() const {
  return NarrowText([&] { return twin_->GetValue(); });
}
CQuenXMLNode2::NodeType CQuenXMLNode2::GetNodeType() const {
  return Narrow([&] { return static_cast<NodeType>(twin_->GetNodeType()); });
}
string CQuenXMLNode2::GetNamespaceURI() const {
  return NarrowText([&] { return twin_->GetNamespaceURI(); });
}
string CQuenXMLNode2::GetPrefix() const {
  return NarrowText([&] { return twin_->GetPrefix(); });
}
bool CQuenXMLNode2::HasChildNodes() const {
  return Narrow([&] { return twin_->HasChildNodes(); });
}
bool CQuenXMLNode2::HasAttributes() const {
  return Narrow([&] { return twin_->HasAttributes(); });
}
CQuenXMLNode2 CQuenXMLNode2::GetParent() const {
  return CQuenXMLNode2(NarrowTwin([&] { return twin_->GetParent(); }));
}
CQuenXMLNode2 CQuenXMLNode2::GetNextSibling() const {
  return CQuenXMLNode2(NarrowTwin([&] { return twin_->GetNextSibling(); }));
}
CQuenXMLNode2 CQuenXMLNode2::GetPreviousSibling() const {
  return CQuenXMLNode2(NarrowTwin([&] { return twin_->GetPreviousSibling(); }));
}
CQuenXMLNode2 CQuenXMLNode2::GetFirstChild() const {
  return CQuenXMLNode2(NarrowTwin([&] { return twin_->GetFirstChild(); }));
}
CQuenXMLNode2 CQuenXMLNode2::GetLastChild() const {
  return CQuenXMLNode2(NarrowTwin([&] { return twin_->GetLastChild(); }));
}
CQuenXMLDocument2 CQuenXMLNode2::GetOwnerDocument() const {
  return CQuenXMLDocument2(NarrowTwin([&] { return twin_->GetOwnerDocument(); }));
}
string CQuenXMLNode2::GetSubset() const {
  return NarrowText([&] { return twin_->GetSubset(); });
}
string CQuenXMLNode2::GetFormattedSubset() const {
  return NarrowText([&] { return twin_->GetFormattedSubset(); });
}
void CQuenXMLNode2::SetValue(const string& inValue) {
  Narrow([&] { twin_->SetValue(Wide(inValue)); });
}
void CQuenXMLNode2::SetPrefix(const string& inPrefix) {
  Narrow([&] { twin_->SetPrefix(Wide(inPrefix)); });
}
CQuenXMLNode2 CQuenXMLNode2::InsertBefore(const CQuenXMLNode2& inNew, const CQuenXMLNode2& inRef) {
  return CQuenXMLNode2(NarrowTwin([&] { return twin_->InsertBefore(*inNew.twin_, *inRef.twin_); }));
}
CQuenXMLNode2 CQuenXMLNode2::AppendChild(const CQuenXMLNode2& inNew) {
  return CQuenXMLNode2(NarrowTwin([&] { return twin_->AppendChild(*inNew.twin_); }));
}
CQuenXMLNode2 CQuenXMLNode2::ReplaceChild(const CQuenXMLNode2& inNew, const CQuenXMLNode2& inOld) {
  return CQuenXMLNode2(NarrowTwin([&] { return twin_->ReplaceChild(*inNew.twin_, *inOld.twin_); }));
}
CQuenXMLNode2 CQuenXMLNode2::RemoveChild(const CQuenXMLNode2& inOld) {
  return CQuenXMLNode2(NarrowTwin([&] { return twin_->RemoveChild(*inOld.twin_); }));
}
void CQuenXMLNode2::AppendSubset(const string& inXML) {
  Narrow([&] { twin_->AppendSubset(Wide(inXML)); });
}
std::vector<CQuenXMLNode2> CQuenXMLNode2::SelectNodes(const string& inExpression) const {
  return Narrow([&] {
    const std::vector<CQuenXMLNode2w> wide = twin_->SelectNodes(Wide(inExpression));
    std::vector<CQuenXMLNode2> nodes;
    nodes.reserve(wide.size());
    for (const CQuenXMLNode2w& node : wide) nodes.emplace_back(Key(), node);
    return nodes;
  });
}
CQuenXMLNode2 CQuenXMLNode2::SelectSingleNode(const string& inExpression) const {
  return CQuenXMLNode2(NarrowTwin([&] { return twin_->SelectSingleNode(Wide(inExpression)); }));
}
CQuenXMLNode2 CQuenXMLNode2::Clone(bool inDeep) const {
  return CQuenXMLNode2(NarrowTwin([&] { return twin_->Clone(inDeep); }));
}
CQuenXMLNode2w* CQuenXMLNode2::GetImpl() const { return twin_.get(); }

// Through the wide assignment, so that the twin keeps its class when a derived handle is assigned
// through its base.
CQuenXMLNode2& CQuenXMLNode2::operator=(const CQuenXMLNode2& inOther) {
  *twin_ = *inOther.twin_;
  return *this;
}

bool CQuenXMLNode2::operator==(const CQuenXMLNode2& inOther) const {
  return *twin_ == *inOther.twin_;
}
bool CQuenXMLNode2::operator!=(const CQuenXMLNode2& inOther) const {
  return *twin_ != *inOther.twin_;
}
bool CQuenXMLNode2::operator==(const QuenXMLDOMNode2w_NullPtr* inNull) const {
  return *twin_ == inNull;
}
bool CQuenXMLNode2::operator!=(const QuenXMLDOMNode2w_NullPtr* inNull) const {
  return *twin_ != inNull;
}

// A default-constructed section is the one null handle that anyone can make; its copy is plain.
CQuenXMLNode2::CQuenXMLNode2() : CQuenXMLNode2(CQuenXMLCDATA2w()) {}
CQuenXMLNode2::CQuenXMLNode2(const CQuenXMLNode2w& inNode)
    : twin_(Narrow([&] { return std::make_unique<CQuenXMLNode2w>(inNode); })) {}
CQuenXMLNode2::CQuenXMLNode2(Key, const CQuenXMLNode2w& inNode) : CQuenXMLNode2(inNode) {}
CQuenXMLNode2::CQuenXMLNode2(std::unique_ptr<CQuenXMLNode2w> inTwin) : twin_(std::move(inTwin)) {}

CQuenXMLAttr2::CQuenXMLAttr2(const CQuenXMLAttr2& inOther)
    : CQuenXMLNode2(Narrow([&] { return CopyOfTwin<CQuenXMLAttr2w>(*inOther.twin_); })) {}
CQuenXMLAttr2::CQuenXMLAttr2(const CQuenXMLAttr2w& inAttr)
    : CQuenXMLNode2(NarrowTwin([&] { return CQuenXMLAttr2w(inAttr); })) {}
CQuenXMLAttr2::CQuenXMLAttr2(const CQuenXMLNode2& inNode)
    : CQuenXMLNode2(NarrowTwin([&] { return CQuenXMLAttr2w(*inNode.GetImpl()); })) {}
CQuenXMLAttr2::~CQuenXMLAttr2() = default;
CQuenXMLAttr2& CQuenXMLAttr2::operator=(const CQuenXMLAttr2& inOther) {
  if (this != &inOther) twin_ = CopyOfTwin<CQuenXMLAttr2w>(*inOther.twin_);
  return *this;
}
CQuenXMLElement2 CQuenXMLAttr2::GetOwnerElement() const {
  return CQuenXMLElement2(
      NarrowTwin([&] { return TwinAs<CQuenXMLAttr2w>(*twin_).GetOwnerElement(); }));
}
CQuenXMLAttr2::CQuenXMLAttr2() = default;

CQuenXMLCDATA2::CQuenXMLCDATA2() = default;
CQuenXMLCDATA2::CQuenXMLCDATA2(const CQuenXMLCDATA2& inOther)
    : CQuenXMLNode2(Narrow([&] { return CopyOfTwin<CQuenXMLCDATA2w>(*inOther.twin_); })) {}
CQuenXMLCDATA2::CQuenXMLCDATA2(const CQuenXMLCDATA2w& inSection)
    : CQuenXMLNode2(NarrowTwin([&] { return CQuenXMLCDATA2w(inSection); })) {}
CQuenXMLCDATA2::CQuenXMLCDATA2(const CQuenXMLNode2& inNode)
    : CQuenXMLNode2(NarrowTwin([&] { return CQuenXMLCDATA2w(*inNode.GetImpl()); })) {}
CQuenXMLCDATA2::~CQuenXMLCDATA2() = default;
CQuenXMLCDATA2& CQuenXMLCDATA2::operator=(const CQuenXMLCDATA2& inOther) {
  if (this != &inOther) twin_ = CopyOfTwin<CQuenXMLCDATA2w>(*inOther.twin_);
  return *this;
}
CQuenXMLCDATA2::CQuenXMLCDATA2(std::unique_ptr<CQuenXMLNode2w> inTwin)
    : CQuenXMLNode2(std::move(inTwin)) {}

CQuenXMLComment2::CQuenXMLComment2(const CQuenXMLComment2& inOther)
    : CQuenXMLNode2(Narrow([&] { return CopyOfTwin<CQuenXMLComment2w>(*inOther.twin_); })) {}
CQuenXMLComment2::CQuenXMLComment2(const CQuenXMLComment2w& inComment)
    : CQuenXMLNode2(NarrowTwin([&] { return CQuenXMLComment2w(inComment); })) {}
CQuenXMLComment2::CQuenXMLComment2(const CQuenXMLNode2& inNode)
    : CQuenXMLNode2(NarrowTwin([&] { return CQuenXMLComment2w(*inNode.GetImpl()); })) {}
CQuenXMLComment2::~CQuenXMLComment2() = default;
CQuenXMLComment2& CQuenXMLComment2::operator=(const CQuenXMLComment2& inOther) {
  if (this != &inOther) twin_ = CopyOfTwin<CQuenXMLComment2w>(*inOther.twin_);
  return *this;
}
CQuenXMLComment2::CQuenXMLComment2() = default;
CQuenXMLComment2::CQuenXMLComment2(std::unique_ptr<CQuenXMLNode2w> inTwin)
    : CQuenXMLNode2(std::move(inTwin)) {}

CQuenXMLPI2::CQuenXMLPI2(const CQuenXMLPI2& inOther)
    : CQuenXMLNode2(Narrow([&] { return CopyOfTwin<CQuenXMLPI2w>(*inOther.twin_); })) {}
CQuenXMLPI2::CQuenXMLPI2(const CQuenXMLPI2w& inInstruction)
    : CQuenXMLNode2(NarrowTwin([&] { return CQuenXMLPI2w(inInstruction); })) {}
CQuenXMLPI2::CQuenXMLPI2(const CQuenXMLNode2& inNode)
    : CQuenXMLNode2(NarrowTwin([&] { return CQuenXMLPI2w(*inNode.GetImpl()); })) {}
CQuenXMLPI2::~CQuenXMLPI2() = default;
CQuenXMLPI2& CQuenXMLPI2::operator=(const CQuenXMLPI2& inOther) {
  if (this != &inOther) twin_ = CopyOfTwin<CQuenXMLPI2w>(*inOther.twin_);
  return *this;
}
CQuenXMLPI2::CQuenXMLPI2() = default;
CQuenXMLPI2::CQuenXMLPI2(std::unique_ptr<CQuenXMLNode2w> inTwin)
    : CQuenXMLNode2(std::move(inTwin)) {}

}  // namespace quen

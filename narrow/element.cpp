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

CQuenXMLElement2::CQuenXMLElement2(const CQuenXMLElement2& inOther)
    : CQuenXMLNode2(Narrow([&] { return CopyOfTwin<CQuenXMLElement2w>(*inOther.twin_); })) {}
CQuenXMLElement2::CQuenXMLElement2(const CQuenXMLNode2& inNode)
    : CQuenXMLNode2(NarrowTwin([&] { return CQuenXMLElement2w(*inNode.GetImpl()); })) {}
CQuenXMLElement2::~CQuenXMLElement2() = default;

CQuenXMLElement2& CQuenXMLElement2::operator=(const CQuenXMLElement2& inOther) {
  if (this != &inOther) twin_ = CopyOfTwin<CQuenXMLElement2w>(*inOther.twin_);
  return *this;
}
string CQuenXMLElement2::GetAttribute(const string& inName) const {
  return NarrowText([&] { return Twin().GetAttribute(Wide(inName)); });
}
CQuenXMLElement2::element_iterator CQuenXMLElement2::GetParentIterator() {
  return element_iterator(NarrowTwin([&] { return Twin().GetParentIterator(); }));
}
CQuenXMLElement2::element_iterator CQuenXMLElement2::GetSiblingIterator() {
  return element_iterator(NarrowTwin([&] { return Twin().GetSiblingIterator(); }));
}
bool CQuenXMLElement2::HasParent() const {
  return Narrow([&] { return Twin().HasParent(); });
}
void CQuenXMLElement2::SetAttribute(const string& inName, const string& inValue) {
  Narrow([&] { Twin().SetAttribute(Wide(inName), Wide(inValue)); });
}
void CQuenXMLElement2::RemoveAttribute(const string& inName) {
  Narrow([&] { Twin().RemoveAttribute(Wide(inName)); });
}
CQuenXMLElement2 CQuenXMLElement2::AddChildNode(const CQuenXMLElement2& inElement, bool inDeep) {
  return CQuenXMLElement2(
      NarrowTwin([&] { return Twin().AddChildNode(inElement.Twin(), inDeep); }));
}
CQuenXMLElement2 CQuenXMLElement2::AddChildNode(const string& inName) {
  return CQuenXMLElement2(NarrowTwin([&] { return Twin().AddChildNode(Wide(inName)); }));
}
CQuenXMLElement2::element_iterator CQuenXMLElement2::insert(element_iterator inPosition,
                                                            const CQuenXMLElement2& inElement,
                                                            bool inDeep) {
  return element_iterator(
      NarrowTwin([&] { return Twin().insert(*inPosition.wide_, inElement.Twin(), inDeep); }));
}
CQuenXMLElement2::element_iterator CQuenXMLElement2::insert(element_iterator inPosition,
                                                            const string& inName) {
  return element_iterator(
      NarrowTwin([&] { return Twin().insert(*inPosition.wide_, Wide(inName)); }));
}
CQuenXMLElement2::element_iterator CQuenXMLElement2::begin() {
  return element_iterator(NarrowTwin([&] { return Twin().begin(); }));
}
CQuenXMLElement2::element_iterator CQuenXMLElement2::end() {
  return element_iterator(NarrowTwin([&] { return Twin().end(); }));
}
CQuenXMLElement2::element_iterator CQuenXMLElement2::find(const string& inName) {
  return element_iterator(NarrowTwin([&] { return Twin().find(Wide(inName)); }));
}
bool CQuenXMLElement2::empty() const {
  return Narrow([&] { return Twin().empty(); });
}
CQuenXMLElement2::element_iterator CQuenXMLElement2::erase(element_iterator inFirst,
                                                           element_iterator inLast) {
  return element_iterator(NarrowTwin([&] { return Twin().erase(*inFirst.wide_, *inLast.wide_); }));
}
CQuenXMLElement2::element_iterator CQuenXMLElement2::erase(element_iterator inPosition) {
  return element_iterator(NarrowTwin([&] { return Twin().erase(*inPosition.wide_); }));
}
CQuenXMLElement2::attr_iterator CQuenXMLElement2::attr_begin() {
  return attr_iterator(NarrowTwin([&] { return Twin().attr_begin(); }));
}
CQuenXMLElement2::attr_iterator CQuenXMLElement2::attr_end() {
  return attr_iterator(NarrowTwin([&] { return Twin().attr_end(); }));
}
CQuenXMLElement2::attr_iterator CQuenXMLElement2::attr_find(const string& inName) {
  return attr_iterator(NarrowTwin([&] { return Twin().attr_find(Wide(inName)); }));
}
bool CQuenXMLElement2::attr_empty() const {
  return Narrow([&] { return Twin().attr_empty(); });
}
CQuenXMLElement2::attr_iterator CQuenXMLElement2::attr_erase(attr_iterator inFirst,
                                                             attr_iterator inLast) {
  return attr_iterator(
      NarrowTwin([&] { return Twin().attr_erase(*inFirst.wide_, *inLast.wide_); }));
}
CQuenXMLElement2::attr_iterator CQuenXMLElement2::attr_erase(attr_iterator inPosition) {
  return attr_iterator(NarrowTwin([&] { return Twin().attr_erase(*inPosition.wide_); }));
}

CQuenXMLElement2::CQuenXMLElement2() = default;
CQuenXMLElement2::CQuenXMLElement2(const CQuenXMLElement2w& inElement)
    : CQuenXMLNode2(NarrowTwin([&] { return CQuenXMLElement2w(inElement); })) {}
CQuenXMLElement2::CQuenXMLElement2(std::unique_ptr<CQuenXMLNode2w> inTwin)
    : CQuenXMLNode2(std::move(inTwin)) {}
CQuenXMLElement2w& CQuenXMLElement2::Twin() const { return TwinAs<CQuenXMLElement2w>(*twin_); }

}  // namespace quen

// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/narrow_dom.h>

#include "narrow/crossing.h"

namespace quen {

using internal::Narrow;
using internal::NarrowTwin;

CQuenXMLElement2::element_iterator::element_iterator()
    : wide_(NarrowTwin([] { return CQuenXMLElement2w::element_iterator(); })) {}
CQuenXMLElement2::element_iterator::element_iterator(const element_iterator& inOther)
    : wide_(NarrowTwin([&] { return CQuenXMLElement2w::element_iterator(*inOther.wide_); })) {}
CQuenXMLElement2::element_iterator::~element_iterator() = default;
CQuenXMLElement2::element_iterator& CQuenXMLElement2::element_iterator::operator+=(
    std::uint32_t inCount) {
  Narrow([&] { *wide_ += inCount; });
  return *this;
}
CQuenXMLElement2::element_iterator& CQuenXMLElement2::element_iterator::operator[](
    std::uint32_t inCount) {
  Narrow([&] { (*wide_)[inCount]; });
  return *this;
}
CQuenXMLElement2::element_iterator& CQuenXMLElement2::element_iterator::operator-=(
    std::uint32_t inCount) {
  Narrow([&] { *wide_ -= inCount; });
  return *this;
}
CQuenXMLElement2::element_iterator CQuenXMLElement2::element_iterator::operator++(int) {
  element_iterator before(*this);
  ++*this;
  return before;
}
CQuenXMLElement2::element_iterator& CQuenXMLElement2::element_iterator::operator++() {
  Narrow([&] { ++*wide_; });
  return *this;
}
CQuenXMLElement2::element_iterator CQuenXMLElement2::element_iterator::operator--(int) {
  element_iterator before(*this);
  --*this;
  return before;
}
CQuenXMLElement2::element_iterator& CQuenXMLElement2::element_iterator::operator--() {
  Narrow([&] { --*wide_; });
  return *this;
}
bool CQuenXMLElement2::element_iterator::operator==(const element_iterator& inOther) const {
  return Narrow([&] { return *wide_ == *inOther.wide_; });
}
bool CQuenXMLElement2::element_iterator::operator!=(const element_iterator& inOther) const {
  return Narrow([&] { return *wide_ != *inOther.wide_; });
}
CQuenXMLElement2::element_iterator& CQuenXMLElement2::element_iterator::operator=(
    const element_iterator& inOther) {
  if (this != &inOther)
    wide_ = std::make_unique<CQuenXMLElement2w::element_iterator>(*inOther.wide_);
  return *this;
}
CQuenXMLElement2& CQuenXMLElement2::element_iterator::operator*() {
  Narrow([&] { current_.reset(new CQuenXMLElement2(**wide_)); });
  return *current_;
}
CQuenXMLElement2* CQuenXMLElement2::element_iterator::operator->() { return &**this; }
CQuenXMLElement2::element_iterator::element_iterator(
    std::unique_ptr<CQuenXMLElement2w::element_iterator> inWide)
    : wide_(std::move(inWide)) {}

CQuenXMLElement2::attr_iterator::attr_iterator()
    : wide_(NarrowTwin([] { return CQuenXMLElement2w::attr_iterator(); })) {}
CQuenXMLElement2::attr_iterator::attr_iterator(const attr_iterator& inOther)
    : wide_(NarrowTwin([&] { return CQuenXMLElement2w::attr_iterator(*inOther.wide_); })) {}
CQuenXMLElement2::attr_iterator::~attr_iterator() = default;
CQuenXMLElement2::attr_iterator& CQuenXMLElement2::attr_iterator::operator+=(
    std::uint32_t inCount) {
  Narrow([&] { *wide_ += inCount; });
  return *this;
}
CQuenXMLElement2::attr_iterator& CQuenXMLElement2::attr_iterator::operator[](
    std::uint32_t inCount) {
  Narrow([&] { (*wide_)[inCount]; });
  return *this;
}
CQuenXMLElement2::attr_iterator& CQuenXMLElement2::attr_iterator::operator-=(
    std::uint32_t inCount) {
  Narrow([&] { *wide_ -= inCount; });
  return *this;
}
CQuenXMLElement2::attr_iterator CQuenXMLElement2::attr_iterator::operator++(int) {
  attr_iterator before(*this);
  ++*this;
  return before;
}
CQuenXMLElement2::attr_iterator& CQuenXMLElement2::attr_iterator::operator++() {
  Narrow([&] { ++*wide_; });
  return *this;
}
CQuenXMLElement2::attr_iterator CQuenXMLElement2::attr_iterator::operator--(int) {
  attr_iterator before(*this);
  --*this;
  return before;
}
CQuenXMLElement2::attr_iterator& CQuenXMLElement2::attr_iterator::operator--() {
  Narrow([&] { --*wide_; });
  return *this;
}
bool CQuenXMLElement2::attr_iterator::operator==(const attr_iterator& inOther) const {
  return Narrow([&] { return *wide_ == *inOther.wide_; });
}
bool CQuenXMLElement2::attr_iterator::operator!=(const attr_iterator& inOther) const {
  return Narrow([&] { return *wide_ != *inOther.wide_; });
}
CQuenXMLElement2::attr_iterator& CQuenXMLElement2::attr_iterator::operator=(
    const attr_iterator& inOther) {
  if (this != &inOther) wide_ = std::make_unique<CQuenXMLElement2w::attr_iterator>(*inOther.wide_);
  return *this;
}
CQuenXMLAttr2& CQuenXMLElement2::attr_iterator::operator*() {
  Narrow([&] { current_.reset(new CQuenXMLAttr2(**wide_)); });
  return *current_;
}
CQuenXMLAttr2* CQuenXMLElement2::attr_iterator::operator->() { return &**this; }
CQuenXMLElement2::attr_iterator::attr_iterator(
    std::unique_ptr<CQuenXMLElement2w::attr_iterator> inWide)
    : wide_(std::move(inWide)) {}

}  // namespace quen

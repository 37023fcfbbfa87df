// SPDX-License-Identifier: Apache-2.0
//
// The element handle and its iterators: every operation forwards to the implementation of the same
// name.
#include <typeinfo>

#include "dom/attr_iterator.h"
#include "dom/element_iterator.h"
#include "dom/handle_impl.h"
#include "foundation/failure.h"

namespace quen {

using internal::ImplFromNode;
using internal::ImplOnNodeOf;

CQuenXMLElement2w::CQuenXMLElement2w() = default;
CQuenXMLElement2w::CQuenXMLElement2w(const CQuenXMLElement2w& inOther) : CQuenXMLNode2w() {
  SetImpl(ImplOnNodeOf<CQuenXMLElementImpl2w>(inOther));
}
CQuenXMLElement2w::CQuenXMLElement2w(const CQuenXMLNode2w& inNode) : CQuenXMLNode2w() {
  SetImpl(ImplFromNode<CQuenXMLElementImpl2w>(inNode));
}
CQuenXMLElement2w::CQuenXMLElement2w(const CQuenXMLElementImpl2w& inImpl) : CQuenXMLNode2w() {
  SetImpl(inImpl);
}
CQuenXMLElement2w::~CQuenXMLElement2w() = default;
CQuenXMLElement2w& CQuenXMLElement2w::operator=(const CQuenXMLElement2w& inOther) {
  if (this != &inOther) SetImpl(ImplOnNodeOf<CQuenXMLElementImpl2w>(inOther));
  return *this;
}

// By value: a default-constructed handle has a plain implementation, and an element's costs nothing
// to make. Assigned through its base, the handle may stand on a node of any kind.
CQuenXMLElementImpl2w CQuenXMLElement2w::Impl() const {
  xercesc::DOMNode* const node = GetImpl()->GetDOMNode();
  const bool isElement = node != nullptr && node->getNodeType() == xercesc::DOMNode::ELEMENT_NODE;
  return CQuenXMLElementImpl2w(isElement ? node : nullptr);
}

wstring CQuenXMLElement2w::GetAttribute(const wstring& inName) const {
  return Impl().GetAttribute(inName);
}
CQuenXMLElement2w::element_iterator CQuenXMLElement2w::GetParentIterator() {
  return element_iterator(Impl().GetParentIterator());
}
CQuenXMLElement2w::element_iterator CQuenXMLElement2w::GetSiblingIterator() {
  return element_iterator(Impl().GetSiblingIterator());
}
bool CQuenXMLElement2w::HasParent() const { return Impl().HasParent(); }
void CQuenXMLElement2w::SetAttribute(const wstring& inName, const wstring& inValue) {
  Impl().SetAttribute(inName, inValue);
}
void CQuenXMLElement2w::RemoveAttribute(const wstring& inName) { Impl().RemoveAttribute(inName); }
CQuenXMLElement2w CQuenXMLElement2w::AddChildNode(const CQuenXMLElement2w& inElement, bool inDeep) {
  // A class that may have replaced end() or insert() is asked; the library's own need no iterator.
  if (typeid(*this) == typeid(CQuenXMLElement2w))
    return CQuenXMLElement2w(Impl().AppendElement(inElement));
  return CQuenXMLElement2w(*insert(end(), inElement, inDeep));
}
CQuenXMLElement2w CQuenXMLElement2w::AddChildNode(const wstring& inName) {
  if (typeid(*this) == typeid(CQuenXMLElement2w))
    return CQuenXMLElement2w(Impl().AppendElement(inName));
  return CQuenXMLElement2w(*insert(end(), inName));
}
CQuenXMLElement2w::element_iterator CQuenXMLElement2w::insert(element_iterator inPosition,
                                                              const CQuenXMLElement2w& inElement,
                                                              bool inDeep) {
  return element_iterator(inPosition.Impl().insert(inElement, inDeep));
}
CQuenXMLElement2w::element_iterator CQuenXMLElement2w::insert(element_iterator inPosition,
                                                              const wstring& inName) {
  return element_iterator(inPosition.Impl().insert(inName));
}
CQuenXMLElement2w::element_iterator CQuenXMLElement2w::begin() {
  return element_iterator(Impl().begin());
}
CQuenXMLElement2w::element_iterator CQuenXMLElement2w::end() {
  return element_iterator(Impl().end());
}
CQuenXMLElement2w::element_iterator CQuenXMLElement2w::find(const wstring& inName) {
  return element_iterator(Impl().find(inName));
}
bool CQuenXMLElement2w::empty() const { return Impl().empty(); }
CQuenXMLElement2w::element_iterator CQuenXMLElement2w::erase(element_iterator inFirst,
                                                             element_iterator inLast) {
  return element_iterator(begin().Impl().erase(inFirst.Impl(), inLast.Impl()));
}
CQuenXMLElement2w::element_iterator CQuenXMLElement2w::erase(element_iterator inPosition) {
  return element_iterator(inPosition.Impl().erase());
}
CQuenXMLElement2w::attr_iterator CQuenXMLElement2w::attr_begin() {
  return attr_iterator(Impl().attr_begin());
}
CQuenXMLElement2w::attr_iterator CQuenXMLElement2w::attr_end() {
  return attr_iterator(Impl().attr_end());
}
CQuenXMLElement2w::attr_iterator CQuenXMLElement2w::attr_find(const wstring& inName) {
  return attr_iterator(Impl().attr_find(inName));
}
bool CQuenXMLElement2w::attr_empty() const { return Impl().attr_empty(); }
CQuenXMLElement2w::attr_iterator CQuenXMLElement2w::attr_erase(attr_iterator inFirst,
                                                               attr_iterator inLast) {
  return attr_iterator(attr_begin().Impl().erase(inFirst.Impl(), inLast.Impl()));
}
CQuenXMLElement2w::attr_iterator CQuenXMLElement2w::attr_erase(attr_iterator inPosition) {
  return attr_iterator(inPosition.Impl().erase());
}

namespace {

// A default-constructed iterator has no implementation.
template <class Impl>
Impl& Checked(const std::unique_ptr<Impl>& inImpl) {
  if (inImpl == nullptr) {
    ThrowXMLException2w(u"element_iteratorImpl2w::element_iteratorImpl2w", kUnknownFailure,
                        u"input parent node is NULL");
  }
  return *inImpl;
}

template <class Impl>
std::unique_ptr<Impl> Copied(const std::unique_ptr<Impl>& inImpl) {
  return inImpl != nullptr ? std::make_unique<Impl>(*inImpl) : nullptr;
}

template <class Impl>
bool Equal(const std::unique_ptr<Impl>& inLeft, const std::unique_ptr<Impl>& inRight) {
  if (inLeft == nullptr || inRight == nullptr) return inLeft == inRight;
  return *inLeft == *inRight;
}

}  // namespace

CQuenXMLElement2w::element_iterator::element_iterator() = default;
CQuenXMLElement2w::element_iterator::element_iterator(const element_iterator& inOther)
    : impl_(Copied(inOther.impl_)) {}
CQuenXMLElement2w::element_iterator::element_iterator(const element_iteratorImpl2w& inImpl)
    : impl_(std::make_unique<element_iteratorImpl2w>(inImpl)) {}
CQuenXMLElement2w::element_iterator::~element_iterator() = default;
element_iteratorImpl2w& CQuenXMLElement2w::element_iterator::Impl() const { return Checked(impl_); }

CQuenXMLElement2w::element_iterator& CQuenXMLElement2w::element_iterator::operator+=(
    std::uint32_t inCount) {
  Impl() += inCount;
  return *this;
}
CQuenXMLElement2w::element_iterator& CQuenXMLElement2w::element_iterator::operator[](
    std::uint32_t inCount) {
  return *this += inCount;
}
CQuenXMLElement2w::element_iterator& CQuenXMLElement2w::element_iterator::operator-=(
    std::uint32_t inCount) {
  Impl() -= inCount;
  return *this;
}
CQuenXMLElement2w::element_iterator CQuenXMLElement2w::element_iterator::operator++(int) {
  element_iterator before(*this);
  ++*this;
  return before;
}
CQuenXMLElement2w::element_iterator& CQuenXMLElement2w::element_iterator::operator++() {
  ++Impl();
  return *this;
}
CQuenXMLElement2w::element_iterator CQuenXMLElement2w::element_iterator::operator--(int) {
  element_iterator before(*this);
  --*this;
  return before;
}
CQuenXMLElement2w::element_iterator& CQuenXMLElement2w::element_iterator::operator--() {
  --Impl();
  return *this;
}
bool CQuenXMLElement2w::element_iterator::operator==(const element_iterator& inOther) const {
  return Equal(impl_, inOther.impl_);
}
bool CQuenXMLElement2w::element_iterator::operator!=(const element_iterator& inOther) const {
  return !(*this == inOther);
}
CQuenXMLElement2w::element_iterator& CQuenXMLElement2w::element_iterator::operator=(
    const element_iterator& inOther) {
  if (this != &inOther) impl_ = Copied(inOther.impl_);
  return *this;
}
CQuenXMLElement2w& CQuenXMLElement2w::element_iterator::operator*() { return *Impl(); }
CQuenXMLElement2w* CQuenXMLElement2w::element_iterator::operator->() { return &**this; }

CQuenXMLElement2w::attr_iterator::attr_iterator() = default;
CQuenXMLElement2w::attr_iterator::attr_iterator(const attr_iterator& inOther)
    : impl_(Copied(inOther.impl_)) {}
CQuenXMLElement2w::attr_iterator::attr_iterator(const attr_iteratorImpl2w& inImpl)
    : impl_(std::make_unique<attr_iteratorImpl2w>(inImpl)) {}
CQuenXMLElement2w::attr_iterator::~attr_iterator() = default;
attr_iteratorImpl2w& CQuenXMLElement2w::attr_iterator::Impl() const { return Checked(impl_); }

CQuenXMLElement2w::attr_iterator& CQuenXMLElement2w::attr_iterator::operator+=(
    std::uint32_t inCount) {
  Impl() += inCount;
  return *this;
}
CQuenXMLElement2w::attr_iterator& CQuenXMLElement2w::attr_iterator::operator[](
    std::uint32_t inCount) {
  return *this += inCount;
}
CQuenXMLElement2w::attr_iterator& CQuenXMLElement2w::attr_iterator::operator-=(
    std::uint32_t inCount) {
  Impl() -= inCount;
  return *this;
}
CQuenXMLElement2w::attr_iterator CQuenXMLElement2w::attr_iterator::operator++(int) {
  attr_iterator before(*this);
  ++*this;
  return before;
}
CQuenXMLElement2w::attr_iterator& CQuenXMLElement2w::attr_iterator::operator++() {
  ++Impl();
  return *this;
}
CQuenXMLElement2w::attr_iterator CQuenXMLElement2w::attr_iterator::operator--(int) {
  attr_iterator before(*this);
  --*this;
  return before;
}
CQuenXMLElement2w::attr_iterator& CQuenXMLElement2w::attr_iterator::operator--() {
  --Impl();
  return *this;
}
bool CQuenXMLElement2w::attr_iterator::operator==(const attr_iterator& inOther) const {
  return Equal(impl_, inOther.impl_);
}
bool CQuenXMLElement2w::attr_iterator::operator!=(const attr_iterator& inOther) const {
  return !(*this == inOther);
}
CQuenXMLElement2w::attr_iterator& CQuenXMLElement2w::attr_iterator::operator=(
    const attr_iterator& inOther) {
  if (this != &inOther) impl_ = Copied(inOther.impl_);
  return *this;
}
CQuenXMLAttr2w& CQuenXMLElement2w::attr_iterator::operator*() { return *Impl(); }
CQuenXMLAttr2w* CQuenXMLElement2w::attr_iterator::operator->() { return &**this; }

}  // namespace quen

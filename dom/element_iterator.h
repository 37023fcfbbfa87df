// SPDX-License-Identifier: Apache-2.0
//
// The position behind an element_iterator.
//
// Its count is that of the moment when it was made, which takes a walk over all children.
#ifndef QUENXML2_DOM_ELEMENT_ITERATOR_H_
#define QUENXML2_DOM_ELEMENT_ITERATOR_H_

#include <cstdint>
#include <optional>

#include "dom/element_impl.h"

namespace quen {

class element_iteratorImpl2w {
 public:
  // At index 0 of the child elements of `inParent`; raises 1000 "input parent node is NULL" without
  // one.
  explicit element_iteratorImpl2w(const CQuenXMLElementImpl2w* inParent);
  element_iteratorImpl2w(const element_iteratorImpl2w& inOther);
  element_iteratorImpl2w& operator=(const element_iteratorImpl2w& inOther);
  virtual ~element_iteratorImpl2w();

  element_iteratorImpl2w& operator++();
  element_iteratorImpl2w& operator--();
  element_iteratorImpl2w& operator+=(std::uint32_t inCount);
  element_iteratorImpl2w& operator-=(std::uint32_t inCount);
  bool operator==(const element_iteratorImpl2w& inOther) const;
  bool operator!=(const element_iteratorImpl2w& inOther) const { return !(*this == inOther); }
  CQuenXMLElement2w& operator*();

  // These give an iterator on the same parent: behind the last element, on `inElement`, and on the
  // first element named `inName`. The latter two stand at the end if there is none.
  element_iteratorImpl2w AtEnd() const;
  element_iteratorImpl2w At(const CQuenXMLElementImpl2w& inElement) const;
  element_iteratorImpl2w find(const wstring& inName) const;

  // These move this iterator, as told in the public header, and give a copy of it.
  element_iteratorImpl2w insert(const wstring& inName);
  element_iteratorImpl2w insert(const CQuenXMLElement2w& inElement, bool inDeep);
  element_iteratorImpl2w erase();
  element_iteratorImpl2w erase(const element_iteratorImpl2w& inFirst,
                               const element_iteratorImpl2w& inLast);

  bool empty() const { return count_ == 0; }

 private:
  void Insert(xercesc::DOMNode* inNode);
  void EraseCurrent();

  xercesc::DOMNode* current_ = nullptr;
  std::optional<CQuenXMLElement2w> dereferenced_;  // filled by operator*
  std::int32_t index_ = 0;
  std::int32_t count_ = 0;
  CQuenXMLElementImpl2w parent_;
};

}  // namespace quen

#endif  // QUENXML2_DOM_ELEMENT_ITERATOR_H_

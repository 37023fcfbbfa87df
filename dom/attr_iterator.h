// SPDX-License-Identifier: Apache-2.0
//
// The position behind an attr_iterator: an index into a snapshot of the attributes.
#ifndef QUENXML2_DOM_ATTR_ITERATOR_H_
#define QUENXML2_DOM_ATTR_ITERATOR_H_

#include <cstdint>
#include <vector>

#include "dom/leaf_impl.h"

namespace quen {

class attr_iteratorImpl2w {
 public:
  // At index 0 of the attributes of `inElement`.
  explicit attr_iteratorImpl2w(const CQuenXMLElementImpl2w& inElement);
  attr_iteratorImpl2w(const attr_iteratorImpl2w& inOther);
  attr_iteratorImpl2w& operator=(const attr_iteratorImpl2w& inOther);
  virtual ~attr_iteratorImpl2w();

  attr_iteratorImpl2w& operator++();
  attr_iteratorImpl2w& operator--();
  attr_iteratorImpl2w& operator+=(std::uint32_t inCount);
  attr_iteratorImpl2w& operator-=(std::uint32_t inCount);
  bool operator==(const attr_iteratorImpl2w& inOther) const;
  bool operator!=(const attr_iteratorImpl2w& inOther) const { return !(*this == inOther); }
  CQuenXMLAttr2w& operator*();

  // These give a copy with the same snapshot: behind the last attribute, and on the one named
  // `inName`, at the end if there is none.
  attr_iteratorImpl2w AtEnd() const;
  attr_iteratorImpl2w find(const wstring& inName) const;

  // As told in the public header.
  attr_iteratorImpl2w erase();
  attr_iteratorImpl2w erase(const attr_iteratorImpl2w& inFirst, const attr_iteratorImpl2w& inLast);

  bool empty() const { return snapshot_.empty(); }

 private:
  std::int32_t Size() const { return static_cast<std::int32_t>(snapshot_.size()); }
  void Erase(std::int32_t inFirst, std::int32_t inEnd);

  std::vector<CQuenXMLAttr2w> snapshot_;
  std::int32_t index_ = 0;
  CQuenXMLElementImpl2w element_;
};

}  // namespace quen

#endif  // QUENXML2_DOM_ATTR_ITERATOR_H_

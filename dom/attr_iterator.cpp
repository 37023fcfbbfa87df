// SPDX-License-Identifier: Apache-2.0
#include "dom/attr_iterator.h"

#include <algorithm>

#include "dom/clauses.h"
#include "foundation/failure.h"

namespace quen {

using internal::Guarded;
using internal::NodeClauses;

attr_iteratorImpl2w::attr_iteratorImpl2w(const CQuenXMLElementImpl2w& inElement)
    : element_(inElement) {
  if (element_.GetDOMNode() == nullptr) return;
  const xercesc::DOMNamedNodeMap* const attributes = element_.Element()->getAttributes();
  const XMLSize_t count = attributes->getLength();
  snapshot_.reserve(count);
  for (XMLSize_t i = 0; i < count; ++i)
    snapshot_.push_back(CQuenXMLAttr2w(CQuenXMLAttrImpl2w(attributes->item(i))));
}

attr_iteratorImpl2w::attr_iteratorImpl2w(const attr_iteratorImpl2w& inOther) = default;
attr_iteratorImpl2w& attr_iteratorImpl2w::operator=(const attr_iteratorImpl2w& inOther) = default;
attr_iteratorImpl2w::~attr_iteratorImpl2w() = default;

attr_iteratorImpl2w& attr_iteratorImpl2w::operator++() {
  index_ = std::min(index_ + 1, Size());
  return *this;
}

attr_iteratorImpl2w& attr_iteratorImpl2w::operator--() {
  index_ = std::max(index_ - 1, -1);
  return *this;
}

attr_iteratorImpl2w& attr_iteratorImpl2w::operator+=(std::uint32_t inCount) {
  index_ =
      static_cast<std::int32_t>(std::min<std::int64_t>(std::int64_t{index_} + inCount, Size()));
  return *this;
}

attr_iteratorImpl2w& attr_iteratorImpl2w::operator-=(std::uint32_t inCount) {
  index_ = static_cast<std::int32_t>(std::max<std::int64_t>(std::int64_t{index_} - inCount, -1));
  return *this;
}

bool attr_iteratorImpl2w::operator==(const attr_iteratorImpl2w& inOther) const {
  return element_ == inOther.element_ && index_ == inOther.index_;
}

CQuenXMLAttr2w& attr_iteratorImpl2w::operator*() {
  if (index_ < 0 || index_ >= Size()) {
    ThrowXMLException2w(u"attr_iteratorImpl2w::operator*()", kOutOfRange,
                        internal::IndexMessage(index_));
  }
  return snapshot_[static_cast<std::size_t>(index_)];
}

attr_iteratorImpl2w attr_iteratorImpl2w::AtEnd() const {
  attr_iteratorImpl2w end(*this);
  end.index_ = Size();
  return end;
}

attr_iteratorImpl2w attr_iteratorImpl2w::find(const wstring& inName) const {
  return Guarded<NodeClauses>(u"attr_iteratorImpl2w::find()", [&] {
    attr_iteratorImpl2w found(*this);
    const auto hit = std::find_if(
        snapshot_.begin(), snapshot_.end(),
        [&](const CQuenXMLAttr2w& attribute) { return attribute.GetName() == inName; });
    found.index_ = static_cast<std::int32_t>(hit - snapshot_.begin());
    return found;
  });
}

attr_iteratorImpl2w attr_iteratorImpl2w::erase() {
  constexpr const char16_t* kContext = u"attr_iteratorImpl2w::erase()";
  return Guarded<NodeClauses>(kContext, [&] {
    if (snapshot_.empty()) return *this;
    if (index_ < 0 || index_ >= Size())
      ThrowXMLException2w(kContext, kOutOfRange, u"iterator is out of range");
    Erase(index_, index_ + 1);
    return *this;
  });
}

attr_iteratorImpl2w attr_iteratorImpl2w::erase(const attr_iteratorImpl2w& inFirst,
                                               const attr_iteratorImpl2w& inLast) {
  return Guarded<NodeClauses>(u"attr_iteratorImpl2w::erase()", [&] {
    attr_iteratorImpl2w before(*this);
    const std::int32_t first = inFirst.index_;
    const std::int32_t last = std::clamp(inLast.index_, -1, Size());
    if (first < 0 || first >= Size()) {
      ThrowXMLException2w(
          u"attr_iteratorImpl2w::erase(attr_iteratorImpl2w first, attr_iteratorImpl2w last)",
          kOutOfRange, u"starting point is out of range.");
    }
    if (first == last) return *this;
    // Turned round, the range ends with the first and begins behind the last.
    const std::int32_t low = first < last ? first : last + 1;
    const std::int32_t high = first < last ? last : first + 1;
    Erase(low, high);
    before.index_ = high;
    return before;
  });
}

// Takes the attributes out of their owners, and the entries out of the snapshot, as far as it gets.
void attr_iteratorImpl2w::Erase(std::int32_t inFirst, std::int32_t inEnd) {
  struct Entries {
    std::vector<CQuenXMLAttr2w>& snapshot;
    const std::int32_t first;
    std::int32_t reached;
    ~Entries() { snapshot.erase(snapshot.begin() + first, snapshot.begin() + reached); }
  };
  Entries entries{snapshot_, inFirst, inFirst};
  while (entries.reached < inEnd) {
    const CQuenXMLAttr2w& attribute = snapshot_[static_cast<std::size_t>(entries.reached++)];
    // An attribute that was removed by other means has no owner: this raises 8 then.
    attribute.GetOwnerElement().RemoveAttribute(attribute.GetName());
  }
}

}  // namespace quen

// SPDX-License-Identifier: Apache-2.0
#include "dom/element_iterator.h"

#include <algorithm>

#include "dom/clauses.h"
#include "dom/handle_impl.h"
#include "dom/node_access.h"
#include "dom/prefetch.h"
#include "foundation/failure.h"

namespace quen {

using internal::Guarded;
using internal::NodeClauses;
using xercesc::DOMNode;

namespace {

std::int32_t CountChildElements(const DOMNode* inParent) {
  std::int32_t count = 0;
  internal::PrefetchRow row;
  for (DOMNode* child = inParent->getFirstChild(); child != nullptr;) {
    row.Pass(child);
    const internal::NodeFacts facts = internal::FactsOf(child);
    if (facts.type == DOMNode::ELEMENT_NODE) ++count;
    child = facts.next;
  }
  return count;
}

}  // namespace

element_iteratorImpl2w::element_iteratorImpl2w(const CQuenXMLElementImpl2w* inParent) {
  if (inParent == nullptr) {
    ThrowXMLException2w(u"element_iteratorImpl2w::element_iteratorImpl2w", kUnknownFailure,
                        u"input parent node is NULL");
  }
  parent_ = *inParent;
  Guarded<NodeClauses>(u"element_iteratorImpl2w::element_iteratorImpl2w()", [&] {
    count_ = CountChildElements(parent_.GetDOMNode());
    if (count_ != 0) current_ = internal::FirstChildElement(parent_.GetDOMNode());
  });
}

element_iteratorImpl2w::element_iteratorImpl2w(const element_iteratorImpl2w& inOther) = default;
element_iteratorImpl2w& element_iteratorImpl2w::operator=(const element_iteratorImpl2w& inOther) =
    default;
element_iteratorImpl2w::~element_iteratorImpl2w() = default;

element_iteratorImpl2w& element_iteratorImpl2w::operator++() {
  if (index_ < 0) {
    index_ = 0;
    current_ = internal::FirstChildElement(parent_.GetDOMNode());
  } else if (index_ < count_) {
    ++index_;
    if (current_ != nullptr) current_ = internal::NextSiblingElement(current_);
  } else {
    index_ = count_;
    current_ = nullptr;
  }
  return *this;
}

element_iteratorImpl2w& element_iteratorImpl2w::operator--() {
  if (--index_ < 0) {
    index_ = -1;
    current_ = nullptr;
  } else if (index_ == count_ - 1) {
    current_ = internal::LastChildElement(parent_.GetDOMNode());
  } else if (current_ != nullptr) {
    current_ = internal::PreviousSiblingElement(current_);
  }
  return *this;
}

element_iteratorImpl2w& element_iteratorImpl2w::operator+=(std::uint32_t inCount) {
  // Past the end nothing moves any more.
  for (; inCount > 0 && (index_ < count_ || current_ != nullptr); --inCount) ++*this;
  return *this;
}

element_iteratorImpl2w& element_iteratorImpl2w::operator-=(std::uint32_t inCount) {
  for (; inCount > 0 && index_ >= 0; --inCount) --*this;
  return *this;
}

bool element_iteratorImpl2w::operator==(const element_iteratorImpl2w& inOther) const {
  return parent_ == inOther.parent_ && index_ == inOther.index_ && count_ == inOther.count_;
}

CQuenXMLElement2w& element_iteratorImpl2w::operator*() {
  if (index_ < 0 || index_ >= count_ || current_ == nullptr) {
    ThrowXMLException2w(u"element_iteratorImpl2w::operator*()", kOutOfRange,
                        internal::IndexMessage(index_));
  }
  // What was inserted may be a node of another kind.
  const bool isElement = internal::FactsOf(current_).type == DOMNode::ELEMENT_NODE;
  const CQuenXMLElementImpl2w element(isElement ? current_ : nullptr);
  if (!dereferenced_.has_value()) {
    dereferenced_.emplace(CQuenXMLElement2w(element));
  } else if (*dereferenced_->GetImpl() != element) {
    dereferenced_->SetImpl(element);
  }
  return *dereferenced_;
}

element_iteratorImpl2w element_iteratorImpl2w::AtEnd() const {
  element_iteratorImpl2w end(&parent_);
  end.index_ = end.count_;
  return end;
}

element_iteratorImpl2w element_iteratorImpl2w::At(const CQuenXMLElementImpl2w& inElement) const {
  element_iteratorImpl2w position(&parent_);
  while (position.index_ < position.count_ && position.current_ != inElement.GetDOMNode())
    ++position;
  return position;
}

element_iteratorImpl2w element_iteratorImpl2w::find(const wstring& inName) const {
  return Guarded<NodeClauses>(u"element_iteratorImpl2w::find()", [&] {
    element_iteratorImpl2w position(&parent_);
    while (position.index_ < position.count_ && position.current_->getNodeName() != inName)
      ++position;
    return position;
  });
}

element_iteratorImpl2w element_iteratorImpl2w::insert(const wstring& inName) {
  return Guarded<NodeClauses>(u"element_iteratorImpl2w::insert()", [&] {
    Insert(parent_.GetDOMNode()->getOwnerDocument()->createElement(inName.c_str()));
    return *this;
  });
}

element_iteratorImpl2w element_iteratorImpl2w::insert(const CQuenXMLElement2w& inElement, bool) {
  constexpr const char16_t* kContext = u"element_iteratorImpl2w::insert()";
  return Guarded<NodeClauses>(kContext, [&] {
    inElement.GetImpl()->CheckInitialized(kContext);
    Insert(internal::LocalNode(parent_.GetDOMNode(), inElement.GetImpl()->GetDOMNode()));
    return *this;
  });
}

void element_iteratorImpl2w::Insert(DOMNode* inNode) {
  DOMNode* const parent = parent_.GetDOMNode();
  // Before the first element there is nothing to insert in front of.
  const bool atEnd = index_ < 0 || index_ >= count_ || count_ == 0;
  if (atEnd) {
    parent->appendChild(inNode);
    index_ = count_;
  } else if (inNode != current_) {
    parent->insertBefore(inNode, current_);
  }
  current_ = inNode;
  ++count_;
}

element_iteratorImpl2w element_iteratorImpl2w::erase() {
  constexpr const char16_t* kContext = u"element_iteratorImpl2w::erase()";
  return Guarded<NodeClauses>(kContext, [&] {
    EraseCurrent();
    return *this;
  });
}

void element_iteratorImpl2w::EraseCurrent() {
  constexpr const char16_t* kContext = u"element_iteratorImpl2w::erase()";
  if (count_ == 0) ThrowXMLException2w(kContext, kOutOfRange, u"child element list is empty");
  if (index_ < 0 || index_ >= count_ || current_ == nullptr)
    ThrowXMLException2w(kContext, kOutOfRange, u"iterator is out of range");
  DOMNode* const victim = current_;
  current_ = internal::NextSiblingElement(victim);
  DOMNode* const parent = victim->getParentNode();
  if (parent == nullptr) return;
  parent->removeChild(victim);
  --count_;
  index_ = std::min(index_, count_);
}

element_iteratorImpl2w element_iteratorImpl2w::erase(const element_iteratorImpl2w& inFirst,
                                                     const element_iteratorImpl2w& inLast) {
  return Guarded<NodeClauses>(u"element_iteratorImpl2w::erase()", [&] {
    element_iteratorImpl2w working(&parent_);
    const std::int32_t first = inFirst.index_;
    const std::int32_t last = std::clamp(inLast.index_, -1, working.count_);
    if (first < 0 || first >= working.count_) {
      ThrowXMLException2w(u"element_iteratorImpl2w::erase(QuenUnsignedInt4 iFirst, int iLast)",
                          kOutOfRange, u"starting point is out of range.");
    }
    if (first == last) return *this;
    // Turned round, the range ends with the first and begins behind the last.
    const std::int32_t begin = first < last ? first : last + 1;
    const std::int32_t end = first < last ? last : first + 1;
    working += static_cast<std::uint32_t>(begin);
    for (std::int32_t i = begin; i < end; ++i) working.EraseCurrent();
    *this = working;
    return *this;
  });
}

}  // namespace quen

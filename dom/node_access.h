// SPDX-License-Identifier: Apache-2.0
// What a walk asks of every node, without a virtual call for the kinds that make up nearly all of a
// tree. A node of any other class, and of these in a library that has them twice, answers through
// the DOM's interface; the answer is the same.
#ifndef QUENXML2_DOM_NODE_ACCESS_H_
#define QUENXML2_DOM_NODE_ACCESS_H_

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <typeinfo>

#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/dom/impl/DOMDocumentImpl.hpp>
#include <xercesc/dom/impl/DOMElementNSImpl.hpp>
#include <xercesc/dom/impl/DOMTextImpl.hpp>

namespace quen::internal {

struct NodeFacts {
  int type;
  xercesc::DOMNode* next;   // sibling
  xercesc::DOMNode* child;  // first; only of elements and documents
};

// A plain or namespace-aware element as the class that both are, else null.
inline xercesc::DOMElementImpl* AsElement(xercesc::DOMNode* node) {
  const std::type_info* const type = &typeid(*node);
  return type == &typeid(xercesc::DOMElementNSImpl) || type == &typeid(xercesc::DOMElementImpl)
             ? static_cast<xercesc::DOMElementImpl*>(node)
             : nullptr;
}

// A plain text node as its class, else null.
inline xercesc::DOMTextImpl* AsText(xercesc::DOMNode* node) {
  return &typeid(*node) == &typeid(xercesc::DOMTextImpl) ? static_cast<xercesc::DOMTextImpl*>(node)
                                                         : nullptr;
}

// What an element that AsElement() knows says of its namespace: null for none.
class NamespaceOf : private xercesc::DOMElementNSImpl {
 public:
  // May be empty for none, too.
  static const char16_t* Get(const xercesc::DOMElementImpl& element) {
    if (&typeid(element) == &typeid(xercesc::DOMElementImpl)) return nullptr;
    return static_cast<const xercesc::DOMElementNSImpl&>(element).*(&NamespaceOf::fNamespaceURI);
  }
  static const char16_t* LocalName(const xercesc::DOMElementImpl& element) {
    if (&typeid(element) == &typeid(xercesc::DOMElementImpl)) return nullptr;
    return static_cast<const xercesc::DOMElementNSImpl&>(element).*(&NamespaceOf::fLocalName);
  }
};

// Whether a document may have an element or attribute of that name or local name, or that
// namespace. The DOM keeps all of them in a table of the document. All of that is looked through:
// Xerces-C 3.2 puts some entries into other rows than their hash says.
class NamesOf : private xercesc::DOMDocumentImpl {
 public:
  static bool MayHave(const xercesc::DOMNode& document, std::u16string_view text) {
    if (&typeid(document) != &typeid(xercesc::DOMDocumentImpl)) return true;
    const auto& names = static_cast<const xercesc::DOMDocumentImpl&>(document);
    const xercesc::DOMStringPoolEntry* const* const rows = names.*(&NamesOf::fNameTable);
    const XMLSize_t count = names.*(&NamesOf::fNameTableSize);
    for (XMLSize_t row = 0; row != count; ++row) {
      for (auto entry = rows[row]; entry != nullptr; entry = entry->fNext) {
        if (std::u16string_view(entry->fString, entry->fLength) == text) return true;
      }
    }
    return false;
  }
};

// Asking for memory ahead of a walk, at an address that may be any. What a short walk needs is
// mostly in the second-level cache, and is asked for into the first. A walk that has come far works
// on a tree that lies in memory; it asks further ahead and into the second level, where many more
// such questions can be open at a time.
inline constexpr std::uint32_t kFarWalk = 8192;  // nodes, some 2 MB
inline constexpr std::uint32_t kFarRow = 2048;   // siblings

inline void AskNear(std::uintptr_t address) {
  __builtin_prefetch(reinterpret_cast<const void*>(address), 0, 3);
}
inline void AskFar(std::uintptr_t address) {
  __builtin_prefetch(reinterpret_cast<const void*>(address), 0, 2);
  asm volatile("");  // GCC drops calls of functions that do nothing else
}

// For a walk over most nodes. The arena gives out memory in the order in which a parser makes
// nodes, so what a walk in document order needs next lies a little further on. A walk that has come
// far asks for all of it, once: one over 400,000 nodes took a third of the time.
class PrefetchWalk {
 public:
  void Pass(const xercesc::DOMNode* node) {
    constexpr std::uintptr_t kAhead = 1024;
    const auto address = reinterpret_cast<std::uintptr_t>(node);
    if (++passed_ < kFarWalk) {
      AskNear(address + kAhead);
      AskNear(address + kAhead + kLine);
    } else {
      asked_ = AskForStretch(asked_, address);
    }
  }

  // The same, where near nodes are asked for in another way.
  void PassFar(const xercesc::DOMNode* node) {
    if (++passed_ >= kFarWalk) {
      asked_ = AskForStretch(asked_, reinterpret_cast<std::uintptr_t>(node));
    }
  }

 private:
  static constexpr std::uintptr_t kLine = 64;

  // All up to 8 KB behind `address`, a few lines at a time, from where the last call came to. Out
  // of line, since the loops that call it are short.
  [[gnu::noinline]] static std::uintptr_t AskForStretch(std::uintptr_t asked,
                                                        std::uintptr_t address) {
    constexpr std::uintptr_t kAhead = 8192;
    constexpr std::uintptr_t kMost = 8 * kLine;
    if (asked - address > kAhead) asked = address;
    const std::uintptr_t end = std::min(address + kAhead, asked + kMost);
    for (; asked < end; asked += kLine) AskFar(asked);
    return asked;
  }

  std::uintptr_t asked_ = 0;
  std::uint32_t passed_ = 0;
};

// For a row of siblings: where the nodes to come lie, if they lie as evenly as those before.
class PrefetchRow {
 public:
  // False while the row is too short to tell.
  bool Pass(const xercesc::DOMNode* node) {
    constexpr std::uint32_t kRow = 8;
    // Over two nodes, since text often stands between elements.
    const auto address = reinterpret_cast<std::uintptr_t>(node);
    const std::uintptr_t distance = 4 * (address - beforeLast_);
    beforeLast_ = last_;
    last_ = address;
    if (++passed_ < kRow) return false;
    if (passed_ < kFarRow) {
      AskNear(address + distance);
      AskNear(address + distance + kLinks);
      AskNear(address + distance + kNames);
    } else {
      AskForNode(address + 2 * distance);
    }
    return true;
  }

 private:
  // Where an element has what a walk reads of it, besides its class at its beginning.
  static constexpr std::uintptr_t kLinks = 80;
  static constexpr std::uintptr_t kNames = 144;

  [[gnu::noinline]] static void AskForNode(std::uintptr_t address) {
    AskFar(address);
    AskFar(address + kLinks);
    AskFar(address + kNames);
  }

  std::uintptr_t last_ = 0;
  std::uintptr_t beforeLast_ = 0;
  std::uint32_t passed_ = 0;
};

inline NodeFacts FactsOf(xercesc::DOMNode* node) {
  using xercesc::DOMNode;
  if (const auto* const element = AsElement(node)) {
    return {DOMNode::ELEMENT_NODE, element->fChild.nextSibling, element->fParent.fFirstChild};
  }
  if (const auto* const text = AsText(node)) {
    return {DOMNode::TEXT_NODE, text->fChild.nextSibling, nullptr};
  }
  const int type = node->getNodeType();
  const bool hasChildren = type == DOMNode::ELEMENT_NODE || type == DOMNode::DOCUMENT_NODE;
  return {type, node->getNextSibling(), hasChildren ? node->getFirstChild() : nullptr};
}

}  // namespace quen::internal

#endif  // QUENXML2_DOM_NODE_ACCESS_H_

// SPDX-License-Identifier: Apache-2.0
//
// Walks over trees that are larger than the caches of a processor.
#ifndef QUENXML2_DOM_PREFETCH_H_
#define QUENXML2_DOM_PREFETCH_H_

#include <algorithm>
#include <cstdint>

#include <xercesc/dom/DOMNode.hpp>

namespace quen::internal {

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

}  // namespace quen::internal

#endif  // QUENXML2_DOM_PREFETCH_H_

// SPDX-License-Identifier: Apache-2.0
//
// The limits of what is parsed. Text comes from strangers: each limit keeps a small text from
// costing a large amount of stack, memory or time. Exceeding one is an ordinary parse failure, code
// 1009, with line and column. docs/limits.md lists them for users.
#ifndef QUENXML2_FOUNDATION_LIMITS_H_
#define QUENXML2_FOUNDATION_LIMITS_H_

#include <cstddef>
#include <cstdint>

namespace quen::internal {

// Levels of elements. The engine clones and imports recursively, about 129 bytes a level: on a
// stack of 512 KiB it crashes from 4,080 levels on.
inline constexpr std::uint32_t kMaxDepth = 1000;

// Attributes on one element, declarations of namespaces included. The DOM's attribute map makes an
// element with n of them cost n squared: 64,000 take 17 seconds, 10,000 half a second.
inline constexpr std::size_t kMaxAttributes = 10000;

// Code units that entity references and attribute defaults may add to a document: 8 MiB of text.
// Known before an entity is expanded.
inline constexpr std::size_t kMaxExpansion = 4 * 1024 * 1024;

// What a reference inside an entity counts beside the text that it brings: the node that stands for
// it in the tree. Without it, references to an empty entity would be free.
inline constexpr std::size_t kReferenceCost = 32;

// Levels of entities within entities.
inline constexpr unsigned kMaxEntityDepth = 32;

// Code units of an internal DTD subset, which bounds the number of its declarations too.
inline constexpr std::size_t kMaxInternalSubset = 256 * 1024;

}  // namespace quen::internal

#endif  // QUENXML2_FOUNDATION_LIMITS_H_

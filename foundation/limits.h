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

// The squares of the numbers of attributes of all elements, added up: what a document may have
// beside kAttributeWorkPerAttribute for each of its attributes. Without it a few hundred elements
// at the limit above would take minutes; with it, elements of up to a thousand attributes may be as
// many as they like.
inline constexpr std::uint64_t kMaxAttributeWork = 200'000'000;
inline constexpr std::uint64_t kAttributeWorkPerAttribute = 1000;

// Different names of elements, of attributes, and of namespaces, each. The engine keeps names in
// tables of a few hundred chains, so that n names cost n squared: 160,000 take four seconds, 40,000
// a fifth of one.
inline constexpr std::size_t kMaxDistinctNames = 50000;

// Different prefixes that a document declares. The engine's table of them has some hundred chains
// and is searched for every name: 50,000 take five seconds.
inline constexpr std::size_t kMaxDistinctPrefixes = 10000;

// Code units that entity references and attribute defaults may add to a document: 8 MiB of text.
// Known before an entity is expanded.
inline constexpr std::size_t kMaxExpansion = 4 * 1024 * 1024;

// What each of these counts beside its text, for the nodes that it becomes: in an entity each '<',
// each '=' and each reference, and each default that an element gets. Without it 9 kB of text made
// a tree of 312 MB.
inline constexpr std::size_t kNodeCost = 64;

// Levels of entities within entities.
inline constexpr unsigned kMaxEntityDepth = 32;

// Code units of an internal DTD subset, which bounds the number of its declarations too.
inline constexpr std::size_t kMaxInternalSubset = 256 * 1024;

// Attributes with a default in a DTD. The engine's tree of the declarations makes n of them cost n
// squared, two seconds for a thousand.
inline constexpr std::size_t kMaxAttributeDefaults = 500;

// Places where an element may stand in one content model of a DTD, and how often the same name may
// be among them; and the squares of the former over all models, added up. The engine builds an
// automaton from a model, with up to 2 to the n states when a name stands in n places, and with the
// square of the places in its sets. Mixed content, (#PCDATA | a | b)*, is not meant: it takes no
// automaton.
inline constexpr std::size_t kMaxModelPlaces = 1000;
inline constexpr std::size_t kMaxModelRepeats = 5;
inline constexpr std::uint64_t kMaxModelWork = 4'000'000;

// What the declarations of a DTD make its document cost, in names that the engine passes: for each
// element the attributes that are declared for it, and the names in its parent's content model,
// mixed or not; for each attribute that takes one of a list the list, by kUnitsPerDeclaredName. A
// list that is declared costs its square. What a document may have beside kDeclaredWorkPerNode for
// each of its elements and attributes: a name takes 5 to 20 nanoseconds, and no element of DocBook
// 4.5 comes to 230. Without it 600 kB of text take a quarter of a minute.
inline constexpr std::uint64_t kMaxDeclaredWork = 20'000'000;
inline constexpr std::uint64_t kDeclaredWorkPerNode = 250;
inline constexpr std::uint64_t kUnitsPerDeclaredName = 8;
// A required attribute counts as so many names: reporting that it is missing takes as long.
inline constexpr std::uint64_t kRequiredAttributeWork = 20;

}  // namespace quen::internal

#endif  // QUENXML2_FOUNDATION_LIMITS_H_

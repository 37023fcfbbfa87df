// SPDX-License-Identifier: Apache-2.0
//
// Knows how large the entities of a document are before one of them is expanded.
//
// A few hundred characters of nested entities expand to gigabytes. The engine's own limit counts
// references, and misses those in attribute defaults and of parameter entities, and a few large
// entities referred to often. So the text is looked through first: the internal subset for
// declarations, the whole text for references. The result is an upper bound, since a reference
// inside a comment counts too.
#ifndef QUENXML2_FOUNDATION_ENTITY_BUDGET_H_
#define QUENXML2_FOUNDATION_ENTITY_BUDGET_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quen::internal {

// Why a text is refused, and the code unit at which that shows.
struct Refusal {
  std::u16string message;
  std::size_t offset = 0;
};

class EntityBudget {
 public:
  // Whether a document type declaration may stand in a text that begins so: true also where
  // `inHead` ends before the answer is known.
  static bool MayHaveDoctype(std::u16string_view inHead);

  // Looks through a whole text. To be called once, before the text is parsed.
  std::optional<Refusal> Examine(std::u16string_view inText);

  // Whether a declaration that the parser met is the one that was counted: the replacement text of
  // a name. One that was put together behind our back is not.
  bool Knows(bool inParameter, const std::u16string& inName, std::u16string_view inValue) const;

 private:
  struct Entity {
    std::u16string replacement;  // character references resolved
    std::size_t size = 0;
    unsigned levels = 0;  // of entities within it, itself included
    enum { kUnknown, kInProgress, kKnown } state = kUnknown;
  };
  using Table = std::unordered_map<std::u16string, Entity>;

  class Scanner;

  // What the entity, and what all references in a text, bring. `ioLevels` becomes as large as the
  // levels of the deepest of them.
  std::size_t SizeOf(Table& ioTable, const std::u16string& inName, char16_t inMark,
                     unsigned inDepth, unsigned& ioLevels);
  std::size_t SizeOfReferences(Table& ioTable, std::u16string_view inText, char16_t inMark,
                               unsigned inDepth, unsigned& ioLevels);

  Table general_;
  Table parameter_;
};

}  // namespace quen::internal

#endif  // QUENXML2_FOUNDATION_ENTITY_BUDGET_H_

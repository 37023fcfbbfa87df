// SPDX-License-Identifier: Apache-2.0
// Limits of the expressions that select nodes. What goes beyond is refused before an engine sees
// it.

#ifndef QUENXML2_DOM_SELECTION_LIMITS_H_
#define QUENXML2_DOM_SELECTION_LIMITS_H_

#include <cstddef>

namespace quen::internal {

// Code units in an expression. Paths written by programs have tens to hundreds; a generated union
// of a thousand paths still fits.
inline constexpr std::size_t kMaxExpressionLength = 65536;

// Depth of ( and [ outside of literals. Xalan-C 1.12 compiles and runs an expression recursively:
// on a stack of 512 KiB it crashes from 635 nested predicates on.
inline constexpr std::size_t kMaxExpressionNesting = 100;

// Operators, steps and commas outside of literals. Xalan-C 1.12 recurses over them too: on a stack
// of 512 KiB it crashes at 3,600 operators in a row. It also bounds what a hostile union can cost.
inline constexpr std::size_t kMaxExpressionOperators = 1000;

// Levels of elements in a tree that Xalan-C is let loose on. It builds the text of an element
// recursively: on a stack of 512 KiB it crashes at 10,775 levels. The direct evaluator has no
// limit.
inline constexpr std::size_t kMaxTreeDepth = 4000;

// Decimal digits that a number in text position may reach. Xalan-C 1.12 writes a number of 90
// characters, its sign among them, over the end of a buffer, and the process is aborted.
inline constexpr std::size_t kMaxNumberTextDigits = 80;

// Digits before the point of a number that stands in an expression. Xalan-C 1.12 writes it as text
// when it compiles the expression, with the same end.
inline constexpr std::size_t kMaxLiteralDigits = 88;

}  // namespace quen::internal

#endif  // QUENXML2_DOM_SELECTION_LIMITS_H_

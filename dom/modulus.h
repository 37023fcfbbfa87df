// SPDX-License-Identifier: Apache-2.0
// Xalan-C computes `mod` of whole numbers as integers of 64 bits, and the least of them mod -1 ends
// the process. The sign of a divisor changes no result, so that it is taken away.
#ifndef QUENXML2_DOM_MODULUS_H_
#define QUENXML2_DOM_MODULUS_H_

#include <optional>
#include <string>
#include <string_view>

namespace quen::internal {

// The same expression, in which the right operand of each `mod` that is no plain number is written
// out as its magnitude. Nothing if such operands stand in each other more than four levels deep:
// each level doubles the innermost.
std::optional<std::u16string> WithPositiveDivisors(std::u16string_view expression);

}  // namespace quen::internal

#endif  // QUENXML2_DOM_MODULUS_H_

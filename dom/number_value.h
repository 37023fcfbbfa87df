// SPDX-License-Identifier: Apache-2.0
#ifndef QUENXML2_DOM_NUMBER_VALUE_H_
#define QUENXML2_DOM_NUMBER_VALUE_H_

#include <string_view>

namespace quen::internal {

// The function number() of XPath 1.0 (4.4) on a text: blanks around, one minus sign, digits with or
// without a decimal point, no exponent; everything else is NaN. Rounds to nearest.
double NumberOf(std::u16string_view text);

}  // namespace quen::internal

#endif  // QUENXML2_DOM_NUMBER_VALUE_H_

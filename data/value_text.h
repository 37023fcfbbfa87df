// SPDX-License-Identifier: Apache-2.0
//
// The five value types and the text that stands for them in a tree.
#ifndef QUENXML2_DATA_VALUE_TEXT_H_
#define QUENXML2_DATA_VALUE_TEXT_H_

#include <cstdint>
#include <limits>

#include "foundation/impl_utils.h"

namespace quen::internal {

// Width and precision of the text of a numeric type.
template <class Number>
struct NumberFormat;
template <>
struct NumberFormat<std::int32_t> {
  static constexpr std::int32_t kWidth = 20;
  static constexpr std::int32_t kPrecision = 0;
};
template <>
struct NumberFormat<std::uint32_t> : NumberFormat<std::int32_t> {};
template <>
struct NumberFormat<float> {
  static constexpr std::int32_t kWidth = 150;
  static constexpr std::int32_t kPrecision = 50;
};
template <>
struct NumberFormat<double> {
  static constexpr std::int32_t kWidth = 370;
  static constexpr std::int32_t kPrecision = 50;
};

template <class Number>
wstring TextOf(Number inValue) {
  wstring text;
  CQuenXMLImplUtils2w::NumberToText(NumberFormat<Number>::kWidth, NumberFormat<Number>::kPrecision,
                                    static_cast<double>(inValue), text);
  return text;
}

// Reads the number at the head of `inText`. False if there is none. One outside the range of the
// type leaves `outValue` as it was.
template <class Number>
bool ReadNumber(const wstring& inText, Number& outValue) {
  double value = 0;
  if (CQuenXMLImplUtils2w::TextToNumber(NumberFormat<Number>::kWidth,
                                        NumberFormat<Number>::kPrecision, inText, value) == 0) {
    return false;
  }
  const double lowest = static_cast<double>(std::numeric_limits<Number>::lowest());
  const double highest = static_cast<double>(std::numeric_limits<Number>::max());
  if (value >= lowest && value <= highest) outValue = static_cast<Number>(value);
  return true;
}

}  // namespace quen::internal

#endif  // QUENXML2_DATA_VALUE_TEXT_H_

// SPDX-License-Identifier: Apache-2.0
//
// The text of numbers. Everything here is deaf to the locale and exact: the shortest correct way
// from decimal digits to a double and back is that of <charconv>.
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

#include "foundation/impl_utils.h"

namespace quen {
namespace {

// Sign, 309 digits before the point, the point.
constexpr std::size_t kLongestInteger = 311;

// `inValue` in fixed notation. Not padded: leading blanks never outlive the formatting.
std::string FixedText(std::int32_t inPrecision, double inValue) {
  const int precision = inPrecision < 0 ? 6 : inPrecision;  // as the C formatting reads it
  std::string text(kLongestInteger + static_cast<std::size_t>(precision), '\0');
  const std::to_chars_result end = std::to_chars(text.data(), text.data() + text.size(), inValue,
                                                 std::chars_format::fixed, precision);
  text.resize(static_cast<std::size_t>(end.ptr - text.data()));
  return text;
}

// Whether the value is an integer that a std::int64_t holds, and no negative zero.
bool IsInteger(double inValue) {
  return std::fabs(inValue) < 1e15 && std::trunc(inValue) == inValue &&
         !(inValue == 0 && std::signbit(inValue));
}

constexpr bool IsDigit(char inChar) { return inChar >= '0' && inChar <= '9'; }

// The longest prefix of `inText` that is a number; empty if there is none.
std::string_view NumberPrefix(std::string_view inText) {
  std::size_t i = 0;
  const auto digits = [&] {
    const std::size_t before = i;
    while (i < inText.size() && IsDigit(inText[i])) ++i;
    return i - before;
  };
  if (i < inText.size() && (inText[i] == '+' || inText[i] == '-')) ++i;
  std::size_t mantissa = digits();
  if (i < inText.size() && inText[i] == '.') {
    ++i;
    mantissa += digits();
  }
  if (mantissa == 0) return {};
  std::size_t end = i;
  if (i < inText.size() && (inText[i] == 'e' || inText[i] == 'E')) {
    ++i;
    if (i < inText.size() && (inText[i] == '+' || inText[i] == '-')) ++i;
    if (digits() > 0) end = i;
  }
  return inText.substr(0, end);
}

// Whether a number that a double cannot hold is too small for it rather than too large.
bool IsTiny(std::string_view inNumber) {
  long exponent = 0;
  const std::size_t e = inNumber.find_first_of("eE");
  if (e != std::string_view::npos) {
    std::string_view digits = inNumber.substr(e + 1);
    const bool negative = digits.front() == '-';
    if (negative || digits.front() == '+') digits.remove_prefix(1);
    if (std::from_chars(digits.data(), digits.data() + digits.size(), exponent).ec != std::errc()) {
      return negative;
    }
    constexpr long kBeyondAllDigits = 1'000'000'000'000'000'000;
    exponent = std::min(exponent, kBeyondAllDigits);
    if (negative) exponent = -exponent;
    inNumber = inNumber.substr(0, e);
  }
  const std::size_t point = std::min(inNumber.find('.'), inNumber.size());
  const std::size_t first = inNumber.find_first_of("123456789");
  const long magnitude = static_cast<long>(point) - static_cast<long>(first);
  return magnitude + exponent < 0;
}

bool ScanNumber(std::string_view inText, double& outValue) {
  std::string_view number = NumberPrefix(inText);
  if (number.empty()) return false;
  if (number.front() == '+') number.remove_prefix(1);
  double value = 0;
  const std::errc error = std::from_chars(number.data(), number.data() + number.size(), value).ec;
  if (error == std::errc::result_out_of_range) {
    if (!IsTiny(number)) return false;
    value = number.front() == '-' ? -0.0 : 0.0;
  } else if (error != std::errc()) {
    return false;
  }
  outValue = value;
  return true;
}

// Whether formatting with the precision and reading back certainly gives the value again, in a text
// that is no longer than the width. Spares the way there and back in the ordinary case.
bool SurvivesPrecision(std::int32_t inWidth, std::int32_t inPrecision, double inValue) {
  if (inPrecision == 0 && inWidth >= 16)
    return std::fabs(inValue) < 1e15 && std::trunc(inValue) == inValue;
  if (inPrecision >= 50 && inWidth >= 130)
    return std::fabs(inValue) > 1e-30 && std::fabs(inValue) < 1e70;
  return false;
}

}  // namespace

void CQuenXMLImplUtils2w::NumberToText(std::int32_t inWidth, std::int32_t inPrecision,
                                       const double& inValue, wstring& outText) {
  if (inPrecision == 0 && inWidth >= 16 && IsInteger(inValue)) {
    char digits[16];  // a sign and fifteen digits
    const std::to_chars_result end =
        std::to_chars(digits, digits + sizeof(digits), static_cast<std::int64_t>(inValue));
    outText.assign(digits, end.ptr);
    return;
  }
  const std::string text = FixedText(inPrecision, inValue);
  const bool drop = text.size() > static_cast<std::size_t>(std::max(inWidth, 0)) && !text.empty() &&
                    text.front() == '0';
  outText.assign(text.begin() + (drop ? 1 : 0), text.end());
}

std::int32_t CQuenXMLImplUtils2w::TextToNumber(std::int32_t inWidth, std::int32_t inPrecision,
                                               const wstring& inText, double& outValue) {
  const std::size_t begin = std::min(inText.find_first_not_of(u" \t\n\v\f\r"), inText.size());
  std::string ascii;
  for (std::size_t i = begin; i < inText.size() && inText[i] > 0x20 && inText[i] < 0x7F; ++i)
    ascii += static_cast<char>(inText[i]);
  double value = 0;
  if (!ScanNumber(ascii, value)) return 0;
  if (!SurvivesPrecision(inWidth, inPrecision, value)) {
    const std::string text = FixedText(inPrecision, value);
    if (text.size() > static_cast<std::size_t>(std::max(inWidth, 0))) return 0;
    if (!ScanNumber(text, value)) return 0;
  }
  outValue = value;
  return 1;
}

}  // namespace quen

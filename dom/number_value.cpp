// SPDX-License-Identifier: Apache-2.0
#include "dom/number_value.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <system_error>

namespace quen::internal {
namespace {

bool IsBlank(char16_t c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n'; }
bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

double Convert(const char* begin, const char* end) {
  double value = 0;
  const auto result = std::from_chars(begin, end, value, std::chars_format::fixed);
  if (result.ec != std::errc::result_out_of_range) return value;
  // Too large, or a fraction too small: the whole part tells.
  for (const char* at = begin; at != end && *at != '.'; ++at) {
    if (*at != '0') return std::numeric_limits<double>::infinity();
  }
  return 0;
}

}  // namespace

double NumberOf(std::u16string_view text) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  const bool negative = !text.empty() && text.front() == u'-';
  if (negative) text.remove_prefix(1);

  std::size_t digits = 0;
  std::size_t points = 0;
  std::uint64_t whole = 0;
  constexpr std::size_t kExactDigits = 15;
  for (const char16_t c : text) {
    if (IsDigit(c)) {
      if (++digits <= kExactDigits) whole = whole * 10 + static_cast<std::uint64_t>(c - u'0');
    } else if (c != u'.' || ++points > 1) {
      return kNaN;
    }
  }
  if (digits == 0) return kNaN;
  double value = 0;
  if (points == 0 && digits <= kExactDigits) {
    value = static_cast<double>(whole);
  } else {
    // from_chars wants a digit in front of the point.
    char inlined[64];
    std::string heap;
    char* begin = inlined;
    if (text.size() + 1 > sizeof inlined) {
      heap.resize(text.size() + 1);
      begin = heap.data();
    }
    char* end = begin;
    if (text.front() == u'.') *end++ = '0';
    for (const char16_t c : text) *end++ = static_cast<char>(c);
    value = Convert(begin, end);
  }
  return negative ? -value : value;
}

}  // namespace quen::internal

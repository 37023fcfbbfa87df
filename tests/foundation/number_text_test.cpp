// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include "foundation/impl_utils.h"
#include "tests/support/literals.h"

namespace quen::test {
namespace {

struct Type {
  int width;
  int precision;
};
constexpr Type kLong = {20, 0};
constexpr Type kFloat = {150, 50};
constexpr Type kDouble = {370, 50};

std::string Written(Type inType, double inValue) {
  wstring text;
  CQuenXMLImplUtils2w::NumberToText(inType.width, inType.precision, inValue, text);
  return Utf8(text);
}

// The value read, or "none" where the variable stays as it was.
std::string Read(Type inType, const wstring& inText) {
  double value = -987;
  if (CQuenXMLImplUtils2w::TextToNumber(inType.width, inType.precision, inText, value) == 0)
    return value == -987 ? "none" : "touched";
  char text[64];
  std::snprintf(text, sizeof text, "%.17g", value);
  return text;
}

TEST(NumberText, Writes) {
  const std::string zeros(49, '0');
  const struct {
    const char* what;
    Type type;
    double value;
    std::string text;
  } kRows[] = {
      {"zero is a digit", kLong, 0, "0"},
      {"negative", kLong, -7, "-7"},
      {"the largest unsigned", kLong, 4294967295.0, "4294967295"},
      {"half to even, down", kLong, 2.5, "2"},
      {"half to even, up", kLong, 3.5, "4"},
      {"fifty decimals", kDouble, 1.5, "1.5" + zeros},
      {"negative zero", kDouble, -0.0, "-0.0" + zeros},
      {"below the fiftieth decimal", kDouble, 1e-60, "0.0" + zeros},
      {"the fiftieth decimal", kDouble, 1e-50, "0.0" + zeros.substr(1) + "1"},
      {"the largest float", kFloat, 3.4028234663852886e+38,
       "340282346638528859811704183484516925440.0" + zeros},
      {"longer than the width loses a leading zero", {3, 2}, 0.25, ".25"},
      {"but no other digit", {3, 2}, 1.25, "1.25"},
      {"and not behind a sign", {3, 2}, -0.25, "-0.25"},
      {"exactly the width", {4, 2}, 0.25, "0.25"},
  };
  for (const auto& row : kRows) EXPECT_EQ(Written(row.type, row.value), row.text) << row.what;
  EXPECT_EQ(Written(kDouble, -std::numeric_limits<double>::max()).size(), 361u);
}

TEST(NumberText, Reads) {
  const std::string manyZeros(400, '0');
  const struct {
    const char* what;
    Type type;
    std::string text;
    const char* value;
  } kRows[] = {
      {"empty", kLong, "", "none"},
      {"letters", kLong, "abc", "none"},
      {"a sign alone", kLong, "-", "none"},
      {"a point alone", kLong, ".", "none"},
      {"two signs", kLong, "+-1", "none"},
      {"blanks alone", kLong, "  \n", "none"},
      {"infinity is no number here", kDouble, "inf", "none"},
      {"nor is NaN", kDouble, "nan", "none"},
      {"leading white space", kLong, " \t\r\n7", "7"},
      {"a no-break space is none", kLong, "\u00a07", "none"},
      {"letters behind", kLong, "12abc", "12"},
      {"other digits behind", kLong, "12\u0663", "12"},
      {"a plus sign", kLong, "+5", "5"},
      {"rounds up", kLong, "123.7", "124"},
      {"half to even", kLong, "2.5", "2"},
      {"half to even again", kLong, "3.5", "4"},
      {"negative half", kLong, "-0.5", "-0"},
      {"no digit before the point", kLong, ".6", "1"},
      {"no digit behind it", kLong, "6.", "6"},
      {"an exponent", kLong, "1.5e2", "150"},
      {"an exponent cut short", kLong, "15e+", "15"},
      {"hexadecimal is zero and an x", kLong, "0x10", "0"},
      {"a comma ends it", kDouble, "1,5", "1"},
      {"twenty characters", kLong, "12345678901234567890", "1.2345678901234567e+19"},
      {"twenty-one are too many", kLong, "123456789012345678901", "none"},
      {"the sign counts", kLong, "-12345678901234567890", "none"},
      {"twenty characters by an exponent", kLong, "1e19", "1e+19"},
      {"twenty-one by an exponent", kLong, "1e20", "none"},
      {"too wide for a float's text", kFloat, "1e120", "none"},
      {"not for a double's", kDouble, "1e120", "9.9999999999999998e+119"},
      {"the largest double", kDouble, "1.7976931348623157e308", "1.7976931348623157e+308"},
      {"overflow", kDouble, "1e309", "none"},
      {"overflow without exponent", kDouble, "1" + manyZeros, "none"},
      {"a long text is no large number", kDouble, manyZeros + "7", "7"},
      {"long digits and a small exponent", kDouble, "1" + manyZeros + "e-400", "1"},
      {"underflow", kDouble, "1e-400", "0"},
      {"underflow without exponent", kDouble, "0." + manyZeros + "1", "0"},
      {"an exponent beyond counting", kDouble, "1e99999999999999999999", "none"},
      {"one below", kDouble, "1e-99999999999999999999", "0"},
      {"the largest counted", kDouble, "1e9223372036854775807", "none"},
      {"the smallest", kDouble, "0.001e-9223372036854775807", "0"},
      {"zero with a large exponent", kDouble, "0e99999", "0"},
      {"small denominators are lost", kDouble, "1e-51", "0"},
      {"the fiftieth decimal stays", kDouble, "1e-50", "1e-50"},
      {"in between it rounds", kDouble, "1.7e-50", "2e-50"},
  };
  for (const auto& row : kRows) EXPECT_EQ(Read(row.type, Wide(row.text)), row.value) << row.what;
}

// The way of the definition, by the C library: scan, format with the precision, scan again.
bool ThereAndBack(Type inType, const std::string& inText, double& outValue) {
  char* end = nullptr;
  const double scanned = std::strtod(inText.c_str(), &end);
  if (end == inText.c_str() || std::isinf(scanned)) return false;
  char text[500];
  const int length =
      std::snprintf(text, sizeof text, "%*.*lf", inType.width, inType.precision, scanned);
  if (length > inType.width) return false;
  outValue = std::strtod(text, nullptr);
  return true;
}

TEST(NumberText, AgreesWithTheCLibraryOnRandomNumbers) {
  std::mt19937_64 random(11);
  for (int run = 0; run < 60000; ++run) {
    double value = 0;
    const std::uint64_t bits = random();
    std::memcpy(&value, &bits, sizeof value);
    if (run % 2 == 0) {  // near the borders between the two ways of reading
      const double borders[] = {1e15, 1e70, 1e-30, 1e99, 1e-50, 4294967296.0, 0.5};
      value = borders[random() % std::size(borders)] *
              (1 + (static_cast<double>(random() % 2001) - 1000) * 1e-5);
      if (random() % 2 == 0) value = std::trunc(value);
      if (random() % 2 == 0) value = -value;
    }
    if (!std::isfinite(value)) continue;
    char text[64];
    std::snprintf(text, sizeof text, "%.17g", value);
    for (const Type type : {kLong, kFloat, kDouble}) {
      double expected = -987;
      double read = -987;
      const bool succeeds = ThereAndBack(type, text, expected);
      ASSERT_EQ(CQuenXMLImplUtils2w::TextToNumber(type.width, type.precision, Wide(text), read),
                succeeds ? 1 : 0)
          << text;
      ASSERT_EQ(read, expected) << text;
      char formatted[500];
      std::snprintf(formatted, sizeof formatted, "%.*lf", type.precision, value);
      if (type.width == kDouble.width) {
        ASSERT_EQ(Written(type, value), formatted);
      }
    }
  }
}

}  // namespace
}  // namespace quen::test

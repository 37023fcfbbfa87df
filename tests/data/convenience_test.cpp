// SPDX-License-Identifier: Apache-2.0
//
// Values as results. What Get says of a row, Find and GetOr say too, but where there is nothing.
#include <quenxml2/convenience.h>

#include <functional>
#include <limits>
#include <random>
#include <sstream>

#include "tests/support/literals.h"

namespace quen::test {
namespace {

template <class W>
class Convenience : public testing::Test {};
TYPED_TEST_SUITE(Convenience, Widths, WidthNames);

constexpr const char* kAbsent = "1013 Path not found";
constexpr const char* kNoNumber = "1011 Data conversion error";
constexpr const char* kRange = "1011 Number out of range";

template <class W, class T>
std::string Shown(const T& inValue) {
  if constexpr (std::is_same_v<T, typename W::String>) {
    return W::Utf8(inValue);
  } else {
    std::ostringstream text;
    text.precision(17);
    text << std::boolalpha << +inValue;
    if constexpr (std::is_same_v<T, bool>) return inValue ? "true" : "false";
    return text.str();
  }
}

template <class W, class T>
std::string Read(const typename W::Data& inTree, const typename W::String& inPath) {
  std::string got;
  const std::string failure = Failure<W>([&] { got = Shown<W>(Get<T>(inTree, inPath)); });
  std::string found;
  const std::string findFailure = Failure<W>([&] {
    const std::optional<T> value = Find<T>(inTree, inPath);
    found = value ? Shown<W>(*value) : kAbsent;
    EXPECT_TRUE(value || GetOr(inTree, inPath, T{}) == T{});
  });
  EXPECT_EQ(found + findFailure, got + failure);
  return got + failure;
}

TYPED_TEST(Convenience, Types) {
  using W = TypeParam;
  using Tree = typename W::Data;
  using S = typename W::String;
  using Reader = std::string (*)(const Tree&, const S&);
  constexpr Reader kText = Read<W, S>, kBool = Read<W, bool>, kFloat = Read<W, float>,
                   kDouble = Read<W, double>, kI8 = Read<W, std::int8_t>,
                   kU8 = Read<W, std::uint8_t>, kI16 = Read<W, std::int16_t>,
                   kU16 = Read<W, std::uint16_t>, kI32 = Read<W, std::int32_t>,
                   kU32 = Read<W, std::uint32_t>, kI64 = Read<W, std::int64_t>,
                   kU64 = Read<W, std::uint64_t>;
  const struct {
    Reader read;
    const char* value;
    std::string outcome;
  } kRows[] = {
      {kText, " Gr\u00fc\u00dfe ", " Gr\u00fc\u00dfe "},
      {kText, "", ""},
      {kBool, "true", "true"},
      {kBool, " 1\n", "true"},
      {kBool, "false", "false"},
      {kBool, "0", "false"},
      {kBool, "TRUE", kNoNumber},
      {kBool, "", kNoNumber},
      {kBool, "1 0", kNoNumber},
      {kBool, "01", kNoNumber},
      {kBool, "true\u00a0", kNoNumber},
      {kI8, "-128", "-128"},
      {kI8, "-129", kRange},
      {kI8, "127.5", kRange},
      {kI8, "127.4", "127"},
      {kU8, "255", "255"},
      {kU8, "256", kRange},
      {kU8, "-0.5", "0"},
      {kU8, "-0.6", kRange},
      {kI16, "32767", "32767"},
      {kI16, "32768", kRange},
      {kU16, "65535", "65535"},
      {kU16, "-1", kRange},
      {kI32, "-2147483648", "-2147483648"},
      {kI32, "2147483648", kRange},
      {kU32, "4294967295", "4294967295"},
      {kU32, "4294967296", kRange},
      {kI64, "9223372036854775807", "9223372036854775807"},
      {kI64, "-9223372036854775808", "-9223372036854775808"},
      {kI64, "9223372036854775808", kRange},
      {kI64, "9007199254740993.0", "9007199254740993"},
      {kI64, "9.007199254740993e15", "9007199254740993"},
      {kI64, "12345678901x", "12345678901"},
      {kU64, "18446744073709551615", "18446744073709551615"},
      {kU64, "18446744073709551616", kRange},
      {kU64, "-0", "0"},
      {kU64, "1e400", kRange},
      {kI32, " \t\n+12abc", "12"},
      {kI32, "2.5", "2"},
      {kI32, "3.5", "4"},
      {kI32, "1e3", "1000"},
      {kI32, "1e", "1"},
      {kI32, ".", kNoNumber},
      {kI32, "+-1", kNoNumber},
      {kI32, "abc", kNoNumber},
      {kI32, "\u0661", kNoNumber},
      {kI32, "", kNoNumber},
      {kDouble, ".5", "0.5"},
      {kDouble, "-1.25e2 m", "-125"},
      {kDouble, "inf", kNoNumber},
      {kDouble, "nan", kNoNumber},
      {kDouble, "1e309", kRange},
      {kDouble, "1e-400", kRange},
      {kDouble, "1.5e-60", "1.5000000000000001e-60"},
      {kFloat, "0.5", "0.5"},
      {kFloat, "3.5e38", kRange},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.value);
    Tree tree("<a/>"_t);
    tree.SetData(W::Text(row.value), "/a"_t);
    tree.SetAttr("b"_t, W::Text(row.value), "/a"_t);
    EXPECT_EQ(row.read(tree, "/a"_t), row.outcome);
    EXPECT_EQ(row.read(tree, "/a/@b"_t), row.outcome) << "as an attribute";
  }
}

TYPED_TEST(Convenience, Paths) {
  using W = TypeParam;
  typename W::Data tree("<r><!--c--><a>1</a><a k='7'>2<i/>3<![CDATA[4]]></a></r>"_t);
  tree.CursorTo("/r/a[2]"_t);
  const struct {
    const char* path;
    std::string outcome;
  } kRows[] = {
      {"/r/a", "1"},
      {"/r/a[2]", "2"},
      {"", "2"},
      {"@k", "7"},
      {"//@k", "7"},
      {"../a", "1"},
      {"//a[1] | //@k", "1"},
      {"@none | @k", "7"},
      {"text()[2]", "3"},
      {"/r/comment()", "c"},
      {"/r/b", kAbsent},
      {"/r/a/@b", kAbsent},
      {"/", kAbsent},
      {"i", ""},
      {"count(a)", "1010 The specified xpath query does not return a node set."},
  };
  for (const auto& row : kRows)
    EXPECT_EQ((Read<W, typename W::String>(tree, W::Text(row.path))), row.outcome) << row.path;
  for (const char* path : {"/a", ""})
    EXPECT_EQ((Read<W, int>(typename W::Data(), W::Text(path))), kAbsent) << "without a root";

  EXPECT_EQ(GetOr(tree, "/r/b"_t, 7), 7);
  EXPECT_EQ(Failure<W>([&] { GetOr(tree, "/r/comment()"_t, 7); }), kNoNumber);
  try {
    Get<int>(tree, "/r/b"_t);
    FAIL();
  } catch (const typename W::Exception& failure) {
    std::ostringstream text;
    text << failure;
    EXPECT_EQ(text.str(),
              "Error Context: quen::Get\nError Code: 1013\nError Message: Path not found\n"
              "Error Detail: /r/b");
  }
}

// Where GetData gives a number, so does Get, and the same; where it raises, so does Get.
TYPED_TEST(Convenience, NumbersAreThoseOfGetData) {
  using W = TypeParam;
  std::mt19937 random(7);
  typename W::Data tree("<a/>"_t);
  const auto agrees = [&](auto inUntouched, const std::string& inText) {
    auto value = inUntouched;
    const std::string failure = Failure<W>([&] { tree.GetData(value, "/a"_t); });
    const std::string got = Read<W, decltype(value)>(tree, "/a"_t);
    if (got == kRange) {
      // Not stored, or, where no double holds it, no number.
      EXPECT_TRUE(value == inUntouched) << inText;
    } else {
      EXPECT_EQ(got, failure.empty() ? Shown<W>(value) : failure) << inText;
    }
  };
  for (int i = 0; i < 3000; ++i) {
    std::string text;
    const char kUnits[] = "0123456789012345678901234..+-e \tx";
    for (std::size_t n = random() % 14; n > 0; --n) text += kUnits[random() % (sizeof kUnits - 1)];
    if (text.find("e-") != std::string::npos || text.find("e+") != std::string::npos) continue;
    tree.SetData(W::Text(text), "/a"_t);
    agrees(std::int32_t{-987654}, text);
    agrees(std::uint32_t{987654}, text);
    agrees(-987654.5, text);
  }
}

TEST(Convenience, Texts) {
  CQuenXMLData2w wide(u"<a/>");
  EXPECT_EQ(GetOr(wide, u"/b", u"none"), u"none");
  EXPECT_EQ(GetOr(CQuenXMLData2("<a>x</a>"), "/a", "none"), "x");
  EXPECT_EQ(AsUtf8(u"Gr\u00fc\u00dfe \xD800."), "Gr\u00fc\u00dfe \ufffd.");
  EXPECT_EQ(ToUtf8(u"\U0001f600"), "\U0001f600");
  EXPECT_EQ(ToUtf16("\U0001f600"), u"\U0001f600");
  EXPECT_EQ(Failure<WideTypes>([] { ToUtf8(u"\xD800"); }),
            "77 UTF-8 cannot represent the lone surrogate at code unit 0");
  EXPECT_EQ(Failure<NarrowTypes>([] { ToUtf16("\xc3"); }),
            "78 The bytes are not well-formed UTF-8 at byte 0");
}

}  // namespace
}  // namespace quen::test

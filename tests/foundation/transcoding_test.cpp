// SPDX-License-Identifier: Apache-2.0
//
// UTF-8 and UTF-16 against iconv, which is strict in both directions.
#include <gtest/gtest.h>
#include <iconv.h>

#include <random>
#include <string>

#include "foundation/impl_utils.h"
#include "foundation/utf.h"
#include "tests/support/literals.h"

namespace quen::test {
namespace {

// How many bytes of `inBytes` iconv can convert, and what it makes of them.
std::size_t Converted(const char* inTo, const char* inFrom, std::string inBytes,
                      std::string& outBytes) {
  const iconv_t converter = iconv_open(inTo, inFrom);
  std::string out(4 * inBytes.size() + 8, '\0');
  char* in = inBytes.data();
  std::size_t inLeft = inBytes.size();
  char* to = out.data();
  std::size_t toLeft = out.size();
  iconv(converter, &in, &inLeft, &to, &toLeft);
  iconv_close(converter);
  outBytes = out.substr(0, out.size() - toLeft);
  return inBytes.size() - inLeft;
}

std::string BytesOf(const std::u16string& inText) {
  return {reinterpret_cast<const char*>(inText.data()), 2 * inText.size()};
}

TEST(Transcoding, EveryCodePointCrossesAndComesBack) {
  std::u16string all;
  for (std::uint32_t code = 1; code < 0x110000; ++code) {
    if (code >= 0xD800 && code < 0xE000) continue;
    if (code >= 0x10000) all += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
    all += static_cast<char16_t>(code < 0x10000 ? code : 0xDC00 + (code & 0x3FF));
  }
  std::string expected;
  ASSERT_EQ(Converted("UTF-8", "UTF-16LE", BytesOf(all), expected), 2 * all.size());
  ASSERT_TRUE(gImplUtils.TransCodeToUTF8(all) == expected);
  ASSERT_TRUE(gImplUtils.TranscodeFromUTF8(expected) == all);
}

TEST(Transcoding, MalformedBytesStopWhereIconvStops) {
  std::mt19937 random(7);
  const unsigned char pieces[] = {0x00, 0x41, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0,
                                  0xBF, 0xC0, 0xC1, 0xC2, 0xDF, 0xE0, 0xE1, 0xED,
                                  0xEF, 0xF0, 0xF1, 0xF4, 0xF5, 0xF8, 0xFE, 0xFF};
  for (int run = 0; run < 30000; ++run) {
    std::string bytes(run % 3 == 0 ? 9 : 0, 'a');
    for (std::size_t length = 1 + random() % 5; length > 0; --length)
      bytes += static_cast<char>(pieces[random() % std::size(pieces)]);
    std::string expected;
    const std::size_t taken = Converted("UTF-16LE", "UTF-8", bytes, expected);
    std::u16string text;
    const std::size_t malformed = internal::AppendUtf16(bytes, text);
    ASSERT_EQ(malformed, taken == bytes.size() ? internal::kWellFormed : taken)
        << testing::PrintToString(bytes);
    ASSERT_EQ(BytesOf(text), expected) << testing::PrintToString(bytes);
  }
}

TEST(Transcoding, LoneSurrogatesStopWhereTheyStand) {
  const struct {
    const char* what;
    std::u16string text;
    std::size_t malformed;
  } kRows[] = {
      {"a pair", u"a\U0001F600b", internal::kWellFormed},
      {"a high one alone", u"ab\xd83d c", 2},
      {"a high one at the end", u"aaaaaaa\xdbff", 7},
      {"a low one alone", u"\xdc00", 0},
      {"turned round", u"a\xde00\xd83d", 1},
      {"two high ones", u"\xd83d\xd83d\xde00", 0},
  };
  for (const auto& row : kRows) {
    std::string bytes;
    EXPECT_EQ(internal::AppendUtf8(row.text, bytes), row.malformed) << row.what;
  }
}

TEST(Transcoding, FailuresAreWideWithTheEnginesCodes) {
  EXPECT_EQ(FailureAt<WideTypes>([] { gImplUtils.TransCodeToUTF8(u"ab\xd800"); }),
            "77 UTF-8 cannot represent the lone surrogate at code unit 2 @ "
            "CQuenXMLImplUtils2w::TransCodeToUTF8()");
  EXPECT_EQ(FailureAt<WideTypes>([] { gImplUtils.TranscodeFromUTF8("ab\xc3"); }),
            "78 The bytes are not well-formed UTF-8 at byte 2 @ "
            "CQuenXMLImplUtils2w::TranscodeFromUTF8()");
}

TEST(Transcoding, TextsEndAtTheirZeroUnit) {
  EXPECT_EQ(gImplUtils.TransCodeToUTF8(std::u16string(u"\0ab", 3)), "");
  EXPECT_EQ(gImplUtils.TransCodeToUTF8(std::u16string(u"a\0\xd800", 3)), "a");
  EXPECT_EQ(gImplUtils.TranscodeFromUTF8(std::string("a\0b", 3)), u"a");
  // All bytes are looked at, those behind the zero too.
  EXPECT_THROW(gImplUtils.TranscodeFromUTF8(std::string("a\0\xff", 3)), CQuenXMLException2w);
}

}  // namespace
}  // namespace quen::test

// SPDX-License-Identifier: Apache-2.0
#include "foundation/hexbincv.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace quen::test {
namespace {

TEST(HexText, EveryByteHasTwoDigits) {
  std::string all;
  std::string expected = "0x";
  for (int byte = 0; byte < 256; ++byte) {
    all += static_cast<char>(byte);
    char digits[3];
    std::snprintf(digits, sizeof digits, "%02x", byte);
    expected += digits;
  }
  std::string text = "what stood here before";
  EXPECT_EQ(BytesToHexText(all, text), 514u);
  EXPECT_EQ(text, expected);
  std::string back;
  HexTextToBytes(text, back);
  EXPECT_EQ(back, all);
  EXPECT_EQ(BytesToHexText("", text), 2u);
  EXPECT_EQ(text, "0x");
}

TEST(HexText, Decodes) {
  const struct {
    const char* what;
    std::string text;
    std::string bytes;
  } kRows[] = {
      {"no digits leave the output alone", "0x", "before"},
      {"not even a prefix", "", "before"},
      {"one digit is no byte", "0x0", ""},
      {"an odd digit is lost", "0x414", "A"},
      {"capitals", "0xAbCd", "\xab\xcd"},
      {"no digit in the first place counts nothing", "0x:1", "\x01"},
      {"in the second it adds 240", "0x1:", std::string(1, '\0')},
      {"a letter behind f", "0xg0", std::string(1, '\0')},
      {"another prefix changes the length alone", "1x4142", std::string("be")},
      {"a capital prefix too", "0X414243", std::string("bef")},
  };
  for (const auto& row : kRows) {
    std::string bytes = "before";
    HexTextToBytes(row.text, bytes);
    EXPECT_EQ(bytes, row.bytes) << row.what;
  }
  std::string same = "0x616263";
  HexTextToBytes(same, same);
  EXPECT_EQ(same, "abc");
}

TEST(HexText, EveryPairOfCharactersDecodesByTheTable) {
  const auto table = [](int character) {
    static const std::string kDigits = "0123456789abcdef";
    const std::size_t digit = kDigits.find(
        static_cast<char>(character >= 'A' && character <= 'F' ? character + 32 : character));
    return digit == std::string::npos ? 240 : static_cast<int>(digit);
  };
  for (int first = 0; first < 256; ++first) {
    for (int second = 0; second < 256; ++second) {
      const char pair[] = {static_cast<char>(first), static_cast<char>(second)};
      const char* position = pair;
      ASSERT_EQ(HexPairToByte(position, 2), (table(first) * 16 + table(second)) % 256)
          << first << " " << second;
      ASSERT_EQ(position, pair + 2);
    }
  }
}

}  // namespace
}  // namespace quen::test

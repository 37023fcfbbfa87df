// SPDX-License-Identifier: Apache-2.0
//
// Bytes as text that can stand as the value of an element: "0x", then two lower-case hexadecimal
// digits for each byte. Knows nothing of XML or of wide text, and raises nothing.
#ifndef QUENXML2_FOUNDATION_HEXBINCV_H_
#define QUENXML2_FOUNDATION_HEXBINCV_H_

#include <cstddef>
#include <string>

// Makes `outText`, of units of any width, the text of the bytes.
template <class Text>
void WriteHexText(const char* inBytes, std::size_t inCount, Text& outText) {
  using Unit = typename Text::value_type;
  static constexpr char kDigits[] = "0123456789abcdef";
  outText.resize(2 * inCount + 2);
  outText[0] = '0';
  outText[1] = 'x';
  Unit* at = &outText[2];
  for (std::size_t i = 0; i < inCount; ++i) {
    const unsigned char value = static_cast<unsigned char>(inBytes[i]);
    *at++ = static_cast<Unit>(kDigits[value >> 4]);
    *at++ = static_cast<Unit>(kDigits[value & 0xF]);
  }
}

// Makes `outText` the text of `inBytes` and returns its length, 2n + 2 for n bytes.
inline unsigned int BytesToHexText(std::string inBytes, std::string& outText) {
  WriteHexText(inBytes.data(), inBytes.size(), outText);
  return static_cast<unsigned int>(outText.size());
}

// The byte that `inDigits` digits from `ioPosition` on give, always two; the position moves behind
// them. Upper and lower case are read. A character that is no digit is not noticed: it counts as
// 240, so that it is 0 in the first place and adds 240 in the second.
inline unsigned char HexPairToByte(const char*& ioPosition, int inDigits) {
  struct Table {
    unsigned char digits[256];
    constexpr Table() : digits() {
      for (int unit = 0; unit < 256; ++unit) {
        const int lower = unit | 0x20;
        int digit = 240;
        if (unit >= '0' && unit <= '9') digit = unit - '0';
        if (lower >= 'a' && lower <= 'f' && unit < 0x80) digit = lower - 'a' + 10;
        digits[unit] = static_cast<unsigned char>(digit);
      }
    }
  };
  static constexpr Table kTable;
  unsigned char value = 0;
  int shift = 4;
  for (; inDigits > 0; --inDigits, shift -= 4) {
    const unsigned char digit = kTable.digits[static_cast<unsigned char>(*ioPosition++)];
    value = static_cast<unsigned char>(value + static_cast<unsigned char>(digit << shift));
  }
  return value;
}

// Makes `outBytes` the bytes that `inText` stands for; an odd last digit is dropped. A text of two
// characters or fewer leaves `outBytes` as it was, and one that does not begin with "0x" changes
// its length alone.
inline void HexTextToBytes(const std::string& inText, std::string& outBytes) {
  if (inText.size() <= 2) return;
  if (&inText == &outBytes) return HexTextToBytes(std::string(inText), outBytes);
  outBytes.resize((inText.size() - 2) / 2);
  if (inText[0] != '0' || inText[1] != 'x') return;
  const char* position = inText.data() + 2;
  for (char& byte : outBytes) byte = static_cast<char>(HexPairToByte(position, 2));
}

#endif  // QUENXML2_FOUNDATION_HEXBINCV_H_

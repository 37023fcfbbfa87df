// SPDX-License-Identifier: Apache-2.0
//
// Bytes as text that can stand as the value of an element: "0x", then two lower-case hexadecimal
// digits for each byte. Knows nothing of XML or of wide text, and raises nothing.
#ifndef QUENXML2_FOUNDATION_HEXBINCV_H_
#define QUENXML2_FOUNDATION_HEXBINCV_H_

#include <cstddef>
#include <string>

// Makes `outText` the text of `inBytes` and returns its length, 2n + 2 for n bytes.
inline unsigned int BytesToHexText(std::string inBytes, std::string& outText) {
  static constexpr char kDigits[] = "0123456789abcdef";
  outText.resize(2 * inBytes.size() + 2);
  outText[0] = '0';
  outText[1] = 'x';
  std::size_t at = 2;
  for (const char byte : inBytes) {
    const unsigned char value = static_cast<unsigned char>(byte);
    outText[at++] = kDigits[value >> 4];
    outText[at++] = kDigits[value & 0xF];
  }
  return static_cast<unsigned int>(outText.size());
}

// The byte that `inDigits` digits from `ioPosition` on give, always two; the position moves behind
// them. Upper and lower case are read. A character that is no digit is not noticed: it counts as
// 240, so that it is 0 in the first place and adds 240 in the second.
inline unsigned char HexPairToByte(const char*& ioPosition, int inDigits) {
  constexpr unsigned char kNoDigit = 240;
  unsigned char value = 0;
  int shift = 4;
  for (; inDigits > 0; --inDigits, shift -= 4) {
    const unsigned char unit = static_cast<unsigned char>(*ioPosition++);
    unsigned char digit = kNoDigit;
    if (unit >= '0' && unit <= '9') {
      digit = static_cast<unsigned char>(unit - '0');
    } else if ((unit >= 'A' && unit <= 'F') || (unit >= 'a' && unit <= 'f')) {
      digit = static_cast<unsigned char>((unit | 0x20) - 'a' + 10);
    }
    value = static_cast<unsigned char>(value + static_cast<unsigned char>(digit << shift));
  }
  return value;
}

// Makes `outBytes` the bytes that `inText` stands for; an odd last digit is dropped. A text of two
// characters or fewer leaves `outBytes` as it was, and one that does not begin with "0x" changes
// its length alone.
inline void HexTextToBytes(const std::string& inText, std::string& outBytes) {
  if (inText.size() <= 2) return;
  outBytes.resize((inText.size() - 2) / 2);
  if (inText[0] != '0' || inText[1] != 'x') return;
  const char* position = inText.data() + 2;
  for (char& byte : outBytes) byte = static_cast<char>(HexPairToByte(position, 2));
}

#endif  // QUENXML2_FOUNDATION_HEXBINCV_H_

// SPDX-License-Identifier: Apache-2.0
#include "examples/explore/text.h"

#include <algorithm>

namespace explore {
namespace {

void AppendCharacter(char32_t inCharacter, std::string& outBytes) {
  const auto byte = [&](char32_t value) { outBytes += static_cast<char>(value); };
  const auto tail = [&](int shift) { byte(0x80 | ((inCharacter >> shift) & 0x3F)); };
  if (inCharacter < 0x80) {
    byte(inCharacter);
  } else if (inCharacter < 0x800) {
    byte(0xC0 | (inCharacter >> 6));
    tail(0);
  } else if (inCharacter < 0x10000) {
    byte(0xE0 | (inCharacter >> 12));
    tail(6);
    tail(0);
  } else {
    byte(0xF0 | (inCharacter >> 18));
    tail(12);
    tail(6);
    tail(0);
  }
}

constexpr bool IsHigh(char16_t inUnit) { return (inUnit & 0xFC00) == 0xD800; }
constexpr bool IsLow(char16_t inUnit) { return (inUnit & 0xFC00) == 0xDC00; }

}  // namespace

std::string ToUtf8(std::u16string_view inText) {
  std::string bytes;
  for (std::size_t i = 0; i < inText.size(); ++i) {
    char32_t character = inText[i];
    if (IsHigh(inText[i]) && i + 1 < inText.size() && IsLow(inText[i + 1])) {
      character = 0x10000 + ((character & 0x3FF) << 10) + (inText[++i] & 0x3FFU);
    } else if (IsHigh(inText[i]) || IsLow(inText[i])) {
      character = 0xFFFD;
    }
    AppendCharacter(character, bytes);
  }
  return bytes;
}

std::u16string FromUtf8(std::string_view inBytes) {
  std::u16string text;
  for (std::size_t i = 0; i < inBytes.size();) {
    const unsigned char head = static_cast<unsigned char>(inBytes[i]);
    const std::size_t length = head < 0x80   ? 1
                               : head < 0xC2 ? 0
                               : head < 0xE0 ? 2
                               : head < 0xF0 ? 3
                               : head < 0xF5 ? 4
                                             : 0;
    char32_t character = length == 1 ? head : head & (0x7FU >> length);
    bool good = length != 0 && i + length <= inBytes.size();
    for (std::size_t k = 1; good && k < length; ++k) {
      const unsigned char byte = static_cast<unsigned char>(inBytes[i + k]);
      good = (byte & 0xC0) == 0x80;
      character = (character << 6) | (byte & 0x3FU);
    }
    i += good ? length : 1;
    if (!good) character = 0xFFFD;
    if (character >= 0x10000) {
      text += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
      text += static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
    } else {
      text += static_cast<char16_t>(character);
    }
  }
  return text;
}

std::string Quoted(std::u16string_view inText, std::size_t inMaximum) {
  std::u16string text(inText.substr(0, inMaximum));
  if (text.size() < inText.size() && !text.empty() && IsHigh(text.back())) text.pop_back();
  std::replace_if(
      text.begin(), text.end(), [](char16_t unit) { return unit < u' '; }, u' ');
  return "\"" + ToUtf8(text) + (text.size() < inText.size() ? "...\"" : "\"");
}

std::size_t Columns(std::string_view inBytes) {
  return static_cast<std::size_t>(std::count_if(inBytes.begin(), inBytes.end(), [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
  }));
}

}  // namespace explore

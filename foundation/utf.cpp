// SPDX-License-Identifier: Apache-2.0
#include "foundation/utf.h"

#include <cstdint>
#include <cstring>

namespace quen::internal {
namespace {

using Byte = unsigned char;

// Number of leading ASCII bytes, eight at a time.
std::size_t AsciiRun(const char* inBytes, std::size_t inLength) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  std::size_t i = 0;
  for (; i + 8 <= inLength; i += 8) {
    std::uint64_t word;
    std::memcpy(&word, inBytes + i, sizeof word);
    if ((word & kHighBits) != 0) break;
  }
  while (i < inLength && static_cast<Byte>(inBytes[i]) < 0x80) ++i;
  return i;
}

// The shape of a sequence by its first byte: its length, and the range of its second byte. That
// range is what excludes overlong forms, surrogates and values above U+10FFFF.
struct Lead {
  unsigned length;
  Byte secondLow;
  Byte secondHigh;
};

constexpr Lead LeadOf(Byte inByte) {
  if (inByte >= 0xC2 && inByte <= 0xDF) return {2, 0x80, 0xBF};
  if (inByte == 0xE0) return {3, 0xA0, 0xBF};
  if (inByte == 0xED) return {3, 0x80, 0x9F};
  if (inByte >= 0xE1 && inByte <= 0xEF) return {3, 0x80, 0xBF};
  if (inByte == 0xF0) return {4, 0x90, 0xBF};
  if (inByte >= 0xF1 && inByte <= 0xF3) return {4, 0x80, 0xBF};
  if (inByte == 0xF4) return {4, 0x80, 0x8F};
  return {0, 0, 0};
}

// How many bytes from `inBytes` on form the beginning of one well-formed sequence.
std::size_t ValidPrefix(const Lead& inLead, const char* inBytes, std::size_t inLength) {
  std::size_t valid = 1;
  while (valid < inLead.length && valid < inLength) {
    const Byte byte = static_cast<Byte>(inBytes[valid]);
    const Byte low = valid == 1 ? inLead.secondLow : Byte{0x80};
    const Byte high = valid == 1 ? inLead.secondHigh : Byte{0xBF};
    if (byte < low || byte > high) break;
    ++valid;
  }
  return valid;
}

char* PutUtf8(std::uint32_t inCodePoint, char* outBytes) {
  const auto trail = [&](unsigned shift) {
    return static_cast<char>(0x80 | ((inCodePoint >> shift) & 0x3F));
  };
  if (inCodePoint < 0x80) {
    *outBytes++ = static_cast<char>(inCodePoint);
  } else if (inCodePoint < 0x800) {
    *outBytes++ = static_cast<char>(0xC0 | (inCodePoint >> 6));
    *outBytes++ = trail(0);
  } else if (inCodePoint < 0x10000) {
    *outBytes++ = static_cast<char>(0xE0 | (inCodePoint >> 12));
    *outBytes++ = trail(6);
    *outBytes++ = trail(0);
  } else {
    *outBytes++ = static_cast<char>(0xF0 | (inCodePoint >> 18));
    *outBytes++ = trail(12);
    *outBytes++ = trail(6);
    *outBytes++ = trail(0);
  }
  return outBytes;
}

// Number of leading ASCII units, four at a time.
std::size_t AsciiRun(const char16_t* inText, std::size_t inLength) {
  constexpr std::uint64_t kHighBits = 0xFF80FF80FF80FF80;
  std::size_t i = 0;
  for (; i + 4 <= inLength; i += 4) {
    std::uint64_t word;
    std::memcpy(&word, inText + i, sizeof word);
    if ((word & kHighBits) != 0) break;
  }
  while (i < inLength && inText[i] < 0x80) ++i;
  return i;
}

}  // namespace

std::size_t AppendUtf16(std::string_view inBytes, std::u16string& outText) {
  const std::size_t before = outText.size();
  // One unit a byte is the upper bound: only 4-byte sequences make two units.
  outText.resize(before + inBytes.size());
  char16_t* out = outText.data() + before;
  const char* const data = inBytes.data();
  const std::size_t size = inBytes.size();
  std::size_t malformed = kWellFormed;
  std::size_t i = 0;
  while (i < size) {
    const std::size_t ascii = AsciiRun(data + i, size - i);
    for (std::size_t k = 0; k < ascii; ++k) out[k] = static_cast<Byte>(data[i + k]);
    out += ascii;
    i += ascii;
    if (i == size) break;
    const Byte first = static_cast<Byte>(data[i]);
    const Lead lead = LeadOf(first);
    if (lead.length == 0 || ValidPrefix(lead, data + i, size - i) < lead.length) {
      malformed = i;
      break;
    }
    std::uint32_t codePoint = first & (0x7FU >> lead.length);
    for (unsigned k = 1; k < lead.length; ++k)
      codePoint = (codePoint << 6) | (static_cast<Byte>(data[i + k]) & 0x3FU);
    if (codePoint < 0x10000) {
      *out++ = static_cast<char16_t>(codePoint);
    } else {
      codePoint -= 0x10000;
      *out++ = static_cast<char16_t>(0xD800 + (codePoint >> 10));
      *out++ = static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF));
    }
    i += lead.length;
  }
  outText.resize(static_cast<std::size_t>(out - outText.data()));
  return malformed;
}

std::size_t AppendUtf8(std::u16string_view inText, std::string& outBytes) {
  const std::size_t before = outBytes.size();
  const char16_t* const data = inText.data();
  const std::size_t size = inText.size();
  const std::size_t ascii = AsciiRun(data, size);
  // Three bytes a unit is the upper bound: a surrogate pair, two units, takes four.
  outBytes.resize(before + ascii + 3 * (size - ascii));
  char* out = outBytes.data() + before;
  for (std::size_t k = 0; k < ascii; ++k) out[k] = static_cast<char>(data[k]);
  out += ascii;
  std::size_t malformed = kWellFormed;
  for (std::size_t i = ascii; i < size; ++i) {
    std::uint32_t codePoint = data[i];
    if (IsSurrogate(data[i])) {
      if (!IsHighSurrogate(data[i]) || i + 1 == size || !IsLowSurrogate(data[i + 1])) {
        malformed = i;
        break;
      }
      codePoint = 0x10000 + ((codePoint & 0x3FF) << 10) + (data[i + 1] & 0x3FFU);
      ++i;
    }
    out = PutUtf8(codePoint, out);
  }
  outBytes.resize(static_cast<std::size_t>(out - outBytes.data()));
  return malformed;
}

std::string ToUtf8Lossy(std::u16string_view inText) {
  std::string bytes;
  for (;;) {
    const std::size_t malformed = AppendUtf8(inText, bytes);
    if (malformed == kWellFormed) return bytes;
    bytes += "\xEF\xBF\xBD";
    inText.remove_prefix(malformed + 1);
  }
}

std::size_t IncompleteTail(std::string_view inBytes) {
  const std::size_t size = inBytes.size();
  for (std::size_t back = 1; back <= 3 && back <= size; ++back) {
    const Byte byte = static_cast<Byte>(inBytes[size - back]);
    if ((byte & 0xC0) == 0x80) continue;
    const Lead lead = LeadOf(byte);
    const bool cut =
        lead.length > back && ValidPrefix(lead, inBytes.data() + (size - back), back) == back;
    return cut ? back : 0;
  }
  return 0;
}

}  // namespace quen::internal

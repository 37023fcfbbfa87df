// SPDX-License-Identifier: Apache-2.0
#include "foundation/utf.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <utility>

namespace quen::internal {
namespace {

using Byte = unsigned char;

// Whether the eight bytes from `inBytes` on are ASCII.
bool IsAscii(const char* inBytes) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  std::uint64_t word;
  std::memcpy(&word, inBytes, sizeof word);
  return (word & kHighBits) == 0;
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

constexpr std::array<Lead, 256> Leads() {
  std::array<Lead, 256> leads{};
  for (unsigned byte = 0; byte < 256; ++byte) leads[byte] = LeadOf(static_cast<Byte>(byte));
  return leads;
}
constexpr std::array<Lead, 256> kLeads = Leads();

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

// Writes the UTF-16 form of `inBytes`, which has room for one unit a byte: only a sequence of four
// bytes makes two units. Returns the end of what was written.
char16_t* PutText(std::string_view inBytes, char16_t* outText, std::size_t& outMalformed) {
  const char* const data = inBytes.data();
  const std::size_t size = inBytes.size();
  outMalformed = kWellFormed;
  std::size_t i = 0;
  while (i < size) {
    if (i + 8 <= size && IsAscii(data + i)) {
      for (std::size_t k = 0; k < 8; ++k) outText[k] = static_cast<Byte>(data[i + k]);
      outText += 8;
      i += 8;
      continue;
    }
    const Byte first = static_cast<Byte>(data[i]);
    if (first < 0x80) {
      *outText++ = first;
      ++i;
      continue;
    }
    const Lead lead = kLeads[first];
    const auto at = [&](std::size_t k) -> unsigned {
      return i + k < size ? static_cast<Byte>(data[i + k]) : 0;
    };
    const auto continues = [&](std::size_t k) { return (at(k) & 0xC0) == 0x80; };
    if (lead.length == 0 || at(1) < lead.secondLow || at(1) > lead.secondHigh ||
        (lead.length > 2 && !continues(2)) || (lead.length > 3 && !continues(3))) {
      outMalformed = i;
      break;
    }
    std::uint32_t codePoint = (first & (0x7FU >> lead.length)) << 6 | (at(1) & 0x3F);
    for (std::size_t k = 2; k < lead.length; ++k) codePoint = codePoint << 6 | (at(k) & 0x3F);
    if (codePoint < 0x10000) {
      *outText++ = static_cast<char16_t>(codePoint);
    } else {
      codePoint -= 0x10000;
      *outText++ = static_cast<char16_t>(0xD800 + (codePoint >> 10));
      *outText++ = static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF));
    }
    i += lead.length;
  }
  return outText;
}

// Writes the UTF-8 form of `inText`, which has room for three bytes a unit: a surrogate pair, two
// units, takes four. Returns the end of what was written.
char* PutText(std::u16string_view inText, char* outBytes, std::size_t& outMalformed) {
  const char16_t* const data = inText.data();
  const std::size_t size = inText.size();
  outMalformed = kWellFormed;
  for (std::size_t i = 0; i < size; ++i) {
    std::uint32_t codePoint = data[i];
    if (IsSurrogate(data[i])) {
      if (!IsHighSurrogate(data[i]) || i + 1 == size || !IsLowSurrogate(data[i + 1])) {
        outMalformed = i;
        break;
      }
      codePoint = 0x10000 + ((codePoint & 0x3FF) << 10) + (data[i + 1] & 0x3FFU);
      ++i;
    }
    outBytes = PutUtf8(codePoint, outBytes);
  }
  return outBytes;
}

// Texts up to this length are written on the stack first: the string is then made at its size, and
// not cleared before it is written.
constexpr std::size_t kShortText = 128;

}  // namespace

std::size_t AppendUtf16(std::string_view inBytes, std::u16string& outText) {
  std::size_t malformed = kWellFormed;
  if (inBytes.size() <= kShortText) {
    char16_t text[kShortText];
    const char16_t* const end = PutText(inBytes, text, malformed);
    outText.append(text, static_cast<std::size_t>(end - text));
    return malformed;
  }
  const std::size_t before = outText.size();
  outText.resize(before + inBytes.size());
  const char16_t* const end = PutText(inBytes, outText.data() + before, malformed);
  outText.resize(static_cast<std::size_t>(end - outText.data()));
  return malformed;
}

std::size_t AppendUtf8(std::u16string_view inText, std::string& outBytes) {
  std::size_t malformed = kWellFormed;
  if (inText.size() <= kShortText) {
    char bytes[3 * kShortText];
    const char* const end = PutText(inText, bytes, malformed);
    outBytes.append(bytes, static_cast<std::size_t>(end - bytes));
    return malformed;
  }
  const std::size_t before = outBytes.size();
  const std::size_t ascii = AsciiRun(inText.data(), inText.size());
  outBytes.resize(before + ascii + 3 * (inText.size() - ascii));
  char* out = outBytes.data() + before;
  for (std::size_t k = 0; k < ascii; ++k) out[k] = static_cast<char>(inText[k]);
  out = PutText(inText.substr(ascii), out + ascii, malformed);
  outBytes.resize(static_cast<std::size_t>(out - outBytes.data()));
  return malformed == kWellFormed ? kWellFormed : malformed + ascii;
}

std::size_t AssignUtf8(std::u16string_view inText, std::string& outBytes) {
  std::size_t malformed = kWellFormed;
  if (inText.size() <= kShortText) {
    char bytes[3 * kShortText];
    const char* const end = PutText(inText, bytes, malformed);
    if (malformed == kWellFormed) outBytes.assign(bytes, static_cast<std::size_t>(end - bytes));
    return malformed;
  }
  std::string text;
  malformed = AppendUtf8(inText, text);
  if (malformed == kWellFormed) outBytes = std::move(text);
  return malformed;
}

std::u16string_view UpToZero(const std::u16string& inText) {
  constexpr std::uint64_t kOnes = 0x0001000100010001;
  constexpr std::uint64_t kHighBits = 0x8000800080008000;
  std::size_t i = 0;
  for (; i + 4 <= inText.size(); i += 4) {
    std::uint64_t word;
    std::memcpy(&word, inText.data() + i, sizeof word);
    if (((word - kOnes) & ~word & kHighBits) != 0) break;
  }
  while (i < inText.size() && inText[i] != u'\0') ++i;
  return std::u16string_view(inText.data(), i);
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
    const Lead lead = kLeads[byte];
    const bool cut =
        lead.length > back && ValidPrefix(lead, inBytes.data() + (size - back), back) == back;
    return cut ? back : 0;
  }
  return 0;
}

}  // namespace quen::internal

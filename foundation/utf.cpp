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

// The four units from `inText` on in one word.
std::uint64_t FourUnits(const char16_t* inText) {
  std::uint64_t word;
  std::memcpy(&word, inText, sizeof word);
  return word;
}
constexpr std::uint64_t kBeyondAscii = 0xFF80FF80FF80FF80;

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
    Byte sequence[4] = {};  // where the text ends, zeros follow, which continue nothing
    if (size - i >= sizeof sequence) {
      std::memcpy(sequence, data + i, sizeof sequence);
    } else {
      std::memcpy(sequence, data + i, size - i);
    }
    const Lead& lead = kLeads[first];
    const bool isGood = sequence[1] >= lead.secondLow && sequence[1] <= lead.secondHigh;
    const auto continues = [&](std::size_t k) { return (sequence[k] & 0xC0) == 0x80; };
    const auto bits = [&](std::size_t k) { return std::uint32_t{sequence[k]} & 0x3F; };
    if (lead.length == 2 && isGood) {
      *outText++ = static_cast<char16_t>((first & 0x1FU) << 6 | bits(1));
    } else if (lead.length == 3 && isGood && continues(2)) {
      *outText++ = static_cast<char16_t>((first & 0xFU) << 12 | bits(1) << 6 | bits(2));
    } else if (lead.length == 4 && isGood && continues(2) && continues(3)) {
      const std::uint32_t codePoint = (first & 7U) << 18 | bits(1) << 12 | bits(2) << 6 | bits(3);
      *outText++ = static_cast<char16_t>(0xD7C0 + (codePoint >> 10));
      *outText++ = static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF));
    } else {
      outMalformed = i;
      break;
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
  const auto put = [&](std::uint32_t byte) { *outBytes++ = static_cast<char>(byte); };
  const auto trail = [](std::uint32_t bits) { return 0x80 | (bits & 0x3F); };
  for (std::size_t i = 0; i < size; ++i) {
    while (i + 4 <= size && (FourUnits(data + i) & kBeyondAscii) == 0) {
      for (std::size_t k = 0; k < 4; ++k) outBytes[k] = static_cast<char>(data[i + k]);
      outBytes += 4;
      i += 4;
    }
    if (i == size) break;
    const std::uint32_t unit = data[i];
    if (unit < 0x80) {
      put(unit);
    } else if (unit < 0x800) {
      put(0xC0 | unit >> 6);
      put(trail(unit));
    } else if (!IsSurrogate(data[i])) {
      put(0xE0 | unit >> 12);
      put(trail(unit >> 6));
      put(trail(unit));
    } else {
      if (!IsHighSurrogate(data[i]) || i + 1 == size || !IsLowSurrogate(data[i + 1])) {
        outMalformed = i;
        break;
      }
      const std::uint32_t codePoint = 0x10000 + ((unit & 0x3FF) << 10) + (data[++i] & 0x3FFU);
      put(0xF0 | codePoint >> 18);
      put(trail(codePoint >> 12));
      put(trail(codePoint >> 6));
      put(trail(codePoint));
    }
  }
  return outBytes;
}

// Text is converted on the stack, a piece at a time: the result is neither cleared before it is
// written nor larger than it needs to be.
constexpr std::size_t kPiece = 512;

// The text before `inEnd` without a sequence that is cut there.
std::size_t WholeSequences(std::string_view inBytes, std::size_t inEnd) {
  return inEnd - IncompleteTail(inBytes.substr(0, inEnd));
}
std::size_t WholeSequences(std::u16string_view inText, std::size_t inEnd) {
  return IsHighSurrogate(inText[inEnd - 1]) ? inEnd - 1 : inEnd;
}

// Appends the other form of `inText`, of which a unit makes at most `kMost` units.
template <std::size_t kMost, class Unit, class Other>
std::size_t Append(std::basic_string_view<Unit> inText, std::basic_string<Other>& outText) {
  Other piece[kMost * kPiece];
  if (inText.size() > kPiece) outText.reserve(outText.size() + inText.size());
  for (std::size_t begin = 0; begin < inText.size();) {
    std::size_t end = begin + kPiece;
    end = end < inText.size() ? WholeSequences(inText, end) : inText.size();
    std::size_t malformed;
    const Other* const pieceEnd = PutText(inText.substr(begin, end - begin), piece, malformed);
    outText.append(piece, static_cast<std::size_t>(pieceEnd - piece));
    if (malformed != kWellFormed) return begin + malformed;
    begin = end;
  }
  return kWellFormed;
}

}  // namespace

std::size_t AppendUtf16(std::string_view inBytes, std::u16string& outText) {
  return Append<1>(inBytes, outText);
}

std::size_t AppendUtf8(std::u16string_view inText, std::string& outBytes) {
  return Append<3>(inText, outBytes);
}

std::size_t AssignUtf8(std::u16string_view inText, std::string& outBytes) {
  std::size_t malformed = kWellFormed;
  if (inText.size() <= kPiece) {
    char bytes[3 * kPiece];
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

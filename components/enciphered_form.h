// SPDX-License-Identifier: Apache-2.0
//
// The enciphered form of a text, which docs/cipher.md gives byte by byte: a header, the enciphered
// 16-bit units in little-endian order, and the tag that authenticates both.
#ifndef QUENXML2_COMPONENTS_ENCIPHERED_FORM_H_
#define QUENXML2_COMPONENTS_ENCIPHERED_FORM_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "components/secret.h"

namespace quen::internal {

inline constexpr std::size_t kHeaderSize = 96;
inline constexpr std::size_t kTagSize = 16;
inline constexpr std::size_t kRawKeySize = 32;

// Where the fields of the header begin.
inline constexpr std::size_t kVersionAt = 4;
inline constexpr std::size_t kKindAt = 5;
inline constexpr std::size_t kLog2CostAt = 6;
inline constexpr std::size_t kBlockSizeAt = 7;
inline constexpr std::size_t kLanesAt = 8;
inline constexpr std::size_t kReservedAt = 9;
inline constexpr std::size_t kLengthAt = 12;
inline constexpr std::size_t kSaltAt = 20;
inline constexpr std::size_t kNonceAt = 52;
inline constexpr std::size_t kKeyCheckAt = 64;

// How the cipher key comes from the caller's key. The values stand in the header.
enum class KeyKind : unsigned char { kPassword = 1, kRaw = 2 };

// The parameters of scrypt (RFC 7914): N as its binary logarithm, r and p. All zero for a raw key.
struct DerivationCost {
  unsigned char log2Cost;
  unsigned char blockSize;
  unsigned char lanes;
};

// What every password operation pays: 128 MiB and 0.6 to 0.8 s on a 2-core EPYC machine. An attack
// on a stolen text pays the same for each guess, and memory is what keeps it from running thousands
// of guesses side by side on a graphics card. A step less halves the price for both sides; callers
// who cannot pay it have raw keys.
inline constexpr DerivationCost kPasswordCost = {17, 8, 1};

// What a header may ask of its reader, who cannot know yet whether it is forged: twice the memory
// of kPasswordCost and four times its work. Later writers can raise their cost within that.
inline constexpr std::uint64_t kMaxDerivationMemory = std::uint64_t{256} << 20;
inline constexpr std::uint64_t kMaxDerivationWork = std::uint64_t{1} << 22;  // N * r * p

struct Header {
  KeyKind kind;
  DerivationCost cost;
  std::uint64_t length;  // of the enciphered units, in bytes
};

// The caller's key: the UTF-16LE bytes of a password, or the 32 bytes of a raw key.
struct CallerKey {
  KeyKind kind;
  Secret bytes;
};

// Reads the beginning of an enciphered text of `inTotalSize` bytes, of which `inHead` holds the
// first kHeaderSize or all, and throws unless header and size are in order.
Header ParseHeader(std::string_view inHead, std::uint64_t inTotalSize);

std::string Encipher(const CallerKey& inKey, std::u16string_view inText);
std::u16string Decipher(const CallerKey& inKey, std::string_view inData);

}  // namespace quen::internal

#endif  // QUENXML2_COMPONENTS_ENCIPHERED_FORM_H_

// SPDX-License-Identifier: Apache-2.0
//
// Strict conversion between UTF-8 and UTF-16 (Unicode 15, table 3-7), without engine and locale.
//
// The engine's own transcoder stops silently at a cut sequence, and writes other characters for a
// lone surrogate. Text that comes out shorter or different is data lost, so both are refused here.
#ifndef QUENXML2_FOUNDATION_UTF_H_
#define QUENXML2_FOUNDATION_UTF_H_

#include <cstddef>
#include <string>
#include <string_view>

namespace quen::internal {

inline constexpr std::size_t kWellFormed = static_cast<std::size_t>(-1);

// Appends the UTF-16 form of `inBytes`. Returns kWellFormed, or the index of the byte at which the
// first malformed sequence (overlong, surrogate, above U+10FFFF, cut off) begins; what stands
// before it has been appended then.
std::size_t AppendUtf16(std::string_view inBytes, std::u16string& outText);

// Appends the UTF-8 form of `inText`. Returns kWellFormed, or the index of the first unit that is a
// surrogate without its partner; what stands before it has been appended then.
std::size_t AppendUtf8(std::u16string_view inText, std::string& outBytes);

// As AppendUtf8, in the place of what `outBytes` holds, which stays if `inText` is malformed.
std::size_t AssignUtf8(std::u16string_view inText, std::string& outBytes);

// The text that ends at the first zero unit.
std::u16string_view UpToZero(const std::u16string& inText);

// As AppendUtf8, with U+FFFD for what UTF-8 cannot carry. For diagnostics.
std::string ToUtf8Lossy(std::u16string_view inText);

// The number of bytes at the end of `inBytes` that begin a sequence which more bytes could
// complete: 0 to 3. For decoding in chunks.
std::size_t IncompleteTail(std::string_view inBytes);

constexpr bool IsHighSurrogate(char16_t inUnit) { return (inUnit & 0xFC00) == 0xD800; }
constexpr bool IsLowSurrogate(char16_t inUnit) { return (inUnit & 0xFC00) == 0xDC00; }
constexpr bool IsSurrogate(char16_t inUnit) { return (inUnit & 0xF800) == 0xD800; }

}  // namespace quen::internal

#endif  // QUENXML2_FOUNDATION_UTF_H_

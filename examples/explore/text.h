// SPDX-License-Identifier: Apache-2.0
//
// Between the library's wide text and the bytes of the terminal, which are taken for UTF-8.
#ifndef QUENXML2_EXAMPLES_EXPLORE_TEXT_H_
#define QUENXML2_EXAMPLES_EXPLORE_TEXT_H_

#include <cstddef>
#include <string>
#include <string_view>

namespace explore {

// A surrogate without its partner becomes U+FFFD.
std::string ToUtf8(std::u16string_view inText);
// Bytes that are no UTF-8 become U+FFFD.
std::u16string FromUtf8(std::string_view inBytes);

// `inText` on one line, in quotes: line ends and tabs as blanks, cut behind `inMaximum` units.
std::string Quoted(std::u16string_view inText, std::size_t inMaximum);

// The columns that UTF-8 text fills, one for each character.
std::size_t Columns(std::string_view inBytes);

}  // namespace explore

#endif  // QUENXML2_EXAMPLES_EXPLORE_TEXT_H_

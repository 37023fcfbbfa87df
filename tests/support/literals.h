// SPDX-License-Identifier: Apache-2.0
//
// Texts of rows that fit both widths: "/a"_t is a text of 16-bit units where one is wanted, and
// UTF-8 where that is.
#ifndef QUENXML2_TESTS_SUPPORT_LITERALS_H_
#define QUENXML2_TESTS_SUPPORT_LITERALS_H_

#include "tests/support/widths.h"

namespace quen::test {

struct RowText {
  std::string utf8;
  operator wstring() const { return WideTypes::Text(utf8); }
  operator string() const { return utf8; }
};

inline RowText operator""_t(const char* inText, std::size_t inLength) {
  return RowText{std::string(inText, inLength)};
}

inline wstring Wide(std::string_view inUtf8) { return WideTypes::Text(inUtf8); }
inline std::string Utf8(const wstring& inText) { return WideTypes::Utf8(inText); }

constexpr const QuenXMLDOMNode2w_NullPtr* kNull = nullptr;

}  // namespace quen::test

#endif  // QUENXML2_TESTS_SUPPORT_LITERALS_H_

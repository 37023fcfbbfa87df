// SPDX-License-Identifier: Apache-2.0
// What a code unit may be in an expression that goes to Xalan-C. Says yes to a few units too many,
// which the engine refuses itself.
#ifndef QUENXML2_DOM_EXPRESSION_UNITS_H_
#define QUENXML2_DOM_EXPRESSION_UNITS_H_

namespace quen::internal {

inline bool IsNameStart(char16_t c) {
  return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_' || c >= 0x80;
}
inline bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }
inline bool IsBlank(char16_t c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n'; }
inline bool IsNameChar(char16_t c) {
  return IsNameStart(c) || IsDigit(c) || c == u'-' || c == u'.';
}

}  // namespace quen::internal

#endif  // QUENXML2_DOM_EXPRESSION_UNITS_H_

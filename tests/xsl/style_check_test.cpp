// SPDX-License-Identifier: Apache-2.0
#include "xsl/style_check.h"

#include <gtest/gtest.h>

namespace quen::internal {
namespace {

TEST(StyleCheckTest, PatternsThatTheEngineCrashesOnAreNoPatterns) {
  const struct {
    const char16_t* text;
    bool isPattern;
  } kRows[] = {
      {u"/", true},
      {u"a", true},
      {u" a | /  ", true},
      {u"//a", true},
      {u"a//b/@c", true},
      {u"a[b|c]/d['|']", true},
      {u"id('|x')|key('k', '//')/a", true},
      {u"//", false},
      {u"", false},
      {u"|a", false},
      {u"a|", false},
      {u"a||b", false},
      {u"a//", false},
      {u"a/", false},
      {u"b | // ", false},
  };
  for (const auto& row : kRows)
    EXPECT_EQ(IsPattern(row.text), row.isPattern) << wstring(row.text).size();
}

TEST(StyleCheckTest, NumbersBecomeValuesBeforeTheyBecomeText) {
  const struct {
    const char16_t* before;
    const char16_t* after;
  } kRows[] = {
      {u"@a", u"@a"},
      {u"@a * 2", u"string(@a * 2)"},
      {u"sum(a)", u"string(sum(a))"},
      {u"string-length(a)", u"string(string-length(string(a)))"},
      {u"concat(string-length(a[1]), ')')", u"string(concat(string-length(string(a[1])), ')'))"},
      {u"string-length( )", u"string(string-length( ))"},
      {u"1) + (2", u"1) + (2"},
      {u"a[1 + 1", u"a[1 + 1"},
      {u"'a + b", u"'a + b"},
  };
  for (const auto& row : kRows)
    EXPECT_EQ(WithNumbersAsValues(row.before, Becomes::kText), row.after);
  EXPECT_EQ(WithNumbersAsValues(u"@a * 2", Becomes::kAnything), u"@a * 2");
  EXPECT_EQ(WithNumbersAsValues(u"string-length(@a * 2)", Becomes::kAnything),
            u"string-length(string(@a * 2))");
  EXPECT_EQ(WithNumbersAsValues(u"@a", Becomes::kNumber), u"number(string(number(@a)))");
  EXPECT_EQ(WithNumbersAsValues(u" ", Becomes::kNumber), u" ");
  EXPECT_EQ(WithNumbersAsValues(u"1) + (2", Becomes::kNumber), u"1) + (2");
}

TEST(StyleCheckTest, OnlyWhatStandsInBracesOfATemplateChanges) {
  const struct {
    const char16_t* before;
    const char16_t* after;
  } kRows[] = {
      {u"1 + 1", u"1 + 1"},
      {u"{1 + 1}", u"{string(1 + 1)}"},
      {u"a{{1 + 1}}{@b}{1+1}z", u"a{{1 + 1}}{@b}{string(1+1)}z"},
      {u"{'}' + 1}", u"{string('}' + 1)}"},
      {u"{1 + 1", u"{1 + 1"},
      {u"{'", u"{'"},
  };
  for (const auto& row : kRows) EXPECT_EQ(TemplateWithNumbersAsValues(row.before), row.after);
}

TEST(StyleCheckTest, WhatIsNoExpressionMayBeLong) {
  wstring steps, words, digits(200, u'1');
  for (int i = 0; i < 1100; ++i) {
    steps += u" L 1/('";
    words += u" or a";
  }
  const struct {
    wstring text;
    bool isBearable;
  } kRows[] = {
      {u"{1}" + steps, true},
      {u"{{" + steps + u"}}{1}", true},
      {steps + u"{1}" + steps + u"{2}" + digits, true},
      {u"{'" + steps + u"'}", false},
      {u"{\"" + steps + u"\"}", true},
      {steps + u"{1}" + steps + u"{" + steps + u"}", false},
      {u"' {" + digits + u"}", false},
      {u"{1}' {" + digits + u"}'", false},
      {u"{{{" + digits + u"}", false},
      {u"{0.5 + " + digits + u".5}", false},
      {u"{a" + words + u"}", false},
      {u"{" + wstring(1100, u'-') + u"1}", false},
      {u"{" + wstring(65537, u'a') + u"}", false},
      {u"{0." + digits + u" + '" + digits + u"'}", true},
  };
  for (const auto& row : kRows)
    EXPECT_EQ(IsBearableTemplate(row.text), row.isBearable) << &row - kRows;
}

}  // namespace
}  // namespace quen::internal

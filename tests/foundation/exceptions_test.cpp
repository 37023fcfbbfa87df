// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/exceptions.h>

#include <gtest/gtest.h>

#include <sstream>

#include <xercesc/dom/DOMException.hpp>

#include "dom/clauses.h"
#include "foundation/failure.h"
#include "foundation/wide_stream.h"
#include "tests/support/literals.h"

namespace quen::test {
namespace {

template <class Failure>
class Exceptions : public testing::Test {};
using Families = testing::Types<CQuenXMLException2w, CQuenXMLException2>;
TYPED_TEST_SUITE(Exceptions, Families, );

template <class Failure>
std::string Fields(const Failure& inFailure) {
  const auto show = [](const auto& text) {
    if constexpr (std::is_same_v<std::decay_t<decltype(text)>, wstring>)
      return Utf8(text);
    else
      return text;
  };
  return show(inFailure.GetErrorContext()) + "|" + std::to_string(inFailure.GetErrorCode()) + "|" +
         show(inFailure.GetErrorMessage()) + "|" + show(inFailure.GetErrorDetail());
}

TYPED_TEST(Exceptions, SettersReplaceAndSetErrorAppendsToTheContext) {
  TypeParam failure;
  EXPECT_EQ(Fields(failure), "|0||");
  failure.SetErrorContext("a"_t);
  failure.SetError("b"_t, 7, "m"_t, "d"_t);
  EXPECT_EQ(Fields(failure), "ab|7|m|d");
  failure.SetError("c"_t, 8, "n"_t, ""_t);
  EXPECT_EQ(Fields(failure), "abc|8|n|");
  failure.SetError("d"_t, 4294967295u, "o"_t);
  EXPECT_EQ(Fields(failure), "abcd|4294967295|o|");
  failure.SetErrorContext("x"_t);
  failure.SetErrorCode(1);
  failure.SetErrorMessage("y"_t);
  failure.SetErrorDetail("z"_t);
  EXPECT_EQ(Fields(failure), "x|1|y|z");
}

TYPED_TEST(Exceptions, CopiesOwnTheirTexts) {
  TypeParam first;
  first.SetError("c"_t, 5, "m"_t, "d"_t);
  TypeParam second(first);
  TypeParam third;
  third = second;
  first.SetError("c"_t, 6, "other"_t, "other"_t);
  second = *&second;
  EXPECT_EQ(Fields(second), "c|5|m|d");
  EXPECT_EQ(Fields(third), "c|5|m|d");
}

TEST(Exceptions, WhatIsTheMessageAtConstruction) {
  CQuenXMLException2w wide(u"c", 1, u"\u00e9\xd800!");
  wide.SetErrorMessage(u"later");
  EXPECT_STREQ(wide.what(), "\u00e9\ufffd!");
  const CQuenXMLException2 narrow("c", 1, "\u00e9", "d");
  const CQuenException& sliced = CQuenException(narrow);
  EXPECT_STREQ(sliced.what(), "\u00e9");
  EXPECT_EQ(Fields(CQuenXMLException2w(nullptr, 3, nullptr, nullptr)), "|3||");
}

TEST(Exceptions, TheStreamGetsTheReportAndADetailThatIsNotEmpty) {
  CQuenXMLException2 narrow("ctx", 9, "msg");
  std::ostringstream bytes;
  EXPECT_EQ(&(bytes << narrow), &bytes);
  EXPECT_EQ(bytes.str(), narrow.ReportErrorMessage());
  narrow.SetErrorDetail("more");
  std::ostringstream detailed;
  detailed << narrow;
  EXPECT_EQ(detailed.str(), bytes.str() + "Error Detail: more");

  CQuenXMLException2w wide(u"ctx", 9, u"msg", u"more");
  quenxml_private::quen_basic_ostringstream<char16_t> units;
  units << wide;
  EXPECT_EQ(Utf8(units.str()), detailed.str());
}

std::string Crossed(const wstring& inContext, const wstring& inMessage) {
  CQuenXMLException2w wide(u"", 1011, u"", u"a detail");
  wide.SetErrorContext(inContext);
  wide.SetErrorMessage(inMessage);
  try {
    RethrowNarrow(wide);
  } catch (const CQuenXMLException2& narrow) {
    return Fields(narrow);
  } catch (const CQuenXMLException2w& failure) {
    return Utf8(failure.GetErrorContext());
  }
}

TEST(Exceptions, CrossingToTheNarrowSideLosesTheDetail) {
  EXPECT_EQ(Crossed(u"c\u00e9", u"m\u20ac"), "c\u00e9|1011|m\u20ac|");
  EXPECT_EQ(Crossed(wstring(u"c\0x", 3), wstring(u"m\0x", 3)), "c|1011|m|");
  EXPECT_EQ(Crossed(u"c", u"\xd800"), "CQuenXMLImplUtils2w::TransCodeToUTF8()");
}

template <class Clauses, class Thrown>
std::string Translated(const Thrown& inThrown) {
  return FailureAt<WideTypes>([&] { internal::Guarded<Clauses>(u"ctx", [&] { throw inThrown; }); });
}

TEST(Exceptions, ClausesTranslateWhatTheEngineThrows) {
  const xercesc::DOMException silent;  // without code and message
  EXPECT_EQ(Translated<internal::NodeClauses>(silent), "0 DOM Error: Undefined error @ ctx");
  EXPECT_EQ(Translated<internal::FactoryClauses>(silent), "0 DOM Error: Undefined error @ ctx");
  const CQuenXMLException2w own(u"inner", 5, u"m");
  EXPECT_EQ(Translated<internal::NodeClauses>(own), "5 m @ inner");
  EXPECT_EQ(Translated<internal::LoadClauses>(own), "5 m @ inner");
  EXPECT_EQ(Translated<internal::FactoryClauses>(own), "1009 Unknown Error @ ctx");
  EXPECT_EQ(Translated<internal::NodeClauses>(1), "1000 Unknown Exception @ ctx");
  EXPECT_EQ(Translated<internal::LoadClauses>(1), "1009 Unknown Error @ ctx");
  EXPECT_EQ(Translated<internal::FactoryClauses>(1), "1009 Unknown Error @ ctx");
}

}  // namespace
}  // namespace quen::test

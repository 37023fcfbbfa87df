// SPDX-License-Identifier: Apache-2.0
//
// The two widths of the library as one test parameter, so that the same rows run through both. Rows
// are UTF-8; `Text` and `Utf8` cross.
//
//   template <class Width> class SetData : public testing::Test {};
//   TYPED_TEST_SUITE(SetData, quen::test::Widths, quen::test::WidthNames);
//
//   TYPED_TEST(SetData, Rows) {
//     using W = TypeParam;
//     for (const SetCase& row : kSetCases) {
//       SCOPED_TRACE(row.what);
//       typename W::Data tree(W::Text(row.xml));
//       const std::string failure =
//           quen::test::Failure<W>([&] { tree.SetData(W::Text("9"), W::Text(row.path)); });
//       EXPECT_EQ(failure.empty() ? quen::test::Whole<W>(tree) : failure, row.outcome);
//     }
//   }
#ifndef QUENXML2_TESTS_SUPPORT_WIDTHS_H_
#define QUENXML2_TESTS_SUPPORT_WIDTHS_H_

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <string_view>

#include <quenxml2/data.h>
#include <quenxml2/dom.h>
#include <quenxml2/exceptions.h>
#include <quenxml2/message.h>
#include <quenxml2/narrow.h>
#include <quenxml2/utils.h>

#include "foundation/utf.h"

namespace quen::test {

struct WideTypes {
  using String = wstring;
  using Exception = CQuenXMLException2w;
  using Node = CQuenXMLNode2w;
  using Element = CQuenXMLElement2w;
  using Attr = CQuenXMLAttr2w;
  using CDATA = CQuenXMLCDATA2w;
  using Comment = CQuenXMLComment2w;
  using PI = CQuenXMLPI2w;
  using Document = CQuenXMLDocument2w;
  using Data = CQuenXMLData2w;
  using Msg = CQuenXMLMsg2w;
  using BaseMessage = CQuenMessagew;
  using Utils = CQuenXMLUtils2w;

  // The implementation has the UTF-8 operations, which the narrow classes do not need.
  static CQuenXMLDataImpl2w& Impl(const Data& inTree) { return *inTree.GetCQuenXMLData2wImpl(); }
  static String Text(std::string_view inUtf8) {
    String text;
    if (internal::AppendUtf16(inUtf8, text) != internal::kWellFormed)
      throw std::invalid_argument("a row is not UTF-8");
    return text;
  }
  static std::string Utf8(const String& inText) { return internal::ToUtf8Lossy(inText); }
};

struct NarrowTypes {
  using String = string;
  using Exception = CQuenXMLException2;
  using Node = CQuenXMLNode2;
  using Element = CQuenXMLElement2;
  using Attr = CQuenXMLAttr2;
  using CDATA = CQuenXMLCDATA2;
  using Comment = CQuenXMLComment2;
  using PI = CQuenXMLPI2;
  using Document = CQuenXMLDocument2;
  using Data = CQuenXMLData2;
  using Msg = CQuenXMLMsg2;
  using BaseMessage = CQuenMessage;
  using Utils = CQuenXMLUtils2;

  static CQuenXMLDataImpl2w& Impl(const Data& inTree) { return *inTree.GetCQuenXMLData2Impl(); }
  static String Text(std::string_view inUtf8) { return String(inUtf8); }
  static std::string Utf8(const String& inText) { return inText; }
};

using Widths = ::testing::Types<WideTypes, NarrowTypes>;

struct WidthNames {
  template <class Width>
  static std::string GetName(int) {
    return std::is_same_v<Width, WideTypes> ? "Wide" : "Narrow";
  }
};

// "" if the operation succeeds, else "1013 Path not found". The exception of the other width is not
// caught: it fails the test.
template <class Width, class Operation>
std::string Failure(Operation&& inOperation) {
  try {
    inOperation();
    return {};
  } catch (const typename Width::Exception& failure) {
    return std::to_string(failure.GetErrorCode()) + " " + Width::Utf8(failure.GetErrorMessage());
  }
}

// The same with the context: "1013 Path not found @ CQuenXMLDataImpl2w::GetData".
template <class Width, class Operation>
std::string FailureAt(Operation&& inOperation) {
  try {
    inOperation();
    return {};
  } catch (const typename Width::Exception& failure) {
    return std::to_string(failure.GetErrorCode()) + " " + Width::Utf8(failure.GetErrorMessage()) +
           " @ " + Width::Utf8(failure.GetErrorContext());
  }
}

// The whole document of a tree as text; "" for an empty tree.
template <class Width>
std::string Whole(const typename Width::Data& inTree) {
  typename Width::String text;
  inTree.GetSubset(text, Width::Text("/"));
  return Width::Utf8(text);
}

}  // namespace quen::test

#endif  // QUENXML2_TESTS_SUPPORT_WIDTHS_H_

// SPDX-License-Identifier: Apache-2.0
//
// The widths of the library as a test parameter, so that the same rows run through each. Rows are
// UTF-8; `Text` and `Utf8` cross.
#ifndef QUENXML2_TESTS_SUPPORT_WIDTHS_H_
#define QUENXML2_TESTS_SUPPORT_WIDTHS_H_

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <string_view>

#include <quenxml2/data.h>
#include <quenxml2/dom.h>
#include <quenxml2/exceptions.h>

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

  static String Text(std::string_view inUtf8) {
    String text;
    if (internal::AppendUtf16(inUtf8, text) != internal::kWellFormed)
      throw std::invalid_argument("a row is not UTF-8");
    return text;
  }
  static std::string Utf8(const String& inText) { return internal::ToUtf8Lossy(inText); }
};

using Widths = testing::Types<WideTypes>;

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

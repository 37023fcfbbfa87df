// SPDX-License-Identifier: Apache-2.0
//
// Rows of the data tree: a tree, what is done with it, and the outcome as text.
#ifndef QUENXML2_TESTS_DATA_ROWS_H_
#define QUENXML2_TESTS_DATA_ROWS_H_

#include <functional>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/support/literals.h"
#include "tests/support/widths.h"

namespace quen::test {

template <class W>
class DataTest : public testing::Test {
 protected:
  using Data = typename W::Data;
  using String = typename W::String;

  static std::string Show(const std::string& inText) { return inText; }
  static std::string Show(const wstring& inText) { return test::Utf8(inText); }
  template <class Number, class = std::enable_if_t<std::is_arithmetic_v<Number>>>
  static std::string Show(Number inNumber) {
    std::string text = std::to_string(inNumber);
    if constexpr (std::is_floating_point_v<Number>) text.erase(text.find_last_not_of('0') + 1);
    return text;
  }

  // What is done: gives nothing, and the outcome is the tree, or gives the outcome itself.
  class Act {
   public:
    template <class F>
    Act(F inAct)
        : act_([inAct](Data& ioTree) -> std::string {
            if constexpr (std::is_void_v<std::invoke_result_t<F, Data&>>) {
              inAct(ioTree);
              return All(ioTree);
            } else {
              return Show(inAct(ioTree));
            }
          }) {}
    std::string operator()(Data& ioTree) const { return act_(ioTree); }

   private:
    std::function<std::string(Data&)> act_;
  };

  struct Row {
    const char* what;
    const char* xml;
    Act act;
    std::string outcome;
  };

  static Data Tree(const char* inXml) { return Data(String(RowText{inXml})); }

  // The whole document, wherever the cursor stands.
  static std::string All(const Data& inTree) {
    std::string text;
    W::Impl(inTree).GetUTF8Subset(text);
    return text;
  }

  // A failure, which is "CODE MESSAGE @ CONTEXT", has to leave the tree as it was.
  static void Run(const std::vector<Row>& inRows) {
    for (const Row& row : inRows) {
      Data tree = Tree(row.xml);
      const std::string before = All(tree);
      std::string outcome;
      const std::string failure = FailureAt<W>([&] { outcome = row.act(tree); });
      EXPECT_EQ(failure.empty() ? outcome : failure, row.outcome) << row.what;
      if (!failure.empty()) {
        EXPECT_EQ(All(tree), before) << row.what;
      }
    }
  }

  // What an out argument holds behind a call; "kept" if it was not touched.
  template <class Call>
  static String Out(Call inCall) {
    String text = "kept"_t;
    inCall(text);
    return text;
  }
};

// Failures that many operations share.
inline const std::string kNoPath = "1013 Path not found @ CQuenXMLDataImpl2w::";
inline const std::string kNoPathForElement = kNoPath + "GetElementFromXPath";
inline const std::string kNoElement =
    "1013 Path does not resolve to an Element Node @ CQuenXMLDataImpl2w::GetElementFromXPath";
inline const std::string kNotInitialized = "8 Node was not initialized @ ";

}  // namespace quen::test

#endif  // QUENXML2_TESTS_DATA_ROWS_H_

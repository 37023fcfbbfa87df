// SPDX-License-Identifier: Apache-2.0
// Expressions and trees made to exhaust the stack, on a stack of 512 KiB.
#include <gtest/gtest.h>

#include "tests/dom/xml_fixture.h"
#include "tests/support/small_stack.h"

namespace quen::tests {
namespace {

using test::OnSmallStack;

std::u16string Repeat(std::u16string_view text, std::size_t count) {
  std::u16string out;
  for (; count != 0; --count) out += text;
  return out;
}

constexpr char kDepthRefused[] = "refused: The expression is nested too deeply.";
constexpr char kLengthRefused[] = "refused: The expression is too long.";
constexpr char kCountRefused[] = "refused: The expression has too many steps and operators.";

TEST(HostileExpressions, AreRefused) {
  const struct {
    const char* about;
    std::u16string expression;
    const char* outcome;
  } cases[] = {
      {"open brackets", Repeat(u"[", 100000), kLengthRefused},
      {"fewer", Repeat(u"[", 60000), kDepthRefused},
      {"round ones", Repeat(u"(", 60000), kDepthRefused},
      {"pairs of brackets",
       Repeat(u"a[", 1) + Repeat(u"(", 30000) + u"1" + Repeat(u")", 30000) + u"]", kDepthRefused},
      {"nested predicates", Repeat(u"/", 1) + Repeat(u"a[", 20000) + u"1" + Repeat(u"]", 20000),
       kDepthRefused},
      {"nested calls",
       Repeat(u"a[", 1) + Repeat(u"not(", 10000) + u"b" + Repeat(u")", 10000) + u"]",
       kDepthRefused},
      {"one level too many", Repeat(u"a[", 101) + u"b" + Repeat(u"]", 101), kDepthRefused},
      {"a sum", Repeat(u"a[", 1) + Repeat(u"1+", 30000) + u"1]", kCountRefused},
      {"signs", Repeat(u"a[", 1) + Repeat(u"-", 60000) + u"1]", kCountRefused},
      {"alternatives", Repeat(u"a[", 1) + Repeat(u"b or ", 10000) + u"b]", kCountRefused},
      {"a union", Repeat(u"a|", 30000) + u"a", kCountRefused},
      {"steps", Repeat(u"a/", 30000) + u"a", kCountRefused},
      {"arguments", Repeat(u"a[concat(", 1) + Repeat(u"'',", 10000) + u"'')]", kCountRefused},
      {"a name of 70,000 characters", Repeat(u"a", 70000), kLengthRefused},
      {"an empty step", u"/a//", "wrong"},
      {"an empty step in the middle", u"/a///b", "wrong"},
      {"an unbound prefix", u"/x:a", "wrong"},
      {"one of 5,000 characters", u"/" + Repeat(u"x", 5000) + u":a", "wrong"},
      {"a lone surrogate", u"/\xd800", "wrong"},
      {"U+FFFE", u"\xfffe", "wrong"},
      {"an environment variable", u"*[system-property('HOME')]",
       "refused: The function system-property is not available in a path."},
      {"spelled with blanks", u"*[ system-property ('HOME')]",
       "refused: The function system-property is not available in a path."},
      {"as a literal it is text", u"*[.='system-property(1)']", ""},
      {"a variable", u"$v", "no node set"},
      {"a document", u"document('/etc/passwd')", "wrong"},
  };
  const Document document = Parse("<a><b/></a>");
  OnSmallStack([&] {
    for (const auto& each : cases) {
      EXPECT_EQ(ShowXalan(*document, each.expression), each.outcome) << each.about;
      const std::string direct = ShowDirect(*document, each.expression);
      EXPECT_EQ(direct, *each.outcome == '\0' ? "" : "declined") << each.about;
    }
  });
}

// What is just within the limits runs, both ways.
TEST(HostileExpressions, FitTheStackWithinTheLimits) {
  const struct {
    const char* about;
    std::u16string expression;
    const char* selected;
  } cases[] = {
      {"predicates", Repeat(u"/", 1) + Repeat(u"*[..//", 99) + u"b" + Repeat(u"]", 99), "a"},
      {"brackets", Repeat(u"/a[", 1) + Repeat(u"(", 99) + u"1" + Repeat(u")", 99) + u"]", "a"},
      {"calls", Repeat(u"/a[", 1) + Repeat(u"not(", 98) + u"1" + Repeat(u")", 98) + u"]", "a"},
      {"a sum", Repeat(u"/a[", 1) + Repeat(u"1+", 990) + u"1 = 991]", "a"},
      {"alternatives", Repeat(u"/a[", 1) + Repeat(u"c or ", 990) + u"b]", "a"},
      {"conditions", Repeat(u"/a[", 1) + Repeat(u"b and ", 990) + u"b]", "a"},
      {"predicates in a row", Repeat(u"/a", 1) + Repeat(u"[b]", 990), "a"},
      {"a union", Repeat(u"a|", 990) + u"a", "a"},
      {"steps", Repeat(u"./", 990) + u"a", "a"},
      {"steps up and down", Repeat(u"/a", 1) + Repeat(u"/b/..", 400), "a"},
      {"arguments", Repeat(u"/a[concat(", 1) + Repeat(u"'',", 990) + u"'x')]", "a"},
      {"comparisons", Repeat(u"/a[", 1) + Repeat(u"1=", 990) + u"1]", "a"},
  };
  const Document document = Parse("<a><b/></a>");
  OnSmallStack([&] {
    for (const auto& each : cases) {
      EXPECT_EQ(ShowXalan(*document, each.expression), each.selected) << each.about;
      const std::string direct = ShowDirect(*document, each.expression);
      EXPECT_TRUE(direct == each.selected || direct == "declined") << each.about << direct;
    }
  });
}

// The direct evaluator at its own bound of nesting, over a tree that would overflow any recursion.
TEST(HostileExpressions, DeepTrees) {
  StartEngine();
  constexpr int kDepth = 100000;
  const Document document(
      xercesc::DOMImplementation::getImplementation()->createDocument(nullptr, u"a", nullptr));
  DOMNode* inner = document->createElement(u"z");
  inner->appendChild(document->createTextNode(u"7"));
  for (int level = 0; level != kDepth; ++level) {
    DOMNode* const outer = document->createElement(level % 2 == 0 ? u"b" : u"c");
    outer->appendChild(inner);
    inner = outer;
  }
  document->getDocumentElement()->appendChild(inner);
  OnSmallStack([&] {
    DOMNode& root = *document;
    EXPECT_EQ(ShowDirect(root, u"//z"), "z");
    EXPECT_EQ(ShowDirect(root, u"/a[.='7'] | /a[.=7]"), "a");
    EXPECT_EQ(ShowDirect(root, u"//z/ancestor::a"), "a");
    EXPECT_EQ(ShowDirect(root, u"//z/preceding::node()"), "");
    EXPECT_EQ(ShowDirect(root, u"//b//c//z"), "z");
    EXPECT_EQ(ShowDirect(root, u"//b/ancestor::c/ancestor::a"), "a");
    EXPECT_EQ(ShowDirect(root, Repeat(u"/a", 1) + Repeat(u"[//b//z", 15) + Repeat(u"]", 15)), "a");
    EXPECT_EQ(ShowDirect(root, u"/a[count(//b/c) = 49999]"), "a");
    Nodes nodes;
    EXPECT_EQ(internal::SelectDirectly(root, u"//b | //c", false, nodes), internal::Direct::kDone);
    EXPECT_EQ(nodes.size(), static_cast<std::size_t>(kDepth));
    EXPECT_EQ(ShowXalan(root, u"/a[concat(., '') = '7']"),
              "refused: The tree is nested too deeply for this expression.");
  });
}

// A number of 90 characters that Xalan-C 1.12 has to write aborts the process.
TEST(HostileExpressions, NumbersThatCanNotBeWritten) {
  const std::string zeros(95, '0');
  const Document document = Parse("<a n='1" + zeros + "' s='3'><b>1" + zeros + "</b></a>");
  const char* const refused =
      "refused: The expression turns a number without a known bound into text.";
  const char* const tooLong = "refused: The expression has a number with too many digits.";
  const struct {
    std::string condition;
    const char* outcome;
  } cases[] = {
      {"string(1" + zeros + ")", tooLong},
      {"string(number(@n))", refused},
      {"string(@n * 1)", refused},
      {"string(-@n)", refused},
      {"string((@n + 1))", refused},
      {"concat('x', sum(b))", refused},
      {"contains(@n div 1, '1')", refused},
      {"string-length(floor(b)) > 1", refused},
      {"starts-with('1', round(@n))", refused},
      {"translate(b mod 7, '1', '2')", refused},
      {"string(99999999999999999999 * 99999999999999999999 * 99999999999999999999 * "
       "9999999999999999999999999999)",
       refused},
      {"string(last()*last()*last()*last()*last()*last()*last()*last()*last())", refused},
      {"normalize-space(ceiling(@n))", refused},
      {"id(@n + 0)", refused},
      {"sum(b) * 1" + zeros, tooLong},
      {"sum(b) * 0" + std::string(88, '1') + " > 1", "a"},
      {"sum(b) * " + std::string(89, '1') + " > 1", tooLong},
      {"sum(b) > -" + std::string(89, '1'), tooLong},
      {"sum(b) = '1" + zeros + "'", "a"},
      {"string(@n)", "a"},
      {"string(b) = @n", "a"},
      {"concat(@n, '')", "a"},
      {"string(position() + 1) = '2'", "a"},
      {"string(count(*) * 2) = '2'", "a"},
      {"string(@s = 3) = 'true'", "a"},
      {"substring(@s, @s - 2) = '3'", "a"},
      {"number(@n) > 5", "a"},
      {"sum(@n) * 2 > @n", "a"},
      {"string-length(@n) = 96", "a"},
      {"-9223372036854775808 mod -1 = 0", "a"},
      {"floor(-9223372036854775808) mod (@s - 4) = 0", "a"},
      {"11 mod ../a/@s*4 = 8", "a"},
      {"8 mod (23 mod (50 mod (29 mod (@s + 17)))) = 2", "a"},
      {"1 mod (1 mod (1 mod (1 mod (1 mod @n))))", kDepthRefused},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(ShowXalan(*document, Wide("/a[" + each.condition + "]")), each.outcome)
        << each.condition;
  }
}

}  // namespace
}  // namespace quen::tests

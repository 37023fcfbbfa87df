// SPDX-License-Identifier: Apache-2.0
//
// What enters as text: what is accepted, what is refused, and where. tests/hostile has the attacks.
#include "foundation/parser.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/sax/SAXParseException.hpp>

#include "foundation/impl_utils.h"
#include "foundation/limits.h"
#include "tests/support/literals.h"

namespace quen::test {
namespace {

// The text of the document element, or the failure.
std::string Parsed(const wstring& inText) {
  CQuenXMLDocument2w document;
  const std::string failure = Failure<WideTypes>([&] { document.LoadXML(inText); });
  return failure.empty() ? Utf8(document.GetDocumentElement().GetSubset()) : failure;
}

std::string Place(const std::string& inFailure) {
  const std::size_t at = inFailure.find("] at line: ");
  return at == std::string::npos ? inFailure : inFailure.substr(at + 2);
}

std::string Repeated(const std::string& inPiece, int inCount) {
  std::string text;
  for (int i = 0; i < inCount; ++i) text += inPiece;
  return text;
}

TEST(TextInput, UnitsThatAreNoTextAreRefusedWhereTheyStand) {
  const std::u16string zero(1, u'\0');
  const struct {
    const char* what;
    std::u16string text;
    const char* outcome;
  } kRows[] = {
      {"one mark in front", u"\uFEFF<a/>", "<a/>"},
      {"a declaration behind it", u"\uFEFF<?xml version='1.0' encoding='UTF-8'?><a/>", "<a/>"},
      {"a mark in the text is text", u"<a>\uFEFF</a>", "<a>\uFEFF</a>"},
      {"zero behind the root", u"<a/>" + zero + u"<evil>", "1, Column: 5"},
      {"zero at the end", u"<a/>" + zero, "1, Column: 5"},
      {"zero in front", zero + u"<a/>", "1, Column: 1"},
      {"zero in text", u"<a>\nx" + zero + u"</a>", "2, Column: 2"},
      {"zero in an attribute", u"<a b='" + zero + u"'/>", "1, Column: 7"},
      {"zero in a name", u"<a" + zero + u"/>", "1, Column: 3"},
      {"zero in a comment", u"<a><!--" + zero + u"--></a>", "1, Column: 8"},
      {"zero in a CDATA section", u"<a><![CDATA[" + zero + u"]]></a>", "1, Column: 13"},
      {"zero in the subset", u"<!DOCTYPE a [" + zero + u"]><a/>", "1, Column: 14"},
      {"half a pair in text", u"<a>\xd800</a>", "1, Column: 5"},
      {"in an attribute", u"<a b='\xdc00'/>", "1, Column: 7"},
      {"in a comment", u"<a><!--\xd800--></a>", "1, Column: 9"},
      {"in an instruction, before its end", u"<a><?p \xd83d?></a>", "1, Column: 9"},
      {"the low half in an instruction", u"<a><?p \xdc00?></a>", "1, Column: 8"},
      {"in an instruction behind the root", u"<a/><?p \xd83d?>", "1, Column: 10"},
      {"half a pair at the end", u"<a/>\xd83d", "1, Column: 6"},
      {"a pair", u"<a>\U0001F600</a>", "<a>\U0001F600</a>"},
      {"U+FFFE first", u"\uFFFE<a/>", "1, Column: 1"},
      {"U+FFFE behind the root", u"<a/>\uFFFE", "1, Column: 5"},
      {"U+FFFF in text", u"<a>\r\n\r\n\uFFFF</a>", "3, Column: 1"},
      {"cut off", u"<a><b>", "1, Column: 7"},
      {"empty", u"", "1, Column: 1"},
      {"a mark alone", u"\uFEFF", "1, Column: 1"},
      {"white space alone", u" \n ", "2, Column: 2"},
  };
  for (const auto& row : kRows) {
    std::string outcome = Parsed(row.text);
    if (outcome.compare(0, 19, "1009 Parse error: [") == 0) outcome = Place(outcome).substr(9);
    EXPECT_EQ(outcome, row.outcome) << row.what;
  }
  EXPECT_EQ(Parsed(u"\uFEFF\uFEFF<a/>").substr(0, 4), "1009");
}

// The run boundaries of the checking stream, at 32 Ki units, cut through everything.
TEST(TextInput, RunsOfAnyLengthMeetAtTheirEnds) {
  for (int pad = 32760; pad < 32772; ++pad) {
    const std::u16string text = u"<a>" + std::u16string(static_cast<std::size_t>(pad), u'x');
    EXPECT_EQ(Parsed(text + u"\U0001F600</a>"), Utf8(text) + "\U0001F600</a>");
    EXPECT_EQ(Place(Parsed(text + u"\xd83d</a>")),
              "at line: 1, Column: " + std::to_string(pad + 5));
  }
}

TEST(Parse, AFailureHasTheParsersPlaceAndStoresNothing) {
  xercesc::DOMNode* node = nullptr;
  const auto build = [&](const char* text) {
    return FailureAt<WideTypes>(
        [&] { CQuenXMLImplUtils2w::BuildDOMNodeFromXMLString(Wide(text), &node); });
  };
  EXPECT_EQ(build("<a>\n</b>"),
            "1009 Parse error: [expected end of tag 'a'] at line: 2, Column: 3 @ "
            "CQuenXMLImplUtils2w::BuildDOMNodeFromXMLString()");
  EXPECT_EQ(node, nullptr);
  EXPECT_EQ(FailureAt<WideTypes>([] {
              CQuenXMLImplUtils2w::BuildDOMNodeFromXMLString(u"<a", nullptr);
            }).substr(0, 4),
            "1009");
  EXPECT_EQ(FailureAt<WideTypes>(
                [] { CQuenXMLImplUtils2w::BuildDOMNodeFromXMLString(u"<a/>", nullptr); }),
            "");
  EXPECT_EQ(Parsed(u"<?xml version='1.0' encoding='ISO-8859-1'?><a>\u20ac</a>"), "<a>\u20ac</a>");
  EXPECT_EQ(Parsed(u"<?xml version='1.9'?><a/>").substr(0, 12), "9 DOM Error:");
  EXPECT_EQ(Parsed(u"<!DOCTYPE a [<!ATTLIST b :d CDATA 'v'>]><a/>").substr(0, 13), "14 DOM Error:");
}

class Report : public xercesc::SAXParseException {
 public:
  Report(const char16_t* inMessage, XMLFileLoc inLine, XMLFileLoc inColumn)
      : SAXParseException(inMessage, u"", u"", inLine, inColumn) {}
};

// A thread parses one document after the other: none shows in the outcome of the next.
TEST(Parse, NoDocumentLeavesATraceInTheNext) {
  const std::u16string kTexts[] = {
      u"<a/>",
      u"<?xml version='1.1'?><a>&#1;</a>",
      u"<a>&#1;</a>",
      u"<?xml version='1.0' encoding='x' standalone='yes'?><a b='1'/>",
      u"<p:a xmlns:p='u'><p:b p:c='1'/></p:a>",
      u"<a><p:b/></a>",
      u"<a p:c='1'/>",
      u"<a xmlns='v'><b/></a>",
      u"<!DOCTYPE a [<!ELEMENT a ANY><!ATTLIST a d CDATA 'x'><!ENTITY e 'y'>]><a>&e;</a>",
      u"<a>&e;</a>",
      u"<a><b></a>",
      u"<a b='1' b='2'/>",
      u"",
      u"<a><![CDATA[x",
      Wide(Repeated("<a>", internal::kMaxDepth) + Repeated("</a>", internal::kMaxDepth)),
      Wide(Repeated("<a>", internal::kMaxDepth + 1)),
      Wide("<a>" + std::string(40000, 'x') + "</a>"),
  };
  std::vector<std::string> alone;
  for (const std::u16string& text : kTexts)
    std::thread([&] { alone.push_back(Parsed(text)); }).join();
  EXPECT_EQ(alone[4], "<p:a xmlns:p=\"u\"><p:b p:c=\"1\"/></p:a>");
  EXPECT_EQ(alone[5].substr(0, 4), "1009");
  for (std::size_t first = 0; first < alone.size(); ++first) {
    for (std::size_t second = 0; second < alone.size(); ++second) {
      ASSERT_EQ(Parsed(kTexts[first]), alone[first]) << first << " before " << second;
      ASSERT_EQ(Parsed(kTexts[second]), alone[second]) << second << " after " << first;
    }
  }
}

TEST(ErrorHandler, KeepsTheLastErrorAndNoWarning) {
  CQuenXMLErrHandlerw handler;
  EXPECT_STREQ(reinterpret_cast<const char*>(handler.GetMessage()), "");
  handler.warning(Report(u"warning", 1, 2));
  EXPECT_EQ(handler.HasError(), 0);
  handler.error(Report(u"first", 3, 4));
  handler.fatalError(Report(u"second", 5, 6));
  EXPECT_EQ(handler.HasError(), 1);
  EXPECT_EQ(wstring(handler.GetMessage()), u"second");
  EXPECT_EQ(handler.GetLine(), 5);
  EXPECT_EQ(handler.GetColumn(), 6);
  handler.error(Report(std::u16string(3000, u'm').c_str(), 7, 8));
  EXPECT_EQ(wstring(handler.GetMessage()), std::u16string(2048, u'm'));
  handler.resetErrors();
  EXPECT_EQ(handler.HasError() + handler.GetLine() + handler.GetColumn(), 0);
  EXPECT_NE(handler.GetMessage()[0], 0);
}

TEST(Parse, AMessageOfAnyLengthIsWhole) {
  const std::string name(1500, 'n');
  const std::string failure = Parsed(Wide("<" + name + "></b>"));
  EXPECT_EQ(failure,
            "1009 Parse error: [expected end of tag '" + name + "'] at line: 1, Column: 1505");
}

TEST(Limits, DepthAndAttributes) {
  const auto nested = [](int levels) {
    return Wide(Repeated("<a>", levels) + Repeated("</a>", levels));
  };
  EXPECT_EQ(Parsed(nested(1000)).substr(0, 6), "<a><a>");
  EXPECT_EQ(Parsed(nested(1001)),
            "1009 Parse error: [The elements nest deeper than the limit of this library] at line: "
            "1, Column: 3004");
  EXPECT_EQ(Parsed(Wide(Repeated("<a>", 100000))).substr(0, 30), "1009 Parse error: [The element");
  const auto attributes = [](int count) {
    std::string text = "<a xmlns:p='u'";
    for (int i = 1; i < count; ++i) text += " n" + std::to_string(i) + "=''";
    return Wide(text + "/>");
  };
  EXPECT_EQ(Parsed(attributes(10000)).substr(0, 2), "<a");
  EXPECT_EQ(Parsed(attributes(10001)).substr(0, 60),
            "1009 Parse error: [The element has more attributes than the ");
}

TEST(Entities, AnOrdinaryInternalSubsetLoads) {
  EXPECT_EQ(Parsed(u"<!DOCTYPE a [<!ELEMENT a (#PCDATA|b)*><!ELEMENT b EMPTY>"
                   u"<!ATTLIST b c CDATA 'd&e;'><!ENTITY e '&#60;&#38;#60;'><!ENTITY f 'x&e;y'>"
                   u"<!-- &none; --><?p %none;?>]><a>&f;<b/></a>")
                .substr(0, 4),
            "1009");  // the entity e holds a bare less-than sign
  EXPECT_EQ(Parsed(u"<!DOCTYPE a [<!ELEMENT a (#PCDATA|b)*><!ELEMENT b EMPTY>"
                   u"<!ENTITY e '&#233;&#38;#60;'><!ATTLIST b c CDATA 'd&e;'><!ENTITY f 'x&e;y'>"
                   u"<!-- &none; --><?p %none;?><!ENTITY % g '<!ATTLIST a g CDATA \"z\">'>%g;]>"
                   u"<a>&f;<b/></a>"),
            "<a g=\"z\">x\u00e9&lt;y<b c=\"d\u00e9&lt;\"/></a>");
  EXPECT_EQ(Parsed(u"<!DOCTYPE a [\r\n<!ELEMENT a ANY>\r\n<!ENTITY e '1\r\n2\r3\n4'>]><a>&e;</a>"),
            "<a>1\n2\n3\n4</a>");
  // What a parameter entity declares was not counted.
  EXPECT_EQ(
      Parsed(u"<!DOCTYPE a [<!ELEMENT a ANY><!ENTITY % p '<!ENTITY e \"x\">'>%p;]><a>&e;</a>"),
      "1009 Parse error: [The entity 'e' is declared through a parameter entity] at line: 1, "
      "Column: 64");
  // Ten references to a kilobyte are within the budget.
  EXPECT_EQ(Parsed(Wide("<!DOCTYPE a [<!ELEMENT a ANY><!ENTITY e '" + std::string(1000, 'x') +
                        "'>]><a>" + Repeated("&e;", 10) + "</a>"))
                .size(),
            10007u);
}

}  // namespace
}  // namespace quen::test

// SPDX-License-Identifier: Apache-2.0
#include "tests/xsl/xsl_support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

#include "tests/support/small_stack.h"

namespace quen::test {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr char kNotFound[] = "Can not find the style sheet for the input handle";

template <class Width>
class XslTest : public ::testing::Test {
 protected:
  using Xsl = typename Width::Xsl;
  using Data = typename Width::Data;
  using Document = typename Width::Document;

  static Document Parsed(const std::string& text) {
    Document document;
    document.LoadXML(Width::Text(text));
    return document;
  }
  static std::string TextOf(const Document& document) { return Width::Utf8(document.GetSubset()); }
  static std::string TextOf(const Data& tree) {
    auto text = Width::Text("");
    tree.GetSubset(text, Width::Text("/"));
    return Width::Utf8(text);
  }
  std::uintptr_t Register(Xsl& xsl, const std::string& sheet) {
    std::uintptr_t handle = 0;
    std::istringstream stream(sheet);
    xsl.RegisterCompiledStyleSheet(stream, handle);
    return handle;
  }
  std::string Run(Xsl& xsl, const std::string& source, std::uintptr_t handle) {
    std::ostringstream result;
    xsl.Transform(std::istringstream(source), result, handle);
    return result.str();
  }
  std::string Run(const std::string& source, const std::string& sheet) {
    std::istringstream in(source);
    std::istringstream style(sheet);
    std::ostringstream out;
    Xsl().Transform(in, style, out);
    return out.str();
  }
  std::string FailureOfRun(const std::string& source, const std::string& sheet) {
    return FailureOf<Width>([&] { Run(source, sheet); });
  }

  Folder folder_;
};

using Widths = ::testing::Types<WideWidth, NarrowWidth>;
TYPED_TEST_SUITE(XslTest, Widths, );

const std::string kSource = "<a><b>1</b><b>2</b></a>";
const std::string kSheet = RootSheet("<sum><xsl:value-of select='sum(a/b)'/></sum>");
const std::string kSum = "<sum>3</sum>";

// What has no document element is no reason to end.
TYPED_TEST(XslTest, SourcesWithoutARoot) {
  using Width = TypeParam;
  typename Width::Xsl xsl;
  const std::uintptr_t handle = this->Register(
      xsl, RootSheet("<r><xsl:value-of select='count(/)'/>,<xsl:value-of select='count(//a)'/>,"
                     "<xsl:value-of select='count(/comment())'/></r>"));
  typename Width::Document empty, commented, result, second;
  commented.AppendChild(commented.CreateComment(Width::Text("c")));
  xsl.Transform(empty, result, handle);
  EXPECT_EQ(this->TextOf(result), "<r>1,0,0</r>");
  xsl.Transform(commented, second, handle);
  EXPECT_EQ(this->TextOf(second), "<r>1,0,1</r>");
  std::ostringstream out;
  xsl.Transform(static_cast<const typename Width::Node&>(empty), out, handle);
  EXPECT_EQ(out.str(), "<r>1,0,0</r>");
  typename Width::Data tree, target;
  xsl.Transform(std::as_const(tree), target, handle);
  EXPECT_EQ(this->TextOf(target), "<r>1,0,0</r>");

  typename Width::Document assigned = this->Parsed(kSource);
  static_cast<typename Width::Node&>(assigned) = commented.GetFirstChild();
  const char* const expected = "8 CQuenXMLDocument2w Node was not initialized";
  EXPECT_EQ(FailureOf<Width>([&] { xsl.Transform(assigned, result, handle); }), expected);
  EXPECT_EQ(FailureOf<Width>([&] { xsl.Transform(commented, assigned, handle); }), expected);
}

TYPED_TEST(XslTest, AllThirteenFormsGiveTheSameResult) {
  using Width = TypeParam;
  const auto text = [](const std::string& utf8) { return Width::Text(utf8); };
  const std::string sheetPath = this->folder_.Write("s\xC3\xA9 %41#.xsl", kSheet);
  const std::string named =
      "<?xml-stylesheet type='text/xsl' href='s\xC3\xA9%20%2541%23.xsl'?>" + kSource;
  const std::string namedAbsolutely = "<?xml-stylesheet href=\"" +
                                      this->folder_.Write("t.xsl", kSheet) +
                                      "\" type=\"text/xsl\"?>" + kSource;
  const std::string path = this->folder_.Write("source.xml", kSource);
  const std::string namedPath = this->folder_.Write("named.xml", named);
  typename Width::Xsl xsl;
  const std::uintptr_t handle = this->Register(xsl, kSheet);
  ASSERT_NE(handle, 0U);

  typename Width::Data source(text(kSource)), sheet(text(kSheet)), result(text("<old/>"));
  xsl.Transform(source, sheet, result);
  EXPECT_EQ(this->TextOf(result), kSum) << "form 1";
  typename Width::Data again;
  xsl.Transform(std::as_const(source), again, handle);
  EXPECT_EQ(this->TextOf(again), kSum) << "form 10";

  auto sourceDocument = this->Parsed(kSource);
  auto sheetDocument = this->Parsed(kSheet);
  typename Width::Document resultDocument;
  xsl.Transform(sourceDocument, sheetDocument, resultDocument);
  EXPECT_EQ(this->TextOf(resultDocument), kSum) << "form 2";
  typename Width::Document second;
  xsl.Transform(sourceDocument, second, handle);
  EXPECT_EQ(this->TextOf(second), kSum) << "form 11";

  const auto streamed = [&](auto&& transform) {
    std::ostringstream out;
    transform(out);
    return out.str();
  };
  EXPECT_EQ(this->Run(kSource, kSheet), kSum) << "form 3";
  std::istringstream namedStream(namedAbsolutely);
  EXPECT_EQ(streamed([&](auto& out) { xsl.Transform(namedStream, out); }), kSum) << "form 4";
  EXPECT_EQ(this->Run(xsl, kSource, handle), kSum) << "form 12";

  const typename Width::Node root = sourceDocument.GetDocumentElement();
  const auto& constSheet = sheetDocument;
  EXPECT_EQ(streamed([&](auto& out) { xsl.Transform(root, constSheet, out); }), kSum) << "form 7";
  EXPECT_EQ(streamed([&](auto& out) { xsl.Transform(this->Parsed(namedAbsolutely), out); }), kSum)
      << "form 8";
  EXPECT_EQ(streamed([&](auto& out) { xsl.Transform(root, out, handle); }), kSum) << "form 13";

  const std::string out = this->folder_ / "out \xC3\xA9.xml";
  const auto filed = [&](auto&& transform) {
    std::filesystem::remove(out);
    transform(text(out));
    return this->folder_.Read("out \xC3\xA9.xml");
  };
  EXPECT_EQ(filed([&](const auto& to) { xsl.Transform(text(path), text(sheetPath), to); }), kSum)
      << "form 5";
  EXPECT_EQ(filed([&](const auto& to) { xsl.Transform(text(namedPath), to); }), kSum) << "form 6";
  EXPECT_EQ(filed([&](const auto& to) { xsl.Transform(text(path), to, handle); }), kSum)
      << "form 9";
}

TYPED_TEST(XslTest, StyleSheetsAreRegisteredInFourForms) {
  using Width = TypeParam;
  typename Width::Xsl xsl;
  const std::string path = this->folder_.Write("s.xsl", kSheet);
  std::uintptr_t handles[4] = {};
  xsl.RegisterCompiledStyleSheet(Width::Text(path), handles[0]);
  xsl.RegisterCompiledStyleSheet(std::istringstream(kSheet), handles[1]);
  xsl.RegisterCompiledStyleSheet(typename Width::Data(Width::Text(kSheet)), handles[2]);
  xsl.RegisterCompiledStyleSheet(this->Parsed(kSheet), handles[3]);
  for (const std::uintptr_t handle : handles) EXPECT_EQ(this->Run(xsl, kSource, handle), kSum);
  for (const std::uintptr_t handle : handles)
    EXPECT_EQ(std::count(std::begin(handles), std::end(handles), handle), 1);

  xsl.UnregisterCompiledStyleSheet(handles[1]);
  const std::string gone = std::string("4 CQuenXSLImpl::TransformHelper() ") + kNotFound;
  EXPECT_EQ(FailureOf<Width>([&] { this->Run(xsl, kSource, handles[1]); }), gone);
  EXPECT_EQ(this->Run(xsl, kSource, handles[2]), kSum);
}

TYPED_TEST(XslTest, AFailedRegistrationChangesNothing) {
  using Width = TypeParam;
  typename Width::Xsl xsl;
  const std::string bad = RootSheet("<xsl:value-of select='a['/>");
  std::uintptr_t handle = 7;
  EXPECT_EQ(FailureOf<Width>([&] {
              xsl.RegisterCompiledStyleSheet(Width::Text(this->folder_ / "none.xsl"), handle);
            }),
            "4 CQuenXSLImpl::RegisterCompiledStyleSheet Error compiling style sheet");
  EXPECT_EQ(
      FailureOf<Width>([&] { xsl.RegisterCompiledStyleSheet(std::istringstream(bad), handle); }),
      "4 CQuenXSLImpl::RegisterCompiledStyleSheet() Error compiling style sheet");
  EXPECT_EQ(FailureOf<Width>([&] {
              xsl.RegisterCompiledStyleSheet(typename Width::Data(Width::Text(bad)), handle);
            }),
            "4 CQuenXSLImpl2w::RegisterCompiledStyleSheet() Error compiling style sheet");
  EXPECT_EQ(FailureOf<Width>([&] { xsl.RegisterCompiledStyleSheet(this->Parsed(bad), handle); }),
            "4 CQuenXSLImpl2w::RegisterCompiledStyleSheet() Error compiling style sheet");
  EXPECT_EQ(handle, 7U);
}

TYPED_TEST(XslTest, UnknownHandlesAreRefusedWithTheContextOfTheForm) {
  using Width = TypeParam;
  typename Width::Xsl xsl, other;
  const std::uintptr_t foreign = this->Register(other, kSheet);
  const std::string unregister =
      std::string("4 CQuenXSLImpl::UnRegisterCompiledStyleSheet() ") + kNotFound;
  const std::string helper = std::string("4 CQuenXSLImpl::TransformHelper() ") + kNotFound;
  const std::string form = std::string("4 CQuenXSLImpl2w::Transform() ") + kNotFound;
  const std::string path = this->folder_.Write("source.xml", kSource);
  const std::string kept = this->folder_.Write("kept.xml", "kept");
  for (const std::uintptr_t handle : {std::uintptr_t{0}, std::uintptr_t{1}, foreign}) {
    std::ostringstream out;
    auto document = this->Parsed(kSource);
    typename Width::Document result;
    typename Width::Data source(Width::Text(kSource)), target(Width::Text("<kept/>"));
    EXPECT_EQ(FailureOf<Width>([&] { xsl.UnregisterCompiledStyleSheet(handle); }), unregister);
    EXPECT_EQ(
        FailureOf<Width>([&] { xsl.Transform(Width::Text(path), Width::Text(kept), handle); }),
        helper);
    EXPECT_EQ(FailureOf<Width>([&] { this->Run(xsl, kSource, handle); }), helper);
    EXPECT_EQ(FailureOf<Width>([&] { xsl.Transform(std::as_const(source), target, handle); }),
              form);
    EXPECT_EQ(FailureOf<Width>([&] { xsl.Transform(document, result, handle); }), form);
    EXPECT_EQ(FailureOf<Width>([&] { xsl.Transform(document.GetDocumentElement(), out, handle); }),
              form);
    EXPECT_EQ(this->TextOf(target), "<kept/>");
    EXPECT_EQ(this->folder_.Read("kept.xml"), "kept");
  }
  // What fails behind the search for the handle names the class otherwise.
  const char* const failed = "1010 CQuenXSLImpl2w::TransformHelper() ";
  EXPECT_THAT(FailureOf<Width>([&] { this->Run(other, "<a>", foreign); }), StartsWith(failed));
  EXPECT_THAT(
      FailureOf<Width>([&] { other.Transform(Width::Text("/none"), Width::Text(kept), foreign); }),
      StartsWith(failed));
  other.UnregisterCompiledStyleSheet(foreign);
  EXPECT_EQ(FailureOf<Width>([&] { other.UnregisterCompiledStyleSheet(foreign); }), unregister);
}

TYPED_TEST(XslTest, CopiesKnowTheHandlesOfTheSourceAndGoTheirOwnWay) {
  using Width = TypeParam;
  const std::string sheet = Sheet(
      "<xsl:param name='p'/><xsl:template match='/'><r><xsl:value-of "
      "select='$p'/></r></xsl:template>");
  auto first = std::make_unique<typename Width::Xsl>();
  const std::uintptr_t handle = this->Register(*first, sheet);
  first->SetStyleSheetParam(Width::Text("p"), Width::Text("'first'"));
  typename Width::Xsl copy(*first);
  const std::uintptr_t late = this->Register(*first, sheet);
  copy.SetStyleSheetParam(Width::Text("p"), Width::Text("'copy'"));
  EXPECT_EQ(this->Run(*first, kSource, handle), "<r>first</r>");
  EXPECT_EQ(this->Run(copy, kSource, handle), "<r>copy</r>");
  EXPECT_THAT(FailureOf<Width>([&] { this->Run(copy, kSource, late); }), HasSubstr(kNotFound));

  first->UnregisterCompiledStyleSheet(handle);
  EXPECT_THAT(FailureOf<Width>([&] { this->Run(*first, kSource, handle); }), HasSubstr(kNotFound));
  first.reset();
  EXPECT_EQ(this->Run(copy, kSource, handle), "<r>copy</r>");

  typename Width::Xsl assigned;
  assigned = copy;
  assigned = *&assigned;
  assigned.SetStyleSheetParam(Width::Text("p"), Width::Text("'both'"));
  EXPECT_EQ(this->Run(copy, kSource, handle), "<r>both</r>");
  copy.UnregisterCompiledStyleSheet(handle);
  EXPECT_THAT(FailureOf<Width>([&] { this->Run(assigned, kSource, handle); }),
              HasSubstr(kNotFound));
}

TYPED_TEST(XslTest, ObjectsEndInAnyOrder) {
  using Width = TypeParam;
  constexpr int kOrders[][3] = {{0, 1, 2}, {2, 1, 0}, {1, 0, 2}, {1, 2, 0}};
  for (const auto& order : kOrders) {
    std::unique_ptr<typename Width::Xsl> objects[3];
    objects[0] = std::make_unique<typename Width::Xsl>();
    const std::uintptr_t handle = this->Register(*objects[0], kSheet);
    objects[1] = std::make_unique<typename Width::Xsl>(*objects[0]);
    objects[2] = std::make_unique<typename Width::Xsl>();
    *objects[2] = *objects[0];
    for (const int ending : order) {
      EXPECT_EQ(this->Run(*objects[ending], kSource, handle), kSum);
      objects[ending].reset();
    }
  }
}

TYPED_TEST(XslTest, AParameterIsAnExpression) {
  using Width = TypeParam;
  const struct {
    const char* value;
    const char* result;
  } kRows[] = {
      {"'a text'", "<r>a text</r>"},
      {"1 + 1", "<r>2</r>"},
      {"\"it's \xC3\xA9\"", "<r>it's \xC3\xA9</r>"},
      {"/a/b[2]", "<r>2</r>"},
      {"'<&>'", "<r>&lt;&amp;&gt;</r>"},
  };
  const std::string sheet = Sheet(
      "<xsl:param name='p' select=\"'default'\"/><xsl:output encoding='UTF-8'/>"
      "<xsl:template match='/'><r><xsl:value-of select='$p'/></r></xsl:template>");
  typename Width::Xsl xsl;
  const std::uintptr_t handle = this->Register(xsl, sheet);
  EXPECT_EQ(this->Run(xsl, kSource, handle), "<r>default</r>");
  for (const auto& row : kRows) {
    xsl.SetStyleSheetParam(Width::Text("p"), Width::Text(row.value));
    xsl.SetStyleSheetParam(Width::Text("unknown"), Width::Text("1"));
    EXPECT_EQ(this->Run(xsl, kSource, handle), row.result);
    EXPECT_EQ(this->Run(xsl, kSource, handle), row.result) << "parameters stay";
  }
  for (const std::string& wrong : {std::string("a ["), std::string("("), std::string(2000, '(')}) {
    xsl.SetStyleSheetParam(Width::Text("p"), Width::Text(wrong));
    EXPECT_THAT(FailureOf<Width>([&] { this->Run(xsl, kSource, handle); }), StartsWith("1010 "));
  }
  xsl.SetStyleSheetParam(Width::Text("p"), Width::Text("7"));
  EXPECT_EQ(this->Run(xsl, kSource, handle), "<r>7</r>");
  const std::string prefixed =
      "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform' "
      "xmlns:d='u'><xsl:output method='text'/><xsl:param name='d:p'/>"
      "<xsl:template match='/'><xsl:value-of select='$d:p'/></xsl:template></xsl:stylesheet>";
  for (const std::string key : {"d:p", "z:p", "{u}p", ""}) {
    typename Width::Xsl other;
    const std::uintptr_t there = this->Register(other, prefixed);
    other.SetStyleSheetParam(Width::Text(key), Width::Text("7"));
    std::string result;
    const std::string failure = FailureOf<Width>([&] { result = this->Run(other, "<a/>", there); });
    EXPECT_EQ(key == "d:p" ? result : failure.substr(0, 5), key == "d:p" ? "7" : "1010 ") << key;
  }
}

TYPED_TEST(XslTest, DocumentsThatAreSourcesAreNormalizedAndNodesAreNot) {
  using Width = TypeParam;
  const auto split = [&] {
    auto document = this->Parsed("<a>one</a>");
    auto other = this->Parsed("<a>two</a>");
    document.GetDocumentElement().AppendChild(other.GetDocumentElement().GetFirstChild());
    return document;
  };
  typename Width::Xsl xsl;
  auto source = split();
  auto sheet = this->Parsed(RootSheet("<r><xsl:value-of select='count(a/text())'/></r>"));
  typename Width::Document result;
  xsl.Transform(source, sheet, result);
  EXPECT_EQ(this->TextOf(result), "<r>1</r>");
  EXPECT_EQ(Width::Utf8(source.GetDocumentElement().GetValue()), "onetwo");

  const std::uintptr_t handle = this->Register(xsl, kSheet);
  auto viaHandle = split();
  typename Width::Document second;
  xsl.Transform(viaHandle, second, handle);
  EXPECT_EQ(Width::Utf8(viaHandle.GetDocumentElement().GetValue()), "onetwo");

  const auto node = split();
  std::ostringstream out;
  xsl.Transform(node.GetDocumentElement(), sheet, out);
  xsl.Transform(node.GetDocumentElement(), out, handle);
  EXPECT_EQ(Width::Utf8(node.GetDocumentElement().GetValue()), "one");
}

TYPED_TEST(XslTest, AFailureLeavesAResultTreeAloneAndADocumentIsNotEmptied) {
  using Width = TypeParam;
  typename Width::Xsl xsl;
  typename Width::Data source(Width::Text(kSource)), result(Width::Text("<kept/>"));
  const std::string wrong[] = {RootSheet("<r><xsl:value-of select='$none'/></r>"),
                               RootSheet("text"), RootSheet("<a/><b/>"), "<r/>"};
  for (const std::string& text : wrong) {
    typename Width::Data sheet(Width::Text(text));
    EXPECT_THAT(FailureOf<Width>([&] { xsl.Transform(source, sheet, result); }),
                StartsWith("1010 CQuenXSLImpl2w::Transform() "));
    EXPECT_EQ(this->TextOf(result), "<kept/>");
  }
  const std::uintptr_t handle = this->Register(xsl, wrong[0]);
  EXPECT_THAT(FailureOf<Width>([&] { xsl.Transform(std::as_const(source), result, handle); }),
              StartsWith("1010 CQuenXSLImpl2w::Transform() "));
  EXPECT_EQ(this->TextOf(result), "<kept/>");
  typename Width::Data noSheet;
  EXPECT_THAT(FailureOf<Width>([&] { xsl.Transform(source, noSheet, result); }),
              StartsWith("1010 CQuenXSLImpl2w::Transform() "));

  auto document = this->Parsed(kSource);
  auto target = this->Parsed("<there/>");
  const std::uintptr_t good = this->Register(xsl, kSheet);
  EXPECT_THAT(FailureOf<Width>([&] { xsl.Transform(document, target, good); }),
              StartsWith("1010 "));
  EXPECT_EQ(this->TextOf(target), "<there/>");
  xsl.Transform(std::as_const(source), source, good);
  EXPECT_EQ(this->TextOf(source), kSum) << "a tree may be its own result";
}

// What is special, the source, the style sheet, and what the message holds.
struct BadRow {
  const char* special;
  std::string source;
  std::string sheet;
  const char* message;
};

// Global variables of which each is the next one.
std::string Chain(int length) {
  std::string variables = "<xsl:variable name='v0' select='7'/>";
  for (int i = 1; i < length; ++i) {
    variables += "<xsl:variable name='v" + std::to_string(i) + "'><xsl:value-of select='$v" +
                 std::to_string(i - 1) + "'/></xsl:variable>";
  }
  return Sheet(variables + "<xsl:template match='/'><r><xsl:value-of select='$v" +
               std::to_string(length - 1) + "'/></r></xsl:template>");
}

TYPED_TEST(XslTest, BadInputIsAnOrdinaryFailure) {
  const std::string self = "<xsl:call-template name='t'/>";
  const BadRow kRows[] = {
      {"source cut off", "<a><b>", kSheet, "input ended"},
      {"empty source", "", kSheet, "invalid document structure"},
      {"sheet is no XML", kSource, "no xml", "invalid document structure"},
      {"sheet is no XSLT", kSource, "<b/>", "'b' is no style sheet"},
      {"wrong element", kSource, Sheet("<xsl:nothing/>"), "xsl:nothing"},
      {"wrong expression", kSource, RootSheet("<xsl:value-of select='1 + )'/>"), "1 +"},
      {"wrong function", kSource, RootSheet("<xsl:value-of select='nothing()'/>"), "nothing"},
      {"undeclared prefix", kSource, RootSheet("<xsl:value-of select='p:x'/>"), "p"},
      {"encoding of no name", kSource,
       Sheet("<xsl:output encoding='" +
             std::string("\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9"
                         "\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9") +
             "'/>"),
       "is not an encoding"},
      {"pattern // alone", kSource, Sheet("<xsl:template match='//'/>"), "'//' is not a pattern"},
      {"pattern begins with |", kSource, Sheet("<xsl:template match='|a'/>"), "'|a' is not"},
      {"the same in a key", kSource, Sheet("<xsl:key name='k' use='.' match=' // | a'/>"),
       "is not a pattern"},
      {"and in xsl:number", kSource, RootSheet("<xsl:number count='a||b'/>"), "'a||b' is not"},
      {"nested expression", kSource,
       RootSheet("<xsl:value-of select='" + std::string(3000, '(') + "1" + std::string(3000, ')') +
                 "'/>"),
       "nested too deeply"},
      {"nested in a template", kSource,
       RootSheet("<r a='x{" + std::string(3000, '(') + "1" + std::string(3000, ')') + "}'/>"),
       "nested too deeply"},
      {"template without end", kSource,
       Sheet("<xsl:template name='t' match='/'>" + self + "</xsl:template>"),
       "templates nest deeper"},
      {"variable without end", kSource,
       Sheet("<xsl:template name='t' match='/'><xsl:variable name='v'>" + self +
             "</xsl:variable><xsl:value-of select='$v'/></xsl:template>"),
       "nest deeper"},
      {"elements without end", kSource,
       Sheet("<xsl:template name='t' match='/'><e>" + self + "</e></xsl:template>"),
       "elements of the result nest deeper"},
      {"copies without end", kSource,
       Sheet("<xsl:template name='t' match='*'><xsl:copy>" + self + "</xsl:copy></xsl:template>"),
       "elements of the result nest deeper"},
      {"undefined variable", kSource, RootSheet("<xsl:value-of select='$u'/>"),
       "The variable 'u' is not defined."},
      {"circular variables", kSource,
       Sheet("<xsl:variable name='x' select='$y'/><xsl:variable name='y' "
             "select='$x'/><xsl:template match='/'><xsl:value-of select='$x'/></xsl:template>"),
       "circular"},
      {"variables that wait for each other", kSource, Chain(900), "wait for the values"},
      {"terminating message", kSource,
       RootSheet("<xsl:message terminate='yes'>enough <b>is</b></xsl:message>"), "enough is"},
      {"missing document", kSource, RootSheet("<xsl:value-of select=\"document('/none.xml')\"/>"),
       "'/none.xml' can not be read"},
      {"document with an error", kSource,
       RootSheet("<xsl:value-of select=\"document('/etc/passwd')\"/>"),
       "invalid document structure"},
      {"document on the network", kSource,
       RootSheet("<xsl:value-of select=\"document('http://127.0.0.1:9/')\"/>"),
       "is not a local file"},
      {"import from the network", kSource, Sheet("", "<xsl:import href='http://127.0.0.1:9/'/>"),
       "is not a local file"},
      {"entity of a style sheet", kSource, "<!DOCTYPE a SYSTEM 'http://127.0.0.1:9/'>" + kSheet,
       "is not a local file"},
      {"entity of a source", "<!DOCTYPE a [<!ENTITY e SYSTEM '/etc/passwd'>]><a>&e;</a>", kSheet,
       "is not read"},
      {"DTD of a source", "<!DOCTYPE a SYSTEM '/etc/passwd'><a/>", kSheet, "is not read"},
      {"parameter entity", "<!DOCTYPE a [<!ENTITY % e SYSTEM '/etc/passwd'> %e;]><a/>", kSheet,
       "is not read"},
      {"entity bomb",
       "<!DOCTYPE a [<!ENTITY a '" + std::string(3000, 'x') +
           "'><!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;'><!ENTITY c "
           "'&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;'><!ENTITY d '&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;'><!ENTITY "
           "e '&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;'>]><a>&e;</a>",
       kSheet, "limit of this library"},
      {"a bad byte behind the root", "<a/>\xff", kSheet, "encoding"},
      {"half a surrogate pair", "<a>\xED\xA0\x80</a>", kSheet, "encoding"},
      {"expression from data", "<a>" + std::string(3000, '(') + "</a>",
       RootSheet(
           "<xsl:value-of xmlns:d='http://exslt.org/dynamic' select='d:evaluate(string(a))'/>"),
       "nested too deeply"},
      {"a text for a tree", kSource,
       RootSheet("<xsl:for-each xmlns:e='http://exslt.org/common' select=\"e:node-set('x')\">"
                 "<xsl:value-of select='count(/)'/></xsl:for-each>"),
       "node-set takes no text"},
      {"the same behind an open quote", "<a>'" + std::string(60000, '(') + "</a>",
       RootSheet(
           "<xsl:value-of xmlns:d='http://exslt.org/dynamic' select='d:evaluate(string(a))'/>"),
       "'"},
  };
  for (const BadRow& row : kRows) {
    const std::string failure = this->FailureOfRun(row.source, row.sheet);
    EXPECT_THAT(failure, StartsWith("1010 CQuenXSLImpl2w::Transform() ")) << row.special;
    EXPECT_THAT(failure, HasSubstr(row.message)) << row.special;
  }
}

// The engine ends the process where a number takes 90 characters as text, with its sign.
TYPED_TEST(XslTest, NumbersThatCanNotBeWrittenFail) {
  const std::string sheets[] = {
      RootSheet("<xsl:value-of select='a * 1'/>"),
      RootSheet("<xsl:value-of select='-a'/>"),
      RootSheet("<xsl:value-of select='number(a)'/>"),
      RootSheet("<xsl:value-of select='floor(a)'/>"),
      RootSheet("<xsl:value-of select='sum(a)'/>"),
      RootSheet("<xsl:value-of select=\"concat(-a, '')\"/>"),
      RootSheet("<xsl:if test='string-length(-a) &gt; 0'>yes</xsl:if>"),
      RootSheet("<r x='{-sum(a)}'/>"),
      RootSheet("<xsl:number value='a'/>"),
      RootSheet("<xsl:number value='-a'/>"),
      RootSheet("<xsl:for-each select='a|a/text()'><xsl:sort select='-.'/>x</xsl:for-each>"),
  };
  for (const std::string& sheet : sheets) {
    for (const char* const sign : {"", "-"}) {
      for (const std::size_t count : {88U, 89U, 90U, 200U}) {
        const std::string source = "<a>" + (sign + std::string(count, '1')) + "</a>";
        if (count <= 88) {
          EXPECT_NE(this->Run(source, sheet), "") << sheet;
        } else {
          EXPECT_THAT(this->FailureOfRun(source, sheet), HasSubstr("has more digits")) << sheet;
        }
      }
    }
  }
}

// The least integer mod -1 would end the process.
TYPED_TEST(XslTest, DivisorsMayBeAnything) {
  const std::string source = "<r a='-9223372036854775808' b='-1'/>";
  const std::string evaluate = "<xsl:value-of xmlns:d='http://exslt.org/dynamic' select=";
  const std::string sheets[] = {
      RootSheet("<xsl:value-of select='r/@a mod r/@b'/>"),
      RootSheet("<xsl:if test='r/@a mod r/@b = 0'>0</xsl:if>"),
      RootSheet("<xsl:for-each select='r[@a mod @b = 0]'>0</xsl:for-each>"),
      RootSheet("<xsl:variable name='v' select='r/@b'/><xsl:value-of select='r/@a mod $v'/>"),
      RootSheet(evaluate + "\"d:evaluate('r/@a mod r/@b')\"/>"),
      Sheet("<xsl:template match='r[@a mod @b = 0]'>0</xsl:template>"),
  };
  for (const std::string& sheet : sheets) EXPECT_EQ(this->Run(source, sheet), "0") << sheet;
  EXPECT_EQ(this->Run(source, RootSheet("<x y='{r/@a mod r/@b}'/>")), "<x y=\"0\"/>");
}

// Through each of the functions that evaluate, on a small stack.
TYPED_TEST(XslTest, TextsThatEvaluateEachOtherEndSomewhere) {
  constexpr char kEachOther[] = "evaluate each other too deeply";
  const std::string names =
      " xmlns:d='http://exslt.org/dynamic' xmlns:x='http://xml.apache.org/xalan'";
  OnSmallStack([&] {
    for (const std::string function : {"d:evaluate", "x:evaluate"}) {
      const std::string sheet = RootSheet("<xsl:for-each select='r'><xsl:value-of" + names +
                                          " select='" + function + "(/r/a[1])'/></xsl:for-each>");
      // Each a evaluates the next one within `open` and `close`.
      const auto source = [&](int levels, const std::string& open, const std::string& close) {
        std::string text = "<r>";
        for (int i = 1; i < levels; ++i) {
          text +=
              "<a>" + open + function + "(/r/a[" + std::to_string(i + 1) + "])" + close + "</a>";
        }
        return text + "<a>7</a></r>";
      };
      std::string open, close;
      for (int i = 0; i < 98; ++i) {
        open += "self::*[";
        close += "]";
      }
      EXPECT_EQ(this->Run(source(16, "", ""), sheet), "7");
      EXPECT_THAT(this->FailureOfRun(source(17, "", ""), sheet), HasSubstr(kEachOther));
      EXPECT_THAT(this->FailureOfRun("<r><a>" + function + "(/r/a)</a></r>", sheet),
                  HasSubstr(kEachOther));
      EXPECT_THAT(this->FailureOfRun(source(16, open, close), sheet), HasSubstr(kEachOther));
      EXPECT_THAT(this->FailureOfRun("<r><a>" + function + "('(')</a></r>", sheet),
                  StartsWith("1010 "));
      EXPECT_THAT(this->FailureOfRun("<r><a>$u</a></r>", sheet), HasSubstr("'u' is not defined"));
      EXPECT_EQ(this->FailureOfRun("<r><a>/r/@n * 1</a></r>", sheet), "");
      EXPECT_THAT(
          this->FailureOfRun("<r n='" + std::string(90, '1') + "'><a>/r/@n * 1</a></r>", sheet),
          HasSubstr("more digits"));
    }
  });
}

TYPED_TEST(XslTest, NumbersAreSortedAsNumbers) {
  const auto sorted = [&](const std::string& key, const std::string& numbers) {
    return this->Run("<a>" + numbers + "</a>",
                     RootSheet("<xsl:for-each select='a/b'><xsl:sort select='" + key +
                               "'/><xsl:value-of select='.'/>,</xsl:for-each>"));
  };
  const std::string byNumber = "1 div .' data-type='number";
  EXPECT_EQ(sorted(byNumber, "<b>0</b><b>2</b><b>1</b>"), "2,1,0,");
  EXPECT_EQ(sorted("-.' data-type='{\"number\"}", "<b>1</b><b>10</b><b>2</b>"), "10,2,1,");
  EXPECT_EQ(sorted("-.", "<b>1</b><b>10</b><b>2</b>"), "1,10,2,");
  for (const std::size_t count : {88U, 89U, 90U, 300U}) {
    const std::string number(count, '1');
    EXPECT_EQ(sorted("-.' data-type='number", "<b>1</b><b>" + number + "</b>"), number + ",1,");
    EXPECT_EQ(sorted(". * 1' data-type='number", "<b>" + number + "</b><b>1</b>"),
              "1," + number + ",");
  }
}

// A literal is written when the expression is compiled.
TYPED_TEST(XslTest, LiteralNumbersThatCanNotBeWrittenAreRefused) {
  const std::string dynamic = "xmlns:d='http://exslt.org/dynamic' ";
  for (const std::size_t count : {88U, 89U, 90U, 200U}) {
    const std::string n(count, '1');
    const std::string source = "<a>" + n + "</a>";
    const std::string sheets[] = {
        RootSheet("<xsl:copy-of select='a[" + n + " = 1]'/>"),
        RootSheet("<xsl:if test='0000" + n + " = 1'/>"),
        RootSheet("<r x='{a[" + n + " = 1]}'/>"),
        RootSheet("<xsl:for-each select='a'><xsl:sort select='. &gt; " + n + "'/></xsl:for-each>"),
        Sheet("<xsl:template match='a[. = " + n + "]'/>"),
        Sheet("<xsl:key name='k' match='a' use='. = " + n + "'/>"),
        RootSheet("<xsl:number count='a[. = " + n + "]'/>"),
        RootSheet("<xsl:value-of " + dynamic + "select='d:evaluate(string(a))'/>"),
        RootSheet("<xsl:value-of " + dynamic + "select='d:evaluate(concat(\"1=\", a))'/>"),
    };
    for (const std::string& sheet : sheets) {
      const std::string failure = this->FailureOfRun(source, sheet);
      if (count <= 88) {
        EXPECT_EQ(failure, "") << sheet;
      } else {
        EXPECT_THAT(failure, HasSubstr("too many digits")) << sheet;
      }
    }
    EXPECT_EQ(this->Run(source, RootSheet("<xsl:if test='a = \"" + n + "\"'>a" + n + "</xsl:if>")),
              "a" + n)
        << "a text may be as long as it likes";
    typename TypeParam::Xsl xsl;
    const std::uintptr_t handle =
        this->Register(xsl, Sheet("<xsl:param name='p'/><xsl:template match='/'>x</xsl:template>"));
    xsl.SetStyleSheetParam(TypeParam::Text("p"), TypeParam::Text(n + " = 1"));
    EXPECT_EQ(FailureOf<TypeParam>([&] { this->Run(xsl, source, handle); }).empty(), count <= 88);
  }
}

TYPED_TEST(XslTest, WhatIsDeepButNotEndlessIsTaken) {
  EXPECT_EQ(this->Run("<a/>", Chain(50)), "<r>7</r>");
  const auto counting = [](int levels, const std::string& step) {
    return Sheet("<xsl:template name='t' match='/'><xsl:param name='n' select='" +
                 std::to_string(levels) + "'/><xsl:if test='$n &gt; 0'>" + step +
                 "</xsl:if></xsl:template>");
  };
  const std::string next =
      "<xsl:call-template name='t'><xsl:with-param name='n' select='$n - 1'/></xsl:call-template>";
  EXPECT_EQ(this->Run("<a/>", counting(15000, next + "<xsl:if test='$n = 1'>end</xsl:if>")), "end");
  const std::string deep = this->Run("<a/>", counting(3000, "<e>" + next + "</e>"));
  EXPECT_EQ(deep.size(), 2999 * 7 + 4U);
}

TYPED_TEST(XslTest, PathsThatFailSayWhyAndLeaveTheResultFileAlone) {
  using Width = TypeParam;
  typename Width::Xsl xsl;
  const std::string source = this->folder_.Write("source.xml", kSource);
  const std::string sheet = this->folder_.Write("sheet.xsl", kSheet);
  const std::string kept = this->folder_.Write("kept.xml", "kept");
  const std::string none = this->folder_ / "none";
  const struct {
    std::string source, sheet, result;
    const char* message;
  } kRows[] = {
      {none, sheet, kept, "No such file"},
      {source, none, kept, "No such file"},
      {source, sheet, none + "/result.xml", "Error opening file"},
      {source, sheet, "/dev/full", "Error writing"},
      {this->folder_ / "", sheet, kept, "Not a regular file"},
      {"http://127.0.0.1:9/a.xml", sheet, kept, "is not a local file"},
      {source, "http://127.0.0.1:9/a.xsl", kept, "is not a local file"},
      {source, sheet, "http://127.0.0.1:9/a.out", "Error opening file"},
  };
  for (const auto& row : kRows) {
    const std::string failure = FailureOf<Width>([&] {
      xsl.Transform(Width::Text(row.source), Width::Text(row.sheet), Width::Text(row.result));
    });
    EXPECT_THAT(failure, StartsWith("1010 CQuenXSLImpl2w::Transform() "));
    EXPECT_THAT(failure, HasSubstr(row.message));
    EXPECT_EQ(this->folder_.Read("kept.xml"), "kept");
  }
}

TYPED_TEST(XslTest, TheSourceNamesALocalFileOrTheTransformFails) {
  using Width = TypeParam;
  typename Width::Xsl xsl;
  const std::string sheet = this->folder_.Write("sheet.xsl", kSheet);
  const struct {
    std::string instruction;
    const char* message;
  } kRows[] = {
      {"",
       "XSLT error: Failed to process stylesheet. (Occurred in an unknown entity, at an unknown "
       "location.)\nSource tree node: #document."},
      {"<?xml-stylesheet type='text/css' href='" + sheet + "'?>", "Failed to process stylesheet"},
      {"<?xml-stylesheet type='text/xsl'?>", "Failed to process stylesheet"},
      {"<?xml-stylesheet type='text/xsl' href='#here'?>", "no file of its own"},
      {"<?xml-stylesheet type='text/xsl' href='http://127.0.0.1:9/s.xsl'?>", "is not a local file"},
      {"<?xml-stylesheet type='text/xsl' href='/none.xsl'?>", "No such file"},
  };
  for (const auto& row : kRows) {
    std::ostringstream out;
    std::istringstream in(row.instruction + kSource);
    const std::string stream = FailureOf<Width>([&] { xsl.Transform(in, out); });
    EXPECT_THAT(stream, StartsWith("1010 CQuenXSLImpl2w::Transform() "));
    EXPECT_THAT(stream, HasSubstr(row.message));
    const auto document = this->Parsed(row.instruction + kSource);
    const std::string node = FailureOf<Width>([&] { xsl.Transform(document, out); });
    EXPECT_THAT(node, StartsWith("1010 CQuenXSLImpl2w::Transform(CQuenXMLNode2w) "));
    EXPECT_THAT(node, HasSubstr(row.message));
  }
}

TYPED_TEST(XslTest, AStyleSheetReadsWhatLiesBesideIt) {
  using Width = TypeParam;
  std::filesystem::create_directory(this->folder_ / "sub");
  this->folder_.Write("sub/names.ent", "<!ENTITY who 'entity'>");
  this->folder_.Write("sub/base.xsl",
                      Sheet("<xsl:template match='b'>[<xsl:value-of select='.'/>]</xsl:template>"));
  this->folder_.Write("sub/more.xsl",
                      Sheet("<xsl:variable name='d' select=\"document('data.xml')/d\"/>",
                            "<xsl:import href='base.xsl'/>"));
  this->folder_.Write("sub/data.xml", "<!DOCTYPE d SYSTEM 'names.ent'><d>&who;</d>");
  const std::string main = this->folder_.Write(
      "main.xsl",
      "<!DOCTYPE xsl:stylesheet [<!ENTITY % names SYSTEM 'sub/names.ent'> %names;]>" +
          Sheet("<xsl:include href='sub/more.xsl'/><xsl:template match='/'>"
                "<r>&who;<xsl:apply-templates select='a/b'/><xsl:value-of select='$d'/>"
                "<xsl:value-of select=\"count(document('')//*)\"/></r></xsl:template>"));
  typename Width::Xsl xsl;
  std::uintptr_t handle = 0;
  xsl.RegisterCompiledStyleSheet(Width::Text(main), handle);
  EXPECT_EQ(this->Run(xsl, kSource, handle), "<r>entity[1][2]entity8</r>");

  const std::string crash =
      this->folder_.Write("crash.xsl", Sheet("<xsl:include href='sub/crash.xsl'/>"));
  this->folder_.Write("sub/crash.xsl", Sheet("<xsl:template match='|a'/>"));
  EXPECT_THAT(FailureOf<Width>([&] { xsl.RegisterCompiledStyleSheet(Width::Text(crash), handle); }),
              HasSubstr("Error compiling style sheet"));
  // Entities of other files can not be counted before they are used.
  std::string bomb = "<!ENTITY e0 ''>";
  for (int i = 1; i <= 5; ++i) {
    bomb += "<!ENTITY e" + std::to_string(i) + " '";
    for (int times = 0; times < 10; ++times) bomb += "&e" + std::to_string(i - 1) + ";";
    bomb += "'>";
  }
  this->folder_.Write("bomb.dtd", bomb);
  this->folder_.Write("bomb.xml", "<!DOCTYPE d SYSTEM 'bomb.dtd'><d>&e5;</d>");
  std::string large = "<!DOCTYPE d [<!ENTITY e '" + std::string(5000, 'x') + "'>]><d>";
  for (int times = 0; times < 1000; ++times) large += "&e;";
  this->folder_.Write("large.xml", large + "</d>");
  for (const std::string name : {"bomb.xml", "large.xml"}) {
    const std::string naming = this->folder_.Write(
        "naming.xsl", RootSheet("<r><xsl:copy-of select=\"document('" + name + "')\"/></r>"));
    xsl.RegisterCompiledStyleSheet(Width::Text(naming), handle);
    EXPECT_THAT(FailureOf<Width>([&] { this->Run(xsl, kSource, handle); }), HasSubstr(name));
  }
  const std::string exploding = this->folder_.Write(
      "exploding.xsl", "<!DOCTYPE d SYSTEM 'bomb.dtd'>" + RootSheet("<r>&e5;</r>"));
  EXPECT_THAT(
      FailureOf<Width>([&] { xsl.RegisterCompiledStyleSheet(Width::Text(exploding), handle); }),
      HasSubstr("Error compiling style sheet"));
  const std::string itself =
      this->folder_.Write("itself.xsl", Sheet("", "<xsl:import href='itself.xsl'/>"));
  EXPECT_THAT(
      FailureOf<Width>([&] { xsl.RegisterCompiledStyleSheet(Width::Text(itself), handle); }),
      HasSubstr("Error compiling style sheet"));
}

TYPED_TEST(XslTest, NothingIsToldToTheStandardErrorStreamOrTakenFromTheEnvironment) {
  ASSERT_EQ(::setenv("QUENXML2_TEST_SECRET", "secret", 1), 0);
  ::testing::internal::CaptureStderr();
  ::testing::internal::CaptureStdout();
  EXPECT_EQ(this->Run("<a/>", RootSheet("<r><xsl:message>hello</xsl:message><xsl:value-of "
                                        "select=\"concat(system-property('QUENXML2_TEST_SECRET'),"
                                        "system-property('xsl:version'))\"/></r>")),
            "<r>1</r>");
  this->FailureOfRun("<a>", kSheet);
  this->FailureOfRun("<a/>", RootSheet("<xsl:value-of select='a['/>"));
  this->FailureOfRun("<a/>", RootSheet("<xsl:value-of select='$v'/>"));
  this->FailureOfRun("<a/>", RootSheet("<xsl:value-of xmlns:d='http://exslt.org/dynamic' "
                                       "select=\"d:evaluate('a[')\"/>"));
  this->FailureOfRun("<a/>", RootSheet("<xsl:value-of select=\"document('none')\"/>"));
  this->FailureOfRun("<a/>", RootSheet("<xsl:message terminate='yes'>m</xsl:message>"));
  const struct {
    const char* nodes;
    const char* numbers;  // of those before it, and it, that have its name
  } kNumbered[] = {
      {"//processing-instruction()", "1,2,1,"},
      {"//@*", "1,1,"},
      {"//text()", "1,2,"},
      {"//comment()", "1,"},
      {"//*", "1,1,2,1,1,1,"},
      {"/", "1,"},
      {"//namespace::*", ""},
  };
  for (const auto& row : kNumbered) {
    const std::string source =
        "<a b='1' xmlns:q='u' q:c='2'><?p x?><?p y?>t<?q z?><e/><!--c-->t<e/><e xmlns='v'/><div/>"
        "<q:\u00e9/></a>";
    const std::string sheet = RootSheet(std::string("<xsl:for-each select='") + row.nodes +
                                        "'><xsl:number/>,</xsl:for-each>");
    if (*row.numbers == '\0') {
      EXPECT_THAT(this->FailureOfRun(source, sheet), HasSubstr("is not declared"));
    } else {
      EXPECT_EQ(this->Run(source, sheet), row.numbers) << row.nodes;
    }
  }
  typename TypeParam::Xsl xsl;
  const std::uintptr_t handle = this->Register(
      xsl, Sheet("<xsl:param name='p'/><xsl:template match='/'><xsl:value-of select='$p'/>"
                 "</xsl:template>"));
  xsl.SetStyleSheetParam(TypeParam::Text("p"), TypeParam::Text("a ["));
  FailureOf<TypeParam>([&] { this->Run(xsl, kSource, handle); });
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
}

// A transformer installs them for the whole process.
TYPED_TEST(XslTest, NoPathCallsTheFunctionsOfATransformer) {
  this->Run(kSource, kSheet);
  const auto document = this->Parsed("<a xmlns:d='http://exslt.org/dynamic'>true()</a>");
  EXPECT_THAT(FailureOf<TypeParam>(
                  [&] { document.SelectNodes(TypeParam::Text("/a[d:evaluate(string(.))]")); }),
              StartsWith("1010 "));
}

TYPED_TEST(XslTest, EncodingsAreTheEngines) {
  EXPECT_EQ(this->Run("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>",
                      RootSheet("<xsl:copy-of select='a'/>")),
            "<a>\xC3\xA9</a>");
  EXPECT_EQ(this->Run("<a>\xC3\xA9\xE2\x82\xAC</a>",
                      Sheet("<xsl:output encoding='ISO-8859-1'/><xsl:template match='/'>"
                            "<xsl:copy-of select='a'/></xsl:template>")),
            "<a>\xE9&#8364;</a>");
}

TYPED_TEST(XslTest, TextsThatAreNotTheirEncodingAreRefusedAtTheDoor) {
  using Width = TypeParam;
  typename Width::Xsl xsl;
  if constexpr (std::is_same_v<Width, NarrowWidth>) {
    EXPECT_THAT(FailureOf<Width>([&] { xsl.Transform("\xFF", "b", "c"); }),
                HasSubstr("CQuenXMLImplUtils2w::TranscodeFromUTF8()"));
    EXPECT_THAT(FailureOf<Width>([&] { xsl.SetStyleSheetParam("a", "\xC3"); }),
                HasSubstr("CQuenXMLImplUtils2w::TranscodeFromUTF8()"));
  } else {
    EXPECT_THAT(FailureOf<Width>([&] { xsl.SetStyleSheetParam(u"a", wstring(1, 0xD800)); }),
                HasSubstr("CQuenXMLImplUtils2w::TransCodeToUTF8()"));
    // A path that can not be one is as one that is not there.
    const wstring path(1, 0xD800);
    const wstring source = Width::Text(this->folder_.Write("source.xml", kSource));
    const wstring sheet = Width::Text(this->folder_.Write("sheet.xsl", kSheet));
    const wstring result = Width::Text(this->folder_ / "result.xml");
    const struct {
      const wstring &from, &by, &to;
    } kForms[] = {{path, sheet, result}, {source, path, result}, {source, sheet, path}};
    for (const auto& form : kForms) {
      EXPECT_THAT(FailureOf<Width>([&] { xsl.Transform(form.from, form.by, form.to); }),
                  StartsWith("1010 CQuenXSLImpl2w::Transform() "));
    }
    std::uintptr_t handle = 0;
    EXPECT_EQ(FailureOf<Width>([&] { xsl.RegisterCompiledStyleSheet(path, handle); }),
              "4 CQuenXSLImpl::RegisterCompiledStyleSheet Error compiling style sheet");
  }
}

}  // namespace
}  // namespace quen::test

// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include <xercesc/dom/DOM.hpp>

#include "foundation/impl_utils.h"
#include "foundation/wide_stream.h"
#include "tests/support/literals.h"

namespace quen::test {
namespace {

using xercesc::DOMDocument;
using xercesc::DOMNode;
using Stream = quenxml_private::quen_basic_ostringstream<char16_t>;

std::string Text(const DOMNode* inNode, std::int32_t inFormatted) {
  Stream stream;
  std::uint32_t depth = 0;
  CQuenXMLImplUtils2w::BuildXMLString(stream, inNode, depth, inFormatted);
  EXPECT_EQ(depth, 0u);
  return Utf8(stream.str());
}

class XmlWriter : public testing::Test {
 protected:
  ~XmlWriter() override {
    if (node_ != nullptr) node_->release();
  }
  DOMDocument* Parse(const char* inText) {
    if (node_ != nullptr) node_->release();
    CQuenXMLImplUtils2w::BuildDOMNodeFromXMLString(Wide(inText), &node_);
    return static_cast<DOMDocument*>(node_);
  }
  DOMNode* node_ = nullptr;
};

TEST_F(XmlWriter, WritesWhatWasParsed) {
  const struct {
    const char* what;
    const char* xml;
    const char* plain;
    const char* formatted;
  } kRows[] = {
      {"attributes, text, a comment, an empty element", "<a x='1&lt;2'><b>t</b><!--c--><d></d></a>",
       "<a x=\"1&lt;2\"><b>t</b><!--c--><d/></a>",
       "\n<a x=\"1&lt;2\">\n  <b>t</b>\n  <!--c-->\n  <d/>\n</a>"},
      {"the four escapes, and no more", "<a b=\"&quot;'>&amp;\">\"'&gt;&amp;&lt;\u00e9</a>",
       "<a b=\"&quot;'&gt;&amp;\">&quot;'&gt;&amp;&lt;\u00e9</a>",
       "\n<a b=\"&quot;'&gt;&amp;\">&quot;'&gt;&amp;&lt;\u00e9</a>"},
      {"nodes around the root", "<?xml version='1.0'?><!--c--><a/><?p d?>", "<!--c--><a/><?p d?>",
       "\n<!--c-->\n<a/>\n<?p d?>"},
      {"a processing instruction without data", "<a><?p?></a>", "<a><?p ?></a>",
       "\n<a>\n  <?p ?>\n</a>"},
      {"a last child that is text", "<a><b/>t</a>", "<a><b/>t</a>", "\n<a>\n  <b/>t</a>"},
      {"a CDATA section is no text", "<a>t<![CDATA[<&]]></a>", "<a>t<![CDATA[<&]]></a>",
       "\n<a>t\n  <![CDATA[<&]]>\n</a>"},
      {"white space is text", "<a>\n <b/>\n</a>", "<a>\n <b/>\n</a>", "\n<a>\n \n  <b/>\n</a>"},
      {"levels", "<a><b><c><d/></c></b><e/></a>", "<a><b><c><d/></c></b><e/></a>",
       "\n<a>\n  <b>\n    <c>\n      <d/>\n    </c>\n  </b>\n  <e/>\n</a>"},
      {"namespaces are attributes like others", "<p:a xmlns:p='u'><b xmlns='v'/></p:a>",
       "<p:a xmlns:p=\"u\"><b xmlns=\"v\"/></p:a>",
       "\n<p:a xmlns:p=\"u\">\n  <b xmlns=\"v\"/>\n</p:a>"},
  };
  for (const auto& row : kRows) {
    const DOMDocument* const document = Parse(row.xml);
    EXPECT_EQ(Text(document, 0), row.plain) << row.what;
    EXPECT_EQ(Text(document, 1), row.formatted) << row.what;
  }
}

// What no parser gives.
TEST_F(XmlWriter, WritesWhatWasBuilt) {
  DOMDocument* const document = Parse("<a/>");
  DOMNode* const root = document->getDocumentElement();
  root->appendChild(document->createTextNode(u""));
  EXPECT_EQ(Text(root, 0), "<a></a>");
  root->appendChild(document->createComment(u"a--b-->"));
  root->appendChild(document->createCDATASection(u"]]>"));
  root->appendChild(document->createProcessingInstruction(u"p", u"?>"));
  root->appendChild(document->createTextNode(u"\x1\xd800"));
  EXPECT_EQ(Text(root, 0), "<a><!--a--b-->--><![CDATA[]]>]]><?p ?>?>\x01\ufffd</a>");
  EXPECT_EQ(Text(document->createTextNode(u"<"), 1), "&lt;");
  EXPECT_EQ(Text(document->createComment(u"c"), 1), "\n<!--c-->");
}

TEST_F(XmlWriter, AnEntityReferenceIsItsExpansion) {
  const DOMDocument* const document =
      Parse("<!DOCTYPE a [<!ELEMENT a ANY><!ENTITY e 'x<a/>&amp;'>]><a>&e;</a>");
  const DOMNode* const root = document->getDocumentElement();
  ASSERT_EQ(root->getFirstChild()->getNodeType(), DOMNode::ENTITY_REFERENCE_NODE);
  EXPECT_EQ(Text(root, 0), "<a>x<a/>&amp;</a>");
  EXPECT_EQ(Text(root->getFirstChild(), 0), "x<a/>&amp;");
  EXPECT_EQ(Text(root, 1), "\n<a>x\n  <a/>&amp;\n</a>");
}

TEST_F(XmlWriter, RefusesWhatCannotStandInAText) {
  DOMDocument* const document =
      Parse("<!DOCTYPE a [<!ELEMENT a ANY><!ATTLIST a b CDATA '1'>]><a/>");
  DOMNode* const fragment = document->createDocumentFragment();
  const DOMNode* const kRefused[] = {document, document->getDoctype(), fragment,
                                     document->getDocumentElement()->getAttributes()->item(0)};
  for (const DOMNode* const node : kRefused) {
    Stream stream;
    std::uint32_t depth = 3;
    EXPECT_EQ(
        FailureAt<WideTypes>([&] { CQuenXMLImplUtils2w::BuildXMLString(stream, node, depth, 0); }),
        "1010 Invalid DOM Node Type @ CQuenXMLDataImpl::BuildXMLString()")
        << node->getNodeType();
    EXPECT_EQ(depth, 3u);
  }
  fragment->release();
}

TEST(EscapeText, EndsAtTheZeroUnit) {
  Stream stream;
  CQuenXMLImplUtils2w::EscapeText(stream, u"&\0<");
  CQuenXMLImplUtils2w::EscapeText(stream, u"a\"b'\u00e9>");
  EXPECT_EQ(Utf8(stream.str()), "&amp;a&quot;b'\u00e9&gt;");
}

TEST(WideStream, GrowsGeometrically) {
  quenxml_private::quen_basic_stringbuf<char16_t> buffer;
  EXPECT_EQ(buffer.str(), u"");
  EXPECT_EQ(buffer.capacity(), 0u);
  std::u16string expected;
  const struct {
    std::size_t units;
    std::size_t capacity;
  } kSteps[] = {{1, 32}, {32, 32}, {33, 65}, {65, 65}, {66, 131}, {132, 263}};
  for (const auto& step : kSteps) {
    while (expected.size() < step.units) {
      const char16_t unit = static_cast<char16_t>(u'a' + expected.size() % 26);
      buffer.sputc(unit);
      expected += unit;
    }
    EXPECT_EQ(buffer.capacity(), step.capacity) << step.units;
    EXPECT_EQ(buffer.str(), expected);
  }
  const std::u16string run(5000, u'r');
  buffer.sputn(run.data(), 5000);
  EXPECT_EQ(buffer.str(), expected + run);
}

}  // namespace
}  // namespace quen::test

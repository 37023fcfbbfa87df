// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include <xercesc/dom/DOM.hpp>

#include "dom/document_impl.h"
#include "dom/leaf_impl.h"
#include "tests/support/literals.h"

namespace quen::test {
namespace {

using Document = CQuenXMLDocument2w;
using Element = CQuenXMLElement2w;
using Node = CQuenXMLNode2w;

Document Parse(const char* inXml) {
  Document document;
  if (*inXml != 0) document.LoadXML(Wide(inXml));
  return document;
}

std::string FailureOf(const std::function<void()>& inOperation) {
  return FailureAt<WideTypes>(inOperation);
}

TEST(Node, ANullHandleFailsInEveryOperationWithItsContext) {
  Document document = Parse("<a/>");
  Node null = document.GetParent();
  ASSERT_TRUE(null == kNull);
  ASSERT_FALSE(null != kNull);
  const struct {
    const char* context;
    std::function<void()> call;
  } kRows[] = {
      {"CQuenXMLNodeImpl2w::GetName()", [&] { null.GetName(); }},
      {"CQuenXMLNodeImpl2w::Value()", [&] { null.GetValue(); }},
      {"CQuenXMLNodeImpl2w::GetNodeType()", [&] { null.GetNodeType(); }},
      {"CQuenXMLNodeImpl2w::GetNamespaceURI()", [&] { null.GetNamespaceURI(); }},
      {"CQuenXMLNodeImpl2w::GetPrefix()", [&] { null.GetPrefix(); }},
      {"CQuenXMLNodeImpl2w::HasChildNodes()", [&] { null.HasChildNodes(); }},
      {"CQuenXMLNodeImpl2w::HasAttributes()", [&] { null.HasAttributes(); }},
      {"CQuenXMLNodeImpl2w::GetParent()", [&] { null.GetParent(); }},
      {"CQuenXMLNodeImpl2w::GetNextSibling()", [&] { null.GetNextSibling(); }},
      {"CQuenXMLNodeImpl2w::GetPreviousSibling()", [&] { null.GetPreviousSibling(); }},
      {"CQuenXMLNodeImpl2w::GetFirstChild()", [&] { null.GetFirstChild(); }},
      {"CQuenXMLNodeImpl2w::GetLastChild()", [&] { null.GetLastChild(); }},
      {"CQuenXMLNodeImpl2w::GetOwnerDocument()", [&] { null.GetOwnerDocument(); }},
      {"CQuenXMLNodeImpl2w::GetSubset()", [&] { null.GetSubset(); }},
      {"CQuenXMLNodeImpl2w::GetFormattedSubset()", [&] { null.GetFormattedSubset(); }},
      {"CQuenXMLNodeImpl2w::SetValue()", [&] { null.SetValue(u""); }},
      {"CQuenXMLNodeImpl2w::SetPrefix()", [&] { null.SetPrefix(u""); }},
      {"CQuenXMLNodeImpl2w::InsertBefore()", [&] { null.InsertBefore(null, null); }},
      {"CQuenXMLNodeImpl2w::AppendChild()", [&] { null.AppendChild(null); }},
      {"CQuenXMLNodeImpl2w::ReplaceChild()", [&] { null.ReplaceChild(null, null); }},
      {"CQuenXMLNodeImpl2w::RemoveChild()", [&] { null.RemoveChild(null); }},
      {"CQuenXMLNodeImpl2w::AppendSubset()", [&] { null.AppendSubset(u"<a/>"); }},
      {"CQuenXMLNodeImpl2w::SelectNodes()", [&] { null.SelectNodes(u"a"); }},
      {"CQuenXMLNodeImpl2w::SelectNodes()", [&] { null.SelectSingleNode(u"a"); }},
      {"CQuenXMLNodeImpl2w::Clone()", [&] { null.Clone(true); }},
      {"CQuenXMLNodeImpl2w::GetNodeType()", [&] { Element{null}; }},
      {"CQuenXMLNodeImpl2w::GetNodeType()", [&] { CQuenXMLComment2w{null}; }},
      {"CQuenXMLNodeImpl2w::GetNodeType()", [&] { Document{null}; }},
  };
  for (const auto& row : kRows) {
    EXPECT_EQ(FailureOf(row.call), std::string("8 Node was not initialized @ ") + row.context);
  }
  Node copy(null);
  copy = document;
  copy = null;
  EXPECT_TRUE(copy == null && copy == kNull && copy.GetImpl()->GetDOMNode() == nullptr);
}

TEST(Element, ANullHandleFailsWithTheElementsContexts) {
  Document empty;
  Element null = empty.GetDocumentElement();
  const struct {
    const char* context;
    std::function<void()> call;
  } kRows[] = {
      {"GetAttribute()", [&] { null.GetAttribute(u"a"); }},
      {"SetAttribute()", [&] { null.SetAttribute(u"a", u"b"); }},
      {"RemoveAttribute()", [&] { null.RemoveAttribute(u"a"); }},
      {"GetParent()", [&] { null.HasParent(); }},
      {"GetParentIterator()", [&] { null.GetParentIterator(); }},
      {"GetSiblingIterator()", [&] { null.GetSiblingIterator(); }},
      {"begin()", [&] { null.begin(); }},
      {"end()", [&] { null.end(); }},
      {"find()", [&] { null.find(u"a"); }},
      {"empty()", [&] { null.empty(); }},
      {"end()", [&] { null.AddChildNode(u"a"); }},
      {"end()", [&] { null.AddChildNode(null, true); }},
      {"attr_begin()", [&] { null.attr_begin(); }},
      {"attr_end()", [&] { null.attr_end(); }},
      {"attr_find()", [&] { null.attr_find(u"a"); }},
      {"attr_empty()", [&] { null.attr_empty(); }},
      {"GetValue()", [&] { null.GetValue(); }},
      {"SetValue()", [&] { null.SetValue(u""); }},
  };
  for (const auto& row : kRows) {
    EXPECT_EQ(FailureOf(row.call),
              std::string("8 Node was not initialized @ CQuenXMLElementImpl2w::") + row.context);
  }
}

TEST(Node, HandlesCompareByTheirNode) {
  Document document = Parse("<a><!--c--><b/></a>");
  const Element a = document.GetDocumentElement();
  const Node plain = document.GetFirstChild();
  EXPECT_TRUE(a == plain && plain == a && !(a != plain));
  EXPECT_TRUE(a.GetFirstChild() != a.GetLastChild());
  EXPECT_EQ(a.GetParent().GetNodeType(), Node::DocumentNode);
  EXPECT_TRUE(document.GetParent() == kNull);
  EXPECT_TRUE(Element(a.GetFirstChild()) == kNull);
  EXPECT_TRUE(CQuenXMLComment2w(a.GetFirstChild()) == a.GetFirstChild());
  EXPECT_TRUE(CQuenXMLComment2w(document.CreateCDATA(u"t")) == kNull);
  EXPECT_TRUE(CQuenXMLCDATA2w() == kNull);
  Element moved = a;
  moved = Element(a.GetLastChild());
  EXPECT_EQ(moved.GetName(), u"b");
  moved = *&moved;
  EXPECT_EQ(moved.GetName(), u"b");
}

TEST(Node, NamesAndValuesByKind) {
  Document document = Parse("<p:a xmlns:p='u' q='v'>t<![CDATA[d]]><?i j?><!--c--></p:a>");
  const struct {
    const char* path;
    const char* shown;  // type, name, value, namespace, prefix
  } kRows[] = {
      {"/", "9 #document   "},
      {"/*", "1 p:a t u p"},
      {"/*/@q", "2 q v  "},
      {"/*/text()", "3 #text t  "},
      {"/*/processing-instruction()", "7 i j  "},
      {"/*/comment()", "8 #comment c  "},
  };
  for (const auto& row : kRows) {
    const Node node = document.SelectSingleNode(Wide(row.path));
    EXPECT_EQ(std::to_string(node.GetNodeType()) + " " + Utf8(node.GetName()) + " " +
                  Utf8(node.GetValue()) + " " + Utf8(node.GetNamespaceURI()) + " " +
                  Utf8(node.GetPrefix()),
              row.shown)
        << row.path;
  }
  const Node cdata = document.GetDocumentElement().GetFirstChild().GetNextSibling();
  EXPECT_EQ(cdata.GetNodeType(), Node::CDATASectionNode);
  EXPECT_EQ(cdata.GetValue(), u"d");
}

struct ValueRow {
  const char* what;
  const char* xml;
  const char* value;  // of the root
  const char* set;    // the document after SetValue("v")
};

TEST(Element, TheValueIsTheFirstTextChild) {
  const ValueRow kRows[] = {
      {"none", "<a/>", "", "<a>v</a>"},
      {"behind other children", "<a><b/></a>", "", "<a><b/>v</a>"},
      {"a comment and a section around it", "<a><!--c-->a<![CDATA[b]]>c</a>", "a",
       "<a><!--c-->v<![CDATA[b]]>c</a>"},
      {"a section alone is none", "<a><![CDATA[b]]></a>", "", "<a><![CDATA[b]]>v</a>"},
      {"the text of a child is none", "<a><b>t</b></a>", "", "<a><b>t</b>v</a>"},
  };
  for (const ValueRow& row : kRows) {
    for (const bool plain : {false, true}) {
      Document document = Parse(row.xml);
      Element element = document.GetDocumentElement();
      Node node = document.GetFirstChild();
      EXPECT_EQ(Utf8(plain ? node.GetValue() : element.GetValue()), row.value) << row.what;
      plain ? node.SetValue(u"v") : element.SetValue(u"v");
      EXPECT_EQ(Utf8(document.GetSubset()), row.set) << row.what;
    }
  }
}

TEST(Node, SetValueOfOtherKinds) {
  Document document = Parse("<a b='1'>t<!--c--><?p d?></a>");
  for (const char16_t* const path : {u"/a/@b", u"/a/text()", u"/a/comment()", u"/a/node()[3]"})
    document.SelectSingleNode(path).SetValue(wstring(u"n\0x", 3));
  document.SetValue(u"a document has no value");
  EXPECT_EQ(Utf8(document.GetSubset()), "<a b=\"n\">n<!--n--><?p n?></a>");
  EXPECT_EQ(document.GetValue(), u"");
  CQuenXMLAttr2w attribute(document.SelectSingleNode(u"/a/@b"));
  EXPECT_TRUE(attribute.GetOwnerElement() == document.GetDocumentElement());
  attribute.SetValue(u"x<y");
  EXPECT_EQ(document.GetDocumentElement().GetAttribute(u"b"), u"x<y");
  document.GetDocumentElement().RemoveAttribute(u"b");
  EXPECT_TRUE(attribute.GetOwnerElement() == kNull);
  EXPECT_EQ(attribute.GetValue(), u"x<y");
}

TEST(Element, Attributes) {
  Document document = Parse("<p:a xmlns:p='u' p:x='1' y='2'/>");
  Element a = document.GetDocumentElement();
  EXPECT_EQ(a.GetAttribute(u"p:x"), u"1");
  EXPECT_EQ(a.GetAttribute(u"x"), u"");
  EXPECT_EQ(a.GetAttribute(u""), u"");
  a.SetAttribute(u"y", u"3\u20ac");
  a.SetAttribute(u"z", u"");
  a.RemoveAttribute(u"none");
  a.RemoveAttribute(u"p:x");
  EXPECT_EQ(Utf8(document.GetSubset()), "<p:a xmlns:p=\"u\" y=\"3\u20ac\" z=\"\"/>");
  for (const char16_t* const name : {u"", u"1", u"a b", u"a="}) {
    EXPECT_EQ(FailureOf([&] { a.SetAttribute(name, u"v"); }).substr(0, 14), "5 DOM Error: i");
  }
  EXPECT_EQ(FailureOf([&] { a.SetAttribute(u"1", u"v"); }),
            "5 DOM Error: invalid or illegal XML character @ "
            "CQuenXMLElementImpl2w::SetAttribute()");
}

// The tree, and what came back, after one change of /a in <a><b/>t<c><d/></c></a>.
struct ChangeRow {
  const char* what;
  std::function<Node(Document&, Node&)> change;
  const char* outcome;
};

TEST(Node, ChangesOfTheTree) {
  Document foreign = Parse("<f><g h='1'>i</g></f>");
  Node removed = foreign.CreateElement(u"loose");
  const auto at = [](Document& document, const char16_t* path) {
    return document.SelectSingleNode(path);
  };
  const ChangeRow kRows[] = {
      {"append moves", [&](Document& d, Node& a) { return a.AppendChild(at(d, u"/a/b")); },
       "b in <a>t<c><d/></c><b/></a>"},
      {"insert moves",
       [&](Document& d, Node& a) { return a.InsertBefore(at(d, u"//d"), at(d, u"/a/b")); },
       "d in <a><d/><b/>t<c/></a>"},
      {"insert before itself",
       [&](Document& d, Node& a) { return a.InsertBefore(at(d, u"/a/b"), at(d, u"/a/b")); },
       "b in <a><b/>t<c><d/></c></a>"},
      {"insert at a null place",
       [&](Document& d, Node& a) { return a.InsertBefore(at(d, u"//d"), d.GetParent()); },
       "d in <a><b/>t<c/><d/></a>"},
      {"insert where the place is a child of another",
       [&](Document& d, Node& a) { return a.InsertBefore(at(d, u"/a/b"), at(d, u"//d")); },
       "8 InsertBefore()"},
      {"insert where the place is of another document",
       [&](Document& d, Node& a) {
         return a.InsertBefore(at(d, u"/a/b"), foreign.GetDocumentElement());
       },
       "8 InsertBefore()"},
      {"append nothing", [&](Document& d, Node& a) { return a.AppendChild(d.GetParent()); },
       "null in <a><b/>t<c><d/></c></a>"},
      {"replace by nothing",
       [&](Document& d, Node& a) { return a.ReplaceChild(d.GetParent(), at(d, u"/a/b")); },
       "null in <a><b/>t<c><d/></c></a>"},
      {"append itself", [&](Document&, Node& a) { return a.AppendChild(a); }, "3 AppendChild()"},
      {"append an ancestor", [&](Document& d, Node& a) { return at(d, u"//d").AppendChild(a); },
       "3 AppendChild()"},
      {"append the document", [&](Document& d, Node& a) { return a.AppendChild(d); },
       "4 AppendChild()"},
      {"append another document", [&](Document&, Node& a) { return a.AppendChild(foreign); },
       "9 AppendChild()"},
      {"append an attribute",
       [&](Document& d, Node& a) {
         Element(a).SetAttribute(u"x", u"1");
         return at(d, u"/a/b").AppendChild(at(d, u"/a/@x"));
       },
       "3 AppendChild()"},
      {"a second document element",
       [&](Document& d, Node&) { return d.AppendChild(at(d, u"/a/b")); }, "3 AppendChild()"},
      {"text under the document",
       [&](Document& d, Node&) { return d.AppendChild(at(d, u"/a/text()")); }, "3 AppendChild()"},
      {"a child of a comment",
       [&](Document& d, Node& a) { return d.CreateComment(u"c").AppendChild(a); },
       "3 AppendChild()"},
      {"replace by a node of the document",
       [&](Document& d, Node& a) { return a.ReplaceChild(at(d, u"//d"), at(d, u"/a/b")); },
       "b in <a><d/>t<c/></a>"},
      {"replace by itself",
       [&](Document& d, Node& a) { return a.ReplaceChild(at(d, u"/a/b"), at(d, u"/a/b")); },
       "b in <a><b/>t<c><d/></c></a>"},
      {"replace by the neighbour",
       [&](Document& d, Node& a) { return a.ReplaceChild(at(d, u"/a/c"), at(d, u"/a/text()")); },
       "#text in <a><b/><c><d/></c></a>"},
      {"replace a child by its own child",
       [&](Document& d, Node& a) { return a.ReplaceChild(at(d, u"//d"), at(d, u"/a/c")); },
       "c in <a><b/>t<d/></a>"},
      {"replace what is no child",
       [&](Document& d, Node& a) { return a.ReplaceChild(at(d, u"/a/b"), at(d, u"//d")); },
       "8 ReplaceChild()"},
      {"replace nothing",
       [&](Document& d, Node& a) { return a.ReplaceChild(at(d, u"/a/b"), d.GetParent()); },
       "8 ReplaceChild()"},
      {"replace by an ancestor",
       [&](Document& d, Node& a) { return at(d, u"/a/c").ReplaceChild(a, at(d, u"//d")); },
       "3 ReplaceChild()"},
      {"remove", [&](Document& d, Node& a) { return a.RemoveChild(at(d, u"/a/c")); },
       "c in <a><b/>t</a>"},
      {"remove nothing", [&](Document& d, Node& a) { return a.RemoveChild(d.GetParent()); },
       "8 RemoveChild()"},
      {"remove a grandchild", [&](Document& d, Node& a) { return a.RemoveChild(at(d, u"//d")); },
       "8 RemoveChild()"},
      {"remove from another document",
       [&](Document&, Node& a) { return a.RemoveChild(foreign.GetDocumentElement()); },
       "8 RemoveChild()"},
      {"a foreign node is copied",
       [&](Document&, Node& a) {
         const Node g = foreign.GetDocumentElement().GetFirstChild();
         const Node copy = a.AppendChild(g);
         EXPECT_TRUE(copy != g);
         return copy;
       },
       "g in <a><b/>t<c><d/></c><g h=\"1\">i</g></a>"},
      {"a foreign node replaces",
       [&](Document& d, Node& a) {
         return a.ReplaceChild(foreign.GetDocumentElement(), at(d, u"/a/b"));
       },
       "b in <a><f><g h=\"1\">i</g></f>t<c><d/></c></a>"},
      {"a foreign node without a place", [&](Document&, Node& a) { return a.AppendChild(removed); },
       "loose in <a><b/>t<c><d/></c><loose/></a>"},
  };
  for (const ChangeRow& row : kRows) {
    Document document = Parse("<a><b/>t<c><d/></c></a>");
    Node a = document.GetDocumentElement();
    std::string shown;
    std::string failure = FailureOf([&] {
      const Node result = row.change(document, a);
      shown = (result == kNull ? "null" : Utf8(result.GetName())) + " in ";
    });
    if (!failure.empty()) {
      failure = failure.substr(0, 2) + failure.substr(failure.rfind(':') + 1);
      EXPECT_EQ(failure, row.outcome) << row.what;
      Element(a).RemoveAttribute(u"x");
      EXPECT_EQ(Utf8(document.GetSubset()), "<a><b/>t<c><d/></c></a>") << row.what;
    } else {
      EXPECT_EQ(shown + Utf8(document.GetSubset()), row.outcome) << row.what;
    }
  }
  EXPECT_EQ(Utf8(foreign.GetSubset()), "<f><g h=\"1\">i</g></f>");
}

TEST(Node, AFailureOfTheDomCarriesItsCodeAndText) {
  Document document = Parse("<a/>");
  Node a = document.GetDocumentElement();
  EXPECT_EQ(FailureOf([&] { a.AppendChild(a); }),
            "3 DOM Error: attempt is made to insert a node where it is not permitted @ "
            "CQuenXMLNodeImpl2w::AppendChild()");
  EXPECT_EQ(FailureOf([&] { a.SetPrefix(u"p"); }).substr(0, 14), "14 DOM Error: ");
}

TEST(Node, WhatLeftTheTreeStaysUsable) {
  Document document = Parse("<a><b><c/></b></a>");
  Element a = document.GetDocumentElement();
  Node b = a.RemoveChild(a.GetFirstChild());
  EXPECT_TRUE(b.GetParent() == kNull);
  EXPECT_EQ(b.GetSubset(), u"<b><c/></b>");
  b.AppendSubset(u"<!--x--><d/>");
  const Node clone = b.Clone(true);
  EXPECT_TRUE(clone != b && clone.GetParent() == kNull);
  EXPECT_EQ(clone.GetSubset(), u"<b><c/><d/></b>");
  EXPECT_EQ(b.Clone(false).GetSubset(), u"<b/>");
  EXPECT_TRUE(a.AppendChild(clone) == clone);
  EXPECT_EQ(Utf8(document.GetSubset()), "<a><b><c/><d/></b></a>");
}

TEST(Node, TheCloneOfADocumentIsADocumentOfItsOwn) {
  Document document = Parse("<!--x--><a><b/></a>");
  const Node clone = document.Clone(true);
  document.GetDocumentElement().SetValue(u"changed");
  EXPECT_EQ(clone.GetSubset(), u"<!--x--><a><b/></a>");
  clone.GetImpl()->GetDOMNode()->release();  // nothing else does
}

TEST(Node, TextFormsAndGrafts) {
  Document document = Parse("<!--x--><a b='1'>t</a>");
  Element a = document.GetDocumentElement();
  EXPECT_EQ(Utf8(document.GetSubset()), "<!--x--><a b=\"1\">t</a>");
  EXPECT_EQ(Utf8(document.GetFormattedSubset()), "\n<!--x-->\n<a b=\"1\">t</a>");
  EXPECT_EQ(FailureOf([&] { document.SelectSingleNode(u"/a/@b").GetFormattedSubset(); }),
            "1010 Invalid DOM Node Type @ CQuenXMLDataImpl::BuildXMLString()");
  a.AppendSubset(u"<?xml version='1.0'?><!--y--><c/><?z?>");
  EXPECT_EQ(Utf8(a.GetSubset()), "<a b=\"1\">t<c/></a>");
  EXPECT_EQ(FailureOf([&] { a.AppendSubset(u"<c>"); }).substr(0, 18), "1009 Parse error: ");
  EXPECT_EQ(FailureOf([&] { document.AppendSubset(u"<c/>"); }).substr(0, 14), "3 DOM Error: a");
  EXPECT_EQ(Utf8(document.GetSubset()), "<!--x--><a b=\"1\">t<c/></a>");
  Document empty;
  empty.AppendSubset(u"<c/>");
  EXPECT_EQ(empty.GetSubset(), u"<c/>");
}

// Whatever Xalan-C takes such a document for.
TEST(Node, SelectsInADocumentWithoutARoot) {
  Document empty;
  Document commented;
  commented.AppendChild(commented.CreateComment(u"c"));
  const Element detached = empty.CreateElement(u"a");
  Document emptied;
  emptied.LoadXML(u"<a><b/></a>");
  const Node former = emptied.RemoveChild(emptied.GetDocumentElement());
  const struct {
    const char16_t* expression;
    std::size_t inDocument;  // found from a document
  } kCases[] = {
      {u"/config[normalize-space(@x)='1']", 0},
      {u"(/a)[1]", 0},
      {u"(//a)[1]", 0},
      {u"//a[lang('x')]", 0},
      {u"//a[sum(b)>1]", 0},
      {u"(/)[1]", 1},
      {u"/node()[position()=last()][normalize-space()='x']", 0},
      {u"id('x')", 0},
  };
  for (const auto& each : kCases) {
    for (const Node& node : {Node(empty), Node(commented)})
      EXPECT_EQ(node.SelectNodes(each.expression).size(), each.inDocument) << Utf8(each.expression);
    for (const Node& node : {Node(detached), former}) node.SelectNodes(each.expression);
  }
  EXPECT_EQ(commented.SelectNodes(u"(/descendant::comment())[1]").size(), 1u);
  EXPECT_EQ(FailureOf([&] { empty.SelectNodes(u"count(/)"); }).substr(0, 5), "1010 ");
}

TEST(Node, AnAttributeIsFoundByItsNewPrefix) {
  Document document = Parse("<e xmlns:p='u' xmlns:z='u' a='1' p:m='2' x='3' y='4'/>");
  Element element = document.GetDocumentElement();
  element.SelectSingleNode(u"@p:m").SetPrefix(u"z");
  EXPECT_EQ(element.GetAttribute(u"z:m"), u"2");
  element.SetAttribute(u"z:m", u"9");
  element.RemoveAttribute(u"x");
  Document copy = document;
  copy.GetDocumentElement().SetAttribute(u"z:m", u"8");
  EXPECT_EQ(Utf8(document.GetSubset()), R"(<e a="1" xmlns:p="u" xmlns:z="u" y="4" z:m="9"/>)");
  EXPECT_EQ(Utf8(copy.GetSubset()), R"(<e a="1" xmlns:p="u" xmlns:z="u" y="4" z:m="8"/>)");
}

}  // namespace
}  // namespace quen::test

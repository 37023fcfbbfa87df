// SPDX-License-Identifier: Apache-2.0
//
// What is special to the narrow classes: the twins, the iterators, the crossing of failures.
#include <stdexcept>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <vector>

#include "narrow/crossing.h"
#include "tests/support/widths.h"

namespace quen::test {
namespace {

constexpr QuenXMLDOMNode2w_NullPtr* kNull = nullptr;

CQuenXMLDocument2 Parsed(const std::string& inXML) {
  CQuenXMLDocument2 document;
  document.LoadXML(inXML);
  return document;
}

// "narrow 8 ..." or "wide 8 ..." by the class that arrives.
template <class Operation>
std::string Arrives(Operation&& inOperation) {
  try {
    const std::string narrow = Failure<NarrowTypes>(inOperation);
    return narrow.empty() ? "nothing" : "narrow " + narrow;
  } catch (const CQuenXMLException2w& failure) {
    return "wide " + std::to_string(failure.GetErrorCode()) + " " +
           internal::ToUtf8Lossy(failure.GetErrorMessage());
  } catch (const std::exception&) {
    return "another";
  }
}

template <class Class>
const std::type_info& TwinClass(const Class& inHandle) {
  const CQuenXMLNode2w& twin = *inHandle.GetImpl();
  return typeid(twin);
}

TEST(NarrowTwin, HasTheWideClassOfTheSameName) {
  CQuenXMLDocument2 document = Parsed("<r x='1'><![CDATA[c]]><!--c--><?t d?>t</r>");
  CQuenXMLElement2 root = document.GetDocumentElement();
  const CQuenXMLNode2 node = root;
  const CQuenXMLCDATA2 section(root.GetFirstChild());
  const CQuenXMLComment2 comment(section.GetNextSibling());
  const CQuenXMLPI2 instruction(comment.GetNextSibling());
  const CQuenXMLAttr2 attr = *root.attr_begin();
  EXPECT_EQ(TwinClass(document), typeid(CQuenXMLDocument2w));
  EXPECT_EQ(TwinClass(CQuenXMLDocument2()), typeid(CQuenXMLDocument2w));
  EXPECT_EQ(TwinClass(CQuenXMLDocument2(root)), typeid(CQuenXMLDocument2w));
  EXPECT_EQ(TwinClass(root.GetOwnerDocument()), typeid(CQuenXMLDocument2w));
  EXPECT_EQ(TwinClass(root), typeid(CQuenXMLElement2w));
  EXPECT_EQ(TwinClass(CQuenXMLElement2(root)), typeid(CQuenXMLElement2w));
  EXPECT_EQ(TwinClass(node), typeid(CQuenXMLNode2w));
  EXPECT_EQ(TwinClass(section), typeid(CQuenXMLCDATA2w));
  EXPECT_EQ(TwinClass(comment), typeid(CQuenXMLComment2w));
  EXPECT_EQ(TwinClass(instruction), typeid(CQuenXMLPI2w));
  EXPECT_EQ(TwinClass(attr), typeid(CQuenXMLAttr2w));
  EXPECT_EQ(TwinClass(document.CreateCDATA("x")), typeid(CQuenXMLCDATA2w));
  EXPECT_EQ(TwinClass(document.CreateComment("x")), typeid(CQuenXMLComment2w));
  EXPECT_EQ(TwinClass(document.CreatePI("x", "y")), typeid(CQuenXMLPI2w));
  EXPECT_EQ(TwinClass(CQuenXMLCDATA2()), typeid(CQuenXMLNode2w));
}

TEST(NarrowTwin, ReachesTheSameNodeWide) {
  CQuenXMLDocument2 document = Parsed("<r/>");
  CQuenXMLElement2w wide(*document.GetDocumentElement().GetImpl());
  wide.SetAttribute(u"\u00e9", u"\u20ac");
  EXPECT_EQ(document.GetSubset(), "<r \u00e9=\"\u20ac\"/>");
  const CQuenXMLAttr2 attr(*wide.attr_begin());
  EXPECT_EQ(attr.GetValue(), "\u20ac");
  EXPECT_EQ(attr.GetOwnerElement(), document.GetDocumentElement());
}

TEST(NarrowTwin, ConversionsAreThoseOfTheWideClass) {
  CQuenXMLDocument2 document = Parsed("<r/>");
  const CQuenXMLNode2 root = document.GetDocumentElement();
  const CQuenXMLNode2 null = document.GetParent();
  EXPECT_TRUE(CQuenXMLComment2(root) == kNull);
  EXPECT_TRUE(CQuenXMLElement2(root) != kNull);
  const std::string expected = "8 Node was not initialized @ CQuenXMLNodeImpl2w::GetNodeType()";
  EXPECT_EQ(FailureAt<NarrowTypes>([&] { CQuenXMLElement2 element(null); }), expected);
  EXPECT_EQ(FailureAt<NarrowTypes>([&] { CQuenXMLAttr2 attr(null); }), expected);
  EXPECT_EQ(FailureAt<NarrowTypes>([&] { CQuenXMLCDATA2 section(null); }), expected);
  EXPECT_EQ(FailureAt<NarrowTypes>([&] { CQuenXMLComment2 comment(null); }), expected);
  EXPECT_EQ(FailureAt<NarrowTypes>([&] { CQuenXMLPI2 instruction(null); }), expected);
  EXPECT_EQ(FailureAt<NarrowTypes>([&] { CQuenXMLDocument2 copy(null); }), expected);
}

TEST(NarrowTwin, AssignmentMakesASecondHandleOnTheNode) {
  CQuenXMLDocument2 document = Parsed("<r x='1' y='2'><a/><b/><!--c--><!--d--><?e?><?f?></r>");
  CQuenXMLElement2 root = document.GetDocumentElement();
  CQuenXMLNode2 node = root.GetFirstChild();
  CQuenXMLElement2 element(node);
  CQuenXMLElement2 other(root.GetLastChild().GetPreviousSibling().GetParent());
  other = element;
  EXPECT_EQ(other, node);
  EXPECT_NE(other.GetImpl(), element.GetImpl());
  other = *&other;
  EXPECT_EQ(other.GetName(), "a");
  node = root;
  node = *&node;
  EXPECT_EQ(node, root);
  CQuenXMLAttr2 attr = *root.attr_begin();
  attr = *root.attr_find("y");
  EXPECT_EQ(attr.GetOwnerElement(), root);
  EXPECT_EQ(attr.GetValue(), "2");
  CQuenXMLComment2 comment(root.SelectSingleNode("comment()[1]"));
  comment = CQuenXMLComment2(root.SelectSingleNode("comment()[2]"));
  EXPECT_EQ(comment.GetValue(), "d");
  CQuenXMLPI2 instruction(root.SelectSingleNode("processing-instruction()[1]"));
  instruction = CQuenXMLPI2(root.SelectSingleNode("processing-instruction()[2]"));
  EXPECT_EQ(instruction.GetName(), "f");
  CQuenXMLCDATA2 section;
  section = document.CreateCDATA("s");
  EXPECT_EQ(section.GetValue(), "s");
  EXPECT_EQ(TwinClass(section), typeid(CQuenXMLCDATA2w));
  CQuenXMLDocument2 copy;
  copy = document;
  copy = *&copy;
  copy.GetDocumentElement().SetValue("changed");
  EXPECT_EQ(document.GetDocumentElement().GetValue(), "");
}

TEST(NarrowTwin, AssignmentThroughTheBaseKeepsTheHandleUsable) {
  CQuenXMLDocument2 document = Parsed("<r><a x='1'/></r>");
  CQuenXMLElement2 element = document.GetDocumentElement();
  static_cast<CQuenXMLNode2&>(element) = element.GetFirstChild();
  EXPECT_EQ(element.GetAttribute("x"), "1");
}

template <class Width>
class AssignedThroughItsBase : public testing::Test {};
TYPED_TEST_SUITE(AssignedThroughItsBase, Widths, WidthNames);

// A node of another kind leaves the operations of the handle's own class without one.
TYPED_TEST(AssignedThroughItsBase, AnotherKindOfNode) {
  using W = TypeParam;
  using Node = typename W::Node;
  typename W::Document document;
  document.LoadXML(W::Text("<r a='1'>text</r>"));
  typename W::Element root = document.GetDocumentElement();
  const Node text = root.GetFirstChild();
  const auto failure = [](auto&& call) { return Failure<W>(call); };
  constexpr const char* kExpected = "8 Node was not initialized";

  typename W::Element element = root;
  static_cast<Node&>(element) = text;
  EXPECT_EQ(failure([&] { element.GetAttribute(W::Text("a")); }), kExpected);
  EXPECT_EQ(failure([&] { element.begin(); }), kExpected);
  EXPECT_EQ(failure([&] { element.AddChildNode(W::Text("b")); }), kExpected);
  EXPECT_EQ(W::Utf8(element.GetValue()), "text");
  typename W::Element copy = element;
  copy.SetValue(W::Text("changed"));
  EXPECT_EQ(W::Utf8(root.GetValue()), "changed");
  static_cast<Node&>(element) = document;
  EXPECT_NE(failure([copy = element]() mutable { copy.SetValue(W::Text("x")); }), kExpected);

  typename W::Attr attribute(*root.attr_begin());
  static_cast<Node&>(attribute) = text;
  EXPECT_TRUE(attribute.GetOwnerElement() == kNull);

  typename W::Document other;
  static_cast<Node&>(other) = root;
  EXPECT_EQ(failure([&] { other.LoadXML(W::Text("<x/>")); }), kExpected);
  EXPECT_EQ(failure([&] { typename W::Document{other}; }), kExpected);
  EXPECT_EQ(W::Utf8(other.GetName()), "r");
  other = document;
  static_cast<Node&>(other) = other.GetDocumentElement();  // which goes with the document
  EXPECT_TRUE(other == kNull);
  other = document;
  EXPECT_EQ(W::Utf8(other.GetDocumentElement().GetName()), "r");
}

// The default constructors are open to derived classes alone, but for the section's.
template <class Base>
struct Unset : Base {
  Unset() = default;
};

TEST(NarrowTwin, ADefaultConstructedHandleIsNull) {
  const std::string expected = "8 Node was not initialized @ CQuenXMLElementImpl2w::GetAttribute()";
  const Unset<CQuenXMLElement2> element;
  const Unset<CQuenXMLElement2> copy(element);
  EXPECT_TRUE(copy == kNull);
  EXPECT_EQ(FailureAt<NarrowTypes>([&] { copy.GetAttribute("x"); }), expected);
  EXPECT_TRUE(Unset<CQuenXMLAttr2>().GetOwnerElement() == kNull);
  EXPECT_TRUE(Unset<CQuenXMLComment2>() == Unset<CQuenXMLPI2>());
  EXPECT_TRUE(Unset<CQuenXMLNode2>() == kNull);
  const CQuenXMLCDATA2 section;
  CQuenXMLCDATA2 another(section);
  EXPECT_EQ(TwinClass(another), typeid(CQuenXMLCDATA2w));
  another = section;
  EXPECT_EQ(Failure<NarrowTypes>([&] { another.GetValue(); }), "8 Node was not initialized");
}

TEST(NarrowIterator, EachDereferenceMakesAHandle) {
  CQuenXMLDocument2 document = Parsed("<r x='1' y='2'><a/><b/></r>");
  CQuenXMLElement2 root = document.GetDocumentElement();
  CQuenXMLElement2::element_iterator at = root.begin();
  const CQuenXMLElement2 first = *at;
  const CQuenXMLElement2* const before = &*at;
  EXPECT_NE(before, &*at);
  EXPECT_EQ(at->GetName(), "a");
  CQuenXMLElement2::element_iterator copy = at;
  EXPECT_EQ((++at)->GetName(), "b");
  EXPECT_EQ(copy->GetName(), "a");
  EXPECT_TRUE(copy != at);
  copy = at;
  EXPECT_EQ(copy->GetName(), "b");
  copy = *&copy;
  EXPECT_TRUE(copy == at);
  EXPECT_EQ(first.GetName(), "a");
  CQuenXMLElement2::attr_iterator attr = root.attr_begin();
  const CQuenXMLAttr2* const beforeAttr = &*attr;
  EXPECT_NE(beforeAttr, &*attr);
  CQuenXMLElement2::attr_iterator attrCopy = attr++;
  EXPECT_EQ(attrCopy->GetName() + attr->GetName(), "xy");
  attr = attrCopy;
  attr = *&attr;
  EXPECT_EQ(attr->GetName(), "x");
}

TEST(NarrowFailure, CrossesWithCodeContextAndMessage) {
  const CQuenXMLData2 tree("<r/>");
  try {
    string value;
    tree.GetData(value, "/\u00e9");
    FAIL();
  } catch (const CQuenXMLException2& failure) {
    EXPECT_EQ(failure.GetErrorCode(), 1013U);
    EXPECT_EQ(failure.GetErrorContext(), "CQuenXMLDataImpl2w::GetData");
    EXPECT_EQ(failure.GetErrorMessage(), "Path not found");
    EXPECT_EQ(failure.GetErrorDetail(), "");
  }
}

struct DerivedFailure : CQuenXMLException2w {
  using CQuenXMLException2w::CQuenXMLException2w;
};

TEST(NarrowFailure, OneClauseAndNoOther) {
  using internal::Narrow;
  const auto thrown = [](const auto& failure) {
    return Arrives([&] { Narrow([&] { throw failure; }); });
  };
  EXPECT_EQ(thrown(CQuenXMLException2w(u"c", 7, u"m\u00e9", u"d")), "narrow 7 m\u00e9");
  EXPECT_EQ(thrown(DerivedFailure(u"c", 7, u"m")), "narrow 7 m");
  EXPECT_EQ(thrown(CQuenXMLException2w(u"c", 7, u"\xD800")).substr(0, 5), "wide ");
  EXPECT_EQ(thrown(std::runtime_error("x")), "another");
  CQuenXMLData2 tree("<a/>");
  EXPECT_THROW(tree.CreateNodes("/a/b[c=]"), std::out_of_range);
}

// A tree that a wide class gave what UTF-8 cannot carry.
TEST(NarrowFailure, ALoneSurrogateIsRefusedOnTheWayOut) {
  CQuenXMLDocument2 document = Parsed("<r>kept</r>");
  CQuenXMLElement2w wide(*document.GetDocumentElement().GetImpl());
  CQuenXMLData2 tree("<r/>");
  tree.GetCQuenXMLData2Impl()->SetData(u"a\xD800z", u"/r");
  tree.GetCQuenXMLData2Impl()->AddProcessingInstruction(u"t", u"a\xDC00", u"/r");
  wide.SetValue(u"\xDC00");
  wide.SetAttribute(u"x", u"\xD800");
  string value = "before";
  string target = "before";
  const std::string expected = "CQuenXMLImplUtils2w::TransCodeToUTF8()";
  const auto refused = [&](auto&& operation) {
    const std::string failure = FailureAt<NarrowTypes>(operation);
    EXPECT_EQ(failure.substr(failure.find(" @ ") + 3), expected) << failure;
  };
  refused([&] { document.GetDocumentElement().GetValue(); });
  refused([&] { document.GetDocumentElement().GetAttribute("x"); });
  refused([&] { tree.GetData(value, "/r"); });
  refused([&] { tree.GetProcessingInstruction(target, value, "/r"); });
  EXPECT_EQ(value + target, "beforebefore");
}

// An operation that leaves an out argument alone leaves the narrow one alone, whatever it holds.
TEST(NarrowOutArgument, StaysWhenTheOperationLeavesIt) {
  CQuenXMLData2 empty;
  CQuenXMLData2 tree("<r/>");
  const string before("\xFF not text\0", 11);
  string value = before;
  empty.GetData(value, "");
  empty.GetAttr("x", value, "");
  empty.GetSubset(value, "/");
  empty.GetFormattedSubset(value, "/");
  tree.GetComment(value, "/r");
  tree.GetCDATA(value, "/r");
  tree.GetProcessingInstruction(value, value, "/r");
  EXPECT_EQ(value, before);
  tree.AddProcessingInstruction("target", "data", "/r");
  tree.GetProcessingInstruction(value, value, "/r");
  EXPECT_EQ(value, "data");
  tree.GetAttr("x", value, "/r");
  EXPECT_EQ(value, "");
  value = "/r";
  tree.SetData("text", "");
  tree.GetData(value, value);
  EXPECT_EQ(value, "text");
}

TEST(NarrowData, DocumentsAreIndependentAndHaveDefaultSettings) {
  CQuenXMLData2 tree("<r/>");
  CQuenXMLDocument2 document = tree.GetDocument();
  document.GetDocumentElement().SetValue("changed");
  EXPECT_EQ(Whole<NarrowTypes>(tree), "<r/>");
  document.SetDoNamespaceOnParse(0);
  EXPECT_EQ(tree.SetDocument(document), 1);
  document.GetDocumentElement().SetValue("changed again");
  EXPECT_EQ(Whole<NarrowTypes>(tree), "<r>changed</r>");
  EXPECT_EQ(tree.GetCQuenXMLData2Impl()->GetDocument().GetDoNamespaceOnParse(), 1);
  EXPECT_EQ(tree.GetPath(), "/r");
}

// The wide class goes through text here, and fails.
TEST(NarrowData, EmptyTreesAndDoctypesGiveADocument) {
  EXPECT_TRUE(CQuenXMLData2().GetDocument().GetDocumentElement() == kNull);
  const CQuenXMLData2 tree("<!DOCTYPE r><r/>");
  EXPECT_EQ(tree.GetDocument().GetDocumentElement().GetName(), "r");
}

TEST(NarrowData, AFailedAssignmentFromTextLeavesAnEmptyTree) {
  CQuenXMLData2 tree("<r/>");
  EXPECT_EQ(Failure<NarrowTypes>([&] { tree = "<"; }).substr(0, 5), "1009 ");
  EXPECT_EQ(tree.HasRoot(), 0);
  tree.AddRootNode("again");
  EXPECT_EQ(tree.GetPath(), "/again");
  tree = *&tree;
  EXPECT_EQ(tree.GetPath(), "/again");
}

struct NameCase {
  const char* what;
  const char* name;
  std::int32_t valid;
};
// By the Name production of XML 1.0, fourth edition, which the engine follows.
const NameCase kNames[] = {
    {"plain", "order", 1},
    {"empty", "", 0},
    {"a digit first", "2nd", 0},
    {"a digit later", "n2", 1},
    {"prefixed", "p:order", 1},
    {"a colon first", ":order", 1},
    {"a hyphen first", "-a", 0},
    {"hyphen and dot later", "a-b.c", 1},
    {"a blank inside", "a b", 0},
    {"Latin", "stra\u00dfe", 1},
    {"ideograph", "\u4e00", 1},
    {"a combining mark first", "\u0301a", 0},
    {"the multiplication sign", "a\u00d7", 0},
    {"above the basic plane", "a\U00010000", 0},
    {"reserved but a Name", "xmlish", 1},
};

template <class Width>
class NameValidity : public testing::Test {};
TYPED_TEST_SUITE(NameValidity, Widths, WidthNames);
TYPED_TEST(NameValidity, Rows) {
  for (const NameCase& row : kNames)
    EXPECT_EQ(TypeParam::Utils::IsValidElementName(TypeParam::Text(row.name)), row.valid)
        << row.what;
  EXPECT_EQ(TypeParam::Utils::IsValidElementName(TypeParam::Text(std::string("a\0 b", 4))), 1);
  EXPECT_EQ(TypeParam::Utils::IsValidElementName(TypeParam::Text(std::string("\0a", 2))), 0);
}

}  // namespace
}  // namespace quen::test

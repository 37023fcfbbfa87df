// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "tests/support/literals.h"

namespace quen::test {
namespace {

using Document = CQuenXMLDocument2w;
using Element = CQuenXMLElement2w;
using Iterator = Element::element_iterator;
using AttrIterator = Element::attr_iterator;

// The iterators over the child elements of a root, and over its attributes, under one name.
struct Children {
  using It = Iterator;
  static constexpr const char* kXml = "<r>t<c0/><!--x--><c1/><c2><n/></c2><c3/>t</r>";
  static constexpr const char* kNone = "<r>only text</r>";
  static constexpr const char* kClass = "element_iteratorImpl2w";
  static constexpr const char* kRangeContext =
      "element_iteratorImpl2w::erase(QuenUnsignedInt4 iFirst, int iLast)";
  static It Begin(Element& e) { return e.begin(); }
  static It End(Element& e) { return e.end(); }
  static It Find(Element& e, const char16_t* name) { return e.find(name); }
  static It Erase(Element& e, It at) { return e.erase(at); }
  static It Erase(Element& e, It first, It last) { return e.erase(first, last); }
};
struct Attributes {
  using It = AttrIterator;
  static constexpr const char* kXml = "<r c0='0' c1='1' c2='2' c3='3'/>";
  static constexpr const char* kNone = "<r><n a='1'/></r>";
  static constexpr const char* kClass = "attr_iteratorImpl2w";
  static constexpr const char* kRangeContext =
      "attr_iteratorImpl2w::erase(attr_iteratorImpl2w first, attr_iteratorImpl2w last)";
  static It Begin(Element& e) { return e.attr_begin(); }
  static It End(Element& e) { return e.attr_end(); }
  static It Find(Element& e, const char16_t* name) { return e.attr_find(name); }
  static It Erase(Element& e, It at) { return e.attr_erase(at); }
  static It Erase(Element& e, It first, It last) { return e.attr_erase(first, last); }
};

template <class List>
class Iterators : public testing::Test {
 protected:
  Element Root(const char* inXml = List::kXml) {
    document_.LoadXML(Wide(inXml));
    return document_.GetDocumentElement();
  }
  // The name at the position, or the index of the failure.
  static std::string At(typename List::It& ioIterator) {
    std::string name;
    const std::string failure = FailureAt<WideTypes>([&] { name = Utf8(ioIterator->GetName()); });
    if (failure.empty()) return name;
    const std::string begin = "1 Index is out of range, current index = ";
    EXPECT_EQ(failure.substr(0, begin.size()), begin);
    const std::string end = std::string("\n @ ") + List::kClass + "::operator*()";
    EXPECT_EQ(failure.substr(failure.find('\n')), end);
    return failure.substr(begin.size(), failure.find('\n') - begin.size());
  }
  static std::string Names(Element& inRoot) {
    std::string names;
    for (auto at = List::Begin(inRoot), end = List::End(inRoot); at != end; ++at)
      names += Utf8(at->GetName()) + " ";
    return names;
  }

  Document document_;
};
using Lists = testing::Types<Children, Attributes>;
TYPED_TEST_SUITE(Iterators, Lists, );

TYPED_TEST(Iterators, EveryStepAndClamp) {
  using It = typename TypeParam::It;
  Element root = this->Root();
  It at = TypeParam::Begin(root);
  EXPECT_EQ(this->At(at), "c0");
  EXPECT_EQ(this->At(++at), "c1");
  It before = at++;
  EXPECT_EQ(this->At(before), "c1");
  EXPECT_EQ(this->At(at), "c2");
  before = at--;
  EXPECT_EQ(this->At(before), "c2");
  EXPECT_EQ(this->At(at), "c1");
  EXPECT_EQ(this->At(--at), "c0");
  EXPECT_EQ(this->At(--at), "-1");
  EXPECT_EQ(this->At(--at), "-1");
  EXPECT_EQ(this->At(++at), "c0");
  EXPECT_EQ(this->At(at += 3), "c3");
  EXPECT_EQ(this->At(at += 0), "c3");
  EXPECT_EQ(this->At(++at), "4");
  EXPECT_EQ(this->At(++at), "4");
  EXPECT_EQ(this->At(at += 4294967295u), "4");
  EXPECT_EQ(this->At(at -= 1), "c3");
  EXPECT_EQ(this->At(at -= 4294967295u), "-1");
  EXPECT_EQ(this->At(at += 4294967295u), "4");
  It end = TypeParam::End(root);
  EXPECT_EQ(this->At(end), "4");
  EXPECT_EQ(this->At(--end), "c3");
  // [] moves on from where it stands.
  at = TypeParam::Begin(root);
  EXPECT_EQ(this->At(at[1]), "c1");
  EXPECT_EQ(this->At(at[1]), "c2");
  EXPECT_EQ(this->At(at[0]), "c2");
}

TYPED_TEST(Iterators, Compare) {
  using It = typename TypeParam::It;
  Element root = this->Root();
  It at = TypeParam::Begin(root);
  EXPECT_TRUE(at == TypeParam::Begin(root) && !(at != TypeParam::Begin(root)));
  EXPECT_TRUE(at != TypeParam::End(root));
  at += 4;
  EXPECT_TRUE(at == TypeParam::End(root));
  Document other;
  other.LoadXML(Wide(TypeParam::kXml));
  Element otherRoot = other.GetDocumentElement();
  EXPECT_TRUE(TypeParam::Begin(root) != TypeParam::Begin(otherRoot));
  at = TypeParam::Begin(otherRoot);
  EXPECT_TRUE(at == TypeParam::Begin(otherRoot));
  Element none = this->Root(TypeParam::kNone);
  EXPECT_TRUE(TypeParam::Begin(none) == TypeParam::End(none));
  It empty = TypeParam::Begin(none);
  EXPECT_EQ(this->At(empty), "0");
  EXPECT_EQ(this->At(++empty), "0");
  EXPECT_EQ(this->At(--empty), "-1");
  EXPECT_EQ(this->At(++empty), "0");
}

TYPED_TEST(Iterators, OneWithoutAListFailsCleanly) {
  using It = typename TypeParam::It;
  Element root = this->Root();
  It none;
  It copy(none);
  EXPECT_TRUE(none == copy && none != TypeParam::Begin(root) && TypeParam::Begin(root) != none);
  const std::function<void()> kCalls[] = {
      [&] { ++none; },
      [&] { --none; },
      [&] { none++; },
      [&] { none--; },
      [&] { none += 1; },
      [&] { none -= 1; },
      [&] { none[1]; },
      [&] { *none; },
      [&] { none->GetName(); },
      [&] { TypeParam::Erase(root, none); },
      [&] { TypeParam::Erase(root, none, none); },
  };
  for (const auto& call : kCalls) {
    EXPECT_EQ(FailureAt<WideTypes>(call),
              "1000 input parent node is NULL @ element_iteratorImpl2w::element_iteratorImpl2w");
  }
  none = TypeParam::Begin(root);
  EXPECT_EQ(this->At(none), "c0");
  none = copy;
  EXPECT_TRUE(none == copy);
}

TYPED_TEST(Iterators, FindComparesTheQualifiedName) {
  Element root = this->Root();
  auto found = TypeParam::Find(root, u"c2");
  EXPECT_EQ(this->At(found), "c2");
  EXPECT_EQ(this->At(++found), "c3");
  EXPECT_TRUE(TypeParam::Find(root, u"c") == TypeParam::End(root));
  Element prefixed =
      this->Root("<r xmlns:p='u' p:a='1' a='2'><p:a n='1'/><a n='2'/><a n='3'/></r>");
  auto plain = TypeParam::Find(prefixed, u"a");
  auto qualified = TypeParam::Find(prefixed, u"p:a");
  EXPECT_EQ(this->At(plain), "a");
  EXPECT_EQ(this->At(qualified), "p:a");
  EXPECT_EQ(prefixed.find(u"a")->GetAttribute(u"n"), u"2");
}

TYPED_TEST(Iterators, EraseOne) {
  const struct {
    int index;
    const char* outcome;  // what is left, and where the result stands
  } kRows[] = {
      {0, "c1 c2 c3 : c1"},
      {1, "c0 c2 c3 : c2"},
      {3, "c0 c1 c2 : 3"},
      {4, "1 iterator is out of range"},
      {-1, "1 iterator is out of range"},
  };
  for (const auto& row : kRows) {
    Element root = this->Root();
    auto at = TypeParam::Begin(root);
    if (row.index < 0)
      --at;
    else
      at += static_cast<std::uint32_t>(row.index);
    std::string outcome;
    const std::string failure = FailureAt<WideTypes>([&] {
      auto next = TypeParam::Erase(root, at);
      outcome = this->Names(root) + ": " + this->At(next);
      // The list has one less; the last step leads to its new end.
      EXPECT_EQ(next == TypeParam::End(root), row.index == 3);
    });
    EXPECT_EQ(failure.empty() ? outcome : failure,
              failure.empty() ? row.outcome
                              : row.outcome + std::string(" @ ") + TypeParam::kClass + "::erase()");
  }
}

TYPED_TEST(Iterators, EraseARange) {
  const struct {
    int first;
    int last;  // -1 is before the first
    const char* left;
  } kRows[] = {
      {0, 4, ""},
      {1, 3, "c0 c3 "},
      {2, 2, "c0 c1 c2 c3 "},
      {3, 1, "c0 c1 "},
      {1, -1, "c2 c3 "},
      {3, 4, "c0 c1 c2 "},
      {3, -1, ""},
      {4, 4, "out of range"},
      {4, 0, "out of range"},
      {-1, 2, "out of range"},
  };
  for (const auto& row : kRows) {
    Element root = this->Root();
    const auto position = [&](int index) {
      auto at = TypeParam::Begin(root);
      index < 0 ? at -= 1 : at += static_cast<std::uint32_t>(index);
      return at;
    };
    const std::string failure = FailureAt<WideTypes>(
        [&] { TypeParam::Erase(root, position(row.first), position(row.last)); });
    if (std::string(row.left) == "out of range") {
      EXPECT_EQ(failure,
                std::string("1 starting point is out of range. @ ") + TypeParam::kRangeContext);
      EXPECT_EQ(this->Names(root), "c0 c1 c2 c3 ");
    } else {
      EXPECT_EQ(failure, "");
      EXPECT_EQ(this->Names(root), row.left) << row.first << " " << row.last;
    }
  }
  Element none = this->Root(TypeParam::kNone);
  EXPECT_EQ(FailureAt<WideTypes>(
                [&] { TypeParam::Erase(none, TypeParam::Begin(none), TypeParam::End(none)); }),
            std::string("1 starting point is out of range. @ ") + TypeParam::kRangeContext);
}

// From here on the two lists differ.

using ElementList = Iterators<Children>;
using AttributeList = Iterators<Attributes>;

TEST_F(ElementList, RangeFor) {
  Element root = Root();
  std::string names;
  for (Element& child : root) names += Utf8(child.GetName()) + " ";
  EXPECT_EQ(names, "c0 c1 c2 c3 ");
  EXPECT_TRUE(!root.empty() && root.find(u"c0")->empty());
  Element none = Root(Children::kNone);
  EXPECT_TRUE(none.empty());
  for (Element& child : none) ADD_FAILURE() << Utf8(child.GetName());
}

TEST_F(ElementList, ErasingKeepsOtherNodes) {
  Element root = Root();
  const Element kept = *root.find(u"c2");
  Iterator result = root.erase(root.begin(), root.end());
  EXPECT_TRUE(result == root.end());
  EXPECT_EQ(Utf8(root.GetSubset()), "<r>t<!--x-->t</r>");
  EXPECT_EQ(Utf8(kept.GetSubset()), "<c2><n/></c2>");
  EXPECT_EQ(FailureAt<WideTypes>([&] { root.erase(root.end()); }),
            "1 child element list is empty @ element_iteratorImpl2w::erase()");
}

TEST_F(ElementList, TheRangeIsOnTheElementItselfTheRestOnTheIterators) {
  Element root = Root();
  Element inner = *root.find(u"c2");
  // Only the indexes of a range count; a single position brings its element along.
  inner.erase(root.begin(), root.end());
  EXPECT_EQ(Utf8(root.GetSubset()), "<r>t<c0/><!--x--><c1/><c2/><c3/>t</r>");
  inner.erase(root.begin());
  inner.insert(root.end(), u"new");
  EXPECT_EQ(Utf8(root.GetSubset()), "<r>t<!--x--><c1/><c2/><c3/>t<new/></r>");
}

TEST_F(ElementList, TheReferenceFollowsTheLatestDereference) {
  Element root = Root();
  Iterator at = root.begin();
  Element& element = *at;
  const Element kept = *at;
  ++at;
  EXPECT_EQ(element.GetName(), u"c0");
  *at;
  EXPECT_EQ(element.GetName(), u"c1");
  EXPECT_EQ(kept.GetName(), u"c0");
}

TEST_F(ElementList, Insert) {
  const struct {
    const char* what;
    int steps;
    const char* outcome;  // the children, and what follows the result
  } kRows[] = {
      {"in front", 0, "n c0 c1 c2 c3 : n c0"},
      {"in the middle", 2, "c0 c1 n c2 c3 : n c2"},
      {"at the end", 4, "c0 c1 c2 c3 n : n 5"},
      {"before the first counts as the end", -1, "c0 c1 c2 c3 n : n 5"},
  };
  for (const auto& row : kRows) {
    for (const bool element : {false, true}) {
      Element root = Root();
      Iterator at = root.begin();
      row.steps < 0 ? at -= 1 : at += static_cast<std::uint32_t>(row.steps);
      Iterator result =
          element ? root.insert(at, document_.CreateElement(u"n"), false) : root.insert(at, u"n");
      std::string outcome = Names(root) + ": " + At(result);
      outcome += " " + At(++result);
      EXPECT_EQ(outcome, row.outcome) << row.what;
    }
  }
  Element root = Root(Children::kNone);
  Iterator only = root.insert(root.end(), u"n");
  EXPECT_EQ(At(only), "n");
  EXPECT_EQ(At(++only), "1");
}

TEST_F(ElementList, InsertAndAddBringElementsOfTheirOwnAndOfOthers) {
  Document other;
  other.LoadXML(u"<o><x y='1'><z/></x></o>");
  Element foreign(other.SelectSingleNode(u"/o/x"));
  Element root = Root();
  Element copy = root.AddChildNode(foreign, false);
  EXPECT_TRUE(copy != foreign);
  EXPECT_EQ(Utf8(copy.GetSubset()), "<x y=\"1\"><z/></x>");
  Element moved = root.AddChildNode(*root.find(u"c0"), true);
  EXPECT_TRUE(moved == *root.find(u"c0"));
  root.insert(root.begin(), *root.find(u"c3"), true);
  EXPECT_EQ(root.AddChildNode(u"last").GetName(), u"last");
  EXPECT_EQ(Utf8(root.GetSubset()),
            "<r>t<!--x--><c3/><c1/><c2><n/></c2>t<x y=\"1\"><z/></x><c0/><last/></r>");
  EXPECT_EQ(Utf8(other.GetSubset()), "<o><x y=\"1\"><z/></x></o>");
}

TEST_F(ElementList, WhatCannotGoInIsRefused) {
  Element root = Root();
  const Element null = Document().GetDocumentElement();
  const struct {
    const char* what;
    std::function<void()> call;
    const char* code;
  } kRows[] = {
      {"no name", [&] { root.AddChildNode(u"1"); }, "5 "},
      {"an empty name", [&] { root.insert(root.begin(), u""); }, "5 "},
      {"itself", [&] { root.AddChildNode(root, true); }, "3 "},
      {"an ancestor", [&] { root.find(u"c2")->AddChildNode(root, true); }, "3 "},
      {"an ancestor in front",
       [&] {
         Element c2 = *root.find(u"c2");
         c2.insert(c2.begin(), root, true);
       },
       "3 "},
      {"a null handle", [&] { root.AddChildNode(null, true); }, "8 "},
      {"a null handle in front", [&] { root.insert(root.begin(), null, true); }, "8 "},
  };
  for (const auto& row : kRows) {
    const std::string failure = FailureAt<WideTypes>(row.call);
    EXPECT_EQ(failure.substr(0, 2), row.code) << row.what;
    EXPECT_EQ(failure.substr(failure.rfind('@')), "@ element_iteratorImpl2w::insert()");
    EXPECT_EQ(Utf8(root.GetSubset()), Children::kXml) << row.what;
  }
}

TEST_F(ElementList, InsertingAChildBeforeItselfLeavesItThere) {
  Element root = Root();
  root.insert(root.find(u"c1"), *root.find(u"c1"), true);
  EXPECT_EQ(Names(root), "c0 c1 c2 c3 ");
}

// A stale iterator promises nothing, but nothing of it may crash.
TEST_F(ElementList, StaleIteratorsStaySafe) {
  for (int step = 0; step < 3; ++step) {
    Element root = Root();
    Iterator stale = root.begin();
    stale += static_cast<std::uint32_t>(step);
    root.erase(root.begin(), root.end());
    EXPECT_TRUE(stale != root.end());
    const std::function<void()> kCalls[] = {
        [&] { stale->GetName(); },
        [&] { ++stale; },
        [&] { stale->GetName(); },
        [&] { root.erase(stale); },
        [&] { stale += 10; },
        [&] { stale -= 3; },
        [&] { stale->GetName(); },
        [&] { root.insert(stale, u"n"); },
        [&] { root.erase(stale, root.end()); },
    };
    for (const auto& call : kCalls) FailureAt<WideTypes>(call);
    stale = root.end();
    EXPECT_TRUE(stale == root.end());
  }
}

TEST_F(ElementList, ParentAndSiblingIterators) {
  Element root = Root("<r>t<c0/><c1><!--x--><g0/><g1/></c1><c2/></r>");
  Element g1(document_.SelectSingleNode(u"//g1"));
  Iterator parent = g1.GetParentIterator();
  EXPECT_TRUE(*parent == g1.GetParent());
  EXPECT_EQ(At(++parent), "c2");
  EXPECT_TRUE(++parent == root.end());
  Iterator sibling = g1.GetSiblingIterator();
  EXPECT_TRUE(*sibling == g1);
  EXPECT_EQ(At(--sibling), "g0");
  EXPECT_TRUE(Element(g1.GetParent()).HasParent() && !root.HasParent());
  Element c1(g1.GetParent());
  Iterator c1Sibling = c1.GetSiblingIterator();
  EXPECT_EQ(At(c1Sibling), "c1");
  Element loose = document_.CreateElement(u"loose");
  const struct {
    const char* what;
    std::function<void()> call;
    const char* failure;
  } kRows[] = {
      {"the root's parent", [&] { root.GetParentIterator(); },
       "1 Current node is at root, can not get parent iterator. @ "
       "CQuenXMLElementImpl2w::GetParentIterator()"},
      {"the root", [&] { root.GetSiblingIterator(); },
       "1 Current node is at root, can not get sibling iterator. @ "
       "CQuenXMLElementImpl2w::GetSiblingIterator()"},
      {"a child of the root", [&] { c1.GetParentIterator(); },
       "1 The parent node is root, can not get parent iterator. @ "
       "CQuenXMLElementImpl2w::GetParentIterator()"},
      {"outside of the tree", [&] { loose.GetSiblingIterator(); },
       "1 Current node is at root, can not get sibling iterator. @ "
       "CQuenXMLElementImpl2w::GetSiblingIterator()"},
      {"its parent", [&] { loose.GetParentIterator(); },
       "8 Node was not initialized @ CQuenXMLNodeImpl2w::GetNodeType()"},
  };
  for (const auto& row : kRows) EXPECT_EQ(FailureAt<WideTypes>(row.call), row.failure) << row.what;
}

TEST_F(AttributeList, IsASnapshot) {
  Element root = Root();
  AttrIterator at = root.attr_begin();
  AttrIterator end = root.attr_end();
  root.SetAttribute(u"c4", u"4");
  root.RemoveAttribute(u"c1");
  root.RemoveAttribute(u"c2");
  ++at;
  EXPECT_EQ(at->GetValue(), u"1");
  EXPECT_TRUE(at->GetOwnerElement() == kNull);
  EXPECT_TRUE(end != root.attr_end());
  at += 2;
  at->SetValue(u"new");
  EXPECT_EQ(Utf8(root.GetSubset()), "<r c0=\"0\" c3=\"new\" c4=\"4\"/>");
  EXPECT_TRUE(!root.attr_empty());
}

TEST_F(AttributeList, ErasingOnAnElementWithoutAttributesDoesNothing) {
  Element none = Root(Attributes::kNone);
  EXPECT_TRUE(none.attr_empty());
  EXPECT_TRUE(none.attr_erase(none.attr_end()) == none.attr_begin());
}

TEST_F(AttributeList, TheResultOfARangeStillListsWhatWasErased) {
  Element root = Root();
  AttrIterator from = root.attr_begin();
  AttrIterator to = root.attr_begin();
  AttrIterator result = root.attr_erase(++from, to += 3);
  EXPECT_EQ(At(result), "c3");
  EXPECT_EQ(At(--result), "c2");
  result += 9;
  EXPECT_EQ(At(result), "4");
  EXPECT_TRUE(result != root.attr_end());
}

// What is no longer in the element has no owner to leave.
TEST_F(AttributeList, ErasingWhatIsGoneFails) {
  Element root = Root();
  AttrIterator at = root.attr_find(u"c1");
  root.RemoveAttribute(u"c1");
  root.SetAttribute(u"c1", u"another");
  EXPECT_EQ(FailureAt<WideTypes>([&] { root.attr_erase(at); }),
            "8 Node was not initialized @ CQuenXMLElementImpl2w::RemoveAttribute()");
  EXPECT_EQ(root.GetAttribute(u"c1"), u"another");
}

// What is made later is made of other memory.
TEST_F(AttributeList, WhatWasRemovedStaysWhatItIs) {
  Element root = Root(Attributes::kNone);
  Element other = document_.CreateElement(u"other");
  root.AppendChild(other);
  root.SetAttribute(u"x", u"1");
  root.SetAttribute(u"y", u"2");
  AttrIterator at = root.attr_begin();
  const CQuenXMLNode2w text = document_.SelectSingleNode(u"/r/@y").GetFirstChild();
  root.RemoveAttribute(u"x");
  other.SetAttribute(u"secret", u"3");
  EXPECT_EQ(Utf8(at->GetName() + at->GetValue()), "x1");
  EXPECT_EQ(FailureAt<WideTypes>([&] { root.attr_erase(at); }),
            "8 Node was not initialized @ CQuenXMLElementImpl2w::RemoveAttribute()");
  // A value of several texts.
  CQuenXMLNode2w y = document_.SelectSingleNode(u"/r/@y");
  y.AppendChild(document_.SelectSingleNode(u"/r/other/@secret").GetFirstChild().Clone(true));
  EXPECT_EQ(Utf8(y.GetValue()), "23");
  root.SetAttribute(u"y", u"4");
  other.SetAttribute(u"later", u"5");
  EXPECT_EQ(Utf8(text.GetValue()), "2");
  EXPECT_TRUE(text.GetParent() == kNull);
  EXPECT_EQ(Utf8(root.GetSubset()), "<r y=\"4\"><n a=\"1\"/><other later=\"5\" secret=\"3\"/></r>");
}

}  // namespace
}  // namespace quen::test

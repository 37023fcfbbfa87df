// SPDX-License-Identifier: Apache-2.0
//
// Classes that derive from the tree: what they replace is what all operations built on it use.
#include "tests/data/rows.h"

namespace quen::test {
namespace {

// Replaces the text forms.
class Marked : public CQuenXMLDataImpl2w {
 public:
  using CQuenXMLDataImpl2w::AddData;
  using CQuenXMLDataImpl2w::AppendSubset;
  using CQuenXMLDataImpl2w::CQuenXMLDataImpl2w;
  using CQuenXMLDataImpl2w::GetAttr;
  using CQuenXMLDataImpl2w::GetData;
  using CQuenXMLDataImpl2w::GetSubset;
  using CQuenXMLDataImpl2w::SetAttr;
  using CQuenXMLDataImpl2w::SetData;

  void AddData(const wstring& inValue, const wstring&) override {
    log_ += u"AddData " + inValue + u";";
  }
  void SetData(const wstring& inValue, const wstring&) override {
    log_ += u"SetData " + inValue + u";";
  }
  void SetAttr(const wstring& inName, const wstring& inValue, const wstring&) override {
    log_ += u"SetAttr " + inName + u" " + inValue + u";";
  }
  void GetData(wstring& outValue, const wstring&) const override { outValue = value_; }
  void GetAttr(const wstring&, wstring& outValue, const wstring&) const override {
    outValue = value_;
  }
  void AppendSubset(const wstring& inXML, const wstring& inPath) override {
    log_ += u"AppendSubset " + inXML + u" " + inPath + u";";
  }

  wstring log_;
  wstring value_;
};

TEST(Derived, TextFormsCarryTheOthers) {
  Marked tree;
  tree.AddData(1, u"/a");
  tree.AddData(2u, u"/a");
  tree.SetData(-3, u"/a");
  tree.SetAttr(u"n", 4u, u"/a");
  tree.AddBinaryData(u"a", u"/a");
  tree.SetBinaryData(reinterpret_cast<const unsigned char*>("b"), 1, u"/a");
  tree.AppendUTF8Subset("<u/>");
  tree.AppendEncryptedSubset("", u"key", u"/p");
  CQuenXMLDataImpl2w(u"<s/>").GetSubset(tree, u"/s");
  EXPECT_EQ(Utf8(tree.log_),
            "AddData 1;AddData 2;SetData -3;SetAttr n 4;AddData 0x61;SetData 0x62;"
            "AppendSubset <u/> ;AppendSubset  /p;AppendSubset <s/> ;");
  tree.log_.clear();
  tree.AddData(0.5, u"/a");
  tree.AddData(0.5f, u"/a");
  tree.SetData(0.5, u"/a");
  tree.SetData(0.5f, u"/a");
  tree.SetAttr(u"n", 0.5, u"/a");
  EXPECT_EQ(tree.log_.size(), 2 * 61u + 2 * 61u + 63u);
  tree.value_ = u"7";
  double number = 0;
  tree.GetData(number, u"/nowhere");
  EXPECT_EQ(number, 7);
  std::int32_t integer = 0;
  tree.GetAttr(u"n", integer, u"/nowhere");
  EXPECT_EQ(integer, 7);
  tree.value_ = u"0x4142";
  wstring text;
  tree.GetBinaryData(text, u"/nowhere");
  EXPECT_EQ(text, u"AB");
  unsigned char bytes[2];
  std::uint32_t length = 2;
  tree.GetBinaryData(bytes, length, u"/nowhere");
  EXPECT_EQ(bytes[1], 'B');
  tree.value_ = wstring(
      u"0x41\0"
      "42",
      7);
  tree.GetBinaryData(text, u"/nowhere");
  EXPECT_EQ(text, u"A");
}

// Counts, and goes on as the library does.
class Traced : public CQuenXMLDataImpl2w {
 public:
  using CQuenXMLDataImpl2w::CQuenXMLDataImpl2w;

  std::int32_t CursorToRoot() override {
    log_ += "CursorToRoot;";
    return hasCursor_ ? CQuenXMLDataImpl2w::CursorToRoot() : 0;
  }
  void AddRootNode(const wstring& inName) override {
    log_ += "AddRootNode " + Utf8(inName) + ";";
    CQuenXMLDataImpl2w::AddRootNode(prefix_ + inName);
  }
  std::int32_t ParsePath(wstring& inPath, QuenXMLData2_NodePosList& outList) override {
    log_ += "ParsePath;";
    return parses_ ? CQuenXMLDataImpl2w::ParsePath(inPath, outList) : 0;
  }
  void HandleAttributes(QuenXMLData2_Node* outNode, wstring inSegment) override {
    log_ += "HandleAttributes " + Utf8(inSegment) + ";";
    CQuenXMLDataImpl2w::HandleAttributes(outNode, inSegment);
  }
  std::int32_t RecursePath(CQuenXMLElement2w* ioElement, const QuenXMLData2_NodePosList& inList,
                           std::int32_t inIndex) override {
    log_ += "RecursePath " + Utf8(ioElement->GetName()) + " " + std::to_string(inIndex) + ";";
    return walks_ ? CQuenXMLDataImpl2w::RecursePath(ioElement, inList, inIndex) : 0;
  }
  const wstring GetIndexValue(const xercesc::DOMNode*) const override { return index_; }
  using CQuenXMLDataImpl2w::operator=;

  std::string log_;
  wstring prefix_;
  wstring index_;
  bool hasCursor_ = true;
  bool parses_ = true;
  bool walks_ = true;
};

std::string All(const CQuenXMLDataImpl2w& inTree) {
  std::string text;
  inTree.GetUTF8Subset(text);
  return text;
}

TEST(Derived, CreationGoesThroughItsSeams) {
  Traced tree;
  tree.CreateNodes(u"");
  EXPECT_EQ(tree.log_, "");
  tree.CreateNodes(u"/a/b/c");
  EXPECT_EQ(tree.log_,
            "ParsePath;HandleAttributes a;HandleAttributes b;HandleAttributes c;AddRootNode a;"
            "CursorToRoot;RecursePath a 0;RecursePath b 1;");
  tree.log_.clear();
  tree.CreateNodes(u"/a/b/c");
  EXPECT_EQ(tree.log_.substr(tree.log_.find("Rec")), "RecursePath a 0;RecursePath b 1;");
  tree.index_ = u"9";
  EXPECT_EQ(Utf8(tree.GetPath()), "/a[9]");

  tree.walks_ = false;
  EXPECT_EQ(FailureAt<WideTypes>([&] { tree.CreateNodes(u"d"); }),
            "1013 Invalid Path:  Node not found @ CQuenXMLDataImpl2w::CreateNodes()");
  tree.parses_ = false;
  tree.CreateNodes(u"/z");
  EXPECT_EQ(All(tree), "<a><b><c/></b></a>");

  // The root that the class makes is the root, whatever its name.
  Traced prefixed;
  prefixed.prefix_ = u"x";
  prefixed.CreateNodes(u"/a/b");
  EXPECT_EQ(All(prefixed), "<xa><b/></xa>");
}

TEST(Derived, TheWalkHasItsLimits) {
  Traced tree(u"<a/>");
  CQuenXMLElement2w root = tree.GetDocument().GetDocumentElement();
  QuenXMLData2_NodePosList list;
  EXPECT_EQ(tree.RecursePath(&root, list, 0), 0);
  list.nodes.resize(1);
  list.nodes[0].name = u"b";
  EXPECT_EQ(tree.RecursePath(&root, list, 1), 0);
  EXPECT_EQ(tree.RecursePath(&root, list, -1), 0);
  EXPECT_EQ(All(tree), "<a/>");
  EXPECT_EQ(tree.RecursePath(&root, list, 0), 1);
  EXPECT_EQ(root.GetName(), u"a");  // a new element does not move it
  EXPECT_EQ(tree.RecursePath(&root, list, 0), 1);
  EXPECT_EQ(root.GetName(), u"b");
  // What it makes in another document belongs there.
  CQuenXMLDocument2w other;
  other.LoadXML(u"<other/>");
  CQuenXMLElement2w foreign = other.GetDocumentElement();
  {
    Traced gone(u"<a/>");
    EXPECT_EQ(gone.RecursePath(&foreign, list, 0), 1);
  }
  EXPECT_EQ(Utf8(other.GetDocumentElement().GetFirstChild().GetOwnerDocument().GetSubset()),
            "<other><b/></other>");
}

TEST(Derived, LoadsGoToTheRoot) {
  Traced tree;
  tree.AddRootNode(u"a");
  tree = wstring(u"<b/>");
  tree.SetDocument(tree.GetDocument());
  Traced other;
  other.AppendSubset(tree, u"");
  other.CQuenXMLDataImpl2w::operator=(tree);
  EXPECT_EQ(tree.log_, "AddRootNode a;CursorToRoot;CursorToRoot;CursorToRoot;");
  EXPECT_EQ(other.log_, "CursorToRoot;CursorToRoot;");
}

// Nor may the cursor stay on a tree that is gone.
TEST(Derived, ACursorOfAnOldTreeIsNotKept) {
  const std::function<void(Traced&)> kReplacements[] = {
      [](Traced& t) { t = wstring(u"<new/>"); },
      [](Traced& t) { t.CQuenXMLDataImpl2w::operator=(CQuenXMLDataImpl2w(u"<new/>")); },
      [](Traced& t) { t.SetDocument(CQuenXMLDataImpl2w(u"<new/>").GetDocument()); },
  };
  for (const auto& replace : kReplacements) {
    Traced tree(u"<old><b/></old>");
    tree.hasCursor_ = false;
    replace(tree);
    EXPECT_EQ(All(tree), "<new/>");
    EXPECT_EQ(FailureAt<WideTypes>([&] { tree.GetNodeAtCursor(); }).substr(0, 2), "8 ");
  }
}

// A class may refuse to put the cursor on the root: then there is a root and no cursor.
TEST(Derived, AnAbsentCursorIsNeverTouched) {
  Traced tree;
  tree.hasCursor_ = false;
  tree.AddRootNode(u"a");
  ASSERT_EQ(tree.HasRoot(), 1);
  wstring text = u"kept";
  CQuenXMLDataImpl2w other;
  std::uint32_t count = 0;
  const std::function<void()> kCalls[] = {
      [&] { tree.HasChildren(u""); },
      [&] { tree.HasChildElement(u""); },
      [&] { tree.GetNumChildren(count, u""); },
      [&] { tree.GetSubset(text, u""); },
      [&] { tree.GetFormattedSubset(text, u""); },
      [&] { tree.GetSubset(other, u""); },
      [&] { tree.AppendSubset(u"<b/>", u""); },
      [&] { tree.AppendSubset(CQuenXMLDataImpl2w(u"<b/>"), u""); },
      [&] { tree.RemoveData(u""); },
      [&] { tree.GetNodeAtCursor(); },
      [&] { tree.CursorToParent(); },
      [&] { tree.CreateNodes(u"b"); },
  };
  for (const auto& call : kCalls) FailureAt<WideTypes>(call);
  EXPECT_EQ(All(tree), "<a/>");
  EXPECT_EQ(text, u"kept");
}

TEST(Derived, AssignmentOfTheImplementation) {
  CQuenXMLDataImpl2w tree(u"<a><b/></a>");
  tree.CursorTo(u"b");
  CQuenXMLDataImpl2w empty;
  EXPECT_EQ(FailureAt<WideTypes>([&] { tree = empty; }),
            "1006 Error getting RHS Root Element @ CQuenXMLDataImpl::operator= ()");
  EXPECT_EQ(FailureAt<WideTypes>([&] { tree = wstring(); }).substr(0, 5), "1009 ");
  EXPECT_EQ(FailureAt<WideTypes>([&] { tree = wstring(u"<"); }).substr(0, 5), "1009 ");
  tree = *&tree;
  EXPECT_EQ(tree.GetPath(), u"/a/b");
  EXPECT_EQ(All(tree), "<a><b/></a>");
  tree = wstring(u"<c/>");
  EXPECT_EQ(tree.GetPath(), u"/c");
  // The document itself, with its settings.
  tree.GetDocument().SetDoNamespaceOnParse(0);
  tree.GetDocument().GetDocumentElement().SetValue(u"v");
  EXPECT_EQ(All(tree), "<c>v</c>");
  CQuenXMLDataImpl2w copy(tree);
  EXPECT_EQ(copy.GetDocument().GetDoNamespaceOnParse(), 0);
  EXPECT_EQ(copy.SetDocument(copy.GetDocument()), 1);
  EXPECT_EQ(All(copy), "<c>v</c>");
}

}  // namespace
}  // namespace quen::test

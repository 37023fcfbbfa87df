// SPDX-License-Identifier: Apache-2.0
//
// What every operation does on a tree that never had a root.
#include "tests/data/rows.h"

namespace quen::test {
namespace {

template <class W>
class EmptyTree : public DataTest<W> {};
TYPED_TEST_SUITE(EmptyTree, Widths, WidthNames);

TYPED_TEST(EmptyTree, Reads) {
  using D = typename TypeParam::Data;
  using S = typename TypeParam::String;
  const auto out = [](auto call) { return TestFixture::Out(call); };
  const std::string none = "0";
  this->Run({
      {"HasRoot", "", [](D& t) { return t.HasRoot(); }, none},
      {"PathExists", "", [](D& t) { return t.PathExists("/a"_t) + t.PathExists(""_t); }, none},
      {"HasChildren", "", [](D& t) { return t.HasChildren("/a"_t) + t.HasChildren(""_t); }, none},
      {"HasChildElement", "",
       [](D& t) { return t.HasChildElement("/a"_t) + t.HasChildElement(""_t); }, none},
      {"HasAttr", "", [](D& t) { return t.HasAttr("n"_t, "/a"_t) + t.HasAttr("n"_t, ""_t); }, none},
      {"cursor moves", "",
       [](D& t) {
         return t.CursorTo("/a"_t) + t.CursorTo("."_t) + t.CursorToRoot() + t.CursorToFirstChild() +
                t.CursorToLastChild() + t.CursorToNextSibling() + t.CursorToPreviousSibling() +
                t.CursorToParent() + t.IsCursorInPath(""_t);
       },
       none},
      {"GetPath", "", [](D& t) { return t.GetPath(); }, ""},
      {"GetNodeAtCursor", "", [](D& t) { return t.GetNodeAtCursor(); }, ""},
      {"GetCursor", "", [](D& t) { t.GetCursor(); },
       "1007 cursor is NULL @ CQuenXMLDataImpl2w::GetCursor"},
      {"GetNumChildren", "",
       [](D& t) {
         std::uint32_t count = 7;
         t.GetNumChildren(count, ""_t);
         return count;
       },
       none},
      {"GetNumChildren by path", "",
       [](D& t) {
         std::uint32_t count = 7;
         t.GetNumChildren(count, "/a"_t);
       },
       kNoPathForElement},
      {"GetData", "", [out](D& t) { return out([&](S& s) { t.GetData(s, ""_t); }); }, "kept"},
      {"GetData by path", "",
       [](D& t) {
         S s;
         t.GetData(s, "/a"_t);
       },
       kNoPath + "GetData"},
      {"GetData of a number", "",
       [](D& t) {
         double d;
         t.GetData(d, ""_t);
       },
       "1011 Data conversion error @ CQuenXMLDataImpl::GetData()"},
      {"GetBinaryData", "",
       [](D& t) {
         S s;
         t.GetBinaryData(s, ""_t);
       },
       "1002 Invalid Binary Data @ CQuenXMLDataImpl::GetBinaryData()"},
      {"GetBinaryData by path", "",
       [](D& t) {
         S s;
         t.GetBinaryData(s, "/a"_t);
       },
       kNoPath + "GetData"},
      {"GetAttr", "", [out](D& t) { return out([&](S& s) { t.GetAttr("n"_t, s, ""_t); }); },
       "kept"},
      {"GetAttr of a number", "",
       [](D& t) {
         double d = 1.5;
         t.GetAttr("n"_t, d, ""_t);
         return d;
       },
       "1.5"},
      {"GetAttr by path", "",
       [](D& t) {
         S s;
         t.GetAttr("n"_t, s, "/a"_t);
       },
       kNoPath + "GetAttr"},
      {"GetComment", "", [out](D& t) { return out([&](S& s) { t.GetComment(s, ""_t); }); }, "kept"},
      {"GetComment by path", "",
       [](D& t) {
         S s;
         t.GetComment(s, "/a"_t);
       },
       kNoPathForElement},
      {"GetCDATA", "", [out](D& t) { return out([&](S& s) { t.GetCDATA(s, ""_t); }); }, "kept"},
      {"GetCDATA by path", "",
       [](D& t) {
         S s;
         t.GetCDATA(s, "/a"_t);
       },
       kNoPath + "GetCDATA"},
      {"GetProcessingInstruction", "",
       [out](D& t) {
         return out([&](S& s) {
           S other;
           t.GetProcessingInstruction(s, other, ""_t);
         });
       },
       "kept"},
      {"GetProcessingInstruction by path", "",
       [](D& t) {
         S s;
         t.GetProcessingInstruction(s, s, "/a"_t);
       },
       kNoPath + "GetProcessingInstruction"},
      {"GetSubset", "", [out](D& t) { return out([&](S& s) { t.GetSubset(s, "/a"_t); }); }, "kept"},
      {"GetFormattedSubset", "",
       [out](D& t) { return out([&](S& s) { t.GetFormattedSubset(s, ""_t); }); }, "kept"},
      {"GetSubset into a tree", "",
       [](D& t) {
         D target;
         t.GetSubset(target, ""_t);
       },
       "1009 Parse error: [invalid document structure] at line: 1, Column: 1 @ "
       "CQuenXMLDocumentImpl2w::LoadXML()"},
      {"GetSubset into a tree, by path", "",
       [](D& t) {
         D target;
         t.GetSubset(target, "/a"_t);
       },
       kNoPath + "GetSubset"},
      {"GetUTF8Subset", "",
       [](D& t) {
         std::string s = "before";
         TypeParam::Impl(t).GetUTF8Subset(s);
         return s;
       },
       ""},
      // The wide form writes the tree and parses it again, the narrow form copies it.
      {"GetDocument", "", [](D& t) { t.GetDocument(); },
       std::is_same_v<TypeParam, WideTypes>
           ? "1009 Parse error: [invalid document structure] at line: 1, Column: 1 @ "
             "CQuenXMLDocumentImpl2w::LoadXML()"
           : ""},
  });
}

TYPED_TEST(EmptyTree, Changes) {
  using D = typename TypeParam::Data;
  const std::string position = "3 Position does not exist @ CQuenXMLDataImpl::AddChildNode()";
  const auto root = [](D& t) {
    return TestFixture::All(t) + " " + std::to_string(t.HasRoot()) + " " +
           TestFixture::Show(t.GetPath());
  };
  this->Run({
      {"RemoveData", "",
       [](D& t) {
         t.RemoveData(""_t);
         t.RemoveData("/a"_t);
       },
       ""},
      {"SetData", "", [](D& t) { t.SetData("v"_t, ""_t); },
       "1013 Cursor not Initialized @ CQuenXMLDataImpl2w::SetData"},
      {"SetData by path", "", [](D& t) { t.SetData(5, "/a"_t); }, kNoPathForElement},
      {"AddData", "", [](D& t) { t.AddData("v"_t, ""_t); },
       "1013 Empty Path not allowed in AddData() @ CQuenXMLDataImpl2::AddData"},
      {"AddData by path", "",
       [](D& t) {
         t.AddData("v"_t, "/a"_t);
         t.AddData(1.5, "b"_t);
       },
       ""},
      {"SetAttr", "",
       [](D& t) {
         t.SetAttr("n"_t, "v"_t, ""_t);
         t.SetAttr("n"_t, 5, ""_t);
       },
       ""},
      {"SetAttr by path", "", [](D& t) { t.SetAttr("n"_t, "v"_t, "/a"_t); }, kNoPathForElement},
      {"RemoveAttr", "", [](D& t) { t.RemoveAttr("n"_t, ""_t); }, ""},
      {"RemoveAttr by path", "", [](D& t) { t.RemoveAttr("n"_t, "/a"_t); }, kNoPathForElement},
      {"AddChildNode", "", [](D& t) { t.AddChildNode("b"_t, ""_t); }, position},
      {"AddChildNode by path", "", [](D& t) { t.AddChildNode("1"_t, "/a"_t); }, position},
      {"AddChildNodeNS", "", [](D& t) { t.AddChildNodeNS("b"_t, "u"_t, ""_t); }, position},
      {"AddSiblingNode", "", [](D& t) { t.AddSiblingNode("b"_t, ""_t); }, position},
      {"AddComment goes under the document", "",
       [root](D& t) {
         t.AddComment("c"_t, ""_t);
         return root(t);
       },
       "<!--c--> 0 "},
      {"AddProcessingInstruction too", "",
       [root](D& t) {
         t.AddProcessingInstruction("p"_t, "d"_t, ""_t);
         return root(t);
       },
       "<?p d?> 0 "},
      {"AddCDATA does not", "", [](D& t) { t.AddCDATA("c"_t, ""_t); }, ""},
      {"AddComment by path", "", [](D& t) { t.AddComment("c"_t, "/a"_t); }, kNoPath + "AddComment"},
      {"AddCDATA by path", "", [](D& t) { t.AddCDATA("c"_t, "/a"_t); }, kNoPath + "AddCDATA"},
      {"AddProcessingInstruction by path", "",
       [](D& t) { t.AddProcessingInstruction("p"_t, "d"_t, "/a"_t); },
       kNoPath + "AddProcessingInstruction"},
      {"RemoveComment, RemoveCDATA, RemoveProcessingInstruction", "",
       [](D& t) {
         t.RemoveComment(""_t);
         t.RemoveCDATA(""_t);
         t.RemoveProcessingInstruction("p"_t, ""_t);
       },
       ""},
      {"RemoveComment by path", "", [](D& t) { t.RemoveComment("/a"_t); }, kNoPathForElement},
      {"RemoveCDATA by path", "", [](D& t) { t.RemoveCDATA("/a"_t); }, kNoPathForElement},
      {"RemoveProcessingInstruction by path", "",
       [](D& t) { t.RemoveProcessingInstruction("p"_t, "/a"_t); }, kNoPathForElement},
      {"AppendSubset makes the document", "",
       [root](D& t) {
         t.AppendSubset("<!--x--><a><b/></a>"_t, ""_t);
         return root(t);
       },
       "<!--x--><a><b/></a> 1 /a"},
      {"AppendSubset by path", "", [](D& t) { t.AppendSubset("<a/>"_t, "/a"_t); },
       kNoPathForElement},
      {"AppendSubset of an empty tree", "", [](D& t) { t.AppendSubset(D(), "/a"_t); }, ""},
      {"AppendSubset of a tree", "",
       [root](D& t) {
         D other = TestFixture::Tree("<!--x--><a/>");
         t.AppendSubset(other, ""_t);
         other.SetData("changed"_t, "/a"_t);
         return root(t);
       },
       "<!--x--><a/> 1 /a"},
      {"CreateNodes", "",
       [root](D& t) {
         t.CreateNodes("/a[x='1']/b/c"_t);
         return root(t);
       },
       "<a><b><c/></b></a> 1 /a"},
      {"CreateNodes from the cursor", "", [](D& t) { t.CreateNodes("a"_t); },
       "1013 Path not found @ CQuenXMLDataImpl2w::CreateNodes()"},
      {"SetCursor", "", [](D& t) { t.SetCursor(TestFixture::Tree("<a/>").GetCursor()); },
       kNoPath + "SetCursor"},
      {"AddRootNode", "",
       [root](D& t) {
         t.AddRootNode("a"_t);
         return root(t);
       },
       "<a/> 1 /a"},
      {"AddRootNode of no name", "", [](D& t) { t.AddRootNode("1"_t); },
       "5 DOM Error: invalid or illegal XML character @ "
       "CQuenXMLDocumentImpl2w::CreateElement(const STD(wstring) inElementName)"},
      {"a copy is empty", "",
       [root](D& t) {
         D copy(t);
         return root(copy);
       },
       " 0 "},
  });
}

}  // namespace
}  // namespace quen::test

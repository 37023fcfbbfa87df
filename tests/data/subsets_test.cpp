// SPDX-License-Identifier: Apache-2.0
//
// Pieces of a tree as text, whole trees in and out, files.
#include "tests/data/rows.h"
#include "tests/support/temp_dir.h"

namespace quen::test {
namespace {

template <class W>
class Subsets : public DataTest<W> {};
TYPED_TEST_SUITE(Subsets, Widths, WidthNames);

TYPED_TEST(Subsets, Out) {
  using D = typename TypeParam::Data;
  using S = typename TypeParam::String;
  const auto subset = [](const char* path) {
    return [path](D& t) { return TestFixture::Out([&](S& s) { t.GetSubset(s, RowText{path}); }); };
  };
  const char* const kXml = "<!--x--><a id='1'><b>t<c/></b></a>";
  this->Run({
      {"the cursor's element", kXml, subset(""), "<a id=\"1\"><b>t<c/></b></a>"},
      {"an element", kXml, subset("/a/b"), "<b>t<c/></b>"},
      {"the document", kXml, subset("/"), "<!--x--><a id=\"1\"><b>t<c/></b></a>"},
      {"text", kXml, subset("b/text()"), "t"},
      {"a comment", kXml, subset("/comment()"), "<!--x-->"},
      {"an attribute", kXml, subset("@id"),
       "1010 Invalid DOM Node Type @ CQuenXMLDataImpl::BuildXMLString()"},
      {"nothing", kXml, subset("z"), kNoPath + "GetSubset"},
      {"formatted", kXml,
       [](D& t) { return TestFixture::Out([&](S& s) { t.GetFormattedSubset(s, "b"_t); }); },
       "\n<b>t\n  <c/>\n</b>"},
      {"formatted nothing", kXml,
       [](D& t) {
         S s;
         t.GetFormattedSubset(s, "z"_t);
       },
       kNoPath + "GetFormattedSubset"},
      {"into an empty tree", kXml,
       [](D& t) {
         D target;
         t.GetSubset(target, "/a/b"_t);
         return TestFixture::All(target) + TestFixture::Show(target.GetPath());
       },
       "<b>t<c/></b>/b"},
      {"below the cursor of another", kXml,
       [](D& t) {
         D target = TestFixture::Tree("<o><p/></o>");
         target.CursorTo("p"_t);
         t.GetSubset(target, "b/c"_t);
         return TestFixture::All(target);
       },
       "<o><p><c/></p></o>"},
      {"nothing into another", kXml,
       [](D& t) {
         D target;
         t.GetSubset(target, "z"_t);
       },
       kNoPath + "GetSubset"},
      {"into itself", kXml, [](D& t) { t.GetSubset(t, "b"_t); },
       "<!--x--><a id=\"1\"><b>t<c/></b><b>t<c/></b></a>"},
      {"a document of its own", kXml,
       [](D& t) {
         auto d = t.GetDocument();
         d.GetDocumentElement().SetValue("v"_t);
         return TestFixture::All(t) + TestFixture::Show(d.GetSubset());
       },
       "<!--x--><a id=\"1\"><b>t<c/></b></a><!--x--><a id=\"1\"><b>t<c/></b>v</a>"},
  });
  // The document type cannot be written.
  D typed = this->Tree("<!DOCTYPE a [<!ELEMENT a ANY>]><a/>");
  EXPECT_EQ(this->Show(this->Out([&](S& s) { typed.GetSubset(s, ""_t); })), "<a/>");
  // The wide form writes the tree and parses it again, the narrow form copies it.
  EXPECT_EQ(FailureAt<TypeParam>([&] { typed.GetDocument(); }),
            (std::is_same_v<TypeParam, WideTypes>
                 ? "1010 Invalid DOM Node Type @ CQuenXMLDataImpl::BuildXMLString()"
                 : ""));
}

TYPED_TEST(Subsets, In) {
  using D = typename TypeParam::Data;
  const std::string noText =
      "1009 Parse error: [invalid document structure] at line: 1, Column: 1 @ "
      "CQuenXMLImplUtils2w::BuildDOMNodeFromXMLString()";
  const std::string misplaced =
      "3 DOM Error: attempt is made to insert a node where it is not permitted @ "
      "CQuenXMLNodeImpl2w::AppendChild()";
  this->Run({
      {"below the cursor", "<a>t</a>", [](D& t) { t.AppendSubset("<!--x--><b/>"_t, ""_t); },
       "<a>t<b/></a>"},
      {"by path", "<a><b/></a>", [](D& t) { t.AppendSubset("<c>\u20ac</c>"_t, "/a/b"_t); },
       "<a><b><c>\u20ac</c></b></a>"},
      {"the cursor stays", "<a/>",
       [](D& t) {
         t.AppendSubset("<b/>"_t, ""_t);
         return t.GetPath();
       },
       "/a"},
      {"no text", "<a/>", [](D& t) { t.AppendSubset(""_t, ""_t); }, noText},
      {"a missing place", "<a/>", [](D& t) { t.AppendSubset("<b/>"_t, "z"_t); }, kNoPathForElement},
      {"no element", "<a>t</a>", [](D& t) { t.AppendSubset("<b/>"_t, "text()"_t); }, kNoElement},
      {"a tree", "<a/>",
       [](D& t) {
         D o = TestFixture::Tree("<!--x--><b><c/></b>");
         o.CursorTo("c"_t);
         t.AppendSubset(o, ""_t);
         EXPECT_EQ(TestFixture::Show(o.GetPath()), "/b/c");
         t.AppendSubset(o, "/a/b"_t);
       },
       "<a><b><c/><b><c/></b></b></a>"},
      {"an empty tree at a missing place", "<a/>", [](D& t) { t.AppendSubset(D(), "z"_t); },
       "<a/>"},
      {"itself into itself", "<a><b/></a>", [](D& t) { t.AppendSubset(t, ""_t); }, misplaced},
      {"itself into a part of itself", "<a><b/></a>", [](D& t) { t.AppendSubset(t, "b"_t); },
       misplaced},
  });
}

TEST(Utf8Subsets, In) {
  CQuenXMLData2w tree(u"<a/>");
  tree.AppendUTF8Subset("<b>\u00e9</b>");
  EXPECT_EQ(Whole<WideTypes>(tree), "<a><b>\u00e9</b></a>");
  EXPECT_EQ(FailureAt<WideTypes>([&] { tree.AppendUTF8Subset("<b>\xff</b>"); }),
            "78 The bytes are not well-formed UTF-8 at byte 3 @ "
            "CQuenXMLImplUtils2w::TranscodeFromUTF8()");
  EXPECT_EQ(Whole<WideTypes>(tree), "<a><b>\u00e9</b></a>");
}

TYPED_TEST(Subsets, WholeTrees) {
  using D = typename TypeParam::Data;
  using S = typename TypeParam::String;
  const auto state = [](D& t) {
    return TestFixture::All(t) + " " + std::to_string(t.HasRoot()) + " " +
           TestFixture::Show(t.GetPath());
  };
  this->Run({
      {"a copy's cursor is on the root", "<a><b/></a>",
       [state](D& t) {
         t.CursorTo("b"_t);
         D copy(t);
         copy.SetData("v"_t, ""_t);
         EXPECT_EQ(state(t), "<a><b/></a> 1 /a/b");
         return state(copy);
       },
       "<a><b/>v</a> 1 /a"},
      {"assigned", "<a><b/></a>",
       [state](D& t) {
         D copy = TestFixture::Tree("<o/>");
         copy = t;
         return state(copy);
       },
       "<a><b/></a> 1 /a"},
      {"to itself", "<a><b/></a>",
       [state](D& t) {
         t.CursorTo("b"_t);
         t = *&t;
         return state(t);
       },
       "<a><b/></a> 1 /a/b"},
      {"an empty one", "<a/>",
       [state](D& t) {
         t = D();
         return state(t);
       },
       " 0 "},
      {"a text", "<a/>",
       [state](D& t) {
         t = S("<!--x--><b/>"_t);
         return state(t);
       },
       "<!--x--><b/> 1 /b"},
      {"an empty text", "<a/>",
       [state](D& t) {
         t = S();
         return state(t);
       },
       " 0 "},
      {"its own text", "<a><b/></a>",
       [state](D& t) {
         S s;
         t.CursorTo("b"_t);
         t.GetSubset(s, "/"_t);
         t = s;
         return state(t);
       },
       "<a><b/></a> 1 /a"},
      {"a text that fails leaves an empty tree that works", "<a/>",
       [state](D& t) {
         EXPECT_EQ(Failure<TypeParam>([&] { t = S("<a>"_t); }).substr(0, 5), "1009 ");
         const std::string left = state(t);
         t.AddRootNode("r"_t);
         return left + state(t);
       },
       " 0 <r/> 1 /r"},
      {"SetDocument", "<a/>",
       [state](D& t) {
         typename TypeParam::Document d;
         d.LoadXML("<!--x--><b/>"_t);
         EXPECT_EQ(t.SetDocument(d), 1);
         d.LoadXML("<c/>"_t);
         return state(t);
       },
       "<!--x--><b/> 1 /b"},
      {"an empty document counts as a root", "<a/>",
       [](D& t) {
         EXPECT_EQ(t.SetDocument(typename TypeParam::Document()), 1);
         return Failure<TypeParam>([&] {
                  S s;
                  t.GetSubset(s, ""_t);
                }) +
                " " + std::to_string(t.HasRoot() + t.CursorToFirstChild());
       },
       "8 Node was not initialized 1"},
  });
  EXPECT_EQ(FailureAt<TypeParam>([&] { this->Tree("<a"); }).substr(0, 18), "1009 Parse error: ");
}

TYPED_TEST(Subsets, Files) {
  using D = typename TypeParam::Data;
  const TempDir dir;
  const RowText path{dir / "t\u00e9.xml"};
  D tree = this->Tree("<!--x--><a><b>\u20ac</b></a>");
  tree.CursorTo("b"_t);
  for (const bool binary : {false, true}) {
    const auto write = [&](std::int32_t overwrite) {
      return FailureAt<TypeParam>([&] {
        binary ? tree.WriteToFileBinary(path, overwrite) : tree.WriteToFile(path, overwrite);
      });
    };
    EXPECT_EQ(write(1), "");
    EXPECT_EQ(write(0), "1015 File already exists @ CQuenXMLDataImpl::WriteToFile");
    EXPECT_EQ(dir.Bytes(path.utf8), "<?xml version='1.0' encoding='utf-8'?>" + this->All(tree));
  }
  D read = this->Tree("<o><p/></o>");
  read.CursorTo("p"_t);
  EXPECT_EQ(FailureAt<TypeParam>([&] { read.ReadFromFile(RowText{dir / "none"}); }).substr(0, 5),
            "1009 ");
  EXPECT_EQ(this->Show(read.GetPath()), "/o/p");
  read.ReadFromFile(path);
  EXPECT_EQ(this->All(read), this->All(tree));
  EXPECT_EQ(this->Show(read.GetPath()) + std::to_string(read.HasRoot()), "/a1");
  D().WriteToFile(path, 1);
  EXPECT_EQ(dir.Bytes(path.utf8).size(), 38u);
  EXPECT_EQ(FailureAt<TypeParam>([&] { tree.WriteToFile(RowText{dir / "no/file"}, 1); }),
            "1016 Failed to open file @ CQuenXMLDataImpl::WriteToFile");
}

}  // namespace
}  // namespace quen::test

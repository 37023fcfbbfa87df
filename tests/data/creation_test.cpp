// SPDX-License-Identifier: Apache-2.0
//
// Creation paths: how they are read, and what they make.
#include <stdexcept>

#include "tests/data/rows.h"
#include "tests/support/small_stack.h"

namespace quen::test {
namespace {

// Reaches the protected seams.
class Seams : public CQuenXMLDataImpl2w {
 public:
  using CQuenXMLDataImpl2w::CQuenXMLDataImpl2w;
  using CQuenXMLDataImpl2w::HandleAttributes;
  using CQuenXMLDataImpl2w::ParsePath;
  using CQuenXMLDataImpl2w::RecursePath;
};

// As name{a=b, c=d}, with a semicolon between the segments.
std::string Parsed(const std::string& inPath) {
  Seams seams;
  QuenXMLData2_NodePosList list;
  wstring path = Wide(inPath);
  EXPECT_EQ(seams.ParsePath(path, list), 1);
  EXPECT_EQ(Utf8(path), inPath);
  std::string text = std::to_string(list.absolute);
  for (const QuenXMLData2_Node& node : list.nodes) {
    text += " ; " + Utf8(node.name);
    std::string separator = "{";
    for (const QuenXMLData2_Attr& attribute : node.attributes) {
      text += separator + Utf8(attribute.name) + "=" + Utf8(attribute.value);
      separator = ", ";
    }
    if (separator != "{") text += "}";
  }
  return text;
}

TEST(CreationPath, IsRead) {
  const struct {
    const char* path;
    const char* list;
  } kRows[] = {
      {"", "0"},
      {"a", "0 ; a"},
      {"/a", "1 ; a"},
      {"/a/b/c", "1 ; a ; b ; c"},
      {"b/c", "0 ; b ; c"},
      {"/a/b[id='7']/c", "1 ; a ; b{id=7} ; c"},
      {"/a/b[x='1'][y='2']", "1 ; a ; b{x=1, y=2}"},
      {"/a/b[@id='7']", "1 ; a ; b{@id=7}"},
      {"/a/b[2]", "1 ; a ; b"},
      {"a[x=y]", "0 ; a{x=}"},
      {"a[x=yz]", "0 ; a{x=}"},
      {"a[x=1234]", "0 ; a{x=23}"},
      {"a[x='p=q']", "0 ; a{x=p=q}"},
      {"a[x='[y=1']", "0 ; a{x=[y=1}"},
      {"a[x='1']q", "0 ; a{x=1}"},
      {"a[x='1']q[y='2']", "0 ; a{x=1, y=2}"},
      {"a[x='1'][x='2']", "0 ; a{x=1, x=2}"},
      {"a[x = 'y']", "0 ; a{x ='y}"},
      {"a[='v']", "0 ; a{=v}"},
      {"[x='1']", "0 ; {x=1}"},
      {"a[]", "0 ; a"},
      {"a[x]", "0 ; a"},
      {"a]", "0 ; a]"},
      {"/", "1 ; "},
      {"//", "1 ;  ; "},
      {"/a/", "1 ; a ; "},
      {"a/", "0 ; a ; "},
      {"a//b", "0 ; a ;  ; b"},
      {"..", "0 ; .."},
      {"a[\u00e9='\U0001F600']", "0 ; a{\u00e9=\U0001F600}"},
      // Not closed: what was read so far counts.
      {"a[", "0 ; a"},
      {"a[x='1", "0 ; a"},
      {"a[x='1'][y", "0 ; a{x=1}"},
      {"a[x='1/2']", "0 ; a ; 2']"},
      {"a[b='1'][/c]", "0 ; a{b=1} ; c]"},
  };
  for (const auto& row : kRows) EXPECT_EQ(Parsed(row.path), row.list) << row.path;
  for (const char* const path : {"[x=]", "a/b[x='1'][y=]/c", "a[=]"})
    EXPECT_THROW(Parsed(path), std::out_of_range) << path;
}

template <class W>
class Creation : public DataTest<W> {};
TYPED_TEST_SUITE(Creation, Widths, WidthNames);

TYPED_TEST(Creation, MakesWhatIsMissing) {
  using D = typename TypeParam::Data;
  const auto create = [](const char* path) {
    return [path](D& t) {
      EXPECT_EQ(&t.CreateNodes(RowText{path}), &t);
      EXPECT_EQ(TestFixture::Show(t.GetPath()), "/a");
    };
  };
  const std::string invalid =
      "1013 Invalid Path:  Node not found @ CQuenXMLDataImpl2w::CreateNodes()";
  this->Run({
      {"nothing for nothing", "<a/>", create(""), "<a/>"},
      {"the root alone", "<a/>", create("/a"), "<a/>"},
      {"from the root", "<a>t</a>", create("/a/b/c"), "<a>t<b><c/></b></a>"},
      {"from the cursor", "<a/>", create("b/c"), "<a><b><c/></b></a>"},
      {"the root's predicates are not looked at", "<a/>", create("/a[x='1']/b"), "<a><b/></a>"},
      {"a root with a predicate", "", create("/a[x='1']"), "<a/>"},
      {"another root's name", "<a/>", create("/z/b"), invalid},
      {"no name for the root", "<a/>", create("/"), invalid},
      {"predicates", "<a/>", create("/a/b[y='2'][x='1']/c"), "<a><b x=\"1\" y=\"2\"><c/></b></a>"},
      {"what is there stays", "<a><b id='1'><c/></b></a>", create("/a/b[id='1']/c"),
       "<a><b id=\"1\"><c/></b></a>"},
      {"another predicate is another element", "<a><b id='1'/></a>", create("/a/b[id='2']/c"),
       "<a><b id=\"1\"/><b id=\"2\"><c/></b></a>"},
      {"all predicates have to meet", "<a><b id='1' k='2'/></a>", create("b[id='1'][k='3']"),
       "<a><b id=\"1\" k=\"2\"/><b id=\"1\" k=\"3\"/></a>"},
      {"further attributes do not matter", "<a><b k='2' id='1'/></a>", create("b[id='1']/c"),
       "<a><b id=\"1\" k=\"2\"><c/></b></a>"},
      {"the first match wins, without a way back", "<a><b/><b><c/></b></a>", create("b/c"),
       "<a><b><c/></b><b><c/></b></a>"},
      {"a number in brackets means nothing", "<a><b/><b/></a>", create("/a/b[2]/c"),
       "<a><b><c/></b><b/></a>"},
      {"names are qualified names", "<a xmlns:p='u'><p:b/></a>", create("b"),
       "<a xmlns:p=\"u\"><p:b/><b/></a>"},
      {"an empty value", "<a><b/></a>", create("b[x='']"), "<a><b/><b x=\"\"/></a>"},
      {"the last of two values", "<a/>", create("b[x='1'][x='2']"), "<a><b x=\"2\"/></a>"},
      {"below text and comments", "<a>t<!--b--></a>", create("b"), "<a>t<!--b--><b/></a>"},
      {"a cursor on the document", "<a/>",
       [](D& t) {
         t.CursorToParent();
         t.CreateNodes("b"_t);
       },
       kNotInitialized + "CQuenXMLElementImpl2w::begin()"},
      {"a value behind nothing", "<a/>",
       [](D& t) { EXPECT_THROW(t.CreateNodes("b[x=]"_t), std::out_of_range); }, "<a/>"},
      {"a segment without a name", "<a/>",
       [](D& t) {
         const std::string code = Failure<TypeParam>([&] { t.CreateNodes("b//c"_t); }).substr(0, 2);
         return code + TestFixture::All(t);
       },
       "5 <a><b/></a>"},
      {"what was made before a bad attribute stays", "<a/>",
       [](D& t) {
         const std::string code =
             Failure<TypeParam>([&] { t.CreateNodes("b[x='1'][@id='7']/c"_t); }).substr(0, 2);
         return code + TestFixture::All(t);
       },
       "5 <a><b x=\"1\"/></a>"},
  });
}

TEST(CreationPath, OfManySegments) {
  OnSmallStack([] {
    constexpr int kSegments = 100000;
    std::u16string path = u"/a";
    for (int i = 1; i < kSegments; ++i) path += u"/b";
    CQuenXMLData2w tree;
    tree.CreateNodes(path);
    std::string text;
    tree.GetUTF8Subset(text);
    EXPECT_EQ(text.size(), 7u * (kSegments - 1) + 4);  // the last one is empty
    tree.CreateNodes(path + u"/c[x='1']");
    tree.CreateNodes(path);
    std::string longer;
    tree.GetUTF8Subset(longer);
    EXPECT_EQ(longer.size(), text.size() + 3 + 10);  // <b/> has become <b><c x="1"/></b>
    // What stands in front of a name that is refused stays.
    EXPECT_THROW(tree.CreateNodes(path + u"/c[x='1']/d/1"), CQuenXMLException2w);
    tree.GetUTF8Subset(text);
    EXPECT_EQ(text.size(), longer.size() + 3 + 4 - 0);
  });
}

}  // namespace
}  // namespace quen::test

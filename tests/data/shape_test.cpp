// SPDX-License-Identifier: Apache-2.0
//
// The shape of a tree: nodes, questions, the cursor.
#include <quenxml2/data.h>

#include "tests/data/rows.h"

namespace quen::test {
namespace {

template <class W>
class Shape : public DataTest<W> {};
TYPED_TEST_SUITE(Shape, Widths, WidthNames);

TYPED_TEST(Shape, Nodes) {
  using D = typename TypeParam::Data;
  const std::string noName =
      "5 DOM Error: invalid or illegal XML character @ CQuenXMLDocumentImpl2w::";
  const std::string misplaced =
      "3 DOM Error: attempt is made to insert a node where it is not permitted @ "
      "CQuenXMLNodeImpl2w::AppendChild()";
  this->Run({
      {"a child of the cursor", "<a>t</a>",
       [](D& t) {
         t.AddChildNode("b"_t, ""_t);
         t.AddChildNode("b"_t, ""_t);
       },
       "<a>t<b/><b/></a>"},
      {"by path", "<a><b/><c/></a>", [](D& t) { t.AddChildNode("d"_t, "/a/b"_t); },
       "<a><b><d/></b><c/></a>"},
      {"of an attribute", "<a id='1'/>", [](D& t) { t.AddChildNode("b"_t, "/a/@id"_t); },
       kNoPath + "AddChildNode"},
      {"in a namespace", "<a/>", [](D& t) { t.AddChildNodeNS("p:b"_t, "u"_t, ""_t); },
       "<a><p:b/></a>"},
      {"in one that is missing", "<a/>", [](D& t) { t.AddChildNodeNS("p:b"_t, "u"_t, "z"_t); },
       kNoPath + "AddChildNodeNS"},
      {"no name, before the path is looked at", "<a/>", [](D& t) { t.AddChildNode("1"_t, "z"_t); },
       noName + "CreateElement(const STD(wstring) inElementName)"},
      {"a sibling is the last one", "<a><b/><c/></a>",
       [](D& t) {
         t.CursorTo("b"_t);
         t.AddSiblingNode("d"_t, ""_t);
       },
       "<a><b/><c/><d/></a>"},
      {"by path", "<a><b><x/></b><c/></a>", [](D& t) { t.AddSiblingNode("d"_t, "b/x"_t); },
       "<a><b><x/><d/></b><c/></a>"},
      {"of what is missing", "<a/>", [](D& t) { t.AddSiblingNode("d"_t, "b"_t); },
       kNoPath + "AddSiblingNode"},
      {"of the root", "<a/>", [](D& t) { t.AddSiblingNode("b"_t, ""_t); }, misplaced},
      {"of the document", "<a/>",
       [](D& t) {
         t.CursorToParent();
         t.AddSiblingNode("b"_t, ""_t);
       },
       kNotInitialized + "CQuenXMLNodeImpl2w::AppendChild()"},
      {"a second root", "<a/>", [](D& t) { t.AddRootNode("b"_t); },
       "1014 Root node already exists @ CQuenXMLDataImpl2w::AddRootNode()"},
      {"below text", "<a>x</a>",
       [](D& t) {
         t.SetCursor(t.GetCursor().GetFirstChild());
         t.AddChildNode("b"_t, ""_t);
       },
       misplaced},

      {"comments, sections, instructions", "<a>t<b/></a>",
       [](D& t) {
         t.AddComment("c"_t, ""_t);
         t.AddCDATA("<"_t, "/a"_t);
         t.AddProcessingInstruction("p"_t, "d"_t, "/a/b"_t);
       },
       "<a>t<b><?p d?></b><!--c--><![CDATA[<]]></a>"},
      {"below the document", "<a/>",
       [](D& t) {
         t.CursorToParent();
         t.AddComment("c"_t, ""_t);
       },
       "<a/><!--c-->"},
      {"a section below the document", "<a/>",
       [](D& t) {
         t.CursorToParent();
         t.AddCDATA("c"_t, ""_t);
       },
       misplaced},
      {"a target that is no name", "<a/>",
       [](D& t) { t.AddProcessingInstruction("1"_t, "d"_t, "z"_t); },
       noName + "CreatePI(const STD(wstring) inElementName)"},
      {"a comment where nothing is", "<a/>", [](D& t) { t.AddComment("c"_t, "z"_t); },
       kNoPath + "AddComment"},
      {"a section at an attribute", "<a z='1'/>", [](D& t) { t.AddCDATA("c"_t, "@z"_t); },
       kNoPath + "AddCDATA"},
      {"an instruction where nothing is", "<a/>",
       [](D& t) { t.AddProcessingInstruction("p"_t, "d"_t, "z"_t); },
       kNoPath + "AddProcessingInstruction"},
      {"the first of each goes",
       "<a><b><!--x--></b><!--1--><!--2--><?p 1?><?q 2?><![CDATA[1]]></a>",
       [](D& t) {
         t.RemoveComment(""_t);
         t.RemoveProcessingInstruction("q"_t, "/a"_t);
         t.RemoveCDATA("/a"_t);
         t.RemoveCDATA(""_t);
       },
       "<a><b><!--x--></b><!--2--><?q 2?></a>"},
      {"a comment of what is missing", "<a/>", [](D& t) { t.RemoveComment("z"_t); },
       kNoPathForElement},
      {"a section of an attribute", "<a z='1'/>", [](D& t) { t.RemoveCDATA("@z"_t); }, kNoElement},
      {"an instruction of the document", "<?p?><a/>",
       [](D& t) {
         t.CursorToParent();
         t.RemoveProcessingInstruction("p"_t, ""_t);
       },
       kNotInitialized + "CQuenXMLNodeImpl2w::GetFirstChild()"},
  });
}

TYPED_TEST(Shape, LeavesAreRead) {
  using D = typename TypeParam::Data;
  using S = typename TypeParam::String;
  const char* const kXml = "<a><b/><!--1--><!--2--><?p 3?><?q 4?><![CDATA[5]]>6</a>";
  const auto leaves = [](const char* path) {
    return [path](D& t) {
      S comment = "kept"_t, section = "kept"_t, target = "kept"_t, data = "kept"_t;
      t.GetComment(comment, RowText{path});
      t.GetCDATA(section, RowText{path});
      t.GetProcessingInstruction(target, data, RowText{path});
      return comment + S(" "_t) + section + S(" "_t) + target + S(" "_t) + data;
    };
  };
  this->Run({
      {"at the cursor", kXml, leaves(""), "1 5 p 3"},
      {"by path", kXml, leaves("/a"), "1 5 p 3"},
      {"there are none", kXml, leaves("b"), "kept kept kept kept"},
      {"the element is missing", kXml, leaves("z"), kNoPathForElement},
      {"the section's too", kXml,
       [](D& t) {
         S s;
         t.GetCDATA(s, "z"_t);
       },
       kNoPathForElement},
      {"the instruction's", kXml,
       [](D& t) {
         S s;
         t.GetProcessingInstruction(s, s, "z"_t);
       },
       kNoPath + "GetProcessingInstruction"},
      {"of text", kXml,
       [](D& t) {
         S s;
         t.GetProcessingInstruction(s, s, "text()"_t);
       },
       kNoPath + "GetProcessingInstruction"},
      {"of text", kXml,
       [](D& t) {
         S s;
         t.GetComment(s, "text()"_t);
       },
       kNoElement},
  });
}

TYPED_TEST(Shape, Questions) {
  using D = typename TypeParam::Data;
  const auto ask = [](const char* path) {
    return [path](D& t) {
      std::uint32_t count = 99;
      const std::string failure =
          Failure<TypeParam>([&] { t.GetNumChildren(count, RowText{path}); });
      return std::to_string(t.PathExists(RowText{path})) +
             std::to_string(t.HasChildren(RowText{path})) +
             std::to_string(t.HasChildElement(RowText{path})) + " " + std::to_string(count) +
             failure.substr(0, 4);
    };
  };
  const char* const kXml = "<a id='1'>t<b>x</b><!--c--><d/></a>";
  this->Run({
      {"an element by path", kXml, ask("/a"), "111 4"},
      {"the cursor counts elements alone", kXml, ask(""), "011 2"},
      {"text is a child but no element", kXml, ask("b"), "110 1"},
      {"no children", kXml, ask("d"), "100 0"},
      {"an attribute", kXml, ask("@id"), "000 991013"},
      {"the document", kXml, ask("/"), "000 991013"},
      {"nothing", kXml, ask("z"), "000 991013"},
      {"a wrong path exists not", kXml, [](D& t) { return t.PathExists("a["_t); }, "0"},
      {"nor has it children", kXml,
       [](D& t) { return Failure<TypeParam>([&] { t.HasChildren("a["_t); }).substr(0, 5); },
       "1010 "},
      {"a cursor on the document", kXml,
       [](D& t) {
         t.CursorToParent();
         return t.HasChildren(""_t);
       },
       "1"},
      {"which is no element", kXml,
       [](D& t) {
         t.CursorToParent();
         t.HasChildElement(""_t);
       },
       kNotInitialized + "CQuenXMLElementImpl2w::empty()"},
      {"nor are its elements counted", kXml,
       [](D& t) {
         std::uint32_t n;
         t.CursorToParent();
         t.GetNumChildren(n, ""_t);
       },
       kNotInitialized + "CQuenXMLElementImpl2w::begin()"},
  });
}

TYPED_TEST(Shape, CursorMoves) {
  using D = typename TypeParam::Data;
  const char* const kXml = "<a>t<!--c--><b><x/></b><?p?><c/>t</a>";
  // Letters: what is done. Digits: what it gave. At the end: where the cursor is.
  const auto moves = [](const std::string& script) {
    return [script](D& t) {
      std::string trace;
      for (const char move : script) {
        switch (move) {
          case 'r':
            trace += std::to_string(t.CursorToRoot());
            break;
          case 'f':
            trace += std::to_string(t.CursorToFirstChild());
            break;
          case 'l':
            trace += std::to_string(t.CursorToLastChild());
            break;
          case 'n':
            trace += std::to_string(t.CursorToNextSibling());
            break;
          case 'p':
            trace += std::to_string(t.CursorToPreviousSibling());
            break;
          case 'u':
            trace += std::to_string(t.CursorToParent());
            break;
          case 'b':
            trace += std::to_string(t.CursorTo("/a/b"_t));
            break;
          case 'x':
            trace += std::to_string(t.CursorTo("x"_t));
            break;
          case '.':
            trace += std::to_string(t.CursorTo(".."_t));
            break;
          case 'e':
            trace += std::to_string(t.CursorTo(""_t));
            break;
          case '@':
            trace += std::to_string(t.CursorTo("text()"_t));
            break;
          default:
            trace += std::to_string(t.CursorTo("/a["_t));
            break;
        }
      }
      return trace + " " + TestFixture::Show(t.GetPath());
    };
  };
  this->Run({
      {"first and last child", kXml, moves("flrl"), "1111 /a/c"},
      {"over what is no element", kXml, moves("fn"), "11 /a/c"},
      {"back", kXml, moves("lp"), "11 /a/b"},
      {"beyond the ends it stays", kXml, moves("lnnppp"), "100100 /a/b"},
      {"by path", kXml, moves("bx"), "11 /a/b/x"},
      {"to the parent by path", kXml, moves("b.."), "110 /a"},
      {"paths that lead nowhere", kXml, moves("be@["), "1000 /a/b"},
      {"up to the document", kXml, moves("buu"), "111 "},
      {"and down again", kXml, moves("uf"), "11 /a"},
      {"no siblings there", kXml, moves("unp"), "100 "},
      {"up to nowhere and back", kXml, moves("uuufr"), "11001 /a"},
      {"IsCursorInPath is always 0", kXml, [](D& t) { return t.IsCursorInPath(t.GetPath()); }, "0"},
      {"nowhere has no name", kXml,
       [](D& t) {
         t.CursorToParent();
         t.CursorToParent();
         t.GetNodeAtCursor();
       },
       kNotInitialized + "CQuenXMLNodeImpl2w::GetNodeType()"},
      {"nor has the document", kXml,
       [](D& t) {
         t.CursorToParent();
         t.GetNodeAtCursor();
       },
       kNotInitialized + "CQuenXMLNodeImpl2w::GetName()"},
      {"a path from nowhere", kXml,
       [](D& t) {
         t.CursorToParent();
         t.CursorToParent();
         return Failure<TypeParam>([&] { t.AddComment("c"_t, ""_t); }) +
                std::to_string(t.PathExists("/a"_t));
       },
       "8 Node was not initialized0"},
  });
}

TYPED_TEST(Shape, CursorByHandleAndItsPath) {
  using D = typename TypeParam::Data;
  const char* const kXml =
      "<a xmlns:p='u'><p:b/><b _quenxmlidx='2'>t<!--c--></b><c _quenxmlidx=''/></a>";
  const auto at = [](const char* path) {
    return [path](D& t) {
      t.SetCursor(t.GetCursor().SelectSingleNode(RowText{path}));
      return t.GetPath();
    };
  };
  this->Run({
      {"an element", kXml, at("b"), "/a/b[2]"},
      {"a prefix stays", kXml, at("p:b"), "/a/p:b"},
      {"an empty index shows none", kXml, at("c"), "/a/c"},
      {"text: the elements above", kXml, at("b/text()"), "/a/b[2]"},
      {"the document", kXml, at("/"), ""},
      {"an attribute stands below nothing", kXml, at("b/@_quenxmlidx"), ""},
      {"from the document back", kXml,
       [](D& t) {
         const auto a = t.GetCursor();
         t.CursorToParent();
         t.SetCursor(a);
         return t.GetPath();
       },
       "/a"},
      {"the handle does not follow", kXml,
       [](D& t) {
         const auto a = t.GetCursor();
         t.CursorTo("c"_t);
         return a.GetName();
       },
       "a"},
      {"null", kXml, [](D& t) { t.SetCursor(t.GetCursor().GetParent().GetParent()); },
       "1007 input node is NULL @ CQuenXMLDataImpl2w::SetCursor"},
      {"of another tree", kXml,
       [](D& t) {
         D other(t);
         t.SetCursor(other.GetCursor());
       },
       "4 input node must be from the same DOM document @ CQuenXMLDataImpl2w::SetCursor"},
      {"of another tree, from the document", kXml,
       [](D& t) {
         D other(t);
         t.CursorToParent();
         t.SetCursor(other.GetCursor().GetParent());
       },
       "4 input node must be from the same DOM document @ CQuenXMLDataImpl2w::SetCursor"},
      {"inside what was removed", kXml,
       [](D& t) {
         t.CursorTo("b"_t);
         t.RemoveData("/a"_t);
         return t.GetPath();
       },
       "/a/b[2]"},
      {"a path finds the first of its names", "<a><b/><b _quenxmlidx='1' n='2'/></a>",
       [](D& t) {
         t.CursorTo("b[2]"_t);
         t.CursorTo(t.GetPath());
         return t.HasAttr("n"_t, ""_t);
       },
       "0"},
  });
}

}  // namespace
}  // namespace quen::test

// SPDX-License-Identifier: Apache-2.0
//
// The two widths against each other: the same calls with the same texts leave the same trace.
#include <cstdint>
#include <filesystem>
#include <random>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/support/widths.h"

namespace quen::test {
namespace {

// A log of calls, each with what it gave or how it failed.
template <class W>
class Trace {
 public:
  template <class Operation>
  void operator()(const std::string& inWhat, Operation&& inOperation) {
    std::string outcome;
    const std::string failure = FailureAt<W>([&] {
      if constexpr (std::is_void_v<std::invoke_result_t<Operation>>) {
        inOperation();
      } else {
        outcome = Show(inOperation());
      }
    });
    text_ += inWhat + ": " + (failure.empty() ? outcome : "! " + failure) + "\n";
  }
  const std::string& Text() const { return text_; }

 private:
  static std::string Show(const typename W::String& inText) { return W::Utf8(inText); }
  static std::string Show(const typename W::Node& inNode) {
    const QuenXMLDOMNode2w_NullPtr* const null = nullptr;
    if (inNode == null) return "null";
    return std::to_string(inNode.GetNodeType()) + " " + W::Utf8(inNode.GetName()) + "=" +
           W::Utf8(inNode.GetValue());
  }
  template <class Number, class = std::enable_if_t<std::is_arithmetic_v<Number>>>
  static std::string Show(Number inNumber) {
    return std::to_string(inNumber);
  }

  std::string text_;
};

constexpr const char* kDocument =
    "<r xmlns:p='urn:\u00fc'><p:a x='1' y='\u00e9'>\u00e9\u00e9n</p:a><!--c\U0001F600--><?t "
    "d\u20ac?>"
    "<b><![CDATA[<&]]></b>tail</r>";

template <class W>
std::string NodeTrace() {
  const auto T = [](const char* text) { return W::Text(text); };
  Trace<W> trace;
  typename W::Document document;
  document.LoadXML(T(kDocument));
  typename W::Node root = document.GetDocumentElement();
  typename W::Node a = root.GetFirstChild();
  typename W::Node b = root.SelectSingleNode(T("b"));
  trace("name", [&] { return a.GetName(); });
  trace("value", [&] { return a.GetValue(); });
  trace("type", [&] { return static_cast<int>(a.GetNodeType()); });
  trace("uri", [&] { return a.GetNamespaceURI(); });
  trace("prefix", [&] { return a.GetPrefix(); });
  trace("children", [&] { return a.HasChildNodes() && !b.GetFirstChild().HasChildNodes(); });
  trace("attributes", [&] { return a.HasAttributes() && !b.HasAttributes(); });
  trace("parent", [&] { return a.GetParent(); });
  trace("next", [&] { return a.GetNextSibling(); });
  trace("previous", [&] { return b.GetPreviousSibling(); });
  trace("first", [&] { return b.GetFirstChild(); });
  trace("last", [&] { return root.GetLastChild(); });
  trace("no parent", [&] { return document.GetParent(); });
  trace("owner", [&] { return a.GetOwnerDocument().GetSubset(); });
  trace("subset", [&] { return root.GetSubset(); });
  trace("formatted", [&] { return root.GetFormattedSubset(); });
  trace("set value", [&] { b.SetValue(T("\u00df")); });
  trace("set prefix", [&] { a.SetPrefix(T("q")); });
  trace("bad prefix", [&] { b.SetPrefix(T("q")); });
  typename W::Node fresh = document.CreateElement(T("f"));
  trace("insert", [&] { return root.InsertBefore(fresh, b); });
  trace("append", [&] { return root.AppendChild(fresh); });
  trace("replace", [&] { return root.ReplaceChild(fresh, b); });
  trace("remove", [&] { return root.RemoveChild(fresh); });
  trace("remove again", [&] { return root.RemoveChild(fresh); });
  trace("append subset", [&] { root.AppendSubset(T("<s>\u4e00</s>")); });
  trace("append no xml", [&] { root.AppendSubset(T("<s>")); });
  trace("single", [&] { return root.SelectSingleNode(T("s")); });
  trace("none", [&] { return root.SelectSingleNode(T("nothing")); });
  trace("wrong", [&] { return root.SelectSingleNode(T("//[")); });
  for (const typename W::Node& node : root.SelectNodes(T("//text() | //comment() | //@*")))
    trace("selected", [&] { return node; });
  trace("clone", [&] { return a.Clone(true).GetSubset(); });
  trace("flat clone", [&] { return a.Clone(false).GetSubset(); });
  trace("same", [&] { return root == a.GetParent() && !(root != a.GetParent()); });
  trace("other", [&] { return a != b && !(a == b); });
  typename W::Node null = document.GetParent();
  trace("null", [&] { return null.GetName(); });
  trace("null type", [&] { return static_cast<int>(null.GetNodeType()); });
  trace("all", [&] { return document.GetSubset(); });
  return trace.Text();
}

template <class W>
std::string ElementTrace() {
  const auto T = [](const char* text) { return W::Text(text); };
  using Element = typename W::Element;
  Trace<W> trace;
  typename W::Document document;
  document.LoadXML(T("<r><a x='\u00e9' y='2' z='3'/>text<b/><c><d/></c><e/></r>"));
  Element root = document.GetDocumentElement();
  Element a(root.GetFirstChild());
  Element d(document.SelectSingleNode(T("//d")));
  trace("attribute", [&] { return a.GetAttribute(T("x")); });
  trace("absent", [&] { return a.GetAttribute(T("q")); });
  trace("set", [&] { a.SetAttribute(T("\u00fc"), T("\u20ac")); });
  trace("set wrong", [&] { a.SetAttribute(T("1"), T("2")); });
  trace("remove", [&] { a.RemoveAttribute(T("z")); });
  trace("attribute gone", [&] { return a.GetAttribute(T("z")); });
  trace("has parent", [&] { return a.HasParent() && !root.HasParent(); });
  trace("parent iterator", [&] { return *d.GetParentIterator(); });
  trace("root parent", [&] { return *root.GetParentIterator(); });
  trace("sibling iterator", [&] { return *d.GetSiblingIterator(); });
  trace("root sibling", [&] { return *root.GetSiblingIterator(); });
  trace("add name", [&] { return a.AddChildNode(T("n\u00e9")); });
  trace("add moved", [&] { return root.AddChildNode(d, true); });
  trace("empty", [&] { return d.empty() && !root.empty(); });
  trace("attr empty", [&] { return d.attr_empty() && !a.attr_empty(); });
  trace("find", [&] { return *root.find(T("c")); });
  trace("find none", [&] { return root.find(T("zz")) == root.end(); });
  trace("insert name", [&] { return *root.insert(root.find(T("b")), T("i1")); });
  trace("insert element",
        [&] { return *root.insert(root.find(T("c")), document.CreateElement(T("i2")), true); });
  for (Element& child : root) trace("child", [&] { return child; });
  for (typename W::Attr& attr : std::vector<typename W::Attr>(a.attr_begin(), a.attr_end()))
    trace("attr", [&] { return attr; });
  trace("attr find", [&] { return *a.attr_find(T("y")); });
  trace("attr owner", [&] { return (*a.attr_find(T("y"))).GetOwnerElement(); });

  typename Element::element_iterator at = root.begin();
  trace("+=", [&] { return *(at += 3); });
  trace("-=", [&] { return *(at -= 2); });
  trace("[]", [&] { return *at[1]; });
  trace("++", [&] { return *++at; });
  trace("--", [&] { return *--at; });
  trace("post ++", [&] { return *at++; });
  trace("behind ++", [&] { return at->GetName(); });
  trace("post --", [&] { return *at--; });
  trace("behind --", [&] { return at->GetName(); });
  trace("== !=", [&] { return at != root.begin() && root.begin() == root.begin(); });
  trace("end", [&] { return *root.end(); });
  trace("unset", [&] { return *typename Element::element_iterator(); });
  at = root.begin();
  trace("assigned", [&] { return *at; });
  typename Element::attr_iterator attr = a.attr_begin();
  trace("attr +=", [&] { return *(attr += 2); });
  trace("attr -=", [&] { return *(attr -= 2); });
  trace("attr []", [&] { return *attr[1]; });
  trace("attr ++", [&] { return *++attr; });
  trace("attr --", [&] { return *--attr; });
  trace("attr post ++", [&] { return *attr++; });
  trace("attr post --", [&] { return *attr--; });
  trace("attr ->", [&] { return attr->GetValue(); });
  trace("attr == !=", [&] { return attr != a.attr_begin() && a.attr_begin() == a.attr_begin(); });
  attr = a.attr_end();
  trace("attr end", [&] { return *attr; });

  trace("erase", [&] { return *root.erase(root.find(T("b"))); });
  trace("erase range", [&] { return *root.erase(root.begin(), root.find(T("e"))); });
  trace("erase end", [&] { return *root.erase(root.end()); });
  trace("attr erase", [&] { a.attr_erase(a.attr_find(T("y"))); });
  trace("attr erase range", [&] { a.attr_erase(a.attr_begin(), a.attr_end()); });
  trace("attrs gone", [&] { return a.GetSubset(); });
  trace("all", [&] { return document.GetSubset(); });
  return trace.Text();
}

template <class W>
std::string DocumentTrace(const std::string& inFolder) {
  const auto T = [](const std::string& text) { return W::Text(text); };
  const std::string file = inFolder + "/d\u00e9.xml";
  const std::string schema = inFolder + "/s.xsd";
  std::filesystem::remove(file);
  Trace<W> trace;
  typename W::Document document;
  trace("load xml", [&] { document.LoadXML(T(kDocument)); });
  trace("load no xml", [&] { document.LoadXML(T("\u00e9")); });
  trace("element", [&] { return document.CreateElement(T("\u00e9")); });
  trace("no element", [&] { return document.CreateElement(T("1")); });
  trace("comment", [&] { return document.CreateComment(T("\u00e9")); });
  trace("cdata", [&] { return document.CreateCDATA(T("\u00e9")); });
  trace("pi", [&] { return document.CreatePI(T("target"), T("data")); });
  trace("element ns", [&] { return document.CreateElementNS(T("p:n"), T("urn:x")); });
  trace("ns", [&] { return document.CreateElementNS(T("p:n"), T("urn:x")).GetNamespaceURI(); });
  trace("root", [&] { return document.GetDocumentElement(); });
  document.AppendChild(document.CreateComment(T("last")));
  trace("write", [&] { document.WriteToFile(file, 0); });
  trace("write again", [&] { document.WriteToFile(file, 0); });
  trace("write over", [&] { document.WriteToFileBinary(file, 1); });
  typename W::Document loaded;
  trace("load", [&] { loaded.Load(T(file)); });
  trace("loaded", [&] { return loaded.GetSubset(); });
  trace("load nothing", [&] { loaded.Load(T(inFolder + "/nothing")); });
  loaded.GetDocumentElement().AppendSubset(T("<more/>"));
  trace("more", [&] { return loaded.GetSubset(); });
  document.LoadXML(T("<r>  <a/>  <b> </b></r>"));
  trace("normalize", [&] { document.Normalize(); });
  trace("normalized", [&] { return document.GetSubset(); });
  trace("validation", [&] { return document.GetDoValidationOnParse(); });
  trace("namespaces", [&] { return document.GetDoNamespaceOnParse(); });
  trace("flags", [&] {
    document.SetDoNamespaceOnParse(0);
    document.SetDoValidationOnParse(5);
    typename W::Document copy(document);
    return copy.GetDoNamespaceOnParse() * 10 + copy.GetDoValidationOnParse();
  });
  document.SetDoValidationOnParse(0);
  document.SetDoNamespaceOnParse(1);
  trace("no schema", [&] { document.Validate(); });
  {
    typename W::Document text;
    text.LoadXML(
        T("<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element name='v' "
          "type='xs:int'/></xs:schema>"));
    text.WriteToFile(schema, 1);
  }
  typename W::Document checked;
  checked.LoadXML(T("<v>7</v>"));
  checked.SetExternalNoNamespaceSchemaLocation(T(schema));
  trace("valid", [&] { checked.Validate(); });
  checked.GetDocumentElement().SetValue(T("x"));
  trace("not valid", [&] { return W::Text(Failure<W>([&] { checked.Validate(); }).substr(0, 4)); });
  checked.SetExternalNoNamespaceSchemaLocation(T(""));
  checked.SetExternalSchemaLocation(T("urn:v " + schema));
  trace("schema of another", [&] { checked.Validate(); });
  trace("set root", [&] { checked.SetDocumentElement(document.GetDocumentElement()); });
  trace("new root", [&] { return checked.GetSubset(); });
  trace("from node",
        [&] { return typename W::Document(document.SelectSingleNode(T("/r/a"))).GetSubset(); });
  trace("assigned", [&] {
    typename W::Document other;
    other = document;
    document.LoadXML(T("<changed/>"));
    return other.GetSubset();
  });
  return trace.Text();
}

template <class W>
std::string DataTrace(const std::string& inFolder) {
  const auto T = [](const std::string& text) { return W::Text(text); };
  using String = typename W::String;
  const std::string file = inFolder + "/t\u00e9.xml";
  std::filesystem::remove(file);
  Trace<W> trace;
  typename W::Data tree;
  const auto whole = [&] { trace("whole", [&] { return W::Text(Whole<W>(tree)); }); };
  const auto text = [&](const char* what, auto&& operation) {
    trace(what, [&] {
      String value = T("unset");
      operation(value);
      return value;
    });
  };
  trace("empty", [&] { return tree.HasRoot(); });
  text("empty read", [&](String& value) { tree.GetData(value, T("")); });
  trace("root", [&] { tree.AddRootNode(T("r\u00e9")); });
  trace("second root", [&] { tree.AddRootNode(T("s")); });
  trace("add double", [&] { tree.AddData(1.5, T("/r\u00e9/d")); });
  trace("add float", [&] { tree.AddData(2.5f, T("/r\u00e9/f")); });
  trace("add unsigned", [&] { tree.AddData(std::uint32_t{4000000000}, T("/r\u00e9/u")); });
  trace("add long", [&] { tree.AddData(std::int32_t{-7}, T("/r\u00e9/l")); });
  trace("add text", [&] { tree.AddData(T("v\u20ac"), T("/r\u00e9/t")); });
  trace("add nowhere", [&] { tree.AddData(T("v"), T("")); });
  trace("add binary", [&] { tree.AddBinaryData(T("b\u00fc"), T("/r\u00e9/b")); });
  const unsigned char bytes[] = {0, 255, 7};
  trace("add bytes", [&] { tree.AddBinaryData(bytes, 3, T("/r\u00e9/y")); });
  trace("child", [&] { tree.AddChildNode(T("k"), T("/r\u00e9")); });
  trace("child ns", [&] { tree.AddChildNodeNS(T("kn"), T("urn:\u00fc"), T("/r\u00e9")); });
  trace("sibling", [&] { tree.AddSiblingNode(T("w"), T("/r\u00e9/k")); });
  whole();
  text("get text", [&](String& value) { tree.GetData(value, T("/r\u00e9/t")); });
  text("get binary", [&](String& value) { tree.GetBinaryData(value, T("/r\u00e9/b")); });
  trace("get bytes", [&] {
    unsigned char read[4] = {9, 9, 9, 9};
    std::uint32_t length = 4;
    tree.GetBinaryData(read, length, T("/r\u00e9/y"));
    return length * 1000000 + read[0] * 10000 + read[1] * 10 + read[2];
  });
  trace("get numbers", [&] {
    double d = 0;
    float f = 0;
    std::uint32_t u = 0;
    std::int32_t l = 0;
    tree.GetData(d, T("/r\u00e9/d"));
    tree.GetData(f, T("/r\u00e9/f"));
    tree.GetData(u, T("/r\u00e9/u"));
    tree.GetData(l, T("/r\u00e9/l"));
    return d + static_cast<double>(f) + u + l;
  });
  trace("get no number", [&] {
    std::int32_t l = 0;
    tree.GetData(l, T("/r\u00e9/t"));
  });
  trace("set double", [&] { tree.SetData(-1.5, T("/r\u00e9/d")); });
  trace("set float", [&] { tree.SetData(-2.5f, T("/r\u00e9/f")); });
  trace("set unsigned", [&] { tree.SetData(std::uint32_t{1}, T("/r\u00e9/u")); });
  trace("set long", [&] { tree.SetData(std::int32_t{2}, T("/r\u00e9/l")); });
  trace("set text", [&] { tree.SetData(T("z"), T("/r\u00e9/t")); });
  trace("set binary", [&] { tree.SetBinaryData(T("q"), T("/r\u00e9/b")); });
  trace("set bytes", [&] { tree.SetBinaryData(bytes, 2, T("/r\u00e9/y")); });
  trace("set nowhere", [&] { tree.SetData(T("z"), T("/no")); });
  trace("attr double", [&] { tree.SetAttr(T("d"), 1.25, T("/r\u00e9/k")); });
  trace("attr float", [&] { tree.SetAttr(T("f"), 2.25f, T("/r\u00e9/k")); });
  trace("attr unsigned", [&] { tree.SetAttr(T("u"), std::uint32_t{3}, T("/r\u00e9/k")); });
  trace("attr long", [&] { tree.SetAttr(T("l"), std::int32_t{-3}, T("/r\u00e9/k")); });
  trace("attr text", [&] { tree.SetAttr(T("t\u00e9"), T("a\u00e9"), T("/r\u00e9/k")); });
  trace("attrs", [&] {
    double d = 0;
    float f = 0;
    std::uint32_t u = 0;
    std::int32_t l = 0;
    tree.GetAttr(T("d"), d, T("/r\u00e9/k"));
    tree.GetAttr(T("f"), f, T("/r\u00e9/k"));
    tree.GetAttr(T("u"), u, T("/r\u00e9/k"));
    tree.GetAttr(T("l"), l, T("/r\u00e9/k"));
    return d + static_cast<double>(f) * 10 + u * 100 + l * 1000;
  });
  text("attr", [&](String& value) { tree.GetAttr(T("t\u00e9"), value, T("/r\u00e9/k")); });
  trace("has attr", [&] { return tree.HasAttr(T("t\u00e9"), T("/r\u00e9/k")); });
  trace("has no attr", [&] { return tree.HasAttr(T("/r\u00e9/k"), T("t\u00e9")); });
  trace("remove attr", [&] { tree.RemoveAttr(T("u"), T("/r\u00e9/k")); });
  whole();
  trace("exists", [&] { return tree.PathExists(T("/r\u00e9/k")) - tree.PathExists(T("/r/k")); });
  trace("cursor", [&] { return tree.CursorTo(T("/r\u00e9/k")); });
  trace("path", [&] { return tree.GetPath(); });
  trace("at", [&] { return tree.GetNodeAtCursor(); });
  trace("in path", [&] { return tree.IsCursorInPath(T("/r\u00e9")); });
  trace("previous", [&] { return tree.CursorToPreviousSibling(); });
  trace("at", [&] { return tree.GetNodeAtCursor(); });
  trace("next", [&] { return tree.CursorToNextSibling(); });
  trace("at", [&] { return tree.GetNodeAtCursor(); });
  trace("up", [&] { return tree.CursorToParent(); });
  trace("last", [&] { return tree.CursorToLastChild(); });
  trace("at", [&] { return tree.GetNodeAtCursor(); });
  trace("cursor node", [&] { return tree.GetCursor(); });
  trace("to root", [&] { return tree.CursorToRoot(); });
  trace("first", [&] { return tree.CursorToFirstChild(); });
  trace("at", [&] { return tree.GetNodeAtCursor(); });
  tree.CursorToRoot();
  trace("count", [&] {
    std::uint32_t count = 0;
    tree.GetNumChildren(count, T("/r\u00e9"));
    return count;
  });
  trace("children", [&] { return tree.HasChildren(T("")) * 10 + tree.HasChildren(T("k")); });
  trace("elements",
        [&] { return tree.HasChildElement(T("")) * 10 + tree.HasChildElement(T("t")); });
  trace("create", [&] { tree.CreateNodes(T("/r\u00e9/m[a='\u20ac']/n")).CreateNodes(T("o")); });
  trace("create elsewhere", [&] { tree.CreateNodes(T("/x")); });
  trace("pi", [&] { tree.AddProcessingInstruction(T("targ"), T("d\u00e9"), T("k")); });
  trace("get pi", [&] {
    String target;
    String data;
    tree.GetProcessingInstruction(target, data, T("k"));
    return target + T("|") + data;
  });
  trace("comment", [&] { tree.AddComment(T("c\u00e9"), T("k")); });
  text("get comment", [&](String& value) { tree.GetComment(value, T("k")); });
  trace("cdata", [&] { tree.AddCDATA(T("<&\u00e9"), T("k")); });
  text("get cdata", [&](String& value) { tree.GetCDATA(value, T("k")); });
  text("subset", [&](String& value) { tree.GetSubset(value, T("/r\u00e9/k")); });
  text("formatted", [&](String& value) { tree.GetFormattedSubset(value, T("/r\u00e9/m")); });
  text("no subset", [&](String& value) { tree.GetSubset(value, T("/no")); });
  trace("remove pi", [&] { tree.RemoveProcessingInstruction(T("targ"), T("k")); });
  trace("remove comment", [&] { tree.RemoveComment(T("k")); });
  trace("remove cdata", [&] { tree.RemoveCDATA(T("k")); });
  trace("remove", [&] { tree.RemoveData(T("/r\u00e9/d")); });
  trace("append", [&] { tree.AppendSubset(T("<s>\U0001F600</s>"), T("/r\u00e9/k")); });
  trace("append no xml", [&] { tree.AppendSubset(T("</s>"), T("/r\u00e9/k")); });
  typename W::Data other(T("<o><i/></o>"));
  trace("append tree", [&] { tree.AppendSubset(other, T("/r\u00e9/m")); });
  trace("subset to tree", [&] { tree.GetSubset(other, T("/r\u00e9/m")); });
  trace("other", [&] { return W::Text(Whole<W>(other)); });
  trace("cursor to", [&] {
    other.SetCursor(other.GetCursor().GetFirstChild());
    return other.GetPath();
  });
  trace("cursor elsewhere", [&] { other.SetCursor(tree.GetCursor()); });
  whole();
  trace("write", [&] { tree.WriteToFile(T(file), 0); });
  trace("write again", [&] { tree.WriteToFile(T(file), 0); });
  trace("write over", [&] { tree.WriteToFileBinary(T(file), 1); });
  trace("the name", [&] { return std::filesystem::exists(file); });
  trace("read", [&] { other.ReadFromFile(T(file)); });
  trace("read nothing", [&] { other.ReadFromFile(T(inFolder + "/nothing")); });
  trace("read", [&] { return W::Text(Whole<W>(other)); });
  typename W::Data copy(other);
  trace("assign text", [&] { other = T("<n\u00e9/>"); });
  trace("assigned", [&] { return W::Text(Whole<W>(other)); });
  trace("copy", [&] { return Whole<W>(copy) == Whole<W>(tree); });
  trace("assign tree", [&] { copy = other; });
  trace("assigned", [&] { return W::Text(Whole<W>(copy)); });
  trace("assign no xml", [&] { copy = T("<"); });
  trace("empty", [&] { return copy.HasRoot(); });
  trace("document", [&] { return tree.GetDocument().GetSubset(); });
  trace("set document", [&] { return copy.SetDocument(tree.GetDocument()); });
  trace("set", [&] { return Whole<W>(copy) == Whole<W>(tree); });
  return trace.Text();
}

// The first line in which the two differ; "" if they agree.
std::string Difference(const std::string& inWide, const std::string& inNarrow) {
  std::istringstream wide(inWide);
  std::istringstream narrow(inNarrow);
  std::string wideLine;
  std::string narrowLine;
  while (std::getline(wide, wideLine)) {
    std::getline(narrow, narrowLine);
    if (wideLine != narrowLine) return "wide:   " + wideLine + "\nnarrow: " + narrowLine;
  }
  return inWide == inNarrow ? "" : "the narrow trace is longer";
}

class Agreement : public testing::Test {
 protected:
  Agreement() : folder_(testing::TempDir() + "narrow-agreement") {
    std::filesystem::create_directories(folder_);
  }
  ~Agreement() override { std::filesystem::remove_all(folder_); }

  std::string folder_;
};

TEST_F(Agreement, Nodes) {
  EXPECT_EQ(Difference(NodeTrace<WideTypes>(), NodeTrace<NarrowTypes>()), "");
}
TEST_F(Agreement, Elements) {
  EXPECT_EQ(Difference(ElementTrace<WideTypes>(), ElementTrace<NarrowTypes>()), "");
}
TEST_F(Agreement, Documents) {
  EXPECT_EQ(Difference(DocumentTrace<WideTypes>(folder_), DocumentTrace<NarrowTypes>(folder_)), "");
}
TEST_F(Agreement, DataTrees) {
  EXPECT_EQ(Difference(DataTrace<WideTypes>(folder_), DataTrace<NarrowTypes>(folder_)), "");
}

// Random calls on two trees that must stay alike, step by step.
template <class W>
std::string RandomTrace(unsigned inSeed) {
  std::mt19937 random(inSeed);
  const auto pick = [&](const auto& choices) {
    return W::Text(choices[random() % std::size(choices)]);
  };
  const char* const paths[] = {"",    "/\u00e9", "/\u00e9/a", "a", "b",     "a/b",       "..",
                               "//b", "a[2]",    "a/@x",      "*", "/none", "b[\u00fc]", "["};
  const char* const names[] = {"a", "b", "\u00fc", "x", "1", "p:q"};
  const char* const values[] = {"", "1", "2.5x", "\u20ac", "\U0001F600\U00010000", "0x41", "<&>"};
  Trace<W> trace;
  typename W::Data tree(W::Text("<\u00e9/>"));
  for (int step = 0; step < 40; ++step) {
    const auto path = pick(paths);
    const auto name = pick(names);
    const auto value = pick(values);
    const std::string at = std::to_string(step);
    switch (random() % 14) {
      case 0:
        trace(at + " add", [&] { tree.AddData(value, path); });
        break;
      case 1:
        trace(at + " set", [&] { tree.SetData(value, path); });
        break;
      case 2:
        trace(at + " attr", [&] { tree.SetAttr(name, value, path); });
        break;
      case 3:
        trace(at + " child", [&] { tree.AddChildNode(name, path); });
        break;
      case 4:
        trace(at + " cursor", [&] { return tree.CursorTo(path); });
        break;
      case 5:
        trace(at + " remove", [&] { tree.RemoveData(path); });
        break;
      case 6:
        trace(at + " comment", [&] { tree.AddComment(value, path); });
        break;
      case 7:
        trace(at + " pi", [&] { tree.AddProcessingInstruction(name, value, path); });
        break;
      case 8:
        trace(at + " binary", [&] { tree.SetBinaryData(value, path); });
        break;
      case 9:
        trace(at + " root", [&] { return tree.CursorToRoot(); });
        break;
      case 10:
        trace(at + " down", [&] { return tree.CursorToFirstChild(); });
        break;
      case 11:
        trace(at + " get", [&] {
          typename W::String text = name;
          tree.GetData(text, path);
          return text;
        });
        break;
      case 12:
        trace(at + " get attr", [&] {
          typename W::String text = value;
          tree.GetAttr(name, text, path);
          return text;
        });
        break;
      default:
        trace(at + " number", [&] {
          double number = -1;
          tree.GetData(number, path);
          return number;
        });
    }
    trace(at, [&] { return tree.GetPath() + W::Text(" in ") + W::Text(Whole<W>(tree)); });
  }
  return trace.Text();
}

TEST_F(Agreement, RandomCalls) {
  for (unsigned seed = 0; seed < 150; ++seed)
    ASSERT_EQ(Difference(RandomTrace<WideTypes>(seed), RandomTrace<NarrowTypes>(seed)), "") << seed;
}

}  // namespace
}  // namespace quen::test

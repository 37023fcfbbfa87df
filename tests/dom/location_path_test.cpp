// SPDX-License-Identifier: Apache-2.0
// Selection, by hand: what a path selects, whoever evaluates it, and who does.
#include <gtest/gtest.h>

#include "tests/dom/xml_fixture.h"

namespace quen::tests {
namespace {

struct PathCase {
  const char* about;
  const char* path;
  const char* selected;
};

// Both ways, all nodes and the first alone. `context` is itself a path.
void Check(DOMNode& document, const char* context, const PathCase& each) {
  SCOPED_TRACE(std::string(each.path) + " at " + context + ": " + each.about);
  Nodes contexts;
  internal::SelectWithXalan(document, Wide(context), true, contexts);
  ASSERT_EQ(contexts.size(), 1u);
  DOMNode& node = *contexts.front();
  const std::u16string path = Wide(each.path);
  EXPECT_EQ(ShowDirect(node, path), each.selected);
  EXPECT_EQ(ShowXalan(node, path), each.selected);

  Nodes all;
  Nodes first;
  internal::SelectDirectly(node, path, false, all);
  internal::SelectDirectly(node, path, true, first);
  if (all.size() > 1) all.resize(1);
  EXPECT_EQ(Show(first), Show(all));
}

constexpr char kOrder[] =
    "<o xmlns:p='urn:p' xmlns:q='urn:p' i='0'>"
    "<b i='1' id='x' n='5'><c i='2'>one</c><d i='3'/></b>"
    "<b i='4' id='y' n='10'><c i='5'>two</c><c i='6'>3<e i='7'>4</e></c></b>"
    "<p:b i='8' p:id='z'><q:c i='9'/><c i='10' xmlns='urn:d'/></p:b>"
    "<b i='11' n='abc'/>"
    "</o>";

// A walk that has become long gives up when the document has no such name at all. Names that the
// parser made and names that came later lie in its table in different ways.
TEST(LocationPath, NamesThatALongWalkLooksFor) {
  std::string text = "<o xmlns:p='urn:p' xmlns:q='urn:q'>";
  for (int i = 0; i < 3000; ++i) text += "<f/>";
  text += "<p:last i='1' p:name='2'><p:inner i='3'/></p:last><plain i='4'/></o>";
  const Document document = Parse(text);
  xercesc::DOMElement* const root = document->getDocumentElement();
  xercesc::DOMElement* const made = document->createElementNS(u"urn:q", u"q:made");
  made->setAttribute(u"i", u"5");
  root->appendChild(made);
  xercesc::DOMElement* const late = document->createElement(u"late");
  late->setAttribute(u"i", u"6");
  made->appendChild(late);

  const PathCase cases[] = {
      {"a name of no namespace", "//plain", "plain#4"},
      {"one that nothing has", "//nothing", ""},
      {"a name with a prefix", "//p:last", "p:last#1"},
      {"by way of its parent", "//p:last/p:inner", "p:inner#3"},
      {"a parent that nothing has", "//p:nothing/p:inner", ""},
      {"a child that nothing has", "//p:last/p:nothing", ""},
      {"made later, with a prefix", "//q:made", "q:made#5"},
      {"made later, without one", "//q:made/late", "late#6"},
      {"a local name in another namespace", "//q:last", ""},
      {"one path of a union", "//nothing/x|//plain|//p:nothing/y", "plain#4"},
      {"no path of a union", "//nothing/x|//p:nothing/y", ""},
      {"an attribute", "//p:last/@p:name", "@p:name=2"},
      {"an attribute that nothing has", "//*/@nothing", ""},
      {"a name of the expression alone", "//f[nothing]", ""},
  };
  for (const PathCase& each : cases) Check(*document, "/", each);
}

TEST(LocationPath, StepsAndNames) {
  const PathCase cases[] = {
      {"the document", "/", "/"},
      {"the root element", "/o", "o#0"},
      {"a root of another name", "/b", ""},
      {"children", "/o/b", "b#1 b#4 b#11"},
      {"blanks between tokens", " / o / child :: b [ 2 ] ", "b#4"},
      {"a wildcard", "/o/*", "b#1 b#4 p:b#8 b#11"},
      {"a prefix of the document element", "/o/p:b", "p:b#8"},
      {"another prefix of the same namespace", "/o/q:b", "p:b#8"},
      {"every name of a namespace", "//p:*", "p:b#8 q:c#9"},
      {"no prefix is no namespace, whatever the default", "//c", "c#2 c#5 c#6"},
      {"descendants in document order", "//*",
       "o#0 b#1 c#2 d#3 b#4 c#5 c#6 e#7 p:b#8 q:c#9 c#10 b#11"},
      {"an attribute", "/o/b/@id", "@id=x @id=y"},
      {"all attributes but the declarations", "/o/@*", "@i=0"},
      {"an attribute with a prefix", "//@p:id", "@p:id=z"},
      {"node() of the attribute axis has no declarations", "/o/@node()", "@i=0"},
      {"from an attribute to its element", "//@id/..", "b#1 b#4"},
      {"an attribute has no children", "//@id/node()", ""},
      {"an attribute has no siblings", "//@id/following-sibling::node()", ""},
      {"parents once each", "//c/..", "b#1 b#4"},
      {"the parent of the root", "/..", ""},
      {"a node of its own", "/o/b[1]/.", "b#1"},
      {"below a step", "/o//c", "c#2 c#5 c#6"},
      {"two walks down, each node once", "//b//c", "c#2 c#5 c#6"},
      {"following siblings once each", "//b/following-sibling::b", "b#4 b#11"},
      {"preceding siblings in document order", "/o/b[3]/preceding-sibling::*", "b#1 b#4 p:b#8"},
      {"ancestors in document order", "//e/ancestor::*", "o#0 b#4 c#6"},
      {"ancestors of several", "//c/ancestor-or-self::*", "o#0 b#1 c#2 b#4 c#5 c#6"},
      {"the root among the ancestors", "//d/ancestor::node()", "/ o#0 b#1"},
      {"following", "//d/following::c", "c#5 c#6"},
      {"preceding leaves out ancestors", "//e/preceding::*", "b#1 c#2 d#3 c#5"},
      {"a test of self", "//*/self::d", "d#3"},
      {"a union in document order", "//d | /o/b | //c | /o/b[1]", "b#1 c#2 d#3 b#4 c#5 c#6 b#11"},
      {"a union of elements and attributes", "//b/@id | //b/c | //b",
       "b#1 @id=x c#2 b#4 @id=y c#5 c#6 b#11"},
      {"names like operators", "/o/div | /o/and | or | mod", ""},
  };
  const Document document = Parse(kOrder);
  for (const PathCase& each : cases) Check(*document, "/", each);
}

TEST(LocationPath, Predicates) {
  const PathCase cases[] = {
      {"a position", "/o/b[2]", "b#4"},
      {"a position among nodes of the name", "/o/*[3]", "p:b#8"},
      {"positions begin at 1", "/o/b[0]", ""},
      {"no position is a fraction", "/o/b[1.5]", ""},
      {"behind the last", "/o/b[4]", ""},
      {"the last", "/o/b[last()]", "b#11"},
      {"the last but one", "/o/b[last()-1]", "b#4"},
      {"by position()", "/o/b[position()>1]", "b#4 b#11"},
      {"every second", "/o/*[position() mod 2 = 0]", "b#4 b#11"},
      {"position of what is left", "/o/*[position()>1][2]", "p:b#8"},
      {"a position behind a condition", "/o/b[c][2]", "b#4"},
      {"a condition behind a position", "/o/b[2][d]", ""},
      {"last() of what is left", "/o/b[c][last()]/c[last()]", "c#6"},
      {"each parent counts", "//c[1]", "c#2 c#5"},
      {"and the whole path does not", "/descendant::c[2]", "c#5"},
      {"reverse axes count backwards", "/o/b[3]/preceding-sibling::*[1]", "p:b#8"},
      {"also the ancestors", "//e/ancestor::*[2]", "b#4"},
      {"existence of a child", "/o/b[d]", "b#1"},
      {"existence of a path", "/o/b[c/e]", "b#4"},
      {"an attribute equals", "/o/b[@id='y']/c", "c#5 c#6"},
      {"an attribute does not equal: without it there is no pair", "/o/b[@id!='y']", "b#1"},
      {"not() of a comparison", "/o/b[not(@id='y')]", "b#1 b#11"},
      {"a literal on the left", "/o/b['x'=@id]", "b#1"},
      {"the other quote", "/o/b[@id=\"x\"]", "b#1"},
      {"a number as a number", "/o/b[@n=5.0]", "b#1"},
      {"a number as a text", "/o/b[@n='5.0']", ""},
      {"greater compares numbers", "/o/b[@n > 5]", "b#4"},
      {"also when both are texts", "/o/b[@n > '5']", "b#4"},
      {"each literal has its own number", "/o/b[@n > '4' and @n < '6']", "b#1"},
      {"positions of the third predicate", "/o/b[@n][position()>1][position()>1]", "b#11"},
      {"and of its own list", "/o/b[@n != 5][position()!=1][position()>=2]", ""},
      {"mirrored", "/o/b[5 >= @n]", "b#1"},
      {"no number is less, equal or greater", "/o/b[@n<0 or @n=0 or @n>=0]", "b#1 b#4"},
      {"no number differs", "/o/b[@n != 5]", "b#4 b#11"},
      {"one of several children", "/o/b[c='two']", "b#4"},
      {"another of several children", "/o/b[c!='two']", "b#1 b#4"},
      {"the text of an element is that of its descendants", "//c[.='34']", "c#6"},
      {"as a number", "//c[.=34]", "c#6"},
      {"name() has the prefix", "/o/*[name()='p:b']", "p:b#8"},
      {"name() with !=", "/o/*[name()!='b']", "p:b#8"},
      {"local-name()", "//*[local-name()='c']", "c#2 c#5 c#6 q:c#9 c#10"},
      {"namespace-uri()", "//*[namespace-uri()='urn:d']", "c#10"},
      {"and, or", "/o/b[c and d or @n='abc']", "b#1 b#11"},
      {"and binds closer", "/o/b[@n='abc' or c and d]", "b#1 b#11"},
      {"brackets", "/o/b[(@n='abc' or c) and d]", "b#1"},
      {"count()", "/o/b[count(c)=2]", "b#4"},
      {"count() of nodes that meet", "/o/b[count(c/..)=1]", "b#1 b#4"},
      {"count() of a union", "/o/b[count(c|*)>2]", ""},
      {"an absolute path", "/o/b[/o/@i='0'][1]", "b#1"},
      {"two node sets", "//c[@i = ../@i]", ""},
      {"two node sets with a pair", "//*[@i > ../@i]",
       "b#1 c#2 d#3 b#4 c#5 c#6 e#7 p:b#8 q:c#9 c#10 b#11"},
      {"a nested predicate", "/o/b[c[e]]", "b#4"},
      {"a nested position", "/o/b[c[2]/e]", "b#4"},
      {"position() inside belongs to the inner step", "/o/b[c[position()=2]]", "b#4"},
      {"contains()", "//c[contains(., 'w')]", "c#5"},
      {"starts-with()", "/o/b[starts-with(@n, '1')]", "b#4"},
      {"string-length()", "//b[string-length(@n) = 3]", "b#11"},
      {"true() and false()", "/o/b[true()][not(false())][3]", "b#11"},
      {"a text is true when it is not empty", "/o/b['']", ""},
      {"a node set against a boolean", "/o/b[@id=true()]", "b#1 b#4"},
      {"a minus sign", "/o/b[-1 < @n]", "b#1 b#4"},
      {"arithmetic", "/o/b[@n * 2 - 10 = 10 div 1]", "b#4"},
      {"a divisor below zero", "//*[@i mod (0 - 3) = 1]", "b#1 b#4 e#7 c#10"},
      {"divisors within each other", "//*[@i mod (7 mod -(2 + 1)) = 0 and @i > 9]", "c#10 b#11"},
      {"divisors end at operators", "/o/b[@i mod @i * 2 + 1 = 1][@i mod - 2 = 1 or mod]",
       "b#1 b#11"},
  };
  const Document document = Parse(kOrder);
  for (const PathCase& each : cases) Check(*document, "/", each);
}

TEST(LocationPath, Contexts) {
  struct {
    const char* context;
    PathCase each;
  } const cases[] = {
      {"/o/b[2]", {"relative", "c", "c#5 c#6"}},
      {"/o/b[2]", {"itself", ".", "b#4"}},
      {"/o/b[2]", {"a sibling", "../b[3]", "b#11"}},
      {"/o/b[2]", {"absolute starts at the document", "/o/@i", "@i=0"}},
      {"/o/b[2]", {"below", ".//e", "e#7"}},
      {"/o/b[2]", {"everywhere", "//d", "d#3"}},
      {"/o/b[2]", {"absolute and relative", "c | /o/b | ../@i", "@i=0 b#1 b#4 c#5 c#6 b#11"}},
      {"/o/p:b/*[2]",
       {"prefixes of the document element, not of the context", "../p:c | ../q:c", "q:c#9"}},
      {"/o/b[2]/@n", {"an attribute: its element", "..", "b#4"}},
      {"/o/b[2]/@n", {"an attribute: itself", ".", "@n=10"}},
      {"/o/b[2]/@n", {"an attribute: itself by name", "self::n", ""}},
      {"/o/b[2]/@n", {"an attribute: others", "../@id", "@id=y"}},
      {"/o/b[2]/@n",
       {"an attribute: what follows", "following::*", "c#5 c#6 e#7 p:b#8 q:c#9 c#10 b#11"}},
      {"/o/b[2]/@n", {"an attribute: what precedes", "preceding::*", "b#1 c#2 d#3"}},
      {"/o/b[2]/@n", {"an attribute: ancestors", "ancestor-or-self::node()", "/ o#0 b#4 @n=10"}},
      {"/o/b[2]/c/text()", {"a text: its element", "../..", "b#4"}},
      {"/o/b[2]/c/text()", {"a text has no children", "node()", ""}},
      {"/o/b[2]/c/text()", {"a text: attributes", "@*", ""}},
  };
  const Document document = Parse(kOrder);
  for (const auto& each : cases) Check(*document, each.context, each.each);
}

TEST(LocationPath, KindsOfNodes) {
  const PathCase cases[] = {
      {"the document type is no node", "/node()", "<!--h--> a"},
      {"and has no position", "/node()[1]", "<!--h-->"},
      {"text and CDATA sections are text", "/a/text()", "'t' [c] 'u'"},
      {"with positions of their own", "/a/text()[2]", "[c]"},
      {"and counted alike", "/a[count(text())=3]", "a"},
      {"comments", "//comment()", "<!--h--> <!--m-->"},
      {"instructions", "//processing-instruction()", "<?p one?> <?q two?>"},
      {"instructions with a target", "//processing-instruction('q')", "<?q two?>"},
      {"instructions have a name", "//node()[name()='p']", "<?p one?>"},
      {"comments have none", "//comment()[name()='']", "<!--h--> <!--m-->"},
      {"the text of all kinds", "//node()[.='m' or .='two' or .='c']", "[c] <!--m--> <?q two?>"},
      {"the text of an element leaves comments out", "/a[.='tcu']", "a"},
      {"the text of the document", "/self::node()[.='tcu']", "/"},
      {"text by the attribute axis", "/a/@text()", ""},
  };
  const Document document =
      Parse("<!DOCTYPE a><!--h--><a>t<![CDATA[c]]>u<!--m--><?p one?><?q two?></a>");
  for (const PathCase& each : cases) Check(*document, "/", each);
}

// Nodes of DOM level 1 have neither local name nor namespace.
TEST(LocationPath, NodesWithoutNamespace) {
  const Document document = Parse("<a xmlns:p='urn:p'/>");
  xercesc::DOMElement* const root = document->getDocumentElement();
  for (const char16_t* const name : {u"b", u"p:b"}) {
    auto* const element = document->createElement(name);
    element->setAttribute(u"k", u"1");
    element->setAttribute(u"p:k", u"2");
    root->appendChild(element);
  }
  root->setAttribute(u"xmlns:r", u"urn:r");
  root->appendChild(document->createElementNS(u"urn:r", u"r:b"));
  const PathCase cases[] = {
      {"by name", "//b", "b"},
      {"a prefix in the name alone is no namespace", "//p:b", ""},
      {"name() is the whole name", "//*[name()='p:b']", "p:b"},
      {"and local-name() too", "//*[local-name()='p:b']", "p:b"},
      {"attributes by name", "//b/@k", "@k=1"},
      {"attributes with a prefix", "//@p:k", ""},
      {"any attribute", "//b/@*", "@k=1 @p:k=2"},
      {"a declaration made afterwards", "//r:b", "r:b"},
      {"is no attribute", "/a/@*", ""},
  };
  for (const PathCase& each : cases) Check(*document, "/", each);
}

// Texts that lie side by side stay apart in the DOM; the value of the element joins them.
TEST(LocationPath, AdjacentTexts) {
  const Document document = Parse("<a><b>12</b></a>");
  DOMNode* const b = document->getDocumentElement()->getFirstChild();
  b->appendChild(document->createTextNode(u"3"));
  b->appendChild(document->createTextNode(u""));
  const PathCase cases[] = {
      {"each a node", "//text()", "'12' '3' ''"},
      {"joined as a text", "//b[.='123']", "b"},
      {"joined as a number", "//b[.=123]", "b"},
      {"one of them", "//b[text()='3']", "b"},
      {"the first of them", "//b[string(text())='12']", "b"},
  };
  for (const PathCase& each : cases) Check(*document, "/", each);
}

TEST(LocationPath, DetachedTrees) {
  const Document document = Parse("<a><b/></a>");
  xercesc::DOMElement* const loose = document->createElement(u"x");
  loose->appendChild(document->createElement(u"y"))->appendChild(document->createElement(u"z"));
  loose->appendChild(document->createElement(u"y"));
  DOMNode& y = *loose->getFirstChild();
  for (const auto& [path, selected] : std::initializer_list<std::pair<const char*, const char*>>{
           {"z", "z"},
           {"..", "x"},
           {"ancestor::node()", "x"},
           {"../y", "y y"},
           {"/a/b", "b"},
           {"//z", ""},
       }) {
    EXPECT_EQ(ShowDirect(y, Wide(path)), selected) << path;
    EXPECT_EQ(ShowXalan(y, Wide(path)), selected) << path;
  }
  EXPECT_EQ(ShowXalan(y, u"(z|.|..)"), "x y z");
  DOMNode& attribute = *document->createAttribute(u"k");
  Nodes nodes;
  EXPECT_THROW(internal::SelectWithXalan(attribute, u"(following::*)", false, nodes),
               xercesc::DOMException);
  EXPECT_EQ(ShowXalan(attribute, u"(.)"), "@k=");
  loose->release();
}

TEST(LocationPath, Numbers) {
  struct {
    const char* text;
    const char* condition;
    bool holds;
  } const cases[] = {
      {" 5 ", ".=5", true},
      {"5.", ".=5", true},
      {".5", ".=0.5", true},
      {"-.5", ".=-0.5", true},
      {"05", ".=5", true},
      {"+5", ".=5", false},
      {"5e0", ".=5", false},
      {"0x5", ".=5", false},
      {"", ".=0", false},
      {"-", ".=0", false},
      {".", ".=0", false},
      {"5 5", ".>0", false},
      {"- 5", ".=-5", false},
      {"--5", ".=5", false},
      {"Infinity", ".>0", false},
      {"1.2.3", ".>0", false},
      {"-0", ".=0", true},
      {"0.1", ".=.1", true},
      {"123456789012345678", ".=123456789012345678", true},
      {"9007199254740993", ".=9007199254740992", true},
      {"0.30000000000000004", ".>0.3", true},
      {"\xc2\xa0"
       "5",
       ".=5", false},
  };
  for (const auto& each : cases) {
    const Document document = Parse(std::string("<a>") + each.text + "</a>");
    const std::u16string path = Wide(std::string("/a[") + each.condition + "]");
    EXPECT_EQ(ShowDirect(*document, path), each.holds ? "a" : "") << each.text << each.condition;
  }
}

// What the direct evaluator leaves to Xalan-C, wrong expressions among it.
TEST(LocationPath, Declines) {
  const Document document = Parse(kOrder);
  for (const char* const path : {"",
                                 " ",
                                 "/o/",
                                 "//",
                                 "/o//",
                                 "o[",
                                 "o]",
                                 "o[]",
                                 "o[1",
                                 "o[1]]",
                                 "/o/b[@id='x]",
                                 "u:b",
                                 "p:",
                                 ":b",
                                 "p : b",
                                 "@",
                                 "@@id",
                                 "o b",
                                 "/o/.[1]",
                                 "..[1]",
                                 "o/@id=",
                                 "$v",
                                 "id('x')",
                                 "count(b)",
                                 "1",
                                 "'x'",
                                 "b = 1",
                                 "child::",
                                 "foo::b",
                                 "b[foo()]",
                                 "b[position]()",
                                 "b['x'",
                                 "b[--1]",
                                 "b[1 = 1 = 1]",
                                 "text(",
                                 "node(1)",
                                 "comment('x')",
                                 "processing-instruction(x)",
                                 "namespace::*",
                                 "a/(b)",
                                 "b[1e3]",
                                 "o[p:]",
                                 "xmlns:b",
                                 "b[last]()",
                                 "/o/b[sum(c)=1]",
                                 "o|",
                                 "|o",
                                 "/o/b!=1",
                                 "a:b:c",
                                 "*:b",
                                 "p:node()"}) {
    EXPECT_EQ(ShowDirect(*document, Wide(path)), "declined") << path;
  }
}

// The parser takes more characters for names than Xalan-C does in an expression.
TEST(LocationPath, NamesBeyondAscii) {
  const Document document = Parse("<a><\xc3\xa9/><\xc4\xb2/></a>");
  EXPECT_EQ(ShowDirect(*document, u"/a/\u00e9"), "\\00e9");
  EXPECT_EQ(ShowXalan(*document, u"/a/\u00e9"), "\\00e9");
  EXPECT_EQ(ShowDirect(*document, u"/a/\u0132"), "declined");
  EXPECT_EQ(ShowXalan(*document, u"/a/\u0132"), "wrong");
}

TEST(LocationPath, EntityReferencesAreLeftToTheEngine) {
  const Document document =
      Parse("<!DOCTYPE a [<!ENTITY e 'x<b/>'>]><a><c/>&e;<d k='1'/></a>", true);
  EXPECT_EQ(ShowDirect(*document, u"//b"), "declined");
  EXPECT_EQ(ShowDirect(*document, u"/a/d"), "declined");
  EXPECT_EQ(ShowDirect(*document, u"/a[.='x']"), "declined");
  EXPECT_EQ(ShowDirect(*document, u"//d/preceding-sibling::c"), "declined");
  EXPECT_EQ(ShowDirect(*document, u"/a/c", true), "c");  // known before the reference is met
}

// The fixed paths of the message classes.
TEST(LocationPath, MessagePaths) {
  const Document document = Parse(
      "<SOAP-ENV:Envelope xmlns:SOAP-ENV='urn:any'><SOAP-ENV:Header>"
      "<Delivery i='1'/><QuenXMLMsg MsgType='CMD'/><MessageType/></SOAP-ENV:Header><SOAP-ENV:Body>"
      "<SOAP-ENV:Fault i='2'/><Query i='3'/></SOAP-ENV:Body></SOAP-ENV:Envelope>");
  const PathCase cases[] = {
      {"header", "//SOAP-ENV:Envelope/SOAP-ENV:Header", "SOAP-ENV:Header"},
      {"fault", "//SOAP-ENV:Envelope/SOAP-ENV:Body/SOAP-ENV:Fault", "SOAP-ENV:Fault#2"},
      {"body element", "//SOAP-ENV:Envelope/SOAP-ENV:Body/*[name()!='SOAP-ENV:Fault']", "Query#3"},
      {"delivery", "//SOAP-ENV:Envelope/SOAP-ENV:Header/Delivery", "Delivery#1"},
      {"absent", "//SOAP-ENV:Envelope/SOAP-ENV:Header/UserName", ""},
  };
  for (const PathCase& each : cases) Check(*document, "/", each);
}

}  // namespace
}  // namespace quen::tests

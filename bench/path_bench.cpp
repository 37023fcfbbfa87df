// SPDX-License-Identifier: Apache-2.0
//
// Paths over trees of 10, 1,000 and 100,000 siblings, against pugixml and libxml2, which compile
// their expression at each call as the library does, and against a plain walk over the bare DOM:
// the floor of a library that stands on it. What each selects is compared before it is timed.
//
// And the fixed paths of a message over an envelope of 5 MB, against its parse.
#include <benchmark/benchmark.h>
#include <quenxml2/quenxml2.h>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>
#include <vector>

#include "bench/orders.h"
#include "bench/peers.h"

namespace bench {
namespace {

using quen::CQuenXMLData2w;

void Require(bool inHolds, const std::string& inWhat) {
  if (!inHolds) Fail(inWhat.c_str());
}

// <a>7<b id='1'>1<c>1</c><d/></b><b id='2'>...</a>, in each library.
struct Tree {
  explicit Tree(std::size_t inSiblings) : siblings(inSiblings) {
    std::string text = "<a>7";
    for (std::size_t i = 1; i <= inSiblings; ++i) {
      const std::string n = std::to_string(i);
      text += "<b id='" + n + "'>" + n + "<c>" + n + "</c><d/></b>";
    }
    text += "</a>";
    data = ToUtf16(text);
    document.LoadXML(ToUtf16(text));
    xerces = ParseWithXerces(ToUtf16(text));
    pugixml = ParseWithPugixml(text);
    libxml = ParseWithLibxml(text);
    context.reset(xmlXPathNewContext(libxml.get()));
  }

  struct FreeContext {
    void operator()(xmlXPathContext* inContext) const { xmlXPathFreeContext(inContext); }
  };

  std::size_t siblings;
  CQuenXMLData2w data;
  quen::CQuenXMLDocument2w document;
  XercesDocument xerces;
  std::unique_ptr<pugi::xml_document> pugixml;
  LibxmlDocument libxml;
  std::unique_ptr<xmlXPathContext, FreeContext> context;
};

// Trees that are only read are made once; what changes one gets its own.
const std::shared_ptr<Tree>& TreeFor(std::size_t inSiblings) {
  static std::map<std::size_t, std::shared_ptr<Tree>> trees;
  std::shared_ptr<Tree>& tree = trees[inSiblings];
  if (tree == nullptr) tree = std::make_shared<Tree>(inSiblings);
  return tree;
}

// ---- libxml2, for which a context and its results are handled by hand

struct LibxmlNodes {
  LibxmlNodes(Tree& ioTree, xmlNode* inContext, const std::string& inPath) {
    ioTree.context->node = inContext;
    object = xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(inPath.c_str()),
                                    ioTree.context.get());
    if (object == nullptr) Fail("libxml2: no result");
  }
  ~LibxmlNodes() { xmlXPathFreeObject(object); }
  LibxmlNodes(const LibxmlNodes&) = delete;
  LibxmlNodes& operator=(const LibxmlNodes&) = delete;

  std::size_t size() const {
    return object->nodesetval == nullptr ? 0 : static_cast<std::size_t>(object->nodesetval->nodeNr);
  }
  xmlNode* operator[](std::size_t inIndex) const { return object->nodesetval->nodeTab[inIndex]; }

  xmlXPathObject* object;
};

// The first direct text, as the other two read it.
const char* LibxmlText(const xmlNode* inNode) {
  for (const xmlNode* child = inNode->children; child != nullptr; child = child->next)
    if (child->type == XML_TEXT_NODE) return reinterpret_cast<const char*>(child->content);
  return "";
}

xmlNode* LibxmlElement(xmlNode* inNode) {
  while (inNode != nullptr && inNode->type != XML_ELEMENT_NODE) inNode = inNode->next;
  return inNode;
}

// ---- one value

// Where a relative path begins.
enum class From { kDocument, kRoot, kFirst };

struct Read {
  const char* name;
  From from;
  const char* path;  // # is the number of the sibling in the middle
};

constexpr Read kReads[] = {
    {"Root", From::kDocument, "/a"},
    {"Nth", From::kDocument, "/a/b[#]/c"},
    {"ById", From::kDocument, "/a/b[@id='#']/c"},
    {"Child", From::kRoot, "b/c"},
    {"Sibling", From::kFirst, "../b[#]"},
    {"Descendant", From::kDocument, "//c"},
};

std::string PathOf(const Read& inRead, const Tree& inTree) {
  std::string path = inRead.path;
  const std::size_t place = path.find('#');
  if (place != std::string::npos) path.replace(place, 1, std::to_string(inTree.siblings / 2));
  return path;
}

void MoveCursor(Tree& ioTree, From inFrom) {
  ioTree.data.CursorToRoot();
  if (inFrom == From::kFirst) ioTree.data.CursorToFirstChild();
}
pugi::xml_node PugixmlContext(const Tree& inTree, From inFrom) {
  const pugi::xml_node root = inTree.pugixml->child("a");
  if (inFrom == From::kDocument) return *inTree.pugixml;
  return inFrom == From::kRoot ? root : root.child("b");
}
xmlNode* LibxmlContext(const Tree& inTree, From inFrom) {
  xmlNode* const root = xmlDocGetRootElement(inTree.libxml.get());
  if (inFrom == From::kDocument) return reinterpret_cast<xmlNode*>(inTree.libxml.get());
  return inFrom == From::kRoot ? root : LibxmlElement(root->children);
}

void RegisterRead(const Read& inRead, std::size_t inSiblings) {
  const std::string prefix = std::string("Read") + inRead.name;
  const std::string suffix = "/" + std::to_string(inSiblings);
  const auto shared = TreeFor(inSiblings);
  const std::string path = PathOf(inRead, *shared);
  const std::u16string wide = ToUtf16(path);
  const From from = inRead.from;

  const auto quen = [=] {
    std::int32_t value = 0;
    shared->data.GetData(value, wide);
    return value;
  };
  const auto pugixml = [=, context = PugixmlContext(*shared, from)] {
    return std::int32_t{context.select_node(path.c_str()).node().text().as_int()};
  };
  const auto libxml = [=, context = LibxmlContext(*shared, from)] {
    const LibxmlNodes nodes(*shared, context, path);
    return static_cast<std::int32_t>(std::strtol(LibxmlText(nodes[0]), nullptr, 10));
  };
  MoveCursor(*shared, from);
  const std::int32_t expected = pugixml();
  Require(expected > 0 && quen() == expected && libxml() == expected, "values differ: " + path);

  benchmark::RegisterBenchmark((prefix + "Quen" + suffix).c_str(), [=](benchmark::State& state) {
    MoveCursor(*shared, from);
    for (auto _ : state) benchmark::DoNotOptimize(quen());
  });
  benchmark::RegisterBenchmark((prefix + "Pugixml" + suffix).c_str(), [=](benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(pugixml());
  });
  benchmark::RegisterBenchmark((prefix + "Libxml" + suffix).c_str(), [=](benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(libxml());
  });
}

// ---- all nodes

using DomNodes = std::vector<xercesc::DOMNode*>;

bool IsNamed(const xercesc::DOMNode* inNode, const char16_t* inName) {
  return inNode->getNodeType() == xercesc::DOMNode::ELEMENT_NODE &&
         xercesc::XMLString::equals(inNode->getNodeName(), inName);
}

// /a/b/c and //c by hand.
void WalkPath(xercesc::DOMNode* inRoot, DomNodes& outNodes) {
  for (xercesc::DOMNode* b = inRoot->getFirstChild(); b != nullptr; b = b->getNextSibling()) {
    if (!IsNamed(b, u"b")) continue;
    for (xercesc::DOMNode* c = b->getFirstChild(); c != nullptr; c = c->getNextSibling())
      if (IsNamed(c, u"c")) outNodes.push_back(c);
  }
}
void WalkDescendants(xercesc::DOMNode* inNode, DomNodes& outNodes) {
  for (xercesc::DOMNode* node = inNode->getFirstChild(); node; node = node->getNextSibling()) {
    if (IsNamed(node, u"c")) outNodes.push_back(node);
    WalkDescendants(node, outNodes);
  }
}

void RegisterSelect(const char* inName, const std::string& inPath,
                    void (*inWalk)(xercesc::DOMNode*, DomNodes&), std::size_t inSiblings) {
  const std::string prefix = std::string("Select") + inName;
  const std::string suffix = "/" + std::to_string(inSiblings);
  const auto shared = TreeFor(inSiblings);
  const std::u16string wide = ToUtf16(inPath);

  const auto quen = [=] { return shared->document.SelectNodes(wide); };
  const auto pugixml = [=] { return shared->pugixml->select_nodes(inPath.c_str()); };
  const auto libxml = [=] {
    return std::make_unique<LibxmlNodes>(*shared, reinterpret_cast<xmlNode*>(shared->libxml.get()),
                                         inPath);
  };
  const auto xerces = [=] {
    DomNodes nodes;
    inWalk(shared->xerces->getDocumentElement(), nodes);
    return nodes;
  };
  const auto ours = quen();
  const auto theirs = pugixml();
  const auto others = libxml();
  Require(ours.size() == inSiblings && theirs.size() == inSiblings &&
              others->size() == inSiblings && xerces().size() == inSiblings,
          "selections differ in size: " + inPath);
  for (std::size_t i = 0; i < inSiblings; ++i) {
    const std::string text = theirs[i].node().text().get();
    Require(text == std::to_string(i + 1) && ours[i].GetValue() == ToUtf16(text) &&
                text == LibxmlText((*others)[i]),
            "selections differ: " + inPath);
  }

  const auto add = [&](const char* inLibrary, auto inSelect) {
    benchmark::RegisterBenchmark((prefix + inLibrary + suffix).c_str(),
                                 [=](benchmark::State& state) {
                                   for (auto _ : state) benchmark::DoNotOptimize(inSelect());
                                 });
  };
  add("Quen", quen);
  add("Pugixml", pugixml);
  add("Libxml", libxml);
  add("Xerces", xerces);
}

// ---- writing

// Writes the middle sibling's value, and adds children to it.
void RegisterWrites(std::size_t inSiblings) {
  const std::string suffix = "/" + std::to_string(inSiblings);
  const std::string parent = "/a/b[" + std::to_string(inSiblings / 2) + "]";
  const std::string child = parent + "/c";
  const std::u16string wideChild = ToUtf16(child);
  const std::u16string wideNew = ToUtf16(parent + "/e");

  const auto setQuen = [=](Tree& tree, int value) {
    tree.data.SetData(std::int32_t{value}, wideChild);
  };
  const auto setPugixml = [=](Tree& tree, int value) {
    tree.pugixml->select_node(child.c_str()).node().text().set(value);
  };
  const auto setLibxml = [=](Tree& tree, int value) {
    const LibxmlNodes nodes(tree, reinterpret_cast<xmlNode*>(tree.libxml.get()), child);
    xmlNodeSetContent(nodes[0], reinterpret_cast<const xmlChar*>(std::to_string(value).c_str()));
  };
  const auto addQuen = [=](Tree& tree, int value) {
    tree.data.AddData(std::int32_t{value}, wideNew);
  };
  const auto addPugixml = [=](Tree& tree, int value) {
    tree.pugixml->select_node(parent.c_str()).node().append_child("e").text().set(value);
  };
  const auto addLibxml = [=](Tree& tree, int value) {
    const LibxmlNodes nodes(tree, reinterpret_cast<xmlNode*>(tree.libxml.get()), parent);
    xmlNewChild(nodes[0], nullptr, reinterpret_cast<const xmlChar*>("e"),
                reinterpret_cast<const xmlChar*>(std::to_string(value).c_str()));
  };

  Tree check(10);
  if (inSiblings == 10) {
    for (int value = 100; value < 103; ++value) {
      setQuen(check, value);
      setPugixml(check, value);
      setLibxml(check, value);
      addQuen(check, value);
      addPugixml(check, value);
      addLibxml(check, value);
    }
    std::string text;
    check.data.GetUTF8Subset(text);
    const std::string reference = DumpWithLibxml(check.libxml);
    Require(DumpWithLibxml(ParseWithLibxml(text)) == reference &&
                DumpWithLibxml(ParseWithLibxml(DumpWithPugixml(*check.pugixml))) == reference,
            "trees differ after writing");
  }

  // A tree of its own, and a fixed number of writes, since additions stay in it.
  const benchmark::IterationCount count = inSiblings > 10000 ? 200 : 10000;
  const auto add = [&](const char* inName, auto inWrite) {
    benchmark::RegisterBenchmark((inName + suffix).c_str(), [=](benchmark::State& state) {
      Tree tree(inSiblings);
      int value = 0;
      for (auto _ : state) inWrite(tree, ++value);
    })->Iterations(count);
  };
  add("SetDataQuen", setQuen);
  add("SetDataPugixml", setPugixml);
  add("SetDataLibxml", setLibxml);
  add("AddDataQuen", addQuen);
  add("AddDataPugixml", addPugixml);
  add("AddDataLibxml", addLibxml);
}

// ---- the parts of a message

constexpr const char16_t* kFields[] = {u"Delivery",      u"QuenXMLMsg", u"MessageType",
                                       u"TransactionID", u"UserName",   u"HostName"};

std::vector<std::u16string> EnvelopePaths() {
  const std::u16string header = u"//SOAP-ENV:Envelope/SOAP-ENV:Header";
  const std::u16string body = u"//SOAP-ENV:Envelope/SOAP-ENV:Body";
  std::vector<std::u16string> paths = {header, body, body + u"/SOAP-ENV:Fault",
                                       body + u"/*[name()!='SOAP-ENV:Fault']"};
  for (const char16_t* const field : kFields) paths.push_back(header + u"/" + field);
  return paths;
}

// An order of 5 MB in an envelope, with all the parts that the paths find, or with a body alone.
std::u16string Envelope(bool inWithParts) {
  std::u16string text =
      u"<SOAP-ENV:Envelope xmlns:SOAP-ENV='http://schemas.xmlsoap.org/soap/envelope'>";
  if (inWithParts) {
    text += u"<SOAP-ENV:Header>";
    for (const std::u16string field : kFields) text += u"<" + field + u">x</" + field + u">";
    text += u"</SOAP-ENV:Header>";
  }
  text += u"<SOAP-ENV:Body>" + ToUtf16(OrdersUtf8(175000));
  if (inWithParts) text += u"<SOAP-ENV:Fault><faultcode>1</faultcode></SOAP-ENV:Fault>";
  return text + u"</SOAP-ENV:Body></SOAP-ENV:Envelope>";
}

void RegisterEnvelope(const std::string& inName, bool inWithParts) {
  const std::u16string text = Envelope(inWithParts);
  const std::vector<std::u16string> paths = EnvelopePaths();
  const auto document = std::make_shared<quen::CQuenXMLDocument2w>();
  document->LoadXML(text);
  const auto find = [=] {
    std::size_t found = 0;
    const quen::QuenXMLDOMNode2w_NullPtr* const null = nullptr;
    for (const std::u16string& path : paths) found += document->SelectSingleNode(path) != null;
    return found;
  };
  Require(find() == (inWithParts ? 10 : 2), "parts of an envelope");
  Require(text.size() > 4'800'000 && text.size() < 5'300'000, "size of an envelope");

  benchmark::RegisterBenchmark((inName + "ParseQuen/5MB").c_str(), [=](benchmark::State& state) {
    for (auto _ : state) {
      quen::CQuenXMLDocument2w fresh;
      fresh.LoadXML(text);
      benchmark::DoNotOptimize(fresh);
    }
  })->Unit(benchmark::kMicrosecond);
  benchmark::RegisterBenchmark((inName + "PathsQuen/5MB").c_str(), [=](benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(find());
  })->Unit(benchmark::kMicrosecond);
}

void RegisterAll() {
  for (const std::size_t siblings : {std::size_t{10}, std::size_t{1000}, std::size_t{100000}}) {
    for (const Read& read : kReads) RegisterRead(read, siblings);
    RegisterSelect("Path", "/a/b/c", WalkPath, siblings);
    RegisterSelect("Descendants", "//c", WalkDescendants, siblings);
    RegisterWrites(siblings);
  }
  RegisterEnvelope("WholeEnvelope", true);
  RegisterEnvelope("BareEnvelope", false);
}

}  // namespace
}  // namespace bench

int main(int inCount, char** inArguments) {
  benchmark::Initialize(&inCount, inArguments);
  if (benchmark::ReportUnrecognizedArguments(inCount, inArguments)) return 2;
  try {
    bench::RegisterAll();
  } catch (const std::exception& failure) {
    std::cerr << "path_bench: " << failure.what() << "\n";
    return 1;
  }
  benchmark::RunSpecifiedBenchmarks();
}

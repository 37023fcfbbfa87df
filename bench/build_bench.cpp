// SPDX-License-Identifier: Apache-2.0
//
// Building trees, walking over them, and binary values. The trees that the libraries build are
// compared before anything is timed.
//
// CreateNodes looks for each segment among the children that are there, by its meaning, so it
// builds what is linear: one long path, and a tree in which no element has more than 100 children.
#include <benchmark/benchmark.h>
#include <quenxml2/quenxml2.h>

#include <functional>
#include <iostream>
#include <vector>

#include "bench/orders.h"
#include "bench/peers.h"

namespace bench {
namespace {

using quen::CQuenXMLData2w;

void Require(bool inHolds, const std::string& inWhat) {
  if (!inHolds) Fail(inWhat.c_str());
}

CQuenXMLData2w NewTree() {
  CQuenXMLData2w tree;
  tree.AddRootNode(u"a");
  return tree;
}
std::unique_ptr<pugi::xml_document> NewPugixml() {
  auto document = std::make_unique<pugi::xml_document>();
  document->append_child("a");
  return document;
}
const xmlChar* X(const char* inText) { return reinterpret_cast<const xmlChar*>(inText); }
LibxmlDocument NewLibxml() {
  LibxmlDocument document(xmlNewDoc(X("1.0")));
  xmlDocSetRootElement(document.get(), xmlNewNode(nullptr, X("a")));
  return document;
}

// Children by name under the element at hand.

CQuenXMLData2w ChildNodesQuen(int inCount) {
  CQuenXMLData2w tree = NewTree();
  for (int i = 0; i < inCount; ++i) tree.AddChildNode(u"b", u"");
  return tree;
}
std::unique_ptr<pugi::xml_document> ChildNodesPugixml(int inCount) {
  auto document = NewPugixml();
  pugi::xml_node root = document->first_child();
  for (int i = 0; i < inCount; ++i) root.append_child("b");
  return document;
}
LibxmlDocument ChildNodesLibxml(int inCount) {
  LibxmlDocument document = NewLibxml();
  xmlNode* const root = xmlDocGetRootElement(document.get());
  for (int i = 0; i < inCount; ++i) xmlNewChild(root, nullptr, X("b"), nullptr);
  return document;
}

// In the bare engine: the floor of a library that stands on it.
XercesDocument ChildNodesXerces(int inCount) {
  XercesDocument document(
      xercesc::DOMImplementation::getImplementation()->createDocument(nullptr, u"a", nullptr));
  xercesc::DOMElement* const root = document->getDocumentElement();
  for (int i = 0; i < inCount; ++i) root->appendChild(document->createElement(u"b"));
  return document;
}

// The same with a path to the parent.

CQuenXMLData2w ChildNodesByPathQuen(int inCount) {
  CQuenXMLData2w tree = NewTree();
  for (int i = 0; i < inCount; ++i) tree.AddChildNode(u"b", u"/a");
  return tree;
}
std::unique_ptr<pugi::xml_document> ChildNodesByPathPugixml(int inCount) {
  auto document = NewPugixml();
  for (int i = 0; i < inCount; ++i) document->select_node("/a").node().append_child("b");
  return document;
}
LibxmlDocument ChildNodesByPathLibxml(int inCount) {
  LibxmlDocument document = NewLibxml();
  for (int i = 0; i < inCount; ++i)
    xmlNewChild(SelectWithLibxml(document, "/a"), nullptr, X("b"), nullptr);
  return document;
}

// Values by path.

CQuenXMLData2w AddDataQuen(int inCount) {
  CQuenXMLData2w tree = NewTree();
  for (int i = 0; i < inCount; ++i) tree.AddData(std::int32_t{i}, u"/a/b");
  return tree;
}
std::unique_ptr<pugi::xml_document> AddDataPugixml(int inCount) {
  auto document = NewPugixml();
  for (int i = 0; i < inCount; ++i)
    document->select_node("/a").node().append_child("b").text().set(i);
  return document;
}
LibxmlDocument AddDataLibxml(int inCount) {
  LibxmlDocument document = NewLibxml();
  for (int i = 0; i < inCount; ++i) {
    xmlNewChild(SelectWithLibxml(document, "/a"), nullptr, X("b"), X(std::to_string(i).c_str()));
  }
  return document;
}

// Creation paths /a/g<i>/h<j>/b<k>, of which each makes one leaf; and what a program would write
// that has none.

constexpr int kGroup = 100;
std::vector<std::string> Segments(int inNumber) {
  return {"g" + std::to_string(inNumber / (kGroup * kGroup)),
          "h" + std::to_string(inNumber / kGroup % kGroup),
          "b" + std::to_string(inNumber % kGroup)};
}
CQuenXMLData2w CreateWideQuen(int inCount) {
  CQuenXMLData2w tree = NewTree();
  for (int i = 0; i < inCount; ++i) {
    std::string path = "/a";
    for (const std::string& segment : Segments(i)) path += "/" + segment;
    tree.CreateNodes(ToUtf16(path));
  }
  return tree;
}
std::unique_ptr<pugi::xml_document> CreateWidePugixml(int inCount) {
  auto document = NewPugixml();
  for (int i = 0; i < inCount; ++i) {
    pugi::xml_node node = document->first_child();
    for (const std::string& segment : Segments(i)) {
      pugi::xml_node child = node.child(segment.c_str());
      node = child ? child : node.append_child(segment.c_str());
    }
  }
  return document;
}
LibxmlDocument CreateWideLibxml(int inCount) {
  LibxmlDocument document = NewLibxml();
  for (int i = 0; i < inCount; ++i) {
    xmlNode* node = xmlDocGetRootElement(document.get());
    for (const std::string& segment : Segments(i)) {
      xmlNode* child = node->children;
      while (child != nullptr && !xmlStrEqual(child->name, X(segment.c_str()))) child = child->next;
      node = child != nullptr ? child : xmlNewChild(node, nullptr, X(segment.c_str()), nullptr);
    }
  }
  return document;
}

// One path of so many segments.

CQuenXMLData2w CreateDeepQuen(int inCount) {
  CQuenXMLData2w tree = NewTree();
  std::u16string path = u"/a";
  for (int i = 0; i < inCount; ++i) path += u"/b";
  tree.CreateNodes(path);
  return tree;
}
std::unique_ptr<pugi::xml_document> CreateDeepPugixml(int inCount) {
  auto document = NewPugixml();
  pugi::xml_node node = document->first_child();
  for (int i = 0; i < inCount; ++i) node = node.append_child("b");
  return document;
}
LibxmlDocument CreateDeepLibxml(int inCount) {
  LibxmlDocument document = NewLibxml();
  xmlNode* node = xmlDocGetRootElement(document.get());
  for (int i = 0; i < inCount; ++i) node = xmlNewChild(node, nullptr, X("b"), nullptr);
  return document;
}

// A walk over all children that looks at each one's name.

constexpr int kWalked = 100000;

void WalkQuen(benchmark::State& ioState) {
  CQuenXMLData2w tree = ChildNodesQuen(static_cast<int>(ioState.range(0)));
  quen::CQuenXMLElement2w root(tree.GetCursor());
  for (auto _ : ioState) {
    std::size_t length = 0;
    for (quen::CQuenXMLElement2w& child : root) length += child.GetName().size();
    benchmark::DoNotOptimize(length);
  }
}
void WalkPugixml(benchmark::State& ioState) {
  const auto document = ChildNodesPugixml(static_cast<int>(ioState.range(0)));
  for (auto _ : ioState) {
    std::size_t length = 0;
    for (const pugi::xml_node child : document->first_child().children())
      length += std::string(child.name()).size();
    benchmark::DoNotOptimize(length);
  }
}
void WalkLibxml(benchmark::State& ioState) {
  const LibxmlDocument document = ChildNodesLibxml(static_cast<int>(ioState.range(0)));
  for (auto _ : ioState) {
    std::size_t length = 0;
    for (const xmlNode* child = xmlDocGetRootElement(document.get())->children; child != nullptr;
         child = child->next) {
      length += std::string(reinterpret_cast<const char*>(child->name)).size();
    }
    benchmark::DoNotOptimize(length);
  }
}

// Binary values.

const std::vector<unsigned char>& Bytes() {
  static const std::vector<unsigned char> bytes = [] {
    std::vector<unsigned char> made(10'000'000);
    std::uint32_t state = 1;
    for (unsigned char& byte : made) {
      state = state * 1664525 + 1013904223;
      byte = static_cast<unsigned char>(state >> 24);
    }
    return made;
  }();
  return bytes;
}

void SetBinaryQuen(benchmark::State& ioState) {
  CQuenXMLData2w tree = NewTree();
  const std::vector<unsigned char>& bytes = Bytes();
  for (auto _ : ioState)
    tree.SetBinaryData(bytes.data(), static_cast<std::uint32_t>(bytes.size()), u"/a");
  ioState.SetBytesProcessed(ioState.iterations() * static_cast<std::int64_t>(bytes.size()));
}
void GetBinaryQuen(benchmark::State& ioState) {
  CQuenXMLData2w tree = NewTree();
  tree.SetBinaryData(Bytes().data(), static_cast<std::uint32_t>(Bytes().size()), u"/a");
  std::vector<unsigned char> bytes(Bytes().size());
  for (auto _ : ioState) {
    std::uint32_t length = static_cast<std::uint32_t>(bytes.size());
    tree.GetBinaryData(bytes.data(), length, u"/a");
    benchmark::DoNotOptimize(length);
  }
  Require(bytes == Bytes(), "binary values differ");
  ioState.SetBytesProcessed(ioState.iterations() * static_cast<std::int64_t>(bytes.size()));
}
BENCHMARK(SetBinaryQuen)->Unit(benchmark::kMillisecond);
BENCHMARK(GetBinaryQuen)->Unit(benchmark::kMillisecond);
BENCHMARK(WalkQuen)->Arg(kWalked)->Unit(benchmark::kMicrosecond);
BENCHMARK(WalkPugixml)->Arg(kWalked)->Unit(benchmark::kMicrosecond);
BENCHMARK(WalkLibxml)->Arg(kWalked)->Unit(benchmark::kMicrosecond);

template <class Build>
void Add(const std::string& inName, Build inBuild) {
  benchmark::RegisterBenchmark(
      inName.c_str(),
      [=](benchmark::State& state) {
        for (auto _ : state) benchmark::DoNotOptimize(inBuild(static_cast<int>(state.range(0))));
      })
      ->Arg(10000)
      ->Arg(100000)
      ->Unit(benchmark::kMicrosecond);
}

// Registers the three ways of a job, after they have built the same.
template <class Quen, class Pugixml, class Libxml>
void Register(const std::string& inJob, Quen inQuen, Pugixml inPugixml, Libxml inLibxml) {
  constexpr int kChecked = 500;
  std::string text;
  inQuen(kChecked).GetUTF8Subset(text);
  const std::string reference = DumpWithLibxml(inLibxml(kChecked));
  const auto canonical = [](const std::string& inText) {
    return DumpWithLibxml(ParseWithLibxml(inText));
  };
  Require(canonical(text) == canonical(reference), inJob + ": differs from libxml2");
  Require(canonical(DumpWithPugixml(*inPugixml(kChecked))) == canonical(reference),
          inJob + ": pugixml differs from libxml2");
  Add(inJob + "Quen", inQuen);
  Add(inJob + "Pugixml", inPugixml);
  Add(inJob + "Libxml", inLibxml);
}

void RegisterAll() {
  Register("BuildChildNodes", ChildNodesQuen, ChildNodesPugixml, ChildNodesLibxml);
  Add("BuildChildNodesXerces", ChildNodesXerces);
  Register("BuildChildNodesByPath", ChildNodesByPathQuen, ChildNodesByPathPugixml,
           ChildNodesByPathLibxml);
  Register("BuildAddData", AddDataQuen, AddDataPugixml, AddDataLibxml);
  Register("BuildCreateWide", CreateWideQuen, CreateWidePugixml, CreateWideLibxml);
  Register("BuildCreateDeep", CreateDeepQuen, CreateDeepPugixml, CreateDeepLibxml);
}

}  // namespace
}  // namespace bench

int main(int inCount, char** inArguments) {
  benchmark::Initialize(&inCount, inArguments);
  if (benchmark::ReportUnrecognizedArguments(inCount, inArguments)) return 2;
  try {
    bench::RegisterAll();
    benchmark::RunSpecifiedBenchmarks();
  } catch (const std::exception& failure) {
    std::cerr << "build_bench: " << failure.what() << "\n";
    return 1;
  }
}

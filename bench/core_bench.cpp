// SPDX-License-Identifier: Apache-2.0
//
// Loading, writing, and one value by path, against the bare engine, pugixml and libxml2 on the same
// data in the same run. That all give the same is checked before anything is timed.
//
// bench/run runs this and turns the times into ratios.
#include <benchmark/benchmark.h>
#include <quenxml2/quenxml2.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>

#include <unistd.h>

#include "bench/orders.h"
#include "bench/peers.h"

namespace bench {
namespace {

using quen::CQuenXMLData2w;
using quen::CQuenXMLDocument2w;

// One text, and the trees that it gives, made when they are first asked for.
struct Case {
  explicit Case(std::size_t inElements) : utf8(OrdersUtf8(inElements)), wide(ToUtf16(utf8)) {
    char pattern[] = "/tmp/quen-bench-XXXXXX";
    const int descriptor = ::mkstemp(pattern);
    if (descriptor < 0) Fail("no temporary file");
    ::close(descriptor);
    path = pattern;
    std::ofstream(path, std::ios::binary) << utf8;
    // An order in the middle.
    order = (inElements / kElementsPerOrder) / 2;
    price = std::to_string(order % 1000) + "." + std::to_string(order % 10);
    narrowPath = "/orders/order[" + std::to_string(order) + "]/item[2]/price";
    widePath = ToUtf16(narrowPath);
  }
  ~Case() { std::filesystem::remove(path); }
  Case(const Case&) = delete;
  Case& operator=(const Case&) = delete;

  std::string utf8;
  std::u16string wide;
  std::filesystem::path path;
  std::size_t order = 0;
  std::string price;
  std::string narrowPath;
  std::u16string widePath;
};

Case& CaseOf(const benchmark::State& inState) {
  static std::map<std::int64_t, Case> cases;
  return cases.try_emplace(inState.range(0), static_cast<std::size_t>(inState.range(0)))
      .first->second;
}

void Count(benchmark::State& ioState) {
  ioState.SetItemsProcessed(ioState.iterations() * ioState.range(0));
}

// The price on the bare DOM: what a program would write that knows its document. The order is found
// by counting elements, as the path says.
xercesc::DOMElement* NthChild(xercesc::DOMNode* inParent, const char16_t* inName, std::size_t inN) {
  for (xercesc::DOMNode* node = inParent->getFirstChild(); node != nullptr;
       node = node->getNextSibling()) {
    if (node->getNodeType() == xercesc::DOMNode::ELEMENT_NODE &&
        xercesc::XMLString::equals(node->getNodeName(), inName) && --inN == 0) {
      return static_cast<xercesc::DOMElement*>(node);
    }
  }
  Fail("Xerces-C: no node");
}

xercesc::DOMElement* WalkToPrice(const XercesDocument& inDocument, std::size_t inOrder) {
  xercesc::DOMElement* const order = NthChild(inDocument->getDocumentElement(), u"order", inOrder);
  return NthChild(NthChild(order, u"item", 2), u"price", 1);
}

// Loading.

void LoadTextQuen(benchmark::State& ioState) {
  const Case& data = CaseOf(ioState);
  for (auto _ : ioState) {
    CQuenXMLDocument2w document;
    document.LoadXML(data.wide);
    benchmark::DoNotOptimize(document);
  }
  Count(ioState);
}
void LoadTextXerces(benchmark::State& ioState) {
  const Case& data = CaseOf(ioState);
  for (auto _ : ioState) benchmark::DoNotOptimize(ParseWithXerces(data.wide));
  Count(ioState);
}
void LoadTextPugixml(benchmark::State& ioState) {
  const Case& data = CaseOf(ioState);
  for (auto _ : ioState) benchmark::DoNotOptimize(ParseWithPugixml(data.utf8));
  Count(ioState);
}
void LoadTextLibxml(benchmark::State& ioState) {
  const Case& data = CaseOf(ioState);
  for (auto _ : ioState) benchmark::DoNotOptimize(ParseWithLibxml(data.utf8));
  Count(ioState);
}

void LoadFileQuen(benchmark::State& ioState) {
  const std::u16string path = CaseOf(ioState).path.u16string();
  for (auto _ : ioState) {
    CQuenXMLData2w tree;
    tree.ReadFromFile(path);
    benchmark::DoNotOptimize(tree);
  }
  Count(ioState);
}
void LoadFileXerces(benchmark::State& ioState) {
  const std::u16string path = CaseOf(ioState).path.u16string();
  for (auto _ : ioState) benchmark::DoNotOptimize(ParseFileWithXerces(path));
  Count(ioState);
}

// Writing.

void WriteWideQuen(benchmark::State& ioState) {
  CQuenXMLDocument2w document;
  document.LoadXML(CaseOf(ioState).wide);
  for (auto _ : ioState) benchmark::DoNotOptimize(document.GetSubset());
  Count(ioState);
}
void WriteUtf8Quen(benchmark::State& ioState) {
  CQuenXMLDocument2w document;
  document.LoadXML(CaseOf(ioState).wide);
  for (auto _ : ioState) benchmark::DoNotOptimize(document.GetUTF8Subset());
  Count(ioState);
}
void WriteUtf8Libxml(benchmark::State& ioState) {
  const LibxmlDocument document = ParseWithLibxml(CaseOf(ioState).utf8);
  for (auto _ : ioState) benchmark::DoNotOptimize(DumpWithLibxml(document));
  Count(ioState);
}
void WriteUtf8Pugixml(benchmark::State& ioState) {
  const auto document = ParseWithPugixml(CaseOf(ioState).utf8);
  for (auto _ : ioState) benchmark::DoNotOptimize(DumpWithPugixml(*document));
  Count(ioState);
}

// One value by path, read as a number.

void ReadPathQuen(benchmark::State& ioState) {
  const Case& data = CaseOf(ioState);
  const CQuenXMLData2w tree(data.wide);
  for (auto _ : ioState) {
    double price = 0;
    tree.GetData(price, data.widePath);
    benchmark::DoNotOptimize(price);
  }
}
void ReadPathXerces(benchmark::State& ioState) {
  const Case& data = CaseOf(ioState);
  const XercesDocument document = ParseWithXerces(data.wide);
  for (auto _ : ioState) {
    const char16_t* const text = WalkToPrice(document, data.order)->getFirstChild()->getNodeValue();
    const std::string narrow(text, text + xercesc::XMLString::stringLen(text));
    benchmark::DoNotOptimize(std::strtod(narrow.c_str(), nullptr));
  }
}
void ReadPathPugixml(benchmark::State& ioState) {
  const Case& data = CaseOf(ioState);
  const auto document = ParseWithPugixml(data.utf8);
  for (auto _ : ioState) {
    benchmark::DoNotOptimize(
        document->select_node(data.narrowPath.c_str()).node().text().as_double());
  }
}
void ReadPathLibxml(benchmark::State& ioState) {
  const Case& data = CaseOf(ioState);
  const LibxmlDocument document = ParseWithLibxml(data.utf8);
  for (auto _ : ioState) {
    const xmlNode* const node = SelectWithLibxml(document, data.narrowPath.c_str());
    benchmark::DoNotOptimize(
        std::strtod(reinterpret_cast<const char*>(node->children->content), nullptr));
  }
}

// One value by path, written as an integer.

void WritePathQuen(benchmark::State& ioState) {
  const Case& data = CaseOf(ioState);
  CQuenXMLData2w tree(data.wide);
  std::int32_t value = 0;
  for (auto _ : ioState) tree.SetData(++value, data.widePath);
}
void WritePathXerces(benchmark::State& ioState) {
  const Case& data = CaseOf(ioState);
  const XercesDocument document = ParseWithXerces(data.wide);
  std::int32_t value = 0;
  for (auto _ : ioState) {
    WalkToPrice(document, data.order)
        ->getFirstChild()
        ->setNodeValue(ToUtf16(std::to_string(++value)).c_str());
  }
}
void WritePathPugixml(benchmark::State& ioState) {
  const Case& data = CaseOf(ioState);
  const auto document = ParseWithPugixml(data.utf8);
  std::int32_t value = 0;
  for (auto _ : ioState) document->select_node(data.narrowPath.c_str()).node().text().set(++value);
}
void WritePathLibxml(benchmark::State& ioState) {
  const Case& data = CaseOf(ioState);
  const LibxmlDocument document = ParseWithLibxml(data.utf8);
  std::int32_t value = 0;
  for (auto _ : ioState) {
    xmlNodeSetContent(SelectWithLibxml(document, data.narrowPath.c_str()),
                      reinterpret_cast<const xmlChar*>(std::to_string(++value).c_str()));
  }
}

#define SIZES RangeMultiplier(10)->Range(10000, 1000000)
BENCHMARK(LoadTextQuen)->SIZES->Unit(benchmark::kMillisecond);
BENCHMARK(LoadTextXerces)->SIZES->Unit(benchmark::kMillisecond);
BENCHMARK(LoadTextPugixml)->SIZES->Unit(benchmark::kMillisecond);
BENCHMARK(LoadTextLibxml)->SIZES->Unit(benchmark::kMillisecond);
BENCHMARK(LoadFileQuen)->SIZES->Unit(benchmark::kMillisecond);
BENCHMARK(LoadFileXerces)->SIZES->Unit(benchmark::kMillisecond);
BENCHMARK(WriteWideQuen)->SIZES->Unit(benchmark::kMillisecond);
BENCHMARK(WriteUtf8Quen)->SIZES->Unit(benchmark::kMillisecond);
BENCHMARK(WriteUtf8Libxml)->SIZES->Unit(benchmark::kMillisecond);
BENCHMARK(WriteUtf8Pugixml)->SIZES->Unit(benchmark::kMillisecond);
BENCHMARK(ReadPathQuen)->SIZES->Unit(benchmark::kMicrosecond);
BENCHMARK(ReadPathXerces)->SIZES->Unit(benchmark::kMicrosecond);
BENCHMARK(ReadPathPugixml)->SIZES->Unit(benchmark::kMicrosecond);
BENCHMARK(ReadPathLibxml)->SIZES->Unit(benchmark::kMicrosecond);
BENCHMARK(WritePathQuen)->SIZES->Unit(benchmark::kMicrosecond);
BENCHMARK(WritePathXerces)->SIZES->Unit(benchmark::kMicrosecond);
BENCHMARK(WritePathPugixml)->SIZES->Unit(benchmark::kMicrosecond);
BENCHMARK(WritePathLibxml)->SIZES->Unit(benchmark::kMicrosecond);
#undef SIZES

void Require(bool inHolds, const char* inWhat) {
  if (!inHolds) Fail(inWhat);
}

// A text through libxml2, so that spellings which mean the same become the same.
std::string Canonical(const std::string& inText) { return DumpWithLibxml(ParseWithLibxml(inText)); }

// All four give the same for the same data.
void CheckThatResultsAreEqual() {
  const Case data(10000);
  const CQuenXMLData2w tree(data.wide);
  CQuenXMLData2w fromFile;
  fromFile.ReadFromFile(data.path.u16string());
  const XercesDocument xerces = ParseWithXerces(data.wide);
  const auto pugixml = ParseWithPugixml(data.utf8);
  const LibxmlDocument libxml = ParseWithLibxml(data.utf8);
  const std::string reference = DumpWithLibxml(libxml);

  std::string written;
  tree.GetUTF8Subset(written);
  Require(Canonical(written) == reference, "written text differs from that of libxml2");
  std::u16string wide;
  tree.GetSubset(wide, u"/");
  Require(Canonical("<?xml version='1.0'?>" + written) == reference && wide == ToUtf16(written),
          "wide text differs from UTF-8 text");
  fromFile.GetUTF8Subset(written);
  Require(Canonical(written) == reference, "a tree from a file differs from one from text");
  Require(Canonical(DumpWithPugixml(*pugixml)) == reference, "pugixml differs from libxml2");
  Require(Canonical(DumpWithXerces(xerces)) == reference, "Xerces-C differs from libxml2");

  std::u16string text;
  tree.GetData(text, data.widePath);
  Require(text == ToUtf16(data.price), "the library reads another price");
  Require(WalkToPrice(xerces, data.order)->getFirstChild()->getNodeValue() == text,
          "Xerces-C reads another price");
  Require(pugixml->select_node(data.narrowPath.c_str()).node().text().get() == data.price,
          "pugixml reads another price");
  Require(reinterpret_cast<const char*>(
              SelectWithLibxml(libxml, data.narrowPath.c_str())->children->content) == data.price,
          "libxml2 reads another price");
}

}  // namespace
}  // namespace bench

int main(int inCount, char** inArguments) {
  benchmark::Initialize(&inCount, inArguments);
  if (benchmark::ReportUnrecognizedArguments(inCount, inArguments)) return 2;
  try {
    bench::CheckThatResultsAreEqual();
  } catch (const std::exception& failure) {
    std::cerr << "core_bench: " << failure.what() << "\n";
    return 1;
  }
  benchmark::RunSpecifiedBenchmarks();
}

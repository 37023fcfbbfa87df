// SPDX-License-Identifier: Apache-2.0
//
// What does a compiled style sheet cost through its handle, against the engine itself? Byte stream
// to byte stream, with libxslt in the same run for information where it is installed. The results
// are compared before the time counts.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>

#include <quenxml2/quenxml2.h>
#include <xalanc/XalanTransformer/XalanTransformer.hpp>
#ifdef QUENXML2_BENCH_LIBXSLT
#include <libxml/parser.h>
#include <libxslt/transform.h>
#include <libxslt/xsltutils.h>
#endif

namespace {

constexpr char kSheet[] =
    "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
    "<xsl:output method='xml' omit-xml-declaration='yes' encoding='UTF-8'/>"
    "<xsl:template match='/orders'><html><body><table><xsl:apply-templates select='order'/></table>"
    "</body></html></xsl:template>"
    "<xsl:template match='order'><tr id='{@id}'><td><xsl:value-of select='name'/></td>"
    "<td><xsl:value-of select='quantity'/></td><xsl:if test='quantity &gt; "
    "5'><td>many</td></xsl:if>"
    "</tr></xsl:template></xsl:stylesheet>";

std::string Source(std::size_t bytes) {
  std::string text = "<?xml version='1.0'?><orders>";
  for (std::size_t i = 0; text.size() + 90 < bytes; ++i) {
    text += "<order id='o" + std::to_string(i) + "'><name>bolt " + std::to_string(i % 97) +
            "</name><quantity>" + std::to_string(i % 11) + "</quantity></order>\n";
  }
  return text + "</orders>";
}

// The engine as a program would use it by itself.
class Bare {
 public:
  Bare() {
    std::istringstream sheet(kSheet);
    if (transformer_.compileStylesheet(xalanc::XSLTInputSource(sheet), compiled_) != 0)
      std::abort();
  }
  std::string Transform(const std::string& source) {
    std::istringstream in(source);
    std::ostringstream out;
    const xalanc::XSLTInputSource input(in);
    if (transformer_.transform(input, compiled_, xalanc::XSLTResultTarget(out)) != 0) std::abort();
    return out.str();
  }

 private:
  xalanc::XalanTransformer transformer_;
  const xalanc::XalanCompiledStylesheet* compiled_ = nullptr;
};

class Handle {
 public:
  Handle() { xsl_.RegisterCompiledStyleSheet(std::istringstream(kSheet), handle_); }
  std::string Transform(const std::string& source) {
    std::istringstream in(source);
    std::ostringstream out;
    xsl_.Transform(in, out, handle_);
    return out.str();
  }

 private:
  quen::CQuenXSL2 xsl_;
  std::uintptr_t handle_ = 0;
};

#ifdef QUENXML2_BENCH_LIBXSLT
class Libxslt {
 public:
  Libxslt() : sheet_(xsltParseStylesheetDoc(xmlParseMemory(kSheet, sizeof kSheet - 1))) {}
  ~Libxslt() { xsltFreeStylesheet(sheet_); }
  std::string Transform(const std::string& source) {
    const xmlDocPtr document = xmlParseMemory(source.data(), static_cast<int>(source.size()));
    const xmlDocPtr result = xsltApplyStylesheet(sheet_, document, nullptr);
    xmlChar* bytes = nullptr;
    int size = 0;
    xsltSaveResultToString(&bytes, &size, result, sheet_);
    std::string text(reinterpret_cast<char*>(bytes), static_cast<std::size_t>(size));
    xmlFree(bytes);
    xmlFreeDoc(result);
    xmlFreeDoc(document);
    while (!text.empty() && text.back() == '\n') text.pop_back();
    return text;
  }

 private:
  xsltStylesheetPtr sheet_;
};
#endif

template <class Engine>
void Transform(benchmark::State& state) {
  const quen::CQuenXSL2 engineStarted;
  const std::string source = Source(static_cast<std::size_t>(state.range(0)));
  Engine engine;
  if (engine.Transform(source) != Handle().Transform(source)) {
    state.SkipWithError("the results differ");
    return;
  }
  for (auto _ : state) benchmark::DoNotOptimize(engine.Transform(source));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(source.size()));
}

BENCHMARK_TEMPLATE(Transform, Bare)->Arg(1 << 10)->Arg(1 << 20);
BENCHMARK_TEMPLATE(Transform, Handle)->Arg(1 << 10)->Arg(1 << 20);
#ifdef QUENXML2_BENCH_LIBXSLT
BENCHMARK_TEMPLATE(Transform, Libxslt)->Arg(1 << 10)->Arg(1 << 20);
#endif

}  // namespace

// SPDX-License-Identifier: Apache-2.0
//
// The libraries that the benchmarks compare with, each as a handful of functions over an owning
// pointer.
#ifndef QUENXML2_BENCH_PEERS_H_
#define QUENXML2_BENCH_PEERS_H_

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xpath.h>

#include <memory>
#include <stdexcept>
#include <string>

#include <pugixml.hpp>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>

namespace bench {

[[noreturn]] inline void Fail(const char* inWhat) { throw std::runtime_error(inWhat); }

struct XercesRelease {
  void operator()(xercesc::DOMDocument* inDocument) const { inDocument->release(); }
};
using XercesDocument = std::unique_ptr<xercesc::DOMDocument, XercesRelease>;

// The bare engine as a careful program uses it: namespaces, a handler, the document adopted.
inline XercesDocument ParseWithXerces(const xercesc::InputSource& inSource) {
  xercesc::XercesDOMParser parser;
  xercesc::HandlerBase handler;
  parser.setDoNamespaces(true);
  parser.setErrorHandler(&handler);
  parser.parse(inSource);
  if (parser.getErrorCount() != 0) Fail("Xerces-C: parse failure");
  return XercesDocument(parser.adoptDocument());
}

inline XercesDocument ParseWithXerces(const std::u16string& inText) {
  xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(inText.data()),
                                    inText.size() * sizeof(char16_t), u"bench");
  source.setCopyBufToStream(false);
  source.setEncoding(u"UTF-16");
  return ParseWithXerces(source);
}

inline XercesDocument ParseFileWithXerces(const std::u16string& inPath) {
  return ParseWithXerces(xercesc::LocalFileInputSource(inPath.c_str()));
}

// Through the engine's own serializer, as UTF-8. Characters of the basic plane alone.
inline std::string DumpWithXerces(const XercesDocument& inDocument) {
  xercesc::DOMImplementation* const dom =
      xercesc::DOMImplementationRegistry::getDOMImplementation(u"LS");
  xercesc::DOMLSSerializer* const serializer = dom->createLSSerializer();
  serializer->getDomConfig()->setParameter(u"xml-declaration", false);
  XMLCh* wide = serializer->writeToString(inDocument.get());
  serializer->release();
  std::string text;
  for (const XMLCh* unit = wide; *unit != 0; ++unit) {
    if (*unit < 0x80) {
      text += static_cast<char>(*unit);
    } else {
      text += static_cast<char>(0xC0 | (*unit >> 6));
      text += static_cast<char>(0x80 | (*unit & 0x3F));
    }
  }
  xercesc::XMLString::release(&wide);
  return text;
}

struct LibxmlFree {
  void operator()(xmlDoc* inDocument) const { xmlFreeDoc(inDocument); }
};
using LibxmlDocument = std::unique_ptr<xmlDoc, LibxmlFree>;

inline LibxmlDocument ParseWithLibxml(const std::string& inText) {
  LibxmlDocument document(xmlReadMemory(inText.data(), static_cast<int>(inText.size()), "bench",
                                        nullptr, XML_PARSE_HUGE));
  if (document == nullptr) Fail("libxml2: parse failure");
  return document;
}

inline std::string DumpWithLibxml(const LibxmlDocument& inDocument) {
  xmlChar* bytes = nullptr;
  int length = 0;
  xmlDocDumpMemoryEnc(inDocument.get(), &bytes, &length, "UTF-8");
  if (bytes == nullptr) Fail("libxml2: dump failure");
  std::string text(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length));
  xmlFree(bytes);
  return text;
}

// The first node that a path selects.
inline xmlNode* SelectWithLibxml(const LibxmlDocument& inDocument, const char* inPath) {
  const std::unique_ptr<xmlXPathContext, void (*)(xmlXPathContext*)> context(
      xmlXPathNewContext(inDocument.get()), xmlXPathFreeContext);
  const std::unique_ptr<xmlXPathObject, void (*)(xmlXPathObject*)> result(
      xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(inPath), context.get()),
      xmlXPathFreeObject);
  if (result == nullptr || xmlXPathNodeSetIsEmpty(result->nodesetval)) Fail("libxml2: no node");
  return result->nodesetval->nodeTab[0];
}

inline std::unique_ptr<pugi::xml_document> ParseWithPugixml(const std::string& inText) {
  auto document = std::make_unique<pugi::xml_document>();
  // Text of white space alone is kept, as the others keep it.
  if (!document->load_buffer(inText.data(), inText.size(),
                             pugi::parse_default | pugi::parse_ws_pcdata)) {
    Fail("pugixml: parse failure");
  }
  return document;
}

struct StringWriter : pugi::xml_writer {
  std::string text;
  void write(const void* inBytes, std::size_t inLength) override {
    text.append(static_cast<const char*>(inBytes), inLength);
  }
};

inline std::string DumpWithPugixml(const pugi::xml_document& inDocument) {
  StringWriter writer;
  inDocument.save(writer, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
  return std::move(writer.text);
}

}  // namespace bench

#endif  // QUENXML2_BENCH_PEERS_H_

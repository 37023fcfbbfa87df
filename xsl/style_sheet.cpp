// SPDX-License-Identifier: Apache-2.0
#include "xsl/style_sheet.h"

#include <xalanc/PlatformSupport/XalanMessageLoader.hpp>
#include <xalanc/XPath/XObjectFactoryDefault.hpp>
#include <xalanc/XPath/XPathFactoryBlock.hpp>
#include <xalanc/XSLT/XSLTEngineImpl.hpp>
#include <xalanc/XSLT/XSLTProcessorEnvSupportDefault.hpp>
#include <xalanc/XSLT/XSLTProcessorException.hpp>
#include <xalanc/XalanDOM/XalanDocument.hpp>
#include <xalanc/XalanSourceTree/XalanSourceTreeDOMSupport.hpp>
#include <xalanc/XalanTransformer/XalanCompiledStylesheetDefault.hpp>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "dom/selection_limits.h"
#include "dom/tree_copy.h"
#include "foundation/failure.h"
#include "xsl/access.h"
#include "xsl/problems.h"

namespace quen::internal {
namespace {

xercesc::MemoryManager& Memory() { return *xercesc::XMLPlatformUtils::fgMemoryManager; }

bool IsBlank(char16_t inUnit) {
  return inUnit == u' ' || inUnit == u'\t' || inUnit == u'\r' || inUnit == u'\n';
}

// The value of a pseudo attribute, empty if there is none. Character references are not replaced.
wstring PseudoAttribute(std::u16string_view inData, std::u16string_view inName) {
  std::size_t at = 0;
  const auto skipBlanks = [&] {
    while (at < inData.size() && IsBlank(inData[at])) ++at;
  };
  for (;;) {
    skipBlanks();
    const std::size_t begin = at;
    while (at < inData.size() && !IsBlank(inData[at]) && inData[at] != u'=') ++at;
    const std::u16string_view name = inData.substr(begin, at - begin);
    skipBlanks();
    if (at == inData.size() || inData[at] != u'=') return {};
    ++at;
    skipBlanks();
    if (at == inData.size() || (inData[at] != u'"' && inData[at] != u'\'')) return {};
    const std::size_t end = inData.find(inData[at], at + 1);
    if (end == inData.npos) return {};
    if (name == inName) return wstring(inData.substr(at + 1, end - at - 1));
    at = end + 1;
  }
}

bool IsXslType(const wstring& inType) {
  return inType == u"text/xsl" || inType == u"text/xml" || inType == u"application/xml" ||
         inType == u"application/xslt+xml" || inType == u"application/xml+xslt";
}

}  // namespace

void StyleSheet::Destroyer::operator()(xalanc::XalanCompiledStylesheet* inCompiled) const {
  xalanc::XalanDestroy(Memory(), inCompiled);
}

StyleSheet::StyleSheet(Compiled_ inCompiled, const GivenNames& inNames)
    : compiled_(std::move(inCompiled)), names_(inNames) {}

StyleSheet::Pointer StyleSheet::Compile(const xalanc::XSLTInputSource& inSource) {
  Problems problems;
  return problems.Run([&] {
    Liaison reader;
    xalanc::XalanSourceTreeDOMSupport support;
    support.setParserLiaison(&reader);
    xalanc::XSLTProcessorEnvSupportDefault environment(Memory());
    xalanc::XObjectFactoryDefault objects(Memory());
    xalanc::XPathFactoryBlock paths(Memory());
    xalanc::XSLTEngineImpl processor(Memory(), reader, environment, support, objects, paths);
    environment.setProcessor(&processor);
    processor.setProblemListener(&problems.Listener());
    Compiled_ compiled(
        xalanc::XalanCompiledStylesheetDefault::create(Memory(), inSource, processor));
    return Pointer(new StyleSheet(std::move(compiled), reader.Names()));
  });
}

StyleSheet::Pointer StyleSheet::FromPath(const wstring& inPath) {
  return Compile(xalanc::XSLTInputSource(LocationOf(inPath).c_str(), Memory()));
}

StyleSheet::Pointer StyleSheet::FromStream(std::istream& ioStream) {
  return Compile(xalanc::XSLTInputSource(ioStream, Memory()));
}

StyleSheet::Pointer StyleSheet::FromTree(const xercesc::DOMDocument& inDocument) {
  if (IsDeeperThan(&inDocument, kMaxTreeDepth))
    throw TransformFailure{u"The style sheet is deeper than the limit of this library"};
  if (inDocument.getDocumentElement() == nullptr)
    throw TransformFailure{u"The style sheet is empty"};
  return Compile(StyleTreeInput(inDocument));
}

StyleSheet::Pointer StyleSheet::NamedBy(Source& inSource) {
  for (const xalanc::XalanNode* node = inSource.Document().getFirstChild(); node != nullptr;
       node = node->getNextSibling()) {
    if (node->getNodeType() != xalanc::XalanNode::PROCESSING_INSTRUCTION_NODE ||
        std::u16string_view(node->getNodeName().c_str()) != u"xml-stylesheet") {
      continue;
    }
    const std::u16string_view data(node->getNodeValue().c_str());
    const wstring href = PseudoAttribute(data, u"href");
    if (href.empty() || !IsXslType(PseudoAttribute(data, u"type"))) continue;
    // A part of the source would run with the rights of a style sheet.
    if (href[0] == u'#')
      throw TransformFailure{u"The style sheet '" + href + u"' is no file of its own"};
    return FromPath(ResolveLocation(href, inSource.Location()));
  }
  xalanc::XalanDOMString text(Memory());
  xalanc::XalanMessageLoader::getMessage(text, xalanc::XalanMessages::FailedToProcessStylesheet);
  // As the engine's own transformer says it.
  Problems problems;
  return problems.Run([&]() -> Pointer {
    problems.Listener().problem(xalanc::ProblemListener::eXSLTProcessor,
                                xalanc::ProblemListener::eError, text, nullptr,
                                &inSource.Document());
    throw xalanc::XSLTProcessorException(Memory(), text);
  });
}

}  // namespace quen::internal

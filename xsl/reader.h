// SPDX-License-Identifier: Apache-2.0
//
// How the engine gets its XML: everything that a transform reads comes through the library's own
// guarded parsers here.
//
// A source is a stranger's text: it names nothing that is read. A style sheet, and what a style
// sheet names in turn, is the application's: it may import, include and refer to local files.
// Failures are xercesc::SAXParseException, as the engine's own parsers raise them.
#ifndef QUENXML2_XSL_READER_H_
#define QUENXML2_XSL_READER_H_

#include <sstream>

#include <xalanc/XSLT/XSLTInputSource.hpp>
#include <xalanc/XalanSourceTree/XalanSourceTreeParserLiaison.hpp>
#include <xercesc/util/XercesDefs.hpp>

#include "foundation/text_input.h"
#include "xsl/access.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
XERCES_CPP_NAMESPACE_END

namespace quen::internal {

// A style sheet that is a tree. The engine takes it for a stream and hands it to the Liaison.
class StyleTreeInput : public xalanc::XSLTInputSource {
 public:
  explicit StyleTreeInput(const xercesc::DOMDocument& inTree);
  const xercesc::DOMDocument& Tree() const { return tree_; }

 private:
  const xercesc::DOMDocument& tree_;
  std::istringstream noText_;
};

// The engine's way to parsers, for one transform or compilation.
class Liaison : public xalanc::XalanSourceTreeParserLiaison {
 public:
  using xalanc::XalanSourceTreeParserLiaison::parseXMLStream;

  Liaison();
  ~Liaison() override;

  // Parses a source. The tree lives as long as this object.
  xalanc::XalanSourceTreeDocument& ParseSource(TextInput& ioInput);

  // A document that a style sheet names.
  xalanc::XalanDocument* parseXMLStream(const xercesc::InputSource& inSource,
                                        const xalanc::XalanDOMString& inIdentifier) override;
  // A style sheet: its tree, its stream, or the local file of its system identifier.
  void parseXMLStream(const xercesc::InputSource& inSource, xercesc::DocumentHandler& outHandler,
                      const xalanc::XalanDOMString& inIdentifier) override;

  // What stands in the style sheets that were read.
  const GivenNames& Names() const { return names_; }

 private:
  GivenNames names_;
};

[[noreturn]] void ThrowReadFailure(const InputFailure& inFailure, const char16_t* inSystemId);

}  // namespace quen::internal

#endif  // QUENXML2_XSL_READER_H_

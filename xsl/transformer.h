// SPDX-License-Identifier: Apache-2.0
//
// One run of the engine: a compiled style sheet over a source into a target.
//
// The engine's own transformer hides its parser, its execution context and its problem listener, so
// that its work is done here out of the parts that it is made of itself. What is different: all
// text comes in through the guarded parsers of reader.h; templates nest within a bound; an
// undefined variable and a document that can not be read fail the run; and nothing is written to
// the standard error stream. Messages (xsl:message) and warnings are dropped.
#ifndef QUENXML2_XSL_TRANSFORMER_H_
#define QUENXML2_XSL_TRANSFORMER_H_

#include <map>
#include <memory>

#include <quenxml2/types.h>
#include <xalanc/XSLT/XSLTInputSource.hpp>
#include <xalanc/XSLT/XSLTResultTarget.hpp>
#include <xalanc/XalanTransformer/XalanCompiledStylesheet.hpp>
#include <xercesc/util/XercesDefs.hpp>

#include "xsl/failure.h"
#include "xsl/reader.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
XERCES_CPP_NAMESPACE_END

namespace quen::internal {

// A tree that the engine can read, and what belongs to it.
class Source {
 public:
  Source() = default;
  virtual ~Source();
  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;

  virtual xalanc::XalanDocument& Document() = 0;
  virtual xalanc::DOMSupport& Support() = 0;
  Liaison& Reader() { return liaison_; }
  // What relative names in it are relative to; empty where it has no place.
  const wstring& Location() const { return location_; }

 protected:
  explicit Source(const wstring& inLocation) : location_(inLocation) {}

 private:
  wstring location_;
  Liaison liaison_;
};

// Parses a text; the bytes come from a local file or a stream. Throws TransformFailure.
std::unique_ptr<Source> OpenSource(const wstring& inPath);
std::unique_ptr<Source> OpenSource(std::istream& ioStream);
// Shows a tree of the document layer to the engine. The tree stays where it is.
std::unique_ptr<Source> WrapSource(xercesc::DOMDocument& inDocument);

class StyleSheet;

// The names and expressions of SetStyleSheetParam.
using StyleSheetParams = std::map<wstring, wstring>;

class Transformer {
 public:
  Transformer();
  ~Transformer();
  Transformer(const Transformer& inOther);
  Transformer& operator=(const Transformer&) = delete;

  void SetParam(const wstring& inName, const wstring& inExpression) {
    params_.insert_or_assign(inName, inExpression);
  }
  // Throws TransformFailure, and whatever the target throws.
  void Run(Source& inSource, const StyleSheet& inStyleSheet,
           const xalanc::XSLTResultTarget& inTarget);

 private:
  class Context;

  std::unique_ptr<Context> context_;  // null before the first run and behind one that failed
  StyleSheetParams params_;
};

}  // namespace quen::internal

#endif  // QUENXML2_XSL_TRANSFORMER_H_

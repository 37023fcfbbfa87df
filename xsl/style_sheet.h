// SPDX-License-Identifier: Apache-2.0
//
// A compiled style sheet. It does not change after it was compiled: any number of objects, also on
// different threads, share it, and the last one destroys it.
#ifndef QUENXML2_XSL_STYLE_SHEET_H_
#define QUENXML2_XSL_STYLE_SHEET_H_

#include <cstdint>
#include <istream>
#include <memory>

#include <quenxml2/types.h>
#include <xercesc/util/XercesDefs.hpp>

#include "xsl/access.h"
#include "xsl/transformer.h"

namespace quen::internal {

class StyleSheet {
 public:
  using Pointer = std::shared_ptr<const StyleSheet>;

  // Compile a local file; the rest of a stream; a tree; the style sheet that a source names in a
  // processing instruction (Associating Style Sheets with XML documents 1.0), which has to be a
  // local file of its own. Throw TransformFailure.
  static Pointer FromPath(const wstring& inPath);
  static Pointer FromStream(std::istream& ioStream);
  static Pointer FromTree(const xercesc::DOMDocument& inDocument);
  static Pointer NamedBy(Source& inSource);

  // The address of the engine's object.
  std::uintptr_t Handle() const { return reinterpret_cast<std::uintptr_t>(compiled_.get()); }
  const xalanc::XalanCompiledStylesheet& Compiled() const { return *compiled_; }
  const GivenNames& Names() const { return names_; }

 private:
  struct Destroyer {
    void operator()(xalanc::XalanCompiledStylesheet* inCompiled) const;
  };
  using Compiled_ = std::unique_ptr<xalanc::XalanCompiledStylesheet, Destroyer>;

  StyleSheet(Compiled_ inCompiled, const GivenNames& inNames);
  static Pointer Compile(const xalanc::XSLTInputSource& inSource);

  Compiled_ compiled_;
  GivenNames names_;
};

}  // namespace quen::internal

#endif  // QUENXML2_XSL_STYLE_SHEET_H_

// SPDX-License-Identifier: Apache-2.0
//
// What stands behind CQuenXSL2w and CQuenXSL2: a transformer with its parameters, and the list of
// compiled style sheets, in order of registration.
#ifndef QUENXML2_XSL_XSL_IMPL_H_
#define QUENXML2_XSL_XSL_IMPL_H_

#include <cstdint>
#include <istream>
#include <ostream>
#include <vector>

#include <quenxml2/data.h>
#include <quenxml2/dom.h>

#include "xsl/style_sheet.h"
#include "xsl/transformer.h"

namespace quen {

class CQuenXSLImpl2w {
 public:
  CQuenXSLImpl2w();
  // Takes over parameters and style sheets, as they are now.
  CQuenXSLImpl2w(const CQuenXSLImpl2w& inOther);
  CQuenXSLImpl2w& operator=(const CQuenXSLImpl2w&) = delete;
  virtual ~CQuenXSLImpl2w();

  void Transform(CQuenXMLDataImpl2w& inSource, CQuenXMLDataImpl2w& inStyleSheet,
                 CQuenXMLDataImpl2w& outResult);
  void Transform(CQuenXMLDocument2w& inSource, CQuenXMLDocument2w& inStyleSheet,
                 CQuenXMLDocument2w& outResult);
  void Transform(std::istream& inSource, std::istream& inStyleSheet, std::ostream& outResult);
  void Transform(std::istream& inSource, std::ostream& outResult);
  void Transform(const wstring& inSource, const wstring& inStyleSheet, const wstring& inResult);
  void Transform(const wstring& inSource, const wstring& inResult);
  void Transform(const CQuenXMLNode2w& inSource, const CQuenXMLDocument2w& inStyleSheet,
                 std::ostream& outResult);
  void Transform(const CQuenXMLNode2w& inSource, std::ostream& outResult);
  void Transform(const wstring& inSource, const wstring& inResult, std::uintptr_t inHandle);
  void Transform(CQuenXMLDataImpl2w& inSource, CQuenXMLDataImpl2w& outResult,
                 std::uintptr_t inHandle);
  void Transform(CQuenXMLDocument2w& inSource, CQuenXMLDocument2w& outResult,
                 std::uintptr_t inHandle);
  void Transform(const std::istream& inSource, std::ostream& outResult, std::uintptr_t inHandle);
  void Transform(const CQuenXMLNode2w& inSource, std::ostream& outResult, std::uintptr_t inHandle);

  void RegisterCompiledStyleSheet(const wstring& inPath, std::uintptr_t& outHandle);
  void RegisterCompiledStyleSheet(const std::istream& inStream, std::uintptr_t& outHandle);
  void RegisterCompiledStyleSheet(const CQuenXMLDataImpl2w& inTree, std::uintptr_t& outHandle);
  void RegisterCompiledStyleSheet(const CQuenXMLDocument2w& inDocument, std::uintptr_t& outHandle);
  void UnregisterCompiledStyleSheet(std::uintptr_t inHandle);

  void SetStyleSheetParam(const wstring& inKey, const wstring& inValue);

 private:
  using StyleSheet = internal::StyleSheet;

  static void InitializeXSL();
  // Raises `inContext`, 4, "Can not find the style sheet for the input handle".
  const StyleSheet& Find(std::uintptr_t inHandle, const char16_t* inContext) const;
  void Add(StyleSheet::Pointer inStyleSheet, std::uintptr_t& outHandle);
  void RegisterText(const wstring& inText, std::uintptr_t& outHandle);
  template <class Opener>
  void TransformHelper(std::uintptr_t inHandle, Opener&& inOpener);
  void RunInto(internal::Source& inSource, const StyleSheet& inStyleSheet, std::ostream& outResult);
  void RunInto(internal::Source& inSource, const StyleSheet& inStyleSheet, const wstring& inPath);
  void RunInto(internal::Source& inSource, const StyleSheet& inStyleSheet,
               CQuenXMLDocument2w& outResult);

  // Not held by value: the engine has to run before it is made.
  std::unique_ptr<internal::Transformer> transformer_;
  std::vector<StyleSheet::Pointer> styleSheets_;
};

}  // namespace quen

#endif  // QUENXML2_XSL_XSL_IMPL_H_

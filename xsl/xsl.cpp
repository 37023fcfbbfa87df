// SPDX-License-Identifier: Apache-2.0
//
// The object itself: start, copies, parameters, and the wide class, which passes on to it.
#include <quenxml2/xsl.h>

#include "foundation/failure.h"
#include "foundation/impl_utils.h"
#include "xsl/clauses.h"
#include "xsl/engine.h"
#include "xsl/xsl_impl.h"

namespace quen {

using internal::Guarded;

void CQuenXSLImpl2w::InitializeXSL() {
  Guarded<internal::StartClauses>(u"CQuenXSLImpl2w::InitializeXSL()",
                                  [] { internal::StartXalan(); });
}

CQuenXSLImpl2w::CQuenXSLImpl2w() {
  InitializeXSL();
  transformer_ = std::make_unique<internal::Transformer>();
}

CQuenXSLImpl2w::CQuenXSLImpl2w(const CQuenXSLImpl2w& inOther) {
  Guarded<internal::CopyClauses>(u"CQuenXSLImpl2w::CQuenXSLImpl2w(inCQuenXSLImpl2w)", [&] {
    transformer_ = std::make_unique<internal::Transformer>(*inOther.transformer_);
    styleSheets_ = inOther.styleSheets_;
  });
}

CQuenXSLImpl2w::~CQuenXSLImpl2w() = default;

void CQuenXSLImpl2w::SetStyleSheetParam(const wstring& inKey, const wstring& inValue) {
  // The engine takes 16-bit text. What UTF-8 cannot carry is refused all the same, and a text ends
  // at its first zero unit.
  gImplUtils.TransCodeToUTF8(inKey);
  gImplUtils.TransCodeToUTF8(inValue);
  transformer_->SetParam(inKey.c_str(), inValue.c_str());
}

CQuenXSL2w::CQuenXSL2w() : impl_(std::make_shared<CQuenXSLImpl2w>()) {}
CQuenXSL2w::CQuenXSL2w(const CQuenXSL2w& inOther)
    : impl_(std::make_shared<CQuenXSLImpl2w>(*inOther.impl_)) {}
CQuenXSL2w& CQuenXSL2w::operator=(const CQuenXSL2w& inOther) = default;
CQuenXSL2w::~CQuenXSL2w() = default;

void CQuenXSL2w::Transform(CQuenXMLData2w& inSource, CQuenXMLData2w& inStyleSheet,
                           CQuenXMLData2w& outResult) {
  impl_->Transform(*inSource.GetCQuenXMLData2wImpl(), *inStyleSheet.GetCQuenXMLData2wImpl(),
                   *outResult.GetCQuenXMLData2wImpl());
}
void CQuenXSL2w::Transform(CQuenXMLDocument2w& inSource, CQuenXMLDocument2w& inStyleSheet,
                           CQuenXMLDocument2w& outResult) {
  impl_->Transform(inSource, inStyleSheet, outResult);
}
void CQuenXSL2w::Transform(std::basic_istream<char>& inSource,
                           std::basic_istream<char>& inStyleSheet,
                           std::basic_ostream<char>& outResult) {
  impl_->Transform(inSource, inStyleSheet, outResult);
}
void CQuenXSL2w::Transform(std::basic_istream<char>& inSource,
                           std::basic_ostream<char>& outResult) {
  impl_->Transform(inSource, outResult);
}
void CQuenXSL2w::Transform(const wstring& inSource, const wstring& inStyleSheet,
                           const wstring& inResult) {
  impl_->Transform(inSource, inStyleSheet, inResult);
}
void CQuenXSL2w::Transform(const wstring& inSource, const wstring& inResult) {
  impl_->Transform(inSource, inResult);
}
void CQuenXSL2w::Transform(const CQuenXMLNode2w& inSource, const CQuenXMLDocument2w& inStyleSheet,
                           std::basic_ostream<char>& outResult) {
  impl_->Transform(inSource, inStyleSheet, outResult);
}
void CQuenXSL2w::Transform(const CQuenXMLNode2w& inSource, std::basic_ostream<char>& outResult) {
  impl_->Transform(inSource, outResult);
}
void CQuenXSL2w::Transform(const wstring& inSource, const wstring& inResult,
                           std::uintptr_t inStyleSheet) {
  impl_->Transform(inSource, inResult, inStyleSheet);
}
void CQuenXSL2w::Transform(const CQuenXMLData2w& inSource, CQuenXMLData2w& outResult,
                           std::uintptr_t inStyleSheet) {
  impl_->Transform(*inSource.GetCQuenXMLData2wImpl(), *outResult.GetCQuenXMLData2wImpl(),
                   inStyleSheet);
}
void CQuenXSL2w::Transform(CQuenXMLDocument2w& inSource, CQuenXMLDocument2w& outResult,
                           std::uintptr_t inStyleSheet) {
  impl_->Transform(inSource, outResult, inStyleSheet);
}
void CQuenXSL2w::Transform(const std::basic_istream<char>& inSource,
                           std::basic_ostream<char>& outResult, std::uintptr_t inStyleSheet) {
  impl_->Transform(inSource, outResult, inStyleSheet);
}
void CQuenXSL2w::Transform(const CQuenXMLNode2w& inSource, std::basic_ostream<char>& outResult,
                           std::uintptr_t inStyleSheet) {
  impl_->Transform(inSource, outResult, inStyleSheet);
}

void CQuenXSL2w::RegisterCompiledStyleSheet(const wstring& inStyleSheet,
                                            std::uintptr_t& outHandle) {
  impl_->RegisterCompiledStyleSheet(inStyleSheet, outHandle);
}
void CQuenXSL2w::RegisterCompiledStyleSheet(const std::basic_istream<char>& inStyleSheet,
                                            std::uintptr_t& outHandle) {
  impl_->RegisterCompiledStyleSheet(inStyleSheet, outHandle);
}
void CQuenXSL2w::RegisterCompiledStyleSheet(const CQuenXMLData2w& inStyleSheet,
                                            std::uintptr_t& outHandle) {
  impl_->RegisterCompiledStyleSheet(*inStyleSheet.GetCQuenXMLData2wImpl(), outHandle);
}
void CQuenXSL2w::RegisterCompiledStyleSheet(const CQuenXMLDocument2w& inStyleSheet,
                                            std::uintptr_t& outHandle) {
  impl_->RegisterCompiledStyleSheet(inStyleSheet, outHandle);
}
void CQuenXSL2w::UnregisterCompiledStyleSheet(std::uintptr_t inHandle) {
  impl_->UnregisterCompiledStyleSheet(inHandle);
}
void CQuenXSL2w::SetStyleSheetParam(const wstring& inKey, const wstring& inValue) {
  impl_->SetStyleSheetParam(inKey, inValue);
}

}  // namespace quen

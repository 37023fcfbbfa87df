// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/narrow_data.h>
#include <quenxml2/narrow_dom.h>
#include <quenxml2/xsl.h>

#include "narrow/crossing.h"
#include "xsl/xsl_impl.h"

namespace quen {

using internal::Narrow;
using internal::Wide;

namespace {

CQuenXMLDataImpl2w& Tree(const CQuenXMLData2& inTree) { return *inTree.GetCQuenXMLData2Impl(); }
CQuenXMLNode2w& Twin(const CQuenXMLNode2& inNode) { return *inNode.GetImpl(); }
CQuenXMLDocument2w& Twin(const CQuenXMLDocument2& inDocument) {
  return static_cast<CQuenXMLDocument2w&>(*inDocument.GetImpl());
}

}  // namespace

CQuenXSL2::CQuenXSL2() : impl_(Narrow([] { return std::make_shared<CQuenXSLImpl2w>(); })) {}
CQuenXSL2::CQuenXSL2(const CQuenXSL2& inOther)
    : impl_(Narrow([&] { return std::make_shared<CQuenXSLImpl2w>(*inOther.impl_); })) {}
CQuenXSL2& CQuenXSL2::operator=(const CQuenXSL2& inOther) = default;
CQuenXSL2::~CQuenXSL2() = default;

void CQuenXSL2::Transform(CQuenXMLData2& inSource, CQuenXMLData2& inStyleSheet,
                          CQuenXMLData2& outResult) {
  Narrow([&] { impl_->Transform(Tree(inSource), Tree(inStyleSheet), Tree(outResult)); });
}
void CQuenXSL2::Transform(CQuenXMLDocument2& inSource, CQuenXMLDocument2& inStyleSheet,
                          CQuenXMLDocument2& outResult) {
  Narrow([&] { impl_->Transform(Twin(inSource), Twin(inStyleSheet), Twin(outResult)); });
}
void CQuenXSL2::Transform(std::basic_istream<char>& inSource,
                          std::basic_istream<char>& inStyleSheet,
                          std::basic_ostream<char>& outResult) {
  Narrow([&] { impl_->Transform(inSource, inStyleSheet, outResult); });
}
void CQuenXSL2::Transform(std::basic_istream<char>& inSource, std::basic_ostream<char>& outResult) {
  Narrow([&] { impl_->Transform(inSource, outResult); });
}
void CQuenXSL2::Transform(const string& inSource, const string& inStyleSheet,
                          const string& inResult) {
  Narrow([&] { impl_->Transform(Wide(inSource), Wide(inStyleSheet), Wide(inResult)); });
}
void CQuenXSL2::Transform(const string& inSource, const string& inResult) {
  Narrow([&] { impl_->Transform(Wide(inSource), Wide(inResult)); });
}
void CQuenXSL2::Transform(const CQuenXMLNode2& inSource, const CQuenXMLDocument2& inStyleSheet,
                          std::basic_ostream<char>& outResult) {
  Narrow([&] { impl_->Transform(Twin(inSource), Twin(inStyleSheet), outResult); });
}
void CQuenXSL2::Transform(const CQuenXMLNode2& inSource, std::basic_ostream<char>& outResult) {
  Narrow([&] { impl_->Transform(Twin(inSource), outResult); });
}
void CQuenXSL2::Transform(const string& inSource, const string& inResult,
                          std::uintptr_t inStyleSheet) {
  Narrow([&] { impl_->Transform(Wide(inSource), Wide(inResult), inStyleSheet); });
}
void CQuenXSL2::Transform(const CQuenXMLData2& inSource, CQuenXMLData2& outResult,
                          std::uintptr_t inStyleSheet) {
  Narrow([&] { impl_->Transform(Tree(inSource), Tree(outResult), inStyleSheet); });
}
void CQuenXSL2::Transform(const CQuenXMLDocument2& inSource, CQuenXMLDocument2& outResult,
                          std::uintptr_t inStyleSheet) {
  Narrow([&] { impl_->Transform(Twin(inSource), Twin(outResult), inStyleSheet); });
}
void CQuenXSL2::Transform(const std::basic_istream<char>& inSource,
                          std::basic_ostream<char>& outResult, std::uintptr_t inStyleSheet) {
  Narrow([&] { impl_->Transform(inSource, outResult, inStyleSheet); });
}
void CQuenXSL2::Transform(const CQuenXMLNode2& inSource, std::basic_ostream<char>& outResult,
                          std::uintptr_t inStyleSheet) {
  Narrow([&] { impl_->Transform(Twin(inSource), outResult, inStyleSheet); });
}

void CQuenXSL2::RegisterCompiledStyleSheet(const string& inStyleSheet, std::uintptr_t& outHandle) {
  Narrow([&] { impl_->RegisterCompiledStyleSheet(Wide(inStyleSheet), outHandle); });
}
void CQuenXSL2::RegisterCompiledStyleSheet(const std::basic_istream<char>& inStyleSheet,
                                           std::uintptr_t& outHandle) {
  Narrow([&] { impl_->RegisterCompiledStyleSheet(inStyleSheet, outHandle); });
}
void CQuenXSL2::RegisterCompiledStyleSheet(const CQuenXMLData2& inStyleSheet,
                                           std::uintptr_t& outHandle) {
  Narrow([&] { impl_->RegisterCompiledStyleSheet(Tree(inStyleSheet), outHandle); });
}
void CQuenXSL2::RegisterCompiledStyleSheet(const CQuenXMLDocument2& inStyleSheet,
                                           std::uintptr_t& outHandle) {
  Narrow([&] { impl_->RegisterCompiledStyleSheet(Twin(inStyleSheet), outHandle); });
}
void CQuenXSL2::UnregisterCompiledStyleSheet(std::uintptr_t inHandle) {
  Narrow([&] { impl_->UnregisterCompiledStyleSheet(inHandle); });
}
void CQuenXSL2::SetStyleSheetParam(const string& inKey, const string& inValue) {
  Narrow([&] { impl_->SetStyleSheetParam(Wide(inKey), Wide(inValue)); });
}

}  // namespace quen

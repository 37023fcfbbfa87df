// SPDX-License-Identifier: Apache-2.0
//
// The compiled style sheets of an object.
#include <algorithm>
#include <sstream>

#include "foundation/failure.h"
#include "foundation/impl_utils.h"
#include "xsl/clauses.h"
#include "xsl/xsl_impl.h"

namespace quen {

using internal::CompileClauses;
using internal::Guarded;
using internal::StyleSheet;

namespace {

// The first two and the third differ by their ends alone, and the first by its class too.
constexpr const char16_t* kRegisterPath = u"CQuenXSLImpl::RegisterCompiledStyleSheet";
constexpr const char16_t* kRegisterStream = u"CQuenXSLImpl::RegisterCompiledStyleSheet()";
constexpr const char16_t* kRegisterTree = u"CQuenXSLImpl2w::RegisterCompiledStyleSheet()";
constexpr const char16_t* kUnregister = u"CQuenXSLImpl::UnRegisterCompiledStyleSheet()";
constexpr const char16_t* kNotFound = u"Can not find the style sheet for the input handle";

auto Locate(const std::vector<StyleSheet::Pointer>& inList, std::uintptr_t inHandle) {
  return std::find_if(inList.begin(), inList.end(), [&](const StyleSheet::Pointer& styleSheet) {
    return styleSheet->Handle() == inHandle;
  });
}

}  // namespace

const StyleSheet& CQuenXSLImpl2w::Find(std::uintptr_t inHandle, const char16_t* inContext) const {
  const auto found = Locate(styleSheets_, inHandle);
  if (found == styleSheets_.end()) ThrowXMLException2w(inContext, kNoSuchResource, kNotFound);
  return **found;
}

void CQuenXSLImpl2w::Add(StyleSheet::Pointer inStyleSheet, std::uintptr_t& outHandle) {
  const std::uintptr_t handle = inStyleSheet->Handle();
  styleSheets_.push_back(std::move(inStyleSheet));
  outHandle = handle;
}

void CQuenXSLImpl2w::RegisterCompiledStyleSheet(const wstring& inPath, std::uintptr_t& outHandle) {
  Add(Guarded<CompileClauses>(kRegisterPath, [&] { return StyleSheet::FromPath(inPath); }),
      outHandle);
}

void CQuenXSLImpl2w::RegisterCompiledStyleSheet(const std::istream& inStream,
                                                std::uintptr_t& outHandle) {
  // The signature says const, and reading changes the stream: a caller's own stream is not const.
  auto& stream = const_cast<std::istream&>(inStream);
  Add(Guarded<CompileClauses>(kRegisterStream, [&] { return StyleSheet::FromStream(stream); }),
      outHandle);
}

void CQuenXSLImpl2w::RegisterText(const wstring& inText, std::uintptr_t& outHandle) {
  std::istringstream stream(gImplUtils.TransCodeToUTF8(inText));
  Add(Guarded<CompileClauses>(kRegisterTree, [&] { return StyleSheet::FromStream(stream); }),
      outHandle);
}

void CQuenXSLImpl2w::RegisterCompiledStyleSheet(const CQuenXMLDataImpl2w& inTree,
                                                std::uintptr_t& outHandle) {
  wstring text;
  inTree.GetSubset(text, u"");
  RegisterText(text, outHandle);
}

void CQuenXSLImpl2w::RegisterCompiledStyleSheet(const CQuenXMLDocument2w& inDocument,
                                                std::uintptr_t& outHandle) {
  RegisterText(inDocument.GetSubset(), outHandle);
}

void CQuenXSLImpl2w::UnregisterCompiledStyleSheet(std::uintptr_t inHandle) {
  const auto found = Locate(styleSheets_, inHandle);
  if (found == styleSheets_.end()) ThrowXMLException2w(kUnregister, kNoSuchResource, kNotFound);
  styleSheets_.erase(found);
}

}  // namespace quen

// SPDX-License-Identifier: Apache-2.0
//
// The forms of Transform.
#include <cerrno>
#include <cstring>
#include <fstream>

#include <xalanc/XercesParserLiaison/FormatterToXercesDOM.hpp>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "dom/document_impl.h"
#include "dom/tree_copy.h"
#include "foundation/failure.h"
#include "foundation/impl_utils.h"
#include "xsl/access.h"
#include "xsl/clauses.h"
#include "xsl/engine.h"
#include "xsl/problems.h"
#include "xsl/xsl_impl.h"

namespace quen {

using internal::Guarded;
using internal::NodeTransformClauses;
using internal::StyleSheet;
using internal::TransformClauses;
using internal::TransformFailure;

namespace {

constexpr const char16_t* kTransform = u"CQuenXSLImpl2w::Transform()";
constexpr const char16_t* kTransformNode = u"CQuenXSLImpl2w::Transform(CQuenXMLNode2w)";
// They differ in the class alone.
constexpr const char16_t* kHelper = u"CQuenXSLImpl2w::TransformHelper()";
constexpr const char16_t* kHelperFind = u"CQuenXSLImpl::TransformHelper()";

// A handle that was assigned another node through its base stands on no document.
xercesc::DOMDocument& TreeOf(const CQuenXMLDocument2w& inDocument) {
  xercesc::DOMNode* const node = inDocument.GetImpl()->GetDOMNode();
  if (node == nullptr || node->getNodeType() != xercesc::DOMNode::DOCUMENT_NODE)
    ThrowXMLException2w(u"CQuenXMLDocument2w", kNotInitialized, u"Node was not initialized");
  return *static_cast<xercesc::DOMDocument*>(node);
}

// Merges adjacent text nodes in the caller's document, and shows it to the engine.
std::unique_ptr<internal::Source> NormalizedSource(const CQuenXMLDocument2w& inDocument) {
  internal::MergeAdjacentTexts(&TreeOf(inDocument));
  return internal::WrapSource(TreeOf(inDocument));
}

StyleSheet::Pointer NormalizedStyleSheet(const CQuenXMLDocument2w& inDocument) {
  internal::MergeAdjacentTexts(&TreeOf(inDocument));
  return StyleSheet::FromTree(TreeOf(inDocument));
}

}  // namespace

void CQuenXSLImpl2w::RunInto(internal::Source& inSource, const StyleSheet& inStyleSheet,
                             std::ostream& outResult) {
  transformer_->Run(
      inSource, inStyleSheet,
      xalanc::XSLTResultTarget(outResult, *xercesc::XMLPlatformUtils::fgMemoryManager));
  outResult.flush();
  if (!outResult) throw TransformFailure{u"The result can not be written"};
}

// The file is opened here, behind the reading of source and style sheet: what fails there leaves
// the file that is there alone.
void CQuenXSLImpl2w::RunInto(internal::Source& inSource, const StyleSheet& inStyleSheet,
                             const wstring& inPath) {
  const std::optional<string> path = internal::LocalPath(inPath);
  std::ofstream file;
  errno = path.has_value() ? 0 : EPROTONOSUPPORT;
  if (path.has_value()) file.open(*path, std::ios::binary | std::ios::trunc);
  if (!file.is_open()) {
    throw TransformFailure{u"Error opening file: " + inPath + u".  The error code was " +
                           internal::Decimal(errno) + u"."};
  }
  RunInto(inSource, inStyleSheet, file);
}

void CQuenXSLImpl2w::RunInto(internal::Source& inSource, const StyleSheet& inStyleSheet,
                             CQuenXMLDocument2w& outResult) {
  xercesc::DOMDocument& tree = TreeOf(outResult);
  xercesc::MemoryManager& memory = *xercesc::XMLPlatformUtils::fgMemoryManager;
  xalanc::FormatterToXercesDOM formatter(&tree, nullptr, memory);
  transformer_->Run(inSource, inStyleSheet, xalanc::XSLTResultTarget(formatter, memory));
  internal::MergeAdjacentTexts(&tree);
}

void CQuenXSLImpl2w::Transform(CQuenXMLDataImpl2w& inSource, CQuenXMLDataImpl2w& inStyleSheet,
                               CQuenXMLDataImpl2w& outResult) {
  CQuenXMLDocument2w result;
  Transform(inSource.GetDocument(), inStyleSheet.GetDocument(), result);
  outResult.SetDocument(result);
}

void CQuenXSLImpl2w::Transform(CQuenXMLDocument2w& inSource, CQuenXMLDocument2w& inStyleSheet,
                               CQuenXMLDocument2w& outResult) {
  Guarded<TransformClauses>(kTransform, [&] {
    const auto source = NormalizedSource(inSource);
    RunInto(*source, *NormalizedStyleSheet(inStyleSheet), outResult);
  });
}

void CQuenXSLImpl2w::Transform(std::istream& inSource, std::istream& inStyleSheet,
                               std::ostream& outResult) {
  Guarded<TransformClauses>(kTransform, [&] {
    const auto source = internal::OpenSource(inSource);
    RunInto(*source, *StyleSheet::FromStream(inStyleSheet), outResult);
  });
}

void CQuenXSLImpl2w::Transform(std::istream& inSource, std::ostream& outResult) {
  Guarded<TransformClauses>(kTransform, [&] {
    const auto source = internal::OpenSource(inSource);
    RunInto(*source, *StyleSheet::NamedBy(*source), outResult);
  });
}

void CQuenXSLImpl2w::Transform(const wstring& inSource, const wstring& inStyleSheet,
                               const wstring& inResult) {
  Guarded<TransformClauses>(kTransform, [&] {
    const auto source = internal::OpenSource(inSource);
    RunInto(*source, *StyleSheet::FromPath(inStyleSheet), inResult);
  });
}

void CQuenXSLImpl2w::Transform(const wstring& inSource, const wstring& inResult) {
  Guarded<TransformClauses>(kTransform, [&] {
    const auto source = internal::OpenSource(inSource);
    RunInto(*source, *StyleSheet::NamedBy(*source), inResult);
  });
}

void CQuenXSLImpl2w::Transform(const CQuenXMLNode2w& inSource,
                               const CQuenXMLDocument2w& inStyleSheet, std::ostream& outResult) {
  Guarded<NodeTransformClauses>(kTransform, [&] {
    const CQuenXMLDocument2w copy(inSource);
    const auto source = internal::WrapSource(TreeOf(copy));
    RunInto(*source, *NormalizedStyleSheet(inStyleSheet), outResult);
  });
}

void CQuenXSLImpl2w::Transform(const CQuenXMLNode2w& inSource, std::ostream& outResult) {
  Guarded<NodeTransformClauses>(kTransformNode, [&] {
    const CQuenXMLDocument2w copy(inSource);
    const auto source = internal::WrapSource(TreeOf(copy));
    RunInto(*source, *StyleSheet::NamedBy(*source), outResult);
  });
}

template <class Opener>
void CQuenXSLImpl2w::TransformHelper(std::uintptr_t inHandle, Opener&& inOpener) {
  Guarded<TransformClauses>(kHelper, [&] { inOpener(Find(inHandle, kHelperFind)); });
}

void CQuenXSLImpl2w::Transform(const wstring& inSource, const wstring& inResult,
                               std::uintptr_t inHandle) {
  TransformHelper(inHandle, [&](const StyleSheet& styleSheet) {
    RunInto(*internal::OpenSource(inSource), styleSheet, inResult);
  });
}

void CQuenXSLImpl2w::Transform(CQuenXMLDataImpl2w& inSource, CQuenXMLDataImpl2w& outResult,
                               std::uintptr_t inHandle) {
  CQuenXMLDocument2w result;
  Transform(inSource.GetDocument(), result, inHandle);
  outResult.SetDocument(result);
}

void CQuenXSLImpl2w::Transform(CQuenXMLDocument2w& inSource, CQuenXMLDocument2w& outResult,
                               std::uintptr_t inHandle) {
  Guarded<TransformClauses>(kTransform, [&] {
    const auto source = NormalizedSource(inSource);
    RunInto(*source, Find(inHandle, kTransform), outResult);
  });
}

void CQuenXSLImpl2w::Transform(const std::istream& inSource, std::ostream& outResult,
                               std::uintptr_t inHandle) {
  // The signature says const, and reading changes the stream: a caller's own stream is not const.
  auto& stream = const_cast<std::istream&>(inSource);
  TransformHelper(inHandle, [&](const StyleSheet& styleSheet) {
    RunInto(*internal::OpenSource(stream), styleSheet, outResult);
  });
}

void CQuenXSLImpl2w::Transform(const CQuenXMLNode2w& inSource, std::ostream& outResult,
                               std::uintptr_t inHandle) {
  Guarded<NodeTransformClauses>(kTransform, [&] {
    const CQuenXMLDocument2w copy(inSource);
    const auto source = internal::WrapSource(TreeOf(copy));
    RunInto(*source, Find(inHandle, kTransform), outResult);
  });
}

}  // namespace quen

// SPDX-License-Identifier: Apache-2.0
#include "xsl/clauses.h"

#include <cxxabi.h>

#include <xalanc/PlatformSupport/XSLException.hpp>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>

#include "foundation/failure.h"
#include "xsl/transformer.h"

namespace quen::internal {
namespace {

[[noreturn]] void RethrowXsl(const char16_t* inContext, const char16_t* inOtherContext) {
  try {
    throw;
  } catch (abi::__forced_unwind&) {
    throw;
  } catch (const TransformFailure& failure) {
    ThrowXMLException2w(inContext, kXslFailure, failure.message);
  } catch (const xalanc::XSLException& failure) {
    ThrowXMLException2w(inContext, kXslFailure, OrEmpty(failure.getMessage().c_str()));
  } catch (const CQuenXMLException2w& failure) {
    throw CQuenXMLException2w(failure);
  } catch (...) {
    ThrowXMLException2w(inOtherContext, kParseFailure, u"Unknown Error");
  }
}

}  // namespace

void TransformClauses::Rethrow(const char16_t* inContext) {
  try {
    throw;
  } catch (const xercesc::DOMException& failure) {
    ThrowXMLException2w(inContext, static_cast<std::uint32_t>(failure.code),
                        DomMessage(failure, u"Undefined error"));
  } catch (...) {
    RethrowXsl(inContext, inContext);
  }
}

void NodeTransformClauses::Rethrow(const char16_t* inContext) { RethrowXsl(inContext, inContext); }

void StartClauses::Rethrow(const char16_t* inContext) {
  RethrowXsl(inContext, u"CQuenXSL2w::Initialize");
}

void CopyClauses::Rethrow(const char16_t* inContext) {
  RethrowXsl(inContext, u"CQuenXSL2w::CQuenXSLImpl2w(inCQuenXSLImpl2w)");
}

void CompileClauses::Rethrow(const char16_t* inContext) {
  try {
    throw;
  } catch (const TransformFailure&) {
    ThrowXMLException2w(inContext, kNoSuchResource, u"Error compiling style sheet");
  } catch (const xercesc::OutOfMemoryException&) {
    ThrowXMLException2w(inContext, kParseFailure, u"Unknown Error");
  }
}

}  // namespace quen::internal

// SPDX-License-Identifier: Apache-2.0
#include "dom/clauses.h"

#include <cxxabi.h>

#include <xalanc/PlatformSupport/XSLException.hpp>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/XMLException.hpp>

#include "dom/xalan_selection.h"
#include "foundation/failure.h"

namespace quen::internal {
namespace {

// What every list shares, for the exception that is being handled. A forced unwind is a thread that
// is being cancelled: swallowing it would abort the process.
[[noreturn]] void RethrowCommon(const char16_t* inContext, std::uint32_t inOtherCode,
                                const char16_t* inOtherMessage) {
  try {
    throw;
  } catch (abi::__forced_unwind&) {
    throw;
  } catch (const xercesc::DOMException& failure) {
    ThrowXMLException2w(inContext, static_cast<std::uint32_t>(failure.code),
                        DomMessage(failure, u"Undefined error"));
  } catch (const CQuenXMLException2w& failure) {
    throw CQuenXMLException2w(failure);
  } catch (...) {
    ThrowXMLException2w(inContext, inOtherCode, inOtherMessage);
  }
}

[[noreturn]] void RethrowParse(const char16_t* inContext, const char16_t* inPrefix) {
  try {
    throw;
  } catch (const xercesc::XMLException& failure) {
    ThrowXMLException2w(inContext, kParseFailure, inPrefix + OrEmpty(failure.getMessage()));
  } catch (...) {
    RethrowCommon(inContext, kParseFailure, u"Unknown Error");
  }
}

}  // namespace

void NodeClauses::Rethrow(const char16_t* inContext) {
  RethrowCommon(inContext, kUnknownFailure, u"Unknown Exception");
}

void SelectClauses::Rethrow(const char16_t* inContext) {
  try {
    throw;
  } catch (const xalanc::XSLException& failure) {
    ThrowXMLException2w(inContext, kXslFailure, OrEmpty(failure.getMessage().c_str()));
  } catch (const NotANodeSet&) {
    ThrowXMLException2w(inContext, kXslFailure,
                        u"The specified xpath query does not return a node set.");
  } catch (const ExpressionRefused& refusal) {
    ThrowXMLException2w(inContext, kXslFailure, refusal.message);
  } catch (...) {
    RethrowCommon(inContext, kUnknownFailure, u"Unknown Exception");
  }
}

void FactoryClauses::Rethrow(const char16_t* inContext) {
  try {
    throw;
  } catch (const CQuenXMLException2w&) {
    ThrowXMLException2w(inContext, kParseFailure, u"Unknown Error");
  } catch (...) {
    RethrowCommon(inContext, kParseFailure, u"Unknown Error");
  }
}

void LoadClauses::Rethrow(const char16_t* inContext) { RethrowParse(inContext, u"Parse Error: "); }

void LoadTextClauses::Rethrow(const char16_t* inContext) { RethrowParse(inContext, u""); }

}  // namespace quen::internal

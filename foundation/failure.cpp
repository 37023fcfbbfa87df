// SPDX-License-Identifier: Apache-2.0
#include "foundation/failure.h"

#include <xercesc/dom/DOMException.hpp>

#include "foundation/impl_utils.h"

namespace quen {

void ThrowXMLException2w(const wstring& inContext, std::uint32_t inCode, const wstring& inMessage) {
  throw CQuenXMLException2w(inContext.c_str(), inCode, inMessage.c_str());
}

void ThrowXMLException2(const string& inContext, std::uint32_t inCode, const string& inMessage) {
  throw CQuenXMLException2(inContext.c_str(), inCode, inMessage.c_str());
}

void RethrowNarrow(const CQuenXMLException2w& inException) {
  // The texts are read as zero-terminated ones: TransCodeToUTF8 ends at a zero unit.
  const string message = gImplUtils.TransCodeToUTF8(inException.GetErrorMessage());
  const string context = gImplUtils.TransCodeToUTF8(inException.GetErrorContext());
  ThrowXMLException2(context, inException.GetErrorCode(), message);
}

namespace internal {

wstring Decimal(std::int64_t inNumber) {
  const std::string digits = std::to_string(inNumber);
  return wstring(digits.begin(), digits.end());
}

wstring DomMessage(const xercesc::DOMException& inException, const char16_t* inFallback) {
  const char16_t* const message = inException.getMessage();
  return u"DOM Error: " + wstring(message != nullptr ? message : inFallback);
}

}  // namespace internal
}  // namespace quen

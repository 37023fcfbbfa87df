// SPDX-License-Identifier: Apache-2.0
//
// How failures are raised and translated.
//
// An operation writes no `catch`. It names the clause list that turns foreign exceptions into the
// library's own, and the list stands once, out of line: 150 guarded operations are a fifth of the
// code that they would be with the clauses inlined.
#ifndef QUENXML2_FOUNDATION_FAILURE_H_
#define QUENXML2_FOUNDATION_FAILURE_H_

#include <cstdint>
#include <utility>

#include <quenxml2/exceptions.h>
#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMException;
XERCES_CPP_NAMESPACE_END

namespace quen {

// The error codes of the library's own. A failure of the DOM keeps the DOM's code.
enum ErrorCode : std::uint32_t {
  kOutOfRange = 1,
  kNoPosition = 3,
  kNoSuchResource = 4,
  kNotInitialized = 8,
  kUnknownFailure = 1000,
  kInvalidBinaryData = 1002,
  kNoSourceRoot = 1006,
  kNoCursor = 1007,
  kParseFailure = 1009,
  kXslFailure = 1010,
  kConversionFailure = 1011,
  kPathNotFound = 1013,
  kRootExists = 1014,
  kFileExists = 1015,
  kFileNotOpened = 1016,
};

// The one way to raise a wide failure. The detail is empty.
[[noreturn]] void ThrowXMLException2w(const wstring& inContext, std::uint32_t inCode,
                                      const wstring& inMessage);
[[noreturn]] void ThrowXMLException2(const string& inContext, std::uint32_t inCode,
                                     const string& inMessage);

// The one crossing from a wide exception to a narrow one: same code, message and context in UTF-8,
// empty detail. A text that UTF-8 cannot carry raises the wide failure of TransCodeToUTF8 instead.
[[noreturn]] void RethrowNarrow(const CQuenXMLException2w& inException);

namespace internal {

// Runs `inOperation`. What it throws goes through `Clauses::Rethrow(inContext)`, which never
// returns.
template <class Clauses, class Operation>
decltype(auto) Guarded(const char16_t* inContext, Operation&& inOperation) {
  try {
    return std::forward<Operation>(inOperation)();
  } catch (...) {
    Clauses::Rethrow(inContext);
  }
}

// "DOM Error: " and the text of the exception, or `inFallback` where it has none.
wstring DomMessage(const xercesc::DOMException& inException, const char16_t* inFallback);

// Decimal digits, for messages.
wstring Decimal(std::int64_t inNumber);

// `inText` as a string, "" for a null pointer: the engine's way of saying that there is no text.
inline wstring OrEmpty(const char16_t* inText) {
  return inText != nullptr ? wstring(inText) : wstring();
}

}  // namespace internal
}  // namespace quen

#endif  // QUENXML2_FOUNDATION_FAILURE_H_

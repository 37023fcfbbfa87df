// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/exceptions.h>

#include <ostream>

#include "foundation/utf.h"

namespace quen {
namespace {

const char16_t* OrEmpty(const char16_t* inText) { return inText != nullptr ? inText : u""; }
const char* OrEmpty(const char* inText) { return inText != nullptr ? inText : ""; }

wstring ReportLines(const wstring& inContext, std::uint32_t inCode, const wstring& inMessage) {
  wstring digits;
  for (const char digit : std::to_string(inCode)) digits += static_cast<char16_t>(digit);
  return u"Error Context: " + inContext + u"\nError Code: " + digits + u"\nError Message: " +
         inMessage + u"\n";
}

}  // namespace

CQuenExceptionw::CQuenExceptionw(const char16_t* inContext, std::uint32_t inCode,
                                 const char16_t* inMessage)
    : context_(OrEmpty(inContext)),
      code_(inCode),
      message_(OrEmpty(inMessage)),
      what_(internal::ToUtf8Lossy(message_)) {}
CQuenExceptionw::CQuenExceptionw(const CQuenExceptionw& inOther) = default;
CQuenExceptionw& CQuenExceptionw::operator=(const CQuenExceptionw& inOther) = default;
CQuenExceptionw::~CQuenExceptionw() = default;
const char* CQuenExceptionw::what() const noexcept { return what_.what(); }
std::uint32_t CQuenExceptionw::GetErrorCode() const { return code_; }
wstring CQuenExceptionw::GetErrorContext() const { return context_; }
wstring CQuenExceptionw::GetErrorMessage() const { return message_; }
void CQuenExceptionw::SetErrorCode(std::uint32_t inCode) { code_ = inCode; }
void CQuenExceptionw::SetErrorContext(const wstring& inContext) { context_ = inContext; }
void CQuenExceptionw::SetErrorMessage(const wstring& inMessage) { message_ = inMessage; }
wstring CQuenExceptionw::ReportErrorMessage() const {
  return ReportLines(context_, code_, message_);
}
void CQuenExceptionw::SetError(const wstring& inContext, std::uint32_t inCode,
                               const wstring& inMessage) {
  context_ += inContext;
  code_ = inCode;
  message_ = inMessage;
}

CQuenException::CQuenException(const char* inContext, std::uint32_t inCode, const char* inMessage)
    : context_(OrEmpty(inContext)), code_(inCode), message_(OrEmpty(inMessage)), what_(message_) {}
CQuenException::CQuenException(const CQuenException& inOther) = default;
CQuenException& CQuenException::operator=(const CQuenException& inOther) = default;
CQuenException::~CQuenException() = default;
const char* CQuenException::what() const noexcept { return what_.what(); }
std::uint32_t CQuenException::GetErrorCode() const { return code_; }
string CQuenException::GetErrorContext() const { return context_; }
string CQuenException::GetErrorMessage() const { return message_; }
void CQuenException::SetErrorCode(std::uint32_t inCode) { code_ = inCode; }
void CQuenException::SetErrorContext(const string& inContext) { context_ = inContext; }
void CQuenException::SetErrorMessage(const string& inMessage) { message_ = inMessage; }
string CQuenException::ReportErrorMessage() const {
  return "Error Context: " + context_ + "\nError Code: " + std::to_string(code_) +
         "\nError Message: " + message_ + "\n";
}
void CQuenException::SetError(const string& inContext, std::uint32_t inCode,
                              const string& inMessage) {
  context_ += inContext;
  code_ = inCode;
  message_ = inMessage;
}

CQuenXMLException2w::CQuenXMLException2w(const char16_t* inContext, std::uint32_t inCode,
                                         const char16_t* inMessage, const char16_t* inDetail)
    : CQuenExceptionw(inContext, inCode, inMessage), detail_(OrEmpty(inDetail)) {}
CQuenXMLException2w::CQuenXMLException2w(const CQuenXMLException2w& inOther) = default;
CQuenXMLException2w& CQuenXMLException2w::operator=(const CQuenXMLException2w& inOther) = default;
CQuenXMLException2w::~CQuenXMLException2w() = default;
void CQuenXMLException2w::SetErrorDetail(const wstring& inDetail) { detail_ = inDetail; }
wstring CQuenXMLException2w::GetErrorDetail() const { return detail_; }
void CQuenXMLException2w::SetError(const wstring& inContext, std::uint32_t inCode,
                                   const wstring& inMessage, const wstring& inDetail) {
  SetError(inContext, inCode, inMessage);
  detail_ = inDetail;
}

CQuenXMLException2::CQuenXMLException2(const char* inContext, std::uint32_t inCode,
                                       const char* inMessage, const char* inDetail)
    : CQuenException(inContext, inCode, inMessage), detail_(OrEmpty(inDetail)) {}
CQuenXMLException2::CQuenXMLException2(const CQuenXMLException2& inOther) = default;
CQuenXMLException2& CQuenXMLException2::operator=(const CQuenXMLException2& inOther) = default;
CQuenXMLException2::~CQuenXMLException2() = default;
void CQuenXMLException2::SetErrorDetail(const string& inDetail) { detail_ = inDetail; }
string CQuenXMLException2::GetErrorDetail() const { return detail_; }
void CQuenXMLException2::SetError(const string& inContext, std::uint32_t inCode,
                                  const string& inMessage, const string& inDetail) {
  SetError(inContext, inCode, inMessage);
  detail_ = inDetail;
}

CQuenCryptoExceptionw::CQuenCryptoExceptionw(const char16_t* inContext, std::uint32_t inCode,
                                             const char16_t* inMessage)
    : context_(OrEmpty(inContext)),
      code_(inCode),
      message_(OrEmpty(inMessage)),
      what_(internal::ToUtf8Lossy(message_)) {}
CQuenCryptoExceptionw::CQuenCryptoExceptionw(const CQuenCryptoExceptionw& inOther) = default;
CQuenCryptoExceptionw& CQuenCryptoExceptionw::operator=(const CQuenCryptoExceptionw& inOther) =
    default;
CQuenCryptoExceptionw::~CQuenCryptoExceptionw() = default;
const char* CQuenCryptoExceptionw::what() const noexcept { return what_.what(); }
std::uint32_t CQuenCryptoExceptionw::GetErrorCode() const { return code_; }
wstring CQuenCryptoExceptionw::GetErrorContext() const { return context_; }
wstring CQuenCryptoExceptionw::GetErrorMessage() const { return message_; }
void CQuenCryptoExceptionw::SetErrorCode(std::uint32_t inCode) { code_ = inCode; }
void CQuenCryptoExceptionw::SetErrorContext(const wstring& inContext) { context_ = inContext; }
void CQuenCryptoExceptionw::SetErrorMessage(const wstring& inMessage) { message_ = inMessage; }
wstring CQuenCryptoExceptionw::ReportErrorMessage() const {
  return ReportLines(context_, code_, message_);
}
void CQuenCryptoExceptionw::SetError(const wstring& inContext, std::uint32_t inCode,
                                     const wstring& inMessage) {
  context_ += inContext;
  code_ = inCode;
  message_ = inMessage;
}

}  // namespace quen

namespace {

// Unformatted output: formatted insertion would ask a stream of 16-bit units for a facet that does
// not exist.
template <class Char>
void Write(std::basic_ostream<Char>& outStream, const std::basic_string<Char>& inText) {
  outStream.write(inText.data(), static_cast<std::streamsize>(inText.size()));
}

}  // namespace

std::basic_ostream<char16_t>& operator<<(std::basic_ostream<char16_t>& outStream,
                                         const quen::CQuenXMLException2w& inException) {
  Write(outStream, inException.ReportErrorMessage());
  const quen::wstring detail = inException.GetErrorDetail();
  if (!detail.empty()) Write(outStream, u"Error Detail: " + detail);
  return outStream;
}

std::ostream& operator<<(std::ostream& outStream, const quen::CQuenXMLException2& inException) {
  Write(outStream, inException.ReportErrorMessage());
  const quen::string detail = inException.GetErrorDetail();
  if (!detail.empty()) Write(outStream, "Error Detail: " + detail);
  return outStream;
}

// SPDX-License-Identifier: Apache-2.0
//
// Failures: every failure that leaves the library is one of these exceptions.
//
// Wide classes (...2w) throw CQuenXMLException2w, narrow classes (...2) throw CQuenXMLException2.
// An exception carries a context (the operation that failed, a fixed text), a 32-bit code and a
// message; the XML classes add a detail, which the library leaves empty but for faults read out of
// a message. Exceptions are plain values: they own their texts, are thrown by value and caught by
// reference.
//
//   try {
//     tree.GetData(quantity, u"/order/item/@qty");
//   } catch (const quen::CQuenXMLException2w& failure) {
//     failure.GetErrorCode();     // 1013
//     failure.GetErrorContext();  // u"CQuenXMLDataImpl2w::GetData"
//     failure.GetErrorMessage();  // u"Path not found"
//   }
//
// Codes 1000 to 1016 are the library's own, and so are 1, 3, 4 and 8 in some places; a failure of
// the DOM keeps the DOM's code (a small number). docs/errors.md lists them all.
#ifndef QUENXML2_EXCEPTIONS_H_
#define QUENXML2_EXCEPTIONS_H_

#include <cstdint>
#include <exception>
#include <iosfwd>
#include <stdexcept>

#include <quenxml2/export.h>
#include <quenxml2/types.h>

namespace quen {

// The base of the wide family. `what()` gives the message as it was at construction, in UTF-8; a
// unit that UTF-8 cannot carry shows as U+FFFD there.
class QUENXML2_API CQuenExceptionw : public std::exception {
 public:
  // The texts end at their zero unit; a null pointer counts as the empty text.
  explicit CQuenExceptionw(const char16_t* inContext = u"", std::uint32_t inCode = 0,
                           const char16_t* inMessage = u"");
  CQuenExceptionw(const CQuenExceptionw& inOther);
  CQuenExceptionw& operator=(const CQuenExceptionw& inOther);
  ~CQuenExceptionw() override;

  // The message as it was at construction, in UTF-8. It lives as long as the exception.
  const char* what() const noexcept override;
  // The code; docs/errors.md lists them.
  virtual std::uint32_t GetErrorCode() const;
  // The operation that failed, a fixed text.
  virtual wstring GetErrorContext() const;
  // What went wrong, for a person to read.
  virtual wstring GetErrorMessage() const;
  // Replaces the code alone.
  virtual void SetErrorCode(std::uint32_t inCode);
  // Replaces the context alone.
  virtual void SetErrorContext(const wstring& inContext);
  // Replaces the message alone. what() stays as it is.
  virtual void SetErrorMessage(const wstring& inMessage);
  // The fields as three lines for a person to read: "Error Context: ", "Error Code: " and
  // "Error Message: ", each followed by its field and a line feed.
  virtual wstring ReportErrorMessage() const;
  // Appends to the context, with no separator, and replaces code and message.
  virtual void SetError(const wstring& inContext, std::uint32_t inCode, const wstring& inMessage);

 private:
  wstring context_;
  std::uint32_t code_;
  wstring message_;
  std::runtime_error what_;  // shares its text between copies, so that copying cannot fail
};

// The base of the narrow family. `what()` gives the message as it was at construction.
class QUENXML2_API CQuenException : public std::exception {
 public:
  // A null pointer counts as the empty text.
  explicit CQuenException(const char* inContext = "", std::uint32_t inCode = 0,
                          const char* inMessage = "");
  CQuenException(const CQuenException& inOther);
  CQuenException& operator=(const CQuenException& inOther);
  ~CQuenException() override;

  const char* what() const noexcept override;
  virtual std::uint32_t GetErrorCode() const;
  virtual string GetErrorContext() const;
  virtual string GetErrorMessage() const;
  virtual void SetErrorCode(std::uint32_t inCode);
  virtual void SetErrorContext(const string& inContext);
  virtual void SetErrorMessage(const string& inMessage);
  // As in the wide class.
  virtual string ReportErrorMessage() const;
  // As in the wide class.
  virtual void SetError(const string& inContext, std::uint32_t inCode, const string& inMessage);

 private:
  string context_;
  std::uint32_t code_;
  string message_;
  std::runtime_error what_;
};

// What wide classes throw.
class QUENXML2_API CQuenXMLException2w : public CQuenExceptionw {
 public:
  // As the base class; the detail ends at its zero unit, too.
  explicit CQuenXMLException2w(const char16_t* inContext = u"", std::uint32_t inCode = 0,
                               const char16_t* inMessage = u"", const char16_t* inDetail = u"");
  CQuenXMLException2w(const CQuenXMLException2w& inOther);
  CQuenXMLException2w& operator=(const CQuenXMLException2w& inOther);
  ~CQuenXMLException2w() override;

  using CQuenExceptionw::SetError;
  // Replaces the detail alone.
  virtual void SetErrorDetail(const wstring& inDetail);
  // What goes beyond the message; empty but for faults read out of a message.
  virtual wstring GetErrorDetail() const;
  // Appends to the context, with no separator, and replaces code, message and detail.
  virtual void SetError(const wstring& inContext, std::uint32_t inCode, const wstring& inMessage,
                        const wstring& inDetail);

 private:
  wstring detail_;
};

// What narrow classes throw: code, context and message of the wide failure, the texts in UTF-8, and
// an empty detail.
class QUENXML2_API CQuenXMLException2 : public CQuenException {
 public:
  // As the base class.
  explicit CQuenXMLException2(const char* inContext = "", std::uint32_t inCode = 0,
                              const char* inMessage = "", const char* inDetail = "");
  CQuenXMLException2(const CQuenXMLException2& inOther);
  CQuenXMLException2& operator=(const CQuenXMLException2& inOther);
  ~CQuenXMLException2() override;

  using CQuenException::SetError;
  virtual void SetErrorDetail(const string& inDetail);
  virtual string GetErrorDetail() const;
  virtual void SetError(const string& inContext, std::uint32_t inCode, const string& inMessage,
                        const string& inDetail);

 private:
  string detail_;
};

// What the cipher component throws. The library turns it into a CQuenXMLException2w with the same
// context, code and message; only a program that uses the cipher itself meets this class.
class QUENXML2_API CQuenCryptoExceptionw : public std::exception {
 public:
  // The texts end at their zero unit; a null pointer counts as the empty text.
  explicit CQuenCryptoExceptionw(const char16_t* inContext = u"", std::uint32_t inCode = 0,
                                 const char16_t* inMessage = u"");
  CQuenCryptoExceptionw(const CQuenCryptoExceptionw& inOther);
  CQuenCryptoExceptionw& operator=(const CQuenCryptoExceptionw& inOther);
  ~CQuenCryptoExceptionw() override;

  const char* what() const noexcept override;
  virtual std::uint32_t GetErrorCode() const;
  virtual wstring GetErrorContext() const;
  virtual wstring GetErrorMessage() const;
  virtual void SetErrorCode(std::uint32_t inCode);
  virtual void SetErrorContext(const wstring& inContext);
  virtual void SetErrorMessage(const wstring& inMessage);
  virtual wstring ReportErrorMessage() const;
  virtual void SetError(const wstring& inContext, std::uint32_t inCode, const wstring& inMessage);

 private:
  wstring context_;
  std::uint32_t code_;
  wstring message_;
  std::runtime_error what_;
};

}  // namespace quen

// Writes ReportErrorMessage() and, if the detail is not empty, "Error Detail: " and the detail. A
// stream of 16-bit units has no locale facets: only text can be written into one.
QUENXML2_API std::basic_ostream<char16_t>& operator<<(std::basic_ostream<char16_t>& outStream,
                                                      const quen::CQuenXMLException2w& inException);
QUENXML2_API std::ostream& operator<<(std::ostream& outStream,
                                      const quen::CQuenXMLException2& inException);

#endif  // QUENXML2_EXCEPTIONS_H_

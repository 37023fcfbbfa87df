// SPDX-License-Identifier: Apache-2.0
//
// The one place where a Xerces-C parser runs: with the limits of limits.h, with a checked input,
// and without reading what the application did not name.
#ifndef QUENXML2_FOUNDATION_PARSER_H_
#define QUENXML2_FOUNDATION_PARSER_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include <xercesc/sax/ErrorHandler.hpp>

#include <quenxml2/types.h>

#include "foundation/text_input.h"

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
XERCES_CPP_NAMESPACE_END

namespace quen {

// Records the last error or fatal error of a parse. It raises nothing itself: the parser goes on as
// far as its own rules let it. Warnings are not recorded.
class CQuenXMLErrHandlerw : public xercesc::ErrorHandler {
 public:
  CQuenXMLErrHandlerw();
  ~CQuenXMLErrHandlerw() override;
  CQuenXMLErrHandlerw(const CQuenXMLErrHandlerw&) = delete;
  CQuenXMLErrHandlerw& operator=(const CQuenXMLErrHandlerw&) = delete;

  void warning(const xercesc::SAXParseException& inException) override;
  void error(const xercesc::SAXParseException& inException) override;
  void fatalError(const xercesc::SAXParseException& inException) override;
  // Clears flag, line and column. The message stays.
  void resetErrors() override;

  std::int32_t HasError() const { return hasError_; }
  std::int32_t GetLine() const { return line_; }
  std::int32_t GetColumn() const { return column_; }
  // The text of the last error, at most kMessageUnits units of it. Lives as long as the handler.
  const char16_t* GetMessage() const;

  // Records a failure that the library found itself. It stays, whatever the parser reports later.
  void Record(const internal::InputFailure& inFailure);

  static constexpr std::size_t kMessageUnits = 2048;

 private:
  void Store(std::size_t inLine, std::size_t inColumn, const char16_t* inMessage);

  std::int32_t hasError_ = 0;
  std::int32_t line_ = 0;
  std::int32_t column_ = 0;
  std::unique_ptr<char16_t[]> message_;
};

namespace internal {

struct DocumentReleaser {
  void operator()(xercesc::DOMDocument* inDocument) const;
};
using DocumentPtr = std::unique_ptr<xercesc::DOMDocument, DocumentReleaser>;

struct ParseSettings {
  bool namespaces = true;
  // Validates against a schema, with full checking; forces namespaces on.
  bool validation = false;
  // Where the schemas are. Only these are opened, and what they include, if it is a local file.
  wstring schemaLocation;
  wstring noNamespaceSchemaLocation;
  // Counts the elements of this local name, if there is one: whoever wants to know needs no walk.
  const char16_t* countedName = nullptr;
  std::size_t* count = nullptr;
};

// Parses one document. What the engine throws (XMLException, DOMException) passes through; a
// failure that it reports, and every refusal of our own, raises `inContext`, 1009 and the message
// "Parse error: [%s] at line: %d, Column: %d".
DocumentPtr ParseDocument(TextInput& ioInput, const ParseSettings& inSettings,
                          const char16_t* inContext);

// Frees what this thread keeps for its next document, for those who count what is allocated.
void ForgetSpareParser();

// Raises `inContext`, 1009 and the message above.
[[noreturn]] void ThrowParseError(const char16_t* inContext, const InputFailure& inFailure);

}  // namespace internal
}  // namespace quen

#endif  // QUENXML2_FOUNDATION_PARSER_H_

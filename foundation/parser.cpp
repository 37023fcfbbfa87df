// SPDX-License-Identifier: Apache-2.0
#include "foundation/parser.h"

#include <cxxabi.h>

#include <algorithm>
#include <mutex>
#include <string_view>
#include <vector>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLValidator.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/XMLEntityResolver.hpp>
#include <xercesc/util/XMLResourceIdentifier.hpp>
#include <xercesc/util/XMLURL.hpp>
#include <xercesc/validators/DTD/DTDEntityDecl.hpp>

#include "foundation/entity_budget.h"
#include "foundation/failure.h"
#include "foundation/impl_utils.h"
#include "foundation/limits.h"

namespace quen {

CQuenXMLErrHandlerw::CQuenXMLErrHandlerw() : message_(new char16_t[kMessageUnits + 1]{}) {}
CQuenXMLErrHandlerw::~CQuenXMLErrHandlerw() = default;

void CQuenXMLErrHandlerw::warning(const xercesc::SAXParseException&) {}

void CQuenXMLErrHandlerw::error(const xercesc::SAXParseException& inException) {
  Store(inException.getLineNumber(), inException.getColumnNumber(), inException.getMessage());
}

void CQuenXMLErrHandlerw::fatalError(const xercesc::SAXParseException& inException) {
  error(inException);
}

void CQuenXMLErrHandlerw::resetErrors() {
  hasError_ = 0;
  line_ = 0;
  column_ = 0;
}

const char16_t* CQuenXMLErrHandlerw::GetMessage() const {
  return message_ != nullptr ? message_.get() : u"";
}

void CQuenXMLErrHandlerw::Record(const internal::InputFailure& inFailure) {
  Store(inFailure.line, inFailure.column, inFailure.message.c_str());
}

void CQuenXMLErrHandlerw::Store(std::size_t inLine, std::size_t inColumn,
                                const char16_t* inMessage) {
  hasError_ = 1;
  line_ = static_cast<std::int32_t>(inLine);
  column_ = static_cast<std::int32_t>(inColumn);
  const std::u16string_view message(inMessage != nullptr ? inMessage : u"");
  const std::size_t length = std::min(message.size(), kMessageUnits);
  std::copy_n(message.data(), length, message_.get());
  message_[length] = 0;
}

namespace internal {
namespace {

using xercesc::XMLResourceIdentifier;

// Ends a parse from inside. No exception of the engine: those it would turn into reports of its
// own.
struct Stop {
  InputFailure failure;
};

// The locations among "namespace location namespace location ..." (XML Schema 1, 4.3.2), or all
// words of a list of plain locations.
void AddLocations(const wstring& inList, bool inPairs, std::vector<wstring>& outLocations) {
  std::size_t word = 0;
  std::size_t at = inList.find_first_not_of(u" \t\r\n");
  while (at != wstring::npos) {
    const std::size_t end = std::min(inList.find_first_of(u" \t\r\n", at), inList.size());
    if (!inPairs || word % 2 == 1) outLocations.push_back(inList.substr(at, end - at));
    ++word;
    at = inList.find_first_not_of(u" \t\r\n", end);
  }
}

bool IsLocalFile(const wstring& inLocation) {
  const std::size_t colon = inLocation.find(u':');
  if (colon == wstring::npos) return true;
  return inLocation.compare(0, 5, u"file:") == 0;
}

// The parser with the library's limits. What it refuses ends the parse by a Stop.
class GuardedParser : public xercesc::XercesDOMParser, public xercesc::XMLEntityResolver {
 public:
  GuardedParser(const ParseSettings& inSettings, const EntityBudget& inEntities,
                CQuenXMLErrHandlerw& ioHandler)
      : entities_(inEntities) {
    setErrorHandler(&ioHandler);
    setXMLEntityResolver(this);
    setValidationScheme(Val_Auto);
    setDoNamespaces(inSettings.namespaces);
    if (!inSettings.validation) return;
    setDoNamespaces(true);
    setDoSchema(true);
    setValidationSchemaFullChecking(true);
    // A document that no schema declares is not valid, rather than left unchecked.
    setValidationScheme(Val_Always);
    setValidationConstraintFatal(true);
    setExitOnFirstFatalError(true);
    if (!inSettings.schemaLocation.empty()) {
      setExternalSchemaLocation(inSettings.schemaLocation.c_str());
      AddLocations(inSettings.schemaLocation, true, schemas_);
    }
    if (!inSettings.noNamespaceSchemaLocation.empty()) {
      setExternalNoNamespaceSchemaLocation(inSettings.noNamespaceSchemaLocation.c_str());
      AddLocations(inSettings.noNamespaceSchemaLocation, false, schemas_);
    }
  }

  // What a document names is not read. What a schema of the application includes is, from files.
  xercesc::InputSource* resolveEntity(XMLResourceIdentifier* inResource) override {
    const wstring location = OrEmpty(inResource->getSystemId());
    switch (inResource->getResourceIdentifierType()) {
      case XMLResourceIdentifier::SchemaGrammar:
        if (std::find(schemas_.begin(), schemas_.end(), OrEmpty(inResource->getSchemaLocation())) !=
                schemas_.end() ||
            std::find(schemas_.begin(), schemas_.end(), location) != schemas_.end()) {
          return nullptr;  // the engine opens it
        }
        break;
      case XMLResourceIdentifier::SchemaInclude:
      case XMLResourceIdentifier::SchemaImport:
      case XMLResourceIdentifier::SchemaRedefine:
        if (IsLocalFile(location)) return nullptr;
        break;
      default:
        break;
    }
    Refuse(u"The external resource '" + location + u"' is not read");
  }

  void doctypeDecl(const xercesc::DTDElementDecl& inRoot, const XMLCh* const inPublicId,
                   const XMLCh* const inSystemId, const bool inHasInternal,
                   const bool inHasExternal) override {
    // Here and not in resolveEntity: the engine leaks a little for each subset refused there.
    if (inSystemId != nullptr && *inSystemId != 0)
      Refuse(u"The external DTD subset '" + wstring(inSystemId) + u"' is not read");
    XercesDOMParser::doctypeDecl(inRoot, inPublicId, inSystemId, inHasInternal, inHasExternal);
  }

  void entityDecl(const xercesc::DTDEntityDecl& inEntity, const bool inIsParameter,
                  const bool inIsIgnored) override {
    if (!inIsIgnored && !inEntity.isExternal() &&
        !entities_.Knows(inIsParameter, OrEmpty(inEntity.getName()),
                         std::u16string_view(inEntity.getValue(), inEntity.getValueLen()))) {
      Refuse(u"The entity '" + OrEmpty(inEntity.getName()) +
             u"' is declared through a parameter entity");
    }
    XercesDOMParser::entityDecl(inEntity, inIsParameter, inIsIgnored);
  }

  void startDocument() override {
    depth_ = 0;
    defaulted_ = 0;
    XercesDOMParser::startDocument();
  }

  void startElement(const xercesc::XMLElementDecl& inDeclaration, const unsigned int inUri,
                    const XMLCh* const inPrefix,
                    const xercesc::RefVectorOf<xercesc::XMLAttr>& inAttributes,
                    const XMLSize_t inCount, const bool inIsEmpty, const bool inIsRoot) override {
    if (++depth_ > kMaxDepth) Refuse(u"The elements nest deeper than the limit of this library");
    if (inCount > kMaxAttributes)
      Refuse(u"The element has more attributes than the limit of this library");
    for (XMLSize_t i = 0; i < inCount; ++i) {
      const xercesc::XMLAttr* const attribute = inAttributes.elementAt(i);
      if (attribute->getSpecified()) continue;
      defaulted_ += std::u16string_view(attribute->getValue()).size() + kReferenceCost;
      if (defaulted_ > kMaxExpansion)
        Refuse(u"The attribute defaults expand beyond the limit of this library");
    }
    // For an empty element this ends it too.
    XercesDOMParser::startElement(inDeclaration, inUri, inPrefix, inAttributes, inCount, inIsEmpty,
                                  inIsRoot);
  }

  void endElement(const xercesc::XMLElementDecl& inDeclaration, const unsigned int inUri,
                  const bool inIsRoot, const XMLCh* const inPrefix) override {
    --depth_;
    XercesDOMParser::endElement(inDeclaration, inUri, inIsRoot, inPrefix);
  }

 private:
  [[noreturn]] void Refuse(wstring inMessage) const {
    const xercesc::Locator* const place = getScanner()->getLocator();
    throw Stop{InputFailure{std::move(inMessage), static_cast<std::size_t>(place->getLineNumber()),
                            static_cast<std::size_t>(place->getColumnNumber())}};
  }

  const EntityBudget& entities_;
  std::vector<wstring> schemas_;
  std::uint32_t depth_ = 0;
  std::size_t defaulted_ = 0;
};

// The engine fills tables of its schema reader on first use, without a lock.
void WarmUpSchemas() {
  static std::once_flag warm;
  std::call_once(warm, [] {
    static constexpr char kSchema[] =
        "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>"
        "<xs:element name='a'><xs:complexType><xs:attribute name='b' type='xs:int'/>"
        "</xs:complexType></xs:element></xs:schema>";
    xercesc::XercesDOMParser parser;
    parser.setDoNamespaces(true);
    parser.setDoSchema(true);
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(kSchema),
                                            sizeof kSchema - 1, u"warm-up");
    parser.loadGrammar(source, xercesc::Grammar::SchemaGrammarType);
  });
}

}  // namespace

void DocumentReleaser::operator()(xercesc::DOMDocument* inDocument) const { inDocument->release(); }

DocumentPtr ParseDocument(TextInput& ioInput, const ParseSettings& inSettings,
                          const char16_t* inContext) {
  if (inSettings.validation) WarmUpSchemas();
  EntityBudget entities;
  if (const std::optional<Refusal> refusal = entities.Examine(ioInput.WholeText()))
    ThrowParseError(inContext, FailureAt(ioInput.WholeText(), refusal->offset, refusal->message));

  CQuenXMLErrHandlerw handler;
  GuardedParser parser(inSettings, entities, handler);
  try {
    parser.parse(ioInput);
  } catch (const Stop& stop) {
    handler.Record(stop.failure);
  }
  if (const InputFailure* const failure = ioInput.Failure()) handler.Record(*failure);
  // A failed parse leaves a part of a document behind, which goes with the parser.
  if (handler.HasError() != 0) {
    ThrowParseError(inContext,
                    InputFailure{handler.GetMessage(), static_cast<std::size_t>(handler.GetLine()),
                                 static_cast<std::size_t>(handler.GetColumn())});
  }
  return DocumentPtr(parser.adoptDocument());
}

void ThrowParseError(const char16_t* inContext, const InputFailure& inFailure) {
  ThrowXMLException2w(inContext, kParseFailure,
                      u"Parse error: [" + inFailure.message + u"] at line: " +
                          Decimal(static_cast<std::int64_t>(inFailure.line)) + u", Column: " +
                          Decimal(static_cast<std::int64_t>(inFailure.column)));
}

namespace {

// The clauses of BuildDOMNodeFromXMLString.
struct SubsetParseClauses {
  [[noreturn]] static void Rethrow(const char16_t* inContext) {
    try {
      throw;
    } catch (abi::__forced_unwind&) {
      throw;
    } catch (const xercesc::XMLException& failure) {
      ThrowXMLException2w(inContext, kParseFailure, OrEmpty(failure.getMessage()));
    } catch (const xercesc::DOMException& failure) {
      ThrowXMLException2w(inContext, static_cast<std::uint32_t>(failure.code),
                          DomMessage(failure, u"Undefined Error"));
    } catch (const CQuenXMLException2w& failure) {
      throw CQuenXMLException2w(failure);
    } catch (...) {
      ThrowXMLException2w(inContext, kParseFailure, u"Unknown Error");
    }
  }
};

}  // namespace
}  // namespace internal

void CQuenXMLImplUtils2w::BuildDOMNodeFromXMLString(const wstring& inText,
                                                    xercesc::DOMNode** outNode) {
  constexpr const char16_t* kContext = u"CQuenXMLImplUtils2w::BuildDOMNodeFromXMLString()";
  internal::Guarded<internal::SubsetParseClauses>(kContext, [&] {
    internal::TextInput input(inText, u"CQuenXMLImplUtils2w");
    internal::DocumentPtr document =
        internal::ParseDocument(input, internal::ParseSettings(), kContext);
    if (outNode != nullptr) *outNode = document.release();
  });
}

}  // namespace quen

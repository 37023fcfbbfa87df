// SPDX-License-Identifier: Apache-2.0
#include "foundation/parser.h"

#include <cxxabi.h>

#include <algorithm>
#include <limits>
#include <mutex>
#include <string_view>
#include <vector>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/dom/impl/DOMDocumentImpl.hpp>
#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLValidator.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/XMLEntityResolver.hpp>
#include <xercesc/util/XMLResourceIdentifier.hpp>
#include <xercesc/util/XMLURL.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/validators/DTD/DTDAttDef.hpp>
#include <xercesc/validators/DTD/DTDElementDecl.hpp>
#include <xercesc/validators/DTD/DTDEntityDecl.hpp>

#include "foundation/document_memory.h"
#include "foundation/entity_budget.h"
#include "foundation/failure.h"
#include "foundation/grammar_memory.h"
#include "foundation/impl_utils.h"
#include "foundation/parser_limits.h"
#include "foundation/tree_links.h"

namespace quen {

CQuenXMLErrHandlerw::CQuenXMLErrHandlerw() : message_(new char16_t[kMessageUnits + 1]) {
  message_[0] = 0;
}
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
  constexpr std::size_t kMost = std::numeric_limits<std::int32_t>::max();
  line_ = static_cast<std::int32_t>(std::min(inLine, kMost));
  column_ = static_cast<std::int32_t>(std::min(inColumn, kMost));
  const std::u16string_view message(inMessage != nullptr ? inMessage : u"");
  const std::size_t length = std::min(message.size(), kMessageUnits);
  std::copy_n(message.data(), length, message_.get());
  message_[length] = 0;
}

namespace internal {
namespace {

using xercesc::XMLResourceIdentifier;

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

// The parser that builds a tree, with the library's limits.
class GuardedParser : private GrammarMemory,
                      public xercesc::XercesDOMParser,
                      public xercesc::XMLEntityResolver {
 public:
  explicit GuardedParser(const ParseSettings& inSettings)
      : XercesDOMParser(nullptr, &memory_, &grammars_), isPlain_(AreOrdinary(inSettings)) {
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

  static bool AreOrdinary(const ParseSettings& inSettings) {
    return inSettings.namespaces && !inSettings.validation;
  }

  // Parses one document. May be called again if that reported nothing and IsSpotless().
  void Parse(TextInput& ioInput, const ParseSettings& inSettings, const EntityBudget& inEntities,
             CQuenXMLErrHandlerw& ioHandler) {
    limits_.emplace(&inEntities);
    limits_->SetPlace(getScanner()->getLocator());
    countedName_ = inSettings.countedName;
    count_ = inSettings.count;
    setErrorHandler(&ioHandler);
    try {
      parse(ioInput);
    } catch (const ParseStop& stop) {
      ioHandler.Record(stop.failure);
    }
  }

  // The engine's parser keeps to version 1.1 once it has met it.
  void XMLDecl(const XMLCh* const inVersion, const XMLCh* const inEncoding,
               const XMLCh* const inStandalone, const XMLCh* const inActualEncoding) override {
    isVersion10_ = xercesc::XMLString::equals(inVersion, u"1.0");
    XercesDOMParser::XMLDecl(inVersion, inEncoding, inStandalone, inActualEncoding);
  }

  // Whether the document that was just parsed can show in the next.
  bool IsSpotless() const { return isPlain_ && isVersion10_ && fDocumentType == nullptr; }

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
    limits_->RefuseResource(location);
  }

  // The document outlives the parser.
  void startDocument() override {
    struct Borrowed {
      xercesc::MemoryManager*& memory;
      xercesc::MemoryManager* const own;
      ~Borrowed() { memory = own; }
    } borrowed{fMemoryManager, fMemoryManager};
    fMemoryManager = &MemoryOfDocuments();
    XercesDOMParser::startDocument();
  }

  void doctypeDecl(const xercesc::DTDElementDecl& inRoot, const XMLCh* const inPublicId,
                   const XMLCh* const inSystemId, const bool inHasInternal,
                   const bool inHasExternal) override {
    limits_->CheckDoctype(inSystemId);
    XercesDOMParser::doctypeDecl(inRoot, inPublicId, inSystemId, inHasInternal, inHasExternal);
  }

  void entityDecl(const xercesc::DTDEntityDecl& inEntity, const bool inIsParameter,
                  const bool inIsIgnored) override {
    if (!inIsIgnored) limits_->CheckEntity(inEntity, inIsParameter);
    XercesDOMParser::entityDecl(inEntity, inIsParameter, inIsIgnored);
  }

  void elementDecl(const xercesc::DTDElementDecl& inElement, const bool inIsIgnored) override {
    limits_->CheckModel(inElement);
    XercesDOMParser::elementDecl(inElement, inIsIgnored);
  }

  void attDef(const xercesc::DTDElementDecl& inElement, const xercesc::DTDAttDef& inAttribute,
              const bool inIsIgnored) override {
    limits_->CheckAttribute(inElement, inAttribute);
    XercesDOMParser::attDef(inElement, inAttribute, inIsIgnored);
  }

  void startElement(const xercesc::XMLElementDecl& inDeclaration, const unsigned int inUri,
                    const XMLCh* const inPrefix,
                    const xercesc::RefVectorOf<xercesc::XMLAttr>& inAttributes,
                    const XMLSize_t inCount, const bool inIsEmpty, const bool inIsRoot) override {
    if (countedName_ != nullptr &&
        xercesc::XMLString::equals(inDeclaration.getBaseName(), countedName_))
      ++*count_;
    limits_->StartElement(inDeclaration, inUri, inAttributes, inCount);
    if (!IsPlain() || inDeclaration.hasAttDefs()) {
      // For an empty element this ends it too.
      XercesDOMParser::startElement(inDeclaration, inUri, inPrefix, inAttributes, inCount,
                                    inIsEmpty, inIsRoot);
      return;
    }
    xercesc::DOMElement* const element = NewElement(inDeclaration.getBaseName(), inUri, inPrefix);
    if (inCount > 0) AddAttributes(element, inAttributes, inCount);
    AppendToParent(element);
    fCurrentParent = element;
    fWithinElement = true;
    if (inIsEmpty) endElement(inDeclaration, inUri, inIsRoot, inPrefix);
  }

  void endElement(const xercesc::XMLElementDecl& inDeclaration, const unsigned int inUri,
                  const bool inIsRoot, const XMLCh* const inPrefix) override {
    limits_->EndElement();
    if (!IsPlain()) {
      XercesDOMParser::endElement(inDeclaration, inUri, inIsRoot, inPrefix);
      return;
    }
    fCurrentNode = fCurrentParent;
    fCurrentParent = ParentOf(fCurrentNode);
    if (fCurrentParent == fDocument) fWithinElement = false;
  }

  void docCharacters(const XMLCh* const inText, const XMLSize_t inLength,
                     const bool inIsCData) override {
    const bool isNew = fWithinElement && !inIsCData && IsPlain() &&
                       fCurrentNode->getNodeType() != xercesc::DOMNode::TEXT_NODE;
    if (isNew) {
      AppendToParent(createText(inText, inLength));
    } else {
      XercesDOMParser::docCharacters(inText, inLength, inIsCData);
    }
  }

 private:
  // Most of a parse was the engine's way of putting nodes into the tree. Without a document type,
  // schema or special settings there is nothing to it but making them and linking them, so that it
  // is done here: the same nodes, from the same factories.
  bool IsPlain() const { return isPlain_ && fDocumentType == nullptr; }

  xercesc::DOMElement* NewElement(const XMLCh* inLocalName, unsigned inUri, const XMLCh* inPrefix) {
    const XMLCh* uri = nullptr;
    const XMLCh* qualifiedName = inLocalName;
    if (inUri != fScanner->getEmptyNamespaceId()) {
      uri = fScanner->getURIText(inUri);
      if (inPrefix != nullptr && *inPrefix != 0) {
        qualifiedName_.assign(inPrefix).append(1, u':').append(inLocalName);
        qualifiedName = qualifiedName_.c_str();
      }
    }
    return createElementNS(uri, inPrefix, inLocalName, qualifiedName);
  }

  void AddAttributes(xercesc::DOMElement* ioElement,
                     const xercesc::RefVectorOf<xercesc::XMLAttr>& inAttributes,
                     XMLSize_t inCount) {
    NewAttributes attributes(ioElement, inCount);
    for (XMLSize_t i = 0; i < inCount; ++i) {
      const xercesc::XMLAttr* const given = inAttributes.elementAt(i);
      const XMLCh* const prefix = given->getPrefix();
      const XMLCh* uri = nullptr;
      if ((prefix == nullptr || *prefix == 0) &&
          xercesc::XMLString::equals(given->getName(), xercesc::XMLUni::fgXMLNSString)) {
        uri = xercesc::XMLUni::fgXMLNSURIName;
      } else if (given->getURIId() != fScanner->getEmptyNamespaceId()) {
        uri = fScanner->getURIText(given->getURIId());
      }
      xercesc::DOMAttr* const attribute =
          createAttrNS(uri, prefix, given->getName(), given->getQName());
      SetNewAttribute(attribute, given->getValue(), given->getSpecified());
      attributes.Add(attribute);
    }
  }

  void AppendToParent(xercesc::DOMNode* inNode) {
    if (fCurrentParent == fDocument) {
      fDocument->appendChild(inNode);
    } else {
      LinkNew(static_cast<xercesc::DOMElement*>(fCurrentParent), inNode);
    }
    fCurrentNode = inNode;
  }

  std::optional<ParserLimits> limits_;  // of the document at hand
  const bool isPlain_;
  bool isVersion10_ = true;
  wstring qualifiedName_;
  const char16_t* countedName_ = nullptr;
  std::size_t* count_ = nullptr;
  std::vector<wstring> schemas_;
};

// Making a parser and taking it apart costs more than a small message does, so each thread keeps
// one for the next document. It is kept only behind a document without a failure, and not for long:
// it remembers names.
class SpareParser {
 public:
  static std::unique_ptr<GuardedParser> Take(const ParseSettings& inSettings) {
    const bool isThere =
        GuardedParser::AreOrdinary(inSettings) && !isOver_ && spare_.parser != nullptr;
    return isThere ? std::move(spare_.parser) : std::make_unique<GuardedParser>(inSettings);
  }

  // `inUnits` is the length of the document's text; 0 if it is not known.
  static void GiveBack(std::unique_ptr<GuardedParser> inParser, std::size_t inUnits) {
    const bool isFit = inParser->IsSpotless() && inUnits > 0 && inUnits <= kLargestText;
    if (isFit && !isOver_ && ++spare_.uses % kUses != 0) spare_.parser = std::move(inParser);
  }

  static void Forget() { spare_.parser.reset(); }

 private:
  static constexpr std::size_t kLargestText = 16 * 1024;  // in code units
  static constexpr unsigned kUses = 64;

  struct Spare {
    std::unique_ptr<GuardedParser> parser;
    unsigned uses = 0;
    ~Spare() { isOver_ = true; }
  };
  static thread_local Spare spare_;
  static thread_local bool isOver_;  // for what parses while the thread ends
};
thread_local SpareParser::Spare SpareParser::spare_;
thread_local bool SpareParser::isOver_ = false;

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

void ForgetSpareParser() { SpareParser::Forget(); }

void DocumentReleaser::operator()(xercesc::DOMDocument* inDocument) const { inDocument->release(); }

DocumentPtr ParseDocument(TextInput& ioInput, const ParseSettings& inSettings,
                          const char16_t* inContext) {
  if (inSettings.validation) WarmUpSchemas();
  EntityBudget entities;
  if (const std::optional<Refusal> refusal = entities.Examine(ioInput.WholeText()))
    ThrowParseError(inContext, FailureAt(ioInput.WholeText(), refusal->offset, refusal->message));

  CQuenXMLErrHandlerw handler;
  std::unique_ptr<GuardedParser> parser = SpareParser::Take(inSettings);
  parser->Parse(ioInput, inSettings, entities, handler);
  if (const InputFailure* const failure = ioInput.Failure()) handler.Record(*failure);
  // A failed parse leaves a part of a document behind, which goes with the parser.
  if (handler.HasError() != 0) {
    ThrowParseError(inContext,
                    InputFailure{handler.GetMessage(), static_cast<std::size_t>(handler.GetLine()),
                                 static_cast<std::size_t>(handler.GetColumn())});
  }
  DocumentPtr document(parser->adoptDocument());
  SpareParser::GiveBack(std::move(parser), ioInput.WholeText().size());
  return document;
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

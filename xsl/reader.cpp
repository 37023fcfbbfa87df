// SPDX-License-Identifier: Apache-2.0
#include "xsl/reader.h"

#include <optional>

#include <xalanc/XalanSourceTree/XalanSourceTreeContentHandler.hpp>
#include <xalanc/XalanSourceTree/XalanSourceTreeDocument.hpp>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/sax/AttributeList.hpp>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/XMLEntityResolver.hpp>
#include <xercesc/util/XMLResourceIdentifier.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "foundation/entity_budget.h"
#include "foundation/failure.h"
#include "foundation/grammar_memory.h"
#include "foundation/parser_limits.h"
#include "xsl/access.h"
#include "xsl/limits.h"
#include "xsl/style_check.h"

namespace quen::internal {
namespace {

using xercesc::SAXParseException;
using xercesc::XMLResourceIdentifier;

// The engine goes on behind an error that its handler lets pass; here the first one ends the parse.
class ThrowingHandler : public xercesc::ErrorHandler {
 public:
  void warning(const SAXParseException&) override {}
  // What is thrown outlives the parser's memory, which a copy would share.
  void error(const SAXParseException& inFailure) override {
    throw SAXParseException(inFailure.getMessage(), inFailure.getPublicId(),
                            inFailure.getSystemId(), inFailure.getLineNumber(),
                            inFailure.getColumnNumber());
  }
  void fatalError(const SAXParseException& inFailure) override { error(inFailure); }
  void resetErrors() override {}
};

class EntityLimit : public xercesc::SecurityManager {
 public:
  EntityLimit() { setEntityExpansionLimit(kMaxStyleSheetEntities); }
};

// A local file that a style sheet refers to, read and checked as a whole: the parser gives up its
// input source before it reads the stream.
xercesc::InputSource* ReadWholeFile(const wstring& inLocation) {
  std::string units;
  try {
    TextInput input(OpenLocal(inLocation), inLocation.c_str());
    const std::unique_ptr<xercesc::BinInputStream> stream(input.makeStream());
    char buffer[16 * 1024];
    while (const XMLSize_t count =
               stream->readBytes(reinterpret_cast<XMLByte*>(buffer), sizeof buffer)) {
      units.append(buffer, count);
    }
    if (const InputFailure* const failure = input.Failure()) throw *failure;
  } catch (InputFailure& failure) {
    throw ParseStop{std::move(failure)};
  }
  std::unique_ptr<XMLByte[]> bytes(new XMLByte[units.size() + 1]);
  std::copy(units.begin(), units.end(), bytes.get());
  auto source = std::make_unique<xercesc::MemBufInputSource>(bytes.get(), units.size(),
                                                             inLocation.c_str(), true);
  bytes.release();
  source->setEncoding(u"UTF-16");
  return source.release();
}

// The resource as the referring document means it.
wstring LocationOfResource(const XMLResourceIdentifier& inResource) {
  return ResolveLocation(OrEmpty(inResource.getSystemId()), OrEmpty(inResource.getBaseURI()));
}

// The engine's own content handler, with text in one piece. Its own way to that is off: it copies
// all the text before a piece that does not fit, so that a million of them took minutes.
class SourceBuilder : public xalanc::XalanSourceTreeContentHandler {
 public:
  explicit SourceBuilder(xalanc::XalanSourceTreeDocument& outDocument)
      : XalanSourceTreeContentHandler(*xercesc::XMLPlatformUtils::fgMemoryManager, &outDocument,
                                      false) {}
  // The parser says where it stands only to its handler.
  void TellPlaceTo(ParserLimits& outLimits) { limits_ = &outLimits; }
  void setDocumentLocator(const xercesc::Locator* const inLocator) override {
    if (limits_ != nullptr) limits_->SetPlace(inLocator);
    XalanSourceTreeContentHandler::setDocumentLocator(inLocator);
  }

  void characters(const XMLCh* const inText, const XMLSize_t inLength) override {
    text_.append(inText, inLength);
  }
  void ignorableWhitespace(const XMLCh* const inText, const XMLSize_t inLength) override {
    PassText();
    XalanSourceTreeContentHandler::ignorableWhitespace(inText, inLength);
  }
  void startElement(const XMLCh* const inUri, const XMLCh* const inLocalName,
                    const XMLCh* const inName, const xercesc::Attributes& inAttributes) override {
    PassText();
    ++depth_;
    XalanSourceTreeContentHandler::startElement(inUri, inLocalName, inName, inAttributes);
  }
  void endElement(const XMLCh* const inUri, const XMLCh* const inLocalName,
                  const XMLCh* const inName) override {
    PassText();
    --depth_;
    XalanSourceTreeContentHandler::endElement(inUri, inLocalName, inName);
  }
  void processingInstruction(const XMLCh* const inTarget, const XMLCh* const inData) override {
    PassText();
    CheckOutside();
    XalanSourceTreeContentHandler::processingInstruction(inTarget, inData);
  }
  void comment(const XMLCh* const inText, const XMLSize_t inLength) override {
    PassText();
    CheckOutside();
    XalanSourceTreeContentHandler::comment(inText, inLength);
  }
  void endDocument() override {
    PassText();
    XalanSourceTreeContentHandler::endDocument();
  }

 private:
  void PassText() {
    if (text_.empty()) return;
    XalanSourceTreeContentHandler::characters(text_.data(), text_.size());
    text_.clear();
  }
  void CheckOutside() {
    if (depth_ == 0 && limits_ != nullptr && ++outside_ > kMaxNodesOutsideRoot)
      limits_->Refuse(u"The root has more neighbours than the limit of this library");
  }

  ParserLimits* limits_ = nullptr;
  wstring text_;
  std::size_t depth_ = 0;
  std::size_t outside_ = 0;
};

// The engine's event parsers, made alike.
struct SourceEvents : xercesc::SAX2XMLReaderImpl {
  SourceEvents(xercesc::MemoryManager& ioMemory, xercesc::XMLGrammarPool& ioGrammars)
      : SAX2XMLReaderImpl(&ioMemory, &ioGrammars) {}
};
struct StyleSheetEvents : xercesc::SAXParser {
  StyleSheetEvents(xercesc::MemoryManager& ioMemory, xercesc::XMLGrammarPool& ioGrammars)
      : SAXParser(nullptr, &ioMemory, &ioGrammars) {}
};

// One of them with the library's limits.
template <class Parser>
class LimitedParser : private GrammarMemory, public Parser, public xercesc::XMLEntityResolver {
 public:
  // Without a budget the text is the application's own, and reads the local files that it names.
  explicit LimitedParser(const EntityBudget* inEntities)
      : Parser(memory_, grammars_), limits_(inEntities), readsExternals_(inEntities == nullptr) {
    Parser::setErrorHandler(&errors_);
    Parser::setXMLEntityResolver(this);
  }

  xercesc::InputSource* resolveEntity(XMLResourceIdentifier* inResource) override {
    const wstring location = LocationOfResource(*inResource);
    if (!readsExternals_) limits_.RefuseResource(location);
    return ReadWholeFile(location);
  }
  void doctypeDecl(const xercesc::DTDElementDecl& inRoot, const XMLCh* const inPublicId,
                   const XMLCh* const inSystemId, const bool inHasInternal,
                   const bool inHasExternal) override {
    limits_.CheckDoctype(inSystemId);
    Parser::doctypeDecl(inRoot, inPublicId, inSystemId, inHasInternal, inHasExternal);
  }
  void entityDecl(const xercesc::DTDEntityDecl& inEntity, const bool inIsParameter,
                  const bool inIsIgnored) override {
    if (!inIsIgnored) limits_.CheckEntity(inEntity, inIsParameter);
    Parser::entityDecl(inEntity, inIsParameter, inIsIgnored);
  }
  void elementDecl(const xercesc::DTDElementDecl& inElement, const bool inIsIgnored) override {
    limits_.CheckModel(inElement);
    Parser::elementDecl(inElement, inIsIgnored);
  }
  void attDef(const xercesc::DTDElementDecl& inElement, const xercesc::DTDAttDef& inAttribute,
              const bool inIsIgnored) override {
    limits_.CheckAttribute(inElement, inAttribute);
    Parser::attDef(inElement, inAttribute, inIsIgnored);
  }
  void startElement(const xercesc::XMLElementDecl& inDeclaration, const unsigned int inUri,
                    const XMLCh* const inPrefix,
                    const xercesc::RefVectorOf<xercesc::XMLAttr>& inAttributes,
                    const XMLSize_t inCount, const bool inIsEmpty, const bool inIsRoot) override {
    limits_.StartElement(inDeclaration, inUri, inAttributes, inCount);
    Parser::startElement(inDeclaration, inUri, inPrefix, inAttributes, inCount, inIsEmpty,
                         inIsRoot);
    if (inIsEmpty) limits_.EndElement();
  }
  void endElement(const xercesc::XMLElementDecl& inDeclaration, const unsigned int inUri,
                  const bool inIsRoot, const XMLCh* const inPrefix) override {
    limits_.EndElement();
    Parser::endElement(inDeclaration, inUri, inIsRoot, inPrefix);
  }

 protected:
  ParserLimits limits_;
  EntityLimit security_;

 private:
  const bool readsExternals_;
  ThrowingHandler errors_;
};

class SourceParser : public LimitedParser<SourceEvents> {
 public:
  SourceParser(const EntityBudget* inEntities, SourceBuilder& ioBuilder)
      : LimitedParser(inEntities) {
    using xercesc::XMLUni;
    setFeature(XMLUni::fgSAX2CoreNameSpaces, true);
    setFeature(XMLUni::fgSAX2CoreNameSpacePrefixes, true);
    setFeature(XMLUni::fgSAX2CoreValidation, false);
    setFeature(XMLUni::fgXercesDynamic, false);
    setFeature(XMLUni::fgXercesSchema, false);
    if (inEntities == nullptr) setProperty(XMLUni::fgXercesSecurityManager, &security_);
    setContentHandler(&ioBuilder);
    setDTDHandler(&ioBuilder);
    setLexicalHandler(&ioBuilder);
    ioBuilder.TellPlaceTo(limits_);
  }
};

class StyleSheetParser : public LimitedParser<StyleSheetEvents> {
 public:
  explicit StyleSheetParser(xercesc::DocumentHandler& outHandler) : LimitedParser(nullptr) {
    setDoNamespaces(false);  // the style sheet's reader knows prefixes itself
    setDocumentHandler(&outHandler);
    setSecurityManager(&security_);
    limits_.SetPlace(getScanner().getLocator());
  }
};

// Attributes as the reader of style sheets takes them.
class Attributes : public xercesc::AttributeList {
 public:
  std::vector<StyleAttribute>& List() { return list_; }
  XMLSize_t getLength() const override { return list_.size(); }
  const XMLCh* getName(const XMLSize_t inIndex) const override {
    return list_[inIndex].name.c_str();
  }
  const XMLCh* getType(const XMLSize_t) const override { return u"CDATA"; }
  const XMLCh* getValue(const XMLSize_t inIndex) const override {
    return list_[inIndex].value.c_str();
  }
  const XMLCh* getType(const XMLCh* const) const override { return u"CDATA"; }
  const XMLCh* getValue(const XMLCh* const inName) const override {
    for (const StyleAttribute& attribute : list_)
      if (attribute.name == inName) return attribute.value.c_str();
    return nullptr;
  }
  const XMLCh* getValue(const char* const inName) const override {
    const std::string_view name(inName);
    return getValue(wstring(name.begin(), name.end()).c_str());
  }

 private:
  std::vector<StyleAttribute> list_;
};

// Hands a style sheet on to its reader, one checked element after the other.
class CheckedStyleSheet : public xercesc::DocumentHandler {
 public:
  CheckedStyleSheet(xercesc::DocumentHandler& outReader, GivenNames& outNames)
      : reader_(outReader), names_(outNames) {}

  void startElement(const XMLCh* const inName, xercesc::AttributeList& inAttributes) override {
    attributes_.List().clear();
    for (XMLSize_t i = 0; i < inAttributes.getLength(); ++i)
      attributes_.List().push_back({inAttributes.getName(i), inAttributes.getValue(i)});
    for (const StyleAttribute& attribute : attributes_.List()) names_.Add(attribute.value);
    if (const wstring fault = check_.Start(inName, attributes_.List()); !fault.empty()) {
      InputFailure failure{fault};
      if (locator_ != nullptr) {
        failure.line = static_cast<std::size_t>(locator_->getLineNumber());
        failure.column = static_cast<std::size_t>(locator_->getColumnNumber());
      }
      ThrowReadFailure(failure, locator_ != nullptr ? locator_->getSystemId() : nullptr);
    }
    reader_.startElement(inName, attributes_);
  }
  void endElement(const XMLCh* const inName) override {
    check_.End();
    reader_.endElement(inName);
  }
  void characters(const XMLCh* const inText, const XMLSize_t inLength) override {
    names_.Add({inText, inLength});
    reader_.characters(inText, inLength);
  }
  void ignorableWhitespace(const XMLCh* const inText, const XMLSize_t inLength) override {
    reader_.ignorableWhitespace(inText, inLength);
  }
  void processingInstruction(const XMLCh* const inTarget, const XMLCh* const inData) override {
    reader_.processingInstruction(inTarget, inData);
  }
  void startDocument() override { reader_.startDocument(); }
  void endDocument() override { reader_.endDocument(); }
  void resetDocument() override { reader_.resetDocument(); }
  void setDocumentLocator(const xercesc::Locator* const inLocator) override {
    locator_ = inLocator;
    reader_.setDocumentLocator(inLocator);
  }

 private:
  xercesc::DocumentHandler& reader_;
  GivenNames& names_;
  const xercesc::Locator* locator_ = nullptr;
  StyleCheck check_;
  Attributes attributes_;
};

// Reads a tree as if it were parsed. Does not recurse.
void WalkStyleSheet(const xercesc::DOMDocument& inTree, xercesc::DocumentHandler& outHandler) {
  using xercesc::DOMNode;
  Attributes attributes;
  const auto enter = [&](const DOMNode& node) {
    const auto text = [&] { return std::u16string_view(node.getNodeValue()); };
    switch (node.getNodeType()) {
      case DOMNode::ELEMENT_NODE: {
        attributes.List().clear();
        const xercesc::DOMNamedNodeMap& map = *node.getAttributes();
        for (XMLSize_t i = 0; i < map.getLength(); ++i)
          attributes.List().push_back({map.item(i)->getNodeName(), map.item(i)->getNodeValue()});
        outHandler.startElement(node.getNodeName(), attributes);
        break;
      }
      case DOMNode::TEXT_NODE:
      case DOMNode::CDATA_SECTION_NODE:
        outHandler.characters(text().data(), text().size());
        break;
      case DOMNode::PROCESSING_INSTRUCTION_NODE:
        outHandler.processingInstruction(node.getNodeName(), node.getNodeValue());
        break;
      default:
        break;
    }
  };
  outHandler.startDocument();
  const DOMNode* node = &inTree;
  for (;;) {
    if (const DOMNode* const child =
            node->getNodeType() == DOMNode::DOCUMENT_TYPE_NODE ? nullptr : node->getFirstChild()) {
      node = child;
      enter(*node);
      continue;
    }
    for (;;) {
      if (node->getNodeType() == DOMNode::ELEMENT_NODE) outHandler.endElement(node->getNodeName());
      if (node == &inTree) return outHandler.endDocument();
      if (const DOMNode* const next = node->getNextSibling()) {
        node = next;
        enter(*node);
        break;
      }
      node = node->getParentNode();
    }
  }
}

// Runs a parser over a text; whatever it or the text refuses arrives as the engine's exception.
template <class Parser>
void Run(Parser& ioParser, TextInput& ioInput) {
  try {
    ioParser.parse(ioInput);
  } catch (const ParseStop& stop) {
    ThrowReadFailure(stop.failure, ioInput.getSystemId());
  } catch (const SAXParseException&) {
    // The parser complains about the early end of a text that is at fault somewhere else.
    if (const InputFailure* const failure = ioInput.Failure())
      ThrowReadFailure(*failure, ioInput.getSystemId());
    throw;
  }
  if (const InputFailure* const failure = ioInput.Failure())
    ThrowReadFailure(*failure, ioInput.getSystemId());
}

// Refuses a text whose internal subset expands beyond the limit.
void Examine(TextInput& ioInput, EntityBudget& outEntities) {
  if (const std::optional<Refusal> refusal = outEntities.Examine(ioInput.WholeText())) {
    ThrowReadFailure(FailureAt(ioInput.WholeText(), refusal->offset, refusal->message),
                     ioInput.getSystemId());
  }
}

// The text of what the engine asks for: a stream where it was given one, else a local file.
void Open(std::optional<TextInput>& outInput, const xercesc::InputSource& inSource) {
  const auto* const given = dynamic_cast<const xalanc::XSLTInputSource*>(&inSource);
  const wstring location = OrEmpty(inSource.getSystemId());
  try {
    outInput.emplace(given != nullptr && given->getStream() != nullptr
                         ? ReadStream(*given->getStream())
                         : OpenLocal(location),
                     location.c_str());
  } catch (const InputFailure& failure) {
    ThrowReadFailure(failure, location.c_str());
  }
}

}  // namespace

void ThrowReadFailure(const InputFailure& inFailure, const char16_t* inSystemId) {
  throw SAXParseException(inFailure.message.c_str(), u"", inSystemId != nullptr ? inSystemId : u"",
                          inFailure.line, inFailure.column);
}

StyleTreeInput::StyleTreeInput(const xercesc::DOMDocument& inTree)
    : XSLTInputSource(*xercesc::XMLPlatformUtils::fgMemoryManager), tree_(inTree) {
  setStream(&noText_);
}

Liaison::Liaison() : XalanSourceTreeParserLiaison(*xercesc::XMLPlatformUtils::fgMemoryManager) {
  setPoolAllText(false);  // looking for equal texts costs more than it saves
}
Liaison::~Liaison() = default;

xalanc::XalanSourceTreeDocument& Liaison::ParseSource(TextInput& ioInput) {
  EntityBudget entities;
  Examine(ioInput, entities);
  xalanc::XalanSourceTreeDocument& document = *createXalanSourceTreeDocument();
  SourceBuilder builder(document);
  SourceParser parser(&entities, builder);
  Run(parser, ioInput);
  return document;
}

xalanc::XalanDocument* Liaison::parseXMLStream(const xercesc::InputSource& inSource,
                                               const xalanc::XalanDOMString&) {
  std::optional<TextInput> input;
  Open(input, inSource);
  EntityBudget entities;  // of what stands in the text itself
  Examine(*input, entities);
  xalanc::XalanSourceTreeDocument& document = *createXalanSourceTreeDocument();
  SourceBuilder builder(document);
  SourceParser parser(nullptr, builder);
  Run(parser, *input);
  return &document;
}

void Liaison::parseXMLStream(const xercesc::InputSource& inSource,
                             xercesc::DocumentHandler& outHandler, const xalanc::XalanDOMString&) {
  const wstring place = OrEmpty(inSource.getSystemId());
  if (!place.empty()) names_.Add(place);  // document('') is the style sheet
  CheckedStyleSheet checked(outHandler, names_);
  if (const auto* const tree = dynamic_cast<const StyleTreeInput*>(&inSource))
    return WalkStyleSheet(tree->Tree(), checked);
  std::optional<TextInput> input;
  Open(input, inSource);
  EntityBudget entities;
  Examine(*input, entities);
  StyleSheetParser parser(checked);
  Run(parser, *input);
}

}  // namespace quen::internal

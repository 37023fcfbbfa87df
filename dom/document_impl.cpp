// SPDX-License-Identifier: Apache-2.0
#include "dom/document_impl.h"

#include <xercesc/framework/URLInputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/XMLURL.hpp>

#include "dom/clauses.h"
#include "dom/tree_copy.h"
#include "foundation/document_memory.h"
#include "foundation/failure.h"
#include "foundation/file_url.h"
#include "foundation/impl_utils.h"
#include "foundation/text_input.h"

namespace quen {

using internal::FactoryClauses;
using internal::Guarded;
using internal::NodeClauses;
using xercesc::DOMDocument;
using xercesc::DOMNode;

namespace {

constexpr const char16_t* kCreateElement =
    u"CQuenXMLDocumentImpl2w::CreateElement(const STD(wstring) inElementName)";
constexpr const char16_t* kLoad = u"CQuenXMLDocumentImpl2w::Load(const STD(wstring) inLocation)";
// The context of a failure that the parser reports has a trailing blank, here and in kValidate.
constexpr const char16_t* kLoadReport =
    u"CQuenXMLDocumentImpl2w::Load(const STD(wstring) inLocation) ";
constexpr const char16_t* kLoadText = u"CQuenXMLDocumentImpl2w::LoadXML()";
constexpr const char16_t* kValidate = u"CQuenXMLDocumentImpl2w::Validate() ";

constexpr const char16_t* kConstruct = u"CQuenXMLDocumentImpl2w::CQuenXMLDocumentImpl2w()";

DOMDocument* NewDocument() {
  return Guarded<NodeClauses>(kConstruct, [] {
    return xercesc::DOMImplementation::getImplementation()->createDocument(
        nullptr, nullptr, nullptr, &internal::MemoryOfDocuments());
  });
}

DOMNode* CloneOf(const DOMNode* inDocument) {
  return Guarded<NodeClauses>(kConstruct, [&] { return internal::CloneDeep(inDocument); });
}

// What fails is told of as the parser tells of it when it opens the document itself.
template <class Action>
auto Reported(Action&& inAction) {
  try {
    return inAction();
  } catch (const xercesc::XMLException& failure) {
    throw internal::InputFailure{internal::OrEmpty(failure.getMessage())};
  }
}

// What a connection brings.
class UrlReader : public internal::ByteReader {
 public:
  explicit UrlReader(const xercesc::XMLURL& inUrl) {
    stream_.reset(Reported([&] { return inUrl.makeNewStream(); }));
    if (stream_ == nullptr) {
      throw internal::InputFailure{u"unable to open primary document entity '" +
                                   wstring(inUrl.getURLText()) + u"'"};
    }
  }
  std::size_t Read(char* outBytes, std::size_t inCapacity) override {
    return Reported(
        [&] { return stream_->readBytes(reinterpret_cast<XMLByte*>(outBytes), inCapacity); });
  }

 private:
  std::unique_ptr<xercesc::BinInputStream> stream_;
};

// A plain path, relative or not, is a local file; only a well-formed absolute URL goes the URL's
// way.
std::unique_ptr<internal::ByteReader> OpenLocation(const wstring& inLocation) {
  try {
    const xercesc::XMLURL url(inLocation.c_str());
    if (!url.isRelative()) {
      if (url.getProtocol() == xercesc::XMLURL::File)
        return internal::OpenFile(internal::PathOfFileUrl(url), inLocation);
      return std::make_unique<UrlReader>(url);
    }
  } catch (const xercesc::MalformedURLException&) {
  }
  return internal::OpenFile(gImplUtils.TransCodeToUTF8(inLocation), inLocation);
}

}  // namespace

CQuenXMLDocumentImpl2w::CQuenXMLDocumentImpl2w() : CQuenXMLNodeImpl2w(NewDocument()) {}

CQuenXMLDocumentImpl2w::CQuenXMLDocumentImpl2w(const CQuenXMLDocumentImpl2w& inOther)
    : CQuenXMLNodeImpl2w(),
      schemaLocation_(inOther.schemaLocation_),
      noNamespaceSchemaLocation_(inOther.noNamespaceSchemaLocation_),
      validates_(inOther.validates_),
      namespaces_(inOther.namespaces_) {
  node_ = CloneOf(inOther.node_);  // last: nobody would release it
}

CQuenXMLDocumentImpl2w::CQuenXMLDocumentImpl2w(const DOMDocument* inDocument)
    : CQuenXMLNodeImpl2w(internal::CloneDeep(inDocument)) {}

CQuenXMLDocumentImpl2w::CQuenXMLDocumentImpl2w(const CQuenXMLNodeImpl2w& inNode) {
  if (inNode.GetNodeType() == CQuenXMLNode2w::DocumentNode) {
    node_ = CloneOf(inNode.GetDOMNode());
    return;
  }
  internal::DocumentPtr document(NewDocument());
  CQuenXMLNodeImpl2w(document.get()).AppendChild(inNode);
  node_ = document.release();
}

CQuenXMLDocumentImpl2w::~CQuenXMLDocumentImpl2w() { Document()->release(); }

CQuenXMLElementImpl2w CQuenXMLDocumentImpl2w::CreateElement(const wstring& inName) {
  return Guarded<FactoryClauses>(kCreateElement, [&] {
    return CQuenXMLElementImpl2w(Document()->createElement(inName.c_str()));
  });
}

CQuenXMLElementImpl2w CQuenXMLDocumentImpl2w::CreateElementNS(const wstring& inName,
                                                              const wstring& inNamespaceURI) {
  return Guarded<FactoryClauses>(kCreateElement, [&] {
    return CQuenXMLElementImpl2w(
        Document()->createElementNS(inNamespaceURI.c_str(), inName.c_str()));
  });
}

CQuenXMLCommentImpl2w CQuenXMLDocumentImpl2w::CreateComment(const wstring& inText) {
  return Guarded<FactoryClauses>(
      u"CQuenXMLDocumentImpl2w::CreateComment(const STD(wstring) inElementName)",
      [&] { return CQuenXMLCommentImpl2w(Document()->createComment(inText.c_str())); });
}

CQuenXMLCDATAImpl2w CQuenXMLDocumentImpl2w::CreateCDATA(const wstring& inText) {
  return Guarded<FactoryClauses>(
      u"CQuenXMLDocumentImpl2w::CreateCDATA(const STD(wstring) inElementName)",
      [&] { return CQuenXMLCDATAImpl2w(Document()->createCDATASection(inText.c_str())); });
}

CQuenXMLPIImpl2w CQuenXMLDocumentImpl2w::CreatePI(const wstring& inTarget, const wstring& inData) {
  return Guarded<FactoryClauses>(
      u"CQuenXMLDocumentImpl2w::CreatePI(const STD(wstring) inElementName)", [&] {
        return CQuenXMLPIImpl2w(
            Document()->createProcessingInstruction(inTarget.c_str(), inData.c_str()));
      });
}

internal::ParseSettings CQuenXMLDocumentImpl2w::Settings() const {
  internal::ParseSettings settings;
  settings.namespaces = namespaces_ != 0;
  settings.validation = validates_ != 0;
  settings.schemaLocation = schemaLocation_;
  settings.noNamespaceSchemaLocation = noNamespaceSchemaLocation_;
  return settings;
}

void CQuenXMLDocumentImpl2w::Adopt(internal::DocumentPtr inDocument) {
  Document()->release();
  node_ = inDocument.release();
}

void CQuenXMLDocumentImpl2w::Load(const wstring& inLocation) {
  Adopt(Guarded<internal::LoadClauses>(kLoad, [&] {
    std::optional<internal::TextInput> input;
    try {
      input.emplace(OpenLocation(inLocation), inLocation.c_str());
    } catch (const internal::InputFailure& failure) {
      internal::ThrowParseError(kLoadReport, failure);
    }
    return internal::ParseDocument(*input, Settings(), kLoadReport);
  }));
}

namespace {

internal::DocumentPtr ParseText(const wstring& inXML, const internal::ParseSettings& inSettings) {
  return Guarded<internal::LoadTextClauses>(kLoadText, [&] {
    internal::TextInput input(inXML, u"CQuenXMLDocumentImpl2w");
    return internal::ParseDocument(input, inSettings, kLoadText);
  });
}

}  // namespace

void CQuenXMLDocumentImpl2w::LoadXML(const wstring& inXML) { Adopt(ParseText(inXML, Settings())); }

CQuenXMLDocumentImpl2w::CQuenXMLDocumentImpl2w(const wstring& inXML, const char16_t* inCountedName,
                                               std::size_t& outCount) {
  internal::ParseSettings settings;
  settings.countedName = inCountedName;
  settings.count = &outCount;
  node_ = ParseText(inXML, settings).release();
}

void CQuenXMLDocumentImpl2w::Validate() const {
  const wstring text = GetSubset();
  Guarded<internal::LoadClauses>(kValidate, [&] {
    internal::ParseSettings settings = Settings();
    settings.namespaces = true;
    settings.validation = true;
    internal::TextInput input(text, u"CQuenXMLDocumentImpl2w");
    internal::ParseDocument(input, settings, kValidate);
  });
}

void CQuenXMLDocumentImpl2w::Normalize() {
  Guarded<NodeClauses>(u"CQuenXMLDocumentImpl2w::Normalize()",
                       [&] { internal::NormalizeTree(Document()); });
}

CQuenXMLElementImpl2w CQuenXMLDocumentImpl2w::GetDocumentElement() const {
  return Guarded<NodeClauses>(u"CQuenXMLDocumentImpl2w::GetDocumentElement()", [&] {
    return CQuenXMLElementImpl2w(Document()->getDocumentElement());
  });
}

void CQuenXMLDocumentImpl2w::SetDocumentElement(const CQuenXMLElement2w& inElement) {
  Guarded<NodeClauses>(u"CQuenXMLDocumentImpl2w::SetDocumentElement()", [&] {
    DOMNode* const present = Document()->getDocumentElement();
    DOMNode* const element = inElement.GetImpl()->GetDOMNode();
    if (element == nullptr) {
      if (present != nullptr) Document()->removeChild(present);
      return;
    }
    DOMNode* const local = internal::LocalNode(node_, element);
    if (local == present) return;
    if (present == nullptr) {
      Document()->appendChild(local);
    } else {
      Document()->replaceChild(local, present);
    }
  });
}

}  // namespace quen

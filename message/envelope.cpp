// SPDX-License-Identifier: Apache-2.0
#include "message/envelope.h"

#include <xercesc/util/XMLUni.hpp>

#include "foundation/failure.h"
#include "message/message_format.h"

namespace quen::internal {
namespace {

// Makes the envelope the document element of an empty document. Returns its body.
CQuenXMLElementImpl2w BuildEnvelope(CQuenXMLDocumentImpl2w& ioDocument) {
  CQuenXMLElementImpl2w envelope = NewPart(ioDocument, message_format::kEnvelope);
  // In the namespace of declarations, as the parser makes it.
  envelope.Element()->setAttributeNS(xercesc::XMLUni::fgXMLNSURIName, message_format::kDeclaration,
                                     message_format::kNamespace);
  ioDocument.AppendChild(envelope);
  const CQuenXMLElementImpl2w body = NewPart(ioDocument, message_format::kBody);
  envelope.AppendNew(body);
  return body;
}

// Whether the element means the same without what else its document holds. A document type
// declares entities and attributes that it refers to; XML 1.1 has names that 1.0 has not.
bool StandsAlone(const xercesc::DOMDocument* inDocument) {
  return inDocument->getDoctype() == nullptr && OrEmpty(inDocument->getXmlVersion()) != u"1.1";
}

}  // namespace

CQuenXMLElementImpl2w NewPart(CQuenXMLDocumentImpl2w& ioDocument, const char16_t* inName) {
  return ioDocument.CreateElementNS(inName, message_format::kNamespace);
}

bool IsEnvelope(const CQuenXMLDocumentImpl2w& inDocument) {
  return inDocument.GetDocumentElement().GetName() == message_format::kEnvelope;
}

std::unique_ptr<CQuenXMLDocumentImpl2w> NewEnvelope() {
  auto envelope = std::make_unique<CQuenXMLDocumentImpl2w>();
  BuildEnvelope(*envelope);
  return envelope;
}

std::unique_ptr<CQuenXMLDocumentImpl2w> EnvelopeAround(const CQuenXMLDocumentImpl2w& inDocument) {
  auto envelope = std::make_unique<CQuenXMLDocumentImpl2w>();
  BuildEnvelope(*envelope).AppendChild(inDocument.GetDocumentElement());
  return envelope;
}

std::unique_ptr<CQuenXMLDocumentImpl2w> EnvelopeAround(
    std::unique_ptr<CQuenXMLDocumentImpl2w> inDocument) {
  xercesc::DOMDocument* const document = inDocument->Document();
  if (!StandsAlone(document)) return EnvelopeAround(*inDocument);
  const CQuenXMLElementImpl2w element = inDocument->GetDocumentElement();
  while (document->getFirstChild() != nullptr) document->removeChild(document->getFirstChild());
  BuildEnvelope(*inDocument).AppendChild(element);
  return inDocument;
}

}  // namespace quen::internal

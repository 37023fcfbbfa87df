// SPDX-License-Identifier: Apache-2.0
//
// How an envelope is made.
#ifndef QUENXML2_MESSAGE_ENVELOPE_H_
#define QUENXML2_MESSAGE_ENVELOPE_H_

#include <memory>

#include "dom/document_impl.h"

namespace quen::internal {

// Whether the document element has the name of an envelope. Raises 8 where there is none.
bool IsEnvelope(const CQuenXMLDocumentImpl2w& inDocument);

// An envelope with an empty body. The tree is the one that the text
// <SOAP-ENV:Envelope xmlns:SOAP-ENV="..."><SOAP-ENV:Body/></SOAP-ENV:Envelope> gives.
std::unique_ptr<CQuenXMLDocumentImpl2w> NewEnvelope();

// An envelope whose body holds a copy of the document element.
std::unique_ptr<CQuenXMLDocumentImpl2w> EnvelopeAround(const CQuenXMLDocumentImpl2w& inDocument);

// The same from a document that nobody needs any more: where it can, the element itself moves.
std::unique_ptr<CQuenXMLDocumentImpl2w> EnvelopeAround(
    std::unique_ptr<CQuenXMLDocumentImpl2w> inDocument);

// An element of the envelope's namespace.
CQuenXMLElementImpl2w NewPart(CQuenXMLDocumentImpl2w& ioDocument, const char16_t* inName);

}  // namespace quen::internal

#endif  // QUENXML2_MESSAGE_ENVELOPE_H_

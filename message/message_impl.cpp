// SPDX-License-Identifier: Apache-2.0
//
// How a message is made, copied and assigned, and its contents as a whole.
#include "message/message_impl.h"

#include <utility>

#include <quenxml2/cipher.h>

#include "data/clauses.h"
#include "dom/cipher_clauses.h"
#include "foundation/failure.h"
#include "foundation/impl_utils.h"
#include "message/envelope.h"
#include "message/message_format.h"

namespace quen {

using internal::CipherClauses;
using internal::Guarded;
namespace format = message_format;

CQuenXMLMsgImpl2::CQuenXMLMsgImpl2() : nesting_(Nesting::kNone) {}

CQuenXMLMsgImpl2::CQuenXMLMsgImpl2(const wstring& inXML) { Parse(inXML); }

CQuenXMLMsgImpl2::CQuenXMLMsgImpl2(const CQuenXMLMsgImpl2& inOther) {
  Take(std::make_unique<CQuenXMLDocumentImpl2w>(inOther.Document()), inOther.nesting_);
}

CQuenXMLMsgImpl2& CQuenXMLMsgImpl2::operator=(const CQuenXMLMsgImpl2& inOther) {
  if (this != &inOther)
    Take(std::make_unique<CQuenXMLDocumentImpl2w>(inOther.Document()), inOther.nesting_);
  return *this;
}

CQuenXMLMsgImpl2::~CQuenXMLMsgImpl2() = default;

// The envelope of a new message is made when somebody looks at it: most messages are made to be
// given contents at once.
CQuenXMLDocumentImpl2w& CQuenXMLMsgImpl2::Document() const {
  if (document_ == nullptr) document_ = internal::NewEnvelope();
  return *document_;
}

// Contents in. The new document is complete before the former one goes.

void CQuenXMLMsgImpl2::Parse(const wstring& inXML) {
  // Counted while they are parsed: nothing has to be searched for inner envelopes then.
  std::size_t envelopes = 0;
  auto document =
      std::make_unique<CQuenXMLDocumentImpl2w>(inXML, format::kEnvelopeLocalName, envelopes);
  const bool isEnvelope = internal::IsEnvelope(*document);
  if (!isEnvelope) document = internal::EnvelopeAround(std::move(document));
  Take(std::move(document), envelopes == (isEnvelope ? 1 : 0) ? Nesting::kNone : Nesting::kSome);
}

void CQuenXMLMsgImpl2::SetMessageContentsw(const wstring& inXML) { Parse(inXML); }

void CQuenXMLMsgImpl2::SetMessageContents(const string& inXML) {
  SetMessageContentsw(gImplUtils.TranscodeFromUTF8(inXML));
}

void CQuenXMLMsgImpl2::SetMessageContents(const CQuenXMLDocument2w& inDocument) {
  const CQuenXMLDocumentImpl2w& document = inDocument.Impl();
  Take(internal::IsEnvelope(document) ? std::make_unique<CQuenXMLDocumentImpl2w>(document)
                                      : internal::EnvelopeAround(document),
       Nesting::kUnknown);
}

void CQuenXMLMsgImpl2::SetMessageContents(const CQuenXMLData2w& inData) {
  CQuenXMLDocument2w handle = inData.GetDocument();
  // Nobody else has this document, so that it becomes the message's own. A derived tree may give a
  // handle without a document; this tells.
  handle.Impl();
  DocumentOwner document(
      static_cast<CQuenXMLDocumentImpl2w*>(std::exchange(handle.impl_, nullptr)));
  if (!internal::IsEnvelope(*document)) document = internal::EnvelopeAround(std::move(document));
  Take(std::move(document), Nesting::kUnknown);
}

void CQuenXMLMsgImpl2::Take(DocumentOwner inDocument, Nesting inNesting) {
  document_ = std::move(inDocument);
  // The handle that opened the other tree does not reach into this one.
  nesting_ = inNesting == Nesting::kOpenToUser ? Nesting::kUnknown : inNesting;
  InitializeElementNodes();
}

void CQuenXMLMsgImpl2::ForgetElements() {
  body_ = delivery_ = message_ = fault_ = CQuenXMLElementImpl2w();
}

void CQuenXMLMsgImpl2::InitializeElementNodes() {
  ForgetElements();
  internal::ZeroOnFailure([&] {
    const auto element = [&](std::u16string_view inPath) {
      return CQuenXMLElementImpl2w(Find(inPath).GetDOMNode());
    };
    delivery_ = element(format::kDeliveryPath);
    message_ = element(format::kMessagePath);
    body_ = element(format::kBodyElementPath);
    fault_ = element(format::kFaultPath);
    return 1;
  });
}

// Contents out.

wstring CQuenXMLMsgImpl2::GetMessageContentsw() const { return Document().GetSubset(); }

string CQuenXMLMsgImpl2::GetMessageContents() const { return Document().GetUTF8Subset(); }

wstring CQuenXMLMsgImpl2::GetFormattedMessageContentsw() const {
  return Document().GetFormattedSubset();
}

string CQuenXMLMsgImpl2::GetFormattedMessageContents() const {
  return gImplUtils.TransCodeToUTF8(GetFormattedMessageContentsw());
}

void CQuenXMLMsgImpl2::GetMessageContents(CQuenXMLDocument2w& outDocument) const {
  outDocument.ReplaceImpl(std::make_unique<CQuenXMLDocumentImpl2w>(Document()));
}

void CQuenXMLMsgImpl2::GetMessageContents(CQuenXMLData2w& outData) const {
  outData.CursorToRoot();
  outData.RemoveData(u"");
  // From the DOM's document, not from the implementation: with default settings.
  outData.SetDocument(
      CQuenXMLDocument2w(std::make_unique<CQuenXMLDocumentImpl2w>(Document().Document())));
}

string CQuenXMLMsgImpl2::GetEncryptedMessageContents(const wstring& inKey) {
  const wstring text = GetMessageContentsw();
  return Guarded<CipherClauses>(nullptr, [&] {
    CQuenAESW cipher;
    cipher.SetKey(inKey);
    return cipher.EncryptString(text);
  });
}

void CQuenXMLMsgImpl2::SetEncryptedMessageContents(const string& inCipherText,
                                                   const wstring& inKey) {
  if (inCipherText.empty()) return;
  Guarded<CipherClauses>(nullptr, [&] {
    CQuenAESW cipher;
    cipher.SetKey(inKey);
    SetMessageContents(CQuenXMLData2w(cipher.DecryptString(inCipherText)));
  });
}

void CQuenXMLMsgImpl2::ConstructReplyMessage(CQuenXMLMsgImpl2& outReply) const {
  // Read first: the request may be its own reply.
  const wstring replyAddress = GetReplyAddress();
  const wstring destination = GetDestinationAddress();
  outReply = *this;
  outReply.SetDestinationAddress(replyAddress);
  outReply.SetSourceAddress(destination);
  outReply.SetReplyAddress(destination);
  outReply.SetXMLMessageType(format::kReplyKind);
}

namespace internal {

CQuenXMLElementImpl2w ChildNamed(const CQuenXMLElementImpl2w& inParent, const char16_t* inName) {
  const std::u16string_view name(inName);
  CQuenXMLElementImpl2w child = inParent.FirstChildElement();
  while (child.GetDOMNode() != nullptr && name != child.GetDOMNode()->getNodeName())
    child = child.NextSiblingElement();
  return child;
}

}  // namespace internal
}  // namespace quen

// SPDX-License-Identifier: Apache-2.0
//
// The narrow message: over the same implementation as the wide one. Trees and documents of this
// width cross as text, or as a copy of their wide twin.
#include <quenxml2/message.h>

#include "message/message_format.h"
#include "message/message_impl.h"
#include "narrow/crossing.h"

namespace quen {

using internal::Narrow;
using internal::NarrowText;
using internal::NarrowTwin;
using internal::Utf8;
using internal::Wide;

namespace {

// The whole tree, wherever its cursor stands. Raises 1009 if it is empty.
CQuenXMLData2w WideTree(const CQuenXMLData2& inTree) {
  string text;
  inTree.GetSubset(text, "/");
  CQuenXMLData2w tree;
  tree.AppendSubset(Wide(text), u"");
  return tree;
}

CQuenXMLDocument2w WideDocument(const CQuenXMLDocument2& inDocument) {
  return CQuenXMLDocument2w(*inDocument.GetImpl());
}

}  // namespace

CQuenXMLMsg2::CQuenXMLMsg2() : impl_(Narrow([] { return std::make_unique<CQuenXMLMsgImpl2>(); })) {}
CQuenXMLMsg2::CQuenXMLMsg2(const string& inXML)
    : impl_(Narrow([&] { return std::make_unique<CQuenXMLMsgImpl2>(Wide(inXML)); })) {}
// The base state does not come along.
CQuenXMLMsg2::CQuenXMLMsg2(const CQuenXMLMsg2& inOther)
    : CQuenMessage(),
      impl_(Narrow([&] { return std::make_unique<CQuenXMLMsgImpl2>(*inOther.impl_); })) {}
CQuenXMLMsg2::CQuenXMLMsg2(const CQuenMessage& inMessageBase)
    : CQuenXMLMsg2(Narrow([&] { return inMessageBase.GetMessageContents(); })) {
  Narrow([&] {
    impl_->SetSourceAddress(Wide(inMessageBase.GetSourceAddress()));
    impl_->SetDestinationAddress(Wide(inMessageBase.GetDestinationAddress()));
    impl_->SetReplyAddress(Wide(inMessageBase.GetReplyAddress()));
  });
}
CQuenXMLMsg2& CQuenXMLMsg2::operator=(const CQuenXMLMsg2& inOther) {
  Narrow([&] { *impl_ = *inOther.impl_; });
  return *this;
}
CQuenXMLMsg2::~CQuenXMLMsg2() = default;

string CQuenXMLMsg2::GetSourceAddress() const {
  return NarrowText([&] { return impl_->GetSourceAddress(); });
}
string CQuenXMLMsg2::GetDestinationAddress() const {
  return NarrowText([&] { return impl_->GetDestinationAddress(); });
}
string CQuenXMLMsg2::GetReplyAddress() const {
  return NarrowText([&] { return impl_->GetReplyAddress(); });
}
string CQuenXMLMsg2::GetMessageContents() const {
  return Narrow([&] { return impl_->GetMessageContents(); });
}
string CQuenXMLMsg2::GetMessageType() const {
  return NarrowText([&] { return impl_->GetMessageType(); });
}
// The base message is given the bytes as they are.
void CQuenXMLMsg2::SetSourceAddress(const string& inAddress) {
  Narrow([&] { impl_->SetSourceAddress(Wide(inAddress)); });
  CQuenMessage::SetSourceAddress(inAddress);
}
void CQuenXMLMsg2::SetDestinationAddress(const string& inAddress) {
  Narrow([&] { impl_->SetDestinationAddress(Wide(inAddress)); });
  CQuenMessage::SetDestinationAddress(inAddress);
}
void CQuenXMLMsg2::SetReplyAddress(const string& inAddress) {
  Narrow([&] { impl_->SetReplyAddress(Wide(inAddress)); });
  CQuenMessage::SetReplyAddress(inAddress);
}
void CQuenXMLMsg2::SetMessageContents(const string& inXML) {
  Narrow([&] { impl_->SetMessageContents(inXML); });
}
void CQuenXMLMsg2::SetMessageType(const string& inType) {
  Narrow([&] { impl_->SetMessageType(Wide(inType)); });
  CQuenMessage::SetMessageType(inType);
}

void CQuenXMLMsg2::GetCustomHeader(const string& inName, CQuenXMLDocument2& outHeader) const {
  Narrow([&] {
    const wstring name = Wide(inName);
    outHeader = CQuenXMLDocument2();
    CQuenXMLDocument2w header;
    impl_->GetCustomHeader(name, header);
    outHeader.AppendSubset(Utf8(header.GetSubset()));
  });
}
void CQuenXMLMsg2::GetCustomHeader(const string& inName, CQuenXMLData2& outHeader) const {
  Narrow([&] {
    const wstring name = Wide(inName);
    outHeader.RemoveData("");
    CQuenXMLData2w header;
    impl_->GetCustomHeader(name, header);
    wstring text;
    header.GetSubset(text, u"");
    outHeader.AppendSubset(Utf8(text), "");
  });
}
void CQuenXMLMsg2::SetCustomHeader(const CQuenXMLDocument2& inHeader) {
  Narrow([&] { impl_->SetCustomHeader(WideDocument(inHeader)); });
}
void CQuenXMLMsg2::SetCustomHeader(const CQuenXMLData2& inHeader) {
  Narrow([&] { impl_->SetCustomHeader(WideTree(inHeader)); });
}
void CQuenXMLMsg2::GetBody(CQuenXMLDocument2& outBody) const {
  Narrow([&] {
    outBody.SetDocumentElement(CQuenXMLDocument2().GetDocumentElement());  // none
    auto body = std::make_unique<CQuenXMLDocument2w>();
    impl_->GetBody(*body);
    outBody.twin_ = std::move(body);
  });
}
void CQuenXMLMsg2::GetBody(CQuenXMLData2& outBody) const {
  CQuenXMLDocument2 body;
  GetBody(body);
  outBody = CQuenXMLData2(body.GetSubset());
}
string CQuenXMLMsg2::GetMessageName() const {
  return NarrowText([&] { return impl_->GetMessageName(); });
}
void CQuenXMLMsg2::GetError(string& outContext, std::uint32_t& outCode, string& outMessage,
                            string& outDetail) const {
  Narrow([&] {
    wstring context;
    wstring message;
    wstring detail;
    std::uint32_t code = outCode;
    impl_->GetError(context, code, message, detail);
    string utf8Context = Utf8(context);
    string utf8Message = Utf8(message);
    outDetail = Utf8(detail);
    outContext = std::move(utf8Context);
    outMessage = std::move(utf8Message);
    outCode = code;
  });
}
void CQuenXMLMsg2::GetError(CQuenXMLException2& outException) const {
  Narrow([&] {
    CQuenXMLException2w fault;
    impl_->GetError(fault);
    outException.SetErrorMessage(Utf8(fault.GetErrorMessage()));
    outException.SetErrorContext(Utf8(fault.GetErrorContext()));
    outException.SetErrorCode(fault.GetErrorCode());
    outException.SetErrorDetail(Utf8(fault.GetErrorDetail()));
  });
}
void CQuenXMLMsg2::SetError(const string& inContext, const std::uint32_t& inCode,
                            const string& inMessage, const string& inDetail) {
  Narrow([&] { impl_->SetError(Wide(inContext), inCode, Wide(inMessage), Wide(inDetail)); });
}
void CQuenXMLMsg2::SetError(const CQuenXMLException2& inException) {
  Narrow([&] {
    impl_->SetError(CQuenXMLException2w(
        Wide(inException.GetErrorContext()).c_str(), inException.GetErrorCode(),
        Wide(inException.GetErrorMessage()).c_str(), Wide(inException.GetErrorDetail()).c_str()));
  });
}
void CQuenXMLMsg2::ClearError() {
  Narrow([&] { impl_->ClearError(); });
}
void CQuenXMLMsg2::SetMessageContents(const CQuenXMLDocument2& inDocument) {
  SetMessageContents(inDocument.GetSubset());
}
void CQuenXMLMsg2::SetMessageContents(const CQuenXMLData2& inData) {
  string text;
  inData.GetSubset(text, "/");
  SetMessageContents(text);
}
void CQuenXMLMsg2::GetMessageContents(CQuenXMLDocument2& outDocument) const {
  const string text = GetMessageContents();
  CQuenXMLDocument2 document;
  document.LoadXML(text);
  outDocument = document;
}
void CQuenXMLMsg2::GetMessageContents(CQuenXMLData2& outData) const {
  if (outData.HasRoot() != 0) outData.RemoveData("");
  outData.AppendSubset(GetMessageContents(), "");
}
bool CQuenXMLMsg2::HasHeader() const { return impl_->HasHeader(); }
bool CQuenXMLMsg2::HasBody() const { return impl_->HasBody(); }
bool CQuenXMLMsg2::HasError() const { return impl_->HasError(); }
string CQuenXMLMsg2::GetTransportType() const {
  return NarrowText([&] { return impl_->GetTransportType(); });
}
string CQuenXMLMsg2::GetUserNameA() const {
  return NarrowText([&] { return impl_->GetUserNameA(); });
}
string CQuenXMLMsg2::GetHostName() const {
  return NarrowText([&] { return impl_->GetHostName(); });
}
string CQuenXMLMsg2::GetTransactionID() const {
  return NarrowText([&] { return impl_->GetTransactionID(); });
}
void CQuenXMLMsg2::SetTransportType(const string& inType) {
  Narrow([&] { impl_->SetTransportType(Wide(inType)); });
  CQuenMessage::SetMessageAttribute(Utf8(message_format::kTransportAttribute), inType);
}
void CQuenXMLMsg2::SetTransactionID(const string& inId) {
  Narrow([&] { impl_->SetTransactionID(Wide(inId)); });
}
void CQuenXMLMsg2::SetBody(const CQuenXMLDocument2& inBody) {
  Narrow([&] { impl_->SetBody(WideDocument(inBody)); });
}
void CQuenXMLMsg2::SetBody(const CQuenXMLData2& inBody) {
  Narrow([&] { impl_->SetBody(WideTree(inBody)); });
}
string CQuenXMLMsg2::GetEncryptedMessageContents(const string& inKey) {
  return Narrow([&] { return impl_->GetEncryptedMessageContents(Wide(inKey)); });
}
void CQuenXMLMsg2::SetEncryptedMessageContents(const string& inCipherText, const string& inKey) {
  Narrow([&] { impl_->SetEncryptedMessageContents(inCipherText, Wide(inKey)); });
}
void CQuenXMLMsg2::ConstructReplyMessage(CQuenXMLMsg2& outReply) const {
  Narrow([&] { impl_->ConstructReplyMessage(*outReply.impl_); });
}
void CQuenXMLMsg2::SetXMLMessageType(std::uint32_t inType) {
  Narrow([&] { impl_->SetXMLMessageType(inType); });
}
std::uint32_t CQuenXMLMsg2::GetXMLMessageType() const {
  return Narrow([&] { return impl_->GetXMLMessageType(); });
}
void CQuenXMLMsg2::SetMessageId(const string& inId) {
  Narrow([&] { impl_->SetMessageId(Wide(inId)); });
}
string CQuenXMLMsg2::GetMessageId() const {
  return NarrowText([&] { return impl_->GetMessageId(); });
}
string CQuenXMLMsg2::GetFormattedMessageContents() const {
  return Narrow([&] { return impl_->GetFormattedMessageContents(); });
}

CQuenXMLNode2 CQuenXMLMsg2::GetBody() {
  return CQuenXMLNode2(NarrowTwin([&]() -> CQuenXMLNode2w { return impl_->GetBody(); }));
}

}  // namespace quen

// SPDX-License-Identifier: Apache-2.0
//
// The public message: operations forward to the implementation of the same name, and some of them
// tell the base message too.
#include <quenxml2/message.h>

#include "message/message_format.h"
#include "message/message_impl.h"

namespace quen {

CQuenXMLMsg2w::CQuenXMLMsg2w() : impl_(std::make_unique<CQuenXMLMsgImpl2>()) {}
CQuenXMLMsg2w::CQuenXMLMsg2w(const wstring& inXML)
    : impl_(std::make_unique<CQuenXMLMsgImpl2>(inXML)) {}
// The base state does not come along.
CQuenXMLMsg2w::CQuenXMLMsg2w(const CQuenXMLMsg2w& inOther)
    : CQuenMessagew(), impl_(std::make_unique<CQuenXMLMsgImpl2>(*inOther.impl_)) {}
CQuenXMLMsg2w::CQuenXMLMsg2w(const CQuenMessagew& inMessageBase)
    : impl_(std::make_unique<CQuenXMLMsgImpl2>(inMessageBase.GetMessageContentsw())) {
  impl_->SetSourceAddress(inMessageBase.GetSourceAddress());
  impl_->SetDestinationAddress(inMessageBase.GetDestinationAddress());
  impl_->SetReplyAddress(inMessageBase.GetReplyAddress());
}
CQuenXMLMsg2w& CQuenXMLMsg2w::operator=(const CQuenXMLMsg2w& inOther) {
  *impl_ = *inOther.impl_;
  return *this;
}
CQuenXMLMsg2w::~CQuenXMLMsg2w() = default;

wstring CQuenXMLMsg2w::GetSourceAddress() const { return impl_->GetSourceAddress(); }
wstring CQuenXMLMsg2w::GetDestinationAddress() const { return impl_->GetDestinationAddress(); }
wstring CQuenXMLMsg2w::GetReplyAddress() const { return impl_->GetReplyAddress(); }
string CQuenXMLMsg2w::GetMessageContents() const { return impl_->GetMessageContents(); }
wstring CQuenXMLMsg2w::GetMessageType() const { return impl_->GetMessageType(); }
void CQuenXMLMsg2w::SetSourceAddress(const wstring& inAddress) {
  impl_->SetSourceAddress(inAddress);
  CQuenMessagew::SetSourceAddress(inAddress);
}
void CQuenXMLMsg2w::SetDestinationAddress(const wstring& inAddress) {
  impl_->SetDestinationAddress(inAddress);
  CQuenMessagew::SetDestinationAddress(inAddress);
}
void CQuenXMLMsg2w::SetReplyAddress(const wstring& inAddress) {
  impl_->SetReplyAddress(inAddress);
  CQuenMessagew::SetReplyAddress(inAddress);
}
void CQuenXMLMsg2w::SetMessageContents(const string& inXML) { impl_->SetMessageContents(inXML); }
void CQuenXMLMsg2w::SetMessageType(const wstring& inType) {
  impl_->SetMessageType(inType);
  CQuenMessagew::SetMessageType(inType);
}
wstring CQuenXMLMsg2w::GetMessageContentsw() const { return impl_->GetMessageContentsw(); }
void CQuenXMLMsg2w::SetMessageContentsw(const wstring& inXML) { impl_->SetMessageContentsw(inXML); }

void CQuenXMLMsg2w::GetCustomHeader(const wstring& inName, CQuenXMLDocument2w& outHeader) const {
  impl_->GetCustomHeader(inName, outHeader);
}
void CQuenXMLMsg2w::GetCustomHeader(const wstring& inName, CQuenXMLData2w& outHeader) const {
  impl_->GetCustomHeader(inName, outHeader);
}
void CQuenXMLMsg2w::SetCustomHeader(const CQuenXMLDocument2w& inHeader) {
  impl_->SetCustomHeader(inHeader);
}
void CQuenXMLMsg2w::SetCustomHeader(const CQuenXMLData2w& inHeader) {
  SetCustomHeader(inHeader.GetDocument());
}
void CQuenXMLMsg2w::GetBody(CQuenXMLDocument2w& outBody) const { impl_->GetBody(outBody); }
void CQuenXMLMsg2w::GetBody(CQuenXMLData2w& outBody) const { impl_->GetBody(outBody); }
wstring CQuenXMLMsg2w::GetMessageName() const { return impl_->GetMessageName(); }
void CQuenXMLMsg2w::GetError(wstring& outContext, std::uint32_t& outCode, wstring& outMessage,
                             wstring& outDetail) const {
  impl_->GetError(outContext, outCode, outMessage, outDetail);
}
void CQuenXMLMsg2w::GetError(CQuenXMLException2w& outException) const {
  impl_->GetError(outException);
}
void CQuenXMLMsg2w::SetError(const wstring& inContext, const std::uint32_t& inCode,
                             const wstring& inMessage, const wstring& inDetail) {
  impl_->SetError(inContext, inCode, inMessage, inDetail);
}
void CQuenXMLMsg2w::SetError(const CQuenXMLException2w& inException) {
  impl_->SetError(inException);
}
void CQuenXMLMsg2w::ClearError() { impl_->ClearError(); }
void CQuenXMLMsg2w::SetMessageContents(const CQuenXMLDocument2w& inDocument) {
  impl_->SetMessageContents(inDocument);
}
void CQuenXMLMsg2w::SetMessageContents(const CQuenXMLData2w& inData) {
  impl_->SetMessageContents(inData);
}
void CQuenXMLMsg2w::GetMessageContents(CQuenXMLDocument2w& outDocument) const {
  impl_->GetMessageContents(outDocument);
}
void CQuenXMLMsg2w::GetMessageContents(CQuenXMLData2w& outData) const {
  impl_->GetMessageContents(outData);
}
bool CQuenXMLMsg2w::HasHeader() const { return impl_->HasHeader(); }
bool CQuenXMLMsg2w::HasBody() const { return impl_->HasBody(); }
bool CQuenXMLMsg2w::HasError() const { return impl_->HasError(); }
wstring CQuenXMLMsg2w::GetTransportType() const { return impl_->GetTransportType(); }
wstring CQuenXMLMsg2w::GetUserNameA() const { return impl_->GetUserNameA(); }
wstring CQuenXMLMsg2w::GetHostName() const { return impl_->GetHostName(); }
wstring CQuenXMLMsg2w::GetTransactionID() const { return impl_->GetTransactionID(); }
void CQuenXMLMsg2w::SetTransportType(const wstring& inType) {
  impl_->SetTransportType(inType);
  CQuenMessagew::SetMessageAttribute(message_format::kTransportAttribute, inType);
}
void CQuenXMLMsg2w::SetTransactionID(const wstring& inId) { impl_->SetTransactionID(inId); }
void CQuenXMLMsg2w::SetBody(const CQuenXMLDocument2w& inBody) { impl_->SetBody(inBody); }
void CQuenXMLMsg2w::SetBody(const CQuenXMLData2w& inBody) { SetBody(inBody.GetDocument()); }
string CQuenXMLMsg2w::GetEncryptedMessageContents(const wstring& inKey) {
  return impl_->GetEncryptedMessageContents(inKey);
}
void CQuenXMLMsg2w::SetEncryptedMessageContents(const string& inCipherText, const wstring& inKey) {
  impl_->SetEncryptedMessageContents(inCipherText, inKey);
}
void CQuenXMLMsg2w::ConstructReplyMessage(CQuenXMLMsg2w& outReply) const {
  impl_->ConstructReplyMessage(*outReply.impl_);
}
void CQuenXMLMsg2w::SetXMLMessageType(std::uint32_t inType) { impl_->SetXMLMessageType(inType); }
std::uint32_t CQuenXMLMsg2w::GetXMLMessageType() const { return impl_->GetXMLMessageType(); }
void CQuenXMLMsg2w::SetMessageId(const wstring& inId) { impl_->SetMessageId(inId); }
wstring CQuenXMLMsg2w::GetMessageId() const { return impl_->GetMessageId(); }
string CQuenXMLMsg2w::GetFormattedMessageContents() const {
  return impl_->GetFormattedMessageContents();
}
wstring CQuenXMLMsg2w::GetFormattedMessageContentsw() const {
  return impl_->GetFormattedMessageContentsw();
}

CQuenXMLNode2w CQuenXMLMsg2w::GetBody() { return impl_->GetBody(); }

}  // namespace quen

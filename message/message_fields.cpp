// SPDX-License-Identifier: Apache-2.0
//
// The fields of the header, and the name of the message.
#include <iterator>

#include "foundation/failure.h"
#include "message/dropped_failure.h"
#include "message/envelope.h"
#include "message/message_format.h"
#include "message/message_impl.h"

namespace quen {

namespace format = message_format;

namespace {

wstring ChildField(const CQuenXMLElementImpl2w& inParent, const char16_t* inName) {
  wstring value;
  if (inParent.GetDOMNode() == nullptr) return value;
  internal::DropFailure([&] {
    const CQuenXMLElementImpl2w child = internal::ChildNamed(inParent, inName);
    if (child.GetDOMNode() != nullptr) value = child.GetValue();
  });
  return value;
}

}  // namespace

// The header, made as the first child of the envelope if there is none.
CQuenXMLNodeImpl2w CQuenXMLMsgImpl2::Header() {
  const CQuenXMLNodeImpl2w present = Find(format::kHeaderPath);
  if (present.GetDOMNode() != nullptr) return present;
  const CQuenXMLElementImpl2w header = internal::NewPart(Document(), format::kHeader);
  CQuenXMLElementImpl2w envelope = Document().GetDocumentElement();
  return envelope.InsertBefore(header, envelope.GetFirstChild());
}

// The element is at hand before it is in the tree, and stays so if the header cannot be had.
void CQuenXMLMsgImpl2::MakeHeaderElement(CQuenXMLElementImpl2w& outElement,
                                         const char16_t* inName) {
  outElement = Document().CreateElement(inName);
  outElement = CQuenXMLElementImpl2w(Header().AppendChild(outElement));
}

void CQuenXMLMsgImpl2::SetChildField(CQuenXMLElementImpl2w& ioParent, const char16_t* inParentName,
                                     const char16_t* inName, const wstring& inValue) {
  if (ioParent.GetDOMNode() == nullptr) MakeHeaderElement(ioParent, inParentName);
  CQuenXMLElementImpl2w child = internal::ChildNamed(ioParent, inName);
  if (child.GetDOMNode() == nullptr) child = ioParent.AppendElement(inName);
  child.SetValue(inValue);
}

wstring CQuenXMLMsgImpl2::GetHeaderField(std::u16string_view inPath) const {
  const CQuenXMLNodeImpl2w field = Find(inPath);
  return field.GetDOMNode() != nullptr ? field.GetValue() : wstring();
}

void CQuenXMLMsgImpl2::SetHeaderField(std::u16string_view inPath, const char16_t* inName,
                                      const wstring& inValue) {
  const CQuenXMLNodeImpl2w present = Find(inPath);
  if (present.GetDOMNode() != nullptr) {
    CQuenXMLElementImpl2w(present).SetValue(inValue);
    return;
  }
  CQuenXMLElementImpl2w field = Document().CreateElement(inName);
  field.SetValue(inValue);
  Header().AppendChild(field);
}

wstring CQuenXMLMsgImpl2::GetSourceAddress() const {
  return ChildField(delivery_, format::kSource);
}
wstring CQuenXMLMsgImpl2::GetReplyAddress() const { return ChildField(delivery_, format::kReply); }
wstring CQuenXMLMsgImpl2::GetDestinationAddress() const {
  return ChildField(delivery_, format::kDestination);
}
wstring CQuenXMLMsgImpl2::GetTransportType() const {
  return ChildField(delivery_, format::kTransportType);
}
wstring CQuenXMLMsgImpl2::GetMessageId() const { return ChildField(message_, format::kMessageId); }
wstring CQuenXMLMsgImpl2::GetMessageType() const {
  return GetHeaderField(format::kMessageTypePath);
}
wstring CQuenXMLMsgImpl2::GetTransactionID() const {
  return GetHeaderField(format::kTransactionPath);
}
wstring CQuenXMLMsgImpl2::GetUserNameA() const { return GetHeaderField(format::kUserPath); }
wstring CQuenXMLMsgImpl2::GetHostName() const { return GetHeaderField(format::kHostPath); }

void CQuenXMLMsgImpl2::SetSourceAddress(const wstring& inAddress) {
  SetChildField(delivery_, format::kDelivery, format::kSource, inAddress);
}
void CQuenXMLMsgImpl2::SetReplyAddress(const wstring& inAddress) {
  SetChildField(delivery_, format::kDelivery, format::kReply, inAddress);
}
void CQuenXMLMsgImpl2::SetDestinationAddress(const wstring& inAddress) {
  SetChildField(delivery_, format::kDelivery, format::kDestination, inAddress);
}
void CQuenXMLMsgImpl2::SetTransportType(const wstring& inType) {
  SetChildField(delivery_, format::kDelivery, format::kTransportType, inType);
}
void CQuenXMLMsgImpl2::SetMessageId(const wstring& inId) {
  SetChildField(message_, format::kMessage, format::kMessageId, inId);
}
void CQuenXMLMsgImpl2::SetMessageType(const wstring& inType) {
  SetHeaderField(format::kMessageTypePath, format::kMessageType, inType);
}
void CQuenXMLMsgImpl2::SetTransactionID(const wstring& inId) {
  SetHeaderField(format::kTransactionPath, format::kTransactionId, inId);
}

void CQuenXMLMsgImpl2::SetXMLMessageType(std::uint32_t inType) {
  const bool isKind = inType >= 1 && inType <= std::size(format::kKinds);
  const wstring text = isKind ? format::kKinds[inType - 1] : u"";
  if (message_.GetDOMNode() == nullptr) MakeHeaderElement(message_, format::kMessage);
  // An attribute that is there becomes empty; none is made to be empty.
  if (isKind || message_.HasAttribute(format::kKind)) message_.SetAttribute(format::kKind, text);
}

std::uint32_t CQuenXMLMsgImpl2::GetXMLMessageType() const {
  if (message_.GetDOMNode() == nullptr) return 0;
  const wstring text = message_.GetAttribute(format::kKind);
  for (std::uint32_t kind = 1; kind <= std::size(format::kKinds); ++kind)
    if (text == format::kKinds[kind - 1]) return kind;
  return 0;
}

wstring CQuenXMLMsgImpl2::GetMessageName() const {
  return body_.GetDOMNode() != nullptr ? body_.GetName() : wstring();
}

}  // namespace quen

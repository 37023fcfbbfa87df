// SPDX-License-Identifier: Apache-2.0
//
// The wire format of a message: its names and its paths. docs/message-format.md describes it.
#ifndef QUENXML2_MESSAGE_MESSAGE_FORMAT_H_
#define QUENXML2_MESSAGE_MESSAGE_FORMAT_H_

#include <string_view>

namespace quen::message_format {

// The name of the SOAP 1.1 envelope without the slash in which the published name ends. A reader
// compares it with nothing; it is what the library writes.
inline constexpr const char16_t* kNamespace = u"http://schemas.xmlsoap.org/soap/envelope";
static_assert(std::u16string_view(kNamespace).size() == 40);

// Qualified names in that namespace, and the declaration that the envelope carries.
inline constexpr const char16_t* kEnvelope = u"SOAP-ENV:Envelope";
inline constexpr const char16_t* kHeader = u"SOAP-ENV:Header";
inline constexpr const char16_t* kBody = u"SOAP-ENV:Body";
inline constexpr const char16_t* kFault = u"SOAP-ENV:Fault";
inline constexpr const char16_t* kDeclaration = u"xmlns:SOAP-ENV";

// Names in no namespace: in the header, ...
inline constexpr const char16_t* kDelivery = u"Delivery";
inline constexpr const char16_t* kSource = u"Src";
inline constexpr const char16_t* kReply = u"Reply";
inline constexpr const char16_t* kDestination = u"Dest";
inline constexpr const char16_t* kTransportType = u"TransportType";
inline constexpr const char16_t* kMessage = u"QuenXMLMsg";
inline constexpr const char16_t* kKind = u"MsgType";
inline constexpr const char16_t* kMessageId = u"MessageID";
inline constexpr const char16_t* kMessageType = u"MessageType";
inline constexpr const char16_t* kTransactionId = u"TransactionID";
// ... and in the fault, in the order in which they are written.
inline constexpr const char16_t* kFaultCode = u"faultcode";
inline constexpr const char16_t* kFaultActor = u"faultactor";
inline constexpr const char16_t* kFaultString = u"faultstring";
inline constexpr const char16_t* kFaultDetail = u"detail";

// The texts of the kinds 1, 2 and 3.
inline constexpr const char16_t* kKinds[] = {u"CMD", u"REPLY", u"EVENT"};
inline constexpr unsigned kReplyKind = 2;

// Where a reader finds the parts. Each begins with kEnvelopePath.
inline constexpr std::u16string_view kEnvelopePath = u"//SOAP-ENV:Envelope";
inline constexpr std::u16string_view kPrefix = u"SOAP-ENV:";
inline constexpr std::u16string_view kBodyElementStep = u"*[name()!='SOAP-ENV:Fault']";
inline constexpr std::u16string_view kHeaderPath = u"//SOAP-ENV:Envelope/SOAP-ENV:Header";
inline constexpr std::u16string_view kBodyPath = u"//SOAP-ENV:Envelope/SOAP-ENV:Body";
inline constexpr std::u16string_view kFaultPath =
    u"//SOAP-ENV:Envelope/SOAP-ENV:Body/SOAP-ENV:Fault";
inline constexpr std::u16string_view kBodyElementPath =
    u"//SOAP-ENV:Envelope/SOAP-ENV:Body/*[name()!='SOAP-ENV:Fault']";
inline constexpr std::u16string_view kDeliveryPath =
    u"//SOAP-ENV:Envelope/SOAP-ENV:Header/Delivery";
inline constexpr std::u16string_view kMessagePath =
    u"//SOAP-ENV:Envelope/SOAP-ENV:Header/QuenXMLMsg";
inline constexpr std::u16string_view kMessageTypePath =
    u"//SOAP-ENV:Envelope/SOAP-ENV:Header/MessageType";
inline constexpr std::u16string_view kTransactionPath =
    u"//SOAP-ENV:Envelope/SOAP-ENV:Header/TransactionID";
inline constexpr std::u16string_view kUserPath = u"//SOAP-ENV:Envelope/SOAP-ENV:Header/UserName";
inline constexpr std::u16string_view kHostPath = u"//SOAP-ENV:Envelope/SOAP-ENV:Header/HostName";

// Selects an envelope inside of the envelope.
inline constexpr std::u16string_view kNestedEnvelopePath = u"/*//SOAP-ENV:Envelope";
// The local name of all envelopes.
inline constexpr const char16_t* kEnvelopeLocalName = u"Envelope";

// The attribute of the base message that follows the transport type.
inline constexpr const char16_t* kTransportAttribute = u"TRANSPORT_TYPE";

}  // namespace quen::message_format

#endif  // QUENXML2_MESSAGE_MESSAGE_FORMAT_H_

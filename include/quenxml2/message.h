// SPDX-License-Identifier: Apache-2.0
//
// XML messages: an envelope in the shape of SOAP 1.1 with addresses, headers, a body and a fault.
//
// A message is one XML document. It leaves and enters as text; no operation moves it anywhere.
// docs/message-format.md describes the document, node by node.
//
//   quen::CQuenXMLMsg2w request(text);                   // or any XML, which becomes the body
//   quen::CQuenXMLData2w query;
//   request.GetBody(query);                              // a copy of the body element, by path
//   std::int32_t quantity = 0;
//   query.GetData(quantity, u"/PriceQuery/Quantity");
//
//   quen::CQuenXMLMsg2w reply;
//   request.ConstructReplyMessage(reply);                // a copy, with the addresses turned round
//   reply.SetBody(quen::CQuenXMLData2w(u"<Price>12.50</Price>"));
//   // or: reply.SetError(u"pricing.lookup", 1013, u"Path not found", u"no such item");
//   const std::string answer = reply.GetMessageContents();  // UTF-8, for the transport
//
// CQuenXMLMsg2w has wide texts, CQuenXMLMsg2 is its twin in UTF-8. Each derives from the base
// message of its width (message_base.h) and so has two states:
//   - the XML state, the document. Every operation that is declared here reads it.
//   - the base state. SetSourceAddress, SetDestinationAddress, SetReplyAddress and SetMessageType
//     write their text there too, and SetTransportType the attribute TRANSPORT_TYPE; nothing here
//     reads it. It is what operator==, the attributes, the priority and ConstructReplyMessage()
//     without an argument work on, which stay as the base message has them. It does not follow the
//     contents, and no copy, assignment or reply of this class carries it over. Assigning through a
//     reference to the base assigns the base state alone.
//
// Fields. A field that is absent reads as the empty text, or as kind 0, and reading makes nothing.
// Setting one makes what is missing: the header, and the element in it. A field that is set to the
// empty text exists and is empty. Where contents hold an element twice, the first counts.
//
// Lifetime. A message is a value: a copy shares nothing with its source. What goes in is copied,
// and what comes out is a copy, but for GetBody() without an argument: a handle into the message,
// which dangles when the contents are replaced (SetMessageContents, SetEncryptedMessageContents,
// assignment, being the target of ConstructReplyMessage) and when the message is destroyed. After
// that call an absent part is looked for in all of the message each time, since anything may have
// been put anywhere.
//
// What counts is what the contents held when they came, and what the operations of this class have
// done since. The body element, the fault, the element of the addresses and that of kind and id are
// found once: one that is taken out of the tree by other means (SetCustomHeader with an element of
// that name; SetBody, which takes the fault along; a handle) is still read and written until the
// contents are replaced, or until SetBody, SetError or ClearError find another.
//
// Failures are CQuenXMLException2w, in the narrow class CQuenXMLException2 with the same code,
// context and message:
//   1009  text that is not well-formed, or exceeds a limit of the parser; nothing has changed
//   1010  a name or expression that XPath cannot take; a name that is empty; a header without root
//   8     no such header, no body, no fault; contents or a body without a root
//   the cipher's code
// One thread at a time may use a message; different messages need no lock.
#ifndef QUENXML2_MESSAGE_H_
#define QUENXML2_MESSAGE_H_

#include <cstdint>
#include <memory>

#include <quenxml2/data.h>
#include <quenxml2/dom.h>
#include <quenxml2/exceptions.h>
#include <quenxml2/export.h>
#include <quenxml2/message_base.h>
#include <quenxml2/narrow_data.h>
#include <quenxml2/narrow_dom.h>
#include <quenxml2/types.h>

namespace quen {

class CQuenXMLMsgImpl2;

// An XML message in UTF-16: an envelope with addresses, headers, a body and a fault.
class QUENXML2_API CQuenXMLMsg2w : public CQuenMessagew {
 public:
  // An empty message: an envelope with an empty body.
  CQuenXMLMsg2w();
  // As SetMessageContentsw.
  CQuenXMLMsg2w(const wstring& inXML);
  CQuenXMLMsg2w(const CQuenXMLMsg2w& inOther);
  // The contents of a base message, with its three addresses written over what they hold, empty
  // ones too. Its type, attributes and priority do not arrive. Throws 1009, for empty contents too.
  CQuenXMLMsg2w(const CQuenMessagew& inMessageBase);
  CQuenXMLMsg2w& operator=(const CQuenXMLMsg2w& inOther);
  ~CQuenXMLMsg2w() override;

  // Of the document, as for all that follows: where the message comes from. "" if it does not tell.
  wstring GetSourceAddress() const override;
  // Where it goes to.
  wstring GetDestinationAddress() const override;
  // Where an answer is to go to.
  wstring GetReplyAddress() const override;
  // The whole message as text, without a declaration; in UTF-8 here. Throws 1010 for contents that
  // have a document type declaration.
  string GetMessageContents() const override;
  // A text of the application, in the element MessageType. It is not the kind.
  wstring GetMessageType() const override;
  // These write the document and the base state.
  void SetSourceAddress(const wstring& inAddress) override;
  // As SetSourceAddress, for where it goes to.
  void SetDestinationAddress(const wstring& inAddress) override;
  // As SetSourceAddress, for where an answer is to go to.
  void SetReplyAddress(const wstring& inAddress) override;
  // As SetMessageContentsw, from UTF-8.
  void SetMessageContents(const string& inXML) override;
  // As SetSourceAddress, for the element MessageType.
  void SetMessageType(const wstring& inType) override;
  // As GetMessageContents, as wide text.
  wstring GetMessageContentsw() const override;
  // A document whose root has the name SOAP-ENV:Envelope becomes the message as it is, whatever it
  // holds. Any other becomes the body element of a new envelope; what stands outside of its root is
  // lost. Throws 1009, and has changed nothing then.
  void SetMessageContentsw(const wstring& inXML) override;

  // Copies an element of the header, fixed fields included. `inName` is a name, or how an XPath
  // expression goes on behind the header ("Routing[@hops='3']"); one that begins with '/' is a
  // whole expression and may lead anywhere. The header replaces the root of the document, or what
  // stands at the cursor of the tree: that is removed first, also where the header is not found
  // then. Throws 1010 "Header name cannot be empty." and 8 "Header not found: " with the name.
  virtual void GetCustomHeader(const wstring& inName, CQuenXMLDocument2w& outHeader) const;
  virtual void GetCustomHeader(const wstring& inName, CQuenXMLData2w& outHeader) const;
  // Puts a copy of the root at the end of the header and takes out the first header of its name, so
  // that a header set again moves to the end. Throws 1010 "User specified msg header object has no
  // root element." for an empty document and for a prefix that the envelope does not declare, and
  // 1009 for an empty tree.
  virtual void SetCustomHeader(const CQuenXMLDocument2w& inHeader);
  virtual void SetCustomHeader(const CQuenXMLData2w& inHeader);
  // Copies the body element; the root of the document, or all of the tree, goes first. Where there
  // is no body element, a document is empty and 8 "The CQuenXMLMsg does not have a Body." is
  // thrown, and a tree is empty and nothing is thrown.
  virtual void GetBody(CQuenXMLDocument2w& outBody) const;
  virtual void GetBody(CQuenXMLData2w& outBody) const;
  // The name of the body element, with its prefix; "" if there is none.
  virtual wstring GetMessageName() const;
  // Reads the fault. What it lacks reads as 0 or as the empty text, and so does a code that is no
  // number from 0 to 4294967295. A detail that holds elements is XML: its first child. Nothing is
  // thrown but 8 "No SOAP fault information found."; the arguments are untouched then.
  virtual void GetError(wstring& outContext, std::uint32_t& outCode, wstring& outMessage,
                        wstring& outDetail) const;
  virtual void GetError(CQuenXMLException2w& outException) const;
  // Puts a fault at the end of the body, in the place of the one that HasError tells of; a second
  // one that came with the text stays. A detail that begins with '<'
  // goes in as XML. Throws 1009 if that is not well-formed, and the fault stands with an empty
  // detail then; throws 8 if the envelope has no body, and HasError is true then all the same,
  // ClearError and SetError throw 8, and only new contents end that.
  virtual void SetError(const wstring& inContext, const std::uint32_t& inCode,
                        const wstring& inMessage, const wstring& inDetail);
  virtual void SetError(const CQuenXMLException2w& inException);
  // Nothing happens if there is no fault.
  virtual void ClearError();
  // As SetMessageContentsw, by copying. A document without a root throws 8, an empty tree 1009; the
  // former contents stay then.
  virtual void SetMessageContents(const CQuenXMLDocument2w& inDocument);
  virtual void SetMessageContents(const CQuenXMLData2w& inData);
  // A copy of the whole document, in the place of what the argument held.
  virtual void GetMessageContents(CQuenXMLDocument2w& outDocument) const;
  virtual void GetMessageContents(CQuenXMLData2w& outData) const;
  // Whether there is a header, if only an empty one.
  virtual bool HasHeader() const;
  // Whether there is a body element. A fault is none.
  virtual bool HasBody() const;
  // Whether there is a fault. One that came with the text is the first there.
  virtual bool HasError() const;
  // A text of the application, in the element TransportType.
  virtual wstring GetTransportType() const;
  // The element UserName, which no operation writes but SetCustomHeader.
  virtual wstring GetUserNameA() const;
  // The element HostName, which no operation writes but SetCustomHeader.
  virtual wstring GetHostName() const;
  // A text of the application, in the element TransactionID.
  virtual wstring GetTransactionID() const;
  // Sets it, and the attribute TRANSPORT_TYPE of the base state.
  virtual void SetTransportType(const wstring& inType);
  // Sets it.
  virtual void SetTransactionID(const wstring& inId);
  // Replaces the whole body, fault included, by a new one at the end of the envelope that holds a
  // copy of the root. Where there is no body element, the copy goes to the end of the body that is
  // there, and nothing happens if there is none. Throws 8 "No root node found." for an empty
  // document and 1009 for an empty tree; nothing has changed then.
  virtual void SetBody(const CQuenXMLDocument2w& inBody);
  virtual void SetBody(const CQuenXMLData2w& inBody);
  // The text of GetMessageContentsw, enciphered as docs/cipher.md tells. A key is used and not
  // kept. A failure arrives with the context, code and message of the cipher.
  virtual string GetEncryptedMessageContents(const wstring& inKey);
  // Replaces the contents by those that were enciphered. Nothing happens for an empty cipher text.
  // Throws as the cipher does, and as SetMessageContents from a tree.
  virtual void SetEncryptedMessageContents(const string& inCipherText, const wstring& inKey);
  // Makes `outReply` an answer: a copy of this message, with body, headers and fault, that goes to
  // this message's reply address, comes from its destination, wants replies there, and has kind 2.
  // An address that is absent becomes an empty element. A message may be its own reply.
  virtual void ConstructReplyMessage(CQuenXMLMsg2w& outReply) const;
  using CQuenMessagew::ConstructReplyMessage;
  // Sets the kind: 1 a command, 2 a reply, 3 an event, 0 none of these. Any other number sets 0.
  virtual void SetXMLMessageType(std::uint32_t inType);
  // The kind; 0 if the message does not tell.
  virtual std::uint32_t GetXMLMessageType() const;
  // Sets the id, a text of the application.
  virtual void SetMessageId(const wstring& inId);
  // The id; "" if the message has none.
  virtual wstring GetMessageId() const;
  // The whole message with line feeds and two blanks a level, which a reader takes for text; in
  // UTF-8 here.
  virtual string GetFormattedMessageContents() const;
  // As GetFormattedMessageContents, as wide text.
  virtual wstring GetFormattedMessageContentsw() const;

  // The body element itself; the top of this file tells how long the handle lives. Throws as
  // GetBody into a document.
  CQuenXMLNode2w GetBody();

 private:
  std::unique_ptr<CQuenXMLMsgImpl2> impl_;
};

// As CQuenXMLMsg2w, in UTF-8; narrow.h tells what all narrow classes share. These differ:
// - GetBody into a tree throws 8 where there is no body element and leaves the tree as it was.
// - GetMessageContents into a tree replaces what stands at its cursor, not all of it.
// - GetCustomHeader and GetBody replace all of a document, comments outside of its root too;
//   GetCustomHeader without a name leaves its target empty.
// - SetMessageContents from a document without a root throws 1009; a document with a document type
//   is refused with 1010, and GetMessageContents of such a message into a document, too.
class QUENXML2_API CQuenXMLMsg2 : public CQuenMessage {
 public:
  CQuenXMLMsg2();
  CQuenXMLMsg2(const string& inXML);
  CQuenXMLMsg2(const CQuenXMLMsg2& inOther);
  CQuenXMLMsg2(const CQuenMessage& inMessageBase);
  CQuenXMLMsg2& operator=(const CQuenXMLMsg2& inOther);
  ~CQuenXMLMsg2() override;

  string GetSourceAddress() const override;
  string GetDestinationAddress() const override;
  string GetReplyAddress() const override;
  string GetMessageContents() const override;
  string GetMessageType() const override;
  void SetSourceAddress(const string& inAddress) override;
  void SetDestinationAddress(const string& inAddress) override;
  void SetReplyAddress(const string& inAddress) override;
  void SetMessageContents(const string& inXML) override;
  void SetMessageType(const string& inType) override;

  virtual void GetCustomHeader(const string& inName, CQuenXMLDocument2& outHeader) const;
  virtual void GetCustomHeader(const string& inName, CQuenXMLData2& outHeader) const;
  virtual void SetCustomHeader(const CQuenXMLDocument2& inHeader);
  virtual void SetCustomHeader(const CQuenXMLData2& inHeader);
  virtual void GetBody(CQuenXMLDocument2& outBody) const;
  virtual void GetBody(CQuenXMLData2& outBody) const;
  virtual string GetMessageName() const;
  virtual void GetError(string& outContext, std::uint32_t& outCode, string& outMessage,
                        string& outDetail) const;
  virtual void GetError(CQuenXMLException2& outException) const;
  virtual void SetError(const string& inContext, const std::uint32_t& inCode,
                        const string& inMessage, const string& inDetail);
  virtual void SetError(const CQuenXMLException2& inException);
  virtual void ClearError();
  virtual void SetMessageContents(const CQuenXMLDocument2& inDocument);
  virtual void SetMessageContents(const CQuenXMLData2& inData);
  virtual void GetMessageContents(CQuenXMLDocument2& outDocument) const;
  virtual void GetMessageContents(CQuenXMLData2& outData) const;
  virtual bool HasHeader() const;
  virtual bool HasBody() const;
  virtual bool HasError() const;
  virtual string GetTransportType() const;
  virtual string GetUserNameA() const;
  virtual string GetHostName() const;
  virtual string GetTransactionID() const;
  virtual void SetTransportType(const string& inType);
  virtual void SetTransactionID(const string& inId);
  virtual void SetBody(const CQuenXMLDocument2& inBody);
  virtual void SetBody(const CQuenXMLData2& inBody);
  virtual string GetEncryptedMessageContents(const string& inKey);
  virtual void SetEncryptedMessageContents(const string& inCipherText, const string& inKey);
  virtual void ConstructReplyMessage(CQuenXMLMsg2& outReply) const;
  using CQuenMessage::ConstructReplyMessage;
  virtual void SetXMLMessageType(std::uint32_t inType);
  virtual std::uint32_t GetXMLMessageType() const;
  virtual void SetMessageId(const string& inId);
  virtual string GetMessageId() const;
  virtual string GetFormattedMessageContents() const;

  CQuenXMLNode2 GetBody();

 private:
  std::unique_ptr<CQuenXMLMsgImpl2> impl_;
};

}  // namespace quen

#endif  // QUENXML2_MESSAGE_H_

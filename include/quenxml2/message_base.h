// SPDX-License-Identifier: Apache-2.0
//
// Messages as a transport sees them: addresses, contents, a type, attributes and a priority.
//
// CQuenMessagew has wide texts, CQuenMessage byte strings. Both are values: a copy shares nothing
// with its source. The XML messages derive from them, so that a message can travel wherever a base
// message is expected. One thread at a time may use a message; separate messages need no lock.
//
//   quen::CQuenMessagew request(u"shop", u"stock", u"shop-answers", u"<count item='bolt'/>");
//   request.SetMessageAttribute(u"TRANSPORT_TYPE", u"HTTP");
//   quen::CQuenMessagew reply = request.ConstructReplyMessage();
//   reply.GetDestinationAddress();  // u"shop-answers"
//   reply.SetMessageContentsw(u"<count item='bolt'>12</count>");
//
// The assignment returns a copy of the message, not a reference to it. It is virtual: assigning
// through a reference to a base class assigns the state that is described here, and what a derived
// class adds stays as it is, unless that class overrides it.
#ifndef QUENXML2_MESSAGE_BASE_H_
#define QUENXML2_MESSAGE_BASE_H_

#include <cstdint>
#include <memory>

#include <quenxml2/export.h>
#include <quenxml2/types.h>

namespace quen {

// The narrow message. Every text is a string of bytes that is kept as it is; where a message is
// shared with the rest of the library it is UTF-8.
class QUENXML2_API CQuenMessage {
 public:
  explicit CQuenMessage(const string& inSourceAddress = string(),
                        const string& inDestinationAddress = string(),
                        const string& inReplyAddress = string(),
                        const string& inMessageContents = string());
  CQuenMessage(const CQuenMessage& inOther);
  virtual ~CQuenMessage();
  virtual CQuenMessage operator=(const CQuenMessage& inOther);

  // An answer to this message: a copy of it that goes to the reply address, or to the source
  // address where there is no reply address, and comes from the destination address, to which an
  // answer goes in turn. Contents, type, attributes and priority are copied; the caller replaces
  // what differs.
  virtual CQuenMessage ConstructReplyMessage() const;
  // Whether addresses, contents, type, attributes and priority are all equal.
  virtual bool operator==(const CQuenMessage& inOther) const;

  // Where the message comes from.
  virtual string GetSourceAddress() const;
  // Where it goes to.
  virtual string GetDestinationAddress() const;
  // Where an answer is to go to; empty means the source address.
  virtual string GetReplyAddress() const;
  // The contents, byte by byte as they were set.
  virtual string GetMessageContents() const;
  // A text of the application.
  virtual string GetMessageType() const;
  // Empty if there is no such attribute. Names are compared unit by unit.
  virtual string GetMessageAttribute(const string& inName) const;
  // Replaces the address that the message comes from.
  virtual void SetSourceAddress(const string& inAddress);
  // Replaces the address that it goes to.
  virtual void SetDestinationAddress(const string& inAddress);
  // Replaces the address that an answer is to go to.
  virtual void SetReplyAddress(const string& inAddress);
  // Replaces the contents.
  virtual void SetMessageContents(const string& inContents);
  // Replaces the type.
  virtual void SetMessageType(const string& inType);
  // An attribute of a group: short for SetMessageAttribute(inGroup + ":" + inName, inValue), and
  // read under that name. An empty group gives the name alone.
  virtual void SetMessageAttribute(const string& inGroup, const string& inName,
                                   const string& inValue);
  // Adds the attribute or replaces its value. An empty value is a value.
  virtual void SetMessageAttribute(const string& inName, const string& inValue);
  // What the number says is for the applications to agree; a new message has 0.
  virtual void SetMessagePriority(const std::uint32_t& inPriority);
  // The number that was set last.
  virtual std::uint32_t GetMessagePriority() const;
  // Whether there is an attribute of that name, also one with an empty value.
  virtual bool HasMessageAttribute(const string& inName) const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

// The wide message. What is said of the narrow message holds; its contents can be written and read
// as wide text and as UTF-8, whichever way they were set.
class QUENXML2_API CQuenMessagew {
 public:
  // Throws as SetMessageContentsw does.
  explicit CQuenMessagew(const wstring& inSourceAddress = wstring(),
                         const wstring& inDestinationAddress = wstring(),
                         const wstring& inReplyAddress = wstring(),
                         const wstring& inMessageContents = wstring());
  CQuenMessagew(const CQuenMessagew& inOther);
  virtual ~CQuenMessagew();
  virtual CQuenMessagew operator=(const CQuenMessagew& inOther);

  virtual bool operator==(const CQuenMessagew& inOther) const;
  virtual CQuenMessagew ConstructReplyMessage() const;

  virtual wstring GetSourceAddress() const;
  virtual wstring GetDestinationAddress() const;
  virtual wstring GetReplyAddress() const;
  // The contents in UTF-8.
  virtual string GetMessageContents() const;
  virtual wstring GetMessageType() const;
  virtual wstring GetMessageAttribute(const wstring& inName) const;
  virtual void SetSourceAddress(const wstring& inAddress);
  virtual void SetDestinationAddress(const wstring& inAddress);
  virtual void SetReplyAddress(const wstring& inAddress);
  // Throws a CQuenExceptionw with code 2101 "Contents are not well-formed UTF-8"; the message is as
  // it was then.
  virtual void SetMessageContents(const string& inContents);
  virtual void SetMessageType(const wstring& inType);
  virtual void SetMessageAttribute(const wstring& inGroup, const wstring& inName,
                                   const wstring& inValue);
  virtual void SetMessageAttribute(const wstring& inName, const wstring& inValue);
  virtual void SetMessagePriority(const std::uint32_t& inPriority);
  virtual std::uint32_t GetMessagePriority() const;
  virtual bool HasMessageAttribute(const wstring& inName) const;
  // The contents as wide text.
  virtual wstring GetMessageContentsw() const;
  // Throws a CQuenExceptionw with code 2102 "Contents are not well-formed UTF-16", since the UTF-8
  // form cannot carry a lone surrogate; the message is as it was then.
  virtual void SetMessageContentsw(const wstring& inContents);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quen

#endif  // QUENXML2_MESSAGE_BASE_H_

// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/message_base.h>

#include <map>
#include <utility>

#include <quenxml2/exceptions.h>

#include "foundation/utf.h"

namespace quen {
namespace {

template <class Text>
struct MessageState {
  Text source;
  Text destination;
  Text reply;
  Text contents;
  Text type;
  std::map<Text, Text> attributes;
  std::uint32_t priority = 0;

  bool IsEqual(const MessageState& inOther) const {
    return source == inOther.source && destination == inOther.destination &&
           reply == inOther.reply && contents == inOther.contents && type == inOther.type &&
           attributes == inOther.attributes && priority == inOther.priority;
  }
  void TurnRound() {
    Text answered = reply.empty() ? std::move(source) : std::move(reply);
    source = destination;
    reply = std::exchange(destination, std::move(answered));
  }
  Text Attribute(const Text& inName) const {
    const auto found = attributes.find(inName);
    return found != attributes.end() ? found->second : Text();
  }
};

wstring CheckedContents(const char16_t* inContext, const wstring& inContents) {
  string bytes;
  if (internal::AppendUtf8(inContents, bytes) != internal::kWellFormed)
    throw CQuenExceptionw(inContext, 2102, u"Contents are not well-formed UTF-16");
  return inContents;
}

}  // namespace

struct CQuenMessage::State : MessageState<string> {};

CQuenMessage::CQuenMessage(const string& inSourceAddress, const string& inDestinationAddress,
                           const string& inReplyAddress, const string& inMessageContents)
    : state_(new State) {
  state_->source = inSourceAddress;
  state_->destination = inDestinationAddress;
  state_->reply = inReplyAddress;
  state_->contents = inMessageContents;
}
CQuenMessage::CQuenMessage(const CQuenMessage& inOther) : state_(new State(*inOther.state_)) {}
CQuenMessage::~CQuenMessage() = default;
CQuenMessage CQuenMessage::operator=(const CQuenMessage& inOther) {
  CQuenMessage result(inOther);
  state_ = std::make_unique<State>(*inOther.state_);
  return result;
}
CQuenMessage CQuenMessage::ConstructReplyMessage() const {
  CQuenMessage answer(*this);
  answer.state_->TurnRound();
  return answer;
}
bool CQuenMessage::operator==(const CQuenMessage& inOther) const {
  return state_->IsEqual(*inOther.state_);
}
string CQuenMessage::GetSourceAddress() const { return state_->source; }
string CQuenMessage::GetDestinationAddress() const { return state_->destination; }
string CQuenMessage::GetReplyAddress() const { return state_->reply; }
string CQuenMessage::GetMessageContents() const { return state_->contents; }
string CQuenMessage::GetMessageType() const { return state_->type; }
string CQuenMessage::GetMessageAttribute(const string& inName) const {
  return state_->Attribute(inName);
}
void CQuenMessage::SetSourceAddress(const string& inAddress) { state_->source = inAddress; }
void CQuenMessage::SetDestinationAddress(const string& inAddress) {
  state_->destination = inAddress;
}
void CQuenMessage::SetReplyAddress(const string& inAddress) { state_->reply = inAddress; }
void CQuenMessage::SetMessageContents(const string& inContents) { state_->contents = inContents; }
void CQuenMessage::SetMessageType(const string& inType) { state_->type = inType; }
void CQuenMessage::SetMessageAttribute(const string& inGroup, const string& inName,
                                       const string& inValue) {
  SetMessageAttribute(inGroup.empty() ? inName : inGroup + ":" + inName, inValue);
}
void CQuenMessage::SetMessageAttribute(const string& inName, const string& inValue) {
  state_->attributes.insert_or_assign(inName, inValue);
}
void CQuenMessage::SetMessagePriority(const std::uint32_t& inPriority) {
  state_->priority = inPriority;
}
std::uint32_t CQuenMessage::GetMessagePriority() const { return state_->priority; }
bool CQuenMessage::HasMessageAttribute(const string& inName) const {
  return state_->attributes.count(inName) != 0;
}

struct CQuenMessagew::State : MessageState<wstring> {};

CQuenMessagew::CQuenMessagew(const wstring& inSourceAddress, const wstring& inDestinationAddress,
                             const wstring& inReplyAddress, const wstring& inMessageContents)
    : state_(new State) {
  state_->source = inSourceAddress;
  state_->destination = inDestinationAddress;
  state_->reply = inReplyAddress;
  state_->contents = CheckedContents(u"CQuenMessagew::CQuenMessagew", inMessageContents);
}
CQuenMessagew::CQuenMessagew(const CQuenMessagew& inOther) : state_(new State(*inOther.state_)) {}
CQuenMessagew::~CQuenMessagew() = default;
CQuenMessagew CQuenMessagew::operator=(const CQuenMessagew& inOther) {
  CQuenMessagew result(inOther);
  state_ = std::make_unique<State>(*inOther.state_);
  return result;
}
bool CQuenMessagew::operator==(const CQuenMessagew& inOther) const {
  return state_->IsEqual(*inOther.state_);
}
CQuenMessagew CQuenMessagew::ConstructReplyMessage() const {
  CQuenMessagew answer(*this);
  answer.state_->TurnRound();
  return answer;
}
wstring CQuenMessagew::GetSourceAddress() const { return state_->source; }
wstring CQuenMessagew::GetDestinationAddress() const { return state_->destination; }
wstring CQuenMessagew::GetReplyAddress() const { return state_->reply; }
string CQuenMessagew::GetMessageContents() const {
  string bytes;
  internal::AppendUtf8(state_->contents, bytes);
  return bytes;
}
wstring CQuenMessagew::GetMessageType() const { return state_->type; }
wstring CQuenMessagew::GetMessageAttribute(const wstring& inName) const {
  return state_->Attribute(inName);
}
void CQuenMessagew::SetSourceAddress(const wstring& inAddress) { state_->source = inAddress; }
void CQuenMessagew::SetDestinationAddress(const wstring& inAddress) {
  state_->destination = inAddress;
}
void CQuenMessagew::SetReplyAddress(const wstring& inAddress) { state_->reply = inAddress; }
void CQuenMessagew::SetMessageContents(const string& inContents) {
  wstring contents;
  if (internal::AppendUtf16(inContents, contents) != internal::kWellFormed)
    throw CQuenExceptionw(u"CQuenMessagew::SetMessageContents", 2101,
                          u"Contents are not well-formed UTF-8");
  state_->contents = std::move(contents);
}
void CQuenMessagew::SetMessageType(const wstring& inType) { state_->type = inType; }
void CQuenMessagew::SetMessageAttribute(const wstring& inGroup, const wstring& inName,
                                        const wstring& inValue) {
  SetMessageAttribute(inGroup.empty() ? inName : inGroup + u":" + inName, inValue);
}
void CQuenMessagew::SetMessageAttribute(const wstring& inName, const wstring& inValue) {
  state_->attributes.insert_or_assign(inName, inValue);
}
void CQuenMessagew::SetMessagePriority(const std::uint32_t& inPriority) {
  state_->priority = inPriority;
}
std::uint32_t CQuenMessagew::GetMessagePriority() const { return state_->priority; }
bool CQuenMessagew::HasMessageAttribute(const wstring& inName) const {
  return state_->attributes.count(inName) != 0;
}
wstring CQuenMessagew::GetMessageContentsw() const { return state_->contents; }
void CQuenMessagew::SetMessageContentsw(const wstring& inContents) {
  state_->contents = CheckedContents(u"CQuenMessagew::SetMessageContentsw", inContents);
}

}  // namespace quen

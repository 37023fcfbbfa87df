// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <quenxml2/exceptions.h>
#include <quenxml2/message_base.h>

#include <cstring>
#include <string>
#include <type_traits>

namespace quen::testing {
namespace {

// The place of a virtual operation in its class: a pointer to a virtual member function holds one
// more than its offset in the table (Itanium C++ ABI, 2.3). The destructor takes the first two.
template <class Member>
std::size_t Slot(Member inMember) {
  std::size_t word;
  std::memcpy(&word, &inMember, sizeof word);
  return (word - 1) / sizeof(void*);
}

template <class Message, class Text>
void ExpectCommonSlots() {
  EXPECT_EQ(Slot(&Message::operator=), 2U);
  EXPECT_EQ(Slot(&Message::GetSourceAddress), 5U);
  EXPECT_EQ(Slot(&Message::GetDestinationAddress), 6U);
  EXPECT_EQ(Slot(&Message::GetReplyAddress), 7U);
  EXPECT_EQ(Slot(&Message::GetMessageContents), 8U);
  EXPECT_EQ(Slot(&Message::GetMessageType), 9U);
  EXPECT_EQ(Slot(&Message::GetMessageAttribute), 10U);
  EXPECT_EQ(Slot(&Message::SetSourceAddress), 11U);
  EXPECT_EQ(Slot(&Message::SetDestinationAddress), 12U);
  EXPECT_EQ(Slot(&Message::SetReplyAddress), 13U);
  EXPECT_EQ(Slot(&Message::SetMessageContents), 14U);
  EXPECT_EQ(Slot(&Message::SetMessageType), 15U);
  using Three = void (Message::*)(const Text&, const Text&, const Text&);
  using Two = void (Message::*)(const Text&, const Text&);
  EXPECT_EQ(Slot<Three>(&Message::SetMessageAttribute), 16U);
  EXPECT_EQ(Slot<Two>(&Message::SetMessageAttribute), 17U);
  EXPECT_EQ(Slot(&Message::SetMessagePriority), 18U);
  EXPECT_EQ(Slot(&Message::GetMessagePriority), 19U);
  EXPECT_EQ(Slot(&Message::HasMessageAttribute), 20U);
}

TEST(MessageBase, VirtualOperationsKeepTheirOrder) {
  ExpectCommonSlots<CQuenMessage, string>();
  EXPECT_EQ(Slot(&CQuenMessage::ConstructReplyMessage), 3U);
  EXPECT_EQ(Slot(&CQuenMessage::operator==), 4U);
  ExpectCommonSlots<CQuenMessagew, wstring>();
  EXPECT_EQ(Slot(&CQuenMessagew::operator==), 3U);
  EXPECT_EQ(Slot(&CQuenMessagew::ConstructReplyMessage), 4U);
  EXPECT_EQ(Slot(&CQuenMessagew::GetMessageContentsw), 21U);
  EXPECT_EQ(Slot(&CQuenMessagew::SetMessageContentsw), 22U);
}

template <class Text>
Text T(const char* inAscii) {
  return Text(inAscii, inAscii + std::strlen(inAscii));
}

// Both classes, each with its text.
struct Narrow {
  using Message = CQuenMessage;
  using Text = string;
};
struct Wide {
  using Message = CQuenMessagew;
  using Text = wstring;
};
template <class Width>
class MessageBaseOfWidth : public ::testing::Test {};
using Widths = ::testing::Types<Narrow, Wide>;
TYPED_TEST_SUITE(MessageBaseOfWidth, Widths, );

TYPED_TEST(MessageBaseOfWidth, EqualityComparesEveryPart) {
  using Message = typename TypeParam::Message;
  using Text = typename TypeParam::Text;
  const Text x = T<Text>("x");
  const Message empty;
  EXPECT_TRUE(empty == Message());
  void (*const kChanges[])(Message&, const Text&) = {
      [](Message& m, const Text& t) { m.SetSourceAddress(t); },
      [](Message& m, const Text& t) { m.SetDestinationAddress(t); },
      [](Message& m, const Text& t) { m.SetReplyAddress(t); },
      [](Message& m, const Text&) { m.SetMessageContents("x"); },
      [](Message& m, const Text& t) { m.SetMessageType(t); },
      [](Message& m, const Text& t) { m.SetMessageAttribute(t, Text()); },
      [](Message& m, const Text&) { m.SetMessagePriority(4294967295U); },
  };
  for (const auto& change : kChanges) {
    Message changed;
    change(changed, x);
    const auto row = &change - kChanges;
    EXPECT_FALSE(changed == empty) << "change " << row;
    EXPECT_TRUE(changed == Message(changed)) << "change " << row;
    Message assigned(x, x, x, x);
    const Message result = (assigned = changed);
    EXPECT_TRUE(assigned == changed && result == changed) << "change " << row;
    change(changed, x);
    changed.SetMessageType(T<Text>("other"));
    EXPECT_FALSE(assigned == changed) << "shared, change " << row;
  }
}

TYPED_TEST(MessageBaseOfWidth, AssigningToItselfChangesNothing) {
  using Message = typename TypeParam::Message;
  using Text = typename TypeParam::Text;
  Message message(T<Text>("a"), T<Text>("b"), T<Text>("c"), T<Text>("d"));
  const Message copy(message);
  const Message& self = message;
  message = self;
  EXPECT_TRUE(message == copy);
}

TYPED_TEST(MessageBaseOfWidth, AReplyTurnsTheAddressesRound) {
  using Message = typename TypeParam::Message;
  using Text = typename TypeParam::Text;
  const struct {
    const char *source, *destination, *reply, *replySource, *replyDestination, *replyReply;
  } kCases[] = {
      {"s", "d", "r", "d", "r", "d"},
      {"s", "d", "", "d", "s", "d"},
      {"", "d", "", "d", "", "d"},
      {"s", "", "r", "", "r", ""},
  };
  for (const auto& row : kCases) {
    Message request(T<Text>(row.source), T<Text>(row.destination), T<Text>(row.reply),
                    T<Text>("contents"));
    request.SetMessageType(T<Text>("type"));
    request.SetMessageAttribute(T<Text>("name"), T<Text>("value"));
    request.SetMessagePriority(7);
    Message expected(request);
    expected.SetSourceAddress(T<Text>(row.replySource));
    expected.SetDestinationAddress(T<Text>(row.replyDestination));
    expected.SetReplyAddress(T<Text>(row.replyReply));
    EXPECT_TRUE(request.ConstructReplyMessage() == expected) << row.source << row.reply;
  }
}

TYPED_TEST(MessageBaseOfWidth, AttributesHaveNamesAndGroups) {
  using Text = typename TypeParam::Text;
  typename TypeParam::Message message;
  const Text type = T<Text>("Content-Type");
  EXPECT_EQ(message.GetMessageAttribute(type), Text());
  EXPECT_FALSE(message.HasMessageAttribute(type));

  message.SetMessageAttribute(type, T<Text>("text/xml"));
  message.SetMessageAttribute(type, Text());
  EXPECT_EQ(message.GetMessageAttribute(type), Text());
  EXPECT_TRUE(message.HasMessageAttribute(type)) << "an empty value is a value";

  message.SetMessageAttribute(T<Text>("http"), type, T<Text>("text/plain"));
  EXPECT_EQ(message.GetMessageAttribute(T<Text>("http:Content-Type")), T<Text>("text/plain"));
  EXPECT_EQ(message.GetMessageAttribute(type), Text());
  message.SetMessageAttribute(Text(), type, T<Text>("text/html"));
  EXPECT_EQ(message.GetMessageAttribute(type), T<Text>("text/html"));
}

TEST(MessageBase, WideContentsHaveTwoForms) {
  const struct {
    wstring wide;
    string bytes;
  } kCases[] = {
      {u"", ""},
      {u"<a>\u00e9\u20ac\U0001F600</a>", "<a>\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80</a>"},
      {wstring(u"a\0b", 3), string("a\0b", 3)},
  };
  for (const auto& row : kCases) {
    CQuenMessagew fromWide, fromBytes;
    fromWide.SetMessageContentsw(row.wide);
    fromBytes.SetMessageContents(row.bytes);
    EXPECT_EQ(fromWide.GetMessageContents(), row.bytes);
    EXPECT_EQ(fromBytes.GetMessageContentsw(), row.wide);
    EXPECT_TRUE(fromWide == fromBytes && fromWide == CQuenMessagew(u"", u"", u"", row.wide));
  }
}

template <class Operation>
std::uint32_t CodeOf(Operation&& inOperation) {
  try {
    inOperation();
  } catch (const CQuenExceptionw& failure) {
    return failure.GetErrorCode();
  }
  return 0;
}

TEST(MessageBase, ContentsThatAreNoTextAreRefused) {
  CQuenMessagew message(u"", u"", u"", u"before");
  EXPECT_EQ(CodeOf([&] { message.SetMessageContents("a\xC3"); }), 2101U);
  EXPECT_EQ(CodeOf([&] { message.SetMessageContentsw(u"a\xd800"); }), 2102U);
  EXPECT_EQ(CodeOf([&] { CQuenMessagew(u"", u"", u"", u"\xdc00"); }), 2102U);
  EXPECT_EQ(message.GetMessageContentsw(), u"before");

  CQuenMessage narrow;
  narrow.SetMessageContents("a\xC3");
  EXPECT_EQ(narrow.GetMessageContents(), "a\xC3");
}

// A class that adds a state and an assignment of its own, as the XML messages do.
class DerivedMessagew : public CQuenMessagew {
 public:
  using CQuenMessagew::operator=;
  DerivedMessagew() = default;
  DerivedMessagew(const DerivedMessagew& inOther) : CQuenMessagew(), own_(inOther.own_) {}
  DerivedMessagew& operator=(const DerivedMessagew& inOther) {
    own_ = inOther.own_;
    return *this;
  }
  void SetSourceAddress(const wstring& inAddress) override {
    own_ = inAddress;
    CQuenMessagew::SetSourceAddress(inAddress);
  }
  wstring GetSourceAddress() const override { return u"own " + own_; }

 private:
  wstring own_;
};

TEST(MessageBase, DerivedMessagesKeepTheirOwnAssignment) {
  DerivedMessagew first, second;
  first.SetSourceAddress(u"first");
  second.SetSourceAddress(u"second");
  CQuenMessagew& base = second;
  base = first;
  EXPECT_EQ(second.GetSourceAddress(), u"own second") << "the base assigns the base state";
  EXPECT_TRUE(static_cast<const CQuenMessagew&>(second) == first);

  second.SetSourceAddress(u"second");
  static_assert(std::is_same_v<decltype(second = first), DerivedMessagew&>);
  second = first;
  EXPECT_EQ(second.GetSourceAddress(), u"own first");
  EXPECT_FALSE(static_cast<const CQuenMessagew&>(second) == first) << "its base state stays";
  EXPECT_EQ(base.GetSourceAddress(), u"own first");
}

}  // namespace
}  // namespace quen::testing

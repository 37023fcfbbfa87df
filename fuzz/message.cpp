// SPDX-License-Identifier: Apache-2.0
// Messages from bytes: both widths read, answer and write the same, and what is written reads as
// the same message.
#include "fuzz/support.h"

namespace quen::fuzz {
namespace {

// A text as the tree that it reads as: an element with an empty text is one without.
template <class String>
std::string Tree(const String& inText) {
  CQuenXMLData2w tree;
  if (!FailureOf<CQuenXMLException2w>([&] {
         tree.AppendSubset(WideTypes::Text(Shown(inText)), u"");
       }).empty())
    return Shown(inText);
  return Shown(Dump::Of(tree.GetCursor()));
}

// Everything that can be asked of a message, as text.
template <class W>
std::string Read(const typename W::Msg& inMessage) {
  std::string out;
  const auto add = [&](const char* what, const std::string& text) {
    out += std::string(what) + "=" + text + "\n";
  };
  const auto ask = [&](const char* what, auto&& question) {
    typename W::String text;
    const std::string failure = FailureOf<typename W::Exception>([&] { text = question(); });
    add(what, failure.empty() ? Tree(text) : failure);
  };
  ask("source", [&] { return inMessage.GetSourceAddress(); });
  ask("reply", [&] { return inMessage.GetReplyAddress(); });
  ask("destination", [&] { return inMessage.GetDestinationAddress(); });
  ask("type", [&] { return inMessage.GetMessageType(); });
  ask("transport", [&] { return inMessage.GetTransportType(); });
  ask("user", [&] { return inMessage.GetUserNameA(); });
  ask("host", [&] { return inMessage.GetHostName(); });
  ask("transaction", [&] { return inMessage.GetTransactionID(); });
  ask("id", [&] { return inMessage.GetMessageId(); });
  ask("name", [&] { return inMessage.GetMessageName(); });
  add("kind", std::to_string(inMessage.GetXMLMessageType()));
  add("parts", std::to_string(inMessage.HasHeader()) + std::to_string(inMessage.HasBody()) +
                   std::to_string(inMessage.HasError()));
  typename W::String context, message, detail;
  std::uint32_t code = 7;
  add("no fault", FailureOf<typename W::Exception>(
                      [&] { inMessage.GetError(context, code, message, detail); }));
  add("fault",
      Shown(context) + "|" + std::to_string(code) + "|" + Shown(message) + "|" + Shown(detail));
  for (const char* const header : {"Routing", "Delivery/SourceAddress", "*[1]", "Delivery["}) {
    typename W::Document document;
    add(header, FailureOf<typename W::Exception>(
                    [&] { inMessage.GetCustomHeader(W::Text(header), document); }));
    ask("header", [&] { return document.GetSubset(); });
  }
  typename W::Document body;
  add("no body", FailureOf<typename W::Exception>([&] { inMessage.GetBody(body); }));
  ask("body", [&] { return body.GetSubset(); });
  return out;
}

template <class W>
std::string Run(const std::string& inBytes) {
  using Failure = typename W::Exception;
  typename W::Msg message;
  message.SetSourceAddress(W::Text("before"));
  std::string out = FailureOf<Failure>([&] { message.SetMessageContents(inBytes); });
  if (!out.empty()) {
    Require(message.GetSourceAddress() == W::Text("before"), "refused contents changed a message");
    return out;
  }
  const std::string read = Read<W>(message);
  out += read;
  string text;
  const std::string unwritten = FailureOf<Failure>([&] { text = message.GetMessageContents(); });
  if (unwritten.empty()) {
    typename W::Msg again;
    // XML 1.1 has what XML 1.0 cannot read again.
    const std::string failure = FailureOf<Failure>([&] { again.SetMessageContents(text); });
    if (failure.empty()) {
      if (text.find('\r') == string::npos && text.find('\t') == string::npos &&
          text.find('\n') == string::npos)
        RequireSame(read, Read<W>(again), "a message changes when it is written and read");
    } else {
      Require(inBytes.find("1.1") != string::npos, "a written message cannot be read", failure);
    }
  }
  out += unwritten + Tree(text);

  typename W::Msg reply;
  message.ConstructReplyMessage(reply);
  RequireSame(Shown(reply.GetDestinationAddress()), Shown(message.GetReplyAddress()), "a reply");
  Require(reply.GetXMLMessageType() == 2, "a reply is no reply");
  const std::string details[] = {"", "text & <", "<d>x</d>", "<d"};
  out += FailureOf<Failure>([&] {
    reply.SetError(W::Text("c"), 4000000000u, W::Text("m"), W::Text(details[inBytes.size() % 4]));
  });
  out += Read<W>(reply);
  out += FailureOf<Failure>([&] { reply.ClearError(); });
  out += FailureOf<Failure>(
      [&] { reply.SetCustomHeader(typename W::Data(W::Text("<Routing hops='3'>x</Routing>"))); });
  out +=
      FailureOf<Failure>([&] { reply.SetBody(typename W::Data(W::Text("<Price>12.50</Price>"))); });
  reply.SetMessageId(W::Text("\u20ac"));
  out += Read<W>(reply);
  RequireSame(Read<W>(message), read, "an answer changed the message");
  RequireSame(Read<W>(typename W::Msg(message)), read, "a copy is another message");
  return out;
}

}  // namespace
}  // namespace quen::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* inBytes, std::size_t inSize) {
  using namespace quen::fuzz;
  const std::string bytes(reinterpret_cast<const char*>(inBytes), inSize);
  RequireSame(Run<WideTypes>(bytes), Run<NarrowTypes>(bytes), "the widths differ");
  return 0;
}

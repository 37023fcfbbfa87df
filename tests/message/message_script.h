// SPDX-License-Identifier: Apache-2.0
//
// A message under test, driven by steps of text, so that one row of a table runs through both
// widths and its outcome is a transcript.
//
// A step is a verb and an argument. These write a transcript line only when they fail:
//   src dest reply transport type transaction id TEXT, kind N        the fields
//   header XML, header-tree XML, body XML, body-tree XML             from a document, from a tree
//   error CONTEXT|CODE|MESSAGE|DETAIL, clear                         the fault
//   contents XML, contents-document XML, contents-tree XML           the whole
// These write what they read:
//   fields           every field that is not empty, "header", "body", "error" for the questions
//   text             the contents
//   get-error        CONTEXT|CODE|MESSAGE|DETAIL
//   get-header NAME, get-header-tree NAME, get-body                  as text
// A failure is "8 message @ context". "" as XML stands for an empty document or tree.
#ifndef QUENXML2_TESTS_MESSAGE_MESSAGE_SCRIPT_H_
#define QUENXML2_TESTS_MESSAGE_MESSAGE_SCRIPT_H_

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/widths.h"

// The whole envelope around `inner`, as the library writes it.
#define ENVELOPE(inner)                                                                   \
  "<SOAP-ENV:Envelope xmlns:SOAP-ENV=\"http://schemas.xmlsoap.org/soap/envelope\">" inner \
  "</SOAP-ENV:Envelope>"
#define HEADER(inner) "<SOAP-ENV:Header>" inner "</SOAP-ENV:Header>"
#define BODY(inner) "<SOAP-ENV:Body>" inner "</SOAP-ENV:Body>"
#define FAULT(inner) "<SOAP-ENV:Fault>" inner "</SOAP-ENV:Fault>"

namespace quen::test {

template <class W>
typename W::Document DocumentOf(std::string_view inXML) {
  typename W::Document document;
  if (!inXML.empty()) document.LoadXML(W::Text(inXML));
  return document;
}

template <class W>
typename W::Data TreeOf(std::string_view inXML) {
  return typename W::Data(W::Text(inXML));
}

template <class W>
class MessageScript {
 public:
  using Transcript = std::vector<std::string>;

  explicit MessageScript(typename W::Msg& ioMessage) : message_(ioMessage) {}

  Transcript Run(const std::vector<std::string_view>& inSteps) {
    Transcript transcript;
    for (const std::string_view step : inSteps) {
      const std::size_t blank = step.find(' ');
      const std::string_view verb = step.substr(0, blank);
      const std::string_view argument =
          blank == std::string_view::npos ? std::string_view() : step.substr(blank + 1);
      output_.clear();
      const std::string failure = FailureAt<W>([&] { Do(verb, argument); });
      if (!failure.empty()) output_ = failure;
      if (!failure.empty() || wrote_) transcript.push_back(output_);
      wrote_ = false;
    }
    return transcript;
  }

 private:
  using String = typename W::String;

  void Do(std::string_view inVerb, std::string_view inArgument) {
    const String text = W::Text(inArgument);
    if (inVerb == "src") return message_.SetSourceAddress(text);
    if (inVerb == "dest") return message_.SetDestinationAddress(text);
    if (inVerb == "reply") return message_.SetReplyAddress(text);
    if (inVerb == "transport") return message_.SetTransportType(text);
    if (inVerb == "type") return message_.SetMessageType(text);
    if (inVerb == "transaction") return message_.SetTransactionID(text);
    if (inVerb == "id") return message_.SetMessageId(text);
    if (inVerb == "kind") return message_.SetXMLMessageType(Number(inArgument));
    if (inVerb == "header") return message_.SetCustomHeader(DocumentOf<W>(inArgument));
    if (inVerb == "header-tree") return message_.SetCustomHeader(TreeOf<W>(inArgument));
    if (inVerb == "body") return message_.SetBody(DocumentOf<W>(inArgument));
    if (inVerb == "body-tree") return message_.SetBody(TreeOf<W>(inArgument));
    if (inVerb == "error") return SetError(inArgument);
    if (inVerb == "clear") return message_.ClearError();
    if (inVerb == "contents") return message_.SetMessageContents(std::string(inArgument));
    if (inVerb == "contents-document")
      return message_.SetMessageContents(DocumentOf<W>(inArgument));
    if (inVerb == "contents-tree") return message_.SetMessageContents(TreeOf<W>(inArgument));
    if (inVerb == "fields") return Write(Fields());
    if (inVerb == "text") return Write(message_.GetMessageContents());
    if (inVerb == "get-error") return Write(Error());
    if (inVerb == "get-header") {
      typename W::Document document = DocumentOf<W>("<old/>");
      message_.GetCustomHeader(text, document);
      return Write(W::Utf8(document.GetSubset()));
    }
    if (inVerb == "get-header-tree") {
      typename W::Data tree = TreeOf<W>("<old/>");
      message_.GetCustomHeader(text, tree);
      return Write(Whole<W>(tree));
    }
    if (inVerb == "get-body") {
      typename W::Document document = DocumentOf<W>("<old/>");
      typename W::Data tree = TreeOf<W>("<old/>");
      std::as_const(message_).GetBody(document);
      std::as_const(message_).GetBody(tree);
      EXPECT_EQ(Whole<W>(tree), W::Utf8(document.GetSubset()));
      EXPECT_EQ(W::Utf8(message_.GetBody().GetSubset()), Whole<W>(tree));
      return Write(Whole<W>(tree));
    }
    ADD_FAILURE() << "no such step: " << inVerb;
  }

  static std::uint32_t Number(std::string_view inText) {
    return static_cast<std::uint32_t>(std::stoul(std::string(inText)));
  }

  void SetError(std::string_view inArgument) {
    std::vector<std::string_view> parts;
    for (int i = 0; i < 3; ++i) {
      const std::size_t bar = inArgument.find('|');
      parts.push_back(inArgument.substr(0, bar));
      inArgument.remove_prefix(bar + 1);
    }
    // The two forms by turns: they have to do the same.
    const bool asException = parts[0].size() % 2 == 0;
    const std::uint32_t code = Number(parts[1]);
    if (asException) {
      return message_.SetError(typename W::Exception(
          W::Text(parts[0]).c_str(), code, W::Text(parts[2]).c_str(), W::Text(inArgument).c_str()));
    }
    message_.SetError(W::Text(parts[0]), code, W::Text(parts[2]), W::Text(inArgument));
  }

  std::string Error() {
    String context = W::Text("untouched");
    String errorMessage = context;
    String detail = context;
    std::uint32_t code = 77;
    typename W::Exception asException(context.c_str(), 77);
    const std::string failure = FailureAt<W>([&] { message_.GetError(asException); });
    EXPECT_EQ(FailureAt<W>([&] { message_.GetError(context, code, errorMessage, detail); }),
              failure);
    EXPECT_EQ(W::Utf8(asException.GetErrorContext()), W::Utf8(context));
    EXPECT_EQ(asException.GetErrorCode(), code);
    if (!failure.empty()) {
      EXPECT_EQ(W::Utf8(context) + W::Utf8(errorMessage) + W::Utf8(detail),
                "untoucheduntoucheduntouched");
      return failure;
    }
    EXPECT_EQ(W::Utf8(asException.GetErrorMessage()), W::Utf8(errorMessage));
    EXPECT_EQ(W::Utf8(asException.GetErrorDetail()), W::Utf8(detail));
    return W::Utf8(context) + "|" + std::to_string(code) + "|" + W::Utf8(errorMessage) + "|" +
           W::Utf8(detail);
  }

  std::string Fields() {
    std::string line;
    const auto add = [&line](const std::string& inText) {
      line += (line.empty() ? "" : " ") + inText;
    };
    const auto field = [&add](const char* inName, const String& inValue) {
      if (!inValue.empty()) add(std::string(inName) + "=" + W::Utf8(inValue));
    };
    field("src", message_.GetSourceAddress());
    field("dest", message_.GetDestinationAddress());
    field("reply", message_.GetReplyAddress());
    field("transport", message_.GetTransportType());
    field("type", message_.GetMessageType());
    field("transaction", message_.GetTransactionID());
    field("user", message_.GetUserNameA());
    field("host", message_.GetHostName());
    field("id", message_.GetMessageId());
    if (message_.GetXMLMessageType() != 0)
      add("kind=" + std::to_string(message_.GetXMLMessageType()));
    field("name", message_.GetMessageName());
    if (message_.HasHeader()) add("header");
    if (message_.HasBody()) add("body");
    if (message_.HasError()) add("error");
    return line;
  }

  void Write(std::string inLine) {
    output_ = std::move(inLine);
    wrote_ = true;
  }

  typename W::Msg& message_;
  std::string output_;
  bool wrote_ = false;
};

// One row: contents ("" for a new message), steps, transcript.
struct MessageCase {
  const char* what;
  const char* contents;
  std::vector<std::string_view> steps;
  std::vector<std::string> transcript;
};

template <class W, class Cases>
void RunMessageCases(const Cases& inCases) {
  for (const MessageCase& row : inCases) {
    SCOPED_TRACE(row.what);
    typename W::Msg message;
    if (*row.contents != '\0') message.SetMessageContents(std::string(row.contents));
    EXPECT_EQ(MessageScript<W>(message).Run(row.steps), row.transcript);
  }
}

}  // namespace quen::test

#endif  // QUENXML2_TESTS_MESSAGE_MESSAGE_SCRIPT_H_

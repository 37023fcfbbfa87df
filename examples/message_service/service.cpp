// SPDX-License-Identifier: Apache-2.0
//
// A price service: reads requests from its standard input, writes a reply for each to its standard
// output, and ends with its input. Whatever comes in, an answer goes out: a price or a fault.
#include <unistd.h>

#include <exception>
#include <iostream>
#include <string>

#include <quenxml2/message.h>

#include "examples/message_service/frames.h"

namespace {

constexpr int kMaxRequests = 1000;
constexpr unsigned kMaxSeconds = 60;

std::string PriceOf(const std::string& inItem) {
  if (inItem == "bolt") return "0.25";
  if (inItem == "nut") return "0.10";
  throw quen::CQuenXMLException2("pricing.lookup", 1, "There is no such item", inItem.c_str());
}

// The body of the answer.
quen::CQuenXMLData2 Price(const quen::CQuenXMLMsg2& inRequest) {
  if (inRequest.GetMessageName() != "PriceQuery")
    throw quen::CQuenXMLException2("pricing.service", 2, "Only a PriceQuery is answered");
  quen::CQuenXMLData2 query;
  inRequest.GetBody(query);
  std::string item;
  query.GetData(item, "/PriceQuery/Item");  // throws 1013 if there is none

  quen::CQuenXMLData2 price;
  price.AddRootNode("Price");
  price.SetAttr("currency", "EUR", "/Price");
  price.AddData(item, "/Price/Item");
  price.AddData(PriceOf(item), "/Price/Each");
  return price;
}

std::string Answer(const std::string& inText) {
  quen::CQuenXMLMsg2 reply;
  try {
    const quen::CQuenXMLMsg2 request(inText);  // any XML is taken, throws 1009 for what is none
    request.ConstructReplyMessage(reply);      // addresses and ids come along, and the body
    reply.ClearError();
    reply.SetBody(Price(request));
    return reply.GetMessageContents();
  } catch (const quen::CQuenXMLException2& failure) {
    quen::CQuenXMLMsg2 fault;
    fault.SetDestinationAddress(reply.GetDestinationAddress());
    fault.SetSourceAddress("pricing.service");
    fault.SetMessageId(reply.GetMessageId());
    fault.SetXMLMessageType(2);
    fault.SetError(failure);
    return fault.GetMessageContents();
  }
}

}  // namespace

int main() {
  alarm(kMaxSeconds);
  try {
    std::string text;
    for (int i = 0; i < kMaxRequests && ReadFrame(STDIN_FILENO, text); ++i)
      WriteFrame(STDOUT_FILENO, Answer(text));
  } catch (const std::exception& failure) {
    std::cerr << "service: " << failure.what() << '\n';
    return 1;
  }
  return 0;
}

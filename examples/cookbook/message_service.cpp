// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/quenxml2.h>

#include <iostream>
#include <string>

// A request as text in, a reply as text out. Whatever comes in, something goes out: a body or a
// fault.
std::string Answer(const std::string& text) {
  quen::CQuenXMLMsg2 reply;
  try {
    const quen::CQuenXMLMsg2 request(text);
    request.ConstructReplyMessage(reply);  // addresses turned round, ids kept
    quen::CQuenXMLData2 query;
    request.GetBody(query);
    const int quantity = quen::Get<int>(query, "/PriceQuery/Quantity");
    quen::CQuenXMLData2 price("<Price/>");
    price.SetData(quantity * 25, "/Price");
    reply.SetBody(price);
    return reply.GetMessageContents();
  } catch (const quen::CQuenXMLException2& failure) {
    quen::CQuenXMLMsg2 fault;  // not the reply: it may hold the body of the request
    fault.SetDestinationAddress(reply.GetDestinationAddress());
    fault.SetMessageId(reply.GetMessageId());
    fault.SetXMLMessageType(2);
    fault.SetError(failure);
    return fault.GetMessageContents();
  }
}

std::string Ask(const std::string& body) {
  quen::CQuenXMLMsg2 request;
  request.SetSourceAddress("shop");
  request.SetReplyAddress("shop.replies");
  request.SetDestinationAddress("prices");
  request.SetXMLMessageType(1);  // a command
  request.SetMessageId("4711");
  request.SetBody(quen::CQuenXMLData2(body));
  return request.GetMessageContents();
}

void Show(const std::string& text) {
  const quen::CQuenXMLMsg2 reply(text);
  std::cout << "for " << reply.GetDestinationAddress() << ", id " << reply.GetMessageId() << ": ";
  if (reply.HasError()) {
    quen::CQuenXMLException2 fault;
    reply.GetError(fault);
    std::cout << fault.GetErrorCode() << " " << fault.GetErrorMessage() << " ("
              << fault.GetErrorDetail() << ")\n";
  } else {
    quen::CQuenXMLData2 body;
    reply.GetBody(body);
    std::cout << quen::Get<int>(body, "/Price") << '\n';
  }
}

int main() {
  try {
    Show(Answer(Ask("<PriceQuery><Quantity>3</Quantity></PriceQuery>")));
    Show(Answer(Ask("<PriceQuery/>")));
  } catch (const quen::CQuenXMLException2& failure) {
    std::cerr << failure << '\n';
    return 1;
  }
}

// SPDX-License-Identifier: Apache-2.0
//
// Starts the price service, asks it for prices, and sends it what a service meets on a bad day.
//
//   message_client PATH_OF_THE_SERVICE
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <exception>
#include <iostream>
#include <string>

#include <quenxml2/message.h>

#include "examples/message_service/frames.h"

namespace {

constexpr unsigned kMaxSeconds = 60;

std::string Request(const std::string& inItem) {
  quen::CQuenXMLMsg2 request;
  request.SetSourceAddress("orders.client7");
  request.SetReplyAddress("orders.client7.replies");
  request.SetDestinationAddress("pricing.service");
  request.SetXMLMessageType(1);
  request.SetMessageId("4711");
  quen::CQuenXMLData2 query;
  query.CreateNodes("/PriceQuery/Item");
  query.SetData(inItem, "/PriceQuery/Item");
  request.SetBody(query);
  return request.GetMessageContents();
}

// Ten entities, each ten times the one before: ten thousand million characters.
std::string Bomb() {
  std::string text = "<!DOCTYPE PriceQuery [<!ELEMENT PriceQuery ANY><!ENTITY e0 'bolt'>";
  for (int i = 1; i <= 10; ++i) {
    text += "<!ENTITY e" + std::to_string(i) + " '";
    for (int j = 0; j < 10; ++j) text += "&e" + std::to_string(i - 1) + ";";
    text += "'>";
  }
  return text + "]><PriceQuery>&e10;</PriceQuery>";
}

std::string Deep() {
  std::string text;
  for (int i = 0; i < 100000; ++i) text += "<a>";
  return text;
}

void Ask(int inService, const char* inWhat, const std::string& inText) {
  WriteFrame(inService, inText);
  std::string answer;
  if (!ReadFrame(inService, answer)) throw std::runtime_error("the service does not answer");
  const quen::CQuenXMLMsg2 reply(answer);
  std::cout << inWhat << ": ";
  if (reply.HasError()) {
    quen::CQuenXMLException2 fault;
    reply.GetError(fault);
    std::cout << "fault " << fault.GetErrorCode();
    // The text of a parse error is the parser's.
    if (fault.GetErrorCode() != 1009) {
      std::cout << " " << fault.GetErrorMessage();
      if (!fault.GetErrorDetail().empty()) std::cout << " (" << fault.GetErrorDetail() << ")";
    }
  } else {
    quen::CQuenXMLData2 price;
    reply.GetBody(price);
    std::string each;
    price.GetData(each, "/Price/Each");
    std::cout << each;
  }
  std::cout << ", for " << reply.GetDestinationAddress() << " " << reply.GetMessageId() << '\n';
}

void Talk(int inService) {
  Ask(inService, "a bolt", Request("bolt"));
  Ask(inService, "a nut", Request("nut"));
  Ask(inService, "a thing", Request("thing"));
  Ask(inService, "XML, but no envelope", "<PriceQuery><Item>bolt</Item></PriceQuery>");
  Ask(inService, "another question", "<StockQuery/>");
  Ask(inService, "a question without an item", "<PriceQuery/>");
  Ask(inService, "no XML", "how much is a bolt?");
  Ask(inService, "nothing", "");
  Ask(inService, "an entity bomb", Bomb());
  Ask(inService, "a file of the service",
      "<!DOCTYPE PriceQuery [<!ELEMENT PriceQuery ANY><!ELEMENT Item ANY>"
      "<!ENTITY e SYSTEM 'file:///etc/passwd'>]><PriceQuery><Item>&e;</Item></PriceQuery>");
  Ask(inService, "a hundred thousand levels", Deep());
  Ask(inService, "and a bolt again", Request("bolt"));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: message_client PATH_OF_THE_SERVICE\n";
    return 2;
  }
  alarm(kMaxSeconds);
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0) return 1;
  const pid_t service = fork();
  if (service < 0) return 1;
  if (service == 0) {
    dup2(ends[1], STDIN_FILENO);
    dup2(ends[1], STDOUT_FILENO);
    close(ends[0]);
    close(ends[1]);
    execl(argv[1], argv[1], static_cast<char*>(nullptr));
    _exit(127);
  }
  close(ends[1]);
  int status = 0;
  try {
    Talk(ends[0]);
  } catch (const std::exception& failure) {
    std::cerr << "client: " << failure.what() << '\n';
    status = 1;
  }
  close(ends[0]);  // the end of the service's input
  int serviceStatus = 0;
  waitpid(service, &serviceStatus, 0);
  return status != 0 || serviceStatus != 0 ? 1 : 0;
}

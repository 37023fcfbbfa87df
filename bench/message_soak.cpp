// SPDX-License-Identifier: Apache-2.0
//
// Opens and answers messages, and prints how much memory the process holds.
//
//   message_soak [COUNT]      one million unless told otherwise
//
// A quarter of the messages is no XML, or XML that is no envelope, or has a fault; names and texts
// differ from one to the next, so that whatever keeps them grows. Ends with 1 if the last
// measurement is more than a tenth above the one after the first tenth.
#include <cstdio>
#include <cstdlib>
#include <string>

#include <quenxml2/message.h>

#include "bench/resident.h"

namespace {

std::string Text(unsigned long inNumber) {
  const std::string number = std::to_string(inNumber);
  switch (inNumber % 12) {
    case 3:
      return "<Order" + number + "><Item>bolt</Item></Order" + number + ">";
    case 7:
      return "<broken" + number + ">";
    case 11:
      return "no XML";
    default:
      return "<SOAP-ENV:Envelope xmlns:SOAP-ENV='http://schemas.xmlsoap.org/soap/envelope'>"
             "<SOAP-ENV:Header><Delivery><Src>client" +
             number +
             "</Src><Dest>d</Dest></Delivery>"
             "<H" +
             number + " xmlns:n='urn:" + number +
             "'/></SOAP-ENV:Header><SOAP-ENV:Body>"
             "<Query a" +
             number + "='1'><Item>bolt " + number +
             "</Item></Query></SOAP-ENV:Body>"
             "</SOAP-ENV:Envelope>";
  }
}

std::size_t Serve(unsigned long inNumber) {
  quen::CQuenXMLMsg2 reply;
  try {
    const quen::CQuenXMLMsg2 request(Text(inNumber));
    request.ConstructReplyMessage(reply);
    quen::CQuenXMLDocument2 body;
    request.GetBody(body);
    reply.SetBody(body);
    if (inNumber % 5 == 0)
      reply.SetError("soak", 7, "a fault", "<d>" + request.GetSourceAddress() + "</d>");
  } catch (const quen::CQuenXMLException2& failure) {
    reply.SetError(failure);
  }
  return reply.GetMessageContents().size();
}

}  // namespace

int main(int argc, char** argv) {
  const unsigned long count = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1000000;
  const unsigned long step = count / 10 != 0 ? count / 10 : 1;
  long early = 0;
  long last = 0;
  std::size_t bytes = 0;
  for (unsigned long i = 1; i <= count; ++i) {
    bytes += Serve(i);
    if (i % step != 0) continue;
    last = ResidentKibibytes();
    if (early == 0) early = last;
    std::printf("%lu messages, %zu bytes answered, %ld kB resident\n", i, bytes, last);
    std::fflush(stdout);
  }
  return last > early + early / 10 ? 1 : 0;
}

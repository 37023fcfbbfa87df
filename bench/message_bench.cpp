// SPDX-License-Identifier: Apache-2.0
//
// What does it cost to serve a request: open its text, read four fields, take the body, build the
// reply, write it? Against the same job written with libxml2 and with pugixml, which have to come
// to the same fields and the same bytes. Parse/... is what the parser alone takes of it.
#include <benchmark/benchmark.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlsave.h>

#include <cstring>
#include <pugixml.hpp>
#include <stdexcept>
#include <string>

#include <quenxml2/message.h>

namespace {

std::string Request(std::size_t inBytes) {
  std::string text =
      "<SOAP-ENV:Envelope xmlns:SOAP-ENV=\"http://schemas.xmlsoap.org/soap/envelope\">"
      "<SOAP-ENV:Header><Delivery><Src>orders.client7</Src><Reply>orders.client7.replies</Reply>"
      "<Dest>pricing.service</Dest><TransportType>QUEUE</TransportType></Delivery>"
      "<QuenXMLMsg MsgType=\"CMD\"><MessageID>4711</MessageID></QuenXMLMsg>"
      "<MessageType>PriceQuery</MessageType><TransactionID>T-77</TransactionID>"
      "</SOAP-ENV:Header><SOAP-ENV:Body><PriceQuery currency=\"EUR\">";
  const std::string end = "</PriceQuery></SOAP-ENV:Body></SOAP-ENV:Envelope>";
  for (int i = 0; text.size() + end.size() < inBytes; ++i) {
    text +=
        "<Item no=\"" + std::to_string(i) + "\"><Name>bolt</Name><Quantity>12</Quantity></Item>";
  }
  return text + end;
}

// What a server learns and sends: equal for all three.
struct Served {
  std::string source;
  std::string id;
  std::string type;
  std::string transaction;
  std::string bodyName;
  std::string reply;

  bool operator==(const Served& inOther) const {
    return source == inOther.source && id == inOther.id && type == inOther.type &&
           transaction == inOther.transaction && bodyName == inOther.bodyName &&
           reply == inOther.reply;
  }
};

struct Quen {
  static Served Serve(const std::string& inText) {
    quen::CQuenXMLMsg2 request;
    request.SetMessageContents(inText);
    Served served;
    served.source = request.GetSourceAddress();
    served.id = request.GetMessageId();
    served.type = request.GetMessageType();
    served.transaction = request.GetTransactionID();
    quen::CQuenXMLDocument2 body;
    static_cast<const quen::CQuenXMLMsg2&>(request).GetBody(body);
    served.bodyName = body.GetDocumentElement().GetName();
    quen::CQuenXMLMsg2 reply;
    request.ConstructReplyMessage(reply);
    served.reply = reply.GetMessageContents();
    return served;
  }
  static void Parse(const std::string& inText) {
    quen::CQuenXMLDocument2 document;
    document.LoadXML(inText);
    benchmark::DoNotOptimize(document);
  }
};

struct LibXml2 {
  static bool Is(const xmlNode* inNode, const char* inName) {
    return inNode->type == XML_ELEMENT_NODE &&
           std::strcmp(reinterpret_cast<const char*>(inNode->name), inName) == 0;
  }
  static xmlNode* Child(xmlNode* inParent, const char* inName) {
    for (xmlNode* child = inParent->children; child != nullptr; child = child->next)
      if (Is(child, inName)) return child;
    return nullptr;
  }
  static std::string Text(xmlNode* inElement) {
    xmlChar* const content = xmlNodeGetContent(inElement);
    std::string text = reinterpret_cast<const char*>(content);
    xmlFree(content);
    return text;
  }
  static void SetText(xmlNode* inElement, const std::string& inText) {
    xmlNodeSetContent(inElement, reinterpret_cast<const xmlChar*>(inText.c_str()));
  }
  static xmlDoc* Load(const std::string& inText) {
    return xmlReadMemory(inText.data(), static_cast<int>(inText.size()), nullptr, nullptr,
                         XML_PARSE_NONET | XML_PARSE_HUGE);
  }
  static Served Serve(const std::string& inText) {
    Served served;
    xmlDoc* const request = Load(inText);
    xmlNode* const header = Child(xmlDocGetRootElement(request), "Header");
    xmlNode* const delivery = Child(header, "Delivery");
    served.source = Text(Child(delivery, "Src"));
    served.id = Text(Child(Child(header, "QuenXMLMsg"), "MessageID"));
    served.type = Text(Child(header, "MessageType"));
    served.transaction = Text(Child(header, "TransactionID"));
    xmlNode* const element = Child(xmlDocGetRootElement(request), "Body")->children;
    xmlDoc* const body = xmlNewDoc(nullptr);
    xmlDocSetRootElement(body, xmlDocCopyNode(element, body, 1));
    served.bodyName = reinterpret_cast<const char*>(xmlDocGetRootElement(body)->name);

    xmlDoc* const reply = xmlCopyDoc(request, 1);
    xmlNode* const replyHeader = Child(xmlDocGetRootElement(reply), "Header");
    xmlNode* const replyDelivery = Child(replyHeader, "Delivery");
    const std::string destination = Text(Child(delivery, "Dest"));
    SetText(Child(replyDelivery, "Dest"), Text(Child(delivery, "Reply")));
    SetText(Child(replyDelivery, "Src"), destination);
    SetText(Child(replyDelivery, "Reply"), destination);
    xmlSetProp(Child(replyHeader, "QuenXMLMsg"), reinterpret_cast<const xmlChar*>("MsgType"),
               reinterpret_cast<const xmlChar*>("REPLY"));
    xmlBuffer* const buffer = xmlBufferCreate();
    xmlSaveCtxt* const save = xmlSaveToBuffer(buffer, "UTF-8", XML_SAVE_NO_DECL);
    xmlSaveTree(save, xmlDocGetRootElement(reply));
    xmlSaveClose(save);
    served.reply.assign(reinterpret_cast<const char*>(xmlBufferContent(buffer)),
                        static_cast<std::size_t>(xmlBufferLength(buffer)));
    xmlBufferFree(buffer);
    xmlFreeDoc(reply);
    xmlFreeDoc(body);
    xmlFreeDoc(request);
    return served;
  }
  static void Parse(const std::string& inText) {
    xmlDoc* const document = Load(inText);
    benchmark::DoNotOptimize(document);
    xmlFreeDoc(document);
  }
};

struct Pugixml {
  static Served Serve(const std::string& inText) {
    Served served;
    pugi::xml_document request;
    request.load_buffer(inText.data(), inText.size(), pugi::parse_default | pugi::parse_ws_pcdata,
                        pugi::encoding_utf8);
    const pugi::xml_node header = request.first_child().child("SOAP-ENV:Header");
    const pugi::xml_node delivery = header.child("Delivery");
    served.source = delivery.child_value("Src");
    served.id = header.child("QuenXMLMsg").child_value("MessageID");
    served.type = header.child_value("MessageType");
    served.transaction = header.child_value("TransactionID");
    pugi::xml_document body;
    body.append_copy(request.first_child().child("SOAP-ENV:Body").first_child());
    served.bodyName = body.first_child().name();

    pugi::xml_document reply;
    reply.reset(request);
    const pugi::xml_node replyHeader = reply.first_child().child("SOAP-ENV:Header");
    const pugi::xml_node replyDelivery = replyHeader.child("Delivery");
    replyDelivery.child("Dest").text().set(delivery.child_value("Reply"));
    replyDelivery.child("Src").text().set(delivery.child_value("Dest"));
    replyDelivery.child("Reply").text().set(delivery.child_value("Dest"));
    replyHeader.child("QuenXMLMsg").attribute("MsgType").set_value("REPLY");
    struct Writer : pugi::xml_writer {
      explicit Writer(std::string& outText) : text(outText) {}
      void write(const void* inData, std::size_t inSize) override {
        text.append(static_cast<const char*>(inData), inSize);
      }
      std::string& text;
    } writer(served.reply);
    reply.save(writer, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
    return served;
  }
  static void Parse(const std::string& inText) {
    pugi::xml_document document;
    benchmark::DoNotOptimize(document.load_buffer(inText.data(), inText.size()));
  }
};

template <class Library>
void Serve(benchmark::State& ioState) {
  const std::string text = Request(static_cast<std::size_t>(ioState.range(0)));
  const Served expected = LibXml2::Serve(text);
  if (!(Library::Serve(text) == expected) || expected.reply.size() < text.size()) {
    ioState.SkipWithError("the results differ");
    return;
  }
  for (auto _ : ioState) benchmark::DoNotOptimize(Library::Serve(text));
}

template <class Library>
void Parse(benchmark::State& ioState) {
  const std::string text = Request(static_cast<std::size_t>(ioState.range(0)));
  for (auto _ : ioState) Library::Parse(text);
}

void Sizes(benchmark::internal::Benchmark* ioBenchmark) {
  ioBenchmark->Arg(1000)->Arg(100000)->Arg(5000000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(Serve<Quen>)->Apply(Sizes);
BENCHMARK(Serve<LibXml2>)->Apply(Sizes);
BENCHMARK(Serve<Pugixml>)->Apply(Sizes);
BENCHMARK(Parse<Quen>)->Apply(Sizes);
BENCHMARK(Parse<LibXml2>)->Apply(Sizes);
BENCHMARK(Parse<Pugixml>)->Apply(Sizes);

}  // namespace

// SPDX-License-Identifier: Apache-2.0
//
// Messages: the wire format to the byte, the fields, headers, body and fault, and everything that
// can stand in an envelope's place.
#include <gtest/gtest.h>

#include <iterator>
#include <random>

#include "tests/message/message_script.h"
#include "tests/support/small_stack.h"

namespace quen::test {
namespace {

template <class Width>
class Message : public testing::Test {};
TYPED_TEST_SUITE(Message, Widths, WidthNames);

const MessageCase kContentsCases[] = {
    {"a new message", "", {"fields", "text"}, {"", ENVELOPE("<SOAP-ENV:Body/>")}},
    {"a new message read back",
     ENVELOPE("<SOAP-ENV:Body/>"),
     {"fields", "text"},
     {"", ENVELOPE("<SOAP-ENV:Body/>")}},
    {"every field, byte by byte",
     "",
     {"src orders.client7", "reply orders.client7.replies", "dest pricing.service",
      "transport QUEUE", "kind 1", "id 4711", "type PriceQuery", "transaction T-77",
      "header <UserName>operator1</UserName>", "header <HostName>station12</HostName>",
      "header <Routing hops='3'/>",
      "body <PriceQuery currency='EUR'><Item>bolt</Item></PriceQuery>", "text", "fields"},
     {ENVELOPE(HEADER(
          "<Delivery><Src>orders.client7</Src><Reply>orders.client7.replies</Reply>"
          "<Dest>pricing.service</Dest><TransportType>QUEUE</TransportType></Delivery>"
          "<QuenXMLMsg MsgType=\"CMD\"><MessageID>4711</MessageID></QuenXMLMsg>"
          "<MessageType>PriceQuery</MessageType><TransactionID>T-77</TransactionID>"
          "<UserName>operator1</UserName><HostName>station12</HostName><Routing hops=\"3\"/>")
                   BODY("<PriceQuery currency=\"EUR\"><Item>bolt</Item></PriceQuery>")),
      "src=orders.client7 dest=pricing.service reply=orders.client7.replies transport=QUEUE "
      "type=PriceQuery transaction=T-77 user=operator1 host=station12 id=4711 kind=1 "
      "name=PriceQuery header body"}},
    {"any other root becomes the body, and what stands outside of it is lost",
     "<!--c--><?p d?><Order n='1'>x<!--kept--></Order><!--c-->",
     {"fields", "text"},
     {"name=Order body", ENVELOPE(BODY("<Order n=\"1\">x<!--kept--></Order>"))}},
    {"an envelope without its prefix is a body",
     "<Envelope xmlns='http://schemas.xmlsoap.org/soap/envelope/'><Body><A/></Body></Envelope>",
     {"fields", "text"},
     {"name=Envelope body",
      ENVELOPE(
          BODY("<Envelope xmlns=\"http://schemas.xmlsoap.org/soap/envelope/\"><Body><A/></Body>"
               "</Envelope>"))}},
    {"another prefix too, whatever stands in it",
     "<s:Envelope xmlns:s='http://schemas.xmlsoap.org/soap/envelope'><s:Body><A/></s:Body>"
     "</s:Envelope>",
     {"fields"},
     {"name=s:Envelope body"}},
    {"the namespace name is compared with nothing",
     "<SOAP-ENV:Envelope xmlns:SOAP-ENV='urn:any'><SOAP-ENV:Header><Delivery><Src>a</Src>"
     "</Delivery></SOAP-ENV:Header><SOAP-ENV:Body><A/></SOAP-ENV:Body></SOAP-ENV:Envelope>",
     {"fields", "error c|1|m|d", "text"},
     {"src=a name=A header body",
      "<SOAP-ENV:Envelope xmlns:SOAP-ENV=\"urn:any\"><SOAP-ENV:Header><Delivery><Src>a</Src>"
      "</Delivery></SOAP-ENV:Header><SOAP-ENV:Body><A/><SOAP-ENV:Fault><faultcode>1</faultcode>"
      "<faultactor>c</faultactor><faultstring>m</faultstring><detail>d</detail></SOAP-ENV:Fault>"
      "</SOAP-ENV:Body></SOAP-ENV:Envelope>"}},
    {"parts that were made in such an envelope are found again, and once",
     "<SOAP-ENV:Envelope xmlns:SOAP-ENV='http://schemas.xmlsoap.org/soap/envelope/'><SOAP-ENV:Body>"
     "<A/></SOAP-ENV:Body></SOAP-ENV:Envelope>",
     {"src a", "kind 2", "type t", "body <B/>", "error c|1|m|", "transaction x", "clear", "text",
      "fields"},
     {"<SOAP-ENV:Envelope xmlns:SOAP-ENV=\"http://schemas.xmlsoap.org/soap/envelope/\">" HEADER(
          "<Delivery><Src>a</Src></Delivery><QuenXMLMsg MsgType=\"REPLY\"/><MessageType>t"
          "</MessageType><TransactionID>x</TransactionID>") BODY("<B/>") "</SOAP-ENV:Envelope>",
      "src=a type=t transaction=x kind=2 name=B header body"}},
    {"another element declares the prefix differently: it is another element",
     ENVELOPE("<SOAP-ENV:Header xmlns:SOAP-ENV='urn:b'/>" BODY("<A/>")),
     {"fields"},
     {"name=A body"}},
    {"a part with another prefix for the same namespace is that part",
     ENVELOPE("<e:Body xmlns:e='http://schemas.xmlsoap.org/soap/envelope'><A/></e:Body>"),
     {"fields"},
     {"name=A body"}},
    {"a default namespace hides the fields",
     ENVELOPE(HEADER("<Delivery xmlns='urn:d'><Src>a</Src></Delivery>")),
     {"fields"},
     {"header"}},
    {"a default namespace below Delivery hides nothing: children go by their name",
     ENVELOPE(HEADER("<Delivery><Src xmlns='urn:d'>a</Src></Delivery>")),
     {"fields"},
     {"src=a header"}},
    {"an envelope and nothing in it",
     ENVELOPE(""),
     {"fields", "text"},
     {"", "<SOAP-ENV:Envelope xmlns:SOAP-ENV=\"http://schemas.xmlsoap.org/soap/envelope\"/>"}},
    {"white space and comments stay, a header may stand behind the body",
     ENVELOPE("\n" BODY("<A/>") "<!--c-->" HEADER("<MessageType>t</MessageType>") "\n"),
     {"fields", "text"},
     {"type=t name=A header body",
      ENVELOPE("\n" BODY("<A/>") "<!--c-->" HEADER("<MessageType>t</MessageType>") "\n")}},
    {"the first of two counts, for reading and writing",
     ENVELOPE(HEADER("<Delivery><Src>a</Src><Src>b</Src></Delivery><Delivery><Dest>x</Dest>"
                     "</Delivery>")),
     {"fields", "src c", "dest d", "text"},
     {"src=a header",
      ENVELOPE(HEADER("<Delivery><Src>c</Src><Src>b</Src><Dest>d</Dest></Delivery><Delivery><Dest>x"
                      "</Dest></Delivery>"))}},
    {"two headers: each part is the first in any of them",
     ENVELOPE(HEADER("<A/>")
                  HEADER("<Delivery><Src>a</Src></Delivery><MessageType>t</MessageType>")),
     {"fields", "transaction x", "text"},
     {"src=a type=t header",
      ENVELOPE(HEADER("<A/><TransactionID>x</TransactionID>")
                   HEADER("<Delivery><Src>a</Src></Delivery><MessageType>t</MessageType>"))}},
    {"two bodies: the body element is the first in any of them",
     ENVELOPE("<SOAP-ENV:Body/>" BODY("<A/>")),
     {"fields", "body <B/>", "text"},
     {"name=A body", ENVELOPE("<SOAP-ENV:Body/>" BODY("<B/>"))}},
    {"a new message takes contents in every form",
     "",
     {"contents-document <A/>", "fields", "contents-tree <B/>", "fields", "contents <C/>", "fields",
      "contents-document " ENVELOPE(HEADER("<MessageType>t</MessageType>")), "fields",
      "contents-tree " ENVELOPE(BODY("<D/>")), "text"},
     {"name=A body", "name=B body", "name=C body", "type=t header", ENVELOPE(BODY("<D/>"))}},
};

TYPED_TEST(Message, Contents) { RunMessageCases<TypeParam>(kContentsCases); }

// An envelope may stand inside of another. Its parts are parts of the message, if they come first
// in the document or if the outer one lacks them: a path names them all.
#define INNER(inner) "<SOAP-ENV:Envelope>" inner "</SOAP-ENV:Envelope>"

const MessageCase kNestingCases[] = {
    {"the outer parts come first",
     ENVELOPE(HEADER("<Delivery><Src>a</Src></Delivery><Old>" INNER(
         HEADER("<Delivery><Src>b</Src></Delivery>") BODY("<B/>")) "</Old>") BODY("<A/>")),
     {"fields"},
     {"src=a name=B header body"}},
    {"an inner envelope in front of the header supplies the header",
     ENVELOPE("<x>" INNER(HEADER("<MessageType>in</MessageType>")) "</x>" HEADER(
         "<MessageType>out</MessageType>")),
     {"fields", "type new", "text"},
     {"type=in header",
      ENVELOPE("<x>" INNER(HEADER("<MessageType>new</MessageType>")) "</x>" HEADER(
          "<MessageType>out</MessageType>"))}},
    {"an inner envelope supplies what the outer one lacks",
     ENVELOPE(BODY("<A>" INNER(HEADER("<TransactionID>t</TransactionID>")
                                   BODY(FAULT("<faultcode>5</faultcode>"))) "</A>")),
     {"fields", "get-error"},
     {"transaction=t name=A header body error", "|5||"}},
    {"it may come in with a body, a header or a detail, and is found from then on",
     "",
     {"fields",
      "body <A><SOAP-ENV:Envelope xmlns:SOAP-ENV='http://schemas.xmlsoap.org/soap/envelope'>"
      "<SOAP-ENV:Header><MessageType>t</MessageType></SOAP-ENV:Header></SOAP-ENV:Envelope></A>",
      "fields"},
     {"", "type=t name=A header body"}},
    {"the same by a detail",
     ENVELOPE(BODY("<A/>")),
     {"error c|1|m|<d xmlns:S='http://schemas.xmlsoap.org/soap/envelope'><S:Envelope><S:Header>"
      "<HostName>h</HostName></S:Header></S:Envelope></d>",
      "fields"},
     {"host=h name=A header body error"}},
    {"the same by a header, which stands in front",
     ENVELOPE(HEADER("<A/>") BODY("<A/>")),
     {"header <H xmlns:S='http://schemas.xmlsoap.org/soap/envelope'><S:Envelope><S:Header>"
      "<HostName>h</HostName></S:Header></S:Envelope></H>",
      "fields"},
     {"host=h name=A header body"}},
    {"a copy of a tree with an inner envelope",
     "",
     {"contents-document " ENVELOPE("<x>" INNER(HEADER("<UserName>u</UserName>")) "</x>"),
      "fields"},
     {"user=u header"}},
};

TYPED_TEST(Message, NestedEnvelopes) { RunMessageCases<TypeParam>(kNestingCases); }

// What a handle does to the message is seen, also where it hides an envelope in the body.
TYPED_TEST(Message, ChangesThroughTheBodyHandleAreSeen) {
  using W = TypeParam;
  typename W::Msg message(W::Text(ENVELOPE(BODY("<A/>"))));
  EXPECT_FALSE(message.HasHeader());
  typename W::Node body = message.GetBody();
  body.AppendChild(
      DocumentOf<W>(ENVELOPE(HEADER("<MessageType>t</MessageType>"))).GetDocumentElement());
  EXPECT_TRUE(message.HasHeader());
  EXPECT_EQ(W::Utf8(message.GetMessageType()), "t");
  const typename W::Msg copy(message);
  EXPECT_EQ(W::Utf8(copy.GetMessageType()), "t");
}

const MessageCase kFieldCases[] = {
    {"reading makes nothing",
     "",
     {"fields", "get-error", "text"},
     {"", "8 No SOAP fault information found. @ CQuenXMLMsgImpl2::GetError()",
      ENVELOPE("<SOAP-ENV:Body/>")}},
    {"the first address makes header and delivery, in front of the body",
     "",
     {"src a", "text", "fields"},
     {ENVELOPE(HEADER("<Delivery><Src>a</Src></Delivery>") "<SOAP-ENV:Body/>"), "src=a header"}},
    {"addresses stand as they were first written, and once",
     "",
     {"reply r", "src s", "reply q", "text"},
     {ENVELOPE(HEADER("<Delivery><Reply>q</Reply><Src>s</Src></Delivery>") "<SOAP-ENV:Body/>")}},
    {"an empty value is an element with a start and an end",
     "",
     {"transport ", "text", "fields"},
     {ENVELOPE(HEADER("<Delivery><TransportType></TransportType></Delivery>") "<SOAP-ENV:Body/>"),
      "header"}},
    {"a missing address is added to the delivery that is there",
     ENVELOPE(HEADER("<A/><Delivery><Src>s</Src></Delivery><B/>")),
     {"dest d", "text"},
     {ENVELOPE(HEADER("<A/><Delivery><Src>s</Src><Dest>d</Dest></Delivery><B/>"))}},
    {"only the first text of a field is read and written",
     ENVELOPE(HEADER("<MessageType>a<x/>b</MessageType>")),
     {"fields", "type c", "text"},
     {"type=a header", ENVELOPE(HEADER("<MessageType>c<x/>b</MessageType>"))}},
    {"a field is opaque text",
     "",
     {"src  <&>\"\xC3\xA9 ", "text", "fields"},
     {ENVELOPE(HEADER(
          "<Delivery><Src> &lt;&amp;&gt;&quot;\xC3\xA9 </Src></Delivery>") "<SOAP-ENV:Body/>"),
      "src= <&>\"\xC3\xA9  header"}},
    {"an envelope without children gets the header as its only child",
     ENVELOPE(""),
     {"type t", "text"},
     {ENVELOPE(HEADER("<MessageType>t</MessageType>"))}},
    {"kind 0 makes the element and no attribute",
     "",
     {"kind 0", "text", "fields"},
     {ENVELOPE(HEADER("<QuenXMLMsg/>") "<SOAP-ENV:Body/>"), "header"}},
    {"the kinds",
     "",
     {"kind 1", "fields", "kind 2", "fields", "kind 3", "text"},
     {"kind=1 header", "kind=2 header",
      ENVELOPE(HEADER("<QuenXMLMsg MsgType=\"EVENT\"/>") "<SOAP-ENV:Body/>")}},
    {"an unknown kind empties the attribute",
     "",
     {"kind 3", "kind 7", "text", "fields"},
     {ENVELOPE(HEADER("<QuenXMLMsg MsgType=\"\"/>") "<SOAP-ENV:Body/>"), "header"}},
    {"the text of a kind is exact",
     ENVELOPE(HEADER("<QuenXMLMsg MsgType='cmd'/>")),
     {"fields"},
     {"header"}},
    {"the id makes the element of the kind",
     "",
     {"id 7", "kind 2", "text"},
     {ENVELOPE(
         HEADER("<QuenXMLMsg MsgType=\"REPLY\"><MessageID>7</MessageID></QuenXMLMsg>") "<SOAP-ENV:"
                                                                                       "Body/>")}},
    {"a name keeps its prefix",
     ENVELOPE(BODY("<p:A xmlns:p='urn:p'/>")),
     {"fields"},
     {"name=p:A body"}},
};

TYPED_TEST(Message, Fields) { RunMessageCases<TypeParam>(kFieldCases); }

#define NO_HEADER(name) \
  "8 Header not found: " name " @ CQuenXMLMsgImpl2::GetCustomHeader(CQuenXMLData2w)"

const MessageCase kHeaderCases[] = {
    {"a header comes and goes as a document and as a tree",
     "",
     {"header <A n='1'>x</A>", "header-tree <B/>", "get-header A", "get-header-tree A",
      "get-header B", "text"},
     {"<A n=\"1\">x</A>", "<A n=\"1\">x</A>", "<B/>",
      ENVELOPE(HEADER("<A n=\"1\">x</A><B/>") "<SOAP-ENV:Body/>")}},
    {"a header that is set again moves to the end",
     "",
     {"header <A>1</A>", "header <B/>", "header-tree <A>2</A>", "text"},
     {ENVELOPE(HEADER("<B/><A>2</A>") "<SOAP-ENV:Body/>")}},
    {"one of several is replaced",
     ENVELOPE(HEADER("<A>1</A><A>2</A>")),
     {"header <A>3</A>", "text"},
     {ENVELOPE(HEADER("<A>2</A><A>3</A>"))}},
    {"into an envelope without children",
     ENVELOPE(""),
     {"header <A/>", "text"},
     {ENVELOPE(HEADER("<A/>"))}},
    {"a header named like a fixed field: the former element is still read and written",
     "",
     {"src a", "header <Delivery><Src>b</Src></Delivery>", "src c", "fields", "text",
      "get-header Delivery"},
     {"src=c header", ENVELOPE(HEADER("<Delivery><Src>b</Src></Delivery>") "<SOAP-ENV:Body/>"),
      "<Delivery><Src>b</Src></Delivery>"}},
    {"names may be expressions",
     ENVELOPE(HEADER("<A n='1'><B>x</B></A><A n='2'/>") BODY("<C/>")),
     {"get-header A[@n='2']", "get-header A/B", "get-header-tree *[last()]", "get-header //C",
      "get-header A[3]", "get-header //none"},
     {"<A n=\"2\"/>", "<B>x</B>", "<A n=\"2\"/>", "<C/>", NO_HEADER("A[3]"), NO_HEADER("//none")}},
    {"the whole envelope",
     ENVELOPE(BODY("<C/>")),
     {"get-header //SOAP-ENV:Envelope"},
     {ENVELOPE(BODY("<C/>"))}},
    {"an empty name, an absent header, no header at all",
     ENVELOPE(BODY("<C/>")),
     {"get-header ", "get-header-tree ", "get-header A", "get-header-tree A", "fields"},
     {"1010 Header name cannot be empty. @ CQuenXMLMsgImpl2::GetCustomHeader(CQuenXMLData2w)",
      "1010 Header name cannot be empty. @ CQuenXMLMsgImpl2::GetCustomHeader(CQuenXMLData2w)",
      NO_HEADER("A"), NO_HEADER("A"), "name=C body"}},
    {"no root in the argument; the message is as it was",
     "",
     {"header ", "text"},
     {"1010 User specified msg header object has no root element. @ "
      "CQuenXMLMsgImpl2::SetCustomHeader(CQuenXMLData2w)",
      ENVELOPE("<SOAP-ENV:Body/>")}},
    {"a prefixed header whose prefix the envelope declares",
     "<SOAP-ENV:Envelope xmlns:SOAP-ENV='urn:s' xmlns:p='urn:p'/>",
     {"header <p:A xmlns:p='urn:p'>1</p:A>", "header <p:A xmlns:p='urn:p'>2</p:A>", "text",
      "get-header p:A"},
     {"<SOAP-ENV:Envelope xmlns:SOAP-ENV=\"urn:s\" xmlns:p=\"urn:p\"><SOAP-ENV:Header>"
      "<p:A xmlns:p=\"urn:p\">2</p:A></SOAP-ENV:Header></SOAP-ENV:Envelope>",
      "<p:A xmlns:p=\"urn:p\">2</p:A>"}},
};

TYPED_TEST(Message, CustomHeaders) { RunMessageCases<TypeParam>(kHeaderCases); }

#define NO_BODY "8 The CQuenXMLMsg does not have a Body. @ CQuenXMLMsgImpl2::GetBody"

const MessageCase kBodyCases[] = {
    {"a body goes into the empty one, and replaces the next",
     "",
     {"body <A>x</A>", "get-body", "body-tree <B/>", "get-body", "text"},
     {"<A>x</A>", "<B/>", ENVELOPE(BODY("<B/>"))}},
    {"the new body is the last child",
     ENVELOPE(BODY("<A/>t<C/>") HEADER("<H/>")),
     {"body <B/>", "text"},
     {ENVELOPE(HEADER("<H/>") BODY("<B/>"))}},
    {"an envelope without a body stays so",
     ENVELOPE(HEADER("<H/>")),
     {"body <B/>", "body-tree <B/>", "fields", "text"},
     {"header", ENVELOPE(HEADER("<H/>"))}},
    {"the first element that is no fault is the body element",
     ENVELOPE(BODY("t<!--c-->" FAULT("") "<A/><B/>")),
     {"fields", "get-body"},
     {"name=A body error", "<A/>"}},
    {"a fault by name alone is none, but it is no body element either",
     ENVELOPE("<SOAP-ENV:Body><SOAP-ENV:Fault xmlns:SOAP-ENV='urn:other'/><A/></SOAP-ENV:Body>"),
     {"fields"},
     {"name=A body"}},
    {"no root in the argument; the message is as it was",
     ENVELOPE(BODY("<A/>")),
     {"body ", "fields"},
     {"8 No root node found. @ CQuenXMLMsgImpl2::SetBody(CQuenXMLDocument2w)", "name=A body"}},
};

TYPED_TEST(Message, Body) { RunMessageCases<TypeParam>(kBodyCases); }

#define WRITTEN(code, context, text, detail)                                                    \
  FAULT("<faultcode>" code "</faultcode><faultactor>" context "</faultactor><faultstring>" text \
        "</faultstring><detail>" detail "</detail>")

const MessageCase kFaultCases[] = {
    {"a fault goes behind the body element and comes back",
     ENVELOPE(BODY("<A/>")),
     {"error pricing.lookup|1013|Path not found|no such item", "text", "get-error"},
     {ENVELOPE(BODY("<A/>" WRITTEN("1013", "pricing.lookup", "Path not found", "no such item"))),
      "pricing.lookup|1013|Path not found|no such item"}},
    {"without a body element it is no body",
     "",
     {"error c|1|m|d", "fields", "get-body", "body <B/>", "get-body", "text"},
     {"error", NO_BODY, "<B/>", ENVELOPE(BODY(WRITTEN("1", "c", "m", "d") "<B/>"))}},
    {"empty texts and code 0",
     "",
     {"error |0||", "text", "get-error", "fields"},
     {ENVELOPE(BODY(WRITTEN("0", "", "", ""))), "|0||", "error"}},
    {"the largest code is not -1",
     "",
     {"error c|4294967295|m|", "text", "get-error"},
     {ENVELOPE(BODY(WRITTEN("4294967295", "c", "m", ""))), "c|4294967295|m|"}},
    {"a second fault replaces the first, at the end",
     ENVELOPE(BODY("<A/>")),
     {"error a|1|m|", "body <B/>", "clear", "error b|2|n|", "error c|3|o|", "text"},
     {ENVELOPE(BODY("<B/>" WRITTEN("3", "c", "o", "")))}},
    {"set and cleared leaves the text as it was",
     ENVELOPE(BODY("<A/>")),
     {"clear", "error a|1|m|", "clear", "clear", "text", "fields"},
     {ENVELOPE(BODY("<A/>")), "name=A body"}},
    {"a detail that begins like XML is XML",
     "",
     {"error c|1|m|<d a='1'><e/>t</d>", "text", "get-error"},
     {ENVELOPE(BODY(WRITTEN("1", "c", "m", "<d a=\"1\"><e/>t</d>"))),
      "c|1|m|<d a=\"1\"><e/>t</d>"}},
    {"one behind a blank is text",
     "",
     {"error c|1|m| <d/>", "text", "get-error"},
     {ENVELOPE(BODY(WRITTEN("1", "c", "m", " &lt;d/&gt;"))), "c|1|m| <d/>"}},
    {"children in any order, the first counts, white space is no child",
     ENVELOPE(
         BODY(FAULT("\n<detail>d</detail><faultstring>m</faultstring>\n<faultcode>12</faultcode>"
                    "<faultactor>c</faultactor><faultcode>13</faultcode>"))),
     {"get-error"},
     {"c|12|m|d"}},
    {"no children",
     ENVELOPE(BODY("<SOAP-ENV:Fault/>")),
     {"fields", "get-error"},
     {"error", "|0||"}},
    {"an actor alone",
     ENVELOPE(BODY(FAULT("<faultactor>c</faultactor>"))),
     {"get-error"},
     {"c|0||"}},
    {"text in front of an element in the detail: the first child counts",
     ENVELOPE(BODY(FAULT("<detail>a&amp;b<e/></detail>"))),
     {"get-error"},
     {"|0||a&amp;b"}},
    {"a fault outlives its body until it is cleared",
     ENVELOPE(BODY("<A/>" FAULT("<faultcode>5</faultcode>"))),
     {"body <B/>", "text", "fields", "get-error", "clear", "fields", "error c|6|m|", "text"},
     {ENVELOPE(BODY("<B/>")), "name=B body error", "|5||", "name=B body",
      ENVELOPE(BODY("<B/>" WRITTEN("6", "c", "m", "")))}},
};

TYPED_TEST(Message, Faults) { RunMessageCases<TypeParam>(kFaultCases); }

TYPED_TEST(Message, FaultCodes) {
  const std::pair<const char*, std::uint32_t> kCodes[] = {
      {"7.6", 8},
      {"abc", 0},
      {"", 0},
      {"-1", 0},
      {"-0.4", 0},
      {"4294967295", 4294967295},
      {"4294967296", 0},
      {" 12 ", 12},
      {"12abc", 12},
      {"SOAP-ENV:Client", 0},
      {"1e3", 1000},
      {"inf", 0},
      {"99999999999999999999999", 0},
  };
  for (const auto& [text, expected] : kCodes) {
    SCOPED_TRACE(text);
    typename TypeParam::Msg message;
    message.SetMessageContents(
        "<SOAP-ENV:Envelope xmlns:SOAP-ENV='urn:s'><SOAP-ENV:Body><SOAP-ENV:Fault><faultcode>" +
        std::string(text) + "</faultcode></SOAP-ENV:Fault></SOAP-ENV:Body></SOAP-ENV:Envelope>");
    typename TypeParam::Exception fault;
    message.GetError(fault);
    EXPECT_EQ(fault.GetErrorCode(), expected);
  }
}

// What is refused, and that the message is as it was and can be used.
TYPED_TEST(Message, RefusedContents) {
  using W = TypeParam;
  const std::pair<const char*, const char*> kRefused[] = {
      {"contents ", "1009"},
      {"contents no XML", "1009"},
      {"contents <a>", "1009"},
      {"contents <p:a/>", "1009"},
      {"contents <SOAP-ENV:Envelope/>", "1009"},
      {"contents <!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/hostname'>]><a>&e;</a>", "1009"},
      {"contents <!DOCTYPE a [<!ENTITY a 'aaaaaaaaaa'><!ENTITY b "
       "'&a;&a;&a;&a;&a;&a;&a;&a;'><!ENTITY "
       "c '&b;&b;&b;&b;&b;&b;&b;&b;'><!ENTITY d '&c;&c;&c;&c;&c;&c;&c;&c;'><!ENTITY e "
       "'&d;&d;&d;&d;&d;&d;&d;&d;'><!ENTITY f '&e;&e;&e;&e;&e;&e;&e;&e;'><!ENTITY g "
       "'&f;&f;&f;&f;&f;&f;&f;&f;'>]><a>&g;&g;</a>",
       "1009"},
      {"contents-tree ", "1009"},
      {"body-tree ", "1009"},
      {"header-tree ", "1009"},
      {"get-header //[", "1010"},
      {"get-header A[", "1010"},
      {"get-header p:A", "1010"},
      {"get-header //A = 1", "1010"},
      {"header <p:A xmlns:p='urn:p'/>", "1010"},
      {"error c|1|m|<d>", "1009"},
  };
  for (const auto& [step, code] : kRefused) {
    SCOPED_TRACE(step);
    typename W::Msg message(
        W::Text(ENVELOPE(HEADER("<Delivery><Src>a</Src></Delivery>") BODY("<A/>"))));
    MessageScript<W> script(message);
    const std::vector<std::string> outcome = script.Run({step});
    ASSERT_EQ(outcome.size(), 1u);
    EXPECT_EQ(outcome[0].substr(0, std::string(code).size()), code) << outcome[0];
    const std::vector<std::string> after = script.Run(
        {"clear", "text", "src b", "error c|2|m|d", "fields", "clear", "body <B/>", "text"});
    EXPECT_EQ(after, (std::vector<std::string>{
                         ENVELOPE(HEADER("<Delivery><Src>a</Src></Delivery>") BODY("<A/>")),
                         "src=b name=A header body error",
                         ENVELOPE(HEADER("<Delivery><Src>b</Src></Delivery>") BODY("<B/>"))}));
  }
}

// Whether or not there is anything that the steps before it could find.
TYPED_TEST(Message, AWrongNameIsToldOfInAnEmptyMessage) {
  for (const char* const step :
       {"get-header A[", "get-header p:A", "get-header X/[", "get-header X/p:B", "get-header X/",
        "get-header A = 1", "header <p:A xmlns:p='urn:p'/>"}) {
    SCOPED_TRACE(step);
    typename TypeParam::Msg message;
    const auto outcome = MessageScript<TypeParam>(message).Run({step, "text", "src b", "fields"});
    ASSERT_EQ(outcome.size(), 3u);
    EXPECT_EQ(outcome[0].substr(0, 5), "1010 ");
    EXPECT_EQ(outcome[1].find("<p:A"), std::string::npos);
    EXPECT_EQ(outcome[2], "src=b header");
  }
}

TEST(WideMessage, ALongHeaderNameTakesNoStack) {
  wstring name = u"a";
  CQuenXMLDocument2w header;
  CQuenXMLElement2w last = header.CreateElement(u"a");
  header.AppendChild(last);
  for (int depth = 1; depth < 20000; ++depth) {
    last = last.AddChildNode(u"a");
    name += u"/a";
  }
  CQuenXMLMsg2w message;
  message.SetCustomHeader(header);
  OnSmallStack([&] {
    CQuenXMLDocument2w found;
    EXPECT_EQ(FailureAt<WideTypes>([&] { message.GetCustomHeader(name, found); }).substr(0, 5),
              "1010 ");
  });
}

TEST(WideMessage, ATreeMayGiveNoDocument) {
  struct Odd : CQuenXMLData2w {
    CQuenXMLDocument2w GetDocument() const override {
      CQuenXMLDocument2w document(CQuenXMLData2w(u"<a/>").GetDocument());
      static_cast<CQuenXMLNode2w&>(document) = document.GetDocumentElement();
      return document;
    }
  };
  CQuenXMLMsg2w message(wstring(u"<kept/>"));
  EXPECT_EQ(FailureAt<WideTypes>([&] { message.SetMessageContents(Odd()); }).substr(0, 2), "8 ");
  EXPECT_EQ(message.GetMessageName(), u"kept");
}

TYPED_TEST(Message, ADetailThatIsNotWellFormedLeavesItsFault) {
  typename TypeParam::Msg message;
  const auto transcript =
      MessageScript<TypeParam>(message).Run({"error c|1|m|<d>", "text", "fields", "get-error"});
  ASSERT_EQ(transcript.size(), 4u);
  EXPECT_EQ(transcript[0].substr(0, 18), "1009 Parse error: ");
  EXPECT_EQ(transcript[1], ENVELOPE(BODY(FAULT("<faultcode>1</faultcode><faultactor>c</faultactor>"
                                               "<faultstring>m</faultstring><detail/>"))));
  EXPECT_EQ(transcript[2], "error");
  EXPECT_EQ(transcript[3], "c|1|m|");
}

TYPED_TEST(Message, AFaultNeedsABody) {
  typename TypeParam::Msg message;
  message.SetMessageContents(std::string(ENVELOPE("")));
  EXPECT_EQ(MessageScript<TypeParam>(message).Run({"error c|1|m|d", "fields", "text", "clear",
                                                   "get-error", "contents <A/>", "fields"}),
            (std::vector<std::string>{
                "8 Node was not initialized @ CQuenXMLNodeImpl2w::AppendChild()", "error",
                "<SOAP-ENV:Envelope xmlns:SOAP-ENV=\"http://schemas.xmlsoap.org/soap/envelope\"/>",
                "8 Node was not initialized @ CQuenXMLNodeImpl2w::RemoveChild()", "|0||",
                "name=A body"}));
}

// Contexts where the widths take different ways.
TEST(WideMessage, ContentsWithoutARootLeaveTheFormerOnes) {
  CQuenXMLMsg2w message(u"<A/>");
  EXPECT_EQ(FailureAt<WideTypes>([&] { message.SetMessageContents(CQuenXMLDocument2w()); }),
            "8 Node was not initialized @ CQuenXMLNodeImpl2w::GetName()");
  EXPECT_EQ(message.GetMessageName(), u"A");
  message.SetSourceAddress(u"s");
  EXPECT_EQ(message.GetSourceAddress(), u"s");
}

TEST(NarrowMessage, ContentsWithoutARootAreTextThatDoesNotParse) {
  CQuenXMLMsg2 message("<A/>");
  const std::string failure =
      Failure<NarrowTypes>([&] { message.SetMessageContents(CQuenXMLDocument2()); });
  EXPECT_EQ(failure.substr(0, 5), "1009 ");
  EXPECT_EQ(message.GetMessageName(), "A");
}

TEST(WideMessage, WithoutABodyATreeBecomesEmptyAndNothingIsThrown) {
  const CQuenXMLMsg2w message;
  CQuenXMLData2w tree(u"<old/>");
  message.GetBody(tree);
  EXPECT_EQ(tree.HasRoot(), 0);
  CQuenXMLDocument2w document = DocumentOf<WideTypes>("<!--c--><old/>");
  EXPECT_EQ(Failure<WideTypes>([&] { message.GetBody(document); }),
            "8 The CQuenXMLMsg does not have a Body.");
  EXPECT_EQ(document.GetSubset(), u"<!--c-->");
}

TEST(NarrowMessage, WithoutABodyATreeStaysAndTheFailureIsThrown) {
  const CQuenXMLMsg2 message;
  CQuenXMLData2 tree("<old/>");
  EXPECT_EQ(FailureAt<NarrowTypes>([&] { message.GetBody(tree); }), NO_BODY);
  EXPECT_EQ(Whole<NarrowTypes>(tree), "<old/>");
}

TYPED_TEST(Message, AHeaderIntoATreeGoesToTheCursor) {
  using W = TypeParam;
  const typename W::Msg message(W::Text(ENVELOPE(HEADER("<A>1</A>"))));
  typename W::Data tree = TreeOf<W>("<r><old/><keep/></r>");
  tree.CursorTo(W::Text("/r/old"));
  message.GetCustomHeader(W::Text("A"), tree);
  EXPECT_EQ(Whole<W>(tree), "<r><keep/><A>1</A></r>");
  tree.CursorTo(W::Text("/r/keep"));
  EXPECT_EQ(Failure<W>([&] { message.GetCustomHeader(W::Text("B"), tree); }),
            "8 Header not found: B");
  EXPECT_EQ(Whole<W>(tree), "<r><A>1</A></r>");
  typename W::Data empty;
  message.GetCustomHeader(W::Text("A"), empty);
  EXPECT_EQ(Whole<W>(empty), "<A>1</A>");
}

// The whole tree is a header or a body, wherever its cursor stands.
TYPED_TEST(Message, ATreeGoesInWhole) {
  using W = TypeParam;
  typename W::Data tree = TreeOf<W>("<A><b/></A>");
  tree.CursorToFirstChild();
  typename W::Msg message;
  message.SetCustomHeader(tree);
  message.SetBody(tree);
  EXPECT_EQ(message.GetMessageContents(), ENVELOPE(HEADER("<A><b/></A>") BODY("<A><b/></A>")));
}

TYPED_TEST(Message, ContentsComeOutInEveryForm) {
  using W = TypeParam;
  const std::string text = ENVELOPE(HEADER("<A/>") BODY("<B>x</B>"));
  const typename W::Msg message(W::Text(text));
  typename W::Document document = DocumentOf<W>("<!--c--><old/>");
  message.GetMessageContents(document);
  EXPECT_EQ(W::Utf8(document.GetSubset()), text);
  typename W::Data tree = TreeOf<W>("<old/>");
  message.GetMessageContents(tree);
  EXPECT_EQ(Whole<W>(tree), text);
  EXPECT_EQ(W::Utf8(tree.GetNodeAtCursor()), "SOAP-ENV:Envelope");
  EXPECT_EQ(message.GetFormattedMessageContents(),
            "\n<SOAP-ENV:Envelope xmlns:SOAP-ENV=\"http://schemas.xmlsoap.org/soap/envelope\">\n"
            "  <SOAP-ENV:Header>\n    <A/>\n  </SOAP-ENV:Header>\n"
            "  <SOAP-ENV:Body>\n    <B>x</B>\n  </SOAP-ENV:Body>\n</SOAP-ENV:Envelope>");
  document.GetDocumentElement().SetValue(W::Text("mine"));
  EXPECT_EQ(message.GetMessageContents(), text);
}

TEST(WideMessage, BothFormsOfTheContentsAreOne) {
  CQuenXMLMsg2w message;
  message.SetMessageContentsw(u"<A>\u00e9</A>");
  EXPECT_EQ(message.GetMessageContents(), ENVELOPE(BODY("<A>\xC3\xA9</A>")));
  EXPECT_EQ(WideTypes::Utf8(message.GetMessageContentsw()), message.GetMessageContents());
  EXPECT_EQ(WideTypes::Utf8(message.GetFormattedMessageContentsw()),
            message.GetFormattedMessageContents());
}

// The key is a raw one: a password would cost its derivation.
TYPED_TEST(Message, EncipheredContents) {
  using W = TypeParam;
  const auto key =
      W::Text("quen-raw-key:000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f");
  typename W::Msg message(W::Text(ENVELOPE(BODY("<A>secret</A>"))));
  const std::string enciphered = message.GetEncryptedMessageContents(key);
  EXPECT_EQ(enciphered.find("secret"), std::string::npos);
  typename W::Msg other;
  other.SetEncryptedMessageContents(enciphered, key);
  EXPECT_EQ(other.GetMessageContents(), message.GetMessageContents());
  EXPECT_EQ(W::Utf8(other.GetMessageName()), "A");

  std::string plain;
  typename W::Data tree = TreeOf<W>("<B/>");
  tree.GetEncryptedSubset(plain, key, W::Text(""));
  other.SetEncryptedMessageContents(plain, key);
  EXPECT_EQ(other.GetMessageContents(), ENVELOPE(BODY("<B/>")));

  std::string changed = enciphered;
  changed.back() = static_cast<char>(changed.back() ^ 1);
  EXPECT_NE(Failure<W>([&] { other.SetEncryptedMessageContents(changed, key); }), "");
  EXPECT_NE(Failure<W>([&] {
              other.SetEncryptedMessageContents(enciphered, W::Text("quen-raw-key:short"));
            }),
            "");
  other.SetEncryptedMessageContents("", W::Text("quen-raw-key:short"));
  EXPECT_EQ(other.GetMessageContents(), ENVELOPE(BODY("<B/>")));
}

TYPED_TEST(Message, CopiesAndAssignments) {
  using W = TypeParam;
  typename W::Msg message(W::Text("<A/>"));
  message.SetSourceAddress(W::Text("s"));
  message.SetTransportType(W::Text("QUEUE"));
  message.SetMessagePriority(3);
  typename W::Msg copy(message);
  typename W::Msg assigned;
  assigned.SetMessagePriority(9);
  assigned = message;
  message.SetSourceAddress(W::Text("changed"));
  for (typename W::Msg* const other : {&copy, &assigned}) {
    EXPECT_EQ(W::Utf8(other->GetSourceAddress()), "s");
    EXPECT_EQ(W::Utf8(other->GetTransportType()), "QUEUE");
    EXPECT_FALSE(other->HasMessageAttribute(W::Text("TRANSPORT_TYPE")));
  }
  EXPECT_EQ(copy.GetMessagePriority(), 0u);
  EXPECT_EQ(assigned.GetMessagePriority(), 9u);

  const typename W::Node body = message.GetBody();
  typename W::Msg& self = message;
  message = self;
  EXPECT_TRUE(body == message.GetBody());
}

TYPED_TEST(Message, TheBaseStateFollowsFiveSetters) {
  using W = TypeParam;
  typename W::Msg message;
  message.SetSourceAddress(W::Text("s"));
  message.SetDestinationAddress(W::Text("d"));
  message.SetReplyAddress(W::Text("r"));
  message.SetMessageType(W::Text("t"));
  message.SetTransportType(W::Text("QUEUE"));
  message.SetBody(DocumentOf<W>("<A/>"));

  using Base = typename W::BaseMessage;
  EXPECT_EQ(W::Utf8(message.Base::GetSourceAddress()), "s");
  EXPECT_EQ(W::Utf8(message.Base::GetDestinationAddress()), "d");
  EXPECT_EQ(W::Utf8(message.Base::GetReplyAddress()), "r");
  EXPECT_EQ(W::Utf8(message.Base::GetMessageType()), "t");
  EXPECT_EQ(W::Utf8(message.GetMessageAttribute(W::Text("TRANSPORT_TYPE"))), "QUEUE");
  EXPECT_EQ(message.Base::GetMessageContents(), "");

  // Through the base the XML is read.
  const Base& base = message;
  EXPECT_EQ(base.GetMessageContents(), message.GetMessageContents());
  message.SetMessageContents(std::string("<A/>"));
  EXPECT_EQ(W::Utf8(base.GetSourceAddress()), "");
  EXPECT_EQ(W::Utf8(message.Base::GetSourceAddress()), "s");

  // Equality and the reply without an argument are the base message's.
  typename W::Msg other(W::Text("<B/>"));
  EXPECT_TRUE(other == typename W::Msg());
  EXPECT_FALSE(other == message);
  EXPECT_EQ(W::Utf8(message.ConstructReplyMessage().GetDestinationAddress()), "r");
}

TYPED_TEST(Message, FromABaseMessage) {
  using W = TypeParam;
  typename W::BaseMessage base(W::Text("s"), W::Text("d"), W::Text(""), W::Text("<A/>"));
  base.SetMessageType(W::Text("t"));
  base.SetMessagePriority(4);
  const typename W::Msg message(base);
  EXPECT_EQ(message.GetMessageContents(),
            ENVELOPE(HEADER("<Delivery><Src>s</Src><Dest>d</Dest><Reply></Reply></Delivery>")
                         BODY("<A/>")));
  EXPECT_EQ(W::Utf8(message.W::BaseMessage::GetSourceAddress()), "");
  EXPECT_EQ(message.GetMessagePriority(), 0u);

  const typename W::BaseMessage overwrites(
      W::Text("s"), W::Text(""), W::Text("r"),
      W::Text(ENVELOPE(HEADER("<Delivery><Dest>x</Dest></Delivery>"))));
  EXPECT_EQ(typename W::Msg(overwrites).GetMessageContents(),
            ENVELOPE(HEADER("<Delivery><Dest></Dest><Src>s</Src><Reply>r</Reply></Delivery>")));

  // An XML message is a base message too, and then its own XML counts.
  const typename W::BaseMessage& xml = message;
  EXPECT_EQ(typename W::Msg(xml).GetMessageContents(), message.GetMessageContents());

  const std::string failure = Failure<W>([] { typename W::Msg none{typename W::BaseMessage()}; });
  EXPECT_EQ(failure.substr(0, 5), "1009 ");
}

struct ReplyCase {
  const char* what;
  const char* request;
  const char* reply;
};

TYPED_TEST(Message, Replies) {
  using W = TypeParam;
  const ReplyCase kReplies[] = {
      {"addresses turn round, all else stays",
       ENVELOPE(
           HEADER("<Delivery><Src>s</Src><Reply>r</Reply><Dest>d</Dest><TransportType>Q"
                  "</TransportType></Delivery><QuenXMLMsg MsgType='CMD'><MessageID>7</MessageID>"
                  "</QuenXMLMsg><MessageType>t</MessageType><Own/>")
               BODY("<A/>" FAULT("<faultcode>1</faultcode>"))),
       ENVELOPE(HEADER("<Delivery><Src>d</Src><Reply>d</Reply><Dest>r</Dest><TransportType>Q"
                       "</TransportType></Delivery><QuenXMLMsg MsgType=\"REPLY\"><MessageID>7"
                       "</MessageID></QuenXMLMsg><MessageType>t</MessageType><Own/>")
                    BODY("<A/>" FAULT("<faultcode>1</faultcode>")))},
      {"what the request lacks is empty", ENVELOPE(BODY("<A/>")),
       ENVELOPE(HEADER("<Delivery><Dest></Dest><Src></Src><Reply></Reply></Delivery>"
                       "<QuenXMLMsg MsgType=\"REPLY\"/>") BODY("<A/>"))},
  };
  for (const ReplyCase& row : kReplies) {
    SCOPED_TRACE(row.what);
    typename W::Msg request(W::Text(row.request));
    const std::string before = request.GetMessageContents();
    typename W::Msg reply(W::Text("<old/>"));
    reply.SetTransportType(W::Text("base"));
    request.ConstructReplyMessage(reply);
    EXPECT_EQ(reply.GetMessageContents(), row.reply);
    EXPECT_EQ(request.GetMessageContents(), before);
    EXPECT_EQ(W::Utf8(reply.GetMessageAttribute(W::Text("TRANSPORT_TYPE"))), "base");
    request.ConstructReplyMessage(request);
    EXPECT_EQ(request.GetMessageContents(), row.reply);
  }
}

// A document type cannot come along into an envelope, and what it supplied is not copied with the
// element (DOM Level 3 Core, importNode). Contents that are an envelope keep theirs, and then have
// no text.
TYPED_TEST(Message, DocumentTypes) {
  using W = TypeParam;
  typename W::Msg message;
  message.SetMessageContents(
      std::string("<!DOCTYPE A [<!ELEMENT A EMPTY><!ATTLIST A d CDATA 'x'>]><A/>"));
  EXPECT_EQ(message.GetMessageContents(), ENVELOPE(BODY("<A/>")));
  message.SetMessageContents(
      std::string("<!DOCTYPE SOAP-ENV:Envelope [<!ELEMENT SOAP-ENV:Envelope EMPTY><!ATTLIST "
                  "SOAP-ENV:Envelope xmlns:SOAP-ENV CDATA #REQUIRED>]>"
                  "<SOAP-ENV:Envelope xmlns:SOAP-ENV='urn:s'/>"));
  EXPECT_FALSE(message.HasBody());
  EXPECT_EQ(Failure<W>([&] { message.GetMessageContents(); }), "1010 Invalid DOM Node Type");
  message.SetSourceAddress(W::Text("s"));
  EXPECT_EQ(W::Utf8(message.GetSourceAddress()), "s");
}

// A random element, by names that mean something in an envelope, here and in another namespace.
std::string RandomElement(std::mt19937& ioRandom, int inDepth) {
  static constexpr const char* kNames[] = {"SOAP-ENV:Envelope", "SOAP-ENV:Header", "SOAP-ENV:Body",
                                           "SOAP-ENV:Fault",    "s:Header",        "s:Body",
                                           "s:Envelope",        "s:Fault",         "Delivery",
                                           "MessageType",       "HostName",        "x"};
  static constexpr const char* kAttributes[] = {
      "", "", "", " xmlns='urn:d'", " xmlns:s='urn:other'", " xmlns:SOAP-ENV='urn:other'"};
  const auto pick = [&](std::size_t inCount) {
    return std::uniform_int_distribution<std::size_t>(0, inCount - 1)(ioRandom);
  };
  const std::string name = kNames[pick(std::size(kNames))];
  std::string text = "<" + name + kAttributes[pick(std::size(kAttributes))] + ">";
  text += std::to_string(ioRandom() % 1000);
  for (std::size_t i = inDepth > 0 ? pick(4) : 0; i > 0; --i)
    text += RandomElement(ioRandom, inDepth - 1);
  return text + "</" + name + ">";
}

// The parts are found by short cuts. They have to be what the paths select in the whole document.
TEST(WideMessage, PartsAreWhatThePathsSelect) {
  const std::string head =
      "<SOAP-ENV:Envelope xmlns:SOAP-ENV='http://schemas.xmlsoap.org/soap/envelope' "
      "xmlns:s='http://schemas.xmlsoap.org/soap/envelope'>";
  std::mt19937 random(7);
  int found = 0;
  for (int round = 0; round < 600; ++round) {
    std::string text = head;
    // Half of them are shaped like an envelope.
    const bool isShaped = round % 2 == 0;
    if (isShaped) text += "<SOAP-ENV:Header>";
    for (int i = 0; i < 3; ++i) text += RandomElement(random, 3);
    if (isShaped)
      text += "</SOAP-ENV:Header><s:Body>" + RandomElement(random, 3) + RandomElement(random, 2) +
              "</s:Body>";
    text += "</SOAP-ENV:Envelope>";
    SCOPED_TRACE(text);
    const CQuenXMLDocument2w document = DocumentOf<WideTypes>(text);
    const auto select = [&](const char16_t* inPath) {
      return document.SelectSingleNode(u"//SOAP-ENV:Envelope/" + wstring(inPath));
    };
    const auto value = [](const CQuenXMLNode2w& inNode) {
      return inNode == static_cast<QuenXMLDOMNode2w_NullPtr*>(nullptr) ? wstring()
                                                                       : inNode.GetValue();
    };
    const auto exists = [](const CQuenXMLNode2w& inNode) {
      return inNode != static_cast<QuenXMLDOMNode2w_NullPtr*>(nullptr);
    };
    CQuenXMLMsg2w parsed;
    parsed.SetMessageContents(text);
    CQuenXMLMsg2w copied;
    copied.SetMessageContents(document);
    for (const CQuenXMLMsg2w* const message : {&parsed, &copied}) {
      ASSERT_EQ(message->HasHeader(), exists(select(u"SOAP-ENV:Header")));
      ASSERT_EQ(message->GetMessageType(), value(select(u"SOAP-ENV:Header/MessageType")));
      ASSERT_EQ(message->GetHostName(), value(select(u"SOAP-ENV:Header/HostName")));
      ASSERT_EQ(message->HasError(), exists(select(u"SOAP-ENV:Body/SOAP-ENV:Fault")));
      const CQuenXMLNode2w body = select(u"SOAP-ENV:Body/*[name()!='SOAP-ENV:Fault']");
      ASSERT_EQ(message->HasBody(), exists(body));
      if (exists(body)) {
        ASSERT_EQ(message->GetMessageName(), body.GetName());
      }
      found += message->GetMessageType().empty() ? 0 : 1;
    }
  }
  EXPECT_GT(found, 100);
}

TEST(NarrowMessage, ArgumentsAreWellFormedUtf8) {
  CQuenXMLMsg2 message("<A/>");
  const std::string bad = "a\xC3";
  const std::string text = message.GetMessageContents();
  EXPECT_NE(Failure<NarrowTypes>([&] { message.SetSourceAddress(bad); }), "");
  EXPECT_NE(Failure<NarrowTypes>([&] { message.SetError("c", 1, bad, "d"); }), "");
  EXPECT_NE(Failure<NarrowTypes>([&] { message.SetMessageContents(bad); }), "");
  EXPECT_EQ(message.GetMessageContents(), text);
  EXPECT_EQ(message.CQuenMessage::GetSourceAddress(), "");
}

}  // namespace
}  // namespace quen::test

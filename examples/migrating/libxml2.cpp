// SPDX-License-Identifier: Apache-2.0
//
// Ten jobs with libxml2, as docs/migrating.md shows them.
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xpath.h>

#include <memory>
#include <string>

#include "examples/migrating/jobs.h"

namespace {

using Document = std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)>;

const xmlChar* X(const char* text) { return reinterpret_cast<const xmlChar*>(text); }

std::string Take(xmlChar* text) {
  const std::string taken = text != nullptr ? reinterpret_cast<const char*>(text) : "";
  xmlFree(text);
  return taken;
}

Document Parsed(const std::string& text) {
  return Document(xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr,
                                XML_PARSE_NOERROR | XML_PARSE_NONET),
                  xmlFreeDoc);
}

xmlNode* First(xmlDoc* document, const char* expression) {
  const std::unique_ptr<xmlXPathContext, decltype(&xmlXPathFreeContext)> context(
      xmlXPathNewContext(document), xmlXPathFreeContext);
  const std::unique_ptr<xmlXPathObject, decltype(&xmlXPathFreeObject)> found(
      xmlXPathEvalExpression(X(expression), context.get()), xmlXPathFreeObject);
  if (!found || xmlXPathNodeSetIsEmpty(found->nodesetval)) return nullptr;
  return found->nodesetval->nodeTab[0];
}

std::string Text(xmlDoc* document, xmlNode* node) {
  const std::unique_ptr<xmlBuffer, decltype(&xmlBufferFree)> buffer(xmlBufferCreate(),
                                                                    xmlBufferFree);
  xmlNodeDump(buffer.get(), document, node, 0, 0);
  return reinterpret_cast<const char*>(xmlBufferContent(buffer.get()));
}

}  // namespace

bool IsRefused(const std::string& text) {
  const Document document = Parsed(text);
  return document == nullptr;  // xmlGetLastError()
}

std::string ReadValue(const std::string& text) {
  const Document document = Parsed(text);
  return Take(xmlNodeGetContent(First(document.get(), "/order/item")));
}

int ReadNumberOr(const std::string& text, int fallback) {
  const Document document = Parsed(text);
  xmlNode* const discount = First(document.get(), "/order/discount");
  return discount != nullptr ? std::stoi(Take(xmlNodeGetContent(discount))) : fallback;
}

int ReadAttribute(const std::string& text) {
  const Document document = Parsed(text);
  return std::stoi(Take(xmlGetProp(First(document.get(), "/order/item[2]"), X("qty"))));
}

std::string WalkChildren(const std::string& text) {
  std::string names;
  const Document document = Parsed(text);
  xmlNode* const order = xmlDocGetRootElement(document.get());
  for (xmlNode* child = order->children; child != nullptr; child = child->next) {
    if (child->type == XML_ELEMENT_NODE && xmlStrEqual(child->name, X("item")))
      names += Take(xmlNodeGetContent(child)) + " ";
  }
  return names;
}

std::string SelectByCondition(const std::string& text) {
  const Document document = Parsed(text);
  return Take(xmlNodeGetContent(First(document.get(), "/order/item[@qty > 10]")));
}

std::string Change(const std::string& text) {
  const Document document = Parsed(text);
  xmlNode* const item = First(document.get(), "/order/item");
  xmlNodeSetContent(item, X("screw"));  // escape & and < first
  xmlSetProp(item, X("qty"), X("4"));
  return Text(document.get(), item);
}

std::string Add(const std::string& text) {
  const Document document = Parsed(text);
  xmlNode* const order = xmlDocGetRootElement(document.get());
  xmlNode* const item = xmlNewTextChild(order, nullptr, X("item"), X("washer"));
  xmlSetProp(item, X("qty"), X("1"));
  return Text(document.get(), order);
}

std::string Remove(const std::string& text) {
  const Document document = Parsed(text);
  xmlNode* const note = First(document.get(), "/order/note");
  xmlUnlinkNode(note);
  xmlFreeNode(note);
  return Text(document.get(), xmlDocGetRootElement(document.get()));
}

void Write(const std::string& text, const std::string& file) {
  const Document document = Parsed(text);
  xmlSaveFileEnc(file.c_str(), document.get(), "UTF-8");
}

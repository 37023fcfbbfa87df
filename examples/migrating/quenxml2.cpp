// SPDX-License-Identifier: Apache-2.0
//
// Ten jobs with QuenXML2, as docs/migrating.md shows them.
#include <quenxml2/convenience.h>
#include <quenxml2/narrow.h>

#include <cstdint>
#include <string>

#include "examples/migrating/jobs.h"

bool IsRefused(const std::string& text) {
  try {
    quen::CQuenXMLData2 order(text);
    return false;
  } catch (const quen::CQuenXMLException2& failure) {
    return failure.GetErrorCode() == 1009;  // the message has line and column
  }
}

std::string ReadValue(const std::string& text) {
  quen::CQuenXMLData2 order(text);
  std::string item;
  order.GetData(item, "/order/item");
  return item;
}

int ReadNumberOr(const std::string& text, int fallback) {
  quen::CQuenXMLData2 order(text);
  return quen::GetOr(order, "/order/discount", fallback);
}

int ReadAttribute(const std::string& text) {
  quen::CQuenXMLData2 order(text);
  std::int32_t quantity = 0;
  order.GetAttr("qty", quantity, "/order/item[2]");
  return quantity;
}

std::string WalkChildren(const std::string& text) {
  std::string names;
  quen::CQuenXMLDocument2 document;
  document.LoadXML(text);
  for (quen::CQuenXMLElement2& child : document.GetDocumentElement()) {
    if (child.GetName() == "item") names += child.GetValue() + " ";
  }
  return names;
}

std::string SelectByCondition(const std::string& text) {
  quen::CQuenXMLData2 order(text);
  std::string item;
  order.GetData(item, "/order/item[@qty > 10]");
  return item;
}

std::string Change(const std::string& text) {
  quen::CQuenXMLData2 order(text);
  order.SetData("screw", "/order/item[1]");
  order.SetAttr("qty", 4, "/order/item[1]");
  std::string result;
  order.GetSubset(result, "/order/item[1]");
  return result;
}

std::string Add(const std::string& text) {
  quen::CQuenXMLData2 order(text);
  order.AddData("washer", "/order/item");
  order.SetAttr("qty", 1, "/order/item[last()]");
  std::string result;
  order.GetSubset(result, "/");
  return result;
}

std::string Remove(const std::string& text) {
  quen::CQuenXMLData2 order(text);
  order.RemoveData("/order/note");
  std::string result;
  order.GetSubset(result, "/");
  return result;
}

void Write(const std::string& text, const std::string& file) {
  quen::CQuenXMLData2 order(text);
  order.WriteToFile(file, 1);  // 0 refuses to overwrite
}

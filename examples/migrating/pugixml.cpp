// SPDX-License-Identifier: Apache-2.0
//
// Ten jobs with pugixml, as docs/migrating.md shows them.
#include <pugixml.hpp>
#include <sstream>
#include <string>

#include "examples/migrating/jobs.h"

namespace {

std::string Text(const pugi::xml_node& node) {
  std::ostringstream out;
  node.print(out, "", pugi::format_raw | pugi::format_no_declaration);
  return out.str();
}

}  // namespace

bool IsRefused(const std::string& text) {
  pugi::xml_document document;
  const pugi::xml_parse_result result = document.load_string(text.c_str());
  return !result;  // result.description(), result.offset
}

std::string ReadValue(const std::string& text) {
  pugi::xml_document document;
  document.load_string(text.c_str());
  return document.child("order").child_value("item");
}

int ReadNumberOr(const std::string& text, int fallback) {
  pugi::xml_document document;
  document.load_string(text.c_str());
  return document.child("order").child("discount").text().as_int(fallback);
}

int ReadAttribute(const std::string& text) {
  pugi::xml_document document;
  document.load_string(text.c_str());
  return document.select_node("/order/item[2]").node().attribute("qty").as_int();
}

std::string WalkChildren(const std::string& text) {
  std::string names;
  pugi::xml_document document;
  document.load_string(text.c_str());
  for (const pugi::xml_node child : document.child("order").children("item")) {
    names += child.child_value() + std::string(" ");
  }
  return names;
}

std::string SelectByCondition(const std::string& text) {
  pugi::xml_document document;
  document.load_string(text.c_str());
  return document.select_node("/order/item[@qty > 10]").node().child_value();
}

std::string Change(const std::string& text) {
  pugi::xml_document document;
  document.load_string(text.c_str());
  pugi::xml_node item = document.child("order").child("item");
  item.text().set("screw");
  item.attribute("qty").set_value(4);
  return Text(item);
}

std::string Add(const std::string& text) {
  pugi::xml_document document;
  document.load_string(text.c_str());
  pugi::xml_node item = document.child("order").append_child("item");
  item.text().set("washer");
  item.append_attribute("qty").set_value(1);
  return Text(document);
}

std::string Remove(const std::string& text) {
  pugi::xml_document document;
  document.load_string(text.c_str());
  document.child("order").remove_child("note");
  return Text(document);
}

void Write(const std::string& text, const std::string& file) {
  pugi::xml_document document;
  document.load_string(text.c_str());
  document.save_file(file.c_str(), "", pugi::format_raw);
}

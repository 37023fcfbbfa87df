// SPDX-License-Identifier: Apache-2.0
//
// Ten jobs with Boost.PropertyTree, as docs/migrating.md shows them.
#include <boost/property_tree/ptree.hpp>
#include <boost/property_tree/xml_parser.hpp>
#include <sstream>
#include <string>

#include "examples/migrating/jobs.h"

namespace pt = boost::property_tree;

namespace {

pt::ptree Parsed(const std::string& text) {
  std::istringstream in(text);
  pt::ptree tree;
  pt::read_xml(in, tree);
  return tree;
}

std::string Text(const pt::ptree& tree) {
  std::ostringstream out;
  pt::write_xml(out, tree);
  const std::string text = out.str();
  return text.substr(text.find('\n') + 1);  // behind the declaration
}

}  // namespace

bool IsRefused(const std::string& text) {
  try {
    std::istringstream in(text);
    pt::ptree tree;
    pt::read_xml(in, tree);
    return false;
  } catch (const pt::xml_parser_error& failure) {
    return true;  // failure.message(), failure.line()
  }
}

std::string ReadValue(const std::string& text) {
  const pt::ptree tree = Parsed(text);
  return tree.get<std::string>("order.item");
}

int ReadNumberOr(const std::string& text, int fallback) {
  const pt::ptree tree = Parsed(text);
  return tree.get("order.discount", fallback);
}

int ReadAttribute(const std::string& text) {
  const pt::ptree tree = Parsed(text);
  int position = 0;
  for (const auto& [name, child] : tree.get_child("order")) {
    if (name == "item" && ++position == 2) return child.get<int>("<xmlattr>.qty");
  }
  return 0;
}

std::string WalkChildren(const std::string& text) {
  std::string names;
  const pt::ptree tree = Parsed(text);
  for (const auto& [name, child] : tree.get_child("order")) {
    if (name == "item") names += child.data() + " ";
  }
  return names;
}

std::string SelectByCondition(const std::string& text) {
  const pt::ptree tree = Parsed(text);
  for (const auto& [name, child] : tree.get_child("order")) {
    if (name == "item" && child.get<int>("<xmlattr>.qty") > 10) return child.data();
  }
  return {};
}

std::string Change(const std::string& text) {
  pt::ptree tree = Parsed(text);
  pt::ptree& item = tree.get_child("order.item");
  item.data() = "screw";
  item.put("<xmlattr>.qty", 4);
  pt::ptree alone;
  alone.add_child("item", item);
  return Text(alone);
}

std::string Add(const std::string& text) {
  pt::ptree tree = Parsed(text);
  pt::ptree& item = tree.add("order.item", "washer");
  item.put("<xmlattr>.qty", 1);
  return Text(tree);
}

std::string Remove(const std::string& text) {
  pt::ptree tree = Parsed(text);
  tree.get_child("order").erase("note");
  return Text(tree);
}

void Write(const std::string& text, const std::string& file) {
  const pt::ptree tree = Parsed(text);
  pt::write_xml(file, tree);
}

// SPDX-License-Identifier: Apache-2.0
//
// A document as a list of items in document order, each with the step of a path that selects it.
#ifndef QUENXML2_EXAMPLES_SEE_DOCUMENT_H_
#define QUENXML2_EXAMPLES_SEE_DOCUMENT_H_

#include <quenxml2/narrow.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace see {

enum class Kind { kElement, kText, kComment, kInstruction };

struct Item {
  Kind kind = Kind::kElement;
  std::size_t parent = 0;  // the root is its own
  std::size_t depth = 0;
  std::string name;  // qualified, as it stands there
  std::string uri;   // of its namespace
  std::string value;
  std::string step;  // "item[2]", "text()", "*[7]" where no prefix of the root names the namespace
  std::vector<std::pair<std::string, std::string>> attributes;  // by name
  std::vector<std::size_t> children;
};

// Text that is only white space is left out beside elements. Throws CQuenXMLException2.
std::vector<Item> Load(const std::string& inFile);

std::string PathOf(const std::vector<Item>& inItems, std::size_t inItem);

// `inText` in quotes on one line, cut behind `inMaximum` characters, without what would steer a
// terminal.
std::string Quoted(const std::string& inText, std::size_t inMaximum = 60);
std::string OnOneLine(const std::string& inText, std::size_t inMaximum);
std::size_t Columns(const std::string& inText);

// Whether to colour: as --color and --no-color say, else if standard output is a terminal and
// NO_COLOR is not set.
enum class Color { kAuto, kAlways, kNever };
bool UseColor(Color inWish);

}  // namespace see

#endif  // QUENXML2_EXAMPLES_SEE_DOCUMENT_H_

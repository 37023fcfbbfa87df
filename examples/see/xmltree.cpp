// SPDX-License-Identifier: Apache-2.0
//
// xmltree [--color|--no-color] FILE: what a document holds, as a tree, with the path of each line.
//
// The paths are XPath, as the library takes them; a step "*[7]" is an element in a namespace that
// has no prefix on the root. Text is cut to one line. Colour goes to a terminal alone, and nowhere
// if NO_COLOR is set, unless --color says so. The status is 2 if the document cannot be read.
#include <iostream>
#include <string>
#include <vector>

#include "examples/see/document.h"

namespace {

using see::Item;
using see::Kind;

struct Style {
  const char* name = "";
  const char* value = "";
  const char* path = "";
  const char* end = "";
};

// An element whose only child is a text takes one line.
bool IsLeaf(const std::vector<Item>& inItems, const Item& inItem) {
  return inItem.children.size() == 1 && inItems[inItem.children[0]].kind == Kind::kText;
}

void PrintLine(const Style& inStyle, std::size_t inDepth, const std::string& inName,
               const std::string& inValue, const std::string& inPath) {
  constexpr std::size_t kPathColumn = 52;
  const std::size_t used =
      2 * inDepth + see::Columns(inName) + (inValue.empty() ? 0 : 1 + see::Columns(inValue));
  std::cout << std::string(2 * inDepth, ' ') << inStyle.name << inName << inStyle.end;
  if (!inValue.empty()) std::cout << ' ' << inStyle.value << inValue << inStyle.end;
  if (!inPath.empty()) {
    std::cout << std::string(used < kPathColumn ? kPathColumn - used : 2, ' ') << inStyle.path
              << inPath << inStyle.end;
  }
  std::cout << '\n';
}

void Print(const std::vector<Item>& inItems, const Style& inStyle) {
  std::vector<std::string> paths(1);  // of the way down to the line
  std::vector<std::size_t> todo{0};
  while (!todo.empty()) {
    const Item& item = inItems[todo.back()];
    todo.pop_back();
    paths.resize(item.depth + 1);
    paths.push_back(paths.back() + "/" + item.step);
    const std::string& path = paths.back();
    if (item.kind == Kind::kText) {
      PrintLine(inStyle, item.depth, "text", see::Quoted(item.value), path);
    } else if (item.kind == Kind::kComment) {
      PrintLine(inStyle, item.depth, "comment", see::Quoted(item.value), path);
    } else if (item.kind == Kind::kInstruction) {
      PrintLine(inStyle, item.depth, "?" + item.name, see::Quoted(item.value), path);
    } else {
      const bool leaf = IsLeaf(inItems, item);
      PrintLine(inStyle, item.depth, item.name,
                leaf ? see::Quoted(inItems[item.children[0]].value) : "", path);
      for (const auto& [name, value] : item.attributes) {
        const bool isDeclaration = name.rfind("xmlns", 0) == 0;  // is no attribute to a path
        PrintLine(inStyle, item.depth + 1, "@" + name, see::Quoted(value),
                  isDeclaration ? "" : path + "/@" + name);
      }
      if (!leaf) todo.insert(todo.end(), item.children.rbegin(), item.children.rend());
    }
  }
}

int Usage() {
  std::cerr << "usage: xmltree [--color|--no-color] FILE\n";
  return 2;
}

}  // namespace

int main(int inCount, char** inArguments) {
  see::Color color = see::Color::kAuto;
  std::string file;
  for (int i = 1; i < inCount; ++i) {
    const std::string argument = inArguments[i];
    if (argument == "--color") {
      color = see::Color::kAlways;
    } else if (argument == "--no-color") {
      color = see::Color::kNever;
    } else if (argument.rfind("--", 0) == 0 || argument.empty() || !file.empty()) {
      return Usage();
    } else {
      file = argument;
    }
  }
  if (file.empty()) return Usage();
  std::ios::sync_with_stdio(false);
  try {
    Print(see::Load(file),
          see::UseColor(color) ? Style{"\033[1;34m", "\033[32m", "\033[2m", "\033[0m"} : Style{});
  } catch (const quen::CQuenXMLException2& failure) {
    std::cerr << "xmltree: " << file << ": " << see::OnOneLine(failure.what(), 1000) << '\n';
    return 2;
  }
  std::cout.flush();
  return std::cout ? 0 : 2;
}

// SPDX-License-Identifier: Apache-2.0
#include "examples/see/document.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <unordered_map>

namespace see {
namespace {

using quen::CQuenXMLNode2;

constexpr const quen::QuenXMLDOMNode2w_NullPtr* kNull = nullptr;

bool IsBlank(const std::string& inText) {
  return inText.find_first_not_of(" \t\r\n") == std::string::npos;
}

void ReadElement(const CQuenXMLNode2& inNode, Item& outItem) {
  outItem.uri = inNode.GetNamespaceURI();
  if (!inNode.HasAttributes()) return;
  quen::CQuenXMLElement2 element(inNode);
  const auto end = element.attr_end();
  for (auto attribute = element.attr_begin(); attribute != end; ++attribute)
    outItem.attributes.emplace_back(attribute->GetName(), attribute->GetValue());
  std::sort(outItem.attributes.begin(), outItem.attributes.end());
}

// False for what is not shown.
bool ReadItem(const CQuenXMLNode2& inNode, Item& outItem) {
  switch (inNode.GetNodeType()) {
    case CQuenXMLNode2::ElementNode:
      ReadElement(inNode, outItem);
      break;
    case CQuenXMLNode2::TextNode:
    case CQuenXMLNode2::CDATASectionNode:
      outItem.kind = Kind::kText;
      break;
    case CQuenXMLNode2::CommentNode:
      outItem.kind = Kind::kComment;
      break;
    case CQuenXMLNode2::ProcessingInstructionNode:
      outItem.kind = Kind::kInstruction;
      break;
    default:
      return false;
  }
  outItem.name = inNode.GetName();
  if (outItem.kind != Kind::kElement) outItem.value = inNode.GetValue();
  return true;
}

// Items without steps. No recursion: a document may be a thousand levels deep.
std::vector<Item> Walk(const CQuenXMLNode2& inRoot) {
  std::vector<Item> items(1);
  ReadItem(inRoot, items[0]);
  std::vector<std::pair<CQuenXMLNode2, std::size_t>> open;  // the next child to read, its parent
  open.emplace_back(inRoot.GetFirstChild(), 0);
  while (!open.empty()) {
    if (open.back().first == kNull) {
      open.pop_back();
      continue;
    }
    const CQuenXMLNode2 node = open.back().first;
    const std::size_t parent = open.back().second;
    open.back().first = node.GetNextSibling();
    Item item;
    if (!ReadItem(node, item)) continue;
    item.parent = parent;
    item.depth = open.size();
    items[parent].children.push_back(items.size());
    if (item.kind == Kind::kElement) open.emplace_back(node.GetFirstChild(), items.size());
    items.push_back(std::move(item));
  }
  return items;
}

// The steps of the children of one element. Positions count what the step's name selects.
class Steps {
 public:
  explicit Steps(const Item& inRoot) {
    for (const auto& [name, value] : inRoot.attributes)
      if (name.rfind("xmlns:", 0) == 0) uris_.emplace(name.substr(6), value);
  }

  std::string NameTest(const Item& inItem) const {
    if (inItem.kind == Kind::kText) return "text()";
    if (inItem.kind == Kind::kComment) return "comment()";
    if (inItem.kind == Kind::kInstruction) return "processing-instruction()";
    const std::size_t colon = inItem.name.find(':');
    if (colon == std::string::npos) return inItem.uri.empty() ? inItem.name : "*";
    const auto declared = uris_.find(inItem.name.substr(0, colon));
    return declared != uris_.end() && declared->second == inItem.uri ? inItem.name : "*";
  }

  void Set(std::vector<Item>& ioItems, const Item& inParent) const {
    std::unordered_map<std::string, std::size_t> total;
    std::unordered_map<std::string, std::size_t> seen;
    for (const std::size_t child : inParent.children) {
      Item& item = ioItems[child];
      item.step = NameTest(item);
      ++total[item.step];
      if (item.kind == Kind::kElement && item.step != "*") ++total["*"];
    }
    for (const std::size_t child : inParent.children) {
      Item& item = ioItems[child];
      const std::string test = item.step;
      const std::size_t position = ++seen[test];
      if (item.kind == Kind::kElement && test != "*") ++seen["*"];
      if (total[test] > 1) item.step += "[" + std::to_string(position) + "]";
    }
  }

 private:
  std::unordered_map<std::string, std::string> uris_;
};

// Whether the byte begins a character.
bool IsStart(char inByte) { return (static_cast<unsigned char>(inByte) & 0xC0) != 0x80; }

}  // namespace

std::vector<Item> Load(const std::string& inFile) {
  quen::CQuenXMLDocument2 document;
  document.Load(inFile);
  std::vector<Item> items = Walk(document.GetDocumentElement());
  const Steps steps(items[0]);
  items[0].step = steps.NameTest(items[0]);
  for (const Item& item : items) steps.Set(items, item);
  // Last, since positions count blank text too.
  for (Item& item : items) {
    const bool mixed = item.children.size() > 1;
    item.children.erase(std::remove_if(item.children.begin(), item.children.end(),
                                       [&](std::size_t inChild) {
                                         return mixed && items[inChild].kind == Kind::kText &&
                                                IsBlank(items[inChild].value);
                                       }),
                        item.children.end());
  }
  return items;
}

std::string PathOf(const std::vector<Item>& inItems, std::size_t inItem) {
  std::vector<std::size_t> way;
  for (; inItem != 0; inItem = inItems[inItem].parent) way.push_back(inItem);
  std::string path = "/" + inItems[0].step;
  for (auto step = way.rbegin(); step != way.rend(); ++step) path += "/" + inItems[*step].step;
  return path;
}

std::string OnOneLine(const std::string& inText, std::size_t inMaximum) {
  std::string line;
  std::size_t columns = 0;
  for (std::size_t i = 0; i < inText.size(); ++i) {
    const unsigned char byte = static_cast<unsigned char>(inText[i]);
    if (IsStart(inText[i]) && ++columns > inMaximum) return line + "\u2026";
    if (byte == 0xC2 && i + 1 < inText.size() && static_cast<unsigned char>(inText[i + 1]) < 0xA0) {
      line += "\ufffd";  // a control character of a terminal
      ++i;
    } else {
      line += byte < 0x20 || byte == 0x7F ? ' ' : inText[i];
    }
  }
  return line;
}

std::string Quoted(const std::string& inText, std::size_t inMaximum) {
  return '"' + OnOneLine(inText, inMaximum) + '"';
}

std::size_t Columns(const std::string& inText) {
  return static_cast<std::size_t>(std::count_if(inText.begin(), inText.end(), IsStart));
}

bool UseColor(Color inWish) {
  if (inWish != Color::kAuto) return inWish == Color::kAlways;
  const char* const noColor = std::getenv("NO_COLOR");
  return (noColor == nullptr || *noColor == '\0') && isatty(STDOUT_FILENO) == 1;
}

}  // namespace see

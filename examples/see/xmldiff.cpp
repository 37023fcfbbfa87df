// SPDX-License-Identifier: Apache-2.0
//
// xmldiff [--color|--no-color] OLD NEW: what differs between two documents, by path.
//
//   - /order/item[2]            is only in OLD
//   + /order/note               is only in NEW
//   ~ /order/@id "7" -> "8"     has another value; the path is that of OLD
//   > /order/item[3] -> /order/item[1]   stands elsewhere among its neighbours
//
// Not looked at: comments, processing instructions, prefixes (their namespaces count), the order of
// attributes, and white space beside elements. The status is 0 for no difference, 1 for some, 2 for
// trouble, as that of diff.
#include <algorithm>
#include <deque>
#include <iostream>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "examples/see/document.h"

namespace {

using see::Item;
using see::Kind;
using Items = std::vector<Item>;

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

// Gives equal subtrees equal numbers, in one pass from the leaves up.
class Numbering {
 public:
  std::vector<std::size_t> Number(const Items& inItems) {
    std::vector<std::size_t> numbers(inItems.size());
    for (std::size_t i = inItems.size(); i-- > 0;) {  // children stand behind their parents
      const Item& item = inItems[i];
      std::string text;
      const auto add = [&text](const std::string& inPart) {
        text += std::to_string(inPart.size()) + ':' + inPart;
      };
      add(item.kind == Kind::kElement ? LocalName(item) : "");
      add(item.uri);
      add(item.value);
      for (const auto& [name, value] : item.attributes) {
        if (IsDeclaration(name)) continue;
        add(name);
        add(value);
      }
      text += ';';
      for (const std::size_t child : item.children)
        if (Counts(inItems[child])) text += std::to_string(numbers[child]) + ' ';
      numbers[i] = known_.emplace(std::move(text), known_.size()).first->second;
    }
    return numbers;
  }

  static std::string LocalName(const Item& inItem) {
    return inItem.name.substr(inItem.name.find(':') + 1);
  }
  static bool IsDeclaration(const std::string& inName) { return inName.rfind("xmlns", 0) == 0; }
  static bool Counts(const Item& inItem) {
    return inItem.kind == Kind::kElement || inItem.kind == Kind::kText;
  }

 private:
  std::unordered_map<std::string, std::size_t> known_;
};

struct Side {
  Items items;
  std::vector<std::size_t> numbers;

  std::vector<std::size_t> Children(std::size_t inItem) const {
    std::vector<std::size_t> children;
    for (const std::size_t child : items[inItem].children)
      if (Numbering::Counts(items[child])) children.push_back(child);
    return children;
  }
  // What makes two items the same thing with another content.
  std::string Name(std::size_t inItem) const {
    const Item& item = items[inItem];
    return item.kind == Kind::kText ? "" : item.uri + ' ' + Numbering::LocalName(item);
  }
  // With an attribute that tells items of one name apart; else empty.
  std::string Identity(std::size_t inItem) const {
    for (const char* key : {"xml:id", "id", "name", "key", "code", "type"})
      for (const auto& [name, value] : items[inItem].attributes)
        if (name == key) return Name(inItem) + ' ' + key + '=' + value;
    return {};
  }
  std::string Shown(std::size_t inItem) const {
    const Item& item = items[inItem];
    if (item.kind == Kind::kText) return see::Quoted(item.value);
    std::string text = '<' + item.name;
    for (const auto& [name, value] : item.attributes)
      text += ' ' + name + "=" + see::Quoted(value, 30);
    text += item.children.empty() ? "/>" : ">";
    if (item.children.size() == 1 && items[item.children[0]].kind == Kind::kText)
      text += ' ' + see::Quoted(items[item.children[0]].value, 40);
    return text;
  }
};

class Difference {
 public:
  Difference(const Side& inOld, const Side& inNew, bool inColor)
      : old_(inOld), new_(inNew), color_(inColor) {}

  // Whether there is any.
  bool Print() {
    if (old_.Name(0) != new_.Name(0)) {
      Line('-', see::PathOf(old_.items, 0) + ' ' + old_.Shown(0));
      Line('+', see::PathOf(new_.items, 0) + ' ' + new_.Shown(0));
      return true;
    }
    todo_.emplace_back(0, 0);
    while (!todo_.empty()) {
      const auto [before, after] = todo_.back();
      todo_.pop_back();
      if (old_.numbers[before] != new_.numbers[after]) Compare(before, after);
    }
    return any_;
  }

 private:
  void Line(char inSign, const std::string& inText) {
    any_ = true;
    const char* start = inSign == '-' ? "\033[31m" : inSign == '+' ? "\033[32m" : "\033[33m";
    std::cout << (color_ ? start : "") << inSign << ' ' << inText << (color_ ? "\033[0m" : "")
              << '\n';
  }

  void Compare(std::size_t inOld, std::size_t inNew) {
    const Item& before = old_.items[inOld];
    const Item& after = new_.items[inNew];
    if (before.value != after.value)
      Line('~', see::PathOf(old_.items, inOld) + ' ' + see::Quoted(before.value) + " -> " +
                    see::Quoted(after.value));
    CompareAttributes(inOld, before, after);
    CompareChildren(old_.Children(inOld), new_.Children(inNew));
  }

  // Both lists are sorted by name.
  void CompareAttributes(std::size_t inOld, const Item& inBefore, const Item& inAfter) {
    auto left = inBefore.attributes.begin();
    auto right = inAfter.attributes.begin();
    while (left != inBefore.attributes.end() || right != inAfter.attributes.end()) {
      const bool onlyLeft = right == inAfter.attributes.end() ||
                            (left != inBefore.attributes.end() && left->first < right->first);
      const bool onlyRight =
          !onlyLeft && (left == inBefore.attributes.end() || right->first < left->first);
      const std::string& name = onlyRight ? right->first : left->first;
      if (!Numbering::IsDeclaration(name) && (onlyLeft || onlyRight || *left != *right)) {
        const std::string path = see::PathOf(old_.items, inOld) + "/@" + name + ' ';
        if (onlyLeft)
          Line('-', path + see::Quoted(left->second));
        else if (onlyRight)
          Line('+', path + see::Quoted(right->second));
        else
          Line('~', path + see::Quoted(left->second) + " -> " + see::Quoted(right->second));
      }
      if (!onlyRight) ++left;
      if (!onlyLeft) ++right;
    }
  }

  // Pairs equal children first, then those of one identity, then those of one name, each in order.
  void CompareChildren(const std::vector<std::size_t>& inOld,
                       const std::vector<std::size_t>& inNew) {
    std::vector<std::size_t> partner(inOld.size(), kNone);  // places in inNew
    std::vector<bool> taken(inNew.size());
    const auto pair = [&](const auto& inKeyOld, const auto& inKeyNew) {
      std::unordered_map<std::string, std::deque<std::size_t>> free;
      for (std::size_t i = 0; i < inNew.size(); ++i)
        if (!taken[i]) free[inKeyNew(inNew[i])].push_back(i);
      for (std::size_t i = 0; i < inOld.size(); ++i) {
        if (partner[i] != kNone) continue;
        const std::string key = inKeyOld(inOld[i]);
        const auto found = free.find(key);
        if (key.empty() || found == free.end() || found->second.empty()) continue;
        partner[i] = found->second.front();
        taken[partner[i]] = true;
        found->second.pop_front();
      }
    };
    pair([&](std::size_t i) { return std::to_string(old_.numbers[i]); },
         [&](std::size_t i) { return std::to_string(new_.numbers[i]); });
    pair([&](std::size_t i) { return old_.Identity(i); },
         [&](std::size_t i) { return new_.Identity(i); });
    pair([&](std::size_t i) { return 'n' + old_.Name(i); },
         [&](std::size_t i) { return 'n' + new_.Name(i); });

    const std::vector<bool> stays = Staying(partner);
    for (std::size_t i = 0; i < inOld.size(); ++i) {
      if (partner[i] == kNone)
        Line('-', see::PathOf(old_.items, inOld[i]) + ' ' + old_.Shown(inOld[i]));
      else if (!stays[i])
        Line('>', see::PathOf(old_.items, inOld[i]) + " -> " +
                      see::PathOf(new_.items, inNew[partner[i]]));
    }
    for (std::size_t i = 0; i < inNew.size(); ++i)
      if (!taken[i]) Line('+', see::PathOf(new_.items, inNew[i]) + ' ' + new_.Shown(inNew[i]));
    for (std::size_t i = inOld.size(); i-- > 0;)  // the first comes off the stack first
      if (partner[i] != kNone) todo_.emplace_back(inOld[i], inNew[partner[i]]);
  }

  // A longest rising subsequence of the partners: the most that need not have moved.
  static std::vector<bool> Staying(const std::vector<std::size_t>& inPartner) {
    std::vector<std::size_t> tails;  // of the best sequence of each length, as places
    std::vector<std::size_t> previous(inPartner.size(), kNone);
    for (std::size_t i = 0; i < inPartner.size(); ++i) {
      if (inPartner[i] == kNone) continue;
      const auto at = std::lower_bound(
          tails.begin(), tails.end(), inPartner[i],
          [&](std::size_t inTail, std::size_t inValue) { return inPartner[inTail] < inValue; });
      if (at != tails.begin()) previous[i] = *(at - 1);
      if (at == tails.end())
        tails.push_back(i);
      else
        *at = i;
    }
    std::vector<bool> stays(inPartner.size());
    for (std::size_t i = tails.empty() ? kNone : tails.back(); i != kNone; i = previous[i])
      stays[i] = true;
    return stays;
  }

  const Side& old_;
  const Side& new_;
  bool color_;
  bool any_ = false;
  std::vector<std::pair<std::size_t, std::size_t>> todo_;
};

int Usage() {
  std::cerr << "usage: xmldiff [--color|--no-color] OLD NEW\n";
  return 2;
}

}  // namespace

int main(int inCount, char** inArguments) {
  see::Color color = see::Color::kAuto;
  std::vector<std::string> files;
  for (int i = 1; i < inCount; ++i) {
    const std::string argument = inArguments[i];
    if (argument == "--color")
      color = see::Color::kAlways;
    else if (argument == "--no-color")
      color = see::Color::kNever;
    else if (argument.rfind("--", 0) == 0 || argument.empty())
      return Usage();
    else
      files.push_back(argument);
  }
  if (files.size() != 2) return Usage();
  std::ios::sync_with_stdio(false);
  std::string file;
  try {
    Numbering numbering;
    Side sides[2];
    for (std::size_t i = 0; i < 2; ++i) {
      file = files[i];
      sides[i].items = see::Load(file);
      sides[i].numbers = numbering.Number(sides[i].items);
    }
    const bool any = Difference(sides[0], sides[1], see::UseColor(color)).Print();
    std::cout.flush();
    return !std::cout ? 2 : any ? 1 : 0;
  } catch (const quen::CQuenXMLException2& failure) {
    std::cerr << "xmldiff: " << file << ": " << see::OnOneLine(failure.what(), 1000) << '\n';
    return 2;
  }
}

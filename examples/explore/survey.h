// SPDX-License-Identifier: Apache-2.0
//
// What a tree holds, by path: each path of names that occurs in it, how often, and what its values
// are. The walk goes with the cursor of the tree.
#ifndef QUENXML2_EXAMPLES_EXPLORE_SURVEY_H_
#define QUENXML2_EXAMPLES_EXPLORE_SURVEY_H_

#include <quenxml2/data.h>

#include <cstddef>
#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

namespace explore {

// In rising order: the type of a path is the highest that its values need.
enum class Type { kEmpty, kLong, kUnsignedLong, kDouble, kText };
const char* NameOf(Type inType);

// All elements, or attributes, of one path of names.
struct Entry {
  std::u16string name;          // qualified; an attribute's begins with '@'
  std::u16string path;          // names alone, to be shown
  std::u16string xpath;         // selects the first of them
  std::u16string namespaceUri;  // of an element
  Entry* parent = nullptr;      // none for the root
  std::size_t count = 0;
  std::size_t values = 0;  // how many are attributes, or elements without child elements
  Type type = Type::kEmpty;
  double smallest = 0;
  double largest = 0;
  std::u16string example;  // the first value that is not empty

  bool IsAttribute() const { return name[0] == u'@'; }
};

class Survey {
 public:
  // Leaves the cursor on the root.
  explicit Survey(quen::CQuenXMLData2w& ioTree);
  Survey(const Survey&) = delete;
  Survey& operator=(const Survey&) = delete;

  // In document order of their first occurrence.
  const std::deque<Entry>& Entries() const { return entries_; }
  std::size_t Elements() const { return elements_; }
  std::size_t Attributes() const { return attributes_; }

 private:
  Entry& ChildOf(Entry* inParent, const std::u16string& inName);
  Entry& Visit(Entry* inParent);
  void RecordValue(Entry& ioEntry, const std::u16string& inText, Type inType, double inNumber);
  std::u16string StepTo(const quen::CQuenXMLElement2w& inElement) const;

  quen::CQuenXMLData2w& tree_;
  std::deque<Entry> entries_;  // entries keep their place while others are added
  std::unordered_map<const Entry*, std::unordered_map<std::u16string, Entry*>> children_;
  std::unordered_map<std::u16string, std::u16string> prefixes_;  // that the root declares
  std::size_t elements_ = 0;
  std::size_t attributes_ = 0;
};

}  // namespace explore

#endif  // QUENXML2_EXAMPLES_EXPLORE_SURVEY_H_

// SPDX-License-Identifier: Apache-2.0
#include "examples/explore/survey.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace explore {
namespace {

// The library reads the number at the head of a text and lets anything follow ("12 mm" is 12). Here
// such a text is no number, so its characters are looked at before the library is asked.
bool LooksLikeNumber(const std::u16string& inText) {
  const bool hasDigit = inText.find_first_of(u"0123456789") != std::u16string::npos;
  return hasDigit && inText.find_first_not_of(u"+-.0123456789") == std::u16string::npos &&
         inText.find_first_of(u"+-", 1) == std::u16string::npos &&
         inText.find(u'.') == inText.rfind(u'.');
}

// No attribute for XPath, and no data.
bool IsNamespaceDeclaration(const std::u16string& inName) {
  return inName == u"xmlns" || inName.compare(0, 6, u"xmlns:") == 0;
}

template <class Number>
bool Fits(double inNumber) {
  return inNumber >= std::numeric_limits<Number>::min() &&
         inNumber <= std::numeric_limits<Number>::max();
}

// `inRead(number)` is a call of GetData or GetAttr.
template <class Read>
Type TypeByTrying(const std::u16string& inText, double& outNumber, Read inRead) {
  if (inText.empty()) return Type::kEmpty;
  if (!LooksLikeNumber(inText)) return Type::kText;
  try {
    inRead(outNumber);
  } catch (const quen::CQuenXMLException2w&) {  // 1011, no number for the library
    return Type::kText;
  }
  if (inText.find(u'.') != std::u16string::npos) return Type::kDouble;
  if (Fits<std::int32_t>(outNumber)) return Type::kLong;
  return Fits<std::uint32_t>(outNumber) ? Type::kUnsignedLong : Type::kDouble;
}

}  // namespace

const char* NameOf(Type inType) {
  switch (inType) {
    case Type::kEmpty:
      return "empty";
    case Type::kLong:
      return "long";
    case Type::kUnsignedLong:
      return "unsigned long";
    case Type::kDouble:
      return "double";
    case Type::kText:
      return "text";
  }
  return "";
}

Survey::Survey(quen::CQuenXMLData2w& ioTree) : tree_(ioTree) {
  if (tree_.CursorToRoot() == 0) return;
  quen::CQuenXMLElement2w root(tree_.GetCursor());
  for (auto attribute = root.attr_begin(), end = root.attr_end(); attribute != end; ++attribute) {
    const std::u16string name = attribute->GetName();
    if (name.compare(0, 6, u"xmlns:") == 0) prefixes_[name.substr(6)] = attribute->GetValue();
  }

  std::vector<Entry*> way{&Visit(nullptr)};
  for (;;) {
    if (tree_.CursorToFirstChild() != 0) {
      way.push_back(&Visit(way.back()));
      continue;
    }
    while (way.size() > 1 && tree_.CursorToNextSibling() == 0) {
      tree_.CursorToParent();
      way.pop_back();
    }
    if (way.size() == 1) break;
    way.back() = &Visit(way.back()->parent);
  }
}

// Takes in the element at the cursor.
Entry& Survey::Visit(Entry* inParent) {
  quen::CQuenXMLElement2w element(tree_.GetCursor());
  Entry& entry = ChildOf(inParent, tree_.GetNodeAtCursor());
  if (entry.count++ == 0) {
    entry.namespaceUri = element.GetNamespaceURI();
    entry.xpath = (inParent != nullptr ? inParent->xpath : u"") + u"/" + StepTo(element);
  }
  ++elements_;

  if (element.HasAttributes()) {
    for (auto attribute = element.attr_begin(), end = element.attr_end(); attribute != end;
         ++attribute) {
      const std::u16string name = attribute->GetName();
      if (IsNamespaceDeclaration(name)) continue;
      Entry& attributeEntry = ChildOf(&entry, u"@" + name);
      if (attributeEntry.count++ == 0) attributeEntry.xpath = entry.xpath;
      ++attributes_;
      const std::u16string text = attribute->GetValue();
      double number = 0;
      const Type type = TypeByTrying(
          text, number, [&](double& outNumber) { tree_.GetAttr(name, outNumber, u""); });
      RecordValue(attributeEntry, text, type, number);
    }
  }
  if (element.empty()) {
    std::u16string text;
    tree_.GetData(text, u"");
    double number = 0;
    const Type type =
        TypeByTrying(text, number, [&](double& outNumber) { tree_.GetData(outNumber, u""); });
    RecordValue(entry, text, type, number);
  }
  return entry;
}

Entry& Survey::ChildOf(Entry* inParent, const std::u16string& inName) {
  Entry*& found = children_[inParent][inName];
  if (found == nullptr) {
    found = &entries_.emplace_back();
    found->name = inName;
    found->parent = inParent;
    found->path = (inParent != nullptr ? inParent->path : u"") + u"/" + inName;
  }
  return *found;
}

void Survey::RecordValue(Entry& ioEntry, const std::u16string& inText, Type inType,
                         double inNumber) {
  ++ioEntry.values;
  if (ioEntry.example.empty()) ioEntry.example = inText;
  if (inType != Type::kEmpty && inType != Type::kText) {
    const bool first = ioEntry.type == Type::kEmpty;
    ioEntry.smallest = first ? inNumber : std::min(ioEntry.smallest, inNumber);
    ioEntry.largest = first ? inNumber : std::max(ioEntry.largest, inNumber);
  }
  ioEntry.type = std::max(ioEntry.type, inType);
}

// A name without a prefix selects in XPath only what is in no namespace, and a prefix has to be
// declared by the root. Everything else goes by its local name.
std::u16string Survey::StepTo(const quen::CQuenXMLElement2w& inElement) const {
  const std::u16string name = inElement.GetName();
  const std::u16string uri = inElement.GetNamespaceURI();
  if (uri.empty()) return name;
  const std::size_t colon = name.find(u':');
  if (colon == std::u16string::npos) return u"*[local-name()='" + name + u"']";
  const auto prefix = prefixes_.find(name.substr(0, colon));
  if (prefix != prefixes_.end() && prefix->second == uri) return name;
  return u"*[local-name()='" + name.substr(colon + 1) + u"']";
}

}  // namespace explore

// SPDX-License-Identifier: Apache-2.0
//
// explore FILE [OUTPUT]: shows what the data tree of the library does, on any XML file.
//
// Opens the file, lists what it found by path with its types, reads and changes values, adds
// repeated elements, cuts a subset out, writes the result, and reads it back to see that it is the
// same. FILE is not changed. OUTPUT (explored.xml if it is not given) is overwritten.
#include <quenxml2/quenxml2.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "examples/explore/survey.h"
#include "examples/explore/text.h"

namespace explore {
namespace {

using quen::CQuenXMLData2w;
using quen::CQuenXMLException2w;
using quen::CQuenXMLNode2w;

void Section(const char* inTitle) { std::cout << "\n== " << inTitle << "\n"; }

class Timer {
 public:
  std::string Milliseconds() const {
    const std::chrono::duration<double, std::milli> passed =
        std::chrono::steady_clock::now() - start_;
    std::array<char, 32> text;
    std::snprintf(text.data(), text.size(), "%.1f ms", passed.count());
    return text.data();
  }

 private:
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

std::string NumberText(double inNumber) {
  std::ostringstream text;
  text.precision(12);
  text << inNumber;
  return text.str();
}

bool HasDocumentType(CQuenXMLData2w& ioTree) {
  CQuenXMLNode2w node = ioTree.GetCursor().GetParent().GetFirstChild();
  constexpr quen::QuenXMLDOMNode2w_NullPtr* kNull = nullptr;
  for (; node != kNull; node = node.GetNextSibling())
    if (node.GetNodeType() == CQuenXMLNode2w::DocumentTypeNode) return true;
  return false;
}

void Open(CQuenXMLData2w& outTree, const std::string& inFile) {
  Section("Open");
  const Timer timer;
  outTree.ReadFromFile(FromUtf8(inFile));
  std::cout << "Read " << inFile << " in " << timer.Milliseconds() << ".\n";
  if (!HasDocumentType(outTree)) return;
  // A document type declaration has no text form here, so a document that has one is not written
  // whole.
  CQuenXMLData2w root;
  outTree.GetSubset(root, u"/*");
  outTree = root;
  std::cout << "It has a document type declaration, which the library does not write: the root\n"
               "element was cut out into a tree of its own, and the rest works on that.\n";
}

void ListWhatWasFound(const Survey& inSurvey) {
  constexpr std::size_t kRows = 40;
  Section("What it holds, by path");
  std::cout
      << inSurvey.Elements() << " elements and " << inSurvey.Attributes() << " attributes on "
      << inSurvey.Entries().size() << " different paths.\n"
      << "Types were found by trying; values are those of elements without child elements.\n\n";
  std::size_t width = 4;
  for (std::size_t i = 0; i < inSurvey.Entries().size() && i < kRows; ++i)
    width = std::max(width, Columns(ToUtf8(inSurvey.Entries()[i].path)));
  std::cout << "   count  type           path"
            << std::string(std::min<std::size_t>(width, 60) - 2, ' ') << "values\n";
  std::size_t row = 0;
  for (const Entry& entry : inSurvey.Entries()) {
    if (++row > kRows) break;
    std::string count = std::to_string(entry.count);
    count.insert(0, 8 - std::min<std::size_t>(8, count.size()), ' ');
    std::string type = entry.values == 0 ? "-" : NameOf(entry.type);
    type.resize(13, ' ');
    std::string line = count + "  " + type + "  " + ToUtf8(entry.path);
    std::string values;
    if (entry.type == Type::kText) {
      values = Quoted(entry.example, 40);
    } else if (entry.type != Type::kEmpty) {
      values = NumberText(entry.smallest);
      if (entry.smallest < entry.largest) values += " to " + NumberText(entry.largest);
    }
    if (!values.empty()) {
      const std::size_t columns = 25 + std::min<std::size_t>(width, 60);
      line.append(columns - std::min(columns, Columns(line)) + 2, ' ');
      line += values;
    }
    std::cout << line << "\n";
  }
  if (inSurvey.Entries().size() > kRows)
    std::cout << "          ... and " << inSurvey.Entries().size() - kRows << " more paths\n";
}

// One value through the typed reads. An integer read rounds.
template <class Get>
void ReadAs(const Entry& inEntry, const std::u16string& inPath, Get inGet) {
  std::u16string text;
  inGet(text);
  std::cout << "  " << ToUtf8(inPath);
  if (inEntry.IsAttribute()) std::cout << ", attribute " << ToUtf8(inEntry.name.substr(1));
  std::cout << "\n    as text " << Quoted(text, 50);
  double number = 0;
  std::int32_t whole = 0;
  std::uint32_t unsignedWhole = 0;
  switch (inEntry.type) {
    case Type::kUnsignedLong:
      inGet(unsignedWhole);
      std::cout << ", as unsigned long " << unsignedWhole;
      break;
    case Type::kDouble:
      inGet(number);
      std::cout << ", as double " << NumberText(number);
      [[fallthrough]];
    case Type::kLong:
      inGet(whole);
      std::cout << ", as long " << whole;
      break;
    default:
      break;
  }
  std::cout << "\n";
}

// Whether each of them has a value, the first one too.
bool IsPlain(const Entry& inEntry) {
  return inEntry.values == inEntry.count && inEntry.type != Type::kEmpty;
}

// The first element that has the attribute.
std::u16string ElementWith(const Entry& inAttribute) {
  return inAttribute.xpath + u"[@" + inAttribute.name.substr(1) + u"]";
}

void ReadSome(const CQuenXMLData2w& inTree, const Survey& inSurvey) {
  Section("Read by path");
  std::cout << "A path is an XPath expression; the first node that it selects is read.\n"
               "Here is one for each type of element and attribute.\n";
  std::set<std::pair<Type, bool>> shown;
  for (const Entry& entry : inSurvey.Entries()) {
    if (!IsPlain(entry) || !shown.emplace(entry.type, entry.IsAttribute()).second) continue;
    const std::u16string path = entry.IsAttribute() ? ElementWith(entry) : entry.xpath;
    if (entry.IsAttribute()) {
      ReadAs(entry, path,
             [&](auto& outValue) { inTree.GetAttr(entry.name.substr(1), outValue, path); });
    } else {
      ReadAs(entry, path, [&](auto& outValue) { inTree.GetData(outValue, path); });
    }
  }
}

// What was written where, to be looked for after the file was read back.
struct Written {
  std::u16string path;
  std::u16string attribute;  // empty for the value of the element
  std::u16string text;
};

std::u16string ReadText(const CQuenXMLData2w& inTree, const Written& inPlace) {
  std::u16string text;
  if (inPlace.attribute.empty()) {
    inTree.GetData(text, inPlace.path);
  } else {
    inTree.GetAttr(inPlace.attribute, text, inPlace.path);
  }
  return text;
}

// Writes a value, or an attribute, and shows what was there before and after.
template <class Value>
void Write(CQuenXMLData2w& ioTree, Written inPlace, const Value& inValue,
           std::vector<Written>& ioWritten) {
  const std::u16string before = ReadText(ioTree, inPlace);
  if (inPlace.attribute.empty()) {
    ioTree.SetData(inValue, inPlace.path);
  } else {
    ioTree.SetAttr(inPlace.attribute, inValue, inPlace.path);
  }
  inPlace.text = ReadText(ioTree, inPlace);
  std::cout << "  " << ToUtf8(inPlace.path);
  if (!inPlace.attribute.empty()) std::cout << ", attribute " << ToUtf8(inPlace.attribute);
  std::cout << "\n    " << Quoted(before, 40) << " -> " << Quoted(inPlace.text, 40) << "\n";
  ioWritten.push_back(std::move(inPlace));
}

// The first number, the first text and the first attribute of the file, and a new attribute.
void Change(CQuenXMLData2w& ioTree, const Survey& inSurvey, std::vector<Written>& ioWritten) {
  Section("Change by path");
  bool number = false;
  bool text = false;
  bool attribute = false;
  for (const Entry& entry : inSurvey.Entries()) {
    if (!IsPlain(entry)) continue;
    if (entry.IsAttribute()) {
      if (attribute) continue;
      attribute = true;
      Write(ioTree, {ElementWith(entry), entry.name.substr(1), u""}, entry.example + u" (changed)",
            ioWritten);
    } else if (entry.type == Type::kText && !text) {
      text = true;
      Write(ioTree, {entry.xpath, u"", u""}, std::u16string(u"Changed: <5 & \"6\""), ioWritten);
    } else if (entry.type == Type::kLong && !number) {
      number = true;
      std::int32_t value = 0;
      ioTree.GetData(value, entry.xpath);
      Write(ioTree, {entry.xpath, u"", u""}, value < 1000 ? value + 1 : value - 1, ioWritten);
    } else if (entry.type == Type::kDouble && !number) {
      number = true;
      double value = 0;
      ioTree.GetData(value, entry.xpath);
      Write(ioTree, {entry.xpath, u"", u""}, value / 2, ioWritten);
    }
  }
  Write(ioTree, {inSurvey.Entries().front().xpath, u"explored", u""}, std::int32_t{1}, ioWritten);
}

// The element path that occurs most often; the root where there is no other.
const Entry& MostRepeated(const Survey& inSurvey) {
  const Entry* most = &inSurvey.Entries().front();
  for (const Entry& entry : inSurvey.Entries())
    if (!entry.IsAttribute() && entry.count > most->count) most = &entry;
  return *most;
}

std::uint32_t CountChildElements(CQuenXMLData2w& ioTree, const std::u16string& inPath) {
  std::uint32_t count = 0;
  ioTree.CursorTo(inPath);
  ioTree.GetNumChildren(count, u"");
  ioTree.CursorToRoot();
  return count;
}

void AddRepeated(CQuenXMLData2w& ioTree, const Survey& inSurvey, std::vector<Written>& ioWritten) {
  Section("Add repeated elements");
  const Entry& entry = MostRepeated(inSurvey);
  const std::u16string& parent = (entry.parent != nullptr ? *entry.parent : entry).xpath;
  const std::u16string added = parent + entry.xpath.substr(entry.xpath.rfind(u'/')) + u"[last()]";
  const std::uint32_t before = CountChildElements(ioTree, parent);
  for (std::int32_t i = 1; i <= 3; ++i) {
    if (entry.namespaceUri.empty()) {
      ioTree.AddData(i, parent + u"/" + entry.name);  // adds another one each time
    } else {
      ioTree.AddChildNodeNS(entry.name, entry.namespaceUri, parent);
      ioTree.SetData(i, added);
    }
  }
  Written last{added, u"", u""};
  last.text = ReadText(ioTree, last);
  std::cout << "  Three more <" << ToUtf8(entry.name) << "> in " << ToUtf8(parent) << ": " << before
            << " child elements before, " << CountChildElements(ioTree, parent) << " now.\n"
            << "  " << ToUtf8(added) << " reads " << Quoted(last.text, 40) << ".\n";
  ioWritten.push_back(std::move(last));
}

void PrintLines(const std::u16string& inText, std::size_t inMaximum) {
  std::istringstream lines(ToUtf8(inText));
  std::string line;
  std::size_t count = 0;
  while (std::getline(lines, line)) {
    if (count == 0 && line.empty()) continue;  // formatted text begins with a line feed
    if (++count > inMaximum) {
      std::cout << "    ...\n";
      return;
    }
    std::cout << "    " << line.substr(0, 160) << "\n";
  }
}

void CutSubset(const CQuenXMLData2w& inTree, const Survey& inSurvey) {
  Section("Cut a subset out");
  const std::u16string& path = MostRepeated(inSurvey).xpath;
  std::u16string text;
  inTree.GetSubset(text, path);
  std::cout << "  " << ToUtf8(path) << ", " << text.size() << " units of text:\n";
  if (text.find(u'\n') == std::u16string::npos) inTree.GetFormattedSubset(text, path);
  PrintLines(text, 12);
  try {
    CQuenXMLData2w subset;
    inTree.GetSubset(subset, path);
    std::cout << "  As a tree of its own its root is <" << ToUtf8(subset.GetNodeAtCursor())
              << ">.\n";
  } catch (const CQuenXMLException2w& failure) {
    // A piece of text whose prefixes are declared further up does not stand alone.
    std::cout << "  It is no document of its own: " << failure.what() << "\n";
  }
}

// Whether what was written and read back is what was written.
bool WriteAndReadBack(CQuenXMLData2w& ioTree, const std::string& inOutput,
                      const std::vector<Written>& inWritten) {
  Section("Write, read back, compare");
  const Timer writing;
  ioTree.WriteToFile(FromUtf8(inOutput), 1);
  std::cout << "  Wrote " << inOutput << " in " << writing.Milliseconds() << ".\n";
  CQuenXMLData2w again;
  const Timer reading;
  again.ReadFromFile(FromUtf8(inOutput));
  std::cout << "  Read it back in " << reading.Milliseconds() << ".\n";

  std::u16string before;
  std::u16string after;
  ioTree.GetSubset(before, u"/");
  again.GetSubset(after, u"/");
  bool same = before == after;
  if (same) {
    std::cout << "  The same: " << before.size() << " units of text, unit by unit.\n";
  } else {
    const std::size_t at = static_cast<std::size_t>(
        std::mismatch(
            before.begin(),
            before.begin() + static_cast<std::ptrdiff_t>(std::min(before.size(), after.size())),
            after.begin())
            .first -
        before.begin());
    const std::size_t from = at < 20 ? 0 : at - 20;
    std::cout << "  NOT the same from unit " << at << " on:\n    written   "
              << Quoted(std::u16string_view(before).substr(from), 60) << "\n    read back "
              << Quoted(std::u16string_view(after).substr(from), 60) << "\n";
  }
  for (const Written& place : inWritten) {
    if (ReadText(again, place) == place.text) continue;
    same = false;
    std::cout << "  NOT what was written: " << ToUtf8(place.path) << "\n";
  }
  if (same) std::cout << "  All " << inWritten.size() << " values written above read back.\n";
  return same;
}

int Run(const std::string& inFile, const std::string& inOutput) {
  CQuenXMLData2w tree;
  Open(tree, inFile);
  const Survey survey(tree);
  ListWhatWasFound(survey);
  ReadSome(tree, survey);
  std::vector<Written> written;
  Change(tree, survey, written);
  AddRepeated(tree, survey, written);
  CutSubset(tree, survey);
  const bool same = WriteAndReadBack(tree, inOutput, written);
  std::cout << (same ? "\nexplore: done, all the same.\n" : "\nexplore: FAILED.\n");
  return same ? 0 : 1;
}

// A refusal that is by design needs more than the parser's words.
void Explain(const CQuenXMLException2w& inFailure, const std::string& inFile) {
  std::cout << std::flush;
  std::cerr << "explore: " << inFailure.what() << "\n  (code " << inFailure.GetErrorCode() << ", "
            << ToUtf8(inFailure.GetErrorContext()) << ")\n";
  const std::u16string message = inFailure.GetErrorMessage();
  if (message.find(u"external") == std::u16string::npos) return;
  std::cerr << inFile
            << " refers to another file, by the name in its DOCTYPE or in an entity.\n"
               "This library opens nothing that a document names, since documents come from "
               "strangers.\nTo read this one, take that reference out of it first, for example by\n"
               "  grep -v '<!DOCTYPE' FILE > COPY\n";
}

}  // namespace
}  // namespace explore

int main(int inCount, char** inArguments) {
  if (inCount < 2 || inCount > 3) {
    std::cerr << "usage: explore FILE [OUTPUT]\n";
    return 2;
  }
  try {
    return explore::Run(inArguments[1], inCount > 2 ? inArguments[2] : "explored.xml");
  } catch (const quen::CQuenXMLException2w& failure) {
    explore::Explain(failure, inArguments[1]);
    return 1;
  }
}

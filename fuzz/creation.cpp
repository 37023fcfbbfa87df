// SPDX-License-Identifier: Apache-2.0
// Creation paths: any units, against a plain reading of the path and, where they are UTF-8, in both
// widths. The first byte picks the tree.
#include <stdexcept>
#include <utility>
#include <vector>

#include "fuzz/support.h"

namespace quen::fuzz {
namespace {

constexpr const QuenXMLDOMNode2w_NullPtr* kNull = nullptr;
constexpr const char* kTrees[] = {"", "<a/>", "<a><b x='1'/><b x='2' y='3'><c/></b><!--d--></a>",
                                  "<a><b/><b><c/></b></a>"};

struct Segment {
  wstring name;
  std::vector<std::pair<wstring, wstring>> attributes;
};

std::vector<wstring> Split(const wstring& inText, char16_t inAt) {
  std::vector<wstring> parts(1);
  for (const char16_t unit : inText)
    if (unit == inAt)
      parts.emplace_back();
    else
      parts.back() += unit;
  return parts;
}

// Throws out_of_range where the path's language has nothing to take off.
Segment Read(const wstring& inText) {
  Segment segment{inText.substr(0, inText.find(u'[')), {}};
  wstring rest = inText.substr(segment.name.size());
  while (!rest.empty()) {
    const std::size_t close = rest.find(u']');
    if (close == wstring::npos) break;
    const wstring predicate = rest.substr(1, close - 1);
    const std::size_t equals = predicate.find(u'=');
    if (equals != wstring::npos) {
      wstring value = predicate.substr(equals + 1);
      if (value.empty()) throw std::out_of_range("no value");
      value.erase(0, 1);
      if (!value.empty()) value.pop_back();
      segment.attributes.emplace_back(predicate.substr(0, equals), value);
    }
    const std::size_t open = rest.find(u'[', close);
    rest = open == wstring::npos ? wstring() : rest.substr(open);
  }
  return segment;
}

// What docs and header say of CreateNodes, through handles. Gives the failure's first digits.
std::string Create(CQuenXMLData2w& ioTree, const wstring& inPath) {
  if (inPath.empty()) return {};
  const bool absolute = inPath[0] == u'/';
  std::vector<Segment> segments;
  for (const wstring& part : Split(inPath.substr(absolute ? 1 : 0), u'/'))
    segments.push_back(Read(part));
  if (!absolute && ioTree.HasRoot() == 0) return "1013";
  return FailureOf<CQuenXMLException2w>([&] {
           std::size_t at = 0;
           if (absolute) {
             if (ioTree.HasRoot() == 0)
               ioTree.AddRootNode(segments[0].name);
             else if (ioTree.GetNodeAtCursor() != segments[0].name)
               throw CQuenXMLException2w(u"", 1013, u"", u"");
             at = 1;
           }
           CQuenXMLElement2w parent(ioTree.GetCursor());
           CQuenXMLDocument2w& document = ioTree.GetCQuenXMLData2wImpl()->GetDocument();
           for (; at < segments.size(); ++at) {
             const Segment& segment = segments[at];
             CQuenXMLElement2w* found = nullptr;
             const auto end = parent.end();
             auto child = parent.begin();
             for (; child != end && found == nullptr; ++child) {
               bool matches = child->GetName() == segment.name;
               for (const auto& [name, value] : segment.attributes) {
                 const auto attribute = child->attr_find(name);
                 matches = matches && attribute != child->attr_end() &&
                           child->GetAttribute(name) == value;
               }
               if (!matches) continue;
               found = &*child;
               break;
             }
             if (found != nullptr) {
               parent = CQuenXMLElement2w(*found);
               continue;
             }
             CQuenXMLElement2w made = document.CreateElement(segment.name);
             parent = CQuenXMLElement2w(parent.AppendChild(made));
             for (const auto& [name, value] : segment.attributes) parent.SetAttribute(name, value);
           }
         })
      .substr(0, 4);
}

// The failure, "out of range", or "".
template <class W>
std::string CreateWith(typename W::Data& ioTree, const typename W::String& inPath) {
  try {
    return FailureOf<typename W::Exception>([&] { ioTree.CreateNodes(inPath); });
  } catch (const std::out_of_range&) {
    return "out of range";
  }
}

wstring TreeOf(CQuenXMLData2w& ioTree) {
  return Dump::Of(ioTree.GetCQuenXMLData2wImpl()->GetDocument());
}

void Run(const char* inTree, std::string_view inBytes) {
  const wstring path = UnitsOf(inBytes);
  CQuenXMLData2w tree(WideTypes::Text(inTree));
  CQuenXMLData2w model(tree);
  const std::string failure = CreateWith<WideTypes>(tree, path);
  std::string expected;
  try {
    expected = Create(model, path);
  } catch (const std::out_of_range&) {
    expected = "out of range";
  }
  if (path.find(u'\0') == wstring::npos) {
    RequireSame(failure.substr(0, 4), expected.substr(0, 4), "another outcome than by the model");
    RequireSame(Shown(TreeOf(tree)), Shown(TreeOf(model)), "another tree than by the model");
  }
  if (CQuenXMLNode2w(tree.GetCQuenXMLData2wImpl()->GetDocument()).HasChildNodes()) {
    Require(tree.HasRoot() == 1 && tree.GetCursor() != kNull, "a root without a cursor");
    tree.CreateNodes(u"/" + tree.GetNodeAtCursor() + u"/z[q='1']");
    Require(tree.PathExists(u"/*/z[@q='1']") == 1, "the tree is not usable");
  }
  if (!IsUtf8(inBytes)) return;
  CQuenXMLData2w wideTree(WideTypes::Text(inTree));
  CQuenXMLData2 narrowTree{string(inTree)};
  // A narrow text ends at its first zero byte.
  const std::string text(inBytes.substr(0, inBytes.find('\0')));
  RequireSame(CreateWith<WideTypes>(wideTree, WideTypes::Text(text)),
              CreateWith<NarrowTypes>(narrowTree, text), "the widths differ");
  wstring wideText;
  string narrowText;
  wideTree.GetSubset(wideText, u"/");
  narrowTree.GetSubset(narrowText, "/");
  RequireSame(Shown(wideText), narrowText, "the widths make different trees");
}

}  // namespace
}  // namespace quen::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* inBytes, std::size_t inSize) {
  if (inSize == 0) return 0;
  quen::fuzz::Run(quen::fuzz::kTrees[inBytes[0] % std::size(quen::fuzz::kTrees)],
                  {reinterpret_cast<const char*>(inBytes) + 1, inSize - 1});
  return 0;
}

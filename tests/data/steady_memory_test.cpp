// SPDX-License-Identifier: Apache-2.0
// Reading, and writing over what is there, takes no memory that only goes with the document.
#include <functional>

#include <gtest/gtest.h>
#include <quenxml2/quenxml2.h>
#include <xercesc/dom/impl/DOMDocumentImpl.hpp>

#include "dom/node_impl.h"

namespace quen::tests {
namespace {

// Where the document's arena stands. Two pieces of it that are taken one after the other lie side
// by side.
std::uintptr_t TakePiece(CQuenXMLData2w& ioTree) {
  xercesc::DOMDocument* const document =
      internal::DocumentOf(ioTree.GetCursor().GetImpl()->GetDOMNode());
  return reinterpret_cast<std::uintptr_t>(
      static_cast<xercesc::DOMDocumentImpl*>(document)->allocate(16));
}

// Values of 1 to 40 units.
wstring Value(int inNumber) { return wstring(static_cast<std::size_t>(1 + inNumber % 40), u'x'); }

struct Operation {
  const char* about;
  bool isSteady;
  std::function<void(CQuenXMLData2w&, CQuenXMLElement2w&, int)> run;
};

const Operation kOperations[] = {
    {"reading a number", true,
     [](auto& tree, auto&, int) {
       std::int32_t value = 0;
       tree.GetData(value, u"/a/b[2]/c");
     }},
    {"reading an attribute", true,
     [](auto& tree, auto&, int) {
       wstring value;
       tree.GetAttr(u"id", value, u"//b[@id='2']");
     }},
    {"reading what is not there", true,
     [](auto& tree, auto&, int i) { tree.PathExists(u"//n" + Value(i)); }},
    {"selecting", true, [](auto&, auto& element, int) { element.SelectNodes(u"//b|//c"); }},
    {"writing a number", true,
     [](auto& tree, auto&, int i) { tree.SetData(std::int32_t{i}, u"/a/b[2]/c"); }},
    {"writing a text", true, [](auto& tree, auto&, int i) { tree.SetData(Value(i), u"/a/b/c"); }},
    {"writing an attribute", true,
     [](auto& tree, auto&, int i) { tree.SetAttr(u"id", Value(i), u"/a/b[2]"); }},
    {"writing an attribute of an element", true,
     [](auto&, auto& element, int i) { element.SetAttribute(u"k", Value(i)); }},
    {"adding, for comparison", false, [](auto& tree, auto&, int) { tree.AddData(u"x", u"/a/d"); }},
};

TEST(SteadyMemory, TheDocumentGrowsByWhatIsAddedAlone) {
  for (const Operation& operation : kOperations) {
    SCOPED_TRACE(operation.about);
    CQuenXMLData2w tree(u"<a k='1'><b id='1'><c>1</c></b><b id='2'><c>2</c></b></a>");
    CQuenXMLElement2w element(tree.GetCursor());
    for (int i = 0; i < 100; ++i) operation.run(tree, element, i);
    const std::uintptr_t before = TakePiece(tree);
    for (int i = 0; i < 2000; ++i) operation.run(tree, element, i);
    EXPECT_EQ(TakePiece(tree) == before + 16, operation.isSteady);
  }
}

}  // namespace
}  // namespace quen::tests

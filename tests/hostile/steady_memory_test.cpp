// SPDX-License-Identifier: Apache-2.0
//
// A tree that is written to for months stays as large as it is, and refused texts leave nothing.
#include <gtest/gtest.h>

#include <functional>
#include <sstream>

#include <quenxml2/data.h>
#include <quenxml2/dom.h>

#include "tests/support/allocations.h"
#include "tests/support/temp_dir.h"
#include "tests/xsl/xsl_support.h"

namespace quen::test {
namespace {

TEST(SteadyMemory, WritesOverWhatIsThereTakeNoMore) {
  CQuenXMLData2w tree(u"<a><b id='1'>1</b><b id='2'><c>text</c></b></a>");
  tree.CursorTo(u"/a/b");
  CQuenXMLElement2w element(tree.GetCursor());
  CQuenXMLNode2w attribute = element.SelectSingleNode(u"@id");
  // Of 1 to 40 units.
  const auto text = [](int round) { return wstring(1 + static_cast<unsigned>(round) % 40, u'x'); };
  struct Write {
    const char* name;
    std::function<void(int)> write;
  };
  const Write writes[] = {
      {"SetData, number", [&](int round) { tree.SetData(std::int32_t{round}, u"/a/b"); }},
      {"SetData, text", [&](int round) { tree.SetData(text(round), u"/a/b/c"); }},
      {"SetAttr", [&](int round) { tree.SetAttr(u"id", text(round), u"/a/b[2]"); }},
      {"SetAttribute", [&](int round) { element.SetAttribute(u"id", text(round)); }},
      {"SetValue of an element", [&](int round) { element.SetValue(text(round)); }},
      {"SetValue of an attribute", [&](int round) { attribute.SetValue(text(round)); }},
  };
  for (const Write& each : writes) {
    constexpr int kWrites = 20000;  // a block of the engine holds a few hundred texts
    int round = 0;
    while (round < 1000) each.write(round++);
    const std::size_t before = AllocatedBytes();
    while (round < kWrites) each.write(round++);
    EXPECT_EQ(AllocatedBytes(), before) << each.name;
  }
}

// The engine loses what it had of each of these declarations; the external ones are for style
// sheets.
TEST(SteadyMemory, RefusedDeclarationsTakeNoMore) {
  const TempDir dir;
  const std::string file = dir.File("empty.dtd", "");
  const std::string texts[] = {
      "<!DOCTYPE a [<!ELEMENT a ((|b)*>]><a/>",
      "<!DOCTYPE a [<!ENTITY % p '<!ELEMENT a ((|b)*>'>%p;]><a/>",
      "<!DOCTYPE a [<!ELEMENT a " + std::string(1000, '(') + "|b)>]><a/>",
      "<!DOCTYPE a [<!ELEMENT a (b,(c|(d,|e)))>]><a/>",
      "<!DOCTYPE a [<!ATTLIST a b (c|d|>]><a/>",
      "<!DOCTYPE a [<!ENTITY e '<!ELEMENT>]><a/>",
      "<!DOCTYPE a [<!ENTITY e SYSTEM 'x' NDATA>]><a/>",
      "<!DOCTYPE a SYSTEM '" + file + "'><a/>",
      "<!DOCTYPE a SYSTEM '" + file + "x'><a/>",
  };
  for (const std::string& text : texts) {
    const auto run = [&](int times) {
      for (; times > 0; --times) {
        CQuenXMLDocument2 document;
        EXPECT_NE(FailureOf<NarrowWidth>([&] { document.LoadXML(text); }), "");
        for (const bool isSource : {true, false}) {
          std::istringstream source(isSource ? text : "<a/>"),
              sheet(isSource ? RootSheet("") : text);
          std::ostringstream out;
          EXPECT_NE(FailureOf<NarrowWidth>([&] { CQuenXSL2().Transform(source, sheet, out); }), "");
        }
      }
      return AllocatedBytes();
    };
    const std::size_t before = run(3);
    EXPECT_EQ(run(10), before) << text.substr(0, 60);
  }
}

}  // namespace
}  // namespace quen::test

// SPDX-License-Identifier: Apache-2.0
//
// steady_memory [TIMES]: the resident memory of the process after a thousand operations of each
// kind and after TIMES more, a million by default. Prints "name before after" in kilobytes.
#include <quenxml2/quenxml2.h>

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <string>

#include "bench/resident.h"

namespace {

// Values of changing lengths, 1 to 40 units.
std::u16string Value(int inNumber) {
  return std::u16string(1 + static_cast<std::size_t>(inNumber % 40), u'x');
}

void Measure(const char* inName, int inTimes, const std::function<void(int)>& inOperation) {
  for (int i = 0; i < 1000; ++i) inOperation(i);
  const long before = ResidentKibibytes();
  for (int i = 0; i < inTimes; ++i) inOperation(i);
  std::cout << inName << " " << before << " " << ResidentKibibytes() << std::endl;
}

}  // namespace

int main(int inCount, char** inArguments) {
  const int times = inCount > 1 ? std::atoi(inArguments[1]) : 1000000;
  quen::CQuenXMLData2w tree(
      u"<a><b id='1'><c>1</c><d/></b><b id='2'><c>2</c><d>text</d></b><e/></a>");
  const std::u16string number = u"/a/b[2]/c";
  const std::u16string text = u"/a/b[@id='2']/d";
  std::u16string value;
  std::int32_t integer = 0;
  tree.CursorTo(u"/a/b");
  quen::CQuenXMLElement2w element(tree.GetCursor());

  Measure("GetData", times, [&](int) { tree.GetData(integer, number); });
  Measure("GetAttr", times, [&](int) { tree.GetAttr(u"id", value, u"/a/b[2]"); });
  Measure("SelectNodes", times, [&](int) {
    if (element.SelectNodes(u"//d").size() != 2) std::exit(1);
  });
  Measure("SetDataNumber", times, [&](int i) { tree.SetData(std::int32_t{i}, number); });
  Measure("SetDataText", times, [&](int i) { tree.SetData(Value(i), text); });
  Measure("SetAttr", times, [&](int i) { tree.SetAttr(u"k", Value(i), u"/a/e"); });
  Measure("SetAttribute", times, [&](int i) { element.SetAttribute(u"id", Value(i)); });
}

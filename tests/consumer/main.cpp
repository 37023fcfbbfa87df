// SPDX-License-Identifier: Apache-2.0
//
// A program of somebody else's. Uses what crosses the border of a shared library: a value, a
// virtual call, an exception caught by its type. The argument is the version that both must have.
#include <quenxml2/quenxml2.h>

#include <cstring>

int main(int argc, char** argv) {
  if (argc != 2 || std::strcmp(argv[1], quen::kQuenXML2Version) != 0 ||
      std::strcmp(argv[1], quen::QuenXML2Version()) != 0) {
    return 2;
  }
  quen::CQuenXMLData2w tree(u"<order><item qty='3'>bolt</item></order>");
  std::int32_t quantity = 0;
  tree.GetAttr(u"qty", quantity, u"/order/item");
  try {
    tree.SetData(u"nut", u"/order/nothing");
  } catch (const quen::CQuenXMLException2w& failure) {
    return quantity == 3 && failure.GetErrorCode() == 1013 ? 0 : 1;
  }
  return 1;
}

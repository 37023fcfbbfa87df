// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/quenxml2.h>

#include <iostream>

int main() {
  try {
    quen::CQuenXMLData2w order(u"<order><item qty='3'>bolt</item></order>");
    order.SetData(u"nut", u"/order/item");       // the item must exist
    order.CreateNodes(u"/order/item[qty='4']");  // makes what the path lacks
    order.AddData(u"gate 4", u"/order/note");    // adds another element each time
    std::int32_t quantity = 0;
    order.GetAttr(u"qty", quantity, u"/order/item[2]");
    order.SetAttr(u"pieces", quantity + 3, u"/order");

    std::string text;
    order.GetUTF8Subset(text);
    std::cout << text << "\n";
  } catch (const quen::CQuenXMLException2w& failure) {
    std::cerr << failure.what() << " (code " << failure.GetErrorCode() << ")\n";
    return 1;
  }
}

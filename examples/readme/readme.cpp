// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/quenxml2.h>

#include <iostream>

int main() {
  try {
    quen::CQuenXMLData2 order("<order><item qty='3'>bolt</item></order>");
    order.SetData("nut", "/order/item");        // the item must exist
    order.CreateNodes("/order/item[qty='4']");  // makes what the path lacks
    order.AddData("gate 4", "/order/note");     // adds another element each time
    std::int32_t quantity = 0;
    order.GetAttr("qty", quantity, "/order/item[2]");
    order.SetAttr("pieces", quantity + 3, "/order");

    std::string text;
    order.GetSubset(text, "/");
    std::cout << text << "\n";
  } catch (const quen::CQuenXMLException2& failure) {
    std::cerr << failure.what() << " (code " << failure.GetErrorCode() << ")\n";
    return 1;
  }
}

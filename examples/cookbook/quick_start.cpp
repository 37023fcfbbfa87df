// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/quenxml2.h>

#include <iostream>
#include <string>

int main() {
  try {
    // Read: from text here, from a file with ReadFromFile.
    quen::CQuenXMLData2 order("<order id='7'><item qty='3'>bolt</item></order>");
    std::cout << quen::Get<std::string>(order, "/order/item") << '\n';
    std::cout << quen::Get<int>(order, "/order/item/@qty") * 2 << '\n';
    std::cout << quen::GetOr(order, "/order/discount", 0.5) << '\n';

    // Change: SetData and SetAttr write what is there, AddData adds an element each time.
    order.SetData("screw", "/order/item");
    order.SetAttr("qty", 4, "/order/item");
    order.AddData("nut", "/order/item");

    // Make what is missing on the way to a place.
    order.CreateNodes("/order/customer[country='HR']/name");
    order.SetData("Ana", "/order/customer/name");

    // Write: to text here, to a file with WriteToFile.
    std::string text;
    order.GetSubset(text, "/");
    std::cout << text << '\n';
  } catch (const quen::CQuenXMLException2& failure) {
    std::cerr << failure << '\n';
    return 1;
  }
}

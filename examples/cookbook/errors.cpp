// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/quenxml2.h>

#include <functional>
#include <iostream>
#include <string>

void Try(const std::function<void()>& mistake) {
  try {
    mistake();
  } catch (const quen::CQuenXMLException2& failure) {
    switch (failure.GetErrorCode()) {  // programs compare codes, people read messages
      case 1013:
        std::cout << "There is no such place in the document.\n";
        break;
      case 1009:
        std::cout << "That is no document.\n";
        break;
      default:
        break;
    }
    std::cout << failure << "\n\n";
  }
}

int main() {
  quen::CQuenXMLData2 order("<order><item qty='3'>bolt</item></order>");

  // 1. A path that finds nothing. Get names the path; GetData and its kin do not.
  Try([&] { quen::Get<std::string>(order, "/order/itme"); });
  Try([&] { order.SetData("nut", "/order/itme"); });

  // 2. A name that is not XML. Ask CQuenXMLUtils2::IsValidElementName where names come from
  // outside.
  Try([&] { order.AddChildNode("2nd item", "/order"); });

  // 3. A file that is not there.
  Try([&] { order.ReadFromFile("/nonexistent/order.xml"); });
}

// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/quenxml2.h>

#include <exception>
#include <iostream>
#include <string>

void Create(const std::string& xml, const std::string& path) {
  std::cout << (xml.empty() ? "(empty)" : xml) << "  " << path << "\n  ";
  quen::CQuenXMLData2 tree(xml);
  try {
    tree.CreateNodes(path);
  } catch (const quen::CQuenXMLException2& failure) {
    std::cout << failure.GetErrorCode() << " " << failure.GetErrorMessage() << "\n  ";
  } catch (const std::exception&) {  // std::out_of_range
    std::cout << "a predicate without a value\n  ";
  }
  std::string text;
  tree.GetSubset(text, "/");
  std::cout << text << '\n';
}

int main() {
  const std::string order = "<order><item qty=\"3\"/></order>";
  Create("", "/order/item[qty='3'][unit='kg']/note");  // makes the root too
  Create(order, "/order/item");                        // is there: nothing happens
  Create(order, "/order/item[qty='4']");               // none has that value: another one
  Create(order, "/order/item[qty='3']/note");          // goes on in the first that has it
  Create(order, "item/note");                          // from the cursor, here the root
  Create(order, "/order/item[2]");                     // no '=', no effect: not a position
  Create(order, "/bill/item");                         // the first name has to be the root's
  Create(order, "/order/item[qty=]");
  Create(order, "/order/2nd/note");  // no XML name
}

// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/quenxml2.h>

#include <cstdint>
#include <iostream>
#include <string>
#include <vector>

struct Item {
  std::string name;
  std::int64_t quantity = 0;
};

// One pass with the cursor: a path with a position, /order/item[17], would count from the start
// each time.
std::vector<Item> Read(quen::CQuenXMLData2& order) {
  std::vector<Item> items;
  order.CursorToRoot();
  for (std::int32_t found = order.CursorToFirstChild(); found == 1;
       found = order.CursorToNextSibling()) {
    if (order.GetNodeAtCursor() != "item") continue;
    items.push_back({quen::Get<std::string>(order, ""), quen::Get<std::int64_t>(order, "@qty")});
  }
  order.CursorToRoot();
  return items;
}

// AddChildNode puts the new element last; [last()] is that one.
void Add(quen::CQuenXMLData2& order, const Item& item) {
  order.AddChildNode("item", "/order");
  order.SetData(item.name, "/order/item[last()]");
  order.SetAttr("qty", std::to_string(item.quantity), "/order/item[last()]");
}

int main() {
  try {
    quen::CQuenXMLData2 order("<order><note>soon</note><item qty='3'>bolt</item></order>");
    Add(order, {"nut", 5000000000});
    for (const Item& item : Read(order)) std::cout << item.quantity << " x " << item.name << '\n';
    std::cout << "more than 10: " << quen::Get<std::string>(order, "/order/item[@qty > 10]")
              << '\n';
  } catch (const quen::CQuenXMLException2& failure) {
    std::cerr << failure << '\n';
    return 1;
  }
}

// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/quenxml2.h>

#include <iostream>
#include <string>

int main() {
  try {
    // A wide tree has texts of 16-bit units. Everything else is as in the narrow tree.
    const quen::CQuenXMLData2w wide(u"<order><city>K\u00f6ln \U0001f600</city></order>");
    const std::u16string city = quen::Get<std::u16string>(wide, u"/order/city");

    // Exactly, or a failure: for what is stored or sent.
    const std::string bytes = quen::ToUtf8(city);
    std::cout << city.size() << " units, " << bytes.size() << " bytes, "
              << (quen::ToUtf16(bytes) == city ? "the same" : "different") << '\n';

    // Never a failure: for what is printed.
    std::cout << quen::AsUtf8(city) << '\n';

    // From one tree to the other: the text of one is the source of the other.
    std::string xml;
    wide.GetUTF8Subset(xml);
    const quen::CQuenXMLData2 narrow(xml);
    std::cout << quen::Get<std::string>(narrow, "/order/city") << '\n';

    quen::Get<int>(wide, u"/order/city");
  } catch (const quen::CQuenXMLException2w& failure) {  // of wide classes
    std::cout << failure << '\n';
  } catch (const quen::CQuenXMLException2& failure) {  // of narrow ones
    std::cout << failure << '\n';
  }
}

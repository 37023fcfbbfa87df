// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/quenxml2.h>

#include <iostream>
#include <string>

// Only the schema that is named here is read, never one that the document names.
void Check(const std::string& text) {
  try {
    quen::CQuenXMLDocument2 order;
    order.SetExternalNoNamespaceSchemaLocation(
        "order.xsd");  // with a namespace: SetExternalSchemaLocation
    order.SetDoValidationOnParse(1);
    order.LoadXML(text);
    quen::CQuenXMLData2 tree;  // valid, and from here on a tree like any other
    tree.SetDocument(order);
    std::cout << "valid: " << quen::Get<unsigned>(tree, "/order/item/@qty") << '\n';
  } catch (const quen::CQuenXMLException2& failure) {
    std::cout << failure.GetErrorCode() << " " << failure.GetErrorMessage() << '\n';
  }
}

int main() {
  Check("<order><item qty='3'>bolt</item></order>");
  Check("<order><item qty='none'>bolt</item></order>");
  Check("<order><article/></order>");
}

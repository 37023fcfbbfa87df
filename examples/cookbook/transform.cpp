// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/quenxml2.h>

#include <cstdint>
#include <fstream>
#include <iostream>
#include <sstream>

int main() {
  try {
    quen::CQuenXSL2 xsl;
    std::ifstream file("list.xsl");
    std::uintptr_t toList = 0;
    xsl.RegisterCompiledStyleSheet(file,
                                   toList);  // once; then as many transforms as there are sources

    // The value is an expression: a text has quotes of its own. Never put a stranger's text there.
    xsl.SetStyleSheetParam("title", "'To pack'");
    std::istringstream order("<order><item qty='3'>bolt</item><item qty='4'>nut</item></order>");
    xsl.Transform(order, std::cout, toList);
  } catch (const quen::CQuenXMLException2& failure) {
    std::cerr << failure << '\n';
    return 1;
  }
}

// SPDX-License-Identifier: Apache-2.0
//
// Does the ten jobs with the library that it is linked with, and prints what they gave. The
// argument is a file that may be written.
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "examples/migrating/jobs.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: " << argv[0] << " FILE\n";
    return 2;
  }
  const std::string text =
      "<order id=\"7\"><item qty=\"3\">bolt</item><item qty=\"12\">nut</item>"
      "<note>Gr\u00fc\u00dfe</note></order>";
  std::cout << IsRefused("<order>") << IsRefused(text) << "\n"
            << ReadValue(text) << "\n"
            << ReadNumberOr(text, 5) << "\n"
            << ReadAttribute(text) << "\n"
            << WalkChildren(text) << "\n"
            << SelectByCondition(text) << "\n"
            << Change(text) << "\n"
            << Add(text) << "\n"
            << Remove(text) << "\n";
  Write(text, argv[1]);
  std::ifstream file(argv[1]);
  const std::string written{std::istreambuf_iterator<char>(file), {}};
  // The declaration and the last line feed are every library's own.
  const std::size_t begin = written.find("<order");
  std::cout << written.substr(begin, written.rfind('>') + 1 - begin) << "\n";
}

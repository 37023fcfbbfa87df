// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/quenxml2.h>

#include <cstdint>
#include <iostream>
#include <string>

struct Settings {
  std::string host;
  std::uint16_t port = 0;
  double timeout = 0;
  bool cache = false;
};

// What has no default must be there. What is there must be what it should be: port 99999 is a
// failure.
Settings Read(const std::string& file) {
  quen::CQuenXMLData2 tree;
  tree.ReadFromFile(file);
  Settings settings;
  settings.host = quen::Get<std::string>(tree, "/settings/server/host");
  settings.port = quen::GetOr<std::uint16_t>(tree, "/settings/server/@port", 80);
  settings.timeout = quen::GetOr(tree, "/settings/server/timeout", 10.0);
  settings.cache = quen::GetOr(tree, "/settings/cache/@enabled", false);
  return settings;
}

void WritePort(const std::string& file, std::uint16_t port) {
  quen::CQuenXMLData2 tree;
  tree.ReadFromFile(file);               // keep what else is in there
  tree.CreateNodes("/settings/server");  // nothing happens if it exists
  tree.SetAttr("port", std::uint32_t{port}, "/settings/server");
  tree.WriteToFile(file, 1);  // 0 would refuse to overwrite
}

int main() {
  try {
    WritePort("settings.xml", 8443);
    const Settings settings = Read("settings.xml");
    std::cout << settings.host << " " << settings.port << " " << settings.timeout << " "
              << (settings.cache ? "cached" : "not cached") << '\n';
  } catch (const quen::CQuenXMLException2& failure) {
    std::cerr << failure << '\n';
    return 1;
  }
}

// SPDX-License-Identifier: Apache-2.0
//
// load_memory ELEMENTS: what loading a text of so many elements adds to the peak of the process's
// memory, for the library and its peers, each in a process of its own. Prints "name kilobytes".
#include <quenxml2/quenxml2.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>

#include "bench/orders.h"
#include "bench/peers.h"

namespace {

// A line of /proc/self/status: the resident memory, VmRSS, or its peak so far, VmHWM.
long StatusKilobytes(const std::string& inName) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.compare(0, inName.size(), inName) == 0) return std::atol(line.c_str() + inName.size());
  bench::Fail("no such line in /proc/self/status");
}

// In a child, whose peak begins with what it has at the start. The tree is alive at the end.
void Measure(const char* inName, const std::function<void()>& inLoad) {
  std::cout.flush();
  const pid_t child = ::fork();
  if (child < 0) bench::Fail("fork");
  if (child == 0) {
    const long before = StatusKilobytes("VmRSS:");
    inLoad();
    std::cout << inName << " " << StatusKilobytes("VmHWM:") - before << std::endl;
    std::_Exit(0);
  }
  int status = 0;
  if (::waitpid(child, &status, 0) != child || status != 0) bench::Fail(inName);
}

template <class Tree>
void Keep(Tree inTree) {
  // Released with the process, behind the measurement.
  new Tree(std::move(inTree));
}

}  // namespace

int main(int inCount, char** inArguments) {
  const std::size_t elements =
      inCount > 1 ? static_cast<std::size_t>(std::atoll(inArguments[1])) : 1000000;
  const std::string utf8 = bench::OrdersUtf8(elements);
  const std::u16string wide = bench::ToUtf16(utf8);
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("quen-load-" + std::to_string(::getpid()));
  std::ofstream(path, std::ios::binary) << utf8;
  const std::u16string widePath = path.u16string();

  Measure("LoadTextQuen", [&] { (new quen::CQuenXMLDocument2w)->LoadXML(wide); });
  Measure("LoadTextXerces", [&] { Keep(bench::ParseWithXerces(wide)); });
  Measure("LoadFileQuen", [&] { (new quen::CQuenXMLDocument2w)->Load(widePath); });
  Measure("LoadFileXerces", [&] { Keep(bench::ParseFileWithXerces(widePath)); });
  Measure("LoadTextPugixml", [&] { Keep(bench::ParseWithPugixml(utf8)); });
  Measure("LoadTextLibxml", [&] { Keep(bench::ParseWithLibxml(utf8)); });
  std::filesystem::remove(path);
}

// SPDX-License-Identifier: Apache-2.0
//
// Does a program that registers, transforms and unregisters for a long time stay as large as it
// was? Prints the resident memory behind a first tenth and at the end, and fails if it grew by more
// than a mebibyte. `xsl_memory [transforms [registrations]]`.
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>

#include <quenxml2/quenxml2.h>

#include "bench/resident.h"

namespace {

constexpr char kSheet[] =
    "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
    "<xsl:key name='k' match='b' use='@i'/><xsl:param name='p'/><xsl:variable "
    "name='v'><x/></xsl:variable>"
    "<xsl:template match='/'><r><xsl:for-each select='a/b'><xsl:sort select='.'/>"
    "<xsl:value-of select=\"concat(., key('k', '1'), $p)\"/></xsl:for-each></r></xsl:template>"
    "</xsl:stylesheet>";

template <class Step>
bool StaysFlat(const char* name, long rounds, Step&& step) {
  for (long i = 0; i < rounds / 10; ++i) step();
  const long before = ResidentKibibytes();
  for (long i = rounds / 10; i < rounds; ++i) step();
  const long after = ResidentKibibytes();
  std::printf("%s: %ld rounds, %ld KiB behind a tenth, %ld KiB at the end\n", name, rounds, before,
              after);
  return after - before <= 1024;
}

}  // namespace

int main(int argc, char** argv) {
  const long transforms = argc > 1 ? std::atol(argv[1]) : 1000000;
  const long registrations = argc > 2 ? std::atol(argv[2]) : 1000;
  quen::CQuenXSL2 xsl;
  bool flat = StaysFlat("registrations", registrations, [&] {
    std::uintptr_t handle = 0;
    xsl.RegisterCompiledStyleSheet(std::istringstream(kSheet), handle);
    xsl.UnregisterCompiledStyleSheet(handle);
  });
  std::uintptr_t handle = 0;
  xsl.RegisterCompiledStyleSheet(std::istringstream(kSheet), handle);
  xsl.SetStyleSheetParam("p", "'p'");
  flat &= StaysFlat("transforms", transforms, [&] {
    std::istringstream in("<a><b i='1'>x</b><b i='2'>y</b></a>");
    std::ostringstream out;
    xsl.Transform(in, out, handle);
  });
  flat &= StaysFlat("failures", transforms / 100, [&] {
    std::istringstream in("<a><b i='1'>x</b><b i='2'>y</a>");
    std::ostringstream out;
    try {
      xsl.Transform(in, out, handle);
    } catch (const quen::CQuenXMLException2&) {
    }
  });
  return flat ? 0 : 1;
}

// SPDX-License-Identifier: Apache-2.0
//
// Transforms on several threads from the first moment of the process on. A program of its own: the
// start of the engine is tried once.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "tests/xsl/xsl_support.h"

namespace quen::test {
namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 25;

TEST(XslThreadsTest, TheFirstObjectsAndASharedStyleSheet) {
  const std::string sheet = Sheet(
      "<xsl:param name='p'/><xsl:key name='k' match='b' use='@i'/><xsl:template match='/'>"
      "<r><xsl:for-each select='a/b'><xsl:sort select='.' data-type='number'/>"
      "<xsl:value-of select=\"format-number(., '0.0')\"/></xsl:for-each>"
      "<xsl:value-of select=\"key('k', '2')\"/><xsl:value-of select='$p'/></r>"
      "</xsl:template>");
  std::atomic<int> waiting{kThreads};
  std::atomic<int> right{0};
  std::vector<std::thread> threads;
  const auto together = [&] {
    --waiting;
    while (waiting.load() > 0) std::this_thread::yield();
  };
  const auto transform = [&](CQuenXSL2& xsl, std::uintptr_t handle, int thread) {
    const std::string number = std::to_string(thread);
    xsl.SetStyleSheetParam("p", number);
    std::ostringstream out;
    xsl.Transform(std::istringstream("<a><b i='1'>3</b><b i='2'>1</b></a>"), out, handle);
    CQuenXMLData2 source(std::string("<a><b i='2'>4</b></a>")), result;
    xsl.Transform(static_cast<const CQuenXMLData2&>(source), result, handle);
    std::string text;
    result.GetSubset(text, "/");
    if (out.str() == "<r>1.03.01" + number + "</r>" && text == "<r>4.04" + number + "</r>") ++right;
  };
  // Selection starts a part of the same engine.
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      CQuenXMLDocument2 document;
      document.LoadXML("<a><b/></a>");
      together();
      if (thread % 2 == 0) document.SelectNodes("/a/*[position() mod 2 = 1]");
      CQuenXSL2 xsl;
      std::uintptr_t handle = 0;
      xsl.RegisterCompiledStyleSheet(std::istringstream(sheet), handle);
      for (int round = 0; round < kRounds; ++round) transform(xsl, handle, thread);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(right.load(), kThreads * kRounds);

  threads.clear();
  CQuenXSL2 first;
  std::uintptr_t shared = 0;
  first.RegisterCompiledStyleSheet(std::istringstream(sheet), shared);
  waiting = kThreads;
  right = 0;
  std::vector<CQuenXSL2> copies(kThreads, first);
  first.UnregisterCompiledStyleSheet(shared);
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      together();
      for (int round = 0; round < kRounds; ++round)
        transform(copies[static_cast<std::size_t>(thread)], shared, thread);
      copies[static_cast<std::size_t>(thread)].UnregisterCompiledStyleSheet(shared);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(right.load(), kThreads * kRounds);
}

}  // namespace
}  // namespace quen::test

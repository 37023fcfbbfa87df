// SPDX-License-Identifier: Apache-2.0
//
// Separate objects of every kind on eight threads, from the first moment of the process on. A
// program of its own: the start of the engines is tried once. Meant for ThreadSanitizer too (preset
// tsan).
#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

#include <quenxml2/cipher.h>

#include "tests/components/cipher_support.h"
#include "tests/support/temp_dir.h"
#include "tests/xsl/xsl_support.h"

namespace quen::test {
namespace {

constexpr int kThreads = 8;
constexpr int kRounds = 25;

// One after the other, so that every kind is the first on some thread.
void UseEverything(int inFirst, const std::string& inSchema) {
  const auto tree = [] {
    CQuenXMLData2w wide(u"<a><b i='1'>3</b></a>");
    wide.CreateNodes(u"/a/c/d");
    wide.SetData(std::int32_t{4}, u"/a/c/d");
    std::int32_t value = 0;
    wide.GetData(value, u"/a/c/d");
    CQuenXMLData2 narrow(std::string("<a/>"));
    narrow.SetData(value, "/a");
    std::string text;
    narrow.GetSubset(text, "/");
    EXPECT_EQ(text, "<a>4</a>");
    EXPECT_THROW(narrow.AppendSubset("<b", "/a"), CQuenXMLException2);
    CQuenXMLData2w large(u"<a/>");
    for (int i = 0; i < 1200; ++i) large.AddChildNode(u"b", u"");
    std::uint32_t children = 0;
    CQuenXMLData2w(large).GetNumChildren(children, u"/a");
    EXPECT_EQ(children, 1200U);
  };
  const auto nodes = [] {
    CQuenXMLDocument2w document;
    document.LoadXML(u"<!DOCTYPE a [<!ELEMENT a ANY><!ENTITY e '1'>]><a>&e;<a/></a>");
    EXPECT_EQ(document.SelectNodes(u"//a[position() mod 2 = 1]").size(), 2U);
    EXPECT_EQ(document.SelectNodes(u"/a[contains(translate(name(), 'a', 'b'), 'b')]").size(), 1U);
    CQuenXMLDocument2 narrow;
    narrow.LoadXML("<a/>");
    narrow.GetDocumentElement().AppendChild(narrow.CreateElement("b"));
    EXPECT_EQ(narrow.GetSubset(), "<a><b/></a>");
  };
  const auto message = [] {
    CQuenXMLMsg2 request(std::string("<Order><Item/></Order>"));
    request.SetSourceAddress("client");
    CQuenXMLMsg2 reply;
    request.ConstructReplyMessage(reply);
    CQuenXMLMsg2w wide;
    wide.SetMessageContents(reply.GetMessageContents());
    EXPECT_EQ(wide.GetMessageName(), u"Order");
    wide.SetError(u"c", 7, u"m", u"<d/>");
    EXPECT_TRUE(wide.HasError());
  };
  const auto cipher = [] {
    CQuenAESW aes;
    aes.SetKey(testing::kRawKey);
    EXPECT_EQ(aes.DecryptString(aes.EncryptString(u"text")), u"text");
  };
  const auto transform = [] {
    std::istringstream in("<a>1</a>"), sheet(RootSheet("<r><xsl:value-of select='a + 1'/></r>"));
    std::ostringstream out;
    CQuenXSL2w().Transform(in, sheet, out);
    EXPECT_EQ(out.str(), "<r>2</r>");
  };
  const auto validation = [&] {
    CQuenXMLDocument2 document;
    document.LoadXML("<a>1</a>");
    document.SetExternalNoNamespaceSchemaLocation(inSchema);
    document.Validate();
  };
  const std::function<void()> kUses[] = {tree, nodes, message, cipher, transform, validation};
  constexpr int kCount = 6;
  for (int i = 0; i < 2 * kCount; ++i) kUses[(inFirst + i) % kCount]();
}

TEST(Threads, SeparateObjectsOfEveryKindFromTheFirstCallOn) {
  const TempDir dir;
  const std::string schema =
      dir.File("a.xsd",
               "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element name='a' "
               "type='xs:int'/></xs:schema>");
  std::atomic<int> waiting{kThreads};
  std::vector<std::thread> threads;
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      --waiting;
      while (waiting.load() > 0) std::this_thread::yield();
      UseEverything(thread, schema);
    });
  }
  for (std::thread& thread : threads) thread.join();
}

TEST(Threads, TransformsFirstObjectsAndASharedStyleSheet) {
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

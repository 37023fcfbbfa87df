// SPDX-License-Identifier: Apache-2.0
//
// A large real style sheet, docbook-xsl, against the engine's own command line: the same pages.
// Skipped where the style sheets (package docbook-xsl) or the command (package xalan) are absent.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>

#include "tests/xsl/xsl_support.h"

// Xalan-C 1.12 gives up half a kilobyte for a namespace of extensions that more than one file of a
// style sheet names. Its frames show with the slow way of walking a stack alone.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:processExtensionNamespace\n"; }
extern "C" __attribute__((visibility("default"))) const char* __asan_default_options();
extern "C" const char* __asan_default_options() { return "fast_unwind_on_malloc=0"; }

namespace quen::test {
namespace {

constexpr char kStyleSheets[] = "/usr/share/xml/docbook/stylesheet/docbook-xsl/";
constexpr char kCommand[] = "/usr/bin/Xalan";

// The engine makes the names of anchors from addresses; here they are numbered as they appear.
std::string WithNumberedAnchors(const std::string& page) {
  std::map<std::string, std::size_t> anchors;
  std::string result;
  std::size_t from = 0;
  for (std::size_t at = page.find("N0x"); at != std::string::npos; at = page.find("N0x", from)) {
    const std::size_t end = page.find_first_not_of("Nx0123456789abcdef", at);
    result.append(page, from, at - from);
    const std::string anchor = page.substr(at, end - at);
    result += "anchor" + std::to_string(anchors.emplace(anchor, anchors.size()).first->second);
    from = std::min(end, page.size());
  }
  return result.append(page, from);
}

TEST(XslDocbookTest, PagesAreThoseOfTheCommandLine) {
  const std::string kSheets[] = {"html/docbook.xsl", "xhtml/docbook.xsl"};
  const std::string kArticle =
      "<?xml version='1.0'?><!DOCTYPE article [<!ENTITY who 'A. Nonym'>]>"
      "<article lang='de'><title>T &amp; U \xC3\xA9</title><articleinfo><author><firstname>&who;"
      "</firstname></author></articleinfo><section id='s1'><title>One</title><para>Text "
      "<emphasis>more</emphasis>, see <xref linkend='s2'/>.</para><itemizedlist><listitem><para>x"
      "</para></listitem></itemizedlist></section><section id='s2'><title>Two</title><table><title>"
      "tab</title><tgroup cols='2'><tbody><row><entry>a</entry><entry>b</entry></row></tbody>"
      "</tgroup></table><programlisting>int x;\n  int y;</programlisting></section></article>";
  const std::string kBook =
      "<book><title>Book</title><preface><title>P</title><para>p<footnote><para>f</para></footnote>"
      "</para></preface><chapter><title>C1</title><para>c<indexterm><primary>word</primary>"
      "</indexterm></para><figure><title>F</title><mediaobject><imageobject><imagedata "
      "fileref='a.png'/></imageobject></mediaobject></figure></chapter><chapter><title>C2</title>"
      "<orderedlist><listitem><para>1</para></listitem></orderedlist><glosslist><glossentry>"
      "<glossterm>t</glossterm><glossdef><para>d</para></glossdef></glossentry></glosslist>"
      "</chapter><index/></book>";
  if (!std::filesystem::exists(std::string(kStyleSheets) + kSheets[0]))
    GTEST_SKIP() << "no docbook-xsl";
  if (!std::filesystem::exists(kCommand)) GTEST_SKIP() << "no Xalan";

  const Folder folder;
  const std::string sources[] = {folder.Write("article.xml", kArticle),
                                 folder.Write("book.xml", kBook)};
  CQuenXSL2 xsl;
  for (const std::string& name : kSheets) {
    const std::string sheet = kStyleSheets + name;
    std::uintptr_t handle = 0;
    xsl.RegisterCompiledStyleSheet(sheet, handle);
    for (const std::string& source : sources) {
      xsl.Transform(source, folder / "ours.html", handle);
      const std::string command = std::string(kCommand) + " -o '" + (folder / "theirs.html") +
                                  "' '" + source + "' '" + sheet + "' 2>/dev/null";
      ASSERT_EQ(std::system(command.c_str()), 0) << command;
      const std::string ours = WithNumberedAnchors(folder.Read("ours.html"));
      EXPECT_EQ(ours, WithNumberedAnchors(folder.Read("theirs.html"))) << name << " " << source;
      EXPECT_GT(ours.size(), 1000U);
    }
  }
}

}  // namespace
}  // namespace quen::test

// SPDX-License-Identifier: Apache-2.0
//
// Every attack through every way in, on a stack of 512 KiB. What is counted is memory and the time
// of the processor, that against the time of a harmless document in the same run.
#include "tests/hostile/attacks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <time.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "tests/hostile/entries.h"
#include "tests/hostile/watch.h"
#include "tests/support/allocations.h"
#include "tests/support/literals.h"
#include "tests/support/small_stack.h"
#include "tests/support/temp_dir.h"
#include "tests/xsl/xsl_support.h"

namespace quen::test {
namespace {

using ::testing::HasSubstr;

double ProcessorSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

struct Cost {
  std::uint32_t code = 0;
  std::string message;
  std::size_t bytes = 0;
  double seconds = 0;
};

Cost RunOnSmallStack(const Entry& inEntry, const std::string& inText) {
  Cost cost;
  OnSmallStack([&] {
    const std::size_t before = AllocatedBytes();
    ResetPeak();
    const double begin = ProcessorSeconds();
    cost.code = inEntry.run(inText, cost.message);
    cost.seconds = ProcessorSeconds() - begin;
    cost.bytes = PeakBytes() - before;
  });
  return cost;
}

void ExpectOutcome(const Attack& inAttack, const Entry& inEntry, const Cost& inCost) {
  if (inEntry.as == Enters::kStyle) {
    EXPECT_THAT(inCost.code, ::testing::AnyOf(4U, 1010U));  // no attack is a style sheet
    return;
  }
  const std::uint32_t refused = inEntry.as == Enters::kSource ? 1010 : 1009;
  if (inAttack.outcome == Outcome::kTaken && inEntry.as != Enters::kChecked) {
    EXPECT_EQ(inCost.code, 0U) << inCost.message;
  } else if (inAttack.outcome == Outcome::kRefused) {
    EXPECT_EQ(inCost.code, refused) << inCost.message;
    if (inEntry.as != Enters::kChecked) {
      EXPECT_THAT(inCost.message, HasSubstr(inAttack.message));
    }
  } else {
    EXPECT_THAT(inCost.code, ::testing::AnyOf(0U, refused, 1010U)) << inCost.message;
  }
}

// What the limits allow beside 64 times the text: entities and defaults of 4 Mi code units, with
// the nodes that hold them.
constexpr std::size_t kFreeBytes = std::size_t{64} << 20;
constexpr std::size_t kBytesPerByte = 64;
// Processor time, in units of what a harmless text of a megabyte takes in the same way: what the
// limits allow, and what each further megabyte may take.
constexpr double kFreeTime = 60;
constexpr double kTimePerMegabyte = 30;

TEST(Attacks, CostNoMoreThanTheyAreWorth) {
  const TempDir dir;
  std::string harmless = "<a>";
  while (harmless.size() < 1000000) harmless += "<b c='1'>text</b>";
  harmless += "</a>";
  const std::vector<Entry> entries = AllEntries(dir / "");
  double least = 1e9;  // style sheets refuse it at once
  for (const Entry& entry : entries)
    if (entry.isPlain) least = std::min(least, RunOnSmallStack(entry, harmless).seconds);
  for (const Attack& attack : CostlyAttacks()) {
    const std::string text = attack.text();
    const double megabytes = static_cast<double>(text.size()) / 1e6;
    for (const Entry& entry : entries) {
      if (!entry.isPlain && text.size() > 5000) continue;
      SCOPED_TRACE(std::string(attack.name) + ", " + entry.name);
      const Cost cost = RunOnSmallStack(entry, text);
      ExpectOutcome(attack, entry, cost);
      EXPECT_LE(cost.bytes, kFreeBytes + kBytesPerByte * text.size());
      EXPECT_LE(cost.seconds / least, kFreeTime + kTimePerMegabyte * megabytes);
    }
  }
}

TEST(Attacks, AnAttributeOf100MBIsTaken) {
  if (std::getenv("QUENXML2_FULL_TESTS") == nullptr)
    GTEST_SKIP() << "takes a gigabyte; set QUENXML2_FULL_TESTS to run it";
  const TempDir dir;
  const std::string text = "<a b='" + std::string(100000000, 'x') + "'/>";
  for (const Entry& entry : AllEntries(dir / "")) {
    if (!entry.isPlain) continue;
    const Cost cost = RunOnSmallStack(entry, text);
    EXPECT_EQ(cost.code, 0U) << entry.name << cost.message;
    EXPECT_LE(cost.bytes, 20 * text.size()) << entry.name;
  }
}

std::string WithPlaces(std::string inText, const std::string& inFile, const std::string& inHost) {
  const auto replace = [&](const std::string& mark, const std::string& place) {
    for (std::size_t at = inText.find(mark); at != std::string::npos; at = inText.find(mark, at))
      inText.replace(at, mark.size(), place);
  };
  replace("FILE", inFile);
  replace("HOST", inHost);
  return inText;
}

TEST(Attacks, NothingThatTheTextNamesIsReadOrAsked) {
  const TempDir dir;
  const std::string file = dir.File("watched", "<!ENTITY leak 'leaked'>");
  WatchedFile watched(file);
  WatchedPort port;
  // The watch works: what the application names is opened.
  EXPECT_THROW(CQuenXMLDocument2w().Load(Wide(file)), CQuenXMLException2w);
  EXPECT_TRUE(watched.WasOpened());
  EXPECT_THROW(CQuenXMLDocument2w().Load(Wide("http://" + port.Address() + "/x")),
               CQuenXMLException2w);
  const int connections = port.Connections();
  EXPECT_GT(connections, 0);
  for (const Entry& entry : AllEntries(dir / "")) {
    for (const Attack& attack : ReadingAttacks()) {
      SCOPED_TRACE(std::string(attack.name) + ", " + entry.name);
      ExpectOutcome(attack, entry,
                    RunOnSmallStack(entry, WithPlaces(attack.text(), file, port.Address())));
      // A style sheet may read local files.
      EXPECT_TRUE(!watched.WasOpened() || entry.as == Enters::kStyle);
    }
    EXPECT_EQ(port.Connections(), connections) << entry.name;
  }
}

// What sources and style sheets name, in the forms where the application gave the style sheet.
TEST(Attacks, ASourceNamesNoStyleSheetAndNoDocument) {
  const TempDir dir;
  const std::string file = dir.File("watched.xml", "<leaked/>");
  WatchedFile watched(file);
  WatchedPort port;
  const struct {
    const char* what;
    std::string source, sheet;
    const char* outcome;
  } kRows[] = {
      {"an instruction beside a given style sheet",
       "<?xml-stylesheet type='text/xsl' href='FILE'?><a/>", RootSheet("<r/>"), "<r/>"},
      {"the network in document()", "<a>http://HOST/x</a>",
       RootSheet("<xsl:copy-of select='document(a)'/>"), "does not stand in the style sheet"},
      {"the network in a style sheet", "<a/>", Sheet("", "<xsl:import href='http://HOST/x.xsl'/>"),
       "is not a local file"},
      {"the network in an included entity", "<a/>",
       "<!DOCTYPE a [<!ENTITY e SYSTEM 'http://HOST/x'>]>" + RootSheet("<r>&e;</r>"),
       "is not a local file"},
      {"a file in document()", "<a>FILE</a>",
       RootSheet("<r><xsl:copy-of select='document(a)'/></r>"),
       "does not stand in the style sheet"},
      {"a file in an attribute", "<a b='FILE'/>",
       RootSheet("<r><xsl:copy-of select='document(a/@b)'/></r>"),
       "does not stand in the style sheet"},
      {"a file in a text that is put together", "<a b='FILE'/>",
       RootSheet("<r><xsl:copy-of select=\"document(concat('', string(a/@b)))\"/></r>"),
       "does not stand in the style sheet"},
      {"a file by way of a variable", "<a b='FILE'/>",
       RootSheet("<xsl:variable name='f'><xsl:value-of select='a/@b'/></xsl:variable>"
                 "<r><xsl:copy-of select='document($f)'/></r>"),
       "does not stand in the style sheet"},
      {"a file by way of a parameter", "<a b='FILE'/>",
       Sheet("<xsl:template match='/'><xsl:call-template name='t'><xsl:with-param name='f' "
             "select='string(a/@b)'/></xsl:call-template></xsl:template><xsl:template name='t'>"
             "<xsl:param name='f'/><r><xsl:copy-of select='document($f)'/></r></xsl:template>"),
       "does not stand in the style sheet"},
      {"a file by way of an evaluated text", "<a>document('FILE')</a>",
       RootSheet(
           "<r xmlns:d='http://exslt.org/dynamic'><xsl:copy-of select='d:evaluate(string(a))'/>"
           "</r>"),
       "does not stand in the style sheet"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.what);
    std::istringstream source(WithPlaces(row.source, file, port.Address()));
    std::istringstream sheet(WithPlaces(row.sheet, file, port.Address()));
    std::ostringstream out;
    const std::string failure =
        FailureOf<NarrowWidth>([&] { CQuenXSL2().Transform(source, sheet, out); });
    EXPECT_THAT(failure.empty() ? out.str() : failure, HasSubstr(row.outcome));
    EXPECT_FALSE(watched.WasOpened());
  }
  EXPECT_EQ(port.Connections(), 0);
}

// What fails in the middle leaves nothing in the object.
TEST(Attacks, FailedTransformsTakeNoMemory) {
  const std::string stop = "<xsl:message terminate='yes'>stop</xsl:message>";
  const std::string sheets[] = {
      RootSheet("<r>" + stop + "</r>"),
      RootSheet("<r><xsl:variable name='v'><x>" + stop + "</x></xsl:variable></r>"),
      RootSheet("<r><xsl:for-each select='//b'><xsl:sort select='.'/>" + stop +
                "</xsl:for-each></r>"),
      RootSheet("<r><xsl:for-each select='//b'><xsl:value-of select='concat(., $u)'/>"
                "</xsl:for-each></r>"),
      Sheet("<xsl:template name='t' match='/'><e><xsl:call-template name='t'/></e></xsl:template>"),
      RootSheet("<r><xsl:value-of select=\"document('/none')\"/></r>"),
  };
  for (const std::string& sheet : sheets) {
    CQuenXSL2 xsl;
    std::uintptr_t handle = 0;
    xsl.RegisterCompiledStyleSheet(std::istringstream(sheet), handle);
    const auto run = [&](int times) {
      for (; times > 0; --times) {
        std::ostringstream out;
        EXPECT_NE(FailureOf<NarrowWidth>([&] {
                    xsl.Transform(std::istringstream("<a><b>1</b><b>2</b></a>"), out, handle);
                  }),
                  "");
      }
      return AllocatedBytes();
    };
    const std::size_t before = run(2);
    EXPECT_EQ(run(20), before) << sheet;
  }
}

// A style sheet that has no place of its own opens no folder to the source, nor the one it lies in.
TEST(Attacks, ASourceNamesNoFileOfTheWorkingDirectory) {
  const TempDir dir;
  WatchedFile watched(dir.File("watched.xml", "<leaked/>"));
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(dir / "");
  // An empty text stands in the style sheet, and is the place of a style sheet without a place.
  const std::string text = RootSheet("<r b=''><xsl:copy-of select='document(a/@b)'/></r>");
  const std::string path = dir.File("source.xml", "<a b='watched.xml'/>");
  CQuenXSL2 xsl;
  CQuenXMLData2 source("<a b='watched.xml'/>"), sheet(text), result;
  CQuenXMLDocument2 sourceDocument, sheetDocument;
  std::ostringstream out;
  sourceDocument.LoadXML("<a b='watched.xml'/>");
  sheetDocument.LoadXML(text);
  std::uintptr_t ofStream = 0, ofTree = 0, ofDocument = 0;
  xsl.RegisterCompiledStyleSheet(std::istringstream(text), ofStream);
  xsl.RegisterCompiledStyleSheet(sheet, ofTree);
  xsl.RegisterCompiledStyleSheet(sheetDocument, ofDocument);
  const std::function<void()> ways[] = {
      [&] { xsl.Transform(source, sheet, result); },
      [&] { xsl.Transform(sourceDocument, sheetDocument, out); },
      [&] { xsl.Transform(sourceDocument, out, ofStream); },
      [&] { xsl.Transform(source, result, ofTree); },
      [&] { xsl.Transform(sourceDocument, out, ofDocument); },
      [&] { xsl.Transform(path, (dir / "result"), ofStream); },
  };
  for (const auto& way : ways)
    EXPECT_THAT(FailureOf<NarrowWidth>(way), HasSubstr("does not stand in the style sheet"));
  EXPECT_FALSE(watched.WasOpened());
  std::filesystem::current_path(before);
}

// A source may name what lies in the folder of the style sheet or below, and nothing else.
TEST(Attacks, ASourceDoesNotLeaveTheFolderOfTheStyleSheet) {
  const TempDir dir;
  const std::string file = dir.File("watched.xml", "<leaked/>");
  WatchedFile watched(file);
  std::filesystem::create_directories(dir / "own/deep");
  dir.File("own/deep/data.xml", "<data/>");
  CQuenXSL2 xsl;
  std::uintptr_t handle = 0;
  xsl.RegisterCompiledStyleSheet(
      dir.File("own/sheet.xsl", RootSheet("<xsl:copy-of select='document(string(a/@b))'/>")),
      handle);
  const auto outcome = [&](const std::string& name) {
    std::ostringstream out;
    const std::string failure = FailureOf<NarrowWidth>(
        [&] { xsl.Transform(std::istringstream("<a b='" + name + "'/>"), out, handle); });
    return failure.empty() ? out.str() : failure;
  };
  EXPECT_EQ(outcome("deep/data.xml"), "<data/>");
  std::string backwards = file;
  std::replace(backwards.begin(), backwards.end(), '/', '\\');
  const std::string kNames[] = {file,
                                "file:" + file,
                                "file://" + file,
                                "//localhost" + file,
                                "../watched.xml",
                                "%2e%2e/watched.xml",
                                "deep/../../watched.xml",
                                "..\\watched.xml",
                                backwards};
  for (const std::string& name : kNames)
    EXPECT_THAT(outcome(name), HasSubstr("does not stand in the style sheet")) << name;
  EXPECT_FALSE(watched.WasOpened());
}

}  // namespace
}  // namespace quen::test

// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <string>

#include "tests/support/literals.h"
#include "tests/support/temp_dir.h"

namespace quen::test {
namespace {

using Document = CQuenXMLDocument2w;
using namespace std::string_literals;

const std::string kDeclaration = "<?xml version='1.0' encoding='utf-8'?>";

Document Parse(const char* inXml) {
  Document document;
  if (*inXml != 0) document.LoadXML(Wide(inXml));
  return document;
}

std::string FailureOf(const std::function<void()>& inOperation) {
  return FailureAt<WideTypes>(inOperation);
}

std::string InUtf16(std::string_view inUtf8, bool inBigEndian, bool inMark) {
  std::string bytes;
  for (const char16_t unit : (inMark ? u"\uFEFF" : u"") + Wide(inUtf8)) {
    const char high = static_cast<char>(unit >> 8);
    const char low = static_cast<char>(unit & 0xFF);
    bytes += inBigEndian ? high : low;
    bytes += inBigEndian ? low : high;
  }
  return bytes;
}

std::string Repeated(const std::string& inPiece, int inCount) {
  std::string text;
  for (int i = 0; i < inCount; ++i) text += inPiece;
  return text;
}

TEST(Files, EveryEncodingOfTheSameText) {
  const TempDir dir;
  const std::string text = "<a>\u00e9\u20ac\U0001F600</a>";
  const std::string latin = "<?xml version='1.0' encoding=\"ISO-8859-1\"?><a>\xe9</a>";
  const std::string manyLines(200000, '\n');
  const struct {
    const char* what;
    std::string bytes;
    std::string outcome;  // the value of the root, or the failure's message and place
  } kRows[] = {
      {"UTF-8", text, "\u00e9\u20ac\U0001F600"},
      {"with a mark", "\xEF\xBB\xBF" + text, "\u00e9\u20ac\U0001F600"},
      {"declared", kDeclaration + text, "\u00e9\u20ac\U0001F600"},
      {"ASCII holds more than it says", "<?xml version='1.0' encoding='us-ascii'?>" + text,
       "\u00e9\u20ac\U0001F600"},
      {"UTF-16, low byte first", InUtf16(text, false, true), "\u00e9\u20ac\U0001F600"},
      {"high byte first", InUtf16(text, true, true), "\u00e9\u20ac\U0001F600"},
      {"without a mark", InUtf16(text, false, false), "\u00e9\u20ac\U0001F600"},
      {"without a mark, high byte first", InUtf16(text, true, false), "\u00e9\u20ac\U0001F600"},
      {"UTF-16 that declares UTF-8", InUtf16(kDeclaration + text, true, true),
       "\u00e9\u20ac\U0001F600"},
      {"ISO-8859-1", latin, "\u00e9"},
      {"windows-1252", "<?xml version='1.0' encoding='windows-1252'?><a>\x80</a>", "\u20ac"},
      {"the mark wins", "\xEF\xBB\xBF<?xml version='1.0' encoding='ISO-8859-1'?><a>\u00e9</a>",
       "\u00e9"},
      {"a subset, so that all is decoded",
       "<!DOCTYPE a [<!ELEMENT a ANY><!ENTITY e '\u00e9'>]>"
       "<a>&e;</a>",
       ""},
      {"UTF-7", "<?xml version='1.0' encoding='UTF-7'?><a>+ADw-</a>",
       "[The encoding 'UTF-7' is not supported] at line: 1, Column: 1"},
      {"a stateful one", "<?xml version='1.0' encoding='ISO-2022-JP'?><a/>",
       "[The encoding 'ISO-2022-JP' is not supported] at line: 1, Column: 1"},
      {"EBCDIC", "<?xml version='1.0' encoding='IBM037'?><a/>",
       "[The encoding 'IBM037' is not supported] at line: 1, Column: 1"},
      {"an invented one", "<?xml version='1.0' encoding='nonsense'?><a/>",
       "[The encoding 'NONSENSE' is not supported] at line: 1, Column: 1"},
      {"the name of one with a tail of no name",
       "<?xml version='1.0' encoding='GB18030" + Repeated("\u00e9", 50) + "'?><a/>",
       "[The encoding 'GB18030" + Repeated("\u00e9", 50) +
           "' is not supported] at line: 1, Column: 1"},
      {"with a tail of letters",
       "<?xml version='1.0' encoding='GB18030" + std::string(50, 'A') + "'?><a/>",
       "[The encoding 'GB18030" + std::string(50, 'A') +
           "' is not supported] at line: 1, Column: 1"},
      {"declared as what it is not", "<?xml version='1.0' encoding='UTF-16'?><a/>",
       "[The encoding 'UTF-16' is not supported] at line: 1, Column: 1"},
      {"a bad byte", "<a>\nx\xff</a>",
       "[The bytes are not of the document's encoding] at line: 2, Column: 2"},
      {"an overlong form", "<a>\xc0\xbc</a>",
       "[The bytes are not of the document's encoding] at line: 1, Column: 4"},
      {"cut inside a sequence", "<a/>\n\xe2\x82",
       "[The bytes are not of the document's encoding] at line: 2, Column: 1"},
      {"a bad byte behind the root", "<a/>\xff",
       "[The bytes are not of the document's encoding] at line: 1, Column: 5"},
      {"a bad byte in a text with a subset, which is decoded as a whole",
       "<!DOCTYPE a [<!ELEMENT a ANY>]>\n<a>\xd3 </a>",
       "[The bytes are not of the document's encoding] at line: 2, Column: 4"},
      {"a zero behind the root", "<a/>\0<evil>"s,
       "[Invalid character (Unicode: 0x0000)] at line: 1, Column: 5"},
      {"a bad byte far down", "<a>" + manyLines + "\xff</a>",
       "[The bytes are not of the document's encoding] at line: 200001, Column: 1"},
      {"half a unit at the end", InUtf16("<a/>", false, true) + "\n",
       "[The bytes are not of the document's encoding] at line: 1, Column: 6"},
      {"half a pair", InUtf16("<a>", false, true) + "\x3d\xd8" + InUtf16("</a>", false, false),
       "[Invalid character (Unicode: 0x003c)] at line: 1, Column: 6"},
      {"a zero behind the root in UTF-16", InUtf16("<a/>", false, true) + "\0\0"s,
       "[Invalid character (Unicode: 0x0000)] at line: 1, Column: 6"},
      {"U+FFFE at the end", "<a/>\xEF\xBF\xBE",
       "[Invalid character (Unicode: 0xfffe)] at line: 1, Column: 5"},
      {"half a pair in an instruction",
       InUtf16("<a/><?p ", true, true) + "\xd8\x3d" + InUtf16("?>", true, false),
       "[Invalid character (Unicode: 0x003f)] at line: 1, Column: 11"},
      {"no bytes", "", "[invalid document structure] at line: 1, Column: 1"},
      {"a mark alone", "\xEF\xBB\xBF", "[invalid document structure] at line: 1, Column: 1"},
  };
  for (const auto& row : kRows) {
    Document document = Parse("<old/>");
    const std::string failure =
        FailureOf([&] { document.Load(Wide(dir.File("file.xml", row.bytes))); });
    if (failure.empty()) {
      EXPECT_EQ(Utf8(document.GetDocumentElement().GetValue()), row.outcome) << row.what;
    } else {
      EXPECT_EQ(failure, "1009 Parse error: " + row.outcome +
                             " @ CQuenXMLDocumentImpl2w::Load(const STD(wstring) inLocation) ")
          << row.what;
      EXPECT_EQ(document.GetSubset(), u"<old/>") << row.what;
    }
  }
  Document document;
  document.Load(Wide(dir.File("file.xml", kRows[12].bytes)));
  EXPECT_EQ(Utf8(document.GetDocumentElement().GetSubset()), "<a>\u00e9</a>");
}

// Sequences across the borders of the pieces, 32 KiB, in which a file is read.
TEST(Files, PiecesMeetAnywhere) {
  const TempDir dir;
  for (std::size_t pad = 32750; pad < 32770; ++pad) {
    const std::string value = std::string(pad, 'x') + "\u20ac\U0001F600\u00e9";
    Document document;
    document.Load(Wide(dir.File("file.xml", "<a>" + value + "</a>")));
    ASSERT_TRUE(Utf8(document.GetDocumentElement().GetValue()) == value) << pad;
  }
}

TEST(Files, WhatIsNoRegularFileIsRefusedAndNothingWaits) {
  const TempDir dir;
  ASSERT_EQ(mkfifo((dir / "pipe").c_str(), 0600), 0);
  std::filesystem::create_symlink("pipe", dir / "link");
  const struct {
    const char* what;
    std::string location;
    const char* reason;
  } kRows[] = {
      {"a pipe", dir / "pipe", "Not a regular file"},
      {"a link to a pipe", dir / "link", "Not a regular file"},
      {"a directory", dir / "", "Not a regular file"},
      {"a device", "/dev/zero", "Not a regular file"},
      {"missing", dir / "none", "No such file or directory"},
      {"missing, as a URL", "file://" + (dir / "none"), "No such file or directory"},
      {"no URL", "a:b://c d", "No such file or directory"},
      {"empty", "", "No such file or directory"},
  };
  for (const auto& row : kRows) {
    Document document = Parse("<old/>");
    EXPECT_EQ(FailureOf([&] { document.Load(Wide(row.location)); }),
              "1009 Parse error: [unable to open primary document entity '" + row.location +
                  "': " + row.reason +
                  "] at line: 0, Column: 0 @ CQuenXMLDocumentImpl2w::Load(const STD(wstring) "
                  "inLocation) ")
        << row.what;
    EXPECT_EQ(document.GetSubset(), u"<old/>");
  }
}

TEST(Files, LocationsArePathsAndUrls) {
  const TempDir dir;
  dir.File("\u00e9 %41.xml", "<a/>");
  Document document;
  document.Load(Wide(dir / "\u00e9 %41.xml"));
  EXPECT_EQ(document.GetSubset(), u"<a/>");
  document.LoadXML(u"<old/>");
  document.Load(Wide("file://" + (dir / "%c3%A9%20%2541.xml")));
  EXPECT_EQ(document.GetSubset(), u"<a/>");
}

TEST(Files, WrittenBytesAndOverwriting) {
  const TempDir dir;
  const struct {
    const char* xml;
    std::string bytes;
  } kRows[] = {
      {"<!--c--><a b='\u00e9'>x\ny</a>", kDeclaration + "<!--c--><a b=\"\u00e9\">x\ny</a>"},
      {"", kDeclaration},
  };
  for (const auto& row : kRows) {
    for (const bool binary : {false, true}) {
      const std::string path = dir / "w\u00e9.xml";
      const Document document = Parse(row.xml);
      const auto write = [&](std::int32_t overwrite) {
        binary ? document.WriteToFileBinary(path, overwrite)
               : document.WriteToFile(path, overwrite);
      };
      write(0);
      EXPECT_EQ(dir.Bytes(path), row.bytes);
      dir.File("w\u00e9.xml", std::string(1000, 'x'));
      EXPECT_EQ(FailureOf([&] { write(0); }),
                "1015 File already exists @ CQuenXMLDataImpl::WriteToFile");
      EXPECT_EQ(dir.Bytes(path), std::string(1000, 'x'));
      write(-1);
      EXPECT_EQ(dir.Bytes(path), row.bytes);
      if (!row.bytes.empty() && row.bytes != kDeclaration) {
        Document loaded;
        loaded.Load(Wide(path));
        EXPECT_TRUE(loaded.GetSubset() == document.GetSubset());
      }
      std::filesystem::remove(path);
    }
  }
}

TEST(Files, UnwritablePlaces) {
  const TempDir dir;
  const Document document = Parse("<a/>");
  for (const std::string& path : {dir / "none/file", dir / "", std::string(), "/dev/full"s}) {
    for (const std::int32_t overwrite : {0, 1}) {
      const std::string expected = overwrite == 0 && (path == dir / "" || path == "/dev/full")
                                       ? "1015 File already exists @ CQuenXMLDataImpl::WriteToFile"
                                       : "1016 Failed to open file @ CQuenXMLDataImpl::WriteToFile";
      EXPECT_EQ(FailureOf([&] { document.WriteToFile(path, overwrite); }), expected) << path;
    }
  }
}

TEST(Files, WhatCannotBeWrittenAsTextLeavesTheDeclaration) {
  const TempDir dir;
  const std::string path = dir / "file.xml";
  const Document document = Parse("<!DOCTYPE a [<!ELEMENT a ANY>]><a/>");
  EXPECT_EQ(FailureOf([&] { document.WriteToFile(path, 0); }).substr(0, 26),
            "1010 Invalid DOM Node Type");
  EXPECT_EQ(dir.Bytes(path), kDeclaration);
  Document surrogate = Parse("<a/>");
  surrogate.GetDocumentElement().SetValue(u"\xd800");
  EXPECT_EQ(FailureOf([&] { surrogate.WriteToFile(path, 1); }).substr(0, 3), "77 ");
}

TEST(Files, AFullDiskIsReported) {
  const TempDir dir;
  const std::string place = dir / "small";
  std::filesystem::create_directory(place);
  if (mount("none", place.c_str(), "tmpfs", 0, "size=64k") != 0)
    GTEST_SKIP() << "mounting is not permitted here";
  Document document = Parse("<a/>");
  document.GetDocumentElement().SetValue(std::u16string(200000, u'x'));
  EXPECT_EQ(FailureOf([&] { document.WriteToFile(place + "/file", 0); }),
            "1016 Failed to open file @ CQuenXMLDataImpl::WriteToFile");
  umount(place.c_str());
}

TEST(Files, Utf8Subsets) {
  const Document document = Parse("<!--\u20ac--><a>\u00e9</a>");
  EXPECT_EQ(document.GetUTF8Subset(), "<!--\u20ac--><a>\u00e9</a>");
  Document other = Parse("<o/>");
  CQuenXMLDocument2w empty;
  empty.AppendUTF8Subset(document.GetUTF8Subset());
  EXPECT_EQ(Utf8(empty.GetSubset()), "<a>\u00e9</a>");
  EXPECT_EQ(FailureOf([&] { other.AppendUTF8Subset("<a>\xff</a>"); }).substr(0, 3), "78 ");
  EXPECT_EQ(FailureOf([&] { other.AppendUTF8Subset("<a/>"); }).substr(0, 2), "3 ");
  EXPECT_EQ(FailureOf([&] { other.AppendUTF8Subset(""); }).substr(0, 5), "1009 ");
  EXPECT_EQ(other.GetUTF8Subset(), "<o/>");
}

}  // namespace
}  // namespace quen::test

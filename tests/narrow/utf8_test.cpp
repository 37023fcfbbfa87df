// SPDX-License-Identifier: Apache-2.0
//
// UTF-8 at the edge of the narrow classes: what is malformed is refused everywhere and changes
// nothing; what is well-formed comes back as it went in.
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <xercesc/util/XMLExceptMsgs.hpp>

#include "tests/support/widths.h"

namespace quen::test {
namespace {

struct MalformedCase {
  const char* what;
  std::string bytes;
};
// The classes of Markus Kuhn's UTF-8 decoder stress test, and the boundaries of Unicode's table of
// well-formed byte sequences (Unicode 15, table 3-7).
const MalformedCase kMalformed[] = {
    {"first continuation byte", "\x80"},
    {"last continuation byte", "\xbf"},
    {"two continuation bytes", "\x80\xbf"},
    {"lonely 2-byte start", "\xc3 "},
    {"lonely 3-byte start", "\xe2 "},
    {"lonely 4-byte start", "\xf0 "},
    {"5-byte form", "\xf8\x88\x80\x80\x80"},
    {"6-byte form", "\xfc\x84\x80\x80\x80\x80"},
    {"FE", "\xfe"},
    {"FF", "\xff"},
    {"FE FE FF FF", "\xfe\xfe\xff\xff"},
    {"cut at the end, 1 of 2", "\xc3"},
    {"cut at the end, 1 of 3", "\xe2"},
    {"cut at the end, 2 of 3", "\xe2\x82"},
    {"cut at the end, 1 of 4", "\xf0"},
    {"cut at the end, 2 of 4", "\xf0\x9f"},
    {"cut at the end, 3 of 4", "\xf0\x9f\x98"},
    {"cut inside, 2 of 3", "\xe2\x82z"},
    {"cut inside, 3 of 4", "\xf0\x9f\x98z"},
    {"cut sequences in a row", "\xc0\xe0\x80\xf0\x80\x80"},
    {"overlong solidus, 2 bytes", "\xc0\xaf"},
    {"overlong solidus, 3 bytes", "\xe0\x80\xaf"},
    {"overlong solidus, 4 bytes", "\xf0\x80\x80\xaf"},
    {"overlong solidus, 5 bytes", "\xf8\x80\x80\x80\xaf"},
    {"highest overlong, 2 bytes", "\xc1\xbf"},
    {"highest overlong, 3 bytes", "\xe0\x9f\xbf"},
    {"highest overlong, 4 bytes", "\xf0\x8f\xbf\xbf"},
    {"overlong zero, 2 bytes", "\xc0\x80"},
    {"overlong zero, 3 bytes", "\xe0\x80\x80"},
    {"first high surrogate", "\xed\xa0\x80"},
    {"last high surrogate", "\xed\xaf\xbf"},
    {"first low surrogate", "\xed\xb0\x80"},
    {"last low surrogate", "\xed\xbf\xbf"},
    {"surrogate pair in two sequences", "\xed\xa0\xbd\xed\xb8\x80"},
    {"first above U+10FFFF", "\xf4\x90\x80\x80"},
    {"start byte F5", "\xf5\x80\x80\x80"},
    {"start byte F7", "\xf7\xbf\xbf\xbf"},
    {"bad second of 2", "\xc3\x28"},
    {"bad second of 3", "\xe2\x28\xa1"},
    {"bad third of 3", "\xe2\x82\x28"},
    {"bad second of 4", "\xf0\x28\x8c\xbc"},
    {"bad third of 4", "\xf0\x90\x28\xbc"},
    {"bad fourth of 4", "\xf0\x90\x8c\x28"},
    {"Latin-1", "gr\xfc\xdf"},
    {"UTF-16 with a mark", std::string("\xff\xfe\x61\0", 4)},
    {"behind a zero byte", std::string("a\0\xff", 3)},
    {"at the end of much text", std::string(1000, 'a') + "\xc3\xa4\xc3"},
};

// The failure of the transcoding: its class, code and context.
std::string Outcome(const std::function<void()>& inOperation) {
  const auto told = [](const char* width, std::uint32_t code, const std::string& context) {
    return code == xercesc::XMLExcepts::Trans_BadSrcSeq &&
                   context == "CQuenXMLImplUtils2w::TranscodeFromUTF8()"
               ? std::string(width)
               : std::string(width) + " " + std::to_string(code) + " " + context;
  };
  try {
    inOperation();
    return "accepted";
  } catch (const CQuenXMLException2& failure) {
    return told("narrow", failure.GetErrorCode(), failure.GetErrorContext());
  } catch (const CQuenXMLException2w& failure) {
    return told("wide", failure.GetErrorCode(), internal::ToUtf8Lossy(failure.GetErrorContext()));
  }
}

TEST(MalformedUtf8, EverySequenceIsRefused) {
  CQuenXMLData2 tree("<r>before</r>");
  CQuenXMLDocument2 document;
  document.LoadXML("<r>before</r>");
  for (const MalformedCase& row : kMalformed) {
    SCOPED_TRACE(row.what);
    for (const std::string& bytes : {row.bytes, "a" + row.bytes, row.bytes + "a"}) {
      EXPECT_EQ(Outcome([&] { tree.SetData(bytes, "/r"); }), "narrow");
      EXPECT_EQ(Outcome([&] { tree.AppendSubset("<n>" + bytes + "</n>", "/r"); }), "narrow");
      EXPECT_EQ(Outcome([&] { document.LoadXML("<n>" + bytes + "</n>"); }), "narrow");
      EXPECT_EQ(Outcome([&] { CQuenXMLUtils2::IsValidElementName(bytes); }), "wide");
    }
  }
  EXPECT_EQ(Whole<NarrowTypes>(tree), "<r>before</r>");
  EXPECT_EQ(document.GetSubset(), "<r>before</r>");
}

template <class Object>
struct ArgumentCase {
  const char* what;
  void (*call)(Object& object, const std::string& bad);
  const char* arrives = "narrow";
};

unsigned char bytes[4] = {1, 2, 3, 4};
std::uint32_t length = 4;
double aDouble = 1;
float aFloat = 1;
std::uint32_t anUnsigned = 1;
std::int32_t aLong = 1;
std::string text = "unset";

using Tree = CQuenXMLData2;
const ArgumentCase<Tree> kTreeArguments[] = {
    {"constructor", [](Tree&, const std::string& bad) { Tree made(bad); }},
    {"operator=", [](Tree& t, const std::string& bad) { t = bad; }},
    {"RemoveData", [](Tree& t, const std::string& bad) { t.RemoveData(bad); }},
    {"RemoveAttr name", [](Tree& t, const std::string& bad) { t.RemoveAttr(bad, "/r"); }},
    {"RemoveAttr path", [](Tree& t, const std::string& bad) { t.RemoveAttr("x", bad); }},
    {"AddRootNode", [](Tree& t, const std::string& bad) { t.AddRootNode(bad); }},
    {"AddData double", [](Tree& t, const std::string& bad) { t.AddData(1.0, bad); }},
    {"AddData float", [](Tree& t, const std::string& bad) { t.AddData(1.0f, bad); }},
    {"AddData unsigned", [](Tree& t, const std::string& bad) { t.AddData(anUnsigned, bad); }},
    {"AddData long", [](Tree& t, const std::string& bad) { t.AddData(aLong, bad); }},
    {"AddData value", [](Tree& t, const std::string& bad) { t.AddData(bad, "/r/n"); }},
    {"AddData path", [](Tree& t, const std::string& bad) { t.AddData("v", bad); }},
    {"AddBinaryData", [](Tree& t, const std::string& bad) { t.AddBinaryData(bad, "/r/n"); }},
    {"AddBinaryData path", [](Tree& t, const std::string& bad) { t.AddBinaryData("v", bad); }},
    {"AddBinaryData bytes",
     [](Tree& t, const std::string& bad) { t.AddBinaryData(bytes, 4, bad); }},
    {"AddChildNode", [](Tree& t, const std::string& bad) { t.AddChildNode(bad, "/r"); }},
    {"AddChildNode path", [](Tree& t, const std::string& bad) { t.AddChildNode("n", bad); }},
    {"AddSiblingNode", [](Tree& t, const std::string& bad) { t.AddSiblingNode(bad, "/r/a"); }},
    {"AddSiblingNode path", [](Tree& t, const std::string& bad) { t.AddSiblingNode("n", bad); }},
    {"SetData double", [](Tree& t, const std::string& bad) { t.SetData(1.0, bad); }},
    {"SetData float", [](Tree& t, const std::string& bad) { t.SetData(1.0f, bad); }},
    {"SetData unsigned", [](Tree& t, const std::string& bad) { t.SetData(anUnsigned, bad); }},
    {"SetData long", [](Tree& t, const std::string& bad) { t.SetData(aLong, bad); }},
    {"SetData value", [](Tree& t, const std::string& bad) { t.SetData(bad, "/r"); }},
    {"SetData path", [](Tree& t, const std::string& bad) { t.SetData("v", bad); }},
    {"SetBinaryData", [](Tree& t, const std::string& bad) { t.SetBinaryData(bad, "/r"); }},
    {"SetBinaryData path", [](Tree& t, const std::string& bad) { t.SetBinaryData("v", bad); }},
    {"SetBinaryData bytes",
     [](Tree& t, const std::string& bad) { t.SetBinaryData(bytes, 4, bad); }},
    {"SetAttr double", [](Tree& t, const std::string& bad) { t.SetAttr(bad, 1.0, "/r"); }},
    {"SetAttr double path", [](Tree& t, const std::string& bad) { t.SetAttr("x", 1.0, bad); }},
    {"SetAttr float", [](Tree& t, const std::string& bad) { t.SetAttr(bad, 1.0f, "/r"); }},
    {"SetAttr float path", [](Tree& t, const std::string& bad) { t.SetAttr("x", 1.0f, bad); }},
    {"SetAttr unsigned", [](Tree& t, const std::string& bad) { t.SetAttr(bad, anUnsigned, "/r"); }},
    {"SetAttr unsigned path",
     [](Tree& t, const std::string& bad) { t.SetAttr("x", anUnsigned, bad); }},
    {"SetAttr long", [](Tree& t, const std::string& bad) { t.SetAttr(bad, aLong, "/r"); }},
    {"SetAttr long path", [](Tree& t, const std::string& bad) { t.SetAttr("x", aLong, bad); }},
    {"SetAttr name", [](Tree& t, const std::string& bad) { t.SetAttr(bad, "v", "/r"); }},
    {"SetAttr value", [](Tree& t, const std::string& bad) { t.SetAttr("x", bad, "/r"); }},
    {"SetAttr path", [](Tree& t, const std::string& bad) { t.SetAttr("x", "v", bad); }},
    {"AppendSubset", [](Tree& t, const std::string& bad) { t.AppendSubset(bad, "/r"); }},
    {"AppendSubset path", [](Tree& t, const std::string& bad) { t.AppendSubset("<n/>", bad); }},
    {"AppendSubset tree",
     [](Tree& t, const std::string& bad) { t.AppendSubset(Tree("<n/>"), bad); }},
    {"GetSubset tree", [](Tree& t, const std::string& bad) { t.GetSubset(t, bad); }},
    {"GetSubset", [](Tree& t, const std::string& bad) { t.GetSubset(text, bad); }},
    {"GetFormattedSubset",
     [](Tree& t, const std::string& bad) { t.GetFormattedSubset(text, bad); }},
    {"GetData double", [](Tree& t, const std::string& bad) { t.GetData(aDouble, bad); }},
    {"GetData float", [](Tree& t, const std::string& bad) { t.GetData(aFloat, bad); }},
    {"GetData unsigned", [](Tree& t, const std::string& bad) { t.GetData(anUnsigned, bad); }},
    {"GetData long", [](Tree& t, const std::string& bad) { t.GetData(aLong, bad); }},
    {"GetData", [](Tree& t, const std::string& bad) { t.GetData(text, bad); }},
    {"GetBinaryData", [](Tree& t, const std::string& bad) { t.GetBinaryData(text, bad); }},
    {"GetBinaryData bytes",
     [](Tree& t, const std::string& bad) { t.GetBinaryData(bytes, length, bad); }},
    {"GetAttr double", [](Tree& t, const std::string& bad) { t.GetAttr(bad, aDouble, "/r"); }},
    {"GetAttr double path", [](Tree& t, const std::string& bad) { t.GetAttr("x", aDouble, bad); }},
    {"GetAttr float", [](Tree& t, const std::string& bad) { t.GetAttr(bad, aFloat, "/r"); }},
    {"GetAttr float path", [](Tree& t, const std::string& bad) { t.GetAttr("x", aFloat, bad); }},
    {"GetAttr unsigned", [](Tree& t, const std::string& bad) { t.GetAttr(bad, anUnsigned, "/r"); }},
    {"GetAttr unsigned path",
     [](Tree& t, const std::string& bad) { t.GetAttr("x", anUnsigned, bad); }},
    {"GetAttr long", [](Tree& t, const std::string& bad) { t.GetAttr(bad, aLong, "/r"); }},
    {"GetAttr long path", [](Tree& t, const std::string& bad) { t.GetAttr("x", aLong, bad); }},
    {"GetAttr", [](Tree& t, const std::string& bad) { t.GetAttr(bad, text, "/r"); }},
    {"GetAttr path", [](Tree& t, const std::string& bad) { t.GetAttr("x", text, bad); }},
    {"CursorTo", [](Tree& t, const std::string& bad) { t.CursorTo(bad); }},
    {"GetNumChildren", [](Tree& t, const std::string& bad) { t.GetNumChildren(anUnsigned, bad); }},
    {"HasChildren", [](Tree& t, const std::string& bad) { t.HasChildren(bad); }},
    {"HasChildElement", [](Tree& t, const std::string& bad) { t.HasChildElement(bad); }},
    {"HasAttr", [](Tree& t, const std::string& bad) { t.HasAttr(bad, "/r"); }, "wide"},
    {"HasAttr path", [](Tree& t, const std::string& bad) { t.HasAttr("x", bad); }, "wide"},
    {"PathExists", [](Tree& t, const std::string& bad) { t.PathExists(bad); }, "wide"},
    {"ReadFromFile", [](Tree& t, const std::string& bad) { t.ReadFromFile(bad); }},
    {"WriteToFile", [](Tree& t, const std::string& bad) { t.WriteToFile(bad, 1); }},
    {"WriteToFileBinary", [](Tree& t, const std::string& bad) { t.WriteToFileBinary(bad, 1); }},
    {"CreateNodes", [](Tree& t, const std::string& bad) { t.CreateNodes(bad); }},
    {"AddProcessingInstruction target",
     [](Tree& t, const std::string& bad) { t.AddProcessingInstruction(bad, "d", "/r"); }},
    {"AddProcessingInstruction data",
     [](Tree& t, const std::string& bad) { t.AddProcessingInstruction("t", bad, "/r"); }},
    {"AddProcessingInstruction path",
     [](Tree& t, const std::string& bad) { t.AddProcessingInstruction("t", "d", bad); }},
    {"RemoveProcessingInstruction",
     [](Tree& t, const std::string& bad) { t.RemoveProcessingInstruction(bad, "/r"); }},
    {"RemoveProcessingInstruction path",
     [](Tree& t, const std::string& bad) { t.RemoveProcessingInstruction("t", bad); }},
    {"GetProcessingInstruction",
     [](Tree& t, const std::string& bad) { t.GetProcessingInstruction(text, text, bad); }},
    {"AddComment", [](Tree& t, const std::string& bad) { t.AddComment(bad, "/r"); }},
    {"AddComment path", [](Tree& t, const std::string& bad) { t.AddComment("c", bad); }},
    {"RemoveComment", [](Tree& t, const std::string& bad) { t.RemoveComment(bad); }},
    {"GetComment", [](Tree& t, const std::string& bad) { t.GetComment(text, bad); }},
    {"AddCDATA", [](Tree& t, const std::string& bad) { t.AddCDATA(bad, "/r"); }},
    {"AddCDATA path", [](Tree& t, const std::string& bad) { t.AddCDATA("c", bad); }},
    {"GetCDATA", [](Tree& t, const std::string& bad) { t.GetCDATA(text, bad); }},
    {"RemoveCDATA", [](Tree& t, const std::string& bad) { t.RemoveCDATA(bad); }},
    {"AddChildNodeNS", [](Tree& t, const std::string& bad) { t.AddChildNodeNS(bad, "u", "/r"); }},
    {"AddChildNodeNS uri",
     [](Tree& t, const std::string& bad) { t.AddChildNodeNS("n", bad, "/r"); }},
    {"AddChildNodeNS path",
     [](Tree& t, const std::string& bad) { t.AddChildNodeNS("n", "u", bad); }},
    {"AppendEncryptedSubset key",
     [](Tree& t, const std::string& bad) { t.AppendEncryptedSubset("", bad, "/r"); }},
    {"AppendEncryptedSubset path",
     [](Tree& t, const std::string& bad) { t.AppendEncryptedSubset("", "k", bad); }},
    {"GetEncryptedSubset key",
     [](Tree& t, const std::string& bad) { t.GetEncryptedSubset(text, bad, "/r"); }},
    {"GetEncryptedSubset path",
     [](Tree& t, const std::string& bad) { t.GetEncryptedSubset(text, "k", bad); }},
    {"WriteToEncryptedFile key",
     [](Tree& t, const std::string& bad) { t.WriteToEncryptedFile("f", 1, bad); }},
    {"ReadFromEncryptedFile",
     [](Tree& t, const std::string& bad) { t.ReadFromEncryptedFile(bad, "k"); }},
    {"ReadFromEncryptedFile key",
     [](Tree& t, const std::string& bad) { t.ReadFromEncryptedFile("f", bad); }},
};

using Doc = CQuenXMLDocument2;
CQuenXMLElement2 Root(Doc& inDocument) { return inDocument.GetDocumentElement(); }
const ArgumentCase<Doc> kDocumentArguments[] = {
    {"SetValue", [](Doc& d, const std::string& bad) { Root(d).SetValue(bad); }},
    {"SetPrefix", [](Doc& d, const std::string& bad) { Root(d).SetPrefix(bad); }},
    {"AppendSubset", [](Doc& d, const std::string& bad) { Root(d).AppendSubset(bad); }},
    {"SelectNodes", [](Doc& d, const std::string& bad) { d.SelectNodes(bad); }},
    {"SelectSingleNode", [](Doc& d, const std::string& bad) { d.SelectSingleNode(bad); }},
    {"GetAttribute", [](Doc& d, const std::string& bad) { Root(d).GetAttribute(bad); }},
    {"SetAttribute", [](Doc& d, const std::string& bad) { Root(d).SetAttribute(bad, "v"); }},
    {"SetAttribute value", [](Doc& d, const std::string& bad) { Root(d).SetAttribute("x", bad); }},
    {"RemoveAttribute", [](Doc& d, const std::string& bad) { Root(d).RemoveAttribute(bad); }},
    {"AddChildNode", [](Doc& d, const std::string& bad) { Root(d).AddChildNode(bad); }},
    {"insert", [](Doc& d, const std::string& bad) { Root(d).insert(Root(d).begin(), bad); }},
    {"find", [](Doc& d, const std::string& bad) { Root(d).find(bad); }},
    {"attr_find", [](Doc& d, const std::string& bad) { Root(d).attr_find(bad); }},
    {"CreateElement", [](Doc& d, const std::string& bad) { d.CreateElement(bad); }},
    {"CreateComment", [](Doc& d, const std::string& bad) { d.CreateComment(bad); }},
    {"CreateCDATA", [](Doc& d, const std::string& bad) { d.CreateCDATA(bad); }},
    {"CreatePI", [](Doc& d, const std::string& bad) { d.CreatePI(bad, "d"); }},
    {"CreatePI data", [](Doc& d, const std::string& bad) { d.CreatePI("t", bad); }},
    {"Load", [](Doc& d, const std::string& bad) { d.Load(bad); }},
    {"LoadXML", [](Doc& d, const std::string& bad) { d.LoadXML(bad); }},
    {"SetExternalSchemaLocation",
     [](Doc& d, const std::string& bad) { d.SetExternalSchemaLocation(bad); }},
    {"SetExternalNoNamespaceSchemaLocation",
     [](Doc& d, const std::string& bad) { d.SetExternalNoNamespaceSchemaLocation(bad); }},
    {"CreateElementNS", [](Doc& d, const std::string& bad) { d.CreateElementNS(bad, "u"); }},
    {"CreateElementNS uri", [](Doc& d, const std::string& bad) { d.CreateElementNS("n", bad); }},
    {"WriteToEncryptedFile key",
     [](Doc& d, const std::string& bad) { d.WriteToEncryptedFile("f", 1, bad); }},
    {"LoadXMLEncrypted key", [](Doc& d, const std::string& bad) { d.LoadXMLEncrypted("", bad); }},
    {"LoadEncrypted", [](Doc& d, const std::string& bad) { d.LoadEncrypted(bad, "k"); }},
    {"LoadEncrypted key", [](Doc& d, const std::string& bad) { d.LoadEncrypted("f", bad); }},
    {"GetEncryptedSubset", [](Doc& d, const std::string& bad) { d.GetEncryptedSubset(bad); },
     "wide"},
    {"AppendEncryptedSubset key",
     [](Doc& d, const std::string& bad) { d.AppendEncryptedSubset("", bad); }},
};

constexpr const char* kBefore = "<r x=\"1\"><a/><!--c--><?t d?></r>";

TEST(MalformedUtf8, EveryArgumentOfATreeIsCheckedFirst) {
  for (const ArgumentCase<Tree>& row : kTreeArguments) {
    SCOPED_TRACE(row.what);
    for (const char* bad : {"/r\xc3", "\xed\xa0\x80", "\xc0\xaf"}) {
      Tree tree(kBefore);
      text = "unset";
      EXPECT_EQ(Outcome([&] { row.call(tree, bad); }), row.arrives);
      EXPECT_EQ(text, "unset");
      EXPECT_EQ(Whole<NarrowTypes>(tree), kBefore);
      EXPECT_EQ(tree.GetPath(), "/r");
    }
  }
}

TEST(MalformedUtf8, EveryArgumentOfADocumentIsCheckedFirst) {
  for (const ArgumentCase<Doc>& row : kDocumentArguments) {
    SCOPED_TRACE(row.what);
    Doc document;
    document.LoadXML(kBefore);
    EXPECT_EQ(Outcome([&] { row.call(document, "r\xc3"); }), row.arrives);
    EXPECT_EQ(document.GetSubset(), kBefore);
  }
}

// By hand from Unicode's table 3-6, and not by the library's own transcoding.
void AppendSequence(std::uint32_t inCodePoint, std::string& outBytes) {
  const auto put = [&](std::uint32_t byte) { outBytes += static_cast<char>(byte); };
  const auto trail = [&](std::uint32_t shift) { put(0x80 | ((inCodePoint >> shift) & 0x3F)); };
  if (inCodePoint < 0x80) {
    put(inCodePoint);
  } else if (inCodePoint < 0x800) {
    put(0xC0 | (inCodePoint >> 6));
    trail(0);
  } else if (inCodePoint < 0x10000) {
    put(0xE0 | (inCodePoint >> 12));
    trail(6);
    trail(0);
  } else {
    put(0xF0 | (inCodePoint >> 18));
    trail(12);
    trail(6);
    trail(0);
  }
}

bool IsScalarValue(std::uint32_t inCodePoint) {
  return inCodePoint < 0xD800 || (inCodePoint > 0xDFFF && inCodePoint < 0x110000);
}

// Char of XML 1.0, 2.2, but for the carriage return, which parsing turns into a line feed.
bool SurvivesParsing(std::uint32_t inCodePoint) {
  if (inCodePoint < 0x20) return inCodePoint == 0x9 || inCodePoint == 0xA;
  return inCodePoint != 0xFFFE && inCodePoint != 0xFFFF;
}

TEST(Utf8, EveryCodePointComesBack) {
  CQuenXMLData2 tree("<r/>");
  CQuenXMLDocument2 document;
  document.LoadXML("<r/>");
  CQuenXMLElement2 root = document.GetDocumentElement();
  for (std::uint32_t first = 0; first < 0x110000; first += 0x100) {
    std::string all;
    std::string parsed;
    for (std::uint32_t point = first; point < first + 0x100; ++point) {
      if (point == 0 || !IsScalarValue(point)) continue;
      AppendSequence(point, all);
      if (SurvivesParsing(point)) AppendSequence(point, parsed);
    }
    tree.SetData(all, "");
    std::string value;
    tree.GetData(value, "");
    ASSERT_EQ(value, all) << first;
    tree.SetAttr("x", all, "/r");
    tree.GetAttr("x", value, "");
    ASSERT_EQ(value, all) << first;
    root.SetValue(all);
    ASSERT_EQ(root.GetValue(), all) << first;

    tree.SetData(parsed, "");
    tree.RemoveAttr("x", "");
    tree.GetSubset(value, "/");
    CQuenXMLData2 again(value);
    again.GetData(value, "/r");
    ASSERT_EQ(value, parsed) << first;
  }
}

TEST(Utf8, TextEndsAtItsFirstZeroByte) {
  CQuenXMLData2 tree(std::string("<r/>\0<", 6));
  tree.SetData(std::string("ab\0cd", 5), std::string("/r\0[", 4));
  EXPECT_EQ(Whole<NarrowTypes>(tree), "<r>ab</r>");
}

}  // namespace
}  // namespace quen::test

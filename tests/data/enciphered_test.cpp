// SPDX-License-Identifier: Apache-2.0
//
// The enciphered forms of trees and documents: what is enciphered, what comes back, and where a
// failure of the cipher arrives. The form itself is the cipher's own test.
#include <functional>

#include <quenxml2/cipher.h>

#include "tests/data/rows.h"
#include "tests/support/temp_dir.h"

namespace quen::test {
namespace {

constexpr char kKey[] =
    "quen-raw-key:000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f";
constexpr char kOther[] =
    "quen-raw-key:ff0102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f";
// Two units for a character beyond the 16 bits, and text that is longer in UTF-8.
constexpr char kXml[] = "<a><b k=\"\xc3\xa9\">\xf0\x9f\x94\x91</b><c/></a>";
constexpr char kBranch[] = "<b k=\"\xc3\xa9\">\xf0\x9f\x94\x91</b>";

template <class W>
class Enciphered : public DataTest<W> {
 public:
  using D = typename W::Data;
  using Doc = typename W::Document;
  using S = typename W::String;

  static std::string Subset(D& ioTree, const char* inKey, const char* inPath) {
    std::string enciphered = "what was there";
    ioTree.GetEncryptedSubset(enciphered, W::Text(inKey), W::Text(inPath));
    return enciphered;
  }
  static Doc Parsed(const char* inXml) {
    Doc document;
    document.LoadXML(W::Text(inXml));
    return document;
  }
};
TYPED_TEST_SUITE(Enciphered, Widths, WidthNames);

TYPED_TEST(Enciphered, ComesBackUnderTheSameKey) {
  using W = TypeParam;
  using F = TestFixture;
  const TempDir dir;
  const auto key = W::Text(kKey);
  typename F::D tree(W::Text(kXml));

  typename F::D target(W::Text("<o><p/></o>"));
  target.AppendEncryptedSubset(F::Subset(tree, kKey, "/a/b"), key, W::Text("/o/p"));
  EXPECT_EQ(Whole<W>(target), "<o><p>" + std::string(kBranch) + "</p></o>");
  tree.CursorTo(W::Text("c"));
  target.AppendEncryptedSubset(F::Subset(tree, kKey, ""), key, W::Text("/o"));
  EXPECT_EQ(Whole<W>(target), "<o><p>" + std::string(kBranch) + "</p><c/></o>");

  tree.WriteToEncryptedFile(dir / "tree", 0, key);
  EXPECT_EQ(TempDir::Bytes(dir / "tree").find("<a><b k="), std::string::npos);
  target.ReadFromEncryptedFile(W::Text(dir / "tree"), key);
  EXPECT_EQ(Whole<W>(target), kXml);
  EXPECT_EQ(W::Utf8(target.GetPath()), "/a");

  typename F::Doc document = F::Parsed(kXml);
  document.WriteToEncryptedFile(dir / "tree", 1, key);
  typename F::Doc back;
  back.LoadEncrypted(W::Text(dir / "tree"), key);
  EXPECT_EQ(W::Utf8(back.GetSubset()), kXml);
  back.LoadXMLEncrypted(F::Subset(tree, kKey, "/a/b"), key);
  EXPECT_EQ(W::Utf8(back.GetSubset()), kBranch);
  back.LoadXML(W::Text("<o/>"));
  back.GetDocumentElement().AppendSubset(W::Text("<p/>"));
  document.LoadXMLEncrypted(back.GetEncryptedSubset(key), key);
  EXPECT_EQ(W::Utf8(document.GetSubset()), "<o><p/></o>");
}

// The text of an enciphered file has a declaration in front, that of an enciphered string has not.
TYPED_TEST(Enciphered, WhatIsEnciphered) {
  using W = TypeParam;
  using F = TestFixture;
  const TempDir dir;
  CQuenAESW cipher;
  cipher.SetKey(WideTypes::Text(kKey));
  typename F::D tree(W::Text("<a/>"));
  tree.WriteToEncryptedFile(dir / "f", 0, W::Text(kKey));
  EXPECT_EQ(WideTypes::Utf8(cipher.DecryptFileToBuffer(WideTypes::Text(dir / "f"))),
            "<?xml version='1.0' encoding='utf-8'?><a/>");
  EXPECT_EQ(WideTypes::Utf8(cipher.DecryptString(F::Subset(tree, kKey, "/"))), "<a/>");
  typename F::Doc document = F::Parsed("<a/>");
  EXPECT_EQ(WideTypes::Utf8(cipher.DecryptString(document.GetEncryptedSubset(W::Text(kKey)))),
            "<a/>");

  // Without a text the cipher is not asked, not even whether the key is one.
  typename F::D empty;
  EXPECT_EQ(F::Subset(empty, "quen-raw-key:1", "/"), "");
  EXPECT_EQ(typename F::Doc().GetEncryptedSubset(W::Text("quen-raw-key:1")), "");
}

TYPED_TEST(Enciphered, Failures) {
  using W = TypeParam;
  using F = TestFixture;
  using Tree = typename F::D;
  using Document = typename F::Doc;
  const TempDir dir;
  const auto key = W::Text(kKey);
  const auto other = W::Text(kOther);
  Tree source(W::Text(kXml));
  const std::string good = F::Subset(source, kKey, "/");
  source.WriteToEncryptedFile(dir / "f", 0, key);
  CQuenAESW cipher;
  cipher.SetKey(WideTypes::Text(kKey));
  const std::string noXml = cipher.EncryptString(u"plain");
  std::string changed = good;
  changed[100] = static_cast<char>(changed[100] ^ 1);
  const auto none = W::Text(dir / "none");
  const auto file = W::Text(dir / "f");

  const struct {
    const char* what;
    std::function<void(Tree&, Document&)> run;
    std::string outcome;
  } kRows[] = {
      {"string, wrong key",
       [&](Tree& t, Document&) { t.AppendEncryptedSubset(good, other, W::Text("")); },
       "2009 Wrong key or altered header @ CQuenAESW::DecryptString"},
      {"string, changed",
       [&](Tree& t, Document&) { t.AppendEncryptedSubset(changed, key, W::Text("")); },
       "2010 Enciphered text was altered @ CQuenAESW::DecryptString"},
      {"string, bad key",
       [&](Tree& t, Document&) {
         t.AppendEncryptedSubset(good, W::Text("quen-raw-key:1"), W::Text(""));
       },
       "2002 Malformed raw key @ CQuenAESW::SetKey"},
      {"string, no XML",
       [&](Tree& t, Document&) { t.AppendEncryptedSubset(noXml, key, W::Text("")); }, "1009"},
      {"string, empty", [&](Tree& t, Document&) { t.AppendEncryptedSubset("", key, W::Text("")); },
       "1009"},
      {"string, no such path",
       [&](Tree& t, Document&) { t.AppendEncryptedSubset(good, key, W::Text("z")); },
       kNoPath + "GetElementFromXPath"},
      {"subset, no such path",
       [&](Tree& t, Document&) {
         std::string enciphered = "x";
         try {
           t.GetEncryptedSubset(enciphered, key, W::Text("z"));
         } catch (...) {
           EXPECT_EQ(enciphered, "");
           throw;
         }
       },
       kNoPath + "GetSubset"},
      {"file, wrong key", [&](Tree& t, Document&) { t.ReadFromEncryptedFile(file, other); },
       "2009 Wrong key or altered header @ CQuenAESW::DecryptFileToBuffer"},
      {"file, none", [&](Tree& t, Document&) { t.ReadFromEncryptedFile(none, key); },
       "2013 Failed to read file: No such file or directory @ CQuenAESW::DecryptFileToBuffer"},
      {"file, exists", [&](Tree& t, Document&) { t.WriteToEncryptedFile(dir / "f", 0, key); },
       "2012 File already exists @ CQuenXMLDocument2w::WriteToEncryptedFile()"},
      {"document, wrong key", [&](Tree&, Document& d) { d.LoadXMLEncrypted(good, other); },
       "2009 Wrong key or altered header @ CQuenAESW::DecryptString"},
      {"document, empty", [&](Tree&, Document& d) { d.LoadXMLEncrypted("", key); }, "1009"},
      {"document, no XML", [&](Tree&, Document& d) { d.AppendEncryptedSubset(noXml, key); },
       "1009"},
      {"document, file with a wrong key", [&](Tree&, Document& d) { d.LoadEncrypted(file, other); },
       "2009 Wrong key or altered header @ CQuenAESW::DecryptFileToBuffer"},
      {"document, file exists",
       [&](Tree&, Document& d) { d.WriteToEncryptedFile(dir / "f", 0, key); },
       "2012 File already exists @ CQuenXMLDocument2w::WriteToEncryptedFile()"},
  };
  const std::string fileBefore = TempDir::Bytes(dir / "f");
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.what);
    Tree tree(W::Text(kXml));
    tree.CursorTo(W::Text("c"));
    Document document = F::Parsed(kXml);
    const std::string failure = FailureAt<W>([&] { row.run(tree, document); });
    // The parser's own words follow a 1009.
    EXPECT_EQ(row.outcome == "1009" ? failure.substr(0, 4) : failure, row.outcome);
    EXPECT_EQ(Whole<W>(tree), kXml);
    EXPECT_EQ(W::Utf8(tree.GetPath()), "/a/c");
    EXPECT_EQ(W::Utf8(document.GetSubset()), kXml);
    EXPECT_EQ(failure.find("0102030405"), std::string::npos);
  }
  EXPECT_EQ(TempDir::Bytes(dir / "f"), fileBefore);
}

}  // namespace
}  // namespace quen::test

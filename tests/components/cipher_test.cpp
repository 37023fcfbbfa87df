// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/cipher.h>

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "components/enciphered_form.h"
#include "tests/components/cipher_support.h"

namespace quen::testing {
namespace {

using namespace std::string_literals;

std::string FromHex(std::string_view inDigits) {
  std::string bytes;
  for (std::size_t i = 0; i < inDigits.size(); i += 2)
    bytes += static_cast<char>(std::stoi(std::string(inDigits.substr(i, 2)), nullptr, 16));
  return bytes;
}

// All three were made by reference_cipher.py with the openssl command line program.
const std::string kRawExample = FromHex(
    "5141455301020000000000001800000000000000202122232425262728292a2b"
    "2c2d2e2f303132333435363738393a3b3c3d3e3f404142434445464748494a4b"
    "0f3a18165619c9e574927a6def4e32f096940aba7c96aca0abfd2a4736e6e2d4"
    "7008dc9542282d0bb8a1c5e6f257f36e7029668065ba164bbd3d82a06486ba3f"
    "39a1558246add7cc");
const std::u16string kRawExampleText = u"<a>\u00e9\U0001F600\xd800\0</a>"s;
// N 1024, r 8, p 2.
const std::string kPasswordExample = FromHex(
    "5141455301010a08020000001000000000000000202122232425262728292a2b"
    "2c2d2e2f303132333435363738393a3b3c3d3e3f404142434445464748494a4b"
    "05f02c8f6f204cf8091c4e63985cdc0427811b3118b1045837e31a2828f3e5bb"
    "507410f0f7a7053aa6177677380f2c7c2059e3ab84d19342dbc2801b5aa4040e");
// Under the empty password, with N 2, r 1, p 1.
const std::string kEmptyPasswordExample = FromHex(
    "5141455301010101010000001000000000000000202122232425262728292a2b"
    "2c2d2e2f303132333435363738393a3b3c3d3e3f404142434445464748494a4b"
    "6e55d39865d01c7414da97533b64aefd1d1c5eaa32bded4fdbd08b91870ef782"
    "05311f4c1c4e0105b561691bb73556ac4187ff09e0c68f0dcc1ed730111dad03");
constexpr char16_t kExamplePassword[] = u"p\u00e4ss";

std::u16string Deciphered(const std::u16string& inKey, const std::string& inData) {
  CQuenAESW cipher;
  cipher.SetKey(inKey);
  return cipher.DecryptString(inData);
}

std::string Enciphered(const std::u16string& inKey, const std::u16string& inText) {
  CQuenAESW cipher;
  cipher.SetKey(inKey);
  return cipher.EncryptString(inText);
}

unsigned DecipherCode(const std::u16string& inKey, const std::string& inData) {
  return CryptoCodeOf([&] { Deciphered(inKey, inData); });
}

TEST(Cipher, ReadsTheExamplesOfAnotherProgram) {
  EXPECT_EQ(Deciphered(kRawKey, kRawExample), kRawExampleText);
  EXPECT_EQ(Deciphered(kExamplePassword, kPasswordExample), u"<order/>");
  EXPECT_EQ(Deciphered(u"", kEmptyPasswordExample), u"<order/>");
}

TEST(Cipher, RandomTextsComeBack) {
  CQuenAESW cipher;
  cipher.SetKey(kRawKey);
  const auto expectReturn = [&](const std::u16string& inText) {
    const std::string data = cipher.EncryptString(inText);
    ASSERT_EQ(data.size(), 112 + 2 * inText.size());
    ASSERT_TRUE(cipher.DecryptString(data) == inText) << inText.size() << " units";
  };
  std::mt19937 random(5);
  std::uniform_int_distribution<int> anyUnit(0, 0xFFFF);
  std::vector<std::size_t> lengths = {0, 5 * 1024 * 1024};
  for (std::size_t length = 1; length < 70; ++length) lengths.push_back(length);
  for (std::size_t length = 100; length < 300000; length = length * 3 + 1)
    lengths.push_back(length);
  for (const std::size_t length : lengths) {
    std::u16string text(length, u'\0');
    for (char16_t& unit : text) unit = static_cast<char16_t>(anyUnit(random));
    expectReturn(text);
  }
  std::u16string everyUnit;
  for (unsigned unit = 0; unit < 0x10000; ++unit) everyUnit += static_cast<char16_t>(unit);
  expectReturn(everyUnit);
}

TEST(Cipher, PasswordsPayTheFullCost) {
  const std::u16string password = u"\xdc00\0p"s;
  const std::string data = Enciphered(password, u"<order/>");
  // Password, then N = 2^17, r = 8, p = 1.
  EXPECT_EQ(data.substr(0, 12), "QAES\x01\x01\x11\x08\x01\0\0\0"s);
  EXPECT_EQ(Deciphered(password, data), u"<order/>");
}

TEST(Cipher, OneTextGivesOtherBytesEachTime) {
  CQuenAESW cipher;
  cipher.SetKey(kRawKey);
  std::set<std::string> salts, nonces, contents;
  for (int i = 0; i < 50; ++i) {
    const std::string data = cipher.EncryptString(u"the same text");
    salts.insert(data.substr(20, 32));
    nonces.insert(data.substr(52, 12));
    contents.insert(data.substr(96));
  }
  EXPECT_EQ(salts.size(), 50U);
  EXPECT_EQ(nonces.size(), 50U);
  EXPECT_EQ(contents.size(), 50U);
}

struct Area {
  std::size_t begin;
  std::size_t end;
  std::set<unsigned> codes;
};

void ExpectFailure(const std::u16string& inKey, const std::string& inData, const Area& inArea,
                   const std::string& inWhat) {
  const unsigned code = DecipherCode(inKey, inData);
  EXPECT_EQ(inArea.codes.count(code), 1U) << inWhat << " gives " << code;
}

TEST(Cipher, EveryFlippedBitFails) {
  const Area kAreas[] = {
      {0, 4, {2004}},                // magic
      {4, 5, {2005}},                // version
      {5, 12, {2006}},               // kind, cost, reserved
      {12, 20, {2006, 2007, 2008}},  // length
      {20, 52, {2009}},              // salt
      {52, 64, {2010}},              // nonce
      {64, 96, {2009}},              // key check
      {96, 136, {2010}},             // units and tag
  };
  for (const Area& area : kAreas)
    for (std::size_t at = area.begin; at < area.end; ++at)
      for (unsigned bit = 0; bit < 8; ++bit) {
        std::string data = kRawExample;
        data[at] = static_cast<char>(static_cast<unsigned char>(data[at]) ^ (1U << bit));
        ExpectFailure(kRawKey, data, area, "byte " + std::to_string(at));
      }
  EXPECT_EQ(kRawExample.size(), 136U);
}

TEST(Cipher, EveryChangedByteUnderAPasswordFails) {
  const Area kAreas[] = {
      {0, 4, {2004}},
      {4, 5, {2005}},
      {5, 9, {2006, 2009}},
      {9, 12, {2006}},
      {12, 20, {2006, 2007, 2008}},
      {20, 52, {2009}},
      {52, 64, {2010}},
      {64, 96, {2009}},
      {96, 128, {2010}},
  };
  for (const Area& area : kAreas)
    for (std::size_t at = area.begin; at < area.end; ++at) {
      std::string data = kPasswordExample;
      data[at] = static_cast<char>(static_cast<unsigned char>(data[at]) ^ (1U << at % 8));
      ExpectFailure(kExamplePassword, data, area, "byte " + std::to_string(at));
    }
  EXPECT_EQ(kPasswordExample.size(), 128U);
}

TEST(Cipher, CutAndLengthenedTextsFail) {
  EXPECT_EQ(DecipherCode(kRawKey, ""), 2003U);
  for (std::size_t size = 1; size < kRawExample.size(); ++size)
    EXPECT_EQ(DecipherCode(kRawKey, kRawExample.substr(0, size)), 2007U) << size << " bytes";
  for (const std::string& tail : {"\0"s, "\0\0"s, kRawExample})
    EXPECT_EQ(DecipherCode(kRawKey, kRawExample + tail), 2008U) << tail.size() << " more";

  // A length that was made to fit the cut is found by the tag.
  std::string fitted = kRawExample;
  fitted.erase(96 + 22, 2);
  fitted[12] = 22;
  EXPECT_EQ(DecipherCode(kRawKey, fitted), 2010U);
  // Half a unit is told before anything is deciphered.
  fitted.pop_back();
  fitted[12] = 21;
  EXPECT_EQ(DecipherCode(kRawKey, fitted), 2006U);
  // A file may become shorter while it is read.
  EXPECT_EQ(CryptoCodeOf([] { internal::ParseHeader(kRawExample.substr(0, 95), 136); }), 2007U);
}

TEST(Cipher, OtherFormsAreTold) {
  const std::pair<const char*, unsigned> kCases[] = {
      {"<?xml version='1.0' encoding='utf-8'?><a/>", 2004},
      {"x", 2004},
      {"QAEX", 2004},
      {"QAE", 2007},
      {"QAES", 2007},
      {"QAES\x02", 2005},
      {"QAES\x01", 2007},
  };
  for (const auto& [data, code] : kCases) EXPECT_EQ(DecipherCode(kRawKey, data), code) << data;
}

TEST(Cipher, ForgedParametersAreRefusedUnderEitherKey) {
  struct Case {
    const char* what;
    unsigned char kind, log2Cost, blockSize, lanes;
  };
  const Case kCases[] = {
      {"no such kind", 0, 10, 8, 1},
      {"no such kind", 3, 10, 8, 1},
      {"N of 1", 1, 0, 8, 1},
      {"r of 0", 1, 10, 0, 1},
      {"p of 0", 1, 10, 8, 0},
      {"512 MiB by N", 1, 19, 8, 1},
      {"510 MiB by r", 1, 14, 255, 1},
      {"1 TiB", 1, 30, 8, 1},
      {"N beyond 64 bits", 1, 255, 255, 255},
      {"N beyond 64 bits", 1, 64, 8, 1},
      {"work by p", 1, 17, 8, 5},
      {"N too large for r", 1, 16, 1, 1},
      {"cost of a raw key", 2, 10, 0, 0},
      {"cost of a raw key", 2, 0, 8, 0},
      {"cost of a raw key", 2, 0, 0, 1},
  };
  for (const Case& row : kCases) {
    std::string data = kPasswordExample;
    data[5] = static_cast<char>(row.kind);
    data[6] = static_cast<char>(row.log2Cost);
    data[7] = static_cast<char>(row.blockSize);
    data[8] = static_cast<char>(row.lanes);
    EXPECT_EQ(DecipherCode(kExamplePassword, data), 2006U) << row.what;
    EXPECT_EQ(DecipherCode(kRawKey, data), 2006U) << row.what;
  }
}

TEST(Cipher, WrongKeysFail) {
  std::u16string otherRawKey = kRawKey;
  otherRawKey.back() = u'e';
  const std::string wrong = "2009 DecryptString: Wrong key or altered header";
  const auto failure = [](const std::u16string& inKey, const std::string& inData) {
    return CryptoFailureOf([&] { Deciphered(inKey, inData); });
  };
  EXPECT_EQ(failure(otherRawKey, kRawExample), wrong);
  EXPECT_EQ(failure(u"p\u00e4sS", kPasswordExample), wrong);
  EXPECT_EQ(failure(u"", kPasswordExample), wrong);
  EXPECT_EQ(failure(u"pa\u0308ss", kPasswordExample), wrong) << "the accent decomposed";
  EXPECT_EQ(failure(kRawKey, kPasswordExample), wrong);
  EXPECT_EQ(failure(kExamplePassword, kRawExample), wrong);
}

TEST(Cipher, RawKeysAreReadStrictly) {
  const std::u16string digits = std::u16string(kRawKey).substr(13);
  CQuenAESW cipher;
  cipher.SetKey(u"quen-raw-key:000102030405060708090A0B0C0D0E0F101112131415161718191A1B1C1D1E1F");
  EXPECT_EQ(cipher.DecryptString(kRawExample), kRawExampleText);

  const std::u16string kMalformed[] = {
      u"quen-raw-key",
      u"quen-raw-key:",
      u"quen-raw-key:" + digits.substr(1),
      u"quen-raw-key:" + digits + u"0",
      u"quen-raw-key:" + digits + u" ",
      u"quen-raw-key: " + digits.substr(1),
      u"quen-raw-key:g" + digits.substr(1),
      u"quen-raw-key:/" + digits.substr(1),
      u"quen-raw-key:\uff10" + digits.substr(1),
      u"quen-raw-key" + digits,
      u"quen-raw-key=" + digits,
      u"Quen-Raw-Key:" + digits,
      u"QUEN-RAW-KEY:" + digits,
  };
  for (const std::u16string& key : kMalformed) {
    cipher.SetKey(kRawKey);
    EXPECT_EQ(CryptoFailureOf([&] { cipher.SetKey(key); }), "2002 SetKey: Malformed raw key")
        << std::string(key.begin(), key.end());
    EXPECT_EQ(CryptoCodeOf([&] { cipher.DecryptString(kRawExample); }), 2001U)
        << "the former key serves on";
  }
}

TEST(Cipher, NothingWorksWithoutAKey) {
  const CQuenAESW cipher;
  EXPECT_EQ(CryptoFailureOf([&] { cipher.EncryptString(u"a"); }),
            "2001 EncryptString: No key was set");
  EXPECT_EQ(CryptoFailureOf([&] { cipher.DecryptString(kRawExample); }),
            "2001 DecryptString: No key was set");
  EXPECT_EQ(CryptoFailureOf([&] { cipher.EncryptBufferToFile(u"a", u"/nowhere/a", true); }),
            "2001 EncryptBufferToFile: No key was set");
  EXPECT_EQ(CryptoFailureOf([&] { cipher.DecryptFileToBuffer(u"/nowhere/a"); }),
            "2001 DecryptFileToBuffer: No key was set");
}

}  // namespace
}  // namespace quen::testing

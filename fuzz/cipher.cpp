// SPDX-License-Identifier: Apache-2.0
// Enciphered bytes: no text comes out of any but those that were enciphered under the key.
//
// A password is stretched for half a second and 128 MiB on purpose. A raw key is not, so it is
// tried on every input; passwords only where the header asks for little work, as that of two of the
// seeds does. What a dearer header leads to is the same code with larger numbers, and whether it is
// in bounds is read from every input.
#include <quenxml2/cipher.h>

#include <string>

#include "components/enciphered_form.h"
#include "fuzz/support.h"

namespace quen::fuzz {
namespace {

constexpr std::uint64_t kCheapWork = 1 << 14;  // N * r * p; kPasswordCost is 2^20

struct Known {
  const char16_t* key;
  std::string bytes;
  wstring text;
};

std::string FromHex(std::string_view inDigits) {
  std::string bytes;
  for (std::size_t i = 0; i < inDigits.size(); i += 2)
    bytes += static_cast<char>(std::stoi(std::string(inDigits.substr(i, 2)), nullptr, 16));
  return bytes;
}

// The examples of docs/cipher.md and tests/components/reference_cipher.py.
const Known* KnownTexts(std::size_t& outCount) {
  static const std::string kSalt =
      "202122232425262728292a2b2c2d2e2f303132333435363738393a3b3c3d3e3f404142434445464748494a4b";
  static constexpr char16_t kRaw[] =
      u"quen-raw-key:000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f";
  static const Known kKnown[] = {
      {kRaw,
       FromHex("5141455301020000000000001800000000000000" + kSalt +
               "0f3a18165619c9e574927a6def4e32f096940aba7c96aca0abfd2a4736e6e2d4"
               "7008dc9542282d0bb8a1c5e6f257f36e7029668065ba164bbd3d82a06486ba3f"
               "39a1558246add7cc"),
       wstring(u"<a>\u00e9\U0001F600\xd800\0</a>", 12)},
      {u"p\u00e4ss",
       FromHex("5141455301010a08020000001000000000000000" + kSalt +
               "05f02c8f6f204cf8091c4e63985cdc0427811b3118b1045837e31a2828f3e5bb"
               "507410f0f7a7053aa6177677380f2c7c2059e3ab84d19342dbc2801b5aa4040e"),
       u"<order/>"},
      {u"",
       FromHex("5141455301010101010000001000000000000000" + kSalt +
               "6e55d39865d01c7414da97533b64aefd1d1c5eaa32bded4fdbd08b91870ef782"
               "05311f4c1c4e0105b561691bb73556ac4187ff09e0c68f0dcc1ed730111dad03"),
       u"<order/>"},
  };
  outCount = std::size(kKnown);
  return kKnown;
}

bool IsDear(const std::string& inBytes) {
  try {
    const internal::Header header = internal::ParseHeader(
        std::string_view(inBytes).substr(0, internal::kHeaderSize), inBytes.size());
    return header.kind == internal::KeyKind::kPassword &&
           (std::uint64_t{header.cost.blockSize} * header.cost.lanes << header.cost.log2Cost) >
               kCheapWork;
  } catch (const CQuenCryptoExceptionw&) {
    return false;
  }
}

// The text, and whether there is one; every failure has a code that docs/cipher.md lists.
template <class Operation>
bool Deciphers(wstring& outText, Operation&& inOperation) {
  try {
    outText = inOperation();
    return true;
  } catch (const CQuenCryptoExceptionw& failure) {
    const std::uint32_t code = failure.GetErrorCode();
    Require(code >= 2003 && code <= 2010, "another code", std::to_string(code));
    return false;
  }
}

void Run(const std::string& inBytes) {
  std::size_t count = 0;
  const Known* const known = KnownTexts(count);
  const bool dear = IsDear(inBytes);
  static const MemoryFile file;
  file.Hold(inBytes);
  for (std::size_t i = 0; i < count; ++i) {
    if (dear && i != 0) break;  // a raw key is refused before any derivation
    CQuenAESW cipher;
    cipher.SetKey(known[i].key);
    const bool expected = inBytes == known[i].bytes;
    wstring text;
    wstring fromFile;
    Require(Deciphers(text, [&] { return cipher.DecryptString(inBytes); }) == expected,
            "what was not enciphered became text, or what was did not");
    Require(!expected || text == known[i].text, "another text");
    Require(Deciphers(fromFile,
                      [&] { return cipher.DecryptFileToBuffer(WideTypes::Text(file.Path())); }) ==
                    expected &&
                text == fromFile,
            "a file and its bytes differ");

    CQuenXMLData2w tree(u"<old/>");
    CQuenXMLMsg2w message(u"<old/>");
    CQuenXMLDocument2w document;
    const bool parses = expected && known[i].text == u"<order/>";
    const wstring key = known[i].key;
    Require(FailureOf<CQuenXMLException2w>([&] {
              tree.AppendEncryptedSubset(inBytes, key, u"");
            }).empty() == parses,
            "a subset");
    Require(FailureOf<CQuenXMLException2w>([&] {
              document.LoadXMLEncrypted(inBytes, key);
            }).empty() == parses,
            "a document");
    Require(FailureOf<CQuenXMLException2w>([&] {
              message.SetEncryptedMessageContents(inBytes, key);
            }).empty() == (parses || inBytes.empty()),
            "a message");
    Require(message.GetMessageName() == (parses ? u"order" : u"old"), "a message changed");
    Require((tree.PathExists(u"/old/order") == 1) == parses && tree.PathExists(u"/old") == 1,
            "a tree changed");
  }
}

}  // namespace
}  // namespace quen::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* inBytes, std::size_t inSize) {
  quen::fuzz::Run({reinterpret_cast<const char*>(inBytes), inSize});
  return 0;
}

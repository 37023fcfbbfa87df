// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/cipher.h>

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

#include "components/atomic_file.h"
#include "components/crypto_failure.h"
#include "components/enciphered_form.h"
#include "foundation/utf.h"

namespace quen {

using internal::CryptoCode;
using internal::InCryptoContext;
using internal::ThrowCrypto;

struct CQuenAESW::Key : internal::CallerKey {};

namespace {

constexpr std::u16string_view kRawKeyPrefix = u"quen-raw-key:";

char16_t LowerAscii(char16_t inUnit) {
  return inUnit >= u'A' && inUnit <= u'Z' ? static_cast<char16_t>(inUnit + (u'a' - u'A')) : inUnit;
}

// Without its colon, so that a forgotten one is found too.
bool IsMeantAsRawKey(std::u16string_view inKey) {
  const std::u16string_view name = kRawKeyPrefix.substr(0, kRawKeyPrefix.size() - 1);
  return inKey.size() >= name.size() &&
         std::equal(name.begin(), name.end(), inKey.begin(), [](char16_t inLeft, char16_t inRight) {
           return inLeft == LowerAscii(inRight);
         });
}

unsigned HexValue(char16_t inDigit) {
  const char16_t digit = LowerAscii(inDigit);
  if (digit >= u'0' && digit <= u'9') return digit - unsigned{u'0'};
  if (digit >= u'a' && digit <= u'f') return digit - unsigned{u'a'} + 10;
  ThrowCrypto(CryptoCode::kMalformedRawKey);
}

void ReadRawKey(std::u16string_view inKey, internal::Secret& outKey) {
  if (inKey.substr(0, kRawKeyPrefix.size()) != kRawKeyPrefix ||
      inKey.size() != kRawKeyPrefix.size() + 2 * outKey.Size())
    ThrowCrypto(CryptoCode::kMalformedRawKey);
  const std::u16string_view digits = inKey.substr(kRawKeyPrefix.size());
  for (std::size_t i = 0; i < outKey.Size(); ++i)
    outKey.Data()[i] =
        static_cast<unsigned char>(HexValue(digits[2 * i]) << 4 | HexValue(digits[2 * i + 1]));
}

template <class Key>
const internal::CallerKey& Held(const std::unique_ptr<Key>& inKey) {
  if (inKey == nullptr) ThrowCrypto(CryptoCode::kNoKey);
  return *inKey;
}

std::string FileName(const wstring& inPath) {
  std::string name;
  if (internal::AppendUtf8(inPath, name) != internal::kWellFormed || name.empty() ||
      name.find('\0') != std::string::npos)
    ThrowCrypto(CryptoCode::kInvalidFileName);
  return name;
}

}  // namespace

CQuenAESW::CQuenAESW() noexcept = default;
CQuenAESW::~CQuenAESW() = default;

void CQuenAESW::SetKey(const wstring& inKey) {
  InCryptoContext(u"CQuenAESW::SetKey", [&] {
    key_.reset();
    std::unique_ptr<Key> key;
    if (IsMeantAsRawKey(inKey)) {
      key.reset(new Key{{internal::KeyKind::kRaw, internal::Secret(internal::kRawKeySize)}});
      ReadRawKey(inKey, key->bytes);
    } else {
      key.reset(new Key{
          {internal::KeyKind::kPassword, internal::Secret(inKey.size() * sizeof(char16_t))}});
      unsigned char* out = key->bytes.Data();
      for (const char16_t unit : inKey) {
        *out++ = static_cast<unsigned char>(unit & 0xFF);
        *out++ = static_cast<unsigned char>(unit >> 8);
      }
    }
    key_ = std::move(key);
  });
}

string CQuenAESW::EncryptString(const wstring& inText) const {
  return InCryptoContext(u"CQuenAESW::EncryptString",
                         [&] { return internal::Encipher(Held(key_), inText); });
}

wstring CQuenAESW::DecryptString(const string& inData) const {
  return InCryptoContext(u"CQuenAESW::DecryptString",
                         [&] { return internal::Decipher(Held(key_), inData); });
}

void CQuenAESW::EncryptBufferToFile(const wstring& inBuffer, const wstring& inPath,
                                    bool inOverwrite) const {
  InCryptoContext(u"CQuenAESW::EncryptBufferToFile", [&] {
    const internal::CallerKey& key = Held(key_);
    const std::string path = FileName(inPath);
    internal::CheckWritable(path, inOverwrite);
    internal::WriteFileAtomically(path, internal::Encipher(key, inBuffer), inOverwrite);
  });
}

wstring CQuenAESW::DecryptFileToBuffer(const wstring& inPath) const {
  return InCryptoContext(u"CQuenAESW::DecryptFileToBuffer", [&] {
    const internal::CallerKey& key = Held(key_);
    internal::InputFile file(FileName(inPath));
    std::string data;
    file.Append(data, internal::kHeaderSize);
    // Refuses what is no enciphered text before all of it is read.
    internal::ParseHeader(data, file.Size());
    file.Append(data, static_cast<std::size_t>(file.Size()) - data.size());
    return internal::Decipher(key, data);
  });
}

}  // namespace quen

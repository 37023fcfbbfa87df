// SPDX-License-Identifier: Apache-2.0
#include "components/enciphered_form.h"

#include <openssl/core_names.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/kdf.h>
#include <openssl/params.h>
#include <openssl/rand.h>

#include <algorithm>
#include <memory>

#include "components/crypto_failure.h"

namespace quen::internal {
namespace {

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__,
              "the little-endian units of the form are enciphered where the text stands");

constexpr std::string_view kMagic = "QAES";
constexpr unsigned char kVersion = 1;
constexpr std::size_t kSaltSize = 32;
constexpr std::size_t kNonceSize = 12;
constexpr std::size_t kCipherKeySize = 32;
constexpr std::size_t kKeyCheckSize = 32;
static_assert(kNonceAt == kSaltAt + kSaltSize && kKeyCheckAt == kNonceAt + kNonceSize &&
              kHeaderSize == kKeyCheckAt + kKeyCheckSize);

// Says what a key derived from a raw key is for, as HKDF wants it.
constexpr std::string_view kRawKeyInfo = "QAES 1 raw key";

template <auto Free>
struct Freer {
  template <class Object>
  void operator()(Object* inObject) const {
    Free(inObject);
  }
};
using CipherContext = std::unique_ptr<EVP_CIPHER_CTX, Freer<EVP_CIPHER_CTX_free>>;
using Kdf = std::unique_ptr<EVP_KDF, Freer<EVP_KDF_free>>;
using KdfContext = std::unique_ptr<EVP_KDF_CTX, Freer<EVP_KDF_CTX_free>>;

// Keeps what OpenSSL reports meanwhile out of the error queue of the caller's thread.
class ErrorMark {
 public:
  ErrorMark() { ERR_set_mark(); }
  ~ErrorMark() { ERR_pop_to_mark(); }
  ErrorMark(const ErrorMark&) = delete;
  ErrorMark& operator=(const ErrorMark&) = delete;
};

void Require(bool inSuccess) {
  if (!inSuccess) ThrowCrypto(CryptoCode::kEngineFailure);
}

unsigned char* Bytes(char* inChars) { return reinterpret_cast<unsigned char*>(inChars); }
const unsigned char* Bytes(const char* inChars) {
  return reinterpret_cast<const unsigned char*>(inChars);
}
unsigned char ByteAt(std::string_view inBytes, std::size_t inIndex) {
  return static_cast<unsigned char>(inBytes[inIndex]);
}

OSSL_PARAM OctetParam(const char* inName, const unsigned char* inBytes, std::size_t inSize) {
  return OSSL_PARAM_construct_octet_string(inName, const_cast<unsigned char*>(inBytes), inSize);
}

// The cipher key and, behind it, the key check: a second value from the same derivation that stands
// in the header. It binds a text to one key, which GCM's tag alone does not do: texts can be made
// that pass the tag under many keys at once, and so try many passwords in one go.
constexpr std::size_t kDerivedSize = kCipherKeySize + kKeyCheckSize;

void Derive(const CallerKey& inKey, const DerivationCost& inCost, const unsigned char* inSalt,
            Secret& outDerived) {
  const bool raw = inKey.kind == KeyKind::kRaw;
  const Kdf kdf(EVP_KDF_fetch(nullptr, raw ? "HKDF" : "SCRYPT", nullptr));
  const KdfContext context(EVP_KDF_CTX_new(kdf.get()));
  Require(context != nullptr);
  const OSSL_PARAM salt = OctetParam(OSSL_KDF_PARAM_SALT, inSalt, kSaltSize);
  if (raw) {
    char digest[] = "SHA256";
    const OSSL_PARAM params[] = {
        OctetParam(OSSL_KDF_PARAM_KEY, inKey.bytes.Data(), inKey.bytes.Size()), salt,
        OctetParam(OSSL_KDF_PARAM_INFO, Bytes(kRawKeyInfo.data()), kRawKeyInfo.size()),
        OSSL_PARAM_construct_utf8_string(OSSL_KDF_PARAM_DIGEST, digest, 0),
        OSSL_PARAM_construct_end()};
    Require(EVP_KDF_derive(context.get(), outDerived.Data(), outDerived.Size(), params) == 1);
    return;
  }
  std::uint64_t cost = std::uint64_t{1} << inCost.log2Cost;
  std::uint32_t blockSize = inCost.blockSize;
  std::uint32_t lanes = inCost.lanes;
  // The engine's own bound counts some working blocks too. Headers were bounded before.
  std::uint64_t memory = 2 * kMaxDerivationMemory;
  const OSSL_PARAM params[] = {
      OctetParam(OSSL_KDF_PARAM_PASSWORD, inKey.bytes.Data(), inKey.bytes.Size()),
      salt,
      OSSL_PARAM_construct_uint64(OSSL_KDF_PARAM_SCRYPT_N, &cost),
      OSSL_PARAM_construct_uint32(OSSL_KDF_PARAM_SCRYPT_R, &blockSize),
      OSSL_PARAM_construct_uint32(OSSL_KDF_PARAM_SCRYPT_P, &lanes),
      OSSL_PARAM_construct_uint64(OSSL_KDF_PARAM_SCRYPT_MAXMEM, &memory),
      OSSL_PARAM_construct_end()};
  Require(EVP_KDF_derive(context.get(), outDerived.Data(), outDerived.Size(), params) == 1);
}

// EVP counts in int.
template <class Update>
void InPieces(std::size_t inSize, Update&& inUpdate) {
  constexpr std::size_t kPiece = std::size_t{1} << 30;
  for (std::size_t at = 0; at < inSize; at += kPiece)
    inUpdate(at, static_cast<int>(std::min(kPiece, inSize - at)));
}

void CheckBounds(const Header& inHeader) {
  if (inHeader.length % sizeof(char16_t) != 0) ThrowCrypto(CryptoCode::kParametersOutOfBounds);
  const auto [log2Cost, blockSize, lanes] = inHeader.cost;
  if (inHeader.kind == KeyKind::kRaw) {
    if (log2Cost != 0 || blockSize != 0 || lanes != 0)
      ThrowCrypto(CryptoCode::kParametersOutOfBounds);
    return;
  }
  // scrypt itself wants 1 < N < 2^(128 * r / 8).
  if (log2Cost == 0 || log2Cost >= 32 || log2Cost >= 16 * blockSize || lanes == 0)
    ThrowCrypto(CryptoCode::kParametersOutOfBounds);
  const std::uint64_t blocks = std::uint64_t{blockSize} << log2Cost;
  if (128 * blocks > kMaxDerivationMemory || lanes * blocks > kMaxDerivationWork)
    ThrowCrypto(CryptoCode::kParametersOutOfBounds);
}

// Wipes a text that is being deciphered, unless it was authenticated to its end.
class UncheckedTextGuard {
 public:
  explicit UncheckedTextGuard(std::u16string& inText) : text_(&inText) {}
  ~UncheckedTextGuard() {
    if (text_ != nullptr) OPENSSL_cleanse(text_->data(), text_->size() * sizeof(char16_t));
  }
  UncheckedTextGuard(const UncheckedTextGuard&) = delete;
  UncheckedTextGuard& operator=(const UncheckedTextGuard&) = delete;

  void Release() { text_ = nullptr; }

 private:
  std::u16string* text_;
};

}  // namespace

Header ParseHeader(std::string_view inHead, std::uint64_t inTotalSize) {
  if (inTotalSize == 0) ThrowCrypto(CryptoCode::kEmptyInput);
  const std::string_view magic = inHead.substr(0, kMagic.size());
  if (magic != kMagic.substr(0, magic.size())) ThrowCrypto(CryptoCode::kForeignForm);
  if (inHead.size() <= kVersionAt) ThrowCrypto(CryptoCode::kCutShort);
  if (ByteAt(inHead, kVersionAt) != kVersion) ThrowCrypto(CryptoCode::kUnknownVersion);
  if (inHead.size() < kHeaderSize || inTotalSize < kHeaderSize + kTagSize)
    ThrowCrypto(CryptoCode::kCutShort);

  Header header{
      static_cast<KeyKind>(ByteAt(inHead, kKindAt)),
      {ByteAt(inHead, kLog2CostAt), ByteAt(inHead, kBlockSizeAt), ByteAt(inHead, kLanesAt)},
      0};
  for (std::size_t i = kSaltAt; i-- > kLengthAt;)
    header.length = (header.length << 8) | ByteAt(inHead, i);
  if (header.kind != KeyKind::kPassword && header.kind != KeyKind::kRaw)
    ThrowCrypto(CryptoCode::kParametersOutOfBounds);
  for (std::size_t i = kReservedAt; i < kLengthAt; ++i)
    if (inHead[i] != 0) ThrowCrypto(CryptoCode::kParametersOutOfBounds);
  CheckBounds(header);

  const std::uint64_t present = inTotalSize - kHeaderSize - kTagSize;
  if (present < header.length) ThrowCrypto(CryptoCode::kCutShort);
  if (present > header.length) ThrowCrypto(CryptoCode::kTooLong);
  return header;
}

std::string Encipher(const CallerKey& inKey, std::u16string_view inText) {
  const ErrorMark mark;
  const std::size_t length = inText.size() * sizeof(char16_t);
  std::string result(kHeaderSize + length + kTagSize, '\0');
  unsigned char* const header = Bytes(result.data());

  kMagic.copy(result.data(), kMagic.size());
  header[kVersionAt] = kVersion;
  header[kKindAt] = static_cast<unsigned char>(inKey.kind);
  if (inKey.kind == KeyKind::kPassword) {
    header[kLog2CostAt] = kPasswordCost.log2Cost;
    header[kBlockSizeAt] = kPasswordCost.blockSize;
    header[kLanesAt] = kPasswordCost.lanes;
  }
  for (std::size_t i = 0; i < sizeof(std::uint64_t); ++i)
    header[kLengthAt + i] = static_cast<unsigned char>(std::uint64_t{length} >> (8 * i));
  Require(RAND_bytes(header + kSaltAt, kSaltSize + kNonceSize) == 1);

  Secret derived(kDerivedSize);
  Derive(inKey, kPasswordCost, header + kSaltAt, derived);
  std::copy_n(derived.Data() + kCipherKeySize, kKeyCheckSize, header + kKeyCheckAt);

  const CipherContext context(EVP_CIPHER_CTX_new());
  Require(context != nullptr);
  int written = 0;
  Require(EVP_EncryptInit_ex2(context.get(), EVP_aes_256_gcm(), derived.Data(), header + kNonceAt,
                              nullptr) == 1);
  Require(EVP_EncryptUpdate(context.get(), nullptr, &written, header, kHeaderSize) == 1);
  const unsigned char* const in = reinterpret_cast<const unsigned char*>(inText.data());
  unsigned char* const out = header + kHeaderSize;
  InPieces(length, [&](std::size_t at, int size) {
    Require(EVP_EncryptUpdate(context.get(), out + at, &written, in + at, size) == 1);
  });
  Require(EVP_EncryptFinal_ex(context.get(), out + length, &written) == 1);
  Require(EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_AEAD_GET_TAG, kTagSize, out + length) == 1);
  return result;
}

std::u16string Decipher(const CallerKey& inKey, std::string_view inData) {
  const ErrorMark mark;
  const Header header = ParseHeader(inData.substr(0, kHeaderSize), inData.size());
  if (header.kind != inKey.kind) ThrowCrypto(CryptoCode::kWrongKey);
  const unsigned char* const head = Bytes(inData.data());

  Secret derived(kDerivedSize);
  Derive(inKey, header.cost, head + kSaltAt, derived);
  if (CRYPTO_memcmp(derived.Data() + kCipherKeySize, head + kKeyCheckAt, kKeyCheckSize) != 0)
    ThrowCrypto(CryptoCode::kWrongKey);

  const std::size_t length = static_cast<std::size_t>(header.length);
  const unsigned char* const in = head + kHeaderSize;
  const CipherContext context(EVP_CIPHER_CTX_new());
  Require(context != nullptr);
  int written = 0;
  Require(EVP_DecryptInit_ex2(context.get(), EVP_aes_256_gcm(), derived.Data(), head + kNonceAt,
                              nullptr) == 1);
  // The engine's interface takes the tag as a pointer to what it will not change.
  Require(EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_AEAD_SET_TAG, kTagSize,
                              const_cast<unsigned char*>(in + length)) == 1);
  Require(EVP_DecryptUpdate(context.get(), nullptr, &written, head, kHeaderSize) == 1);
  std::u16string text(length / sizeof(char16_t), u'\0');
  UncheckedTextGuard guard(text);
  unsigned char* const out = reinterpret_cast<unsigned char*>(text.data());
  InPieces(length, [&](std::size_t at, int size) {
    Require(EVP_DecryptUpdate(context.get(), out + at, &written, in + at, size) == 1);
  });
  unsigned char nothing[1];
  if (EVP_DecryptFinal_ex(context.get(), nothing, &written) != 1) ThrowCrypto(CryptoCode::kAltered);
  guard.Release();
  return text;
}

}  // namespace quen::internal

// SPDX-License-Identifier: Apache-2.0
//
// What does the cipher cost on top of AES-256-GCM itself? Each size runs through CQuenAESW under a
// raw key and through bare EVP calls that make the same bytes from a key that is there already. The
// derivation from a password stands alone.
#include <benchmark/benchmark.h>
#include <openssl/evp.h>
#include <openssl/kdf.h>
#include <quenxml2/cipher.h>

#include <cstring>
#include <random>
#include <string>

namespace {

constexpr std::size_t kHeader = 96;
constexpr std::size_t kNonceAt = 52;
constexpr std::size_t kTag = 16;
constexpr char16_t kRawKey[] =
    u"quen-raw-key:000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f";

struct Bare {
  unsigned char key[32];
  std::string header;
};

unsigned char* Bytes(std::string& inBytes) {
  return reinterpret_cast<unsigned char*>(inBytes.data());
}

// Both write into memory that is there already, which the operations of the cipher must allocate.
void BareEncipher(const Bare& inBare, const std::u16string& inText, std::string& outData) {
  const int size = static_cast<int>(inText.size() * 2);
  inBare.header.copy(outData.data(), kHeader);
  unsigned char* const out = Bytes(outData);
  EVP_CIPHER_CTX* const context = EVP_CIPHER_CTX_new();
  int written = 0;
  EVP_EncryptInit_ex2(context, EVP_aes_256_gcm(), inBare.key, out + kNonceAt, nullptr);
  EVP_EncryptUpdate(context, nullptr, &written, out, kHeader);
  EVP_EncryptUpdate(context, out + kHeader, &written,
                    reinterpret_cast<const unsigned char*>(inText.data()), size);
  EVP_EncryptFinal_ex(context, out + kHeader + size, &written);
  EVP_CIPHER_CTX_ctrl(context, EVP_CTRL_AEAD_GET_TAG, kTag, out + kHeader + size);
  EVP_CIPHER_CTX_free(context);
}

bool BareDecipher(const Bare& inBare, std::string& inData, std::u16string& outText) {
  const int size = static_cast<int>(outText.size() * 2);
  unsigned char* const in = Bytes(inData);
  unsigned char nothing[1];
  EVP_CIPHER_CTX* const context = EVP_CIPHER_CTX_new();
  int written = 0;
  EVP_DecryptInit_ex2(context, EVP_aes_256_gcm(), inBare.key, in + kNonceAt, nullptr);
  EVP_CIPHER_CTX_ctrl(context, EVP_CTRL_AEAD_SET_TAG, kTag, in + kHeader + size);
  EVP_DecryptUpdate(context, nullptr, &written, in, kHeader);
  EVP_DecryptUpdate(context, reinterpret_cast<unsigned char*>(outText.data()), &written,
                    in + kHeader, size);
  const bool authentic = EVP_DecryptFinal_ex(context, nothing, &written) == 1;
  EVP_CIPHER_CTX_free(context);
  return authentic;
}

// The key of one enciphered text under kRawKey.
Bare BareFor(const std::string& inData) {
  Bare bare{{}, inData.substr(0, kHeader)};
  unsigned char rawKey[32];
  for (unsigned char i = 0; i < 32; ++i) rawKey[i] = i;
  char info[] = "QAES 1 raw key";
  char digest[] = "SHA256";
  const OSSL_PARAM params[] = {
      OSSL_PARAM_construct_octet_string("key", rawKey, sizeof rawKey),
      OSSL_PARAM_construct_octet_string("salt", bare.header.data() + 20, 32),
      OSSL_PARAM_construct_octet_string("info", info, sizeof info - 1),
      OSSL_PARAM_construct_utf8_string("digest", digest, 0), OSSL_PARAM_construct_end()};
  EVP_KDF* const kdf = EVP_KDF_fetch(nullptr, "HKDF", nullptr);
  EVP_KDF_CTX* const context = EVP_KDF_CTX_new(kdf);
  unsigned char derived[64];
  EVP_KDF_derive(context, derived, sizeof derived, params);
  std::memcpy(bare.key, derived, sizeof bare.key);
  EVP_KDF_CTX_free(context);
  EVP_KDF_free(kdf);
  return bare;
}

struct Sample {
  explicit Sample(std::int64_t inBytes) : text(static_cast<std::size_t>(inBytes / 2), u'\0') {
    std::mt19937 random(7);
    for (char16_t& unit : text) unit = static_cast<char16_t>(random());
    cipher.SetKey(kRawKey);
    data = cipher.EncryptString(text);
    bare = BareFor(data);
    bareData.resize(data.size());
    bareText.resize(text.size());
  }
  bool Agrees() {
    BareEncipher(bare, text, bareData);
    return BareDecipher(bare, data, bareText) && bareData == data && bareText == text &&
           cipher.DecryptString(data) == text;
  }

  quen::CQuenAESW cipher;
  std::u16string text;
  std::string data;
  Bare bare;
  std::string bareData;
  std::u16string bareText;
};

template <class Operation>
void Measure(benchmark::State& state, Operation&& inOperation) {
  Sample sample(state.range(0));
  if (!sample.Agrees()) {
    state.SkipWithError("the bare calls give another result");
    return;
  }
  for (auto _ : state) benchmark::DoNotOptimize(inOperation(sample));
  state.SetBytesProcessed(state.iterations() * state.range(0));
}

void EncipherBare(benchmark::State& state) {
  Measure(state, [](Sample& s) {
    BareEncipher(s.bare, s.text, s.bareData);
    return s.bareData.data();
  });
}
void Encipher(benchmark::State& state) {
  Measure(state, [](Sample& s) { return s.cipher.EncryptString(s.text); });
}
void DecipherBare(benchmark::State& state) {
  Measure(state, [](Sample& s) { return BareDecipher(s.bare, s.data, s.bareText); });
}
void Decipher(benchmark::State& state) {
  Measure(state, [](Sample& s) { return s.cipher.DecryptString(s.data); });
}
void PasswordDerivation(benchmark::State& state) {
  quen::CQuenAESW cipher;
  cipher.SetKey(u"correct horse battery staple");
  for (auto _ : state) benchmark::DoNotOptimize(cipher.EncryptString(u""));
}

BENCHMARK(EncipherBare)->Arg(100)->Arg(10'000)->Arg(10'000'000);
BENCHMARK(Encipher)->Arg(100)->Arg(10'000)->Arg(10'000'000);
BENCHMARK(DecipherBare)->Arg(100)->Arg(10'000)->Arg(10'000'000);
BENCHMARK(Decipher)->Arg(100)->Arg(10'000)->Arg(10'000'000);
BENCHMARK(PasswordDerivation)->Unit(benchmark::kMillisecond);

}  // namespace

// SPDX-License-Identifier: Apache-2.0
//
// Nothing secret stays behind in memory that was given back. Replaces operator delete, so it is a
// program of its own.
#include <gtest/gtest.h>
#include <malloc.h>
#include <quenxml2/cipher.h>

#include <cstdlib>
#include <new>
#include <string>
#include <string_view>

#include "tests/components/cipher_support.h"

namespace {

// What to look for in each block that is freed, and how often it was found.
std::string_view gSecret;
int gFound = 0;

void Release(void* inBlock) {
  if (inBlock == nullptr) return;
  if (!gSecret.empty()) {
    const std::string_view block(static_cast<const char*>(inBlock), malloc_usable_size(inBlock));
    if (block.find(gSecret) != std::string_view::npos) ++gFound;
  }
  std::free(inBlock);
}

}  // namespace

void* operator new(std::size_t inSize) {
  if (void* const block = std::malloc(inSize != 0 ? inSize : 1)) return block;
  throw std::bad_alloc();
}
void* operator new[](std::size_t inSize) { return operator new(inSize); }
void operator delete(void* inBlock) noexcept { Release(inBlock); }
void operator delete(void* inBlock, std::size_t) noexcept { Release(inBlock); }
void operator delete[](void* inBlock) noexcept { Release(inBlock); }
void operator delete[](void* inBlock, std::size_t) noexcept { Release(inBlock); }

namespace quen::testing {
namespace {

std::string_view BytesOf(const std::u16string& inText) {
  return {reinterpret_cast<const char*>(inText.data()), inText.size() * sizeof(char16_t)};
}

template <class Operation>
int FoundDuring(std::string_view inSecret, Operation&& inOperation) {
  gFound = 0;
  gSecret = inSecret;
  inOperation();
  gSecret = {};
  return gFound;
}

const std::u16string kSecretText = u"a text that nobody else may read";

TEST(Wipe, TheSearchFindsWhatIsNotWiped) {
  EXPECT_EQ(FoundDuring(BytesOf(kSecretText), [] { std::u16string copy = kSecretText; }), 1);
}

TEST(Wipe, KeysGoWithTheirObjectAndWithTheNextKey) {
  const std::u16string password = u"a password of twenty units and more";
  const auto use = [](const std::u16string& inKey) {
    CQuenAESW cipher;
    cipher.SetKey(inKey);
    cipher.SetKey(inKey);
  };
  EXPECT_EQ(FoundDuring(BytesOf(password), [&] { use(password); }), 0);
  std::string rawKey;
  for (char byte = 0; byte < 32; ++byte) rawKey += byte;
  EXPECT_EQ(FoundDuring(rawKey, [&] { use(kRawKey); }), 0);
}

TEST(Wipe, DecipheredTextThatFailsItsTagIsGone) {
  CQuenAESW cipher;
  cipher.SetKey(kRawKey);
  std::string data = cipher.EncryptString(kSecretText);
  data.back() = static_cast<char>(data.back() ^ 1);
  unsigned code = 0;
  // The first units decipher to themselves: only the tag at the end was changed.
  EXPECT_EQ(FoundDuring(BytesOf(kSecretText).substr(0, 32),
                        [&] { code = CryptoCodeOf([&] { cipher.DecryptString(data); }); }),
            0);
  EXPECT_EQ(code, 2010U);
}

TEST(Wipe, DerivedKeysAreGone) {
  CQuenAESW cipher;
  cipher.SetKey(kRawKey);
  const std::string data = cipher.EncryptString(kSecretText);
  // The key check is derived along with the cipher key and lies behind it in one block.
  const std::string keyCheck = data.substr(64, 32);
  EXPECT_EQ(FoundDuring(keyCheck, [&] { cipher.DecryptString(data); }), 0);
}

}  // namespace
}  // namespace quen::testing

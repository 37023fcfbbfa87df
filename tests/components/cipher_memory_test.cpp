// SPDX-License-Identifier: Apache-2.0
//
// Nothing secret stays behind in memory that was given back, and memory that runs out is a failure
// like any other. Replaces operator new and delete, so it is a program of its own.
#include <gtest/gtest.h>
#include <malloc.h>
#include <quenxml2/cipher.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iterator>
#include <new>
#include <string>
#include <string_view>

#include "tests/components/cipher_support.h"

namespace {

// What to look for in each block that is freed, and how often it was found.
std::string_view gSecret;
int gFound = 0;

// The allocation that fails, counted down to 0; -1 for none.
int gAllocationsToGo = -1;

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
  if (gAllocationsToGo >= 0 && gAllocationsToGo-- == 0) throw std::bad_alloc();
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

TEST(Memory, EveryAllocationMayFail) {
  char pattern[] = "/tmp/quen-cipher-XXXXXX";
  const std::filesystem::path directory = mkdtemp(pattern);
  const std::u16string path = directory.u16string() + u"/a file whose name needs memory";
  const std::u16string key = kRawKey;
  CQuenAESW cipher;
  cipher.SetKey(key);
  const std::string data = cipher.EncryptString(kSecretText);
  cipher.EncryptBufferToFile(kSecretText, path, true);

  const std::function<void()> kOperations[] = {
      [&] { CQuenAESW().SetKey(key); },
      [&] { cipher.EncryptString(kSecretText); },
      [&] { cipher.DecryptString(data); },
      [&] { cipher.EncryptBufferToFile(kSecretText, path, true); },
      [&] { cipher.DecryptFileToBuffer(path); },
  };
  for (const auto& operation : kOperations) {
    const auto row = &operation - kOperations;
    int failed = 0;
    for (;; ++failed) {
      gAllocationsToGo = failed;
      const unsigned code = CryptoCodeOf(operation);
      const bool armed = gAllocationsToGo >= 0;
      gAllocationsToGo = -1;
      if (armed) {
        EXPECT_EQ(code, 0U) << "operation " << row;
        break;
      }
      ASSERT_EQ(code, 2016U) << "operation " << row << ", allocation " << failed;
      EXPECT_EQ(cipher.DecryptFileToBuffer(path), kSecretText) << "operation " << row;
      EXPECT_EQ(std::distance(std::filesystem::directory_iterator(directory), {}), 1)
          << "operation " << row << ", allocation " << failed;
    }
    EXPECT_GE(failed, 2) << "operation " << row;
  }
  std::filesystem::remove_all(directory);
}

}  // namespace
}  // namespace quen::testing

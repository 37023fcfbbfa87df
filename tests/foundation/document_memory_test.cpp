// SPDX-License-Identifier: Apache-2.0
#include "foundation/document_memory.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <thread>
#include <vector>

#include <quenxml2/data.h>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

namespace quen::test {
namespace {

using internal::DocumentMemory;
using internal::kHugePage;

constexpr std::size_t kSmallest = DocumentMemory::kSmallestBlock;

// An application's own.
class CountingMemory : public xercesc::MemoryManager {
 public:
  xercesc::MemoryManager* getExceptionMemoryManager() override { return this; }
  void* allocate(XMLSize_t inSize) override {
    ++blocks;
    return std::malloc(inSize);
  }
  void deallocate(void* inMemory) override {
    if (inMemory != nullptr) --blocks;
    std::free(inMemory);
  }
  int blocks = 0;
};

TEST(DocumentMemory, EveryByteOfABlockIsItsOwn) {
  DocumentMemory memory;
  const std::size_t sizes[] = {
      1,         kSmallest - 1, kSmallest, kSmallest + 1, 4 * kSmallest,      kHugePage - 1,
      kHugePage, kHugePage + 1, kHugePage, kSmallest,     3 * kHugePage + 17, 8 * kSmallest};
  for (int round = 0; round < 3; ++round) {
    std::vector<unsigned char*> blocks;
    for (const std::size_t size : sizes) {
      blocks.push_back(static_cast<unsigned char*>(memory.allocate(size)));
      ASSERT_EQ(reinterpret_cast<std::uintptr_t>(blocks.back()) % alignof(std::max_align_t), 0U);
      std::memset(blocks.back(), static_cast<int>(blocks.size()), size);
    }
    for (std::size_t i = 0; i < blocks.size(); ++i) {
      const auto wrong = [&](unsigned char byte) { return byte != i + 1; };
      EXPECT_EQ(std::find_if(blocks[i], blocks[i] + sizes[i], wrong), blocks[i] + sizes[i])
          << "a byte of the block of " << sizes[i];
      memory.deallocate(blocks[i]);
    }
  }
  memory.deallocate(nullptr);
}

TEST(DocumentMemory, KeepsAFewBlocksOfEachSize) {
  DocumentMemory memory;
  for (const std::size_t size : {kSmallest, 2 * kSmallest, kHugePage}) {
    std::vector<void*> blocks;
    for (std::size_t i = 0; i < DocumentMemory::kKept; ++i) blocks.push_back(memory.allocate(size));
    for (void* const block : blocks) memory.deallocate(block);
    std::vector<void*> again;
    for (std::size_t i = 0; i < DocumentMemory::kKept; ++i) again.push_back(memory.allocate(size));
    std::sort(blocks.begin(), blocks.end());
    std::sort(again.begin(), again.end());
    EXPECT_EQ(again, blocks);
    for (void* const block : again) memory.deallocate(block);
  }
}

TEST(DocumentMemory, HugeBlocksBeginWithAHugePage) {
  DocumentMemory memory;
  for (const std::size_t size : {kHugePage, kHugePage + 1, 5 * kHugePage}) {
    void* const block = memory.allocate(size);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % kHugePage, 0U);
    memory.deallocate(block);
  }
}

TEST(DocumentMemory, WhatNobodyHasIsRefused) {
  DocumentMemory memory;
  for (const std::size_t size : {SIZE_MAX, SIZE_MAX - kHugePage, SIZE_MAX / 2}) {
    EXPECT_THROW(memory.allocate(size), xercesc::OutOfMemoryException);
  }
}

TEST(DocumentMemory, AnApplicationsOwnMemoryIsUsed) {
  xercesc::MemoryManager*& engine = xercesc::XMLPlatformUtils::fgMemoryManager;
  xercesc::MemoryManager* const before = engine;
  CountingMemory own;
  engine = &own;
  EXPECT_EQ(&internal::MemoryOfDocuments(), &own);
  engine = before;
  EXPECT_NE(&internal::MemoryOfDocuments(), &own);
}

// The child has none of the threads that may hold a lock at that moment.
TEST(DocumentMemory, AChildOfForkHasItsOwn) {
  xercesc::MemoryManager& memory = internal::MemoryOfDocuments();
  if (&memory == xercesc::XMLPlatformUtils::fgMemoryManager)
    GTEST_SKIP() << "the allocator of a sanitizer hangs in such a child itself";
  std::atomic<bool> ends{false};
  std::thread other([&] {
    while (!ends) memory.deallocate(memory.allocate(kSmallest));
  });
  int status = 0;
  for (int i = 0; i < 40 && status == 0; ++i) {
    const pid_t child = ::fork();
    if (child == 0) {
      ::alarm(20);
      memory.deallocate(memory.allocate(kSmallest));
      ::_exit(0);
    }
    ASSERT_EQ(::waitpid(child, &status, 0), child);
  }
  ends = true;
  other.join();
  EXPECT_EQ(status, 0);
}

// Its blocks are of every size. What comes back after other trees were made in them is what was put
// in.
TEST(DocumentMemory, TreesOfManyBlocks) {
  constexpr int kChildren = 20000;
  for (int round = 0; round < 3; ++round) {
    CQuenXMLData2w tree;
    tree.AddRootNode(u"a");
    for (std::int32_t i = 0; i < kChildren; ++i) tree.AddData(i, u"/a/b");
    CQuenXMLData2w copy(tree);
    tree = CQuenXMLData2w();
    std::uint32_t children = 0;
    copy.GetNumChildren(children, u"/a");
    EXPECT_EQ(children, std::uint32_t{kChildren});
    std::int32_t last = -1;
    copy.GetData(last, u"/a/b[20000]");
    EXPECT_EQ(last, kChildren - 1);
  }
}

}  // namespace
}  // namespace quen::test

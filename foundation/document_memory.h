// SPDX-License-Identifier: Apache-2.0
//
// Where documents live.
//
// The engine takes memory for the nodes of a document in blocks that double with it. Most of the
// time of making a large tree went into what the system does for each page of them that is touched
// first. So the largest blocks are huge pages, 512 times as large, where the system has them, and a
// few blocks of each size are kept for the next document.
#ifndef QUENXML2_FOUNDATION_DOCUMENT_MEMORY_H_
#define QUENXML2_FOUNDATION_DOCUMENT_MEMORY_H_

#include <array>
#include <cstddef>
#include <mutex>
#include <unordered_map>

#include <xercesc/framework/MemoryManager.hpp>

namespace quen::internal {

// In bytes: the first block of a document, the largest, which is a huge page, and the largest part
// that shares a block with others.
inline constexpr std::size_t kFirstBlock = std::size_t{16} * 1024;
inline constexpr std::size_t kHugePage = std::size_t{2} * 1024 * 1024;
inline constexpr std::size_t kLargestPart = std::size_t{4} * 1024;

// Blocks of documents from kSmallestBlock on come from the system itself, and so does everything
// from kHugePage on; all else from the engine's own memory.
class DocumentMemory : public xercesc::MemoryManager {
 public:
  static constexpr std::size_t kSmallestBlock = std::size_t{128} * 1024;
  // Blocks of each size that are kept, at most 16 MB together.
  static constexpr std::size_t kKept = 4;

  DocumentMemory() = default;
  ~DocumentMemory() override;
  DocumentMemory(const DocumentMemory&) = delete;
  DocumentMemory& operator=(const DocumentMemory&) = delete;

  xercesc::MemoryManager* getExceptionMemoryManager() override;
  void* allocate(XMLSize_t inSize) override;
  void deallocate(void* inMemory) override;

  // Around a fork of the process, whose child has no other thread to unlock what was locked.
  void Lock() { mutex_.lock(); }
  void Unlock() { mutex_.unlock(); }

 private:
  static constexpr std::size_t kSizes = 5;  // of blocks: 128 KB and so on to 2 MB
  static_assert(kSmallestBlock << (kSizes - 1) == kHugePage);
  struct Kept {
    std::array<void*, kKept> blocks;
    std::size_t count = 0;
  };

  Kept* KeptOf(std::size_t inSize);
  void* TakeKept(std::size_t inSize);
  void* Map(std::size_t inSize);

  std::mutex mutex_;
  std::array<Kept, kSizes> kept_;
  std::unordered_map<void*, std::size_t> sizes_;  // of what is out from the system
};

// For documents and what makes them; lives as long as the process. It is the engine's memory where
// the application has given that a manager of its own, and under AddressSanitizer and
// LeakSanitizer, which are to see each block.
xercesc::MemoryManager& MemoryOfDocuments();

}  // namespace quen::internal

#endif  // QUENXML2_FOUNDATION_DOCUMENT_MEMORY_H_

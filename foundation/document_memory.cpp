// SPDX-License-Identifier: Apache-2.0
#include "foundation/document_memory.h"

#include <pthread.h>
#include <sys/mman.h>

#include <cstdint>
#include <new>
#include <typeinfo>

#include <xercesc/internal/MemoryManagerImpl.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

// There in programs with one of the two sanitizers.
extern "C" __attribute__((weak)) void __lsan_do_leak_check();

namespace quen::internal {
namespace {

constexpr std::size_t kLargestPage = std::size_t{64} * 1024;  // of the usual size, on any machine

xercesc::MemoryManager& EngineMemory() { return *xercesc::XMLPlatformUtils::fgMemoryManager; }

// `inSize` bytes, a multiple of kLargestPage; from kHugePage on at a multiple of that and in huge
// pages as far as they reach. Null if there are none.
void* MapFromSystem(std::size_t inSize) {
  const std::size_t room = inSize < kHugePage ? 0 : kHugePage;
  if (inSize + room < inSize) return nullptr;
  void* const mapping =
      ::mmap(nullptr, inSize + room, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (mapping == MAP_FAILED) return nullptr;
  if (room == 0) return mapping;
  const std::size_t before = -reinterpret_cast<std::uintptr_t>(mapping) % room;
  char* const block = static_cast<char*>(mapping) + before;
  if (before > 0) ::munmap(mapping, before);
  ::munmap(block + inSize, room - before);
  ::madvise(block, inSize - inSize % kHugePage, MADV_HUGEPAGE);  // a refusal is fine
  return block;
}

}  // namespace

DocumentMemory::~DocumentMemory() {
  for (std::size_t i = 0; i < kSizes; ++i) {
    while (kept_[i].count > 0) ::munmap(kept_[i].blocks[--kept_[i].count], kSmallestBlock << i);
  }
}

xercesc::MemoryManager* DocumentMemory::getExceptionMemoryManager() {
  return EngineMemory().getExceptionMemoryManager();
}

void* DocumentMemory::allocate(XMLSize_t inSize) {
  if (inSize < kSmallestBlock || (inSize < kHugePage && KeptOf(inSize) == nullptr)) {
    return EngineMemory().allocate(inSize);
  }
  void* const kept = TakeKept(inSize);
  return kept != nullptr ? kept : Map(inSize);
}

// For blocks of that very size; null if there are none.
DocumentMemory::Kept* DocumentMemory::KeptOf(std::size_t inSize) {
  for (std::size_t i = 0; i < kSizes; ++i) {
    if (inSize == kSmallestBlock << i) return &kept_[i];
  }
  return nullptr;
}

void* DocumentMemory::TakeKept(std::size_t inSize) {
  Kept* const kept = KeptOf(inSize);
  if (kept == nullptr) return nullptr;
  const std::lock_guard<std::mutex> lock(mutex_);
  if (kept->count == 0) return nullptr;
  void* const block = kept->blocks[kept->count - 1];
  try {
    sizes_.emplace(block, inSize);
  } catch (...) {
    throw xercesc::OutOfMemoryException();
  }
  --kept->count;
  return block;
}

void* DocumentMemory::Map(std::size_t inSize) {
  const std::size_t size = (inSize + kLargestPage - 1) / kLargestPage * kLargestPage;
  void* const block = size < inSize ? nullptr : MapFromSystem(size);
  if (block == nullptr) throw xercesc::OutOfMemoryException();
  try {
    const std::lock_guard<std::mutex> lock(mutex_);
    sizes_.emplace(block, size);
  } catch (...) {
    ::munmap(block, size);
    throw xercesc::OutOfMemoryException();
  }
  return block;
}

void DocumentMemory::deallocate(void* inMemory) {
  // Whatever comes from the system begins with a page.
  constexpr std::size_t kSmallestPage = 4096;
  if (inMemory == nullptr || reinterpret_cast<std::uintptr_t>(inMemory) % kSmallestPage != 0) {
    return EngineMemory().deallocate(inMemory);
  }
  std::unique_lock<std::mutex> lock(mutex_);
  const auto found = sizes_.find(inMemory);
  if (found == sizes_.end()) {
    lock.unlock();
    return EngineMemory().deallocate(inMemory);
  }
  const std::size_t size = found->second;
  sizes_.erase(found);
  Kept* const kept = KeptOf(size);
  if (kept != nullptr && kept->count < kKept) {
    kept->blocks[kept->count++] = inMemory;
    return;
  }
  lock.unlock();
  ::munmap(inMemory, size);
}

namespace {

// Never destroyed, since documents of static storage may be released after everything here.
DocumentMemory& SharedMemory() {
  alignas(DocumentMemory) static std::byte place[sizeof(DocumentMemory)];
  static DocumentMemory* const memory = [] {
    auto* const made = new (place) DocumentMemory;
    constexpr auto unlock = [] { SharedMemory().Unlock(); };
    ::pthread_atfork([] { SharedMemory().Lock(); }, unlock, unlock);
    return made;
  }();
  return *memory;
}

}  // namespace

xercesc::MemoryManager& MemoryOfDocuments() {
  xercesc::MemoryManager& engine = EngineMemory();
  const bool isEnginesOwn = typeid(engine) == typeid(xercesc::MemoryManagerImpl);
  if (!isEnginesOwn || __lsan_do_leak_check != nullptr) return engine;
  return SharedMemory();
}

}  // namespace quen::internal

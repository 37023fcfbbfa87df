// SPDX-License-Identifier: Apache-2.0
#include "tests/support/allocations.h"

#include <malloc.h>

#include <atomic>
#include <cstdlib>
#include <new>

#include <xercesc/internal/MemoryManagerImpl.hpp>
#include <xercesc/util/PlatformUtils.hpp>

namespace quen::test {
namespace {

std::atomic<std::size_t> gBytes{0};
std::atomic<std::size_t> gBlocks{0};
std::atomic<std::size_t> gPeak{0};

struct Plan {
  bool armed = false;
  bool persistent = false;
  bool failed = false;
  std::uint64_t nth = 0;
  std::uint64_t count = 0;
};
thread_local Plan gPlan;

bool Fails() {
  Plan& plan = gPlan;
  if (!plan.armed) return false;
  const std::uint64_t index = plan.count++;
  const bool fails = index == plan.nth || (plan.persistent && index > plan.nth);
  plan.failed = plan.failed || fails;
  return fails;
}

void* Allocate(std::size_t inSize) {
  if (Fails()) return nullptr;
  void* const block = std::malloc(inSize != 0 ? inSize : 1);
  if (block == nullptr) return nullptr;
  ++gBlocks;
  const std::size_t size = malloc_usable_size(block);
  const std::size_t now = gBytes.fetch_add(size) + size;
  std::size_t peak = gPeak.load();
  while (now > peak && !gPeak.compare_exchange_weak(peak, now)) {
  }
  return block;
}

void Free(void* inBlock) {
  if (inBlock == nullptr) return;
  gBytes -= malloc_usable_size(inBlock);
  --gBlocks;
  std::free(inBlock);
}

// The same as the engine's own, but an application's: documents use no blocks from the system then.
class CountedMemory : public xercesc::MemoryManagerImpl {};
const bool kIsCounted = (xercesc::XMLPlatformUtils::fgMemoryManager = new CountedMemory, true);

}  // namespace

std::size_t AllocatedBytes() { return gBytes; }
std::size_t AllocatedBlocks() { return gBlocks; }
std::size_t PeakBytes() { return gPeak; }
void ResetPeak() { gPeak = gBytes.load(); }

FailingAllocation::FailingAllocation(std::uint64_t inNth, bool inPersistent) {
  gPlan = Plan{true, inPersistent, false, inNth, 0};
}
FailingAllocation::~FailingAllocation() { Stop(); }
bool FailingAllocation::HasFailed() { return gPlan.failed; }
std::uint64_t FailingAllocation::Count() { return gPlan.count; }
void FailingAllocation::Stop() { gPlan.armed = false; }

}  // namespace quen::test

void* operator new(std::size_t inSize) {
  if (void* const block = quen::test::Allocate(inSize)) return block;
  throw std::bad_alloc();
}
void* operator new(std::size_t inSize, const std::nothrow_t&) noexcept {
  return quen::test::Allocate(inSize);
}
void* operator new[](std::size_t inSize) { return operator new(inSize); }
void* operator new[](std::size_t inSize, const std::nothrow_t&) noexcept {
  return quen::test::Allocate(inSize);
}
void operator delete(void* inBlock) noexcept { quen::test::Free(inBlock); }
void operator delete(void* inBlock, std::size_t) noexcept { quen::test::Free(inBlock); }
void operator delete(void* inBlock, const std::nothrow_t&) noexcept { quen::test::Free(inBlock); }
void operator delete[](void* inBlock) noexcept { quen::test::Free(inBlock); }
void operator delete[](void* inBlock, std::size_t) noexcept { quen::test::Free(inBlock); }
void operator delete[](void* inBlock, const std::nothrow_t&) noexcept { quen::test::Free(inBlock); }

// SPDX-License-Identifier: Apache-2.0
//
// What a program takes from operator new, which allocations.cpp replaces for the whole program:
// that of this library and of both engines, whose memory managers call it too. OpenSSL and ICU have
// memory of their own.
#ifndef QUENXML2_TESTS_SUPPORT_ALLOCATIONS_H_
#define QUENXML2_TESTS_SUPPORT_ALLOCATIONS_H_

#include <cstddef>
#include <cstdint>

namespace quen::test {

// Bytes and blocks that are allocated now, on all threads.
std::size_t AllocatedBytes();
std::size_t AllocatedBlocks();

// The most bytes that were allocated at a time since the last call of ResetPeak.
std::size_t PeakBytes();
void ResetPeak();

// While one lives, the `inNth` allocation of this thread, from 0, throws std::bad_alloc; with
// `inPersistent` all that follow it too.
class FailingAllocation {
 public:
  FailingAllocation(std::uint64_t inNth, bool inPersistent);
  ~FailingAllocation();
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;

  // Whether one has failed.
  static bool HasFailed();
  // How many allocations there were, failed ones included.
  static std::uint64_t Count();
  // No more of them fails.
  static void Stop();
};

}  // namespace quen::test

#endif  // QUENXML2_TESTS_SUPPORT_ALLOCATIONS_H_

// SPDX-License-Identifier: Apache-2.0
#ifndef QUENXML2_TESTS_SUPPORT_SMALL_STACK_H_
#define QUENXML2_TESTS_SUPPORT_SMALL_STACK_H_

#include <pthread.h>

#include <functional>
#include <stdexcept>

namespace quen::test {

// Runs `inOperation` on a thread with a stack of 512 KiB, as embedding programs use; a recursion
// over the depth of a tree crashes there.
inline void OnSmallStack(std::function<void()> inOperation) {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, 512 * 1024);
  pthread_t thread;
  const int failed = pthread_create(
      &thread, &attributes,
      [](void* operation) -> void* {
        (*static_cast<std::function<void()>*>(operation))();
        return nullptr;
      },
      &inOperation);
  pthread_attr_destroy(&attributes);
  if (failed != 0) throw std::runtime_error("no thread");
  pthread_join(thread, nullptr);
}

}  // namespace quen::test

#endif  // QUENXML2_TESTS_SUPPORT_SMALL_STACK_H_

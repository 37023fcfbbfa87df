// SPDX-License-Identifier: Apache-2.0
//
// The clause list of the data tree, for Guarded(): the library's own failures pass unchanged,
// anything else is 1000 "Unknown Exception". What the engines throw was translated in the document
// layer already.
#ifndef QUENXML2_DATA_CLAUSES_H_
#define QUENXML2_DATA_CLAUSES_H_

#include <cstdint>

namespace quen::internal {

struct DataClauses {
  [[noreturn]] static void Rethrow(const char16_t* inContext);
};

// Lets a forced unwind through, a thread that is being cancelled; swallows what else is being
// handled.
void Swallow();

// Runs `inOperation`; whatever it throws gives 0.
template <class Operation>
std::int32_t ZeroOnFailure(Operation&& inOperation) {
  try {
    return inOperation();
  } catch (...) {
    Swallow();
    return 0;
  }
}

}  // namespace quen::internal

#endif  // QUENXML2_DATA_CLAUSES_H_

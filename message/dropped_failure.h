// SPDX-License-Identifier: Apache-2.0
#ifndef QUENXML2_MESSAGE_DROPPED_FAILURE_H_
#define QUENXML2_MESSAGE_DROPPED_FAILURE_H_

#include <quenxml2/exceptions.h>

namespace quen::internal {

// Runs `inOperation`. A failure of the library ends it and goes no further: what can be read of a
// message is read.
template <class Operation>
void DropFailure(Operation&& inOperation) {
  try {
    inOperation();
  } catch (const CQuenXMLException2w&) {
  }
}

}  // namespace quen::internal

#endif  // QUENXML2_MESSAGE_DROPPED_FAILURE_H_

// SPDX-License-Identifier: Apache-2.0
#ifndef QUENXML2_XSL_FAILURE_H_
#define QUENXML2_XSL_FAILURE_H_

#include <quenxml2/types.h>

namespace quen::internal {

// Why a transform can not go on: the engine's message or our own.
struct TransformFailure {
  wstring message;
};

}  // namespace quen::internal

#endif  // QUENXML2_XSL_FAILURE_H_

// SPDX-License-Identifier: Apache-2.0
#include "data/clauses.h"

#include <cxxabi.h>

#include "foundation/failure.h"

namespace quen::internal {

void DataClauses::Rethrow(const char16_t* inContext) {
  try {
    throw;
  } catch (abi::__forced_unwind&) {
    throw;
  } catch (const CQuenXMLException2w& failure) {
    throw CQuenXMLException2w(failure);
  } catch (...) {
    ThrowXMLException2w(inContext, kUnknownFailure, u"Unknown Exception");
  }
}

void Swallow() {
  try {
    throw;
  } catch (abi::__forced_unwind&) {
    throw;
  } catch (...) {
  }
}

}  // namespace quen::internal

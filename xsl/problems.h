// SPDX-License-Identifier: Apache-2.0
//
// What the engine has to say about a run that fails: the text of its last error.
#ifndef QUENXML2_XSL_PROBLEMS_H_
#define QUENXML2_XSL_PROBLEMS_H_

#include <utility>

#include <xalanc/PlatformSupport/DOMStringPrintWriter.hpp>
#include <xalanc/XalanTransformer/XalanTransformerProblemListener.hpp>

#include "xsl/failure.h"

namespace quen::internal {

class Problems {
 public:
  Problems();

  // Collects errors and drops warnings and messages.
  xalanc::ProblemListener& Listener() { return listener_; }

  // Runs a part of the engine. What the engine throws becomes a TransformFailure with the text of
  // the error; anything else passes.
  template <class Operation>
  decltype(auto) Run(Operation&& inOperation) const {
    try {
      return std::forward<Operation>(inOperation)();
    } catch (...) {
      Rethrow();
    }
  }

 private:
  [[noreturn]] void Rethrow() const;

  xalanc::XalanDOMString text_;
  xalanc::DOMStringPrintWriter writer_;
  xalanc::XalanTransformerProblemListener listener_;
};

}  // namespace quen::internal

#endif  // QUENXML2_XSL_PROBLEMS_H_

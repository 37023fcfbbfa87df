// SPDX-License-Identifier: Apache-2.0
//
// The clause lists of the transforms, for Guarded().
#ifndef QUENXML2_XSL_CLAUSES_H_
#define QUENXML2_XSL_CLAUSES_H_

namespace quen::internal {

// A TransformFailure and an XSLException are 1010 with their message, a failure of the DOM has the
// DOM's code, the library's own stay, anything else is 1009 "Unknown Error".
struct TransformClauses {
  [[noreturn]] static void Rethrow(const char16_t* inContext);
};

// The same without the DOM's failures: what works on a copy of a node.
struct NodeTransformClauses {
  [[noreturn]] static void Rethrow(const char16_t* inContext);
};

// The start of the engine, and copying: the same, and what is not foreseen has `inContext` replaced
// by one of its own.
struct StartClauses {
  [[noreturn]] static void Rethrow(const char16_t* inContext);
};
struct CopyClauses {
  [[noreturn]] static void Rethrow(const char16_t* inContext);
};

// Registration of a style sheet: that it can not be compiled is 4 "Error compiling style sheet",
// memory that runs out 1009 "Unknown Error"; all else passes.
struct CompileClauses {
  [[noreturn]] static void Rethrow(const char16_t* inContext);
};

}  // namespace quen::internal

#endif  // QUENXML2_XSL_CLAUSES_H_

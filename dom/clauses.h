// SPDX-License-Identifier: Apache-2.0
//
// The clause lists of the document layer: what each turns foreign exceptions into. For Guarded().
#ifndef QUENXML2_DOM_CLAUSES_H_
#define QUENXML2_DOM_CLAUSES_H_

namespace quen::internal {

// Nodes, elements, iterators, accessors of a document: the DOM's failures with the DOM's code, the
// library's own unchanged, anything else 1000 "Unknown Exception".
struct NodeClauses {
  [[noreturn]] static void Rethrow(const char16_t* inContext);
};

// Selection: an XSLException is 1010 with its message; then as NodeClauses.
struct SelectClauses {
  [[noreturn]] static void Rethrow(const char16_t* inContext);
};

// Factories: the DOM's failures with the DOM's code, anything else 1009 "Unknown Error".
struct FactoryClauses {
  [[noreturn]] static void Rethrow(const char16_t* inContext);
};

// Parsing from a file, and validation: an XMLException is 1009 "Parse Error: " and its message, the
// DOM's failures have the DOM's code, the library's own stay, anything else is 1009 "Unknown
// Error".
struct LoadClauses {
  [[noreturn]] static void Rethrow(const char16_t* inContext);
};

// Parsing from text: as LoadClauses, with the message of an XMLException alone.
struct LoadTextClauses {
  [[noreturn]] static void Rethrow(const char16_t* inContext);
};

}  // namespace quen::internal

#endif  // QUENXML2_DOM_CLAUSES_H_

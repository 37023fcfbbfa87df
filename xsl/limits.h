// SPDX-License-Identifier: Apache-2.0
//
// The limits of a transform, beside those of what is parsed. Exceeding one fails the transform with
// code 1010. docs/xsl.md lists them for users.
#ifndef QUENXML2_XSL_LIMITS_H_
#define QUENXML2_XSL_LIMITS_H_

#include <cstddef>

namespace quen::internal {

// Templates within templates. The engine keeps them in memory of its own, without bound: a template
// that calls itself takes gigabytes before it fails.
inline constexpr std::size_t kMaxTemplateDepth = 20000;

// Bytes of stack that a run may have taken when it asks for the value of a variable or evaluates a
// text. The engine evaluates global variables that wait for each other recursively, at 1 to 3 KiB
// for each: on a stack of 512 KiB it crashed in a chain of 150.
inline constexpr std::size_t kMaxStackOfRun = 192 * 1024;

// Texts that are evaluated as expressions, and evaluate texts themselves. A text of the source that
// evaluates itself recursed until the stack ended.
inline constexpr std::size_t kMaxEvaluationDepth = 16;

// Digits of a number that becomes text. Xalan-C 1.12 writes a number of 90 characters, its sign
// among them, over the end of a buffer, and the process is aborted.
inline constexpr int kMaxWrittenDigits = 88;

// References to entities in a style sheet and in a document that a style sheet names.
inline constexpr std::size_t kMaxStyleSheetEntities = 50000;

// Comments and processing instructions outside of the root of a source in a file or stream. The
// engine looks for the last of them from the first one on: 100,000 take eight seconds.
inline constexpr std::size_t kMaxNodesOutsideRoot = 10000;

}  // namespace quen::internal

#endif  // QUENXML2_XSL_LIMITS_H_

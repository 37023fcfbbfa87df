// SPDX-License-Identifier: Apache-2.0
#ifndef QUENXML2_XSL_ENGINE_H_
#define QUENXML2_XSL_ENGINE_H_

namespace quen::internal {

// Starts Xalan-C, once in the process and from any thread; a start that failed is tried again by
// the next call. Throws what the engine throws.
//
// The start also replaces the function system-property() of the engine, for the whole process: the
// engine's own hands out the variables of the process's environment.
void StartXalan();

}  // namespace quen::internal

#endif  // QUENXML2_XSL_ENGINE_H_

// SPDX-License-Identifier: Apache-2.0
//
// The clause around the calls of the cipher, for Guarded().
#ifndef QUENXML2_DOM_CIPHER_CLAUSES_H_
#define QUENXML2_DOM_CIPHER_CLAUSES_H_

namespace quen::internal {

// A failure of the cipher becomes a CQuenXMLException2w with its code and message, under
// `inContext`, or under the cipher's own context where that is null. Anything else passes through.
struct CipherClauses {
  [[noreturn]] static void Rethrow(const char16_t* inContext);
};

}  // namespace quen::internal

#endif  // QUENXML2_DOM_CIPHER_CLAUSES_H_

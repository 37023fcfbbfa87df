// SPDX-License-Identifier: Apache-2.0
#ifndef QUENXML2_TESTS_COMPONENTS_CIPHER_SUPPORT_H_
#define QUENXML2_TESTS_COMPONENTS_CIPHER_SUPPORT_H_

#include <quenxml2/cipher.h>

#include <string>

namespace quen::testing {

inline constexpr char16_t kRawKey[] =
    u"quen-raw-key:000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f";

// What an operation throws, as "code operation: message", or "none".
template <class Operation>
std::string CryptoFailureOf(Operation&& inOperation) {
  try {
    inOperation();
  } catch (const CQuenCryptoExceptionw& failure) {
    std::string text = std::to_string(failure.GetErrorCode()) + ' ';
    const std::u16string prefix = u"CQuenAESW::";
    std::u16string context = failure.GetErrorContext();
    if (context.compare(0, prefix.size(), prefix) == 0) context.erase(0, prefix.size());
    for (const char16_t unit : context) text += static_cast<char>(unit);
    return text + ": " + failure.what();
  }
  return "none";
}

template <class Operation>
unsigned CryptoCodeOf(Operation&& inOperation) {
  try {
    inOperation();
  } catch (const CQuenCryptoExceptionw& failure) {
    return failure.GetErrorCode();
  }
  return 0;
}

}  // namespace quen::testing

#endif  // QUENXML2_TESTS_COMPONENTS_CIPHER_SUPPORT_H_

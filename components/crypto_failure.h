// SPDX-License-Identifier: Apache-2.0
//
// The failures of the cipher. They are thrown without a context, which the operation adds.
#ifndef QUENXML2_COMPONENTS_CRYPTO_FAILURE_H_
#define QUENXML2_COMPONENTS_CRYPTO_FAILURE_H_

#include <cstdint>

namespace quen::internal {

// The codes are part of the interface: docs/cipher.md lists them with their messages.
enum class CryptoCode : std::uint32_t {
  kNoKey = 2001,
  kMalformedRawKey = 2002,
  kEmptyInput = 2003,
  kForeignForm = 2004,
  kUnknownVersion = 2005,
  kParametersOutOfBounds = 2006,
  kCutShort = 2007,
  kTooLong = 2008,
  kWrongKey = 2009,
  kAltered = 2010,
  kInvalidFileName = 2011,
  kFileExists = 2012,
  kFileNotRead = 2013,
  kFileNotWritten = 2014,
  kEngineFailure = 2015,
  kOutOfMemory = 2016,
};

[[noreturn]] void ThrowCrypto(CryptoCode inCode);
// The same, with the system's description of an errno value at the end of the message.
[[noreturn]] void ThrowCrypto(CryptoCode inCode, int inErrno);

// For use in a catch-all: throws the current exception as a CQuenCryptoExceptionw with `inContext`.
[[noreturn]] void RethrowCrypto(const char16_t* inContext);

template <class Operation>
decltype(auto) InCryptoContext(const char16_t* inContext, Operation&& inOperation) {
  try {
    return inOperation();
  } catch (...) {
    RethrowCrypto(inContext);
  }
}

}  // namespace quen::internal

#endif  // QUENXML2_COMPONENTS_CRYPTO_FAILURE_H_

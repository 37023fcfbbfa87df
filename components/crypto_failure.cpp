// SPDX-License-Identifier: Apache-2.0
#include "components/crypto_failure.h"

#include <cstring>
#include <new>
#include <stdexcept>

#include <quenxml2/exceptions.h>

namespace quen::internal {
namespace {

const char16_t* MessageOf(CryptoCode inCode) {
  switch (inCode) {
    case CryptoCode::kNoKey:
      return u"No key was set";
    case CryptoCode::kMalformedRawKey:
      return u"Malformed raw key";
    case CryptoCode::kEmptyInput:
      return u"Enciphered text is empty";
    case CryptoCode::kForeignForm:
      return u"Not an enciphered text";
    case CryptoCode::kUnknownVersion:
      return u"Unknown version of the enciphered form";
    case CryptoCode::kParametersOutOfBounds:
      return u"Parameters of the header are out of bounds";
    case CryptoCode::kCutShort:
      return u"Enciphered text is cut short";
    case CryptoCode::kTooLong:
      return u"Enciphered text is too long";
    case CryptoCode::kWrongKey:
      return u"Wrong key or altered header";
    case CryptoCode::kAltered:
      return u"Enciphered text was altered";
    case CryptoCode::kInvalidFileName:
      return u"Invalid file name";
    case CryptoCode::kFileExists:
      return u"File already exists";
    case CryptoCode::kFileNotRead:
      return u"Failed to read file";
    case CryptoCode::kFileNotWritten:
      return u"Failed to write file";
    case CryptoCode::kEngineFailure:
      return u"Cipher engine failed";
    case CryptoCode::kOutOfMemory:
      return u"Out of memory";
  }
  return u"";
}

CQuenCryptoExceptionw Failure(const char16_t* inContext, CryptoCode inCode) {
  return CQuenCryptoExceptionw(inContext, static_cast<std::uint32_t>(inCode), MessageOf(inCode));
}

}  // namespace

void ThrowCrypto(CryptoCode inCode) { throw Failure(u"", inCode); }

void ThrowCrypto(CryptoCode inCode, int inErrno) {
  wstring message = MessageOf(inCode);
  // Unlike strerror, this does not follow the locale.
  if (const char* description = strerrordesc_np(inErrno)) {
    message += u": ";
    while (*description != '\0') message += static_cast<char16_t>(*description++);
  }
  throw CQuenCryptoExceptionw(u"", static_cast<std::uint32_t>(inCode), message.c_str());
}

void RethrowCrypto(const char16_t* inContext) {
  try {
    throw;
  } catch (CQuenCryptoExceptionw& failure) {
    failure.SetErrorContext(inContext);
    throw;
  } catch (const std::bad_alloc&) {
    throw Failure(inContext, CryptoCode::kOutOfMemory);
  } catch (const std::length_error&) {
    throw Failure(inContext, CryptoCode::kOutOfMemory);
  }
}

}  // namespace quen::internal

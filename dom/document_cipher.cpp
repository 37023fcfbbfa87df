// SPDX-License-Identifier: Apache-2.0
//
// The enciphered forms of a document. A cipher object serves one operation, so that no key outlives
// it.
#include <quenxml2/cipher.h>

#include "dom/cipher_clauses.h"
#include "dom/document_impl.h"
#include "foundation/failure.h"
#include "foundation/impl_utils.h"

namespace quen {

using internal::CipherClauses;
using internal::Guarded;

namespace internal {

void CipherClauses::Rethrow(const char16_t* inContext) {
  try {
    throw;
  } catch (const CQuenCryptoExceptionw& failure) {
    ThrowXMLException2w(inContext != nullptr ? wstring(inContext) : failure.GetErrorContext(),
                        failure.GetErrorCode(), failure.GetErrorMessage());
  }
}

namespace {

// "" for the empty string, which no cipher made.
wstring Decipher(const string& inData, const wstring& inKey) {
  if (inData.empty()) return wstring();
  return Guarded<CipherClauses>(nullptr, [&] {
    CQuenAESW cipher;
    cipher.SetKey(inKey);
    return cipher.DecryptString(inData);
  });
}

}  // namespace
}  // namespace internal

void CQuenXMLDocumentImpl2w::WriteToEncryptedFile(const string& inPath, std::int32_t inOverwrite,
                                                  const wstring& inKey) const {
  // The declaration says utf-8 here too; it is not heeded when the text comes back.
  const wstring text = u"<?xml version='1.0' encoding='utf-8'?>" + GetSubset();
  Guarded<CipherClauses>(u"CQuenXMLDocument2w::WriteToEncryptedFile()", [&] {
    CQuenAESW cipher;
    cipher.SetKey(inKey);
    cipher.EncryptBufferToFile(text, gImplUtils.TranscodeFromUTF8(inPath), inOverwrite != 0);
  });
}

void CQuenXMLDocumentImpl2w::LoadEncrypted(const wstring& inPath, const wstring& inKey) {
  LoadXML(Guarded<CipherClauses>(nullptr, [&] {
    CQuenAESW cipher;
    cipher.SetKey(inKey);
    return cipher.DecryptFileToBuffer(inPath);
  }));
}

void CQuenXMLDocumentImpl2w::LoadXMLEncrypted(const string& inData, const wstring& inKey) {
  LoadXML(internal::Decipher(inData, inKey));
}

string CQuenXMLDocumentImpl2w::GetEncryptedSubset(const wstring& inKey) {
  const wstring text = GetSubset();
  if (text.empty()) return string();
  return Guarded<CipherClauses>(nullptr, [&] {
    CQuenAESW cipher;
    cipher.SetKey(inKey);
    return cipher.EncryptString(text);
  });
}

void CQuenXMLDocumentImpl2w::AppendEncryptedSubset(const string& inData, const wstring& inKey) {
  AppendSubset(internal::Decipher(inData, inKey));
}

}  // namespace quen

// SPDX-License-Identifier: Apache-2.0
//
// Files, enciphered forms, and whole documents in and out.
#include <quenxml2/cipher.h>
#include <quenxml2/data.h>

#include "dom/cipher_clauses.h"
#include "foundation/failure.h"

namespace quen {

using internal::CipherClauses;
using internal::Guarded;

void CQuenXMLDataImpl2w::ReadFromFile(const wstring& inFile) {
  document_.Load(inFile);
  CursorToNewRoot();
}

void CQuenXMLDataImpl2w::WriteToFile(const string& inFile, std::int32_t inOverwrite) {
  document_.WriteToFile(inFile, inOverwrite);
}

void CQuenXMLDataImpl2w::WriteToFileBinary(const string& inFile, std::int32_t inOverwrite) const {
  document_.WriteToFileBinary(inFile, inOverwrite);
}

void CQuenXMLDataImpl2w::WriteToEncryptedFile(const string& inFile, std::int32_t inOverwrite,
                                              const wstring& inKey) {
  document_.WriteToEncryptedFile(inFile, inOverwrite, inKey);
}

void CQuenXMLDataImpl2w::ReadFromEncryptedFile(const wstring& inFile, const wstring& inKey) {
  const wstring text = Guarded<CipherClauses>(nullptr, [&] {
    CQuenAESW cipher;
    cipher.SetKey(inKey);
    return cipher.DecryptFileToBuffer(inFile);
  });
  document_.LoadXML(text);
  CursorToNewRoot();
}

void CQuenXMLDataImpl2w::GetEncryptedSubset(string& outEnciphered, const wstring& inKey,
                                            const wstring& inPath) {
  outEnciphered.clear();
  wstring text;
  GetSubset(text, inPath);
  if (text.empty()) return;
  Guarded<CipherClauses>(nullptr, [&] {
    CQuenAESW cipher;
    cipher.SetKey(inKey);
    outEnciphered = cipher.EncryptString(text);
  });
}

void CQuenXMLDataImpl2w::AppendEncryptedSubset(const string& inEnciphered, const wstring& inKey,
                                               const wstring& inPath) {
  wstring text;
  if (!inEnciphered.empty()) {
    text = Guarded<CipherClauses>(nullptr, [&] {
      CQuenAESW cipher;
      cipher.SetKey(inKey);
      return cipher.DecryptString(inEnciphered);
    });
  }
  AppendSubset(text, inPath);
}

std::int32_t CQuenXMLDataImpl2w::SetDocument(const CQuenXMLDocument2w& inDocument) {
  document_ = inDocument;
  return CursorToNewRoot();
}

CQuenXMLDocument2w& CQuenXMLDataImpl2w::GetDocument() { return document_; }

}  // namespace quen

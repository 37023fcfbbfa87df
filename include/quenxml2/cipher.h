// SPDX-License-Identifier: Apache-2.0
//
// Enciphered texts: wide text under a key, as a byte string or as a file.
//
// AES-256-GCM with a fresh salt and nonce for every text, so that the same text under the same key
// gives other bytes each time. Whatever was changed, cut, lengthened or enciphered under another
// key is an exception: text is handed on only after all of it was authenticated. docs/cipher.md has
// the form byte by byte, the list of codes, and what is wiped when.
//
//   quen::CQuenAESW cipher;
//   cipher.SetKey(u"correct horse battery staple");
//   const std::string secret = cipher.EncryptString(u"<order/>");
//   cipher.DecryptString(secret);  // u"<order/>"
//
// The key is one of two:
// - A password: any text, also the empty one, which protects nothing. Its 16-bit units count as
//   they are, so that a composed and a decomposed accent are two passwords. Every operation derives
//   the cipher key anew by scrypt, which takes over half a second and 128 MiB on purpose.
// - A raw key: u"quen-raw-key:" and 64 hexadecimal digits, for programs that keep 256 random bits
//   themselves. Deriving from it takes microseconds, so a service can encipher thousands of texts
//   under one key. A key that begins with quen-raw-key, in upper or lower case, and is not of this
//   form is refused, since taking it for a password would hide a typing error.
//
// Failures are CQuenCryptoExceptionw with codes from 2001 on, and neither key nor text is in them.
// An object is used by one thread at a time; separate objects need no lock. An object cannot be
// copied, and wipes its key when it gets another one and at its end.
#ifndef QUENXML2_CIPHER_H_
#define QUENXML2_CIPHER_H_

#include <memory>

#include <quenxml2/exceptions.h>
#include <quenxml2/export.h>
#include <quenxml2/types.h>

namespace quen {

// Enciphers and deciphers texts and files under one key.
class QUENXML2_API CQuenAESW {
 public:
  // Without a key: every operation but SetKey throws 2001 "No key was set".
  CQuenAESW() noexcept;
  virtual ~CQuenAESW();
  CQuenAESW(const CQuenAESW&) = delete;
  CQuenAESW& operator=(const CQuenAESW&) = delete;

  // Replaces the key. Throws 2002 "Malformed raw key"; the object has no key then.
  void SetKey(const wstring& inKey);

  // Any units are text here, lone surrogates and U+0000 too. The result is 112 bytes longer than
  // the text's two bytes a unit, also for the empty text.
  string EncryptString(const wstring& inText) const;
  // The text that EncryptString was given. Throws 2003 to 2010 for anything else.
  wstring DecryptString(const string& inData) const;

  // Writes the bytes of EncryptString into the file `inPath`, with permissions for the owner alone.
  // They are written beside it and then take its place in one step: whenever this is interrupted,
  // the former file or the new one is there, whole. A link at `inPath` is replaced, not followed.
  // With `inOverwrite` false whatever exists at `inPath` stays untouched and 2012 "File already
  // exists" is thrown. 2011 if the path is empty, has a U+0000 or a lone surrogate; 2014 for every
  // failure of the file system.
  void EncryptBufferToFile(const wstring& inBuffer, const wstring& inPath, bool inOverwrite) const;
  // The text given to EncryptBufferToFile. Throws as DecryptString does, 2011 as above, and 2013 if
  // there is no such file or it cannot be read.
  wstring DecryptFileToBuffer(const wstring& inPath) const;

 private:
  struct Key;
  std::unique_ptr<Key> key_;
};

}  // namespace quen

#endif  // QUENXML2_CIPHER_H_

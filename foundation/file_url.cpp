// SPDX-License-Identifier: Apache-2.0
#include "foundation/file_url.h"

#include <unistd.h>

#include <cstdlib>
#include <memory>

#include <xercesc/util/XMLURL.hpp>

#include "foundation/failure.h"
#include "foundation/impl_utils.h"

namespace quen::internal {
namespace {

struct Freer {
  void operator()(char* inMemory) const { std::free(inMemory); }
};

// What may stand in the path of a URL as it is (RFC 3986, 3.3).
bool IsPathCharacter(char inByte) {
  return (inByte >= 'a' && inByte <= 'z') || (inByte >= 'A' && inByte <= 'Z') ||
         (inByte >= '0' && inByte <= '9') ||
         string("-._~/!$&'()*+,=@").find(inByte) != string::npos;
}

}  // namespace

string PathOfFileUrl(const xercesc::XMLURL& inUrl) {
  const string encoded = gImplUtils.TransCodeToUTF8(OrEmpty(inUrl.getPath()));
  string path;
  for (std::size_t i = 0; i < encoded.size(); ++i) {
    const auto digit = [&](std::size_t at) {
      const string digits = "0123456789abcdef0123456789ABCDEF";
      const std::size_t value = at < encoded.size() ? digits.find(encoded[at]) : string::npos;
      return value == string::npos ? 99U : static_cast<unsigned>(value % 16);
    };
    const bool isEscape = encoded[i] == '%' && digit(i + 1) < 16 && digit(i + 2) < 16;
    path += isEscape ? static_cast<char>(digit(i + 1) * 16 + digit(i + 2)) : encoded[i];
    if (isEscape) i += 2;
  }
  return path;
}

wstring FileUrlOfPath(const string& inPath) {
  string path = inPath;
  if (path.empty() || path[0] != '/') {
    const std::unique_ptr<char, Freer> directory(::getcwd(nullptr, 0));
    path = (directory != nullptr ? string(directory.get()) : string()) + "/" + path;
  }
  wstring url = u"file://";
  for (const char byte : path) {
    if (IsPathCharacter(byte)) {
      url += static_cast<char16_t>(byte);
    } else {
      const auto value = static_cast<unsigned char>(byte);
      url += u'%';
      url += u"0123456789ABCDEF"[value >> 4];
      url += u"0123456789ABCDEF"[value & 0xF];
    }
  }
  return url;
}

}  // namespace quen::internal

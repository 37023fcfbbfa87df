// SPDX-License-Identifier: Apache-2.0
#include "xsl/access.h"

#include <xercesc/util/XMLURL.hpp>

#include "foundation/failure.h"
#include "foundation/file_url.h"
#include "foundation/impl_utils.h"
#include "xsl/failure.h"

namespace quen::internal {
namespace {

class StreamReader : public ByteReader {
 public:
  explicit StreamReader(std::istream& ioStream) : stream_(ioStream) {}
  std::size_t Read(char* outBytes, std::size_t inCapacity) override {
    stream_.read(outBytes, static_cast<std::streamsize>(inCapacity));
    if (stream_.bad()) throw InputFailure{u"the stream can not be read"};
    return static_cast<std::size_t>(stream_.gcount());
  }

 private:
  std::istream& stream_;
};

// An absolute URL of a protocol that the engine knows; anything else is a path, as it is for a
// document that is loaded.
std::optional<xercesc::XMLURL> AbsoluteUrl(const wstring& inLocation) {
  try {
    xercesc::XMLURL url(inLocation.c_str());
    if (!url.isRelative()) return url;
  } catch (const xercesc::MalformedURLException&) {
  }
  return std::nullopt;
}

// A path with half a surrogate pair is one that can not be opened, and fails as such.
string Utf8Path(const wstring& inPath) {
  try {
    return gImplUtils.TransCodeToUTF8(inPath);
  } catch (const CQuenXMLException2w& failure) {
    throw TransformFailure{failure.GetErrorMessage()};
  }
}

}  // namespace

std::optional<string> LocalPath(const wstring& inLocation) {
  const std::optional<xercesc::XMLURL> url = AbsoluteUrl(inLocation);
  if (!url.has_value()) return Utf8Path(inLocation);
  const wstring host = OrEmpty(url->getHost());
  const bool isLocal =
      url->getProtocol() == xercesc::XMLURL::File && (host.empty() || host == u"localhost");
  return isLocal ? std::optional<string>(PathOfFileUrl(*url)) : std::nullopt;
}

wstring LocationOf(const wstring& inPath) {
  return AbsoluteUrl(inPath).has_value() ? inPath : FileUrlOfPath(Utf8Path(inPath));
}

std::unique_ptr<ByteReader> OpenLocal(const wstring& inLocation) {
  const std::optional<string> path = LocalPath(inLocation);
  if (!path.has_value())
    throw InputFailure{u"'" + inLocation + u"' is not a local file and is not read"};
  return OpenFile(*path, inLocation);
}

bool StaysBelow(std::u16string_view inName) {
  return !inName.empty() && inName.front() != u'/' && inName.find(u"..") == inName.npos &&
         inName.find_first_of(u":\\%") == inName.npos;
}

void GivenNames::Add(std::u16string_view inText) {
  constexpr std::size_t kLongestName = 4096;
  if (inText.size() <= kLongestName) names_.emplace(inText);
  std::size_t begin = inText.find_first_of(u"'\"");
  while (begin != inText.npos) {
    const std::size_t end = inText.find(inText[begin], begin + 1);
    if (end == inText.npos) return;
    if (end - begin <= kLongestName) names_.emplace(inText.substr(begin + 1, end - begin - 1));
    begin = inText.find_first_of(u"'\"", end + 1);
  }
}

std::unique_ptr<ByteReader> ReadStream(std::istream& ioStream) {
  return std::make_unique<StreamReader>(ioStream);
}

wstring ResolveLocation(const wstring& inLocation, const wstring& inBase) {
  const std::optional<xercesc::XMLURL> base = AbsoluteUrl(inBase);
  if (!base.has_value() || AbsoluteUrl(inLocation).has_value()) return LocationOf(inLocation);
  try {
    return OrEmpty(xercesc::XMLURL(*base, inLocation.c_str()).getURLText());
  } catch (const xercesc::MalformedURLException&) {
    return LocationOf(inLocation);
  }
}

}  // namespace quen::internal

// SPDX-License-Identifier: Apache-2.0
//
// What a transform may open: local files that the application names, and what a style sheet names.
// Nothing here opens a connection.
#ifndef QUENXML2_XSL_ACCESS_H_
#define QUENXML2_XSL_ACCESS_H_

#include <istream>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_set>

#include <quenxml2/types.h>

#include "foundation/text_input.h"

namespace quen::internal {

// The "file:" URL of what an application names, a path or a "file:" URL, so that what a style sheet
// names resolves against it. Any other URL comes back as it is, for OpenLocal to refuse. Throws
// TransformFailure for a path that is no text.
wstring LocationOf(const wstring& inPath);

// Opens a local file by its "file:" URL or path. Throws InputFailure, also for any other URL.
std::unique_ptr<ByteReader> OpenLocal(const wstring& inLocation);

// The bytes of a stream, from where it stands to its end.
std::unique_ptr<ByteReader> ReadStream(std::istream& ioStream);

// `inLocation` seen from `inBase`, which may be empty.
wstring ResolveLocation(const wstring& inLocation, const wstring& inBase);

// The path of the file in UTF-8, nothing for a URL that is no file's.
std::optional<string> LocalPath(const wstring& inLocation);

// Whether a relative name leads nowhere but into the folder of what it is relative to.
bool StaysBelow(std::u16string_view inName);

// The texts that stand in a style sheet or a parameter, which are all that document() may take for
// a name: one that is put together at run time may come from the source.
class GivenNames {
 public:
  // A text as a whole, and what stands in quotes within it.
  void Add(std::u16string_view inText);
  bool Has(std::u16string_view inName) const { return names_.count(wstring(inName)) != 0; }

 private:
  std::unordered_set<wstring> names_;
};

}  // namespace quen::internal

#endif  // QUENXML2_XSL_ACCESS_H_

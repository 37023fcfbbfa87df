// SPDX-License-Identifier: Apache-2.0
//
// The writing side of a document: plain files and UTF-8.
#include <cerrno>
#include <cstdio>
#include <memory>

#include "dom/clauses.h"
#include "dom/document_impl.h"
#include "foundation/failure.h"
#include "foundation/impl_utils.h"
#include "foundation/xml_writer.h"

namespace quen {
namespace {

constexpr const char* kDeclaration = "<?xml version='1.0' encoding='utf-8'?>";
constexpr const char16_t* kWriteContext = u"CQuenXMLDataImpl::WriteToFile";

struct FileCloser {
  void operator()(std::FILE* inFile) const { std::fclose(inFile); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

[[noreturn]] void ThrowNotWritten() {
  ThrowXMLException2w(kWriteContext, kFileNotOpened, u"Failed to open file");
}

void Write(std::FILE* ioFile, const string& inBytes) {
  if (std::fwrite(inBytes.data(), 1, inBytes.size(), ioFile) != inBytes.size()) ThrowNotWritten();
}

}  // namespace

void CQuenXMLDocumentImpl2w::WriteToFile(const string& inPath, std::int32_t inOverwrite) const {
  // The exclusive mode refuses an existing file also when it appears in between.
  errno = 0;
  FilePtr file(std::fopen(inPath.c_str(), inOverwrite != 0 ? "wb" : "wbx"));
  if (file == nullptr) {
    if (inOverwrite == 0 && (errno == EEXIST || errno == EISDIR))
      ThrowXMLException2w(kWriteContext, kFileExists, u"File already exists");
    ThrowNotWritten();
  }
  Write(file.get(), kDeclaration);
  Write(file.get(), GetUTF8Subset());
  // A full disk may show only now: data lost in silence would be worse than a failure.
  if (std::fclose(file.release()) != 0) ThrowNotWritten();
}

void CQuenXMLDocumentImpl2w::WriteToFileBinary(const string& inPath,
                                               std::int32_t inOverwrite) const {
  WriteToFile(inPath, inOverwrite);  // there is no text mode on this platform
}

string CQuenXMLDocumentImpl2w::GetUTF8Subset() const {
  return internal::Guarded<internal::NodeClauses>(u"CQuenXMLNodeImpl2w::GetSubset()",
                                                  [&] { return internal::XmlUtf8(node_); });
}

void CQuenXMLDocumentImpl2w::AppendUTF8Subset(const string& inData) {
  AppendSubset(gImplUtils.TranscodeFromUTF8(inData));
}

}  // namespace quen

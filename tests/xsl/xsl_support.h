// SPDX-License-Identifier: Apache-2.0
//
// The two widths of the transforms as one, so that the same rows run through both.
#ifndef QUENXML2_TESTS_XSL_XSL_SUPPORT_H_
#define QUENXML2_TESTS_XSL_XSL_SUPPORT_H_

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <quenxml2/narrow.h>
#include <quenxml2/quenxml2.h>
#include <unistd.h>

#include "foundation/impl_utils.h"

namespace quen::test {

struct WideWidth {
  using Xsl = CQuenXSL2w;
  using Data = CQuenXMLData2w;
  using Document = CQuenXMLDocument2w;
  using Node = CQuenXMLNode2w;
  using Exception = CQuenXMLException2w;
  static wstring Text(const std::string& utf8) { return gImplUtils.TranscodeFromUTF8(utf8); }
  static std::string Utf8(const wstring& text) { return gImplUtils.TransCodeToUTF8(text); }
};

struct NarrowWidth {
  using Xsl = CQuenXSL2;
  using Data = CQuenXMLData2;
  using Document = CQuenXMLDocument2;
  using Node = CQuenXMLNode2;
  using Exception = CQuenXMLException2;
  static std::string Text(const std::string& utf8) { return utf8; }
  static std::string Utf8(const std::string& text) { return text; }
};

// "code context message" of what `operation` throws, "" if it does not throw.
template <class Width, class Operation>
std::string FailureOf(Operation&& operation) {
  try {
    operation();
    return "";
  } catch (const typename Width::Exception& failure) {
    return std::to_string(failure.GetErrorCode()) + " " + Width::Utf8(failure.GetErrorContext()) +
           " " + Width::Utf8(failure.GetErrorMessage());
  }
}

// A folder that goes with the test.
class Folder {
 public:
  Folder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "xsl XXXXXX").string();
    path_ = ::mkdtemp(pattern.data());
  }
  ~Folder() { std::filesystem::remove_all(path_); }
  std::string operator/(const std::string& name) const { return path_ + "/" + name; }
  std::string Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(*this / name, std::ios::binary) << bytes;
    return *this / name;
  }
  std::string Read(const std::string& name) const {
    std::ostringstream bytes;
    bytes << std::ifstream(*this / name, std::ios::binary).rdbuf();
    return bytes.str();
  }

 private:
  std::string path_;
};

// A style sheet around its templates; its output has no declaration.
inline std::string Sheet(const std::string& templates, const std::string& imports = "") {
  return "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>" +
         imports + "<xsl:output omit-xml-declaration='yes'/>" + templates + "</xsl:stylesheet>";
}

// A stylesheet whose only template, for the root, holds `body`.
inline std::string RootSheet(const std::string& body) {
  return Sheet("<xsl:template match='/'>" + body + "</xsl:template>");
}

}  // namespace quen::test

#endif  // QUENXML2_TESTS_XSL_XSL_SUPPORT_H_

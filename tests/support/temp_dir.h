// SPDX-License-Identifier: Apache-2.0
//
// A directory that goes with the test that made it, also when that fails.
#ifndef QUENXML2_TESTS_SUPPORT_TEMP_DIR_H_
#define QUENXML2_TESTS_SUPPORT_TEMP_DIR_H_

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quen::test {

class TempDir {
 public:
  TempDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "quenxml2-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary directory");
    path_ = pattern;
  }
  ~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  std::string operator/(const std::string& inName) const { return path_ + "/" + inName; }
  // The path of a new file of these bytes.
  std::string File(const std::string& inName, std::string_view inBytes) const {
    const std::string path = *this / inName;
    std::ofstream(path, std::ios::binary)
        .write(inBytes.data(), static_cast<std::streamsize>(inBytes.size()));
    return path;
  }
  static std::string Bytes(const std::string& inPath) {
    std::ifstream file(inPath, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }

 private:
  std::string path_;
};

}  // namespace quen::test

#endif  // QUENXML2_TESTS_SUPPORT_TEMP_DIR_H_

// SPDX-License-Identifier: Apache-2.0
//
// Files that appear whole or not at all.
#ifndef QUENXML2_COMPONENTS_ATOMIC_FILE_H_
#define QUENXML2_COMPONENTS_ATOMIC_FILE_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quen::internal {

// Closes a file descriptor at its end.
class Descriptor {
 public:
  explicit Descriptor(int inDescriptor) : descriptor_(inDescriptor) {}
  ~Descriptor();
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int Get() const { return descriptor_; }
  // Closes now. Returns 0 or the errno value.
  int Close();

 private:
  int descriptor_;
};

// The places at which a writer can be interrupted.
enum class WriteStep {
  kStarted,         // nothing was done
  kCreated,         // the temporary file is there, empty
  kPartlyWritten,   // after each piece
  kSynchronised,    // the temporary file is on the disk
  kPublished,       // it has its place
  kTemporaryGone,   // where two steps were needed: its first name is gone
  kDirectorySynced  // its place is on the disk
};

// What tests put in: called at each step, and whether to do without renameat2, which not every file
// system has.
struct WriteSeams {
  void (*onStep)(WriteStep, void*) = nullptr;
  void* argument = nullptr;
  bool withoutRenameat2 = false;
};

// Makes `inPath` a file of `inBytes` with permissions 0600. The bytes go to a temporary file in the
// same directory, named .quen- and sixteen digits, which takes the place in one step. Throws
// kFileExists or kFileNotWritten; the temporary file is removed then.
void WriteFileAtomically(const std::string& inPath, std::string_view inBytes, bool inOverwrite,
                         const WriteSeams& inSeams = {});

// Throws what WriteFileAtomically would throw for what now stands at `inPath`, to spare the caller
// work that would be in vain.
void CheckWritable(const std::string& inPath, bool inOverwrite);

// A regular file to read. Throws kFileNotRead.
class InputFile {
 public:
  explicit InputFile(const std::string& inPath);
  std::uint64_t Size() const { return size_; }
  // Appends up to `inCount` bytes, less only at the end of the file.
  void Append(std::string& outBytes, std::size_t inCount);

 private:
  Descriptor file_;
  std::uint64_t size_;
};

}  // namespace quen::internal

#endif  // QUENXML2_COMPONENTS_ATOMIC_FILE_H_

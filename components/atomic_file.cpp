// SPDX-License-Identifier: Apache-2.0
#include "components/atomic_file.h"

#include <fcntl.h>
#include <openssl/rand.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include "components/crypto_failure.h"

namespace quen::internal {
namespace {

[[noreturn]] void ThrowNotWritten(int inErrno) {
  if (inErrno == EEXIST) ThrowCrypto(CryptoCode::kFileExists);
  ThrowCrypto(CryptoCode::kFileNotWritten, inErrno);
}

struct Place {
  std::string directory;
  std::string name;
};

Place PlaceOf(const std::string& inPath) {
  const std::size_t slash = inPath.rfind('/');
  if (slash == std::string::npos) return {".", inPath};
  return {inPath.substr(0, std::max<std::size_t>(slash, 1)), inPath.substr(slash + 1)};
}

std::string TemporaryName() {
  unsigned char random[8];
  if (RAND_bytes(random, sizeof random) != 1) ThrowCrypto(CryptoCode::kEngineFailure);
  std::string name = ".quen-";
  for (const unsigned char byte : random) {
    name += "0123456789abcdef"[byte >> 4];
    name += "0123456789abcdef"[byte & 15];
  }
  return name;
}

// A file that is removed at its end.
class TemporaryFile {
 public:
  explicit TemporaryFile(int inDirectory)
      : directory_(inDirectory),
        name_(TemporaryName()),
        file_(openat(directory_, name_.c_str(),
                     O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600)) {
    // A name of 64 random bits is taken by nobody: EEXIST would tell of another fault.
    if (file_.Get() < 0) ThrowCrypto(CryptoCode::kFileNotWritten, errno);
  }
  ~TemporaryFile() {
    if (!name_.empty()) unlinkat(directory_, name_.c_str(), 0);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  void Write(std::string_view inBytes, const WriteSeams& inSeams) {
    constexpr std::size_t kPiece = std::size_t{1} << 20;
    while (!inBytes.empty()) {
      const ssize_t written = write(file_.Get(), inBytes.data(), std::min(inBytes.size(), kPiece));
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) ThrowNotWritten(errno);
      inBytes.remove_prefix(static_cast<std::size_t>(written));
      if (inSeams.onStep != nullptr) inSeams.onStep(WriteStep::kPartlyWritten, inSeams.argument);
    }
  }

  // Also when the umask takes rights from the owner, the file can be read again.
  void Synchronise() {
    if (fchmod(file_.Get(), 0600) != 0 || fsync(file_.Get()) != 0) ThrowNotWritten(errno);
    // Some network file systems tell of a full disk here.
    if (const int failure = file_.Close()) ThrowNotWritten(failure);
  }

  const char* Name() const { return name_.c_str(); }
  void NameIsGone() { name_.clear(); }

 private:
  int directory_;
  std::string name_;
  Descriptor file_;
};

}  // namespace

Descriptor::~Descriptor() { Close(); }

int Descriptor::Close() {
  if (descriptor_ < 0) return 0;
  const int descriptor = descriptor_;
  descriptor_ = -1;
  // On Linux the descriptor is free also after EINTR.
  return close(descriptor) == 0 || errno == EINTR ? 0 : errno;
}

void CheckWritable(const std::string& inPath, bool inOverwrite) {
  struct stat status;
  if (!inOverwrite && lstat(inPath.c_str(), &status) == 0) ThrowCrypto(CryptoCode::kFileExists);
  // A device, a pipe or a directory, also behind a link, is not for replacing.
  if (stat(inPath.c_str(), &status) == 0 && !S_ISREG(status.st_mode))
    ThrowCrypto(CryptoCode::kFileNotWritten, S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
}

void WriteFileAtomically(const std::string& inPath, std::string_view inBytes, bool inOverwrite,
                         const WriteSeams& inSeams) {
  const auto reach = [&](WriteStep inStep) {
    if (inSeams.onStep != nullptr) inSeams.onStep(inStep, inSeams.argument);
  };
  CheckWritable(inPath, inOverwrite);
  const Place place = PlaceOf(inPath);
  // The directory stays the same one to the end, whatever is renamed meanwhile.
  const Descriptor directory(open(place.directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (directory.Get() < 0) ThrowNotWritten(errno);
  reach(WriteStep::kStarted);

  TemporaryFile temporary(directory.Get());
  reach(WriteStep::kCreated);
  temporary.Write(inBytes, inSeams);
  temporary.Synchronise();
  reach(WriteStep::kSynchronised);

  const char* const name = place.name.c_str();
  if (inOverwrite) {
    if (renameat(directory.Get(), temporary.Name(), directory.Get(), name) != 0)
      ThrowNotWritten(errno);
    temporary.NameIsGone();
    reach(WriteStep::kPublished);
  } else if (!inSeams.withoutRenameat2 && renameat2(directory.Get(), temporary.Name(),
                                                    directory.Get(), name, RENAME_NOREPLACE) == 0) {
    temporary.NameIsGone();
    reach(WriteStep::kPublished);
  } else {
    if (!inSeams.withoutRenameat2 && errno != EINVAL && errno != ENOSYS) ThrowNotWritten(errno);
    if (linkat(directory.Get(), temporary.Name(), directory.Get(), name, 0) != 0)
      ThrowNotWritten(errno);
    reach(WriteStep::kPublished);
    if (unlinkat(directory.Get(), temporary.Name(), 0) != 0) ThrowNotWritten(errno);
    temporary.NameIsGone();
    reach(WriteStep::kTemporaryGone);
  }

  // Some file systems cannot synchronise a directory, and say EINVAL.
  if (fsync(directory.Get()) != 0 && errno != EINVAL) ThrowNotWritten(errno);
  reach(WriteStep::kDirectorySynced);
}

InputFile::InputFile(const std::string& inPath)
    // Without O_NONBLOCK a pipe would wait here for its writer.
    : file_(open(inPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)), size_(0) {
  struct stat status;
  if (file_.Get() < 0 || fstat(file_.Get(), &status) != 0)
    ThrowCrypto(CryptoCode::kFileNotRead, errno);
  if (!S_ISREG(status.st_mode))
    ThrowCrypto(CryptoCode::kFileNotRead, S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
  size_ = static_cast<std::uint64_t>(status.st_size);
}

void InputFile::Append(std::string& outBytes, std::size_t inCount) {
  std::size_t filled = outBytes.size();
  outBytes.resize(filled + inCount);
  while (filled < outBytes.size()) {
    const ssize_t count = read(file_.Get(), outBytes.data() + filled, outBytes.size() - filled);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) ThrowCrypto(CryptoCode::kFileNotRead, errno);
    if (count == 0) break;
    filled += static_cast<std::size_t>(count);
  }
  outBytes.resize(filled);
}

}  // namespace quen::internal

// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <quenxml2/cipher.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <system_error>
#include <utility>

#include "components/atomic_file.h"
#include "tests/components/cipher_support.h"

namespace quen::testing {
namespace {

namespace fs = std::filesystem;
using internal::WriteFileAtomically;
using internal::WriteSeams;
using internal::WriteStep;

std::string Content(const fs::path& inPath) {
  std::ifstream file(inPath, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void Put(const fs::path& inPath, const std::string& inContent) {
  std::ofstream(inPath, std::ios::binary) << inContent;
}

class CipherFile : public ::testing::Test {
 protected:
  CipherFile() {
    char pattern[] = "/tmp/quen-cipher-XXXXXX";
    directory_ = mkdtemp(pattern);
    cipher_.SetKey(kRawKey);
  }
  ~CipherFile() override {
    std::error_code ignored;
    fs::remove_all(directory_, ignored);
  }

  fs::path At(const char* inName) const { return directory_ / inName; }
  std::u16string WideAt(const char* inName) const { return At(inName).u16string(); }
  std::set<std::string> NamesHere() const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(directory_))
      names.insert(entry.path().filename());
    return names;
  }
  std::string WriteFailure(const std::u16string& inPath, bool inOverwrite,
                           const std::u16string& inText = u"new") const {
    return CryptoFailureOf([&] { cipher_.EncryptBufferToFile(inText, inPath, inOverwrite); });
  }
  std::string ReadFailure(const std::u16string& inPath) const {
    return CryptoFailureOf([&] { cipher_.DecryptFileToBuffer(inPath); });
  }

  fs::path directory_;
  CQuenAESW cipher_;
};

using Names = std::set<std::string>;

TEST_F(CipherFile, HoldsTheTextForItsOwnerAlone) {
  Put(At("file"), std::string(5000, 'x'));
  chmod(At("file").c_str(), 0644);
  const mode_t mask = umask(0777);
  cipher_.EncryptBufferToFile(u"first", WideAt("file"), true);
  cipher_.EncryptBufferToFile(u"second", directory_.u16string() + u"/\u00e9\U0001F600", false);
  umask(mask);

  EXPECT_EQ(cipher_.DecryptFileToBuffer(WideAt("file")), u"first");
  EXPECT_EQ(cipher_.DecryptString(Content(At("file"))), u"first");
  EXPECT_EQ(cipher_.DecryptString(Content(At("\xC3\xA9\xF0\x9F\x98\x80"))), u"second");
  EXPECT_EQ(fs::status(At("file")).permissions(), fs::perms(0600));
  EXPECT_EQ(NamesHere(), (Names{"file", "\xC3\xA9\xF0\x9F\x98\x80"}));
}

TEST_F(CipherFile, ANameWithoutFolderIsInTheWorkingDirectory) {
  const fs::path before = fs::current_path();
  fs::current_path(directory_);
  cipher_.EncryptBufferToFile(u"text", u"file", false);
  const std::u16string text = cipher_.DecryptFileToBuffer(u"file");
  fs::current_path(before);
  EXPECT_EQ(text, u"text");
  EXPECT_EQ(NamesHere(), Names{"file"});
}

TEST_F(CipherFile, WithoutOverwriteWhatExistsStays) {
  const std::string exists = "2012 EncryptBufferToFile: File already exists";
  Put(At("file"), "old");
  fs::create_directory(At("folder"));
  fs::create_symlink("nowhere", At("dangling"));
  for (const char* name : {"file", "folder", "dangling"})
    EXPECT_EQ(WriteFailure(WideAt(name), false), exists) << name;
  EXPECT_EQ(Content(At("file")), "old");
  EXPECT_EQ(NamesHere(), (Names{"file", "folder", "dangling"}));
}

TEST_F(CipherFile, AFileThatAppearsInBetweenStays) {
  for (const bool withoutRenameat2 : {false, true}) {
    const fs::path path = At(withoutRenameat2 ? "by link" : "by rename");
    WriteSeams seams;
    seams.withoutRenameat2 = withoutRenameat2;
    seams.argument = const_cast<fs::path*>(&path);
    seams.onStep = [](WriteStep inStep, void* inPath) {
      if (inStep == WriteStep::kSynchronised) Put(*static_cast<fs::path*>(inPath), "other");
    };
    EXPECT_EQ(CryptoCodeOf([&] { WriteFileAtomically(path, "new", false, seams); }), 2012U) << path;
    EXPECT_EQ(Content(path), "other");
  }
  EXPECT_EQ(NamesHere(), (Names{"by link", "by rename"}));
}

TEST_F(CipherFile, ALinkIsReplacedAndNotFollowed) {
  Put(At("target"), "old");
  fs::create_symlink("target", At("link"));
  cipher_.EncryptBufferToFile(u"new", WideAt("link"), true);
  EXPECT_FALSE(fs::is_symlink(At("link")));
  EXPECT_EQ(cipher_.DecryptFileToBuffer(WideAt("link")), u"new");
  EXPECT_EQ(Content(At("target")), "old");
}

TEST_F(CipherFile, WhatIsNoFileIsLeftAlone) {
  fs::create_directory(At("folder"));
  ASSERT_EQ(mkfifo(At("pipe").c_str(), 0600), 0);
  fs::create_symlink("/dev/null", At("device"));
  const std::string write = "2014 EncryptBufferToFile: Failed to write file: ";
  const std::string read = "2013 DecryptFileToBuffer: Failed to read file: ";
  EXPECT_EQ(WriteFailure(WideAt("folder"), true), write + "Is a directory");
  EXPECT_EQ(WriteFailure(WideAt("pipe"), true), write + "Invalid argument");
  EXPECT_EQ(WriteFailure(WideAt("device"), true), write + "Invalid argument");
  EXPECT_EQ(WriteFailure(WideAt("missing/file"), true), write + "No such file or directory");
  EXPECT_EQ(ReadFailure(WideAt("folder")), read + "Is a directory");
  EXPECT_EQ(ReadFailure(WideAt("pipe")), read + "Invalid argument");
  EXPECT_EQ(ReadFailure(WideAt("device")), read + "Invalid argument");
  EXPECT_EQ(ReadFailure(WideAt("missing")), read + "No such file or directory");
  EXPECT_EQ(NamesHere(), (Names{"folder", "pipe", "device"}));
  EXPECT_TRUE(fs::is_fifo(At("pipe")) && fs::is_symlink(At("device")));
}

TEST_F(CipherFile, BadNamesAreRefused) {
  const std::u16string kNames[] = {u"", directory_.u16string() + u"/a\xd800",
                                   directory_.u16string() + u"/a" + u'\0' + u"b"};
  for (const std::u16string& name : kNames) {
    EXPECT_EQ(WriteFailure(name, true), "2011 EncryptBufferToFile: Invalid file name");
    EXPECT_EQ(ReadFailure(name), "2011 DecryptFileToBuffer: Invalid file name");
  }
  EXPECT_EQ(NamesHere(), Names{});
}

TEST_F(CipherFile, OtherContentIsTold) {
  const std::string good = cipher_.EncryptString(u"text");
  const std::pair<std::string, std::string> kCases[] = {
      {"", "2003 DecryptFileToBuffer: Enciphered text is empty"},
      {"<a/>", "2004 DecryptFileToBuffer: Not an enciphered text"},
      {good.substr(0, 50), "2007 DecryptFileToBuffer: Enciphered text is cut short"},
      {good.substr(0, 115), "2007 DecryptFileToBuffer: Enciphered text is cut short"},
      {good + "x", "2008 DecryptFileToBuffer: Enciphered text is too long"},
      {good.substr(0, 119) + static_cast<char>(good[119] ^ 1),
       "2010 DecryptFileToBuffer: Enciphered text was altered"},
  };
  ASSERT_EQ(good.size(), 120U);
  for (const auto& [content, failure] : kCases) {
    Put(At("file"), content);
    EXPECT_EQ(ReadFailure(WideAt("file")), failure);
  }
  // A terabyte is not read to find that out.
  Put(At("file"), "<a/>");
  fs::resize_file(At("file"), std::uintmax_t{1} << 40);
  EXPECT_EQ(ReadFailure(WideAt("file")), kCases[1].second);
}

struct KillPlan {
  int stepsToGo;
};

// Kills this process when its plan runs out.
void KillAtStep(WriteStep, void* inPlan) {
  if (static_cast<KillPlan*>(inPlan)->stepsToGo-- == 0) kill(getpid(), SIGKILL);
}

TEST_F(CipherFile, AKilledWriterLeavesTheOldFileOrTheNewOne) {
  struct Way {
    const char* name;
    bool overwrite;
    bool withoutRenameat2;
    int steps;  // three pieces are three steps
  };
  const Way kWays[] = {
      {"overwrite", true, false, 8}, {"rename", false, false, 8}, {"link", false, true, 9}};
  const std::string before = "old";
  const std::string after = cipher_.EncryptString(std::u16string(3 * 512 * 1024 - 200, u'n'));
  for (const Way& way : kWays) {
    const fs::path path = At(way.name);
    int killed = 0;
    for (bool finished = false; !finished; ++killed) {
      fs::remove(path);
      if (way.overwrite) Put(path, before);
      const pid_t child = fork();
      ASSERT_GE(child, 0);
      if (child == 0) {
        KillPlan plan{killed};
        const unsigned failure = CryptoCodeOf([&] {
          WriteFileAtomically(path, after, way.overwrite,
                              {KillAtStep, &plan, way.withoutRenameat2});
        });
        _exit(failure == 0 ? 0 : 1);
      }
      int status = 0;
      ASSERT_EQ(waitpid(child, &status, 0), child);
      finished = WIFEXITED(status);
      ASSERT_TRUE(finished ? WEXITSTATUS(status) == 0 : WTERMSIG(status) == SIGKILL);
      // Published is the step before the last, or before the last two.
      const bool published = killed >= 6;
      if (published) {
        EXPECT_TRUE(Content(path) == after) << way.name << " killed at step " << killed;
      } else {
        EXPECT_EQ(fs::exists(path), way.overwrite) << way.name << " killed at step " << killed;
        EXPECT_EQ(Content(path), way.overwrite ? before : "") << "killed at step " << killed;
      }
    }
    EXPECT_EQ(killed - 1, way.steps) << way.name;
  }
}

TEST_F(CipherFile, AWriteThatFailsHalfwayLeavesTheOldFile) {
  cipher_.EncryptBufferToFile(u"old", WideAt("file"), true);
  rlimit before;
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
  const rlimit small = {1500 * 1024, before.rlim_max};
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  const std::string failure = WriteFailure(WideAt("file"), true, std::u16string(1024 * 1024, u'n'));
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(failure, "2014 EncryptBufferToFile: Failed to write file: File too large");
  EXPECT_EQ(cipher_.DecryptFileToBuffer(WideAt("file")), u"old");
  EXPECT_EQ(NamesHere(), Names{"file"});
}

// A file system of one MiB.
class SmallDisk {
 public:
  explicit SmallDisk(const fs::path& inPath) : path_(inPath) {
    fs::create_directory(path_);
    mounted_ = mount("tmpfs", path_.c_str(), "tmpfs", 0, "size=1m") == 0;
  }
  ~SmallDisk() {
    if (mounted_) umount2(path_.c_str(), MNT_DETACH);
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;
  bool IsMounted() const { return mounted_; }

 private:
  fs::path path_;
  bool mounted_;
};

TEST_F(CipherFile, AFullDiskLeavesTheOldFile) {
  const fs::path disk = At("disk");
  const SmallDisk small(disk);
  if (!small.IsMounted()) GTEST_SKIP() << "mounting a small disk is not permitted";
  const std::u16string path = disk.u16string() + u"/file";
  cipher_.EncryptBufferToFile(u"old", path, false);
  const std::string full =
      "2014 EncryptBufferToFile: Failed to write file: No space left on device";
  const std::u16string text(1024 * 1024, u'n');
  EXPECT_EQ(WriteFailure(path, true, text), full);
  EXPECT_EQ(WriteFailure(disk.u16string() + u"/other", false, text), full);
  EXPECT_EQ(cipher_.DecryptFileToBuffer(path), u"old");
  EXPECT_EQ(std::distance(fs::directory_iterator(disk), {}), 1);
  cipher_.EncryptBufferToFile(u"new", path, true);
  EXPECT_EQ(cipher_.DecryptFileToBuffer(path), u"new");
}

}  // namespace
}  // namespace quen::testing

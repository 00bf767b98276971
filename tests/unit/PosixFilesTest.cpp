#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/time.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <future>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/Utf8.h"
#include "memory/ScratchFolder.h"
#include "platform/linux/files/PosixFiles.h"
#include "unit/ChildProcess.h"
#include "unit/FileContent.h"

namespace quillbox {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kSize = 200000;
const std::string kOld(kSize, 'o');
const std::string kNew(kSize, 'n');

// The number of the RuntimeError that `statement` throws, 0 for none.
template <class Statement>
int NumberOf(Statement&& statement) {
  try {
    statement();
  } catch (const RuntimeError& error) {
    EXPECT_STRNE(error.what(), "");
    return error.Number();
  }
  return 0;
}

unsigned ModeOf(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0U;
}

// Writes in short pieces, and does something else than the `failing`th call: ends the process before or after
// it, or fails it.
class FaultyCalls : public SystemCalls {
 public:
  enum class Fault { DieBefore, DieAfter, Fail };
  FaultyCalls(int failing, Fault fault, int error = EIO) : failing_(failing), fault_(fault), error_(error) {}

  int Open(const char* path, int flags, mode_t mode) override {
    return Do([&] { return SystemCalls::Open(path, flags, mode); });
  }
  int ChangeMode(int fd, mode_t mode) override {
    return Do([&] { return SystemCalls::ChangeMode(fd, mode); });
  }
  ssize_t Write(int fd, const iovec* pieces, int count) override {
    std::vector<iovec> some(pieces, pieces + count);
    std::size_t room = 70000;
    for (iovec& piece : some) room -= piece.iov_len = std::min(piece.iov_len, room);
    return Do([&] { return SystemCalls::Write(fd, some.data(), count); });
  }
  int Close(int fd) override {
    // A close that reports a failure has closed all the same.
    const int result = SystemCalls::Close(fd);
    return Do([&] { return result; });
  }
  int Rename(const char* from, const char* to) override {
    return Do([&] { return SystemCalls::Rename(from, to); });
  }
  bool Reached() const { return calls_ >= failing_; }

 private:
  template <class Call>
  auto Do(Call&& call) -> decltype(call()) {
    if (++calls_ != failing_) return call();
    if (fault_ == Fault::DieBefore) ::_exit(7);
    if (fault_ == Fault::DieAfter) {
      call();
      ::_exit(7);
    }
    errno = error_;
    return -1;
  }

  std::atomic<int> calls_ = 0;  // the thread that syncs calls too
  int failing_;
  Fault fault_;
  int error_;
};

class PosixFilesTest : public testing::Test {
 protected:
  std::string Path(const std::string& name = "") const { return folder_.Path(name); }
  Text In(const std::string& name) const { return FromUtf8(Path(name)); }
  // The numbers of the failures, 0 for none.
  int ReadFails(const std::string& name) {
    return NumberOf([&] { PosixFiles().Read(In(name)); });
  }
  int WriteFails(const std::string& name) {
    return NumberOf([&] { PosixFiles().Write(In(name), "x"); });
  }
  int FolderFails(const std::string& name) {
    return NumberOf([&] { PosixFiles().MakeFolder(In(name)); });
  }
  const ScratchFolder folder_;
  const std::string list_ = Path("ClipData.qbx");
  const Text listPath_ = FromUtf8(list_);
};

TEST_F(PosixFilesTest, AKilledWriterLeavesTheOldFileOrTheNewOne) {
  for (const FaultyCalls::Fault fault : {FaultyCalls::Fault::DieBefore, FaultyCalls::Fault::DieAfter}) {
    int code = 7;
    int call = 0;
    while (code == 7) {
      ++call;
      PutContent(list_, kOld);
      code = RunInChild([&] {
        PosixFiles(std::make_shared<FaultyCalls>(call, fault)).Write(listPath_, kNew);
        return 0;
      });
      const std::string content = ContentOf(list_);
      EXPECT_TRUE(content == kNew || (content == kOld && code == 7)) << "killed at call " << call;
      // The next write goes through and takes away what the killed one left.
      PosixFiles().Write(listPath_, kOld);
      EXPECT_EQ(EntriesIn(Path()), 1U);
    }
    EXPECT_EQ(code, 0);
    EXPECT_GT(call, 7) << "at least open, mode, three writes, close and rename";
  }
}

TEST_F(PosixFilesTest, AFailedCallLeavesTheOldFileAndAnInterruptedOneGoesOn) {
  const std::pair<int, int> cases[] = {{ENOSPC, errors::kDiskFull},   {EDQUOT, errors::kDiskFull},
                                       {EIO, errors::kDeviceError},   {EROFS, errors::kPermission},
                                       {EACCES, errors::kPermission}, {EINTR, 0}};
  for (const auto& [error, number] : cases) {
    for (int call = 1; call <= 7; ++call) {
      // Interrupted are opening, the second write and closing.
      if (error == EINTR && call != 1 && call != 4 && call != 6) continue;
      PutContent(list_, kOld);
      const auto calls = std::make_shared<FaultyCalls>(call, FaultyCalls::Fault::Fail, error);
      EXPECT_EQ(NumberOf([&] { PosixFiles(calls).Write(listPath_, kNew); }), number) << "call " << call;
      EXPECT_TRUE(calls->Reached());
      EXPECT_EQ(ContentOf(list_), number == 0 ? kNew : kOld);
      EXPECT_EQ(EntriesIn(Path()), 1U);
    }
  }
}

TEST_F(PosixFilesTest, ModesHoldWhateverTheUmask) {
  for (const mode_t mask : {0000U, 0022U, 0277U}) {
    const mode_t before = ::umask(mask);
    PosixFiles files;
    files.MakeOnDemand(In("share/quillbox"));
    files.MakeFolder(In("share/quillbox/ann"));
    files.MakeFolder(In("share/quillbox/ann"));
    files.Write(In("share/quillbox/ann/PadData.qbx"), "x");
    ::umask(before);
    for (const char* name : {"share", "share/quillbox", "share/quillbox/ann"}) {
      EXPECT_EQ(ModeOf(Path(name)), 0700U) << name;
    }
    EXPECT_EQ(ModeOf(Path("share/quillbox/ann/PadData.qbx")), 0600U);
    fs::remove_all(Path("share"));
  }
}

TEST_F(PosixFilesTest, LinkedFilesStayLinked) {
  fs::create_directories(Path("sync"));
  fs::create_directories(Path("data"));
  PosixFiles files;
  fs::create_symlink("../sync/Pad", Path("data/PadData.qbx"));
  fs::create_symlink(Path("data/PadData.qbx"), Path("second"));
  for (const std::string link : {"data/PadData.qbx", "second"}) {
    EXPECT_EQ(files.Exists(In(link)), link == "second");  // the first write makes it
    files.Write(In(link), link);
    EXPECT_TRUE(fs::is_symlink(Path(link)));
    EXPECT_TRUE(files.Exists(In(link)));
    EXPECT_EQ(ContentOf(Path("sync/Pad")), link);
  }
  fs::create_symlink("loop", Path("loop"));
  EXPECT_EQ(WriteFails("loop"), errors::kPathAccess);
  EXPECT_TRUE(fs::is_symlink(Path("loop")));
  EXPECT_EQ(EntriesIn(Path("sync")), 1U);
}

TEST_F(PosixFilesTest, OnlyFilesAreReadAndReplacedAndFoldersMadeOneLevelDeep) {
  ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
  for (const std::string name : {"pipe", ""}) {
    EXPECT_EQ(ReadFails(name), errors::kPathAccess) << name;
    EXPECT_EQ(WriteFails(name), errors::kPathAccess) << name;
  }
  EXPECT_EQ(NumberOf([] { PosixFiles().Read(u"/dev/zero"); }), errors::kPathAccess);
  EXPECT_TRUE(fs::is_fifo(Path("pipe")));
  EXPECT_EQ(ReadFails("none"), errors::kFileNotFound);
  EXPECT_EQ(ReadFails("none/none"), errors::kPathNotFound);
  EXPECT_EQ(WriteFails("none/none"), errors::kPathNotFound);
  EXPECT_EQ(FolderFails("none/none"), errors::kPathNotFound);

  PutContent(Path("file"), "x");
  EXPECT_EQ(FolderFails("file"), errors::kPathAccess);
  EXPECT_EQ(FolderFails("file/b"), errors::kPathAccess);
  EXPECT_EQ(WriteFails("file/b"), errors::kPathAccess);
  const Text cut = In("file") + u'\0' + u"b";
  EXPECT_FALSE(PosixFiles().Exists(cut));
  EXPECT_EQ(NumberOf([&] { PosixFiles().Write(cut, "y"); }), errors::kPathAccess);
  EXPECT_EQ(ContentOf(Path("file")), "x");
  fs::resize_file(Path("file"), (std::uintmax_t{1} << 30) + 1);
  EXPECT_EQ(ReadFails("file"), errors::kDeviceError);
}

TEST_F(PosixFilesTest, ContentComesBackByteByByte) {
  PosixFiles files;
  const Text path = In("J\xC3\xBCrgen \xE2\x82\xAC");
  std::string content;
  for (int i = 0; i < 70000; ++i) content += static_cast<char>(i * 7);
  for (const std::string& written : {content, std::string()}) {
    files.Write(path, written);
    EXPECT_EQ(files.Read(path), written);
  }
  // In more writes than there are pieces, and more pieces than one write may have.
  std::vector<std::string_view> pieces(3000, "a few");
  pieces[1] = "";
  pieces[2] = content;
  PosixFiles(std::make_shared<FaultyCalls>(0, FaultyCalls::Fault::Fail))
      .WritePieces(path, [&](const Files::Put& put) {
        put(pieces);
        put(pieces);
      });
  std::string whole;
  for (int round = 0; round < 2; ++round)
    for (const std::string_view piece : pieces) whole += piece;
  EXPECT_EQ(files.Read(path), whole);
  files.Rename(path, In("renamed"));
  EXPECT_FALSE(files.Exists(path));
  EXPECT_TRUE(files.Exists(In("renamed")));
  EXPECT_EQ(NumberOf([&] { files.Rename(path, In("x")); }), errors::kFileNotFound);
}

TEST_F(PosixFilesTest, WithoutPermissionNothingChanges) {
  fs::permissions(Path(), fs::perms::all);
  const auto chmod = [this](const std::string& name, mode_t mode) { ::chmod(Path(name).c_str(), mode); };
  const int code = RunAsOrdinaryUser([&] {
    PosixFiles files;
    files.MakeFolder(In("own"));
    files.Write(In("own/file"), "old");
    chmod("own/file", 0);
    if (ReadFails("own/file") != errors::kPermission) return 1;
    if (WriteFails("own/file") != errors::kPermission) return 2;
    chmod("own/file", 0600);
    chmod("own", 0500);
    if (WriteFails("own/file") != errors::kPermission) return 3;
    if (FolderFails("own/sub") != errors::kPermission) return 4;
    chmod("own", 0);
    if (!files.Exists(In("own/file"))) return 5;
    chmod("own", 0700);
    return files.Read(In("own/file")) == "old" && EntriesIn(Path("own")) == 1 ? 0 : 6;
  });
  EXPECT_EQ(code, 0);
}

TEST_F(PosixFilesTest, StaleTemporariesOfOthersStay) {
  const auto gone = std::to_string(RunInChild([] { return 0; }) + 4194304);  // above the largest process id
  const std::string alive = ".quillbox-" + std::to_string(::getpid()) + "-";
  // Of a killed process, and of one that lives but too old.
  const std::string stale[] = {".quillbox-" + gone + "-1f.tmp", alive + "2.tmp"};
  const std::string kept[] = {alive + "1.tmp", ".quillbox-" + gone + "-1g.tmp", ".quillbox-" + gone + ".tmp",
                              gone + ".tmp"};
  for (const std::string& name : stale) PutContent(Path(name), "x");
  for (const std::string& name : kept) PutContent(Path(name), "x");
  const timeval past[2] = {{::time(nullptr) - 100, 0}, {::time(nullptr) - 100, 0}};
  ::utimes(Path(alive + "2.tmp").c_str(), past);
  PosixFiles().Write(In("file"), "x");
  for (const std::string& name : stale) EXPECT_FALSE(fs::exists(Path(name))) << name;
  EXPECT_EQ(EntriesIn(Path()), 5U);
}

// Counts syncs, and lets them through when it is told to.
class Disk : public SystemCalls {
 public:
  int Sync(int) override {
    ++begun;
    answers.wait();
    ++ended;
    return 0;
  }
  std::atomic<int> begun = 0;
  std::atomic<int> ended = 0;
  std::promise<void> answer;
  std::shared_future<void> answers = answer.get_future();
};

TEST_F(PosixFilesTest, WhatIsWrittenIsSyncedBeforeTheEndUnlessTheDiskNeverAnswers) {
  for (const bool answers : {true, false}) {
    const auto disk = std::make_shared<Disk>();
    {
      PosixFiles files(disk);
      for (int round = 0; round < 20; ++round) files.Write(In("a"), std::to_string(round));
      files.Write(In("b"), "x");
      if (answers) disk->answer.set_value();
    }
    EXPECT_EQ(ContentOf(Path("a")), "19");
    EXPECT_EQ(disk->ended, answers ? disk->begun.load() : 0);
    // Each file and its folder; not one for each of the twenty writes.
    EXPECT_TRUE(answers ? disk->begun >= 4 && disk->begun <= 12 : disk->begun <= 1) << disk->begun;
    if (!answers) disk->answer.set_value();
  }
}

}  // namespace
}  // namespace quillbox

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/time.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>

#include "platform/Utf8.h"
#include "platform/linux/PosixFiles.h"
#include "unit/ChildProcess.h"
#include "unit/TemporaryFolder.h"

namespace quillbox {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr std::size_t kSize = 200000;
const std::string kOld(kSize, 'o');
const std::string kNew(kSize, 'n');

Text T(const std::string& path) { return FromUtf8(path); }

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
  ssize_t Write(int fd, const void* data, std::size_t size) override {
    return Do([&] { return SystemCalls::Write(fd, data, std::min<std::size_t>(size, 70000)); });
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

// Kills a writer at each of its calls; gives how many there were.
int KillAtEachCall(FaultyCalls::Fault fault) {
  const TemporaryFolder folder;
  const std::string path = folder.Path("ClipData.qbx");
  int call = 1;
  for (;; ++call) {
    PutContent(path, kOld);
    const int code = RunInChild([&] {
      PosixFiles files(std::make_shared<FaultyCalls>(call, fault));
      files.Write(T(path), kNew);
      return 0;
    });
    const std::string content = ContentOf(path);
    EXPECT_TRUE(content == kOld || content == kNew) << "killed at call " << call;
    if (code == 0) {
      EXPECT_EQ(content, kNew);
      break;
    }
    EXPECT_EQ(code, 7);
    // The next write goes through and takes away what the killed one left.
    PosixFiles().Write(T(path), kOld);
    EXPECT_EQ(EntriesIn(folder.Path()), 1U);
  }
  return call - 1;
}

TEST(PosixFiles, AKilledWriterLeavesTheOldFileOrTheNewOne) {
  // At least open, mode, three writes, close and rename.
  EXPECT_GE(KillAtEachCall(FaultyCalls::Fault::DieBefore), 7);
  EXPECT_GE(KillAtEachCall(FaultyCalls::Fault::DieAfter), 7);
}

TEST(PosixFiles, AFailedCallLeavesTheOldFileAndNothingBesideIt) {
  const TemporaryFolder folder;
  const std::string path = folder.Path("ClipData.qbx");
  PutContent(path, kOld);
  const struct {
    int error;
    int number;
  } cases[] = {{ENOSPC, errors::kDiskFull},
               {EDQUOT, errors::kDiskFull},
               {EIO, errors::kDeviceError},
               {EROFS, errors::kPermission},
               {EACCES, errors::kPermission}};
  for (const auto& [error, number] : cases) {
    for (int call = 1; call <= 7; ++call) {
      PosixFiles files(std::make_shared<FaultyCalls>(call, FaultyCalls::Fault::Fail, error));
      EXPECT_EQ(NumberOf([&] { files.Write(T(path), kNew); }), number) << "call " << call;
      EXPECT_EQ(ContentOf(path), kOld);
      EXPECT_EQ(EntriesIn(folder.Path()), 1U);
    }
  }
}

TEST(PosixFiles, AFullDiskKeepsTheOldFile) {
  const TemporaryFolder folder;
  constexpr int kNoMount = 97;
  const int code = RunInChild([&] {
    // A disk of 256 KiB that only this child sees.
    if (::unshare(CLONE_NEWNS) != 0 || ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        ::mount("none", folder.Path().c_str(), "tmpfs", 0, "size=256k") != 0) {
      return kNoMount;
    }
    const Text path = T(folder.Path("ClipData.qbx"));
    PosixFiles files;
    files.Write(path, "old");
    if (NumberOf([&] { files.Write(path, std::string(300000, 'n')); }) != errors::kDiskFull) return 1;
    if (files.Read(path) != "old" || EntriesIn(folder.Path()) != 1) return 2;
    files.Write(path, std::string(200000, 'n'));
    return files.Read(path).size() == 200000 ? 0 : 3;
  });
  if (code == kNoMount) GTEST_SKIP() << "needs the right to mount";
  EXPECT_EQ(code, 0);
}

TEST(PosixFiles, AnInterruptedCallGoesOn) {
  const TemporaryFolder folder;
  const std::string path = folder.Path("ClipData.qbx");
  for (const int call : {1, 4, 6}) {  // opening, the second write, closing
    const auto calls = std::make_shared<FaultyCalls>(call, FaultyCalls::Fault::Fail, EINTR);
    PosixFiles files(calls);
    files.Write(T(path), kNew);
    EXPECT_TRUE(calls->Reached());
    EXPECT_EQ(ContentOf(path), kNew);
    fs::remove(path);
  }
}

TEST(PosixFiles, ReadersSeeWholeFilesWhileOneWrites) {
  const TemporaryFolder folder;
  const std::string path = folder.Path("ClipData.qbx");
  PosixFiles files;
  files.Write(T(path), kOld);
  std::atomic<bool> ended = false;
  std::atomic<int> torn = 0;
  std::thread reader([&] {
    while (!ended) {
      const std::string content = ContentOf(path);
      if (content != kOld && content != kNew) ++torn;
    }
  });
  for (int round = 0; round < 100; ++round) files.Write(T(path), round % 2 == 0 ? kNew : kOld);
  ended = true;
  reader.join();
  EXPECT_EQ(torn, 0);
}

TEST(PosixFiles, ModesHoldWhateverTheUmask) {
  const TemporaryFolder folder;
  for (const mode_t mask : {0000U, 0022U, 0277U}) {
    const mode_t before = ::umask(mask);
    PosixFiles files;
    files.MakeOnDemand(T(folder.Path("share/quillbox")));
    files.MakeFolder(T(folder.Path("share/quillbox/ann")));
    files.MakeFolder(T(folder.Path("share/quillbox/ann")));
    files.Write(T(folder.Path("share/quillbox/ann/PadData.qbx")), "x");
    ::umask(before);
    EXPECT_EQ(ModeOf(folder.Path("share")), 0700U);
    EXPECT_EQ(ModeOf(folder.Path("share/quillbox")), 0700U);
    EXPECT_EQ(ModeOf(folder.Path("share/quillbox/ann")), 0700U);
    EXPECT_EQ(ModeOf(folder.Path("share/quillbox/ann/PadData.qbx")), 0600U);
    fs::remove_all(folder.Path("share"));
  }
}

TEST(PosixFiles, FoldersAreMadeOneLevelDeep) {
  const TemporaryFolder folder;
  PosixFiles files;
  EXPECT_EQ(NumberOf([&] { files.MakeFolder(T(folder.Path("a/b"))); }), errors::kPathNotFound);
  PutContent(folder.Path("file"), "x");
  EXPECT_EQ(NumberOf([&] { files.MakeFolder(T(folder.Path("file"))); }), errors::kPathAccess);
  EXPECT_EQ(NumberOf([&] { files.MakeFolder(T(folder.Path("file/b"))); }), errors::kPathAccess);
  EXPECT_EQ(NumberOf([&] { files.Write(T(folder.Path("file/b")), "y"); }), errors::kPathAccess);
  EXPECT_EQ(NumberOf([&] { files.Write(T(folder.Path("a/b")), "y"); }), errors::kPathNotFound);
  EXPECT_EQ(ContentOf(folder.Path("file")), "x");
}

TEST(PosixFiles, LinkedFilesStayLinked) {
  const TemporaryFolder folder;
  fs::create_directories(folder.Path("sync"));
  fs::create_directories(folder.Path("data"));
  PosixFiles files;
  const std::string link = folder.Path("data/PadData.qbx");
  fs::create_symlink("../sync/Pad", link);
  EXPECT_FALSE(files.Exists(T(link)));
  files.Write(T(link), "made");
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_TRUE(files.Exists(T(link)));
  EXPECT_EQ(ContentOf(folder.Path("sync/Pad")), "made");

  fs::create_symlink(link, folder.Path("second"));
  files.Write(T(folder.Path("second")), "again");
  EXPECT_TRUE(fs::is_symlink(folder.Path("second")));
  EXPECT_EQ(ContentOf(folder.Path("sync/Pad")), "again");

  fs::create_symlink("loop", folder.Path("loop"));
  EXPECT_EQ(NumberOf([&] { files.Write(T(folder.Path("loop")), "x"); }), errors::kPathAccess);
  EXPECT_TRUE(fs::is_symlink(folder.Path("loop")));
  EXPECT_EQ(EntriesIn(folder.Path("sync")), 1U);
}

TEST(PosixFiles, OnlyFilesAreReadAndReplaced) {
  const TemporaryFolder folder;
  PosixFiles files;
  ASSERT_EQ(::mkfifo(folder.Path("pipe").c_str(), 0600), 0);
  for (const std::string& path : {folder.Path("pipe"), std::string("/dev/zero"), folder.Path()}) {
    EXPECT_EQ(NumberOf([&] { files.Read(T(path)); }), errors::kPathAccess) << path;
    EXPECT_EQ(NumberOf([&] { files.Write(T(path), "x"); }), errors::kPathAccess) << path;
  }
  EXPECT_TRUE(fs::is_fifo(folder.Path("pipe")));
  EXPECT_EQ(NumberOf([&] { files.Read(T(folder.Path("none"))); }), errors::kFileNotFound);
  EXPECT_EQ(NumberOf([&] { files.Read(T(folder.Path("none/none"))); }), errors::kPathNotFound);

  PutContent(folder.Path("a"), "a");
  Text cut = T(folder.Path("a"));
  cut += u'\0';
  cut += u"b";
  EXPECT_FALSE(files.Exists(cut));
  EXPECT_EQ(NumberOf([&] { files.Write(cut, "x"); }), errors::kPathAccess);
  EXPECT_EQ(ContentOf(folder.Path("a")), "a");

  fs::resize_file(folder.Path("a"), (std::uintmax_t{1} << 30) + 1);
  EXPECT_EQ(NumberOf([&] { files.Read(T(folder.Path("a"))); }), errors::kDeviceError);
}

TEST(PosixFiles, ContentComesBackByteByByte) {
  const TemporaryFolder folder;
  PosixFiles files;
  const Text path = T(folder.Path("J\xC3\xBCrgen \xE2\x82\xAC"));
  std::string content;
  for (int i = 0; i < 70000; ++i) content += static_cast<char>(i * 7);
  files.Write(path, content);
  EXPECT_EQ(files.Read(path), content);
  files.Write(path, "");
  EXPECT_EQ(files.Read(path), "");
  files.Rename(path, T(folder.Path("renamed")));
  EXPECT_FALSE(files.Exists(path));
  EXPECT_TRUE(files.Exists(T(folder.Path("renamed"))));
  EXPECT_EQ(NumberOf([&] { files.Rename(path, T(folder.Path("x"))); }), errors::kFileNotFound);
}

TEST(PosixFiles, WithoutPermissionNothingChanges) {
  const TemporaryFolder folder;
  fs::permissions(folder.Path(), fs::perms::all);
  const int code = RunAsOrdinaryUser([&] {
    PosixFiles files;
    const std::string own = folder.Path("own");
    files.MakeFolder(T(own));
    files.Write(T(own + "/file"), "old");
    ::chmod((own + "/file").c_str(), 0);
    if (NumberOf([&] { files.Read(T(own + "/file")); }) != errors::kPermission) return 1;
    if (NumberOf([&] { files.Write(T(own + "/file"), "new"); }) != errors::kPermission) return 2;
    ::chmod((own + "/file").c_str(), 0600);
    ::chmod(own.c_str(), 0500);
    if (NumberOf([&] { files.Write(T(own + "/file"), "new"); }) != errors::kPermission) return 3;
    if (NumberOf([&] { files.MakeFolder(T(own + "/sub")); }) != errors::kPermission) return 4;
    ::chmod(own.c_str(), 0);
    if (!files.Exists(T(own + "/file"))) return 5;
    ::chmod(own.c_str(), 0700);
    return files.Read(T(own + "/file")) == "old" && EntriesIn(own) == 1 ? 0 : 6;
  });
  EXPECT_EQ(code, 0);
}

TEST(PosixFiles, StaleTemporariesOfOthersStay) {
  const TemporaryFolder folder;
  const auto gone = std::to_string(RunInChild([] { return 0; }) + 4194304);  // above the largest process id
  PutContent(folder.Path(".quillbox-" + gone + "-1f.tmp"), "left by a killed process");
  const std::string alive = ".quillbox-" + std::to_string(::getpid()) + "-";
  PutContent(folder.Path(alive + "1.tmp"), "being written");
  PutContent(folder.Path(alive + "2.tmp"), "too old");
  const timeval past[2] = {{::time(nullptr) - 100, 0}, {::time(nullptr) - 100, 0}};
  ::utimes(folder.Path(alive + "2.tmp").c_str(), past);
  for (const std::string& name :
       {".quillbox-" + gone + "-1g.tmp", ".quillbox-" + gone + ".tmp", gone + ".tmp"}) {
    PutContent(folder.Path(name), "not ours");
  }
  PosixFiles().Write(T(folder.Path("file")), "x");
  EXPECT_FALSE(fs::exists(folder.Path(".quillbox-" + gone + "-1f.tmp")));
  EXPECT_FALSE(fs::exists(folder.Path(alive + "2.tmp")));
  EXPECT_EQ(EntriesIn(folder.Path()), 5U);
}

// Counts syncs and lets each take its time.
class SlowDisk : public SystemCalls {
 public:
  explicit SlowDisk(milliseconds time) : time_(time) {}
  int Sync(int fd) override {
    ++begun;
    std::this_thread::sleep_for(time_);
    ++ended;
    return SystemCalls::Sync(fd);
  }
  std::atomic<int> begun = 0;
  std::atomic<int> ended = 0;

 private:
  milliseconds time_;
};

TEST(PosixFiles, ASlowDiskHoldsNobodyUp) {
  const TemporaryFolder folder;
  const auto disk = std::make_shared<SlowDisk>(milliseconds(5000));
  const auto start = steady_clock::now();
  {
    PosixFiles files(disk);
    for (int round = 0; round < 20; ++round) files.Write(T(folder.Path("file")), std::to_string(round));
    EXPECT_LT(steady_clock::now() - start, milliseconds(800));
    EXPECT_EQ(ContentOf(folder.Path("file")), "19");
  }
  // The end waits a second and no longer.
  EXPECT_GT(steady_clock::now() - start, milliseconds(900));
  EXPECT_LT(steady_clock::now() - start, milliseconds(2500));
  EXPECT_EQ(disk->begun, 1);
}

TEST(PosixFiles, WhatIsWrittenIsSyncedBeforeTheEnd) {
  const TemporaryFolder folder;
  const auto disk = std::make_shared<SlowDisk>(milliseconds(20));
  {
    PosixFiles files(disk);
    for (int round = 0; round < 20; ++round) files.Write(T(folder.Path("a")), "x");
    files.Write(T(folder.Path("b")), "x");
  }
  EXPECT_EQ(disk->begun, disk->ended);
  EXPECT_GE(disk->ended, 4);   // each file and its folder
  EXPECT_LE(disk->ended, 12);  // not one for each of the twenty writes
}

}  // namespace
}  // namespace quillbox

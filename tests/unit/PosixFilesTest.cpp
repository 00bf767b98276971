#include <sys/time.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <future>
#include <memory>
#include <string>

#include "platform/linux/files/PosixFiles.h"
#include "unit/FolderTest.h"

namespace quillbox {
namespace {

namespace fs = std::filesystem;

const std::string kOld(200'000, 'o');
const std::string kNew(200'000, 'n');

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
    std::size_t room = 70'000;
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
    if (fault_ == Fault::DieAfter) call();
    if (fault_ != Fault::Fail) ::_exit(7);
    errno = error_;
    return -1;
  }

  std::atomic<int> calls_ = 0;  // the thread that syncs calls too
  int failing_;
  Fault fault_;
  int error_;
};

class PosixFilesTest : public FolderTest {
 protected:
  // The number of the RuntimeError that `statement` throws, 0 for none.
  template <class Statement>
  static int NumberOf(Statement&& statement) {
    try {
      statement();
    } catch (const RuntimeError& error) {
      EXPECT_STRNE(error.what(), "");
      return error.Number();
    }
    return 0;
  }
  int ReadFails(const std::string& name) {
    return NumberOf([&] { PosixFiles().Read(In(name)); });
  }
  int WriteFails(const std::string& name) {
    return NumberOf([&] { PosixFiles().Write(In(name), "x"); });
  }
  int FolderFails(const std::string& name) {
    return NumberOf([&] { PosixFiles().MakeFolder(In(name)); });
  }
};

TEST_F(PosixFilesTest, AKilledWriterLeavesTheOldFileOrTheNewOne) {
  for (const FaultyCalls::Fault fault : {FaultyCalls::Fault::DieBefore, FaultyCalls::Fault::DieAfter}) {
    int code = 7;
    int call = 0;
    while (code == 7) {
      ++call;
      Put("list", kOld);
      code = InChild([&] {
        PosixFiles(std::make_shared<FaultyCalls>(call, fault)).Write(In("list"), kNew);
        return 0;
      });
      const std::string content = Content("list");
      EXPECT_TRUE(content == kNew || (content == kOld && code == 7)) << "killed at call " << call;
      // The next write goes through and takes away what the killed one left.
      PosixFiles().Write(In("list"), kOld);
      EXPECT_EQ(Entries(), 1);
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
      Put("list", kOld);
      const auto calls = std::make_shared<FaultyCalls>(call, FaultyCalls::Fault::Fail, error);
      EXPECT_EQ(NumberOf([&] { PosixFiles(calls).Write(In("list"), kNew); }), number) << "call " << call;
      EXPECT_TRUE(calls->Reached());
      EXPECT_EQ(Content("list"), number == 0 ? kNew : kOld);
      EXPECT_EQ(Entries(), 1);
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
    files.Write(In("share/quillbox/ann/list"), "x");
    ::umask(before);
    for (const char* name : {"share", "share/quillbox", "share/quillbox/ann"})
      EXPECT_EQ(Mode(name), 0700U) << name;
    EXPECT_EQ(Mode("share/quillbox/ann/list"), 0600U);
    fs::remove_all(Path("share"));
  }
}

TEST_F(PosixFilesTest, LinkedFilesStayLinked) {
  Make("sync");
  Make("data");
  PosixFiles files;
  fs::create_symlink("../sync/Pad", Path("data/PadData.qbx"));
  fs::create_symlink(Path("data/PadData.qbx"), Path("second"));
  for (const std::string link : {"data/PadData.qbx", "second"}) {
    EXPECT_EQ(files.Exists(In(link)), link == "second");  // the first write makes it
    files.Write(In(link), link);
    EXPECT_TRUE(fs::is_symlink(Path(link)));
    EXPECT_EQ(Content("sync/Pad"), link);
  }
  fs::create_symlink("loop", Path("loop"));
  EXPECT_EQ(WriteFails("loop"), errors::kPathAccess);
  EXPECT_TRUE(fs::is_symlink(Path("loop")));
  EXPECT_EQ(Entries("sync"), 1);
}

TEST_F(PosixFilesTest, OnlyFilesAreReadAndReplacedAndFoldersMadeOneLevelDeep) {
  ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
  Put("file", "x");
  Put("huge", "x");
  fs::resize_file(Path("huge"), (std::uintmax_t{1} << 30) + 1);
  const struct {
    std::string name;
    int read, write, folder;
  } rows[] = {{"pipe", errors::kPathAccess, errors::kPathAccess, errors::kPathAccess},
              {"", errors::kPathAccess, errors::kPathAccess, 0},
              {"none/none", errors::kPathNotFound, errors::kPathNotFound, errors::kPathNotFound},
              {"file/b", errors::kPathAccess, errors::kPathAccess, errors::kPathAccess},
              {std::string("file\0b", 6), errors::kPathAccess, errors::kPathAccess, errors::kPathAccess},
              {"huge", errors::kDeviceError, 0, errors::kPathAccess},
              {"none", errors::kFileNotFound, 0, errors::kPathAccess}};
  for (const auto& [name, read, write, folder] : rows) {
    EXPECT_EQ(ReadFails(name), read) << name;
    EXPECT_EQ(WriteFails(name), write) << name;
    EXPECT_EQ(FolderFails(name), folder) << name;
  }
  EXPECT_EQ(NumberOf([] { PosixFiles().Read(u"/dev/zero"); }), errors::kPathAccess);
  EXPECT_TRUE(fs::is_fifo(Path("pipe")));
  EXPECT_FALSE(PosixFiles().Exists(In(std::string("file\0b", 6))));
  EXPECT_EQ(Content("file"), "x");
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
  AsOrdinaryUser([&] {
    Put("own/file", "old");
    ChangeMode("own/file", 0);
    EXPECT_EQ(ReadFails("own/file"), errors::kPermission);
    EXPECT_EQ(WriteFails("own/file"), errors::kPermission);
    ChangeMode("own/file", 0600);
    ChangeMode("own", 0500);
    EXPECT_EQ(WriteFails("own/file"), errors::kPermission);
    EXPECT_EQ(FolderFails("own/sub"), errors::kPermission);
    ChangeMode("own", 0);
    EXPECT_TRUE(PosixFiles().Exists(In("own/file")));
    ChangeMode("own", 0700);
    EXPECT_EQ(Content("own/file"), "old");
    EXPECT_EQ(Entries("own"), 1);
  });
}

TEST_F(PosixFilesTest, StaleTemporariesOfOthersStay) {
  const std::string gone = ".quillbox-4194305-";  // above the largest process id
  const std::string alive = ".quillbox-" + std::to_string(::getpid()) + "-";
  // Of a killed process, and of one that lives but too old.
  const std::string stale[] = {gone + "1f.tmp", alive + "2.tmp"};
  const std::string kept[] = {alive + "1.tmp", gone + "1g.tmp", ".quillbox-4194305.tmp", "4194305.tmp"};
  for (const std::string& name : stale) Put(name, "x");
  for (const std::string& name : kept) Put(name, "x");
  const timeval past[2] = {{::time(nullptr) - 100, 0}, {::time(nullptr) - 100, 0}};
  ::utimes(Path(alive + "2.tmp").c_str(), past);
  PosixFiles().Write(In("file"), "x");
  for (const std::string& name : stale) EXPECT_FALSE(Exists(name)) << name;
  EXPECT_EQ(Entries(), 5);
}

TEST_F(PosixFilesTest, WhatIsWrittenIsSyncedBeforeTheEndUnlessTheDiskNeverAnswers) {
  // Counts syncs, and lets them through when it is told to.
  struct Disk : SystemCalls {
    int Sync(int) override {
      ++begun;
      answers.wait();
      ++ended;
      return 0;
    }
    std::atomic<int> begun = 0, ended = 0;
    std::promise<void> answer;
    std::shared_future<void> answers = answer.get_future();
  };
  for (const bool answers : {true, false}) {
    const auto disk = std::make_shared<Disk>();
    {
      PosixFiles files(disk);
      for (int round = 0; round < 20; ++round) files.Write(In("a"), std::to_string(round));
      files.Write(In("b"), "x");
      if (answers) disk->answer.set_value();
    }
    EXPECT_EQ(Content("a"), "19");
    EXPECT_EQ(disk->ended, answers ? disk->begun.load() : 0);
    // Each file and its folder; not one for each of the twenty writes.
    EXPECT_TRUE(answers ? disk->begun >= 4 && disk->begun <= 12 : disk->begun <= 1) << disk->begun;
    if (!answers) disk->answer.set_value();
  }
}

}  // namespace
}  // namespace quillbox

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <future>

#include "platform/linux/files/PosixFiles.h"
#include "unit/FolderTest.h"

namespace quillbox {
namespace {

namespace fs = std::filesystem;

const std::string kOld(200'000, 'o');
const std::string kNew(200'000, 'n');
enum class Fault { DieBefore, DieAfter, Fail };

// Writes in short pieces, and does something else than the `failing`th call: ends the process before or after
// it, or fails it.
class FaultyCalls : public SystemCalls {
 public:
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
    return Do([result = SystemCalls::Close(fd)] { return result; });
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
  static int Fails(const std::function<void()>& statement) {
    try {
      statement();
    } catch (const RuntimeError& error) {
      return error.Number();
    }
    return 0;
  }
  // What reading, writing and making a folder of that name fail with.
  std::vector<int> AllFail(const std::string& name) const {
    PosixFiles files;
    return {Fails([&] { files.Read(In(name)); }), Fails([&] { files.Write(In(name), "x"); }),
            Fails([&] { files.MakeFolder(In(name)); })};
  }
};

TEST_F(PosixFilesTest, AKilledWriterLeavesTheOldFileOrTheNewOne) {
  for (const Fault fault : {Fault::DieBefore, Fault::DieAfter}) {
    int call = 1;
    for (int code = 7; code == 7; ++call) {
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
    EXPECT_GT(call, 8) << "at least open, mode, three writes, close and rename";
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
      const auto calls = std::make_shared<FaultyCalls>(call, Fault::Fail, error);
      EXPECT_EQ(Fails([&] { PosixFiles(calls).Write(In("list"), kNew); }), number) << "call " << call;
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
    for (int twice = 0; twice < 2; ++twice) files.MakeFolder(In("share/quillbox/ann"));
    files.Write(In("share/quillbox/ann/list"), "x");
    ::umask(before);
    for (const char* name : {"share", "share/quillbox", "share/quillbox/ann"}) EXPECT_EQ(Mode(name), 0700U);
    EXPECT_EQ(Mode("share/quillbox/ann/list"), 0600U);
    fs::remove_all(Path("share"));
  }
}

TEST_F(PosixFilesTest, LinkedFilesStayLinked) {
  fs::create_directories(Path("sync"));
  PosixFiles files;
  fs::create_symlink("sync/Pad", Path("first"));
  fs::create_symlink(Path("first"), Path("second"));
  for (const std::string link : {"first", "second"}) {
    EXPECT_EQ(files.Exists(In(link)), link == "second");  // the first write makes it
    files.Write(In(link), link);
    EXPECT_TRUE(fs::is_symlink(Path(link)));
    EXPECT_EQ(Content("sync/Pad"), link);
  }
  fs::create_symlink("loop", Path("loop"));
  EXPECT_EQ(AllFail("loop")[1], errors::kPathAccess);
  EXPECT_TRUE(fs::is_symlink(Path("loop")));
  EXPECT_EQ(Entries("sync"), 1);
}

TEST_F(PosixFilesTest, OnlyFilesAreReadAndReplacedAndFoldersMadeOneLevelDeep) {
  ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
  for (const char* name : {"file", "huge"}) Put(name, "x");
  fs::resize_file(Path("huge"), (std::uintmax_t{1} << 30) + 1);
  const std::string withNul("file\0b", 6);
  constexpr int kAccess = errors::kPathAccess, kNoPath = errors::kPathNotFound;
  const std::pair<std::string, std::vector<int>> rows[] = {
      // reading, writing, making a folder
      {"pipe", {kAccess, kAccess, kAccess}},        {"", {kAccess, kAccess, 0}},
      {"none/none", {kNoPath, kNoPath, kNoPath}},   {"file/b", {kAccess, kAccess, kAccess}},
      {withNul, {kAccess, kAccess, kAccess}},       {"huge", {errors::kDeviceError, 0, kAccess}},
      {"none", {errors::kFileNotFound, 0, kAccess}}};
  for (const auto& [name, failures] : rows) EXPECT_EQ(AllFail(name), failures) << name;
  EXPECT_EQ(Fails([] { PosixFiles().Read(u"/dev/zero"); }), kAccess);
  EXPECT_TRUE(fs::is_fifo(Path("pipe")));
  EXPECT_FALSE(PosixFiles().Exists(In(withNul)));
  EXPECT_EQ(Content("file"), "x");
}

TEST_F(PosixFilesTest, ContentComesBackByteByByte) {
  const Text path = In("J\xC3\xBCrgen \xE2\x82\xAC");
  std::string content;
  for (int i = 0; i < 70000; ++i) content += static_cast<char>(i * 7);
  // In more writes than there are pieces, and more pieces than one write may have.
  std::vector<std::string_view> pieces(3000, "a few");
  pieces[1] = "";
  pieces[2] = content;
  std::string whole;
  for (const std::string_view piece : pieces) whole += piece;
  PosixFiles files(std::make_shared<FaultyCalls>(0, Fault::Fail));
  files.WritePieces(path, [&](const Files::Put& put) { put(pieces), put(pieces); });
  EXPECT_EQ(files.Read(path), whole + whole);
  files.Write(path, "");
  EXPECT_EQ(files.Read(path), "");
  files.Rename(path, In("renamed"));
  EXPECT_TRUE(!files.Exists(path) && files.Exists(In("renamed")));
  EXPECT_EQ(Fails([&] { files.Rename(path, In("x")); }), errors::kFileNotFound);
}

TEST_F(PosixFilesTest, WithoutPermissionNothingChanges) {
  AsOrdinaryUser([&] {
    constexpr int kDenied = errors::kPermission, kThere = errors::kPathAccess;
    Put("own/file", "old");
    ChangeMode("own/file", 0);
    EXPECT_EQ(AllFail("own/file"), (std::vector{kDenied, kDenied, kThere}));
    ChangeMode("own/file", 0600);
    ChangeMode("own", 0500);
    EXPECT_EQ(AllFail("own/file"), (std::vector{0, kDenied, kThere}));
    EXPECT_EQ(AllFail("own/sub"), (std::vector{errors::kFileNotFound, kDenied, kDenied}));
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
  const std::string kept[] = {alive + "1.tmp", gone + "1g.tmp", ".quillbox-4194305.tmp", "4194305.tmp",
                              "file"};
  for (const std::string& name : kept) Put(name, "x");
  // Of a killed process, and of one that lives but too old.
  for (const std::string& name : {gone + "1f.tmp", alive + "2.tmp"}) Put(name, "x");
  fs::last_write_time(Path(alive + "2.tmp"), fs::file_time_type::clock::now() - std::chrono::seconds(100));
  PosixFiles().Write(In("file"), "x");
  for (const std::string& name : kept) EXPECT_TRUE(Exists(name)) << name;
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

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <optional>
#include <string>

#include "platform/linux/InstanceLock.h"
#include "unit/ChildProcess.h"
#include "unit/TemporaryFolder.h"

namespace quillbox {
namespace {

namespace fs = std::filesystem;

// Whether a new process finds another one running; 2 if that process failed.
int AnotherProcessFinds(const std::string& runtime, const std::string& temporary) {
  return RunInChild([&] { return InstanceLock(runtime, temporary).AnotherRuns() ? 1 : 0; });
}

TEST(InstanceLock, HoldsFromTheQuestionToTheEnd) {
  const TemporaryFolder folder;
  std::optional<InstanceLock> first(std::in_place, folder.Path(), "/none");
  EXPECT_EQ(AnotherProcessFinds(folder.Path(), "/none"), 0);  // nobody has asked yet
  EXPECT_FALSE(first->AnotherRuns());
  EXPECT_FALSE(first->AnotherRuns());
  EXPECT_EQ(AnotherProcessFinds(folder.Path(), "/none"), 1);
  first.reset();
  EXPECT_EQ(AnotherProcessFinds(folder.Path(), "/none"), 0);
}

TEST(InstanceLock, DiesWithAKilledProcess) {
  const TemporaryFolder folder;
  int ready[2];
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t holder = ::fork();
  if (holder == 0) {
    InstanceLock lock(folder.Path(), "/none");
    const char answer = lock.AnotherRuns() ? 'y' : 'n';
    if (::write(ready[1], &answer, 1) != 1) ::_exit(1);
    for (;;) ::pause();
  }
  char answer = 0;
  ASSERT_EQ(::read(ready[0], &answer, 1), 1);
  EXPECT_EQ(answer, 'n');
  InstanceLock second(folder.Path(), "/none");
  EXPECT_TRUE(second.AnotherRuns());
  ::kill(holder, SIGKILL);
  ::waitpid(holder, nullptr, 0);
  EXPECT_FALSE(second.AnotherRuns());
  ::close(ready[0]);
  ::close(ready[1]);
}

TEST(InstanceLock, WithoutARuntimeFolderTheTemporaryOneServes) {
  const TemporaryFolder folder;
  const mode_t before = ::umask(0);
  InstanceLock first("", folder.Path());
  EXPECT_FALSE(first.AnotherRuns());
  ::umask(before);
  EXPECT_EQ(AnotherProcessFinds(folder.Path("missing"), folder.Path()), 1);
  const std::string file = folder.Path("quillbox-" + std::to_string(::geteuid()) + ".lock");
  struct stat status {};
  ASSERT_EQ(::lstat(file.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600U);
}

TEST(InstanceLock, WhatOthersPlantedIsLeftAlone) {
  const TemporaryFolder folder;
  const std::string file = folder.Path("quillbox-" + std::to_string(::geteuid()) + ".lock");
  PutContent(folder.Path("victim"), "x");
  fs::permissions(folder.Path("victim"), fs::perms::owner_all);
  fs::create_symlink("victim", file);
  EXPECT_FALSE(InstanceLock("", folder.Path()).AnotherRuns());
  fs::remove(file);
  fs::create_hard_link(folder.Path("victim"), file);
  EXPECT_FALSE(InstanceLock("", folder.Path()).AnotherRuns());
  EXPECT_EQ(fs::status(folder.Path("victim")).permissions(), fs::perms::owner_all);
  fs::remove(file);
  ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
  EXPECT_FALSE(InstanceLock("", folder.Path()).AnotherRuns());
}

}  // namespace
}  // namespace quillbox

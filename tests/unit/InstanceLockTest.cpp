#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <optional>
#include <string>

#include "memory/ScratchFolder.h"
#include "platform/linux/system/InstanceLock.h"
#include "unit/ChildProcess.h"
#include "unit/FileContent.h"

namespace quillbox {
namespace {

namespace fs = std::filesystem;

// Whether a new process finds another one running; it is killed then if asked to.
int AnotherProcessFinds(const std::string& runtime, const std::string& temporary, bool killed = false) {
  return RunInChild([&] {
    InstanceLock lock(runtime, temporary);
    const int found = lock.AnotherRuns() ? 1 : 0;
    return killed ? ::raise(SIGKILL) : found;
  });
}

TEST(InstanceLock, HoldsFromTheQuestionToTheEnd) {
  const ScratchFolder folder;
  std::optional<InstanceLock> first(std::in_place, folder.Path(), "/none");
  EXPECT_EQ(AnotherProcessFinds(folder.Path(), "/none"), 0);  // nobody has asked yet
  EXPECT_EQ(AnotherProcessFinds(folder.Path(), "/none", true), -1);
  EXPECT_FALSE(first->AnotherRuns());
  EXPECT_FALSE(first->AnotherRuns());
  EXPECT_EQ(AnotherProcessFinds(folder.Path(), "/none"), 1);
  first.reset();
  EXPECT_EQ(AnotherProcessFinds(folder.Path(), "/none"), 0);
}

TEST(InstanceLock, WithoutARuntimeFolderTheTemporaryOneServes) {
  const ScratchFolder folder;
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
  const ScratchFolder folder;
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
  EXPECT_EQ(fs::status(file).permissions(), fs::perms(0600));
}

}  // namespace
}  // namespace quillbox

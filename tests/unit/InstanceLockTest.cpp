#include <signal.h>

#include <optional>
#include <string>

#include "platform/linux/system/InstanceLock.h"
#include "unit/FolderTest.h"

namespace quillbox {
namespace {

namespace fs = std::filesystem;

class InstanceLockTest : public FolderTest {
 protected:
  // Whether a new process finds another one running; -1 if it is killed then.
  int AnotherProcessFinds(const std::string& runtime, bool killed = false) {
    return InChild([&] {
      InstanceLock lock(runtime, Path());
      const int found = lock.AnotherRuns() ? 1 : 0;
      return killed ? ::raise(SIGKILL) : found;
    });
  }

  const std::string name_ = "quillbox-" + std::to_string(::geteuid()) + ".lock";
};

TEST_F(InstanceLockTest, HoldsFromTheQuestionToTheEnd) {
  // Without a runtime folder the temporary one serves.
  for (const std::string& runtime : {Path(), std::string(), Path("missing")}) {
    std::optional<InstanceLock> first(std::in_place, runtime, Path());
    EXPECT_EQ(AnotherProcessFinds(runtime), 0) << "nobody has asked yet";
    EXPECT_EQ(AnotherProcessFinds(runtime, true), -1);
    const mode_t before = ::umask(0);
    EXPECT_FALSE(first->AnotherRuns() || first->AnotherRuns());
    ::umask(before);
    EXPECT_EQ(AnotherProcessFinds(runtime), 1);
    EXPECT_EQ(Mode(runtime == Path() ? "quillbox.lock" : name_), 01600U)
        << "and kept from those who clear out old files";
    first.reset();
    EXPECT_EQ(AnotherProcessFinds(runtime), 0);
  }
}

TEST_F(InstanceLockTest, WhatOthersPlantedIsLeftAlone) {
  const std::string victim = Path("victim"), lock = Path(name_);
  Put("victim", "x");
  ChangeMode("victim", 0700);
  const std::function<void()> plants[] = {[&] { fs::create_symlink(victim, lock); },
                                          [&] { fs::create_hard_link(victim, lock); },
                                          [&] { ASSERT_EQ(::mkfifo(lock.c_str(), 0600), 0); }};
  for (const auto& plant : plants) {
    plant();
    EXPECT_FALSE(InstanceLock("", Path()).AnotherRuns());
    EXPECT_EQ(Mode("victim"), 0700U);
    fs::remove(lock);
  }
}

}  // namespace
}  // namespace quillbox

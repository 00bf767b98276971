#include <pwd.h>
#include <signal.h>
#include <sys/utsname.h>

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/registry/FileRegistry.h"
#include "platform/linux/system/InstanceLock.h"
#include "platform/linux/system/LinuxClock.h"
#include "platform/linux/system/LinuxSystem.h"
#include "unit/FolderTest.h"

namespace quillbox {
namespace {

class LinuxSystemTest : public FolderTest {
 protected:
  const SystemPlaces places_ = {Path("opt/bin/quillbox"), Path("data"), "", Path(), Path("source")};
};

TEST_F(LinuxSystemTest, FilesLieInTheSourceOrWhereItIsInstalledOrBesideAPortableProgram) {
  const std::string shared = "opt/share/quillbox";
  const struct {
    std::vector<std::string> made;  // beside those of the rows before
    std::string data, templates, help;
  } rows[] = {
      {{"opt/bin", "source/templates", "source/help"}, "data/quillbox", "source/templates", "source/help"},
      {{shared + "/templates", shared + "/help"}, "data/quillbox", shared + "/templates", shared + "/help"},
      {{"opt/bin/Templates"}, "opt/bin", "opt/bin/Templates", shared + "/help"},
      {{"opt/bin/Help"}, "opt/bin", "opt/bin/Templates", "opt/bin/Help"}};
  for (const auto& [made, data, templates, help] : rows) {
    for (const std::string& folder : made) std::filesystem::create_directories(Path(folder));
    LinuxSystem system(places_);
    EXPECT_EQ(system.DataFolder(), In(data));
    EXPECT_EQ(system.TemplateFolder(), In(templates));
    EXPECT_EQ(system.HelpFolder(), In(help));
  }
  // Where a portable one can't write, it is like an installed one.
  ChangeMode("opt/bin", 0555);
  AsOrdinaryUser([&] {
    LinuxSystem readOnly(places_);
    EXPECT_EQ(readOnly.DataFolder(), In("data/quillbox"));
    EXPECT_EQ(readOnly.TemplateFolder(), In("opt/share/quillbox/templates"));
  });
  ChangeMode("opt/bin", 0755);
  EXPECT_FALSE(Exists("data"));
}

TEST_F(LinuxSystemTest, UserAndSystemAreTold) {
  LinuxSystem system;
  const passwd* user = ::getpwuid(::getuid());
  EXPECT_EQ(system.LogonName(), user != nullptr ? std::optional(FromUtf8(user->pw_name)) : std::nullopt);
  EXPECT_EQ(ToUtf8(system.ProgramFolder() + u"/" + system.ProgramName()),
            std::filesystem::read_symlink("/proc/self/exe"));
  utsname name{};
  ASSERT_EQ(::uname(&name), 0);
  const VersionRecord version = system.Version();
  const std::string number = std::to_string(version.major) + "." + std::to_string(version.minor);
  EXPECT_TRUE(std::string(name.release).starts_with(number)) << number;
  EXPECT_EQ(version.platformId, 2);
  LinuxSystem first(places_);
  EXPECT_FALSE(first.AnotherInstanceRuns());
  Apart([&] { EXPECT_TRUE(LinuxSystem(places_).AnotherInstanceRuns()); });
  for (const auto& [release, pretty] :
       {std::pair("NAME=x\nPRETTY_NAME=\"A \\\"B\\\" 1\"\nID=y\n", "A \"B\" 1"),
        {"PRETTY_NAME='one'", "one"},
        {"PRETTY_NAME=plain\n", "plain"},
        {"OLD_PRETTY_NAME=no\n", ""}})
    EXPECT_EQ(PrettyName(release), pretty);
}

TEST(LinuxSystem, FoldersComeFromTheEnvironment) {
  using Paths = std::vector<std::string>;
  Apart([] {
    ::setenv("HOME", "/home/ann", 1);
    ::setenv("XDG_CONFIG_HOME", "relative", 1);
    ::setenv("XDG_CONFIG_DIRS", "/a::rel:/b", 1);
    ::setenv("XDG_DATA_HOME", "/data", 1);
    const RegistryPlaces places = RegistryPlaces::FromEnvironment();
    EXPECT_EQ(places.configHome, "/home/ann/.config");
    EXPECT_EQ(places.autostart, "/home/ann/.config/autostart");
    EXPECT_EQ(places.configDirs, (Paths{"/a", "/b"}));
    EXPECT_EQ(places.systemAutostart, (Paths{"/a/autostart", "/b/autostart"}));
    EXPECT_EQ(SystemPlaces::FromEnvironment().dataHome, "/data");
    ::unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(SystemPlaces::FromEnvironment().dataHome, "/home/ann/.local/share");
  });
}

TEST(LinuxClock, TellsLocalTimeAndSeesAnotherZone) {
  Apart([] {
    ::setenv("LC_ALL", "C", 1);
    LinuxClock clock;
    for (const auto& [zone, minutes] : {std::pair("XXX-5:30", 330), {"YYY-8:30", 510}}) {
      ::setenv("TZ", zone, 1);
      ::sleep(1);  // it looks for another zone once a second
      const LocalTime now = clock.Now();
      tm fields{now.second, now.minute, now.hour, now.day, now.month - 1, now.year - 1900,
                0,          0,          0,        0,       nullptr};
      EXPECT_NEAR(std::difftime(::timegm(&fields), std::time(nullptr)), minutes * 60, 600);
      EXPECT_EQ(clock.TimeText().size() + clock.DateText().size(), 16U);
    }
  });
}

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

#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>

#include "base/Utf8.h"
#include "memory/ScratchFolder.h"
#include "platform/linux/registry/FileRegistry.h"
#include "platform/linux/system/LinuxClock.h"
#include "platform/linux/system/LinuxSystem.h"
#include "unit/ChildProcess.h"
#include "unit/FileContent.h"

namespace quillbox {
namespace {

namespace fs = std::filesystem;

class LinuxSystemTest : public testing::Test {
 protected:
  SystemPlaces Places() const {
    return {folder_.Path("opt/bin/quillbox"), folder_.Path("data"), "", folder_.Path(),
            folder_.Path("source")};
  }
  Text In(const std::string& name) const { return FromUtf8(folder_.Path(name)); }
  void Make(const std::string& name) const { fs::create_directories(folder_.Path(name)); }

  const ScratchFolder folder_;
};

TEST_F(LinuxSystemTest, AnInstalledProgramKeepsItsDataWithTheUser) {
  Make("opt/bin");
  Make("source/templates");
  Make("source/help");
  LinuxSystem built(Places());
  EXPECT_EQ(built.ProgramFolder() + built.PathSeparator() + built.ProgramName() + built.ProgramSuffix(),
            In("opt/bin/quillbox"));
  EXPECT_EQ(built.DataFolder(), In("data/quillbox"));
  EXPECT_EQ(built.TemplateFolder(), In("source/templates"));
  EXPECT_EQ(built.HelpFolder(), In("source/help"));
  Make("opt/share/quillbox/templates");
  Make("opt/share/quillbox/help");
  LinuxSystem installed(Places());
  EXPECT_EQ(installed.TemplateFolder(), In("opt/share/quillbox/templates"));
  EXPECT_EQ(installed.HelpFolder(), In("opt/share/quillbox/help"));
  EXPECT_FALSE(fs::exists(folder_.Path("data")));
}

TEST_F(LinuxSystemTest, APortableProgramKeepsItsDataBesideItself) {
  Make("opt/bin/Templates");
  Make("opt/share/quillbox/templates");
  LinuxSystem portable(Places());
  EXPECT_EQ(portable.DataFolder(), In("opt/bin"));
  EXPECT_EQ(portable.TemplateFolder(), In("opt/bin/Templates"));

  // Where it can't write, it is like an installed one.
  fs::permissions(folder_.Path(), fs::perms::all);
  fs::permissions(folder_.Path("opt/bin"), fs::perms::owner_read | fs::perms::owner_exec |
                                               fs::perms::others_read | fs::perms::others_exec);
  const int code = RunAsOrdinaryUser([&] {
    LinuxSystem readOnly(Places());
    if (readOnly.DataFolder() != In("data/quillbox")) return 1;
    return readOnly.TemplateFolder() == In("opt/share/quillbox/templates") ? 0 : 2;
  });
  fs::permissions(folder_.Path("opt/bin"), fs::perms::owner_all);
  EXPECT_EQ(code, 0);
}

TEST_F(LinuxSystemTest, UserAndSystemAreTold) {
  LinuxSystem system;
  const passwd* user = ::getpwuid(::getuid());
  EXPECT_EQ(system.LogonName(), user != nullptr ? std::optional(FromUtf8(user->pw_name)) : std::nullopt);
  EXPECT_EQ(ToUtf8(system.ProgramFolder() + u"/" + system.ProgramName()), fs::read_symlink("/proc/self/exe"));

  utsname name{};
  ASSERT_EQ(::uname(&name), 0);
  const VersionRecord version = system.Version();
  const std::string number = std::to_string(version.major) + "." + std::to_string(version.minor);
  EXPECT_TRUE(std::string(name.release).starts_with(number)) << number;
  EXPECT_EQ(version.platformId, 2);
  EXPECT_EQ(system.InstanceHandle(), ::getpid());
  LinuxSystem first(Places());
  EXPECT_FALSE(first.AnotherInstanceRuns());
  EXPECT_EQ(RunInChild([&] { return LinuxSystem(Places()).AnotherInstanceRuns() ? 1 : 0; }), 1);

  EXPECT_EQ(PrettyName("NAME=x\nPRETTY_NAME=\"A \\\"B\\\" 1\"\nID=y\n"), "A \"B\" 1");
  EXPECT_EQ(PrettyName("PRETTY_NAME='one'"), "one");
  EXPECT_EQ(PrettyName("PRETTY_NAME=plain\n"), "plain");
  EXPECT_EQ(PrettyName("OLD_PRETTY_NAME=no\n"), "");
}

TEST_F(LinuxSystemTest, FoldersComeFromTheEnvironment) {
  using Paths = std::vector<std::string>;
  const int code = RunInChild([] {
    ::setenv("HOME", "/home/ann", 1);
    ::setenv("XDG_CONFIG_HOME", "relative", 1);
    ::setenv("XDG_CONFIG_DIRS", "/a::rel:/b", 1);
    ::unsetenv("XDG_DATA_HOME");
    const RegistryPlaces places = RegistryPlaces::FromEnvironment();
    if (places.configHome != "/home/ann/.config") return 1;
    if (places.configDirs != Paths{"/a", "/b"}) return 2;
    if (places.autostart != "/home/ann/.config/autostart") return 3;
    if (places.systemAutostart != Paths{"/a/autostart", "/b/autostart"}) return 4;
    if (SystemPlaces::FromEnvironment().dataHome != "/home/ann/.local/share") return 5;
    ::setenv("XDG_DATA_HOME", "/data", 1);
    return SystemPlaces::FromEnvironment().dataHome == "/data" ? 0 : 6;
  });
  EXPECT_EQ(code, 0);
}

TEST(LinuxClock, TellsLocalTimeAndSeesAnotherZone) {
  const int code = RunInChild([] {
    ::setenv("LC_ALL", "C", 1);
    ::setenv("TZ", "XXX-5:30", 1);
    LinuxClock clock;
    const std::time_t before = std::time(nullptr);
    const LocalTime now = clock.Now();
    const std::time_t after = std::time(nullptr);
    tm fields{now.second, now.minute, now.hour, now.day, now.month - 1, now.year - 1900, 0, 0, 0, 0, nullptr};
    const std::time_t told = ::timegm(&fields) - 5 * 3600 - 30 * 60;
    if (told < before || told > after) return 1;
    if (clock.TimeText().size() != 8 || clock.DateText().size() != 8) return 2;
    ::setenv("TZ", "YYY-8:30", 1);
    ::sleep(1);
    const int hours = (clock.Now().hour - now.hour + 24) % 24;
    return hours == 3 || hours == 4 ? 0 : 3;
  });
  EXPECT_EQ(code, 0);
}

}  // namespace
}  // namespace quillbox

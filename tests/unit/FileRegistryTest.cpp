#include <chrono>
#include <optional>
#include <string>
#include <thread>

#include "base/CodePage.h"
#include "platform/linux/files/FileLock.h"
#include "platform/linux/registry/FileRegistry.h"
#include "unit/FolderTest.h"

namespace quillbox {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kAccess = registry::kMaximumAllowed;
constexpr Hive kUser = Hive::CurrentUser;
constexpr Hive kLocal = Hive::LocalMachine;
const Text kIntern = u"Software\\Norvane\\Quillbox\\ann\\Intern";
const Text kMachine = u"Software\\Norvane\\Quillbox";
const Text kRun = u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run";
const char* const kUserFile = "config/quillbox/user.reg";
const char* const kEntry = "config/autostart/quillbox.desktop";

// A registry whose values are reached by the path of their key.
struct PathRegistry : FileRegistry {
  using FileRegistry::FileRegistry;

  // Type and bytes as "TYPE:BYTES"; "-" if there is no such value.
  std::string Get(Hive hive, TextView path, TextView name, std::size_t maxBytes = 1 << 24) {
    const std::optional<Key> key = Open(hive, path, kAccess);
    std::uint32_t type = 0;
    std::string bytes;
    return key && Query(*key, name, maxBytes, type, bytes) ? std::to_string(type) + ":" + bytes : "-";
  }
  bool Put(Hive hive, TextView path, TextView name, const std::string& bytes, std::uint32_t type = 1) {
    const std::optional<Key> key = Create(hive, path);
    return key && Set(*key, name, type, bytes);
  }
  // Several things with the values of a key, one after the other, and what came of each, with a blank behind
  // it: "name=bytes" puts a string there and "-name" deletes, which is done or fails, "name" is read.
  std::string Do(Hive hive, TextView path, std::initializer_list<Text> things) {
    std::string results;
    for (const Text& thing : things) {
      const std::size_t equals = thing.find(u'=');
      if (equals != Text::npos) {
        results +=
            Put(hive, path, thing.substr(0, equals), ToBytes(thing.substr(equals + 1))) ? "done" : "fails";
      } else if (thing.starts_with(u'-')) {
        const std::optional<Key> key = Open(hive, path, kAccess);
        results += key && Delete(*key, thing.substr(1)) ? "done" : "fails";
      } else {
        results += Get(hive, path, thing);
      }
      results += ' ';
    }
    return results;
  }
};

class FileRegistryTest : public FolderTest {
 protected:
  const RegistryPlaces places_ = {Path("config"),
                                  {Path("xdg1"), Path("xdg2")},
                                  Path("config/autostart"),
                                  {Path("xdg1/autostart"), Path("xdg2/autostart")}};
  PathRegistry ours{places_};
};

TEST_F(FileRegistryTest, TheFirstWriteMakesTheFileAndNamesAreComparedWithoutCase) {
  EXPECT_FALSE(ours.Open(kUser, kIntern, kAccess));
  EXPECT_TRUE(ours.Open(kUser, u"", registry::kSetValue));
  EXPECT_FALSE(Exists("config"));
  EXPECT_EQ(ours.Do(kUser, kIntern, {u"Left=120"}), "done ");
  EXPECT_EQ(ours.Do(kUser, u"SOFTWARE\\norvane\\Quillbox\\ANN\\INTERN", {u"LEFT=120"}), "done ");
  EXPECT_EQ(ours.Do(kUser, u"Software\\Other", {u"x=1"}), "done ");
  EXPECT_EQ(Content(kUserFile),
            "REGEDIT4\r\n\r\n"
            "[HKEY_CURRENT_USER\\Software\\Norvane\\Quillbox\\ann\\Intern]\r\n\"Left\"=\"120\"\r\n\r\n"
            "[HKEY_CURRENT_USER\\Software\\Other]\r\n\"x\"=\"1\"\r\n");
  EXPECT_EQ(Mode(kUserFile), 0600U);
  EXPECT_EQ(Mode("config/quillbox"), 0700U);
  EXPECT_FALSE(ours.Open(kUser, u"software\\nor", kAccess));
  EXPECT_EQ(ours.Do(kUser, u"software\\Norvane\\\\quillbox\\ann\\intern\\", {u"leFT", u"-left", u"-Left"}),
            "1:120 done fails ");
}

TEST_F(FileRegistryTest, EveryValueAndNameComesBackOrFailsWithoutHarm) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  for (const std::string& value :
       {std::string(), std::string("C:\\Sounds\\\"a\".wav"), std::string("end\0", 4), ToBytes(u"\u03A9"), all,
        std::string(50000, '\n')}) {
    for (const std::uint32_t type : {1U, 3U, 11U}) {
      ASSERT_TRUE(ours.Put(kUser, kIntern, u"value", value, type));
      EXPECT_EQ(PathRegistry(places_).Get(kUser, kIntern, u"value"), std::to_string(type) + ":" + value);
    }
  }
  ASSERT_TRUE(ours.Put(kUser, kIntern, u"value", "49"));
  EXPECT_EQ(ours.Get(kUser, kIntern, u"value", 2) + ours.Get(kUser, kIntern, u"value", 1), "1:49-");

  const auto check = [this](const Text& name, bool isKept) {
    SCOPED_TRACE(ToBytes(name.substr(0, 20)));
    const std::string bytes = "of " + ToBytes(name), got = isKept ? "1:" + bytes : "-";
    for (const auto& [path, value] : {std::pair(kIntern, name), {u"Software\\" + name + u"\\Sub", u"v"}}) {
      EXPECT_EQ(ours.Put(kUser, path, value, bytes), isKept);
      EXPECT_EQ(ours.Get(kUser, path, value), got);
    }
    EXPECT_EQ(ours.Get(kUser, kIntern, u"value"), "1:49");
  };
  for (const Text name :
       {u"a\"b", u"a\\", u"]", u"[x]", u"=", u"@", u";", u"", u" a ", u"ü", u"日本", u"ï»¿x", u"\xD800"})
    check(name, true);
  check(Text(100000, u'n'), true);
  for (const Text name : {u"a\nb", u"a\r", u"\t", u"a\u007F"}) check(name, false);
  check(Text(1, u'\0'), false);
  EXPECT_TRUE(ours.Put(kUser, Text(100000, u'\\') + u"deep" + Text(50000, u'\\') + u"key", u"v", "x"));
  EXPECT_EQ(ours.Get(kUser, u"Deep\\Key", u"V"), "1:x");
}

TEST_F(FileRegistryTest, AnExportedBranchIsReadAndAChangeTouchesItsOwnLineAlone) {
  const std::string exported = R"(REGEDIT4

[HKEY_CURRENT_USER\B]
; made by hand
@="default"
"Left"="12\\0" ; a comment
"Message"="first
second \"x\"

last"
"Number"=dword:2a2B2c2D
"Many"=hex(7):61,62,\
  63,\
  64
"Binary"=hex:65, 66
"Gone"="x"
"Gone"=-

[HKEY_CURRENT_USER\Old\Sub]
"x"="1"
[-HKEY_CURRENT_USER\Old]
"x"="2"
[HKEY_LOCAL_MACHINE\B]
"Left"="not the user's"
)";
  Put(kUserFile, exported);
  EXPECT_EQ(
      ours.Do(kUser, u"B", {u"", u"Left", u"Message", u"Number", u"Many", u"Binary", u"Gone", u"left=7"}),
      "1:default 1:12\\0 1:first\nsecond \"x\"\n\nlast 4:-,+* 7:abcd 3:ef - done ");
  EXPECT_FALSE(ours.Open(kUser, u"Old", kAccess));
  std::string changed = exported;
  const std::string line = "\"Left\"=\"12\\\\0\" ; a comment\n";
  EXPECT_EQ(Content(kUserFile), changed.replace(changed.find(line), line.size(), "\"Left\"=\"7\"\n"));
  EXPECT_EQ(ours.Do(kUser, u"B", {u"Gone=back", u"Gone", u"-Gone", u"Gone"}), "done 1:back done - ");
}

TEST_F(FileRegistryTest, DamagedLinesStayAndHarmNothing) {
  const std::string damaged =
      "garbage\n[HKEY_CURRENT_USER\\A]\n"
      "\"open\"=\"no end\n\"b\"=\"1\"\n\"half\"=hex(1):61,\\\n\"c\"=\"2\"\n"
      "[HKEY_CURRENT_USER\\B\n\"b\"=\"3\"\n"
      "HKEY_CURRENT_USER\\C]\n\"c\"=\"not of B\"\n"
      "[HKEY_CURRENT_USER\\D]\n\"cut\"=\"lon";
  Put(kUserFile, damaged);
  EXPECT_EQ(RegDocument(damaged).Find(u"hkey_current_user\\c", u"c"), nullptr);
  EXPECT_EQ(ours.Do(kUser, u"D", {u"new=4", u"new"}), "done 1:4 ");
  EXPECT_EQ(Content(kUserFile), damaged + "\n\"new\"=\"4\"\n");
  EXPECT_EQ(ours.Do(kUser, u"A", {u"open", u"b", u"half", u"c"}), "- 1:1 - 1:2 ");
  EXPECT_EQ(ours.Do(kUser, u"B", {u"b", u"c"}), "1:3 - ");
}

TEST_F(FileRegistryTest, ChangesOfOthersAreSeenAndKept) {
  PathRegistry other(places_);
  for (int round = 200; round < 250; ++round) {
    // The same length, within the clock tick of file times.
    const std::string bytes = std::to_string(round);
    ASSERT_TRUE(other.Put(kUser, kIntern, u"Left", bytes));
    ASSERT_EQ(ours.Get(kUser, kIntern, u"Left"), "1:" + bytes);
    ASSERT_TRUE(ours.Put(kUser, kIntern, u"Top", bytes));
  }
  EXPECT_EQ(other.Get(kUser, kIntern, u"Top"), "1:249");
  fs::remove(Path(kUserFile));
  EXPECT_EQ(ours.Get(kUser, kIntern, u"Left"), "-");
}

TEST_F(FileRegistryTest, WritersAtOnceLoseNothingThatTheyHaveWritten) {
  const Text names[] = {u"a", u"b", u"c", u"d"};
  std::vector<std::thread> writers;
  for (const Text& name : names) {
    writers.emplace_back([this, name] {
      PathRegistry own(places_);
      // On a busy machine the others may have the lock for longer than a write waits.
      for (int i = 0, tries = 0; i < 25 && tries < 1500; ++tries)
        i += own.Put(kUser, u"Software", name + Decimal(i), "x");
    });
  }
  for (std::thread& writer : writers) writer.join();
  for (int i = 0; i < 25; ++i) {
    for (const Text& name : names) EXPECT_EQ(ours.Get(kUser, u"Software", name + Decimal(i)), "1:x");
  }
}

TEST_F(FileRegistryTest, AnUnchangedFileIsNotReadOrWrittenAgain) {
  struct CountingCalls : SystemCalls {
    int Open(const char* path, int flags, mode_t mode) override {
      return ++opened, SystemCalls::Open(path, flags, mode);
    }
    int opened = 0;
  };
  ASSERT_TRUE(ours.Put(kUser, kIntern, u"Left", "100"));
  std::this_thread::sleep_for(std::chrono::milliseconds(60));
  const auto calls = std::make_shared<CountingCalls>();
  PathRegistry counted(places_, calls);
  for (int i = 0; i < 100; ++i) ASSERT_EQ(counted.Get(kUser, kIntern, u"Left"), "1:100");
  EXPECT_TRUE(counted.Put(kUser, kIntern, u"Left", "100"));
  EXPECT_EQ(calls->opened, 1);
}

TEST_F(FileRegistryTest, ALockThatIsHeldFailsTheWrite) {
  ASSERT_TRUE(ours.Put(kUser, kIntern, u"Left", "1"));
  {
    FileLock lock;
    lock.Acquire(Path("config/quillbox/registry.lock"), {});
    EXPECT_EQ(ours.Do(kUser, kIntern, {u"Left=2", u"Left"}), "fails 1:1 ");  // nor does it wait for ever
  }
  EXPECT_EQ(ours.Do(kUser, kIntern, {u"Left=2", u"Left"}), "done 1:2 ");
}

TEST_F(FileRegistryTest, WithoutRightsWritesFail) {
  AsOrdinaryUser([&] {
    EXPECT_TRUE(ours.Put(kUser, kIntern, u"Left", "1") && ours.Put(kLocal, kMachine, u"AutoRun", "Yes"));
    ChangeMode("config/quillbox", 0500);
    EXPECT_EQ(ours.Do(kUser, kIntern, {u"Left=2", u"-Left", u"Left"}), "fails fails 1:1 ");
    EXPECT_EQ(ours.Do(kUser, u"New", {u"x=2"}), "fails ");
    EXPECT_FALSE(ours.Open(kUser, kIntern, registry::kSetValue));
    EXPECT_TRUE(ours.Open(kLocal, kRun, registry::kSetValue));
    ChangeMode("config", 0500);
    EXPECT_FALSE(ours.Open(kLocal, kRun, registry::kSetValue) || ours.Put(kLocal, kRun, u"Quillbox", "/x"));
    for (const char* folder : {"config", "config/quillbox"}) ChangeMode(folder, 0700);
    // A file that can't be read is not replaced by one with a single value.
    ChangeMode(kUserFile, 0200);
    EXPECT_FALSE(PathRegistry(places_).Put(kUser, u"Software", u"x", "y"));
    ChangeMode(kUserFile, 0600);
    EXPECT_EQ(ours.Get(kUser, kIntern, u"Left"), "1:1");
  });
}

TEST_F(FileRegistryTest, TheMachineFallsBackToTheAdministratorsValues) {
  const std::string head = "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Norvane\\Quillbox]\r\n";
  Put("xdg1/quillbox/machine.reg", head + "\"AutoRun\"=\"No\"\r\n");
  Put("xdg2/quillbox/machine.reg", head + "\"AutoRun\"=\"Yes\"\r\n\"Other\"=\"2\"\r\n");
  EXPECT_EQ(ours.Get(kUser, kMachine, u"AutoRun"), "-");
  // What is deleted stays deleted, whatever the administrator's file says.
  EXPECT_EQ(ours.Do(kLocal, kMachine,
                    {u"AutoRun", u"Other", u"autorun=Maybe", u"AutoRun", u"-AutoRun", u"-AutoRun", u"AutoRun",
                     u"AutoRun=Yes", u"AutoRun", u"Other"}),
            "1:No 1:2 done 1:Maybe done fails - done 1:Yes 1:2 ");
  EXPECT_EQ(Content("xdg1/quillbox/machine.reg"), head + "\"AutoRun\"=\"No\"\r\n");
}

TEST_F(FileRegistryTest, RunIsTheAutostartFolder) {
  const auto run = [this](std::initializer_list<Text> things) { return ours.Do(kLocal, kRun, things); };
  ASSERT_TRUE(ours.Open(kLocal, kRun, registry::kSetValue) && !ours.Open(kUser, kRun, kAccess));
  EXPECT_EQ(run({u"Quillbox"}), "- ");
  EXPECT_FALSE(Exists("config"));
  for (const Text path : {u"/opt/my programs/quill box", u"/J\u00FCrgen/\u20AC", u"/\u65E5/quillbox",
                          u"/a\"b`c$d\\e%f %u\tg\nh\ri", u"/a b\\$%"})
    EXPECT_EQ(run({u"Quillbox=" + path, u"QUILLBOX"}), "done 1:" + ToBytes(path) + " ");
  EXPECT_NE(Content(kEntry).find("\nExec=\"/a b\\\\\\\\\\\\$%%\"\n"), std::string::npos) << Content(kEntry);
  // What stands there already isn't written again.
  fs::create_hard_link(Path(kEntry), Path("same"));
  EXPECT_EQ(run({u"Quillbox=/a b\\$%"}), "done ");
  EXPECT_TRUE(fs::equivalent(Path(kEntry), Path("same")));
  EXPECT_EQ(
      run({u"-Quillbox", u"-Quillbox", u"=/x", u"a/b=/x", u"../x=/x", u"a\nb=/x", Text(300, u'n') + u"=/x"}),
      "done fails fails fails fails fails fails ");
  EXPECT_EQ(Entries("config/autostart"), 0);

  // An entry of the system is hidden.
  Put("xdg2/autostart/quillbox.desktop", "[Desktop Entry]\nExec=/usr/bin/quillbox --x\n");
  EXPECT_EQ(run({u"Quillbox"}), "1:/usr/bin/quillbox ");
  EXPECT_EQ(run({u"Quillbox=/opt/x", u"Quillbox", u"-Quillbox", u"Quillbox", u"-Quillbox"}),
            "done 1:/opt/x done - fails ");
  EXPECT_NE(Content(kEntry).find("\nHidden=true\n"), std::string::npos);
}

}  // namespace
}  // namespace quillbox

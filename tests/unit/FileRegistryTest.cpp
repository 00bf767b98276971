#include <fcntl.h>
#include <sys/file.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "base/CodePage.h"
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

// A registry whose values are reached by their path.
struct PathRegistry : FileRegistry {
  using FileRegistry::FileRegistry;

  // Type and bytes as "TYPE:BYTES"; "-" if there is no such value.
  std::string Get(Hive hive, TextView path, TextView name, std::size_t maxBytes = 1 << 24) {
    const std::optional<Key> key = Open(hive, path, kAccess);
    if (!key) return "-";
    std::uint32_t type = 0;
    std::string bytes;
    const bool found = Query(*key, name, maxBytes, type, bytes);
    Close(*key);
    return found ? std::to_string(type) + ":" + bytes : "-";
  }
  bool Put(Hive hive, TextView path, TextView name, const std::string& bytes, std::uint32_t type = 1) {
    const std::optional<Key> key = Create(hive, path);
    const bool done = key && Set(*key, name, type, bytes);
    if (key) Close(*key);
    return done;
  }
  bool Remove(Hive hive, TextView path, TextView name) {
    const std::optional<Key> key = Open(hive, path, kAccess);
    const bool done = key && Delete(*key, name);
    if (key) Close(*key);
    return done;
  }
};

class FileRegistryTest : public FolderTest {
 protected:
  const RegistryPlaces places_ = {Path("config"),
                                  {Path("xdg1"), Path("xdg2")},
                                  Path("config/autostart"),
                                  {Path("xdg1/autostart"), Path("xdg2/autostart")}};
  // The values of places "PATH:NAME", each with a blank behind it.
  std::string Values(Hive hive, std::initializer_list<Text> places) {
    std::string values;
    for (const Text& place : places) {
      const std::size_t colon = place.find(u':');
      values += ours.Get(hive, place.substr(0, colon), place.substr(colon + 1)) + " ";
    }
    return values;
  }

  PathRegistry ours{places_};
};

TEST_F(FileRegistryTest, TheFirstWriteMakesTheFileAndNamesAreComparedWithoutCase) {
  EXPECT_FALSE(ours.Open(kUser, kIntern, kAccess));
  EXPECT_TRUE(ours.Open(kUser, u"", registry::kSetValue));
  EXPECT_FALSE(Exists("config"));
  EXPECT_TRUE(ours.Put(kUser, kIntern, u"Left", "120"));
  EXPECT_TRUE(ours.Put(kUser, u"SOFTWARE\\norvane\\Quillbox\\ANN\\INTERN", u"LEFT", "120"));
  EXPECT_TRUE(ours.Put(kUser, u"Software\\Other", u"x", "1"));
  EXPECT_EQ(Content(kUserFile),
            "REGEDIT4\r\n\r\n"
            "[HKEY_CURRENT_USER\\Software\\Norvane\\Quillbox\\ann\\Intern]\r\n\"Left\"=\"120\"\r\n\r\n"
            "[HKEY_CURRENT_USER\\Software\\Other]\r\n\"x\"=\"1\"\r\n");
  EXPECT_EQ(Mode(kUserFile), 0600U);
  EXPECT_EQ(Mode("config/quillbox"), 0700U);
  EXPECT_EQ(ours.Get(kUser, u"software\\Norvane\\\\quillbox\\ann\\intern\\", u"leFT"), "1:120");
  EXPECT_FALSE(ours.Open(kUser, u"software\\nor", kAccess));
  EXPECT_TRUE(ours.Remove(kUser, kIntern, u"left"));
  EXPECT_FALSE(ours.Remove(kUser, kIntern, u"Left"));
}

TEST_F(FileRegistryTest, EveryValueAndNameComesBackOrFailsWithoutHarm) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  const std::string values[] = {"",  "C:\\Sounds\\\"a\".wav",  std::string("end\0", 4), ToBytes(u"\u03A9"),
                                all, std::string(100000, 'x'), std::string(50000, '\n')};
  for (const std::uint32_t type : {1U, 3U, 11U}) {
    for (const std::string& value : values) {
      ASSERT_TRUE(ours.Put(kUser, kIntern, u"value", value, type));
      EXPECT_EQ(PathRegistry(places_).Get(kUser, kIntern, u"value"), std::to_string(type) + ":" + value);
    }
  }
  ASSERT_TRUE(ours.Put(kUser, kIntern, u"value", "49"));
  EXPECT_EQ(ours.Get(kUser, kIntern, u"value", 2), "1:49");
  EXPECT_EQ(ours.Get(kUser, kIntern, u"value", 1), "-");

  const auto check = [this](const Text& name, bool kept) {
    SCOPED_TRACE(ToBytes(name.substr(0, 20)));
    const std::string bytes = "of " + ToBytes(name), got = kept ? "1:" + bytes : "-";
    const Text path = u"Software\\" + name + u"\\Sub";
    EXPECT_EQ(ours.Put(kUser, kIntern, name, bytes), kept);
    EXPECT_EQ(ours.Get(kUser, kIntern, name), got);
    EXPECT_EQ(ours.Put(kUser, path, u"v", bytes), kept);
    EXPECT_EQ(ours.Get(kUser, path, u"v"), got);
    EXPECT_EQ(ours.Get(kUser, kIntern, u"value"), "1:49");
  };
  for (const Text& name : {Text(u"a\"b"), Text(u"a\\"), Text(u"]"), Text(u"[x]"), Text(u"="), Text(u"@"),
                           Text(u";"), Text(), Text(u" a "), Text(u"\u00FC"), Text(u"\u65E5\u672C"),
                           Text(u"\u00EF\u00BB\u00BFx"), Text(u"\xD800"), Text(100000, u'n')})
    check(name, true);
  for (const Text& name : {Text(u"a\nb"), Text(u"a\r"), Text(u"\t"), Text(u"a\u007F"), Text(1, 0)})
    check(name, false);
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
  EXPECT_EQ(Values(kUser, {u"B:", u"B:Left", u"B:Message", u"B:Number", u"B:Many", u"B:Binary", u"B:Gone"}),
            "1:default 1:12\\0 1:first\nsecond \"x\"\n\nlast 4:-,+* 7:abcd 3:ef - ");
  EXPECT_FALSE(ours.Open(kUser, u"Old", kAccess));

  ASSERT_TRUE(ours.Put(kUser, u"B", u"left", "7"));
  std::string changed = exported;
  const std::string line = "\"Left\"=\"12\\\\0\" ; a comment\n";
  changed.replace(changed.find(line), line.size(), "\"Left\"=\"7\"\n");
  EXPECT_EQ(Content(kUserFile), changed);
  ASSERT_TRUE(ours.Put(kUser, u"B", u"Gone", "back"));
  EXPECT_EQ(ours.Get(kUser, u"B", u"Gone"), "1:back");
  ASSERT_TRUE(ours.Remove(kUser, u"B", u"Gone"));
  EXPECT_EQ(ours.Get(kUser, u"B", u"Gone"), "-");
}

TEST_F(FileRegistryTest, DamagedLinesStayAndHarmNothing) {
  const std::string damaged =
      "garbage\n[HKEY_CURRENT_USER\\A]\n"
      "\"open\"=\"no end\n\"b\"=\"1\"\n\"half\"=hex(1):61,\\\n\"c\"=\"2\"\n"
      "[HKEY_CURRENT_USER\\B\n\"b\"=\"3\"\n"
      "HKEY_CURRENT_USER\\C]\n\"c\"=\"not of B\"\n"
      "[HKEY_CURRENT_USER\\D]\n\"cut\"=\"lon";
  Put(kUserFile, damaged);
  ASSERT_TRUE(ours.Put(kUser, u"D", u"new", "4"));
  EXPECT_EQ(Content(kUserFile), damaged + "\n\"new\"=\"4\"\n");
  EXPECT_EQ(Values(kUser, {u"A:open", u"A:b", u"A:half", u"A:c", u"B:b", u"B:c", u"D:new"}),
            "- 1:1 - 1:2 1:3 - 1:4 ");
}

TEST_F(FileRegistryTest, ChangesOfOthersAreSeenAndKept) {
  ASSERT_TRUE(ours.Put(kUser, kIntern, u"Left", "100"));
  PathRegistry other(places_);
  for (int round = 0; round < 50; ++round) {
    // The same length, within the clock tick of file times.
    const std::string bytes = std::to_string(200 + round);
    ASSERT_TRUE(other.Put(kUser, kIntern, u"Left", bytes));
    ASSERT_EQ(ours.Get(kUser, kIntern, u"Left"), "1:" + bytes);
    ASSERT_TRUE(ours.Put(kUser, kIntern, u"Top", bytes));
  }
  EXPECT_EQ(other.Get(kUser, kIntern, u"Top"), "1:249");
  fs::remove(Path(kUserFile));
  EXPECT_EQ(ours.Get(kUser, kIntern, u"Left"), "-");
}

TEST_F(FileRegistryTest, AnUnchangedFileIsNotReadOrWrittenAgain) {
  struct CountingCalls : SystemCalls {
    int Open(const char* path, int flags, mode_t mode) override {
      ++opened;
      return SystemCalls::Open(path, flags, mode);
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

TEST_F(FileRegistryTest, WritersAtOnceLoseNothingThatTheyHaveWritten) {
  std::vector<std::thread> writers;
  for (char16_t writer = u'a'; writer < u'e'; ++writer) {
    writers.emplace_back([this, writer] {
      PathRegistry own(places_);
      // On a busy machine the others may have the lock for longer than a write waits.
      for (int i = 0; i < 25; ++i)
        for (int tries = 0; tries < 60 && !own.Put(kUser, u"Software", writer + Decimal(i), "x"); ++tries) {
        }
    });
  }
  for (std::thread& writer : writers) writer.join();
  for (char16_t writer = u'a'; writer < u'e'; ++writer)
    for (int i = 0; i < 25; ++i) EXPECT_EQ(ours.Get(kUser, u"Software", writer + Decimal(i)), "1:x");
}

TEST_F(FileRegistryTest, ALockThatIsHeldFailsTheWrite) {
  ASSERT_TRUE(ours.Put(kUser, kIntern, u"Left", "1"));
  const int fd = ::open(Path("config/quillbox/registry.lock").c_str(), O_RDWR | O_CLOEXEC);
  ASSERT_EQ(::flock(fd, LOCK_EX), 0);
  EXPECT_FALSE(ours.Put(kUser, kIntern, u"Left", "2"));  // nor does it wait for ever
  EXPECT_EQ(ours.Get(kUser, kIntern, u"Left"), "1:1");
  ::close(fd);
  EXPECT_TRUE(ours.Put(kUser, kIntern, u"Left", "2"));
}

TEST_F(FileRegistryTest, WithoutRightsWritesFail) {
  AsOrdinaryUser([&] {
    EXPECT_TRUE(ours.Put(kUser, kIntern, u"Left", "1") && ours.Put(kLocal, kMachine, u"AutoRun", "Yes"));
    ChangeMode("config/quillbox", 0500);
    EXPECT_FALSE(ours.Put(kUser, kIntern, u"Left", "2") || ours.Put(kUser, u"New", u"x", "2"));
    EXPECT_FALSE(ours.Remove(kUser, kIntern, u"Left"));
    EXPECT_FALSE(ours.Open(kUser, kIntern, registry::kSetValue));
    EXPECT_EQ(ours.Get(kUser, kIntern, u"Left"), "1:1");
    EXPECT_TRUE(ours.Open(kLocal, kRun, registry::kSetValue));
    ChangeMode("config", 0500);
    EXPECT_FALSE(ours.Open(kLocal, kRun, registry::kSetValue));
    EXPECT_FALSE(ours.Put(kLocal, kRun, u"Quillbox", "/usr/bin/quillbox"));
    ChangeMode("config", 0700);
    ChangeMode("config/quillbox", 0700);
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
  const auto values = [this] { return Values(kLocal, {kMachine + u":AutoRun", kMachine + u":Other"}); };
  EXPECT_EQ(values(), "1:No 1:2 ");
  EXPECT_EQ(ours.Get(kUser, kMachine, u"AutoRun"), "-");
  ASSERT_TRUE(ours.Put(kLocal, kMachine, u"autorun", "Maybe"));
  EXPECT_EQ(values(), "1:Maybe 1:2 ");
  EXPECT_EQ(Content("xdg1/quillbox/machine.reg"), head + "\"AutoRun\"=\"No\"\r\n");
  // What is deleted stays deleted, whatever the administrator's file says.
  EXPECT_TRUE(ours.Remove(kLocal, kMachine, u"AutoRun"));
  EXPECT_FALSE(ours.Remove(kLocal, kMachine, u"AutoRun"));
  EXPECT_EQ(values(), "- 1:2 ");
  EXPECT_TRUE(ours.Put(kLocal, kMachine, u"AutoRun", "Yes"));
  EXPECT_EQ(values(), "1:Yes 1:2 ");
}

TEST_F(FileRegistryTest, RunIsTheAutostartFolder) {
  ASSERT_TRUE(ours.Open(kLocal, kRun, registry::kSetValue));
  EXPECT_FALSE(ours.Open(kUser, kRun, kAccess));
  EXPECT_FALSE(Exists("config"));
  EXPECT_EQ(ours.Get(kLocal, kRun, u"Quillbox"), "-");
  for (const std::string& path : {std::string("/opt/my programs/quill box"), std::string("/J\xFCrgen/\x80"),
                                  ToBytes(u"/\u65E5/quillbox"), std::string("/a\"b`c$d\\e%f %u\tg\nh\ri")}) {
    ASSERT_TRUE(ours.Put(kLocal, kRun, u"Quillbox", path));
    EXPECT_EQ(ours.Get(kLocal, kRun, u"QUILLBOX"), "1:" + path);
  }
  ASSERT_TRUE(ours.Put(kLocal, kRun, u"Quillbox", "/a b\\$%"));
  EXPECT_NE(Content(kEntry).find("\nExec=\"/a b\\\\\\\\\\\\$%%\"\n"), std::string::npos) << Content(kEntry);
  // What stands there already isn't written again.
  fs::create_hard_link(Path(kEntry), Path("same"));
  ASSERT_TRUE(ours.Put(kLocal, kRun, u"Quillbox", "/a b\\$%"));
  EXPECT_TRUE(fs::equivalent(Path(kEntry), Path("same")));

  EXPECT_TRUE(ours.Remove(kLocal, kRun, u"Quillbox"));
  EXPECT_FALSE(Exists(kEntry));
  EXPECT_FALSE(ours.Remove(kLocal, kRun, u"Quillbox"));
  for (const Text& name : {Text(u""), Text(u"a/b"), Text(u"../x"), Text(u"a\nb"), Text(300, u'n')})
    EXPECT_FALSE(ours.Put(kLocal, kRun, name, "/usr/bin/quillbox"));
  EXPECT_EQ(Entries("config/autostart"), 0);
}

TEST_F(FileRegistryTest, AnEntryOfTheSystemIsHidden) {
  Put("xdg2/autostart/quillbox.desktop", "[Desktop Entry]\nExec=/usr/bin/quillbox --x\n");
  EXPECT_EQ(ours.Get(kLocal, kRun, u"Quillbox"), "1:/usr/bin/quillbox");
  for (int twice = 0; twice < 2; ++twice) {
    ASSERT_TRUE(ours.Put(kLocal, kRun, u"Quillbox", "/opt/quillbox"));
    EXPECT_EQ(ours.Get(kLocal, kRun, u"Quillbox"), "1:/opt/quillbox");
    EXPECT_TRUE(ours.Remove(kLocal, kRun, u"Quillbox"));
    EXPECT_EQ(ours.Get(kLocal, kRun, u"Quillbox"), "-");
    EXPECT_NE(Content(kEntry).find("\nHidden=true\n"), std::string::npos);
  }
}

}  // namespace
}  // namespace quillbox

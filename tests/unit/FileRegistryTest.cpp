#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "base/CodePage.h"
#include "memory/ScratchFolder.h"
#include "platform/linux/registry/FileRegistry.h"
#include "unit/ChildProcess.h"
#include "unit/FileContent.h"

namespace quillbox {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kAccess = registry::kMaximumAllowed;
constexpr Hive kUser = Hive::CurrentUser;
constexpr Hive kLocal = Hive::LocalMachine;
const Text kIntern = u"Software\\Norvane\\Quillbox\\ann\\Intern";
const Text kMachine = u"Software\\Norvane\\Quillbox";
const Text kRun = u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run";

unsigned ModeOf(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 0777 : 0U;
}

class FileRegistryTest : public testing::Test {
 protected:
  RegistryPlaces Places() const {
    return {folder_.Path("config"),
            {folder_.Path("xdg1"), folder_.Path("xdg2")},
            folder_.Path("config/autostart"),
            {folder_.Path("xdg1/autostart"), folder_.Path("xdg2/autostart")}};
  }

  // Type and bytes as "TYPE:BYTES"; "-" if there is no such value.
  std::string Get(Hive hive, TextView path, TextView name, FileRegistry* from = nullptr,
                  std::size_t maxBytes = 1 << 24) {
    FileRegistry& of = from != nullptr ? *from : registry_;
    const std::optional<Registry::Key> key = of.Open(hive, path, kAccess);
    if (!key) return "-";
    std::uint32_t type = 0;
    std::string bytes;
    const bool found = of.Query(*key, name, maxBytes, type, bytes);
    of.Close(*key);
    return found ? std::to_string(type) + ":" + bytes : "-";
  }
  bool Put(Hive hive, TextView path, TextView name, const std::string& bytes, std::uint32_t type = 1,
           FileRegistry* into = nullptr) {
    FileRegistry& of = into != nullptr ? *into : registry_;
    const std::optional<Registry::Key> key = of.Create(hive, path);
    if (!key) return false;
    const bool done = of.Set(*key, name, type, bytes);
    of.Close(*key);
    return done;
  }
  bool Remove(Hive hive, TextView path, TextView name) {
    const std::optional<Registry::Key> key = registry_.Open(hive, path, kAccess);
    if (!key) return false;
    const bool done = registry_.Delete(*key, name);
    registry_.Close(*key);
    return done;
  }

  const ScratchFolder folder_;
  const std::string userFile_ = folder_.Path("config/quillbox/user.reg");
  FileRegistry registry_{Places()};
};

TEST_F(FileRegistryTest, TheFirstWriteMakesTheFile) {
  EXPECT_FALSE(registry_.Open(kUser, kIntern, kAccess));
  EXPECT_TRUE(registry_.Open(kUser, u"", registry::kSetValue));
  EXPECT_FALSE(fs::exists(folder_.Path("config")));
  EXPECT_TRUE(Put(kUser, kIntern, u"Left", "120"));
  EXPECT_EQ(ContentOf(userFile_),
            "REGEDIT4\r\n\r\n"
            "[HKEY_CURRENT_USER\\Software\\Norvane\\Quillbox\\ann\\Intern]\r\n"
            "\"Left\"=\"120\"\r\n");
  EXPECT_EQ(ModeOf(userFile_), 0600U);
  EXPECT_EQ(ModeOf(folder_.Path("config/quillbox")), 0700U);
  const std::string before = ContentOf(userFile_);
  EXPECT_TRUE(Put(kUser, u"Software\\Other", u"x", "1"));
  EXPECT_EQ(ContentOf(userFile_), before + "\r\n[HKEY_CURRENT_USER\\Software\\Other]\r\n\"x\"=\"1\"\r\n");
}

TEST_F(FileRegistryTest, EveryValueAndNameComesBackOrFailsWithoutHarm) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  const std::string values[] = {"",
                                "49",
                                "C:\\Sounds\\\"a\".wav",
                                std::string("end\0", 4),
                                "two\r\nlines",
                                ToBytes(u"\u03A9\u65E5"),
                                all,
                                std::string(100000, 'x'),
                                std::string(50000, '\n')};
  for (const std::uint32_t type : {1U, 3U, 11U}) {
    for (const std::string& value : values) {
      ASSERT_TRUE(Put(kUser, kIntern, u"value", value, type));
      FileRegistry fresh(Places());
      EXPECT_EQ(Get(kUser, kIntern, u"value", &fresh), std::to_string(type) + ":" + value);
    }
  }
  ASSERT_TRUE(Put(kUser, kIntern, u"value", "49"));
  EXPECT_EQ(Get(kUser, kIntern, u"value", &registry_, 2), "1:49");
  EXPECT_EQ(Get(kUser, kIntern, u"value", &registry_, 1), "-");

  const auto check = [this](const Text& name, bool kept) {
    SCOPED_TRACE(ToBytes(name.substr(0, 20)));
    const std::string bytes = "of " + ToBytes(name);
    const Text path = u"Software\\" + name + u"\\Sub";
    EXPECT_EQ(Put(kUser, kIntern, name, bytes), kept);
    EXPECT_EQ(Get(kUser, kIntern, name), kept ? "1:" + bytes : "-");
    EXPECT_EQ(Put(kUser, path, u"v", bytes), kept);
    EXPECT_EQ(Get(kUser, path, u"v"), kept ? "1:" + bytes : "-");
    EXPECT_EQ(Get(kUser, kIntern, u"value"), "1:49");
  };
  for (const Text name : {u"a\"b", u"a\\", u"]", u"[x]", u"=", u"@", u";", u"", u" a ", u"\u00FC",
                          u"\u65E5\u672C", u"\u00EF\u00BB\u00BFx", u"\xD800"}) {
    check(name, true);
  }
  check(Text(100000, u'n'), true);
  for (const Text name : {u"a\nb", u"a\r", u"\t", u"a\u007F"}) check(name, false);
  check(Text(1, 0), false);
  EXPECT_TRUE(Put(kUser, Text(100000, u'\\') + u"deep" + Text(50000, u'\\') + u"key", u"v", "x"));
  EXPECT_EQ(Get(kUser, u"Deep\\Key", u"V"), "1:x");
}

TEST_F(FileRegistryTest, NamesAreComparedWithoutCase) {
  ASSERT_TRUE(Put(kUser, kIntern, u"AlwaysOnTop", "1"));
  const std::string before = ContentOf(userFile_);
  ASSERT_TRUE(Put(kUser, u"SOFTWARE\\norvane\\Quillbox\\ANN\\INTERN", u"ALWAYSONTOP", "1"));
  EXPECT_EQ(ContentOf(userFile_), before);
  EXPECT_EQ(Get(kUser, u"software\\Norvane\\\\quillbox\\ann\\intern\\", u"alwaysontop"), "1:1");
  EXPECT_TRUE(registry_.Open(kUser, u"software", kAccess));
  EXPECT_FALSE(registry_.Open(kUser, u"software\\nor", kAccess));
  EXPECT_TRUE(Remove(kUser, kIntern, u"alwaysONtop"));
  EXPECT_FALSE(Remove(kUser, kIntern, u"AlwaysOnTop"));
}

TEST_F(FileRegistryTest, AnExportedBranchIsRead) {
  const std::string exported =
      "REGEDIT4\r\n\r\n"
      "[HKEY_CURRENT_USER\\Software\\Norvane\\Quillbox\\J\xFCrgen]\r\n"
      "; made by hand\r\n"
      "@=\"default\"\r\n"
      "\"Left\"=\"12\\\\0\" ; a comment\r\n"
      "\"Euro\"=\"\x80\xFC\"\r\n"
      "\"Message\"=\"first\r\nsecond \\\"x\\\"\r\n\r\nlast\"\r\n"
      "\"Number\"=dword:0000010A\r\n"
      "\"Many\"=hex(7):61,00,\\\r\n  62,\\\r\n  00,00\r\n"
      "\"Binary\"=hex:01, 02\r\n"
      "\"Gone\"=\"x\"\r\n"
      "\"Gone\"=-\r\n"
      "\r\n"
      "[HKEY_CURRENT_USER\\Software\\Old\\Sub]\r\n"
      "\"x\"=\"1\"\r\n"
      "[-HKEY_CURRENT_USER\\Software\\Old]\r\n"
      "\"x\"=\"2\"\r\n"
      "[HKEY_LOCAL_MACHINE\\Software\\Norvane\\Quillbox\\J\xFCrgen]\r\n"
      "\"Left\"=\"not the user's\"\r\n";
  PutContent(userFile_, exported);
  const Text path = u"Software\\Norvane\\Quillbox\\J\u00FCrgen";
  const std::pair<Text, std::string> values[] = {
      {u"", "1:default"},
      {u"Left", "1:12\\0"},
      {u"Euro", "1:\x80\xFC"},
      {u"Message", "1:first\r\nsecond \"x\"\r\n\r\nlast"},
      {u"Number", std::string("4:\x0A\x01\0\0", 6)},
      {u"Many", std::string("7:a\0b\0\0", 7)},
      {u"Binary", "3:\x01\x02"},
      {u"Gone", "-"},
  };
  for (const auto& [name, value] : values) EXPECT_EQ(Get(kUser, path, name), value);
  EXPECT_FALSE(registry_.Open(kUser, u"Software\\Old", kAccess));

  // A change touches its own line alone.
  ASSERT_TRUE(Put(kUser, path, u"left", "7"));
  std::string changed = exported;
  const std::string line = "\"Left\"=\"12\\\\0\" ; a comment\r\n";
  changed.replace(changed.find(line), line.size(), "\"Left\"=\"7\"\r\n");
  EXPECT_EQ(ContentOf(userFile_), changed);
  ASSERT_TRUE(Put(kUser, path, u"Gone", "back"));
  EXPECT_EQ(Get(kUser, path, u"Gone"), "1:back");
  ASSERT_TRUE(Remove(kUser, path, u"Gone"));
  EXPECT_EQ(Get(kUser, path, u"Gone"), "-");
}

TEST_F(FileRegistryTest, DamagedLinesStayAndHarmNothing) {
  const std::string damaged =
      "garbage\n[HKEY_CURRENT_USER\\A]\n"
      "\"open\"=\"no end\n\"b\"=\"1\"\n\"half\"=hex(1):61,\\\n\"c\"=\"2\"\n"
      "[HKEY_CURRENT_USER\\B\n\"b\"=\"3\"\n"
      "HKEY_CURRENT_USER\\C]\n\"c\"=\"not of B\"\n"
      "[HKEY_CURRENT_USER\\D]\n\"cut\"=\"lon";
  PutContent(userFile_, damaged);
  ASSERT_TRUE(Put(kUser, u"D", u"new", "4"));
  EXPECT_EQ(ContentOf(userFile_), damaged + "\n\"new\"=\"4\"\n");
  std::string values;
  for (const Text at : {u"A:open", u"A:b", u"A:half", u"A:c", u"B:b", u"B:c", u"D:new"}) {
    values += Get(kUser, at.substr(0, 1), at.substr(2)) + " ";
  }
  EXPECT_EQ(values, "- 1:1 - 1:2 1:3 - 1:4 ");
}

TEST_F(FileRegistryTest, ChangesOfOthersAreSeenAndKept) {
  ASSERT_TRUE(Put(kUser, kIntern, u"Left", "100"));
  FileRegistry other(Places());
  for (int round = 0; round < 50; ++round) {
    // The same length, within the clock tick of file times.
    const std::string bytes = std::to_string(200 + round);
    ASSERT_TRUE(Put(kUser, kIntern, u"Left", bytes, 1, &other));
    ASSERT_EQ(Get(kUser, kIntern, u"Left"), "1:" + bytes);
    ASSERT_TRUE(Put(kUser, kIntern, u"Top", bytes));
  }
  EXPECT_EQ(Get(kUser, kIntern, u"Top", &other), "1:249");
  fs::remove(userFile_);
  EXPECT_EQ(Get(kUser, kIntern, u"Left"), "-");
}

// Counts what a read costs.
class CountingCalls : public SystemCalls {
 public:
  int Open(const char* path, int flags, mode_t mode) override {
    ++opened;
    return SystemCalls::Open(path, flags, mode);
  }
  int Rename(const char* from, const char* to) override {
    ++renamed;
    return SystemCalls::Rename(from, to);
  }
  int opened = 0;
  int renamed = 0;
};

TEST_F(FileRegistryTest, AnUnchangedFileIsNotReadOrWrittenAgain) {
  ASSERT_TRUE(Put(kUser, kIntern, u"Left", "100"));
  std::this_thread::sleep_for(std::chrono::milliseconds(60));
  const auto calls = std::make_shared<CountingCalls>();
  FileRegistry counted(Places(), calls);
  for (int i = 0; i < 100; ++i) ASSERT_EQ(Get(kUser, kIntern, u"Left", &counted), "1:100");
  const auto key = counted.Open(kUser, kIntern, kAccess);
  EXPECT_TRUE(counted.Set(*key, u"Left", 1, "100"));
  EXPECT_EQ(calls->opened, 1);
  EXPECT_EQ(calls->renamed, 0);
}

TEST_F(FileRegistryTest, WritersOfManyProcessesLoseNothing) {
  std::vector<std::thread> writers;
  for (char16_t writer = u'a'; writer < u'e'; ++writer) {
    writers.emplace_back([this, writer] {
      FileRegistry own(Places());
      for (int i = 0; i < 25; ++i) Put(kUser, u"Software", writer + Decimal(i), "x", 1, &own);
    });
  }
  for (std::thread& writer : writers) writer.join();
  for (char16_t writer = u'a'; writer < u'e'; ++writer) {
    for (int i = 0; i < 25; ++i) EXPECT_EQ(Get(kUser, u"Software", writer + Decimal(i)), "1:x");
  }
}

TEST_F(FileRegistryTest, ALockThatIsHeldFailsTheWrite) {
  ASSERT_TRUE(Put(kUser, kIntern, u"Left", "1"));
  const int fd = ::open(folder_.Path("config/quillbox/registry.lock").c_str(), O_RDWR | O_CLOEXEC);
  ASSERT_EQ(::flock(fd, LOCK_EX), 0);
  EXPECT_FALSE(Put(kUser, kIntern, u"Left", "2"));  // nor does it wait for ever
  EXPECT_EQ(Get(kUser, kIntern, u"Left"), "1:1");
  ::close(fd);
  EXPECT_TRUE(Put(kUser, kIntern, u"Left", "2"));
}

TEST_F(FileRegistryTest, WithoutRightsWritesFail) {
  fs::permissions(folder_.Path(), fs::perms::all);
  const auto chmod = [this](const std::string& name, mode_t mode) {
    ::chmod(folder_.Path(name).c_str(), mode);
  };
  const int code = RunAsOrdinaryUser([&] {
    if (!Put(kUser, kIntern, u"Left", "1") || !Put(kLocal, kMachine, u"AutoRun", "Yes")) return 1;
    chmod("config/quillbox", 0500);
    if (Put(kUser, kIntern, u"Left", "2") || Put(kUser, u"New", u"x", "2")) return 2;
    if (Remove(kUser, kIntern, u"Left")) return 3;
    if (registry_.Open(kUser, kIntern, registry::kSetValue)) return 4;
    if (Get(kUser, kIntern, u"Left") != "1:1") return 5;
    if (!registry_.Open(kLocal, kRun, registry::kSetValue)) return 6;
    chmod("config", 0500);
    if (registry_.Open(kLocal, kRun, registry::kSetValue)) return 7;
    if (Put(kLocal, kRun, u"Quillbox", "/usr/bin/quillbox")) return 8;
    chmod("config", 0700);
    chmod("config/quillbox", 0700);
    // A file that can't be read is not replaced by one with a single value.
    chmod("config/quillbox/user.reg", 0200);
    FileRegistry fresh(Places());
    if (Put(kUser, u"Software", u"x", "y", 1, &fresh)) return 9;
    chmod("config/quillbox/user.reg", 0600);
    return Get(kUser, kIntern, u"Left") == "1:1" ? 0 : 10;
  });
  EXPECT_EQ(code, 0);
}

TEST_F(FileRegistryTest, TheMachineFallsBackToTheAdministratorsValues) {
  const std::string head = "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Norvane\\Quillbox]\r\n";
  PutContent(folder_.Path("xdg1/quillbox/machine.reg"), head + "\"AutoRun\"=\"No\"\r\n");
  PutContent(folder_.Path("xdg2/quillbox/machine.reg"), head + "\"AutoRun\"=\"Yes\"\r\n\"Other\"=\"2\"\r\n");
  EXPECT_EQ(Get(kLocal, kMachine, u"AutoRun"), "1:No");
  EXPECT_EQ(Get(kLocal, kMachine, u"Other"), "1:2");
  EXPECT_EQ(Get(kUser, kMachine, u"AutoRun"), "-");
  ASSERT_TRUE(Put(kLocal, kMachine, u"autorun", "Maybe"));
  EXPECT_EQ(Get(kLocal, kMachine, u"AutoRun"), "1:Maybe");
  EXPECT_EQ(Get(kLocal, kMachine, u"Other"), "1:2");
  EXPECT_EQ(ContentOf(folder_.Path("xdg1/quillbox/machine.reg")), head + "\"AutoRun\"=\"No\"\r\n");
  // What is deleted stays deleted, whatever the administrator's file says.
  EXPECT_TRUE(Remove(kLocal, kMachine, u"AutoRun"));
  EXPECT_EQ(Get(kLocal, kMachine, u"AutoRun"), "-");
  EXPECT_FALSE(Remove(kLocal, kMachine, u"AutoRun"));
  EXPECT_TRUE(Put(kLocal, kMachine, u"AutoRun", "Yes"));
  EXPECT_EQ(Get(kLocal, kMachine, u"AutoRun"), "1:Yes");
}

TEST_F(FileRegistryTest, RunIsTheAutostartFolder) {
  const std::string entry = folder_.Path("config/autostart/quillbox.desktop");
  ASSERT_TRUE(registry_.Open(kLocal, kRun, registry::kSetValue));
  EXPECT_FALSE(registry_.Open(kUser, kRun, kAccess));
  EXPECT_FALSE(fs::exists(folder_.Path("config")));
  EXPECT_EQ(Get(kLocal, kRun, u"Quillbox"), "-");
  const std::string paths[] = {"/usr/bin/quillbox", "/opt/my programs/quill box", "/a\"b`c$d\\e%f %u",
                               "/J\xFCrgen/\x80",   ToBytes(u"/\u65E5/quillbox"), "/a\tb\nc"};
  for (const std::string& path : paths) {
    ASSERT_TRUE(Put(kLocal, kRun, u"Quillbox", path));
    EXPECT_EQ(Get(kLocal, kRun, u"QUILLBOX"), "1:" + path);
  }
  ASSERT_TRUE(Put(kLocal, kRun, u"Quillbox", "/a b\\$%"));
  EXPECT_NE(ContentOf(entry).find("\nExec=\"/a b\\\\\\\\\\\\$%%\"\n"), std::string::npos) << ContentOf(entry);
  // What stands there already isn't written again.
  fs::create_hard_link(entry, folder_.Path("same"));
  ASSERT_TRUE(Put(kLocal, kRun, u"Quillbox", "/a b\\$%"));
  EXPECT_TRUE(fs::equivalent(entry, folder_.Path("same")));

  EXPECT_TRUE(Remove(kLocal, kRun, u"Quillbox"));
  EXPECT_FALSE(fs::exists(entry));
  EXPECT_FALSE(Remove(kLocal, kRun, u"Quillbox"));
  for (const Text& name : {Text(u""), Text(u"a/b"), Text(u"../x"), Text(u"a\nb"), Text(300, u'n')}) {
    EXPECT_FALSE(Put(kLocal, kRun, name, "/usr/bin/quillbox"));
  }
  EXPECT_EQ(EntriesIn(folder_.Path("config/autostart")), 0U);
}

TEST_F(FileRegistryTest, AnEntryOfTheSystemIsHidden) {
  PutContent(folder_.Path("xdg2/autostart/quillbox.desktop"),
             "[Desktop Entry]\nExec=/usr/bin/quillbox --x\n");
  EXPECT_EQ(Get(kLocal, kRun, u"Quillbox"), "1:/usr/bin/quillbox");
  ASSERT_TRUE(Put(kLocal, kRun, u"Quillbox", "/opt/quillbox"));
  EXPECT_EQ(Get(kLocal, kRun, u"Quillbox"), "1:/opt/quillbox");
  EXPECT_TRUE(Remove(kLocal, kRun, u"Quillbox"));
  EXPECT_EQ(Get(kLocal, kRun, u"Quillbox"), "-");
  EXPECT_NE(ContentOf(folder_.Path("config/autostart/quillbox.desktop")).find("\nHidden=true\n"),
            std::string::npos);
  EXPECT_TRUE(Put(kLocal, kRun, u"Quillbox", "/opt/quillbox"));
  EXPECT_EQ(Get(kLocal, kRun, u"Quillbox"), "1:/opt/quillbox");
}

}  // namespace
}  // namespace quillbox

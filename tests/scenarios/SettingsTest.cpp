#include "scenarios/Scenario.h"

namespace quillbox {
namespace {

class SettingsStore : public Scenario {
 protected:
  void SetBytes(const std::string& key, const std::string& type, const std::string& hex) {
    Do("reg.bytes", "HKCU", Intern(), key, type, hex);
  }
  // How many normal Clip entries the menu shows of three: a number read from the store, 5 by default.
  int ShownClips() {
    Do("tray.mouse", "516");
    int shown = 0;
    for (const std::string& value : Do("menu")) shown += value.rfind("mnuClip", 0) == 0 ? 1 : 0;
    return shown;
  }
};

TEST_F(SettingsStore, HowValuesAreRead) {
  struct Case {
    std::string type;   // 1 is a text, 4 a number
    std::string bytes;  // in hexadecimal digits
    int shown;
  };
  const Case cases[] = {
      {"1", "", 3},                          // empty: the default
      {"1", std::string(2 * 1025, '3'), 3},  // more than 1024 bytes
      {"3", "31", 3},                        // of another type
      {"1", "3100", 1},                      // one closing NUL doesn't count
      {"1", "3220616e64206d6f7265", 2},      // "2 and more": the numeric prefix
      {"1", "6e6f6e65", 0},                  // "none"
      {"1", "2d34", 0},                      // "-4"
      {"4", "02000000", 2},                  // its digits, from the last byte to the first
  };
  Do("start");
  for (const char* text : {"c", "b", "a"}) Copy(text);
  EXPECT_EQ(ShownClips(), 3);
  for (const Case& c : cases) {
    SetBytes("MenuEntriesMax", c.type, c.bytes);
    EXPECT_EQ(ShownClips(), c.shown) << c.type << " " << c.bytes.substr(0, 40);
  }
}

TEST_F(SettingsStore, WithoutRightsOnTheMachine) {
  Do("reg.deny", "HKLM", "1");
  Do("start");
  EXPECT_EQ(Do("running"), Values{"1"});
  EXPECT_EQ(Do("reg.get", "HKLM", "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run", "Quillbox"),
            Values{"0"});
  EXPECT_EQ(Do("reg.get", "HKCU", "Software\\Norvane\\Quillbox", "LastUserName"), (Values{"1", "user"}));
  EXPECT_EQ(Do("boxes"), Values{});
}

TEST_F(SettingsStore, AFailedWriteIsLostSilently) {
  Do("start");
  Do("reg.deny", "HKCU", "1");
  Do("pick", "mnuOnTop");
  EXPECT_EQ(Setting("Intern", "AlwaysOnTop"), "(none)");
  EXPECT_EQ(Get("frmTray.mnuOnTop", "Checked"), "0");
  EXPECT_EQ(Do("boxes"), Values{});
}

TEST_F(SettingsStore, EachUserHasABranch) {
  Set("AlwaysOnTop", "2");
  Do("user", "anna");
  Do("reg.set", "HKCU", "Software\\Norvane\\Quillbox\\anna\\Intern", "StartHelp", "No");
  Do("reg.set", "HKCU", "Software\\Norvane\\Quillbox\\anna\\Extern", "QuillboxVMajor", "4");
  Do("start");
  EXPECT_EQ(Get("frmTray", "Topmost"), "1");
  EXPECT_EQ(Do("reg.get", "HKCU", "Software\\Norvane\\Quillbox\\anna\\Extern", "QuillboxVRev"),
            (Values{"1", "476"}));
}

}  // namespace
}  // namespace quillbox

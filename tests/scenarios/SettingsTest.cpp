#include "scenarios/Scenario.h"

namespace quillbox {
namespace {

class SettingsStore : public Scenario {
 protected:
  void SetBytes(const std::string& key, const std::string& type, const std::string& hex) {
    Do("reg.bytes", "HKCU", Intern(), key, type, hex);
  }
  // How many normal Clip entries the menu would show of three: a number read from the store.
  int ShownClips() {
    Do("tray.mouse", "516");
    int shown = 0;
    for (const std::string& value : Do("menu")) shown += value.rfind("mnuClip", 0) == 0 ? 1 : 0;
    return shown - (Get("frmTray.mnuClips", "Visible") == "1" ? 1 : 0);
  }
  void StartWithThree() {
    Do("start");
    for (const char* text : {"c", "b", "a"}) Copy(text);
  }
};

TEST_F(SettingsStore, ValuesThatReadAsTheDefault) {
  Set("MenuEntriesMax", "");
  StartWithThree();
  EXPECT_EQ(ShownClips(), 3) << "an empty value";
  SetBytes("MenuEntriesMax", "1", std::string(2 * 1025, '3'));
  EXPECT_EQ(ShownClips(), 3) << "a value of more than 1024 bytes";
  SetBytes("MenuEntriesMax", "3", "31");
  EXPECT_EQ(ShownClips(), 3) << "a value of another type";
  SetBytes("MenuEntriesMax", "1", "3100");
  EXPECT_EQ(ShownClips(), 1) << "one closing NUL doesn't count";
  Do("reg.delete", "HKCU", Intern(), "MenuEntriesMax");
  EXPECT_EQ(ShownClips(), 3);
}

TEST_F(SettingsStore, NumbersAreTheirNumericPrefix) {
  Set("MenuEntriesMax", "2 and more");
  StartWithThree();
  EXPECT_EQ(ShownClips(), 2);
  Set("MenuEntriesMax", "none");
  EXPECT_EQ(ShownClips(), 0);
  Set("MenuEntriesMax", "-4");
  EXPECT_EQ(ShownClips(), 0);
  // A number of four bytes is its hexadecimal digits, from the last byte to the first.
  SetBytes("MenuEntriesMax", "4", "02000000");
  EXPECT_EQ(ShownClips(), 2);
}

TEST_F(SettingsStore, WithoutRightsOnTheMachine) {
  Do("reg.deny", "HKLM", "1");
  StartWithThree();
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

TEST_F(SettingsStore, AVeryLongMessageIsStoredAndReadsAsEmpty) {
  Do("reg.set", "HKCU", Section("MessageEntry"), "MessageEntry", std::string(1024, 'm'));
  Do("start");
  EXPECT_EQ(Get("frmTray.Text13", "Text"), std::string(1024, 'm'));
  Do("end");
  Do("reg.set", "HKCU", Section("MessageEntry"), "MessageEntry", std::string(1025, 'm'));
  Do("start");
  EXPECT_EQ(Get("frmTray.Text13", "Text"), "");
}

}  // namespace
}  // namespace quillbox

// The settings dialog: what OK stores and does, and what its other buttons leave alone.
#include "scenarios/SettingsScenario.h"

namespace quillbox {
namespace {

class SettingsAcceptTest : public SettingsScenario {
 protected:
  // A number for each field, all different.
  static int NumberOf(const SettingsField& field) {
    return static_cast<int>(&field - kFields.data()) + (field.lower == 3 ? 20 : 3);
  }
  // Opens the dialog and changes each of its settings.
  void ChangeEverything() {
    Open();
    for (const SettingsSwitch& box : kSwitches) Click(box.name);
    Click("Check5");
    Click("Option1");
    for (const SettingsField& field : kFields) {
      OpenTab(field.page);
      Enter(field.name, std::to_string(NumberOf(field)));
    }
    OpenTab(2);
    Click("Option4");
    Click("Check8");
    Enter("Text8", "/sounds/gong.wav");
    Do("choose", "frmSettings.Combo1", "0");
  }
};

TEST_F(SettingsAcceptTest, AnUntouchedDialogStoresTheDefaultsOfThePlatform) {
  Open();
  Ok();
  EXPECT_EQ(Intern("TrayTipMode"), "2") << "the key never holds 3 again";
  EXPECT_EQ(Intern("ClipEntriesMax"), "49");
  EXPECT_EQ(Intern("LastSort"), "2");
  EXPECT_EQ(Intern("Insert"), "2");
  Set("TrayTipMode", "3");
  Do("platform", "1");
  Open();
  EXPECT_EQ(In("Combo1", "ListIndex"), "1");
}

TEST_F(SettingsAcceptTest, WithoutRightsNothingIsStoredAndNothingIsLost) {
  Do("reg.set", "HKLM", kRunPath, "Quillbox", "as it was");
  Do("reg.set", "HKLM", kProgramPath, "AutoRun", "No");
  FillLists(5);
  Do("reg.deny", "HKLM", "1");
  Open();
  EXPECT_FALSE(Is("frmSettings.Check5", "Enabled"));
  EXPECT_FALSE(Checked("Check5")) << "shows the state that it can't change";
  Ok();
  EXPECT_EQ(MachineValue(kRunPath, "Quillbox"), "as it was");
  EXPECT_EQ(MachineValue(kProgramPath, "AutoRun"), "No");
  EXPECT_EQ(Intern("ClipEntriesMax"), "49") << "the person's own settings are";

  Do("reg.deny", "HKCU", "1");
  const Stored before = Everything();
  Open(1);
  Enter("Text1", "3");
  OpenTab(0);
  Click("Check2");
  Ok();
  EXPECT_TRUE(Everything() == before);
  EXPECT_EQ(Rows("List2").size(), 5U) << "the maximum is what is stored";
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(SettingsAcceptTest, CancelAndCloseBoxChangeNothing) {
  FillLists(5);
  Open();
  Ok();
  const Stored before = Everything();
  const int writes = Writes("ClipData.qbx");
  const std::vector<Values> ways{{"click", "frmSettings.Command2"},
                                 {"key", "frmSettings.Command4", "Escape"},
                                 {"closebox", "frmSettings"}};
  for (const Values& way : ways) {
    for (const bool afterDefault : {false, true}) {
      ChangeEverything();
      if (afterDefault) Click("Command4");
      Do(way);
      EXPECT_FALSE(Is("frmSettings", "Loaded")) << way[0];
      EXPECT_TRUE(Everything() == before) << way[0];
    }
  }
  EXPECT_EQ(Writes("ClipData.qbx"), writes);
  EXPECT_EQ(Rows("List2").size(), 5U);
  Open();
  EXPECT_TRUE(Checked("Option3")) << "the clicks that count have not changed";
}

TEST_F(SettingsAcceptTest, DefaultAsksAndSetsTheControlsOnly) {
  ChangeEverything();
  const Stored before = Everything();
  Do("answer", "7", "6");
  Click("Command4");
  EXPECT_EQ(Boxes(), (std::vector<Box>{{"36", "Reset everything to default values?",
                                        "This will reset all settings to their default values.\r\nDo you "
                                        "want to continue?"}}));
  EXPECT_TRUE(Checked("Option1"));
  EXPECT_EQ(Text("Text7"), std::to_string(NumberOf(kFields[7])));
  Click("Command4");
  ExpectDefaults();
  EXPECT_EQ(Text("Text8"), "/sounds/gong.wav");
  EXPECT_TRUE(Everything() == before);
  Do("platform", "1");
  Click("Command4");
  EXPECT_EQ(In("Combo1", "ListIndex"), "1");
}

TEST_F(SettingsAcceptTest, ALoweredMaximumCutsTheListsAndTheMenu) {
  FillLists(6);
  const Values clips = Rows("List2");
  Open(1);
  Enter("Text1", "4");
  Enter("Text2", "3");
  Enter("Text3", "5");
  Ok();
  EXPECT_EQ(Rows("List2"), Values(clips.begin(), clips.begin() + 4));
  EXPECT_EQ(Rows("List1").size(), 3U);
  EXPECT_EQ(Rows("List3").size(), 5U);
  EXPECT_TRUE(Is("frmTray.mnuPadSub3", "Visible"));
  EXPECT_FALSE(Is("frmTray.mnuPadSub4", "Visible")) << "the menu is built from the lists as they are now";
  EXPECT_NE(DataFile("ToDoData.qbx").find("task 5"), std::string::npos) << "gone with the next save only";
  // Entries that came while the dialog stood open are kept.
  Open();
  Copy("while open");
  Ok();
  EXPECT_EQ(Rows("List2").front(), "while open");
  EXPECT_EQ(Rows("List2").size(), 4U);
  Restart();
  EXPECT_EQ(Rows("List3").size(), 5U);
  EXPECT_EQ(DataFile("ToDoData.qbx").find("task 5"), std::string::npos);
}

TEST_F(SettingsAcceptTest, AFileThatCantBeWrittenLosesNoEntry) {
  const auto lists = [this] {
    return std::vector<Values>{Rows("List1"), Slots("PadEntries"), Rows("List2"), Rows("List3")};
  };
  for (const std::string file : {"PadData.qbx", "ClipData.qbx", "ToDoData.qbx"}) {
    SCOPED_TRACE(file);
    FillLists(6);
    Obstruct(file);
    Copy("newer than the file " + file);
    AddPad("newer " + file, "than the file " + file);
    AddToDo("newer than the file " + file);
    Boxes();
    const auto before = lists();
    const std::string clipboard = Clipboard();
    Open();
    Ok();
    const auto boxes = Boxes();
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].title, "Quillbox Message");
    EXPECT_EQ(lists(), before);
    EXPECT_EQ(Clipboard(), clipboard);
    Clear(file);
    Restart();
    EXPECT_EQ(lists(), before);
    EXPECT_TRUE(Boxes().empty());
    Show();
  }
}

TEST_F(SettingsAcceptTest, TheMaximumOfAListThatCouldntBeSavedAppliesAfterTheRepair) {
  FillLists(6);
  Obstruct("ToDoData.qbx");
  Open(1);
  Enter("Text3", "4");
  Ok();
  EXPECT_EQ(Rows("List3").size(), 6U);
  EXPECT_EQ(Intern("ToDoEntriesMax"), "3") << "the setting is stored all the same";
  Clear("ToDoData.qbx");
  Open();
  Ok();
  EXPECT_EQ(Rows("List3"), (Values{"task 0", "task 1", "task 2", "task 3"}));
}

TEST_F(SettingsAcceptTest, TheWindowComesUpBehindItOnlyIfItIsTopmost) {
  for (const bool topmost : {true, false}) {
    if (Is("frmTray", "Visible")) Do("closebox", "frmTray");
    Set("AlwaysOnTop", topmost ? "1" : "2");
    Do("tray.mouse", "516");
    Do("pick", "mnuSettings");
    EXPECT_EQ(Is("frmTray", "Visible"), topmost);
    EXPECT_TRUE(Is("frmSettings", "Visible"));
    Do("closebox", "frmSettings");
  }
}

}  // namespace
}  // namespace quillbox

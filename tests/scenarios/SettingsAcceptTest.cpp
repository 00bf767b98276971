// The settings dialog: what OK stores and does, and what its other buttons leave alone.
#include "scenarios/SettingsScenario.h"

namespace quillbox {
namespace {

class SettingsAcceptTest : public SettingsScenario {};

TEST_F(SettingsAcceptTest, OkStoresEverything) {
  Set("TrayTipMode", "3");
  Open();
  for (const SettingsSwitch& box : kSwitches) Click(box.name);
  Click("Option1");
  Do("tab", "frmSettings.SSTab1", "2");
  Click("Option4");
  Click("Check8");
  Enter("Text8", "/sounds/gong.wav");
  Do("choose", "frmSettings.Combo1", "1");
  // A number for each field, all different.
  const auto numberOf = [](const SettingsField& field) {
    return static_cast<int>(&field - kFields.data()) + (field.lower == 3 ? 20 : 3);
  };
  for (const SettingsField& field : kFields) {
    Do("tab", "frmSettings.SSTab1", std::to_string(field.page));
    Enter(field.name, std::to_string(numberOf(field)));
  }
  Ok();
  for (const SettingsSwitch& box : kSwitches)
    EXPECT_EQ(Intern(box.key), box.byDefault ? "2" : "1") << box.key;
  EXPECT_EQ(Intern("Insert"), "1");
  EXPECT_EQ(Intern("ClicksToShow"), "2");
  EXPECT_EQ(Intern("TrayTipMode"), "1");
  EXPECT_EQ(Setting("MessageEntry", "PlayWave"), "1");
  EXPECT_EQ(Setting("MessageEntry", "WavePath"), "/sounds/gong.wav");
  for (const SettingsField& field : kFields)
    EXPECT_EQ(Intern(field.key), std::to_string(numberOf(field) - field.lessInStore)) << field.key;
  // The clicks count at once, without a restart.
  Do("closebox", "frmTray");
  Do("tray.mouse", "513");
  EXPECT_FALSE(Is("frmTray", "Visible"));
  Do("tray.mouse", "515");
  EXPECT_TRUE(Is("frmTray", "Visible"));
}

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

TEST_F(SettingsAcceptTest, Autostart) {
  Do("reg.set", "HKLM", kRunPath, "Quillbox", "elsewhere");
  Open();
  Ok();
  EXPECT_EQ(MachineValue(kRunPath, "Quillbox"), Folder() + "/quillbox");
  EXPECT_EQ(MachineValue(kProgramPath, "AutoRun"), "Yes");
  Open();
  Click("Check5");
  Ok();
  EXPECT_EQ(MachineValue(kRunPath, "Quillbox"), "(missing)");
  EXPECT_EQ(MachineValue(kProgramPath, "AutoRun"), "No");
  Open();
  EXPECT_FALSE(Checked("Check5"));
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
  Do("tab", "frmSettings.SSTab1", "0");
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
    Open();
    for (const std::string box : {"Check1", "Check4", "Check7", "Check5", "Option1"}) Click(box);
    Do("tab", "frmSettings.SSTab1", "1");
    Enter("Text1", "3");
    Do("tab", "frmSettings.SSTab1", "2");
    Click("Option4");
    Do("choose", "frmSettings.Combo1", "0");
    Click("Command4");
    Click("Option4");
    way.size() == 3 ? Do(way[0], way[1], way[2]) : Do(way[0], way[1]);
    EXPECT_FALSE(Is("frmSettings", "Loaded")) << way[0];
    EXPECT_TRUE(Everything() == before) << way[0];
  }
  EXPECT_EQ(Writes("ClipData.qbx"), writes);
  EXPECT_EQ(Rows("List2").size(), 5U);
  Open();
  EXPECT_TRUE(Checked("Option3")) << "the clicks that count have not changed";
}

TEST_F(SettingsAcceptTest, DefaultAsksAndSetsTheControlsOnly) {
  Do("reg.set", "HKCU", Section("MessageEntry"), "WavePath", "/sounds/gong.wav");
  Open();
  for (const SettingsSwitch& box : kSwitches) Click(box.name);
  Click("Option1");
  Click("Check5");
  Do("tab", "frmSettings.SSTab1", "2");
  Click("Option4");
  Click("Check8");
  Do("choose", "frmSettings.Combo1", "0");
  for (const SettingsField& field : kFields) {
    Do("tab", "frmSettings.SSTab1", std::to_string(field.page));
    Enter(field.name, "9");
  }
  Do("answer", "7", "6");
  Click("Command4");
  EXPECT_EQ(Boxes(), (std::vector<Box>{{"36", "Reset everything to default values?",
                                        "This will reset all settings to their default values.\r\nDo you "
                                        "want to continue?"}}));
  EXPECT_TRUE(Checked("Option1"));
  EXPECT_EQ(Text("Text7"), "9");
  const Stored before = Everything();
  Click("Command4");
  for (const SettingsSwitch& box : kSwitches) EXPECT_EQ(Checked(box.name), box.byDefault) << box.name;
  EXPECT_FALSE(Is("frmSettings.Check7", "Enabled"));
  for (const std::string box : {"Check5", "Option2", "Option3"}) EXPECT_TRUE(Checked(box)) << box;
  EXPECT_FALSE(Checked("Check8"));
  EXPECT_EQ(In("Combo1", "ListIndex"), "2");
  EXPECT_EQ(Text("Text8"), "/sounds/gong.wav");
  for (const SettingsField& field : kFields) {
    EXPECT_EQ(Text(field.name), std::to_string(field.byDefault));
    EXPECT_EQ(In(field.bar, "Value"), std::to_string(-field.byDefault));
  }
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
  Do("tab", "frmSettings.SSTab1", "0");
  Ok();
  EXPECT_EQ(Rows("List2"), Values(clips.begin(), clips.begin() + 4));
  EXPECT_EQ(Rows("List1").size(), 3U);
  EXPECT_EQ(Rows("List3").size(), 5U);
  EXPECT_EQ(Get("frmTray.mnuPadSub3", "Visible"), "1");
  EXPECT_EQ(Get("frmTray.mnuPadSub4", "Visible"), "0") << "the menu is built from the lists as they are now";
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
  for (const std::string file : {"PadData.qbx", "ClipData.qbx", "ToDoData.qbx"}) {
    SCOPED_TRACE(file);
    FillLists(6);
    Obstruct(file);
    Copy("newer than the file " + file);
    AddPad("newer " + file, "than the file " + file);
    AddToDo("newer than the file " + file);
    Boxes();
    const Values pad = Rows("List1");
    const Values padTexts = Slots("PadEntries");
    const Values clip = Rows("List2");
    const Values toDo = Rows("List3");
    const std::string clipboard = Clipboard();
    Open();
    Ok();
    const auto boxes = Boxes();
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].title, "Quillbox Message");
    EXPECT_EQ(Rows("List1"), pad);
    EXPECT_EQ(Slots("PadEntries"), padTexts);
    EXPECT_EQ(Rows("List2"), clip);
    EXPECT_EQ(Rows("List3"), toDo);
    EXPECT_EQ(Clipboard(), clipboard);
    Clear(file);
    Restart();
    EXPECT_EQ(Rows("List1"), pad);
    EXPECT_EQ(Rows("List2"), clip);
    EXPECT_EQ(Rows("List3"), toDo);
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

TEST_F(SettingsAcceptTest, TakesTheTopmostStateWhileItIsOpen) {
  Do("closebox", "frmTray");
  Do("tray.mouse", "516");
  Do("pick", "mnuSettings");
  EXPECT_FALSE(Is("frmTray", "Topmost"));
  EXPECT_TRUE(Is("frmTray", "Visible")) << "the window comes up behind the dialog";
  EXPECT_TRUE(Is("frmSettings", "Visible"));
  Do("closebox", "frmSettings");
  EXPECT_TRUE(Is("frmTray", "Topmost"));
  Set("AlwaysOnTop", "2");
  Do("closebox", "frmTray");
  Do("tray.mouse", "516");
  Do("pick", "mnuSettings");
  EXPECT_FALSE(Is("frmTray", "Visible"));
  EXPECT_EQ(Do("end"), Values{"0"}) << "an open dialog goes with the program";
  EXPECT_FALSE(Is("frmSettings", "Loaded"));
}

}  // namespace
}  // namespace quillbox

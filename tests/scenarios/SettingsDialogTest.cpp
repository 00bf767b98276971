// The settings dialog: what it shows, and how its controls follow each other.
#include "scenarios/SettingsScenario.h"

namespace quillbox {
namespace {

class SettingsDialogTest : public SettingsScenario {};

TEST_F(SettingsDialogTest, AFreshSystemShowsTheDefaults) {
  Open();
  EXPECT_EQ(Get("frmSettings", "Caption"), "Quillbox Settings");
  ExpectDefaults();
  for (const SettingsField& field : kFields) {
    EXPECT_EQ(In(field.bar, "Min"), std::to_string(-field.upper));
    EXPECT_EQ(In(field.bar, "Max"), std::to_string(-field.lower));
    const std::string range = "(Range: " + std::to_string(field.lower) + " to " +
                              std::to_string(field.upper) + ", Default = " + std::to_string(field.byDefault) +
                              ")";
    const std::string tip = In(field.label, "ToolTipText");
    EXPECT_EQ(tip.substr(tip.find("\r\n\r\n") + 4), range) << field.label;
    EXPECT_EQ(In(field.name, "ToolTipText"), "");
  }
  EXPECT_EQ(In("Option1", "ToolTipText"), "(Default = NO)");
  EXPECT_EQ(In("Check3", "ToolTipText"),
            "The Pad entry you copy to clipboard will be moved to the top of the Pad-List (good if you want "
            "to have the most recently used entries on top)\r\n\r\n(Default = YES)");
}

TEST_F(SettingsDialogTest, ShowsWhatIsStored) {
  const std::vector<Values> stored{
      {"Insert", "1"},          {"LastSort", "1"},        {"Minimize", "1"},        {"Warning", "1"},
      {"AutoRefresh", "1"},     {"AutoRefresh2", "1"},    {"AskDelKey", "2"},       {"MenuEntriesLen", "7"},
      {"MenuEntriesLen2", "8"}, {"PermEntriesMax", "9"},  {"ClipEntriesMax", "11"}, {"ToDoEntriesMax", "2"},
      {"MenuEntriesMax", "1"},  {"MenuEntriesMax2", "2"}, {"TrayTipMode", "0"}};
  for (const Values& pair : stored) Set(pair[0], pair[1]);
  Do("reg.set", "HKCU", Section("MessageEntry"), "PlayWave", "1");
  Do("reg.set", "HKCU", Section("MessageEntry"), "WavePath", "/sounds/gong.wav");
  Do("reg.set", "HKLM", kProgramPath, "AutoRun", "No");
  // What the program goes by counts, not what has been stored behind its back.
  Set("ClicksToShow", "2");
  Open();
  for (const std::string box : {"Check1", "Check2", "Check3", "Check4", "Check7", "Check8", "Option1"})
    EXPECT_TRUE(Checked(box)) << box;
  for (const std::string box : {"Check5", "Check6", "Option2", "Option4"}) EXPECT_FALSE(Checked(box)) << box;
  EXPECT_TRUE(Is("frmSettings.Check7", "Enabled"));
  EXPECT_EQ(In("Text8", "Text"), "/sounds/gong.wav");
  EXPECT_EQ(In("Text8", "BackColor"), "window");
  const std::vector<Values> shown{{"Text1", "12"}, {"Text2", "10"}, {"Text3", "3"}, {"Text4", "1"},
                                  {"Text5", "2"},  {"Text6", "8"},  {"Text7", "7"}};
  for (const Values& pair : shown) {
    EXPECT_EQ(Text(pair[0]), pair[1]);
    EXPECT_EQ(Bar(pair[0]), "-" + pair[1]);
  }
  EXPECT_EQ(In("Combo1", "ListIndex"), "0");

  // A second call only brings it up again.
  Click("Check1");
  Do("click", "frmTray.Command47");
  EXPECT_FALSE(Checked("Check1"));
  Click("Command2");

  // AutoRefresh2 says nothing without AutoRefresh. Numbers out of range, or none, are brought into it.
  Set("AutoRefresh", "2");
  Set("ClipEntriesMax", "300");
  Set("ToDoEntriesMax", "-7");
  Set("MenuEntriesMax2", "11");
  Set("MenuEntriesLen", "x");
  Set("TrayTipMode", "9");
  Open();
  EXPECT_FALSE(Checked("Check7"));
  EXPECT_FALSE(Is("frmSettings.Check7", "Enabled"));
  EXPECT_EQ(Text("Text1"), "100");
  EXPECT_EQ(Text("Text3"), "3");
  EXPECT_EQ(Text("Text5"), "10");
  EXPECT_EQ(Text("Text7"), "3");
  EXPECT_EQ(In("Combo1", "ListIndex"), "2");
}

TEST_F(SettingsDialogTest, NumbersAreCorrectedWhenTheyAreLeftAndByOk) {
  for (const SettingsField& field : kFields) {
    const std::vector<std::pair<std::string, int>> cases{
        {std::to_string(field.upper + 1), field.upper},
        {"1E999", field.upper},
        {std::to_string(field.lower - 1), field.lower},
        {"abc", field.lower},
        {"", field.lower},
        {"7 dwarfs", 7},
    };
    for (const auto& [entered, number] : cases) {
      SCOPED_TRACE(field.name + " " + entered);
      Open(field.page);
      const std::string before = In(field.bar, "Value");
      Enter(field.name, entered);
      EXPECT_EQ(Text(field.name), entered) << "stands while it is typed";
      EXPECT_EQ(In(field.bar, "Value"), number == 7 ? "-7" : before) << "the bar waits for a number in range";
      Leave(field.name);
      EXPECT_EQ(Text(field.name), std::to_string(number));
      EXPECT_EQ(In(field.bar, "Value"), std::to_string(-number));
      Do("scroll", "frmSettings." + field.bar, "-6");
      EXPECT_EQ(Text(field.name), "6");
      Enter(field.name, entered);
      Ok();
      EXPECT_EQ(Intern(field.key), std::to_string(number - field.lessInStore));
    }
  }
}

TEST_F(SettingsDialogTest, ListAndMenuNumbersFollowEachOther) {
  Open(1);
  const std::vector<Values> pairs{{"Text1", "Text4"}, {"Text2", "Text5"}};
  for (const Values& pair : pairs) {
    const std::string& list = pair[0];
    const std::string& menu = pair[1];
    Enter(menu, "5");
    Enter(list, "4");
    EXPECT_EQ(Text(menu), "4") << "the menu shows no more than the list holds";
    Enter(list, "2");
    EXPECT_EQ(Text(menu), "4") << "too small a list isn't meant";
    Enter(list, "5");
    Enter(menu, "8");
    EXPECT_EQ(Text(list), "8") << "the list holds what the menu shows";
    EXPECT_EQ(Bar(list), "-8");
    Enter(list, "5");
    Enter(menu, "12");
    EXPECT_EQ(Text(list), "5") << "waits for the correction";
    Leave(menu);
    EXPECT_EQ(Text(menu), "10");
    EXPECT_EQ(Text(list), "10");
    // The collapsed entries go their own way.
    Enter(menu + "a", "25");
    EXPECT_EQ(Text(list), "10");
    Do("scroll", "frmSettings.VScroll" + list.substr(4), "-3");
    EXPECT_EQ(Text(menu), "3");
    EXPECT_EQ(Text(menu + "a"), "25");
  }
}

TEST_F(SettingsDialogTest, CheckBoxesThatLeadOthers) {
  Open();
  Click("Check4");
  EXPECT_TRUE(Is("frmSettings.Check7", "Enabled"));
  Click("Check7");
  Click("Check4");
  EXPECT_FALSE(Checked("Check7"));
  EXPECT_TRUE(Fails("click", "frmSettings.Check7"));
  OpenTab(2);
  Click("Check8");
  EXPECT_EQ(In("Text8", "BackColor"), "window");
  Enter("Text8", "/sounds/bell.wav");
  Click("Check8");
  EXPECT_EQ(In("Text8", "BackColor"), "menu");
  EXPECT_TRUE(Fails("settext", "frmSettings.Text8", "x"));
  Ok();
  EXPECT_EQ(Intern("AutoRefresh"), "2");
  EXPECT_EQ(Intern("AutoRefresh2"), "2");
  EXPECT_EQ(Setting("MessageEntry", "PlayWave"), "2");
  EXPECT_EQ(Setting("MessageEntry", "WavePath"), "/sounds/bell.wav") << "kept while it isn't played";
  Open();
  EXPECT_EQ(Text("Text8"), "/sounds/bell.wav");
}

}  // namespace
}  // namespace quillbox

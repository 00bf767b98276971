#pragma once

#include <string>
#include <vector>

#include "scenarios/RecordScenario.h"

namespace quillbox {

inline const std::string kRunPath = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run";
inline const std::string kProgramPath = "Software\\Norvane\\Quillbox";

// A number field, its bar and label, with bounds, key, default and page.
struct SettingsField {
  std::string name;
  std::string bar;
  std::string label;
  int page;
  int lower;
  int upper;
  std::string key;
  int byDefault;
  int lessInStore;  // the stored number is that much less
};

inline const std::vector<SettingsField> kFields{
    {"Text1", "VScroll1", "Label7", 1, 3, 100, "ClipEntriesMax", 50, 1},
    {"Text2", "VScroll2", "Label4", 1, 3, 100, "PermEntriesMax", 50, 1},
    {"Text3", "VScroll3", "Label3", 1, 3, 100, "ToDoEntriesMax", 50, 1},
    {"Text4", "VScroll4", "Label1", 1, 0, 10, "MenuEntriesMax", 5, 0},
    {"Text4a", "VScroll4a", "Label2", 1, 0, 25, "MenuEntriesSubMax", 0, 0},
    {"Text5", "VScroll5", "Label10", 1, 0, 10, "MenuEntriesMax2", 0, 0},
    {"Text5a", "VScroll5a", "Label9", 1, 0, 25, "MenuEntriesSubMax2", 10, 0},
    {"Text7", "VScroll7", "Label8", 2, 3, 100, "MenuEntriesLen", 30, 0},
    {"Text6", "VScroll6", "Label6", 2, 3, 100, "MenuEntriesLen2", 30, 0},
};

// A check box of the first page, its key, and what the Default button makes of it.
struct SettingsSwitch {
  std::string name;
  std::string key;
  bool byDefault;
};

inline const std::vector<SettingsSwitch> kSwitches{
    {"Check1", "Warning", false},     {"Check2", "Minimize", false},     {"Check3", "LastSort", false},
    {"Check4", "AutoRefresh", false}, {"Check7", "AutoRefresh2", false}, {"Check6", "AskDelKey", true},
};

// The settings dialog in a person's hands. Controls are those of the dialog.
class SettingsScenario : public RecordScenario {
 protected:
  SettingsScenario() {
    Do("start");
    Show();
  }

  void Open(int page = 0) {
    Do("click", "frmTray.Command47");
    OpenTab(page);
  }
  void OpenTab(int page) { Do("tab", "frmSettings.SSTab1", std::to_string(page)); }
  void Click(const std::string& control) { Do("click", "frmSettings." + control); }
  void Ok() {
    Click("Command1");
    EXPECT_FALSE(Is("frmSettings", "Loaded"));
  }
  // On the page that is in front: types over the whole field, without leaving it.
  void Enter(const std::string& field, const std::string& text) {
    Do("settext", "frmSettings." + field, text);
  }
  void Leave(const std::string& field) {
    Do("focus", "frmSettings." + field);
    Do("focus", "frmSettings.Command2");
  }
  std::string In(const std::string& control, const std::string& property) {
    return Get("frmSettings." + control, property);
  }
  std::string Text(const std::string& field) { return In(field, "Text"); }
  std::string Bar(const std::string& field) { return In("VScroll" + field.substr(4), "Value"); }
  bool Checked(const std::string& box) { return In(box, "Value") == "1"; }
  std::string Intern(const std::string& key) { return Setting("Intern", key); }
  void ExpectDefaults() {
    for (const SettingsSwitch& box : kSwitches) EXPECT_EQ(Checked(box.name), box.byDefault) << box.name;
    for (const std::string box : {"Check5", "Option2", "Option3"}) EXPECT_TRUE(Checked(box)) << box;
    EXPECT_FALSE(Is("frmSettings.Check7", "Enabled"));
    EXPECT_FALSE(Checked("Check8"));
    EXPECT_FALSE(Is("frmSettings.Text8", "Enabled"));
    EXPECT_EQ(In("Text8", "BackColor"), "menu");
    EXPECT_EQ(In("Combo1", "ListIndex"), "2");
    for (const SettingsField& field : kFields) {
      EXPECT_EQ(Text(field.name), std::to_string(field.byDefault)) << field.name;
      EXPECT_EQ(In(field.bar, "Value"), std::to_string(-field.byDefault)) << field.bar;
    }
  }
  void FillLists(int count) {
    for (int i = 0; i < count; ++i) {
      Copy("clip " + std::to_string(i));
      AddPad("pad " + std::to_string(i), "text " + std::to_string(i));
      AddToDo("task " + std::to_string(i));
    }
  }
};

}  // namespace quillbox

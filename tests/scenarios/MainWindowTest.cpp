// The main window: its place, its messages, and what stands on its pages at the start.
#include "scenarios/RecordScenario.h"

namespace quillbox {
namespace {

class MainWindowOnItsOwn : public RecordScenario {
 protected:
  void Open() {
    Do("start");
    Show();
  }
  std::pair<int, int> Place() {
    return {std::stoi(Get("frmTray", "Left")), std::stoi(Get("frmTray", "Top"))};
  }
};

TEST_F(MainWindowOnItsOwn, CaptionsAndTips) {
  Open();
  ExpectControls({
      {"Command000", "Clear Board ", "Clear the current clipboard entry", "1"},
      {"Command001", "Add to Pad", "Add the selected Clip-List entry to the Pad-List", "1"},
      {"Command003", "Delete Entry", "Delete the selected Clip-List entry", "1"},
      {"Command101", "Add", "Add the current text to the Pad-List", "0"},
      {"Command102", "Insert", "Copy the current text to the clipboard", "0"},
      {"Command103", "Get", "Get text from the clipboard (New entry)", "1"},
      {"Command104", "Clear", "Clear the Pad text field (New entry)", "1"},
      {"Command105", "Delete", "Delete the selected Pad-List entry", "1"},
      {"Command45", "Activate Countdown", "Activate the Countdown", "1"},
      {"Command46", "Reset Countdown to starting value", "Reset the Timer to the last starting value", "0"},
      {"Command1", "Clear", "Clear message text field", "1"},
      {"Command42", "Get text from clipboard", "Use the current clipboard entry as message text", "1"},
      {"Command43", "Copy text to clipboard", "Use the current message text as clipboard entry", "1"},
      {"Option1", "Countdown mode", "", "1"},
      {"Option2", "Alarm clock mode", "", "1"},
      {"Command2", "Add Entry", "Add the text above to the ToDo-List", "0"},
      {"Command3", "Delete Entry", "Delete the selected ToDo-List entry", "1"},
      {"Command4", "New Entry", "Clear the text field above for a new entry", "1"},
      {"Command5", "Refresh", "Delete all entries marked \"completed\"", "1"},
  });
  EXPECT_EQ(Of("UpDown1", "ToolTipText"), "Move ToDo-Entries up or down");
  for (const std::string arrows : {"UpDown1", "UpDown2"}) EXPECT_FALSE(Is("frmTray." + arrows, "Enabled"));
  for (const std::string label : {"Label7", "Label12", "Label13"})
    EXPECT_FALSE(Is("frmTray." + label, "Visible"));
  for (const std::string list : {"List1", "List2", "List3"}) EXPECT_EQ(Of(list, "ListIndex"), "-1");
}

TEST_F(MainWindowOnItsOwn, ComesBackWhereTheButtonLeftIt) {
  Do("screen", "1000", "800");
  Open();
  const auto [left, top] = Place();
  EXPECT_GT(left, 0) << "centred at first";
  Do("move", "frmTray", "3000", "1500");
  const int writes = Writes("PadData.qbx") + Writes("ClipData.qbx");
  Click("Command6");
  EXPECT_EQ(Writes("PadData.qbx") + Writes("ClipData.qbx"), writes + 2);
  EXPECT_TRUE(Hidden());
  EXPECT_EQ(Setting("Intern", "Left"), "3000");
  EXPECT_EQ(Setting("Intern", "Top"), "1500");
  Show();
  EXPECT_EQ(Place(), std::pair(3000, 1500));
  Do("move", "frmTray", "15", "30");
  Do("closebox", "frmTray");
  Show();
  EXPECT_EQ(Place(), std::pair(3000, 1500)) << "a drag and the close box leave it at the old place";
  Do("closebox", "frmTray");
  Do("reg.delete", "HKCU", Intern(), "Left");
  Set("Top", "-150 or so");
  Show();
  Do("closebox", "frmTray");
  EXPECT_EQ(Place(), std::pair(left, -150));
}

TEST_F(MainWindowOnItsOwn, AMessageBringsATopmostWindowUpAndNoOther) {
  for (const bool topmost : {true, false}) {
    Set("Warning", "1");
    Set("AlwaysOnTop", topmost ? "1" : "2");
    Do("start");
    Copy(std::string(32001, topmost ? 'x' : 'y'));
    EXPECT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Is("frmTray", "Visible"), topmost);
    EXPECT_EQ(Is("frmTray", "Topmost"), topmost);
    Do("end");
  }
}

TEST_F(MainWindowOnItsOwn, AMessageThatOutlivesTheProgramBringsNothingUp) {
  Set("Warning", "1");
  Do("start");
  console.World().messageBoxes.WhileOpen = [this] { Do("end"); };
  Copy(std::string(32001, 'x'));
  EXPECT_EQ(Boxes().size(), 1u);
  EXPECT_EQ(Do("running"), Values{"0"});
  EXPECT_FALSE(Is("frmTray", "Visible"));
}

TEST_F(MainWindowOnItsOwn, DialogsTakeTheTopmostStateWhileTheyAreLoaded) {
  Open();
  for (const auto& [item, form] :
       {std::pair{"mnuInfo", "frmAbout"}, {"mnuSettings", "frmSettings"}, {"mnuStartHelp", "frmStartHelp"}}) {
    Do("pick", item);
    Do("pick", item);
    EXPECT_FALSE(Is("frmTray", "Topmost")) << form;
    EXPECT_TRUE(Is(form, "Visible"));
    Do("closebox", form);
    EXPECT_TRUE(Is("frmTray", "Topmost")) << form;
    EXPECT_FALSE(Is(form, "Loaded"));
  }
}

TEST_F(MainWindowOnItsOwn, Tips) {
  Open();
  Copy("<r>a & b");
  Do("select", "frmTray.List2", "0");
  EXPECT_EQ(Do("tip", "frmTray.Label7", "500").at(4), " <r>a & b");
  Do("settip", "frmTray.Command6", "<C>one\r\n\r\nthree");
  EXPECT_EQ(Do("tip", "frmTray.Command6", "500"),
            (Values{std::to_string(500 - (4 + 5 * 7) / 2), std::to_string(4 + 5 * 7),
                    std::to_string(4 + 3 * 14), "1", "one\n\nthree"}));
  Do("settip", "frmTray.Command6", "a&&b &c <c>");
  EXPECT_EQ(Do("tip", "frmTray.Command6", "500").at(4), "a&b c <c>");
  // 320 pixels hold 45 characters of 7.
  Do("settip", "frmTray.Command6", "twelve chars twelve chars twelve chars twelve chars");
  EXPECT_EQ(Do("tip", "frmTray.Command6", "500").at(4),
            "twelve chars twelve chars twelve chars twelve\nchars");
}

}  // namespace
}  // namespace quillbox

#include "scenarios/Scenario.h"

namespace quillbox {
namespace {

class MainWindowOnItsOwn : public Scenario {
 protected:
  void Open() {
    Do("start");
    Show();
  }
  std::pair<int, int> Place() {
    return {std::stoi(Get("frmTray", "Left")), std::stoi(Get("frmTray", "Top"))};
  }
  std::string Status(const std::string& label) {
    return Get("frmTray." + label, "Visible") == "1" ? Get("frmTray." + label, "Caption") : "(hidden)";
  }
};

TEST_F(MainWindowOnItsOwn, ComesBackWhereTheButtonLeftIt) {
  Do("screen", "1000", "800");
  Open();
  const auto [left, top] = Place();
  EXPECT_GT(left, 0) << "centred at first";
  Do("move", "frmTray", "3000", "1500");
  Do("click", "frmTray.Command6");
  EXPECT_EQ(Get("frmTray", "Visible"), "0");
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
  Do("reg.set", "HKCU", Intern(), "Top", "-150 or so");
  Show();
  Do("closebox", "frmTray");
  EXPECT_EQ(Place(), std::pair(left, -150));
}

TEST_F(MainWindowOnItsOwn, TheButtonSavesAll) {
  Set("AutoRefresh2", "1");
  Open();
  AddToDo("open");
  AddToDo("done");
  Do("check", "frmTray.List3", Rows("List3").at(0) == "done" ? "0" : "1", "1");
  const int pad = Writes("PadData.qbx");
  const int clip = Writes("ClipData.qbx");
  Do("click", "frmTray.Command6");
  EXPECT_EQ(Writes("PadData.qbx"), pad + 1);
  EXPECT_GT(Writes("ClipData.qbx"), clip);
  EXPECT_EQ(Rows("List3"), Values{"open"});
  EXPECT_EQ(Get("frmTray.Text4", "Text"), "");
  EXPECT_NE(Get("frmTray.Label12", "Caption"), "Refreshed");
}

TEST_F(MainWindowOnItsOwn, AMessageBringsATopmostWindowUp) {
  Set("Warning", "1");
  Do("start");
  Copy(std::string(32001, 'x'));
  EXPECT_EQ(Do("boxes").size(), 3u);
  EXPECT_EQ(Get("frmTray", "Visible"), "1");
  EXPECT_EQ(Get("frmTray", "Topmost"), "1");
}

TEST_F(MainWindowOnItsOwn, AMessageThatOutlivesTheProgramBringsNothingUp) {
  Set("Warning", "1");
  Do("start");
  console.World().messageBoxes.WhileOpen = [this] { Do("end"); };
  Copy(std::string(32001, 'x'));
  EXPECT_EQ(Do("boxes").size(), 3u);
  EXPECT_EQ(Do("running"), Values{"0"});
  EXPECT_EQ(Get("frmTray", "Visible"), "0");
}

TEST_F(MainWindowOnItsOwn, AMessageLeavesAWindowThatIsNotTopmostAlone) {
  Set("Warning", "1");
  Set("AlwaysOnTop", "2");
  Do("start");
  Copy(std::string(32001, 'x'));
  EXPECT_EQ(Do("boxes").size(), 3u);
  EXPECT_EQ(Get("frmTray", "Visible"), "0");
  EXPECT_EQ(Get("frmTray", "Topmost"), "0");
}

TEST_F(MainWindowOnItsOwn, DialogsTakeTheTopmostStateWhileTheyAreLoaded) {
  Open();
  for (const auto& [item, form] :
       {std::pair{"mnuInfo", "frmAbout"}, {"mnuSettings", "frmSettings"}, {"mnuStartHelp", "frmStartHelp"}}) {
    Do("pick", item);
    Do("pick", item);
    EXPECT_EQ(Get("frmTray", "Topmost"), "0") << form;
    EXPECT_EQ(Get(form, "Visible"), "1");
    Do("closebox", form);
    EXPECT_EQ(Get("frmTray", "Topmost"), "1") << form;
    EXPECT_EQ(Get(form, "Loaded"), "0");
  }
}

TEST_F(MainWindowOnItsOwn, StatusWordsStandUntilTheNextFocus) {
  Open();
  Copy("text");
  Do("click", "frmTray.Text0");
  EXPECT_EQ(Status("Label7"), "L: 4");
  Do("click", "frmTray.Command000");
  EXPECT_EQ(Status("Label7"), "Cleared") << "although the focus has moved on to the field";
  EXPECT_EQ(Get("frmTray.Text2", "Text"), "");
  EXPECT_EQ(Get("frmTray.Line4", "Visible"), "1");
  Do("focus", "frmTray.List2");
  EXPECT_EQ(Status("Label7"), "(hidden)") << "the list has no current row";
  EXPECT_EQ(Get("frmTray.Line5", "Visible"), "0");
  Do("click", "frmTray.Text0");
  EXPECT_EQ(Status("Label7"), "L: 0");
  OpenPage(1);
  EXPECT_EQ(Status("Label7"), "(hidden)");
}

TEST_F(MainWindowOnItsOwn, StatusOfRows) {
  Do("start");
  for (const char* text : {"ccc", "bb", "a"}) Copy(text);
  Show();
  Do("select", "frmTray.List2", "1");
  EXPECT_EQ(Status("Label7"), "L: 2");
  EXPECT_EQ(Get("frmTray.Command001", "Enabled"), "1");
  Do("select", "frmTray.List2", "0", "2");
  EXPECT_EQ(Status("Label7"), "L: 4") << "the sum of the selected rows";
  EXPECT_EQ(Get("frmTray.Command001", "Enabled"), "0");
  Do("select", "frmTray.List2");
  EXPECT_EQ(Status("Label7"), "(hidden)");
}

// The tip of a status label, and how tips are drawn.
TEST_F(MainWindowOnItsOwn, Tips) {
  Open();
  Copy("<r>a & b");
  Do("select", "frmTray.List2", "0");
  EXPECT_EQ(Get("frmTray.Label7", "ToolTipText"), " <r>a && b");
  EXPECT_EQ(Do("tip", "frmTray.Label7", "500").at(4), " <r>a & b");
  Do("settip", "frmTray.Command6", "<C>one\r\n\r\nthree");
  EXPECT_EQ(Do("tip", "frmTray.Command6", "500"),
            (Values{std::to_string(500 - (4 + 5 * 7) / 2), std::to_string(4 + 5 * 7),
                    std::to_string(4 + 3 * 14), "1", "one\n\nthree"}));
  EXPECT_EQ(Do("tip", "frmTray.Command6", "3").at(0), "0");
  EXPECT_EQ(Do("tip", "frmTray.Command6", "1023").at(0), std::to_string(1024 - 39));
  // 320 pixels hold 45 characters of 7.
  const std::string words = "twelve chars twelve chars twelve chars twelve chars";
  Do("settip", "frmTray.Command6", words);
  EXPECT_EQ(Do("tip", "frmTray.Command6", "500").at(4),
            "twelve chars twelve chars twelve chars twelve\nchars");
  Do("settip", "frmTray.Command6", "a&&b &c <c>");
  EXPECT_EQ(Do("tip", "frmTray.Command6", "500").at(4), "a&b c <c>");
}

}  // namespace
}  // namespace quillbox

// What the items of the tray menu do.
#include "scenarios/RecordScenario.h"

namespace quillbox {
namespace {

class TrayCommandsTest : public RecordScenario {
 protected:
  TrayCommandsTest() { Do("start"); }

  void FillPad(const Values& names) {
    Show();
    for (std::size_t i = names.size(); i > 0; --i) AddPad(names[i - 1], "text of " + names[i - 1]);
    Do("closebox", "frmTray");
  }
};

TEST_F(TrayCommandsTest, AClipItemUsesItsRow) {
  CopyAll({"A", "B", "C", "D"});
  Do("pick", "mnuClip3");
  EXPECT_EQ(Do("menu"), Values{}) << "a pick closes the menu";
  EXPECT_EQ(Rows("List2"), (Values{"C", "A", "B", "D"}));
  EXPECT_EQ(Of("List2", "ListIndex"), "0");
  EXPECT_EQ(DataFile("ClipData.qbx"), File("CLIP", {{"C"}, {"A"}, {"B"}, {"D"}}));
  Set("Insert", "1");
  Do("pick", "mnuClipSub3");
  EXPECT_EQ(Rows("List2"), (Values{"B", "A", "C", "D"}));
  EXPECT_EQ(Slots("ClipEntries"), (Values{"B", "A", "C", "D"}));
  EXPECT_FALSE(Is("frmTray", "Visible"));
}

TEST_F(TrayCommandsTest, ItemsWithoutARowAndTheFirstOneDoNothing) {
  CopyAll({"A", "B", "C"});
  Show();
  Do("select", "frmTray.List2", "1", "2");
  const Values writes = Do("clip.writes");
  for (const std::string item :
       {"mnuClip1", "mnuClipSub1", "mnuClip4", "mnuClip10", "mnuClipSub25", "mnuPad1", "mnuPadSub25"}) {
    Do("pick", item);
  }
  EXPECT_EQ(Rows("List2"), (Values{"A", "B", "C"}));
  EXPECT_EQ(Marks("List2"), "011");
  EXPECT_EQ(Do("clip.writes"), writes);
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(TrayCommandsTest, EveryItemStandsForItsOwnRow) {
  Values names;
  for (char c = 'a'; c <= 'z'; ++c) names.push_back(std::string(1, c));
  FillPad(names);
  CopyAll(names);
  const auto check = [&](const std::string& items, int first, int last, bool pad) {
    for (int k = first; k <= last; ++k) {
      const std::string expected = pad ? "text of " + names[static_cast<std::size_t>(k - 1)]
                                       : Rows("List2")[static_cast<std::size_t>(k - 1)];
      Do("pick", items + std::to_string(k));
      EXPECT_EQ(Clipboard(), expected) << items << k;
    }
  };
  check("mnuClip", 2, 10, false);
  check("mnuClipSub", 2, 25, false);
  check("mnuPad", 1, 10, true);
  check("mnuPadSub", 1, 25, true);
}

TEST_F(TrayCommandsTest, APadItemCopiesOrTypes) {
  FillPad({"a", "b", "c"});
  Do("pick", "mnuPadSub2");
  EXPECT_EQ(Clipboard(), "text of b");
  EXPECT_EQ(Of("Text3", "Text"), "b");
  EXPECT_EQ(Marks("List1"), "010");
  EXPECT_FALSE(Is("frmTray", "Visible"));
  Show();
  OpenPage(1);
  Click("Command104");
  AddPad("s", "{SCRIPT}abc");
  Do("closebox", "frmTray");
  Do("pick", "mnuPad1");
  EXPECT_EQ(Do("keys"), (Values{"abc"}));
  EXPECT_EQ(Clipboard(), "text of b");
  EXPECT_TRUE(Hidden());
  Set("LastSort", "1");
  Do("pick", "mnuPad4");
  EXPECT_EQ(Rows("List1"), (Values{"c", "s", "a", "b"}));
  Set("Minimize", "1");
  Show();
  Do("pick", "mnuPad1");
  EXPECT_TRUE(Hidden());
}

TEST_F(TrayCommandsTest, ClearEmptiesTheClipboardAndLeavesABlankRow) {
  Do("pick", "mnuClear");
  EXPECT_EQ(Rows("List2"), (Values{""}));
  CopyAll({"A", "B"});
  Advance(2000);
  Set("Minimize", "1");
  Show();
  Do("pick", "mnuClear");
  EXPECT_EQ(Clipboard(), "");
  EXPECT_EQ(Rows("List2"), (Values{"", "B"}));
  EXPECT_EQ(Slots("ClipEntries"), (Values{"", "B"}));
  EXPECT_EQ(Of("Text0", "Text"), "");
  EXPECT_EQ(Status("Label7", "Line4", "Line5"), "Cleared");
  EXPECT_EQ(DataFile("ClipData.qbx"), File("CLIP", {{""}, {"B"}}));
  EXPECT_TRUE(Hidden());
  EXPECT_EQ(Do("tray"), (Values{"1", "window", "Quillbox"}));
  Tick();
  EXPECT_EQ(Do("tray")[1], "Picture1");
  Advance(5 * 250);
  EXPECT_EQ(Do("tray")[1], "window");
  Copy("C");
  EXPECT_EQ(Rows("List2"), (Values{"C", "B"}));
}

TEST_F(TrayCommandsTest, ShowAndOnTopBringTheWindowUp) {
  ASSERT_FALSE(Is("frmTray", "Visible"));
  Do("pick", "mnuShow");
  EXPECT_TRUE(Is("frmTray", "Visible"));
  for (const bool topmost : {false, true}) {
    Do("closebox", "frmTray");
    Do("pick", "mnuOnTop");
    EXPECT_EQ(Is("frmTray.mnuOnTop", "Checked"), topmost);
    EXPECT_EQ(Is("frmTray", "Topmost"), topmost);
    EXPECT_EQ(Setting("Intern", "AlwaysOnTop"), topmost ? "1" : "2");
    EXPECT_TRUE(Is("frmTray", "Visible"));
  }
}

}  // namespace
}  // namespace quillbox

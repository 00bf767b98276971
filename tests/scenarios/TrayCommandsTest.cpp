// What the items of the tray menu do.
#include "scenarios/Scenario.h"

namespace quillbox {
namespace {

class TrayCommandsTest : public Scenario {
 protected:
  TrayCommandsTest() { Do("start"); }

  // The list from the top, as copies make it.
  void Fill(const Values& texts) {
    for (std::size_t i = texts.size(); i > 0; --i) Copy(texts[i - 1]);
  }
  void FillPad(const Values& names) {
    Show();
    for (std::size_t i = names.size(); i > 0; --i) AddPad(names[i - 1], "text of " + names[i - 1]);
    Do("closebox", "frmTray");
  }
  bool Shown() { return Get("frmTray", "Visible") == "1"; }
  std::string Topmost() { return Get("frmTray", "Topmost"); }
};

TEST_F(TrayCommandsTest, ShowShowsTheWindow) {
  EXPECT_FALSE(Shown());
  Do("pick", "mnuShow");
  EXPECT_TRUE(Shown());
}

TEST_F(TrayCommandsTest, AClipItemUsesItsRow) {
  for (const std::string item : {"mnuClip3", "mnuClipSub3"}) {
    Fill({"A", "B", "C", "D"});
    Do("pick", item);
    EXPECT_EQ(Rows("List2"), (Values{"C", "A", "B", "D"}));
    EXPECT_EQ(Slots("ClipEntries"), (Values{"C", "A", "B", "D"}));
    EXPECT_EQ(Clipboard(), "C");
    EXPECT_EQ(DataFile("ClipData.qbx"), File("CLIP", {{"C"}, {"A"}, {"B"}, {"D"}}));
    Set("Insert", "1");
    Do("pick", item);
    EXPECT_EQ(Rows("List2"), (Values{"B", "A", "C", "D"}));
    Set("Insert", "2");
  }
  EXPECT_FALSE(Shown());
}

TEST_F(TrayCommandsTest, ItemsWithoutARowAndTheFirstOneDoNothing) {
  Fill({"A", "B", "C"});
  Show();
  OpenPage(0);
  Do("select", "frmTray.List2", "1", "2");
  const Values writes = Do("clip.writes");
  for (const std::string item :
       {"mnuClip1", "mnuClipSub1", "mnuClip4", "mnuClip10", "mnuClipSub25", "mnuPad1", "mnuPadSub25"}) {
    Do("pick", item);
  }
  EXPECT_EQ(Rows("List2"), (Values{"A", "B", "C"}));
  EXPECT_EQ(Do("get", "frmTray.List2", "Selected"), (Values{"0", "1", "1"}));
  EXPECT_EQ(Do("clip.writes"), writes);
  EXPECT_EQ(Do("boxes"), Values{});
}

TEST_F(TrayCommandsTest, EveryItemStandsForItsOwnRow) {
  Values names;
  for (char c = 'a'; c <= 'z'; ++c) names.push_back(std::string(1, c));
  FillPad(names);
  Fill(names);
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
  EXPECT_EQ(Get("frmTray.Text3", "Text"), "b");
  EXPECT_EQ(Do("get", "frmTray.List1", "Selected"), (Values{"0", "1", "0"}));
  EXPECT_FALSE(Shown());
  Show();
  OpenPage(1);
  Do("click", "frmTray.Command104");
  AddPad("s", "{SCRIPT}abc");
  Do("closebox", "frmTray");
  Do("pick", "mnuPad1");
  EXPECT_EQ(Do("keys"), (Values{"abc"}));
  EXPECT_EQ(Clipboard(), "text of b");
  EXPECT_FALSE(Shown());
  Set("LastSort", "1");
  Do("pick", "mnuPad4");
  EXPECT_EQ(Rows("List1"), (Values{"c", "s", "a", "b"}));
  Set("Minimize", "1");
  Show();
  Do("pick", "mnuPad1");
  EXPECT_FALSE(Shown());
}

TEST_F(TrayCommandsTest, ClearEmptiesTheClipboardAndLeavesABlankRow) {
  Fill({"A", "B"});
  Advance(2000);
  Set("Minimize", "1");
  Show();
  Do("pick", "mnuClear");
  EXPECT_EQ(Clipboard(), "");
  EXPECT_EQ(Rows("List2"), (Values{"", "B"}));
  EXPECT_EQ(Slots("ClipEntries"), (Values{"", "B"}));
  EXPECT_EQ(Get("frmTray.Text0", "Text"), "");
  EXPECT_EQ(Get("frmTray.Label7", "Caption"), "Cleared");
  EXPECT_EQ(Get("frmTray.Label7", "Visible"), "1");
  EXPECT_EQ(DataFile("ClipData.qbx"), File("CLIP", {{""}, {"B"}}));
  EXPECT_FALSE(Shown());
  EXPECT_EQ(Do("tray"), (Values{"1", "window", "Quillbox"}));
  Tick();
  EXPECT_EQ(Do("tray")[1], "Picture1");
  Advance(5 * 250);
  EXPECT_EQ(Do("tray")[1], "window");
  Copy("C");
  EXPECT_EQ(Rows("List2"), (Values{"C", "B"}));
}

TEST_F(TrayCommandsTest, ClearOnAnEmptyListMakesTheBlankRow) {
  Do("pick", "mnuClear");
  EXPECT_EQ(Rows("List2"), (Values{""}));
  Fill({"A"});
  Do("clip.lock", "1");
  Do("pick", "mnuClear");
  Do("clip.lock", "0");
  Tick();
  EXPECT_EQ(Rows("List2"), (Values{"A"})) << "a clipboard that can't be opened stays as it is";
}

TEST_F(TrayCommandsTest, OnTopIsToggledAndTheWindowComesUp) {
  ASSERT_EQ(Topmost(), "1");
  Do("pick", "mnuOnTop");
  EXPECT_EQ(Get("frmTray.mnuOnTop", "Checked"), "0");
  EXPECT_EQ(Topmost(), "0");
  EXPECT_EQ(Setting("Intern", "AlwaysOnTop"), "2");
  EXPECT_TRUE(Shown());
  Do("closebox", "frmTray");
  Do("pick", "mnuOnTop");
  EXPECT_EQ(Get("frmTray.mnuOnTop", "Checked"), "1");
  EXPECT_EQ(Topmost(), "1");
  EXPECT_EQ(Setting("Intern", "AlwaysOnTop"), "1");
  EXPECT_TRUE(Shown());
}

}  // namespace
}  // namespace quillbox

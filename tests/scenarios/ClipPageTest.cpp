// The Clip page, as a person works with it.
#include "scenarios/Scenario.h"

namespace quillbox {
namespace {

const std::string kList = "frmTray.List2";
const std::string kField = "frmTray.Text0";
const std::string kDeleteAll =
    "You haven't selected any entries to delete. Do you want to delete ALL entries?";

class ClipPageTest : public Scenario {
 protected:
  ClipPageTest() {
    Do("start");
    Show();
  }

  // The list from the top, as copies make it.
  void Fill(const Values& texts) {
    for (std::size_t i = texts.size(); i > 0; --i) Copy(texts[i - 1]);
  }
  // The rows; each has its text in its slot, and no slot behind them is used.
  Values List() {
    const Values rows = Rows("List2");
    Values slots = Do("slots", "ClipEntries");
    for (std::size_t i = rows.size(); i < slots.size(); ++i) EXPECT_EQ(slots[i], "") << "slot " << i;
    slots.resize(rows.size());
    EXPECT_EQ(rows, slots);
    return rows;
  }
  std::string Stored() { return DataFile("ClipData.qbx"); }
  static std::string FileOf(const Values& texts) {
    std::vector<Values> entries;
    for (const std::string& text : texts) entries.push_back({text});
    return File("CLIP", entries);
  }
  std::string Status() {
    const std::string visible = Get("frmTray.Label7", "Visible");
    EXPECT_EQ(Get("frmTray.Line4", "Visible"), visible);
    EXPECT_EQ(Get("frmTray.Line5", "Visible"), visible);
    return visible == "1" ? Get("frmTray.Label7", "Caption") : "hidden";
  }
  std::string Tip() { return Get("frmTray.Label7", "ToolTipText"); }
  std::string Current() { return Get(kList, "ListIndex"); }
  bool Polling() { return Get("frmTray.Timer1", "Enabled") == "1"; }
};

TEST_F(ClipPageTest, StartState) {
  const std::vector<Values> buttons{
      {"frmTray.Command000", "Clear Board ", "Clear the current clipboard entry"},
      {"frmTray.Command001", "Add to Pad", "Add the selected Clip-List entry to the Pad-List"},
      {"frmTray.Command003", "Delete Entry", "Delete the selected Clip-List entry"}};
  for (const Values& button : buttons) {
    EXPECT_EQ(Get(button[0], "Caption"), button[1]);
    EXPECT_EQ(Get(button[0], "ToolTipText"), button[2]);
    EXPECT_EQ(Get(button[0], "Enabled"), "1");
  }
  EXPECT_EQ(Current(), "-1");
  EXPECT_EQ(Status(), "hidden");
}

TEST_F(ClipPageTest, APickedEntrySlidesInOrChangesPlaces) {
  struct Case {
    std::string insert;
    Values before;
    int row;
    Values after;
  };
  const Case cases[] = {
      {"2", {"A", "B", "C", "D", "E"}, 3, {"D", "A", "B", "C", "E"}},
      {"1", {"A", "B", "C", "D", "E"}, 3, {"D", "B", "C", "A", "E"}},
      {"1", {"A", "B"}, 1, {"B", "A"}},
      {"2", {"A", "B", "C"}, 0, {"A", "B", "C"}},
      {"1", {"A", "B", "C"}, 0, {"A", "B", "C"}},
      {"", {"A", "B", "C"}, 2, {"C", "A", "B"}},
      {"0", {"A", "B", "C"}, 2, {"C", "B", "A"}},
      {"1", {"", "B", "C"}, 2, {"C", "B"}},
      {"2", {"", "B", "C"}, 2, {"C", "B"}},
  };
  for (const Case& c : cases) {
    Set("Insert", c.insert);
    Do("answer", "6");
    Do("select", kList, "");
    Do("click", "frmTray.Command003");
    Fill(c.before);
    if (c.before[0].empty()) {
      Do("clip.clear");
      Tick();
    }
    ASSERT_EQ(List(), c.before);
    const int writes = std::stoi(Do("clip.writes")[0]);
    Do("dblrow", kList, std::to_string(c.row));
    EXPECT_EQ(List(), c.after) << "Insert " << c.insert << ", row " << c.row;
    EXPECT_GT(std::stoi(Do("clip.writes")[0]), writes) << "the text is put on the clipboard again";
    EXPECT_EQ(Clipboard(), c.after[0]);
    EXPECT_EQ(Get(kField, "Text"), c.after[0]);
    EXPECT_EQ(Stored(), FileOf(c.after));
    EXPECT_EQ(Current(), "0");
    EXPECT_EQ(Do("get", kList, "Selected")[0], "1");
    Advance(1000);
    EXPECT_EQ(List(), c.after);
  }
}

TEST_F(ClipPageTest, NothingIsPickedFromOneRowOrWithoutACurrentOne) {
  Copy("A");
  const Values writes = Do("clip.writes");
  Do("dblrow", kList, "0");
  EXPECT_EQ(Do("clip.writes"), writes);
  Fill({"C", "B"});
  Do("select", kList, "");
  const Values writesBefore = Do("clip.writes");
  Do("dblclick", kList);
  EXPECT_EQ(Do("clip.writes"), writesBefore);
  EXPECT_EQ(List(), (Values{"C", "B", "A"}));
  EXPECT_TRUE(Polling());
}

TEST_F(ClipPageTest, KeysThatUseAnEntry) {
  Fill({"A", "B", "C"});
  Do("select", kList, "2");
  Do("key", kList, "Enter");
  EXPECT_EQ(List(), (Values{"C", "A", "B"}));
  EXPECT_EQ(Current(), "0");
  Do("select", kList, "1");
  Do("key", kList, "Home", "ctrl");
  EXPECT_EQ(List(), (Values{"A", "C", "B"}));
  Do("select", kList, "1");
  Do("key", kList, "Up", "ctrl");
  EXPECT_EQ(List(), (Values{"C", "A", "B"}));
  Do("select", kList, "1");
  Do("key", kList, "Up", "ctrl", "shift");
  Do("select", kList, "1");
  Do("key", kList, "Home");
  EXPECT_EQ(List(), (Values{"C", "A", "B"})) << "other modifiers only move in the list";
}

TEST_F(ClipPageTest, EnterGoingUpSelectsTheTopRow) {
  Do("key", kList, "Enter");
  EXPECT_EQ(List(), Values{}) << "in an empty list there is none";
  Fill({"A", "B", "C"});
  Do("select", kList, "");
  Do("key", kList, "Enter");
  EXPECT_EQ(Current(), "0");
  EXPECT_EQ(Do("get", kList, "Selected"), (Values{"1", "0", "0"}));
}

TEST_F(ClipPageTest, MinimizesIfSetAfterEachUse) {
  Set("Minimize", "1");
  const auto hidden = [&] {
    const bool is = Get("frmTray", "Visible") == "0" && Get("frmTray", "WindowState") == "0";
    Show();
    return is;
  };
  Fill({"A", "B"});
  Do("dblrow", kList, "1");
  EXPECT_TRUE(hidden());
  Do("click", "frmTray.Command000");
  EXPECT_TRUE(hidden());
  Do("select", kList, "1");
  Do("click", "frmTray.Command003");
  EXPECT_FALSE(hidden()) << "a row below the top has nothing to do with the clipboard";
  Do("select", kList, "0");
  Do("click", "frmTray.Command003");
  EXPECT_TRUE(hidden());
}

TEST_F(ClipPageTest, DeletesTheSelectedRows) {
  Fill({"A", "B", "C", "D", "E"});
  Do("select", kList, "1", "3", "4");
  Do("click", "frmTray.Command003");
  EXPECT_EQ(List(), (Values{"A", "C"}));
  EXPECT_EQ(Status(), "Deleted");
  EXPECT_EQ(Clipboard(), "A");
  EXPECT_EQ(Stored(), FileOf({"A", "C"}));
  Do("select", kList, "0", "1");
  Do("click", "frmTray.Command003");
  EXPECT_EQ(List(), (Values{""})) << "the top row stays as a blank one";
  EXPECT_EQ(Clipboard(), "");
  EXPECT_EQ(Get(kField, "Text"), "");
  EXPECT_EQ(Current(), "-1");
  Fill({"F", "G", "H"});
  EXPECT_EQ(List(), (Values{"F", "G", "H"})) << "the next text takes the blank row's place";
  Do("select", kList, "0", "2");
  Do("click", "frmTray.Command003");
  EXPECT_EQ(List(), (Values{"", "G"}));
}

TEST_F(ClipPageTest, DeletesAllWhenAskedTo) {
  Fill({"A", "B"});
  Do("boxes");
  Do("answer", "7", "6");
  Do("click", "frmTray.Command003");
  EXPECT_EQ(List(), (Values{"A", "B"}));
  EXPECT_EQ(Do("boxes"), (Values{"68", "No entries selected", kDeleteAll}));
  Do("click", "frmTray.Command003");
  EXPECT_EQ(List(), Values{});
  EXPECT_EQ(Clipboard(), "");
  EXPECT_EQ(Get(kField, "Text"), "");
  EXPECT_EQ(Status(), "Deleted");
  EXPECT_EQ(Stored(), FileOf({}));
  EXPECT_TRUE(Polling());
  Do("click", "frmTray.Command000");
  EXPECT_EQ(List(), (Values{""}));
  EXPECT_EQ(Status(), "Cleared");
}

TEST_F(ClipPageTest, TheDeleteKeyAsksIfSet) {
  Fill({"A", "B", "C"});
  Do("select", kList, "1");
  Do("boxes");
  Do("answer", "7");
  Do("key", kList, "Delete");
  EXPECT_EQ(List(), (Values{"A", "B", "C"}));
  EXPECT_EQ(Do("boxes"),
            (Values{"36", "Delete selected entries?", "Do you really want to delete the selected entries?"}));
  Do("key", kList, "Delete");
  EXPECT_EQ(List(), (Values{"A", "C"}));
  Set("AskDelKey", "2");
  Do("boxes");
  Do("select", kList, "1");
  Do("key", kList, "Delete");
  EXPECT_EQ(List(), (Values{"A"}));
  EXPECT_EQ(Do("boxes"), Values{});
}

TEST_F(ClipPageTest, ClearBoardLeavesABlankRowAndItsStatusWord) {
  Fill({"A", "B"});
  Advance(2000);
  Do("click", "frmTray.Command000");
  EXPECT_EQ(Clipboard(), "");
  EXPECT_EQ(List(), (Values{"", "B"}));
  EXPECT_EQ(Stored(), FileOf({"", "B"}));
  EXPECT_EQ(Status(), "Cleared") << "the focus that has moved to the field leaves the word";
  EXPECT_EQ(Get("frmTray.Text2", "Text"), "");
  EXPECT_EQ(Do("tray")[1], "window");
  Tick();
  EXPECT_EQ(Do("tray")[1], "Picture1") << "the blink begins on the next tick";
  Do("focus", "frmTray.Command6");
  EXPECT_EQ(Status(), "hidden");
  Do("focus", kField);
  EXPECT_EQ(Status(), "L: 0");
}

TEST_F(ClipPageTest, AddsToThePadList) {
  Do("boxes");
  Do("click", "frmTray.Command001");
  EXPECT_EQ(Do("boxes"), (Values{"64", "No entries selected", "You haven't selected any entries to add."}));
  AddPad("Mail", "B");
  AddPad("Other", "X");
  OpenPage(0);
  Fill({"A", "B"});
  Do("clip.clear");
  Tick();
  Do("select", kList, "0");
  Do("click", "frmTray.Command001");
  EXPECT_EQ(Do("boxes"), (Values{"64", "No Data", "The entry you've selected doesn't contain any data."}));
  EXPECT_EQ(Rows("List1"), (Values{"Other", "Mail"}));

  Do("select", kList, "1");
  Do("click", "frmTray.Command001");
  EXPECT_EQ(Status(), "Added");
  EXPECT_EQ(Rows("List1"), (Values{"[No Name]", "Other", "Mail"}));
  Do("select", kList, "2");
  Do("click", "frmTray.Command001");
  EXPECT_EQ(Rows("List1"), (Values{"[No Name]", "[No Name]", "Other"})) << "a known text moves, nameless";
  EXPECT_EQ(Slots("PadEntries"), (Values{"B", "A", "X"}));
  EXPECT_EQ(DataFile("PadData.qbx"), File("PAD", {{"[No Name]", "B"}, {"[No Name]", "A"}, {"Other", "X"}}));
}

TEST_F(ClipPageTest, AFullPadListAsksForItsOldestEntry) {
  Set("PermEntriesMax", "1");
  AddPad("one", "1");
  AddPad("two", "2");
  OpenPage(0);
  Fill({"A", "B", "2"});
  Do("select", kList, "0");
  Do("boxes");
  Do("answer", "7", "6");
  const int writes = Writes("PadData.qbx");
  Do("click", "frmTray.Command001");
  EXPECT_EQ(Slots("PadEntries"), (Values{"2", "1"}));
  EXPECT_NE(Status(), "Added");
  EXPECT_EQ(Writes("PadData.qbx"), writes + 1);
  Do("click", "frmTray.Command001");
  EXPECT_EQ(Slots("PadEntries"), (Values{"A", "2"}));
  EXPECT_EQ(Status(), "Added");
  const Values boxes = Do("boxes");
  ASSERT_EQ(boxes.size(), 6u);
  EXPECT_EQ(boxes[0], "68");
  EXPECT_EQ(boxes[1], "Too many Pad-List entries");
  EXPECT_EQ(boxes[2],
            "Sorry, but you have reached the maximum number of Pad-List entries. You have to delete some "
            "entries or increase the maximum number of entries in the \"Settings...\" menu before you "
            "proceed.\n\rWould you like to delete the oldest entry now?");
  Do("select", kList, "2");
  Do("click", "frmTray.Command001");
  EXPECT_EQ(Slots("PadEntries"), (Values{"2", "A"}));
  EXPECT_EQ(Do("boxes"), Values{}) << "a known text needs no room";
}

TEST_F(ClipPageTest, AddingEmptiesThePadPagesText) {
  Copy("A");
  OpenPage(1);
  Do("settext", "frmTray.Text101", "half written");
  OpenPage(0);
  Do("select", kList, "0");
  Do("click", "frmTray.Command001");
  EXPECT_EQ(Get("frmTray.Text101", "Text"), "");
  EXPECT_EQ(Get("frmTray.Command101", "Enabled"), "0");
}

TEST_F(ClipPageTest, TheStatusShowsTheSelectionsLength) {
  Fill({"A", "BB", "CCC"});
  Do("select", kList, "1");
  EXPECT_EQ(Status(), "L: 2");
  Do("select", kList, "1", "2");
  EXPECT_EQ(Status(), "L: 5");
  EXPECT_EQ(Get("frmTray.Command001", "Enabled"), "0") << "one entry at a time goes to the Pad-List";
  EXPECT_EQ(Tip(), "CCC");
  Do("select", kList, "0");
  EXPECT_EQ(Get("frmTray.Command001", "Enabled"), "1");
  Do("select", kList, "2", "2");
  EXPECT_EQ(Status(), "L: 3") << "the current row's, with none selected";
  Do("select", kList, "");
  EXPECT_EQ(Status(), "hidden");
  EXPECT_EQ(Current(), "-1");
  Do("select", kList, "1");
  Do("focus", "frmTray.Command6");
  EXPECT_EQ(Status(), "hidden");
  Do("focus", kList);
  EXPECT_EQ(Status(), "L: 2");
}

TEST_F(ClipPageTest, TheStatusTipShowsTheCurrentEntry) {
  const std::string x255(255, 'x');
  const std::vector<Values> cases{
      {"plain", "plain"},
      {"a&b&&", "a&&b&&&&"},
      {"<c>x", " <c>x"},
      {"<C>x", " <C>x"},
      {"<R>", " <R>"},
      {"<cx", "<cx"},
      {x255, x255},
      {x255 + "x", std::string(250, 'x') + "\r\n..."},
      {std::string(300, '&'), std::string(250, '&') + "\r\n..."},
      {"<c>" + std::string(252, 'x'), " <c>" + std::string(246, 'x') + "\r\n..."},
      {std::string(249, 'x') + "\U0001F600" + x255, std::string(249, 'x') + "\r\n..."},
  };
  for (const Values& c : cases) {
    Copy(c[0]);
    Do("select", kList, "");
    Do("select", kList, "0");
    EXPECT_EQ(Tip(), c[1]);
    EXPECT_EQ(Rows("List2")[0], c[0]);
  }
  Do("type", kField, "!");
  EXPECT_EQ(Tip(), "") << "no row is current";
}

TEST_F(ClipPageTest, TheFieldsTextIsTheClipboard) {
  Fill({"A", "B", "C"});
  Do("select", kList, "1");
  Do("focus", kField);
  EXPECT_EQ(Status(), "L: 1");
  EXPECT_EQ(Current(), "-1");
  const int writes = Writes("ClipData.qbx");
  Do("type", kField, "B");
  EXPECT_EQ(Clipboard(), "AB");
  EXPECT_EQ(List(), (Values{"AB", "B", "C"}));
  EXPECT_EQ(Status(), "L: 2");
  Advance(500);
  EXPECT_EQ(List(), (Values{"AB", "B", "C"}));
  EXPECT_EQ(Writes("ClipData.qbx"), writes);
  Do("settext", kField, "C");
  Do("focus", "frmTray.Command6");
  EXPECT_EQ(List(), (Values{"C", "B"})) << "no second copy stays below";
  EXPECT_EQ(Stored(), FileOf({"C", "B"}));
  EXPECT_EQ(Status(), "hidden");
}

TEST_F(ClipPageTest, TheFieldsFocusRenewsTheClipboardAndMakesARow) {
  EXPECT_EQ(List(), Values{});
  Do("focus", kField);
  EXPECT_EQ(List(), (Values{""}));
  Do("type", kField, "new");
  EXPECT_EQ(List(), (Values{"new"}));
  EXPECT_EQ(Clipboard(), "new");
}

TEST_F(ClipPageTest, AStartWithRepeatedTextsLosesOneAtAFocus) {
  Do("end");
  WriteData("ClipData.qbx", FileOf({"A", "B", "A", "C", "A"}));
  Do("clip.set", "A");
  Do("start");
  Show();
  Do("focus", kField);
  EXPECT_EQ(List(), (Values{"A", "B", "A", "C"})) << "the last of several";
  Do("focus", "frmTray.Command6");
  EXPECT_EQ(List(), (Values{"A", "B", "C"}));
}

TEST_F(ClipPageTest, ADroppedTextIsLikeACopiedOne) {
  Fill({"A", "B"});
  Do("select", kList, "1");
  Do("dropother", kList);
  EXPECT_EQ(Clipboard(), "A");
  EXPECT_EQ(Current(), "-1");
  Do("drop", kList, "dropped");
  EXPECT_EQ(Clipboard(), "dropped");
  Tick();
  EXPECT_EQ(List(), (Values{"dropped", "A", "B"}));
  Do("select", kList, "0", "2");
  EXPECT_EQ(Do("drag", kList), (Values{"dropped\r\nB"}));
}

TEST_F(ClipPageTest, AClipboardThatCannotBeOpenedLosesNothing) {
  Fill({"A", "B", "C"});
  for (const std::string insert : {"1", "2"}) {
    Set("Insert", insert);
    Do("clip.lock", "1");
    Do("dblrow", kList, "2");
    EXPECT_EQ(List(), (Values{"A", "B", "C"}));
    Do("select", kList, "0", "1");
    Do("click", "frmTray.Command003");
    Do("click", "frmTray.Command000");
    Do("drop", kList, "X");
    EXPECT_EQ(List(), (Values{"A", "B", "C"}));
    EXPECT_TRUE(Polling());
    Do("clip.lock", "0");
    Tick();
    EXPECT_EQ(List(), (Values{"A", "B", "C"}));
  }
}

}  // namespace
}  // namespace quillbox

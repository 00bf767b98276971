// The Clip page, as a person works with it.
#include "scenarios/ListPage.h"

namespace quillbox {
namespace {

const std::string kField = "frmTray.Text0";
const Box kNothingToAdd{"64", "No entries selected", "You haven't selected any entries to add."};
const Box kNoData{"64", "No Data", "The entry you've selected doesn't contain any data."};

class ClipPageTest : public ListPageScenario {
 protected:
  ClipPageTest() : ListPageScenario(kClipPage) {}

  static std::string FileOf(const Values& texts) {
    std::vector<Values> entries;
    for (const std::string& text : texts) entries.push_back({text});
    return File("CLIP", entries);
  }
  std::string Rest() override {
    EXPECT_TRUE(AllRows().empty() || AllRows()[0] == Field());
    return " | " + Clipboard();
  }
  void ClearFromOutside() {
    Do("clip.clear");
    Tick();
  }
};

TEST_F(ClipPageTest, WhatOtherProgramsCopy) {
  ExpectSteps({
      {"", "clip.set A; advance 250", "A | hidden | A"},
      {"BA", "clip.set b; advance 250", "bBA | hidden | b"},
      {"DCBA", "clip.set B; advance 250", "BDCA | hidden | B"},
      {"CBA", "clip.set D; advance 250", "DCB | hidden | D", "ClipEntriesMax 2"},
      {"CBA", "clip.clear; advance 250", "_CB | hidden | ", "ClipEntriesMax 2"},
      {"CBA", "clip.clear; advance 250; clip.set D; advance 250", "DCB | hidden | D", "ClipEntriesMax 2"},
      {"A", "clip.picture; advance 250; clip.picture; advance 1000", "_A | hidden | "},
      {"A", "clip.picture; advance 250; clip.set B; advance 250", "BA | hidden | B"},
      // A clipboard that can't be opened isn't an empty one.
      {"A", "clip.set B; clip.lock 1; advance 1000; clip.lock 0", "A | hidden | B"},
      {"A", "clip.set B; clip.lock 1; advance 1000; clip.lock 0; advance 250", "BA | hidden | B"},
  });
}

TEST_F(ClipPageTest, APickedEntrySlidesInOrChangesPlaces) {
  ExpectSteps({
      {"ABCDE", "dblrow List2 3", "[D*]ABCE | L: 1 | D", "Insert 2"},
      {"ABCDE", "dblrow List2 3", "[D*]BCAE | L: 1 | D", "Insert 1"},
      {"AB", "dblrow List2 1", "[B*]A | L: 1 | B", "Insert 1"},
      {"ABC", "dblrow List2 0", "[A*]BC | L: 1 | A", "Insert 2"},
      {"ABC", "dblrow List2 0", "[A*]BC | L: 1 | A", "Insert 1"},
      {"ABC", "dblrow List2 2", "[C*]AB | L: 1 | C"},
      {"ABC", "dblrow List2 2", "[C*]BA | L: 1 | C", "Insert 0"},
      {"BC", "clip.clear; advance 250; dblrow List2 2", "[C*]B | L: 1 | C", "Insert 1"},
      {"BC", "clip.clear; advance 250; dblrow List2 2", "[C*]B | L: 1 | C", "Insert 2"},
      {"ABC", "dblrow List2 2; advance 1000", "[C*]AB | L: 1 | C"},
      // The keys that use an entry, and some that don't.
      {"ABC", "select List2 1; key List2 Enter", "[B*]AC | L: 1 | B"},
      {"ABC", "select List2 1; key List2 Home ctrl", "[B*]AC | L: 1 | B"},
      {"ABC", "select List2 1; key List2 Up ctrl", "[B*]AC | L: 1 | B"},
      {"ABC", "select List2 1; key List2 Home", "[A*]BC | L: 1 | A"},
      {"ABC", "select List2 1; key List2 Up ctrl shift; key List2 End ctrl; key List2 Home",
       "[A*]BC | L: 1 | A"},
      // Without a current row, or another one, nothing is picked. Enter going up selects the top row.
      {"ABC", "select List2; dblclick List2", "ABC | hidden | A"},
      {"ABC", "select List2; key List2 Enter", "[A*]BC | L: 1 | A"},
      {"A", "clip.set B; dblrow List2 0", "[A*] | L: 1 | B"},
      {"", "key List2 Enter", " | hidden | "},
  });
  Fill("AB");
  const int writes = std::stoi(Do("clip.writes").at(0));
  Do("dblrow", ListName(), "0");
  EXPECT_GT(std::stoi(Do("clip.writes").at(0)), writes) << "the top text is put on the clipboard again";
  Do("dblrow", ListName(), "1");
  EXPECT_EQ(Stored(), FileOf({"B", "A"}));
  EXPECT_TRUE(Is("frmTray.Timer1", "Enabled"));
}

TEST_F(ClipPageTest, UsesDeletesAndMinimizesIfSet) {
  ExpectSteps({
      {"AB", "dblrow List2 1", "(hidden) [B*]A | L: 1 | B", "Minimize 1"},
      {"AB", "click Command000", "(hidden) _B | Cleared | ", "Minimize 1"},
      // A row below the top has nothing to do with the clipboard.
      {"AB", "select List2 1; click Command003", "A | Deleted | A", "Minimize 1"},
      {"AB", "select List2 0; click Command003", "(hidden) _B | Deleted | ", "Minimize 1"},
      {"ABCDE", "select List2 1 3 4; click Command003", "AC | Deleted | A"},
      {"ABC", "select List2 0 1; click Command003", "_C | Deleted | "},
      {"AB", "select List2 0; click Command003; clip.set D; advance 250", "DB | L: 1 | D"},
      {"ABC", "select List2 1 2", "AB*[C*] | L: 2 | A"},
      {"ABC", "select List2 2 2", "AB[C] | L: 1 | A"},
  });
  Fill("BA");
  Select(1);
  Click("Command003");
  EXPECT_EQ(Stored(), FileOf({"B", "C"}));
}

TEST_F(ClipPageTest, ClearBoardLeavesABlankRowAndItsStatusWord) {
  Fill("AB");
  Advance(2000);
  Click("Command000");
  EXPECT_EQ(Page(), "_B | Cleared | ") << "the focus that has moved to the field leaves the word";
  EXPECT_EQ(Stored(), FileOf({"", "B"}));
  EXPECT_EQ(Of("Text2", "Text"), "");
  EXPECT_EQ(Do("tray")[1], "window");
  Tick();
  EXPECT_EQ(Do("tray")[1], "Picture1") << "the blink begins on the next tick";
  Focus("Command6");
  EXPECT_EQ(Status(), "hidden");
  Do("focus", kField);
  EXPECT_EQ(Status(), "L: 0");
  Empty();
  Click("Command000");
  EXPECT_EQ(Page(), "_ | Cleared | ") << "an empty list gets its blank row";
}

TEST_F(ClipPageTest, AddsToThePadList) {
  Click("Command001");
  EXPECT_EQ(Boxes(), std::vector<Box>{kNothingToAdd});
  AddPad("Mail", "B");
  AddPad("Other", "X");
  Enter("Text101", "half written");
  OpenPage(0);
  Fill("AB");
  ClearFromOutside();
  Select(0);
  Click("Command001");
  EXPECT_EQ(Boxes(), std::vector<Box>{kNoData});
  EXPECT_EQ(Rows("List1"), (Values{"Other", "Mail"}));
  EXPECT_EQ(Of("Text101", "Text"), "half written");

  Select(1);
  Click("Command001");
  EXPECT_EQ(Status(), "Added");
  EXPECT_EQ(Rows("List1"), (Values{"[No Name]", "Other", "Mail"}));
  EXPECT_EQ(Of("Text101", "Text"), "");
  EXPECT_FALSE(Is("frmTray.Command101", "Enabled"));
  Select(2);
  Click("Command001");
  EXPECT_EQ(Slots("PadEntries"), (Values{"B", "A", "X"})) << "a known text moves, nameless";
  EXPECT_EQ(DataFile("PadData.qbx"), File("PAD", {{"[No Name]", "B"}, {"[No Name]", "A"}, {"Other", "X"}}));
}

TEST_F(ClipPageTest, AFullPadListAsksForItsOldestEntry) {
  Set("PermEntriesMax", "1");
  AddPad("one", "1");
  AddPad("two", "2");
  OpenPage(0);
  Fill("AB2");
  Select(0);
  Do("answer", "7", "6");
  const int writes = Writes("PadData.qbx");
  Click("Command001");
  EXPECT_EQ(Slots("PadEntries"), (Values{"2", "1"}));
  EXPECT_NE(Status(), "Added");
  EXPECT_EQ(Writes("PadData.qbx"), writes + 1);
  Click("Command001");
  EXPECT_EQ(Slots("PadEntries"), (Values{"A", "2"}));
  EXPECT_EQ(Status(), "Added");
  EXPECT_EQ(Boxes(), (std::vector<Box>{kPadIsFull, kPadIsFull}));
  Select(2);
  Click("Command001");
  EXPECT_EQ(Slots("PadEntries"), (Values{"2", "A"}));
  EXPECT_TRUE(Boxes().empty()) << "a known text needs no room";
}

TEST_F(ClipPageTest, SeveralRowsCannotBeAddedToThePadList) {
  for (const std::string text : {"CCC", "BB", "A"}) Copy(text);
  Select(1, 2);
  EXPECT_EQ(Page(), "ABB*[CCC*] | L: 5 | A");
  EXPECT_EQ(Tip(), "CCC");
  EXPECT_FALSE(Is("frmTray.Command001", "Enabled"));
  Select(0);
  EXPECT_TRUE(Is("frmTray.Command001", "Enabled"));
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
    SelectNone();
    Select(0);
    EXPECT_EQ(Tip(), c[1]);
    EXPECT_EQ(AllRows()[0], c[0]);
  }
  Do("type", kField, "!");
  EXPECT_EQ(Tip(), "") << "no row is current";
}

// Every keystroke goes to the clipboard, to row 0 and to the menu, none to the file.
TEST_F(ClipPageTest, TheFieldsTextIsTheClipboard) {
  Do("focus", kField);
  EXPECT_EQ(Page(), "_ | L: 0 | ") << "the focus makes a row";
  Fill("ABC");
  Select(1);
  Do("focus", kField);
  EXPECT_EQ(Page(), "ABC | L: 1 | A");
  const int saves = Saves();
  Do("type", kField, "B");
  EXPECT_EQ(Clipboard(), "AB");
  EXPECT_EQ(Of("mnuClip1", "Caption"), "&1:  AB");
  Advance(500);
  EXPECT_EQ(AllRows(), (Values{"AB", "B", "C"}));
  EXPECT_EQ(Status(), "L: 2");
  EXPECT_EQ(Saves(), saves);
  Enter("Text0", "C");
  Focus("Command6");
  EXPECT_EQ(Page(), "CB | hidden | C") << "no second copy stays below";
  EXPECT_EQ(Stored(), FileOf({"C", "B"}));
}

TEST_F(ClipPageTest, AStartWithRepeatedTextsLosesOneAtAFocus) {
  Do("end");
  WriteData("ClipData.qbx", FileOf({"A", "B", "A", "C", "A"}));
  Do("clip.set", "A");
  StartOnPage();
  Do("focus", kField);
  EXPECT_EQ(List(), "ABAC") << "the last of several";
  Focus("Command6");
  EXPECT_EQ(List(), "ABC");
}

TEST_F(ClipPageTest, ADroppedTextIsLikeACopiedOne) {
  ExpectSteps({
      {"AB", "select List2 1; dropother List2", "AB | hidden | A"},
      {"AB", "select List2 1; drop List2 C; advance 250", "CAB | hidden | C"},
  });
  Do("drop", kField, "X");
  EXPECT_EQ(Clipboard(), "XC") << "into the field's text";
  Enter("Text0", "C");
  Select(0, 2);
  EXPECT_EQ(Do("drag", ListName()), (Values{"C\r\nB"}));
}

TEST_F(ClipPageTest, AClipboardThatCannotBeOpenedLosesNothing) {
  Fill("ABC");
  for (const std::string insert : {"1", "2"}) {
    Set("Insert", insert);
    Do("clip.lock", "1");
    Do("dblrow", ListName(), "2");
    EXPECT_EQ(List(), "ABC");
    Select(0, 1);
    Click("Command003");
    Click("Command000");
    Do("pick", "mnuClear");
    Do("drop", ListName(), "X");
    EXPECT_EQ(List(), "ABC");
    EXPECT_TRUE(Is("frmTray.Timer1", "Enabled"));
    Do("clip.lock", "0");
    Tick();
    EXPECT_EQ(List(), "ABC");
  }
}

}  // namespace
}  // namespace quillbox

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
  int ClipboardWrites() { return std::stoi(Do("clip.writes").at(0)); }
  void ClearFromOutside() {
    Do("clip.clear");
    Tick();
  }
};

TEST_F(ClipPageTest, APickedEntrySlidesInOrChangesPlaces) {
  struct Case {
    std::string insert;
    std::string before;
    int row;
    std::string page;
    bool blankTop = false;
  };
  const Case cases[] = {
      {"2", "ABCDE", 3, "[D*]ABCE | L: 1"}, {"1", "ABCDE", 3, "[D*]BCAE | L: 1"},
      {"1", "AB", 1, "[B*]A | L: 1"},       {"2", "ABC", 0, "[A*]BC | L: 1"},
      {"1", "ABC", 0, "[A*]BC | L: 1"},     {"", "ABC", 2, "[C*]AB | L: 1"},
      {"0", "ABC", 2, "[C*]BA | L: 1"},     {"1", "BC", 2, "[C*]B | L: 1", true},
      {"2", "BC", 2, "[C*]B | L: 1", true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE("Insert " + c.insert + ", row " + std::to_string(c.row) + " of " + c.before);
    Set("Insert", c.insert);
    Empty();
    Fill(c.before);
    if (c.blankTop) ClearFromOutside();
    ASSERT_EQ(List(), c.before);
    const int writes = ClipboardWrites();
    Do("dblrow", ListName(), std::to_string(c.row));
    EXPECT_EQ(Page(), c.page);
    EXPECT_GT(ClipboardWrites(), writes) << "the text is put on the clipboard again";
    const Values after = AllRows();
    EXPECT_EQ(Clipboard(), after[0]);
    EXPECT_EQ(Field(), after[0]);
    EXPECT_EQ(Stored(), FileOf(after));
    Advance(1000);
    EXPECT_EQ(AllRows(), after);
  }
}

TEST_F(ClipPageTest, NothingIsPickedFromOneRowOrWithoutACurrentOne) {
  Key("Enter");
  EXPECT_EQ(List(), "");
  Copy("A");
  const int writes = ClipboardWrites();
  Do("dblrow", ListName(), "0");
  EXPECT_EQ(ClipboardWrites(), writes);
  Fill("CB");
  SelectNone();
  Do("dblclick", ListName());
  EXPECT_EQ(ClipboardWrites(), writes);
  EXPECT_EQ(List(), "CBA");
  EXPECT_TRUE(Is("frmTray.Timer1", "Enabled"));
  Key("Enter");
  EXPECT_EQ(Page(), "[C*]BA | L: 1") << "Enter going up selects the top row";
}

TEST_F(ClipPageTest, KeysThatUseAnEntry) {
  struct Case {
    Values key;
    bool uses;
  };
  const Case cases[] = {
      {{"key", ListName(), "Enter"}, true},
      {{"key", ListName(), "Home", "ctrl"}, true},
      {{"key", ListName(), "Up", "ctrl"}, true},
      {{"key", ListName(), "Home"}, false},
      {{"key", ListName(), "Up", "ctrl", "shift"}, false},
      {{"key", ListName(), "End", "ctrl"}, false},
  };
  for (const Case& c : cases) {
    Empty();
    Fill("ABC");
    Select(1);
    Do(c.key);
    EXPECT_EQ(List(), c.uses ? "BAC" : "ABC") << c.key[2];
  }
}

TEST_F(ClipPageTest, MinimizesIfSetAfterEachUse) {
  Set("Minimize", "1");
  const auto hidden = [&] {
    const bool is = Hidden();
    Show();
    return is;
  };
  Fill("AB");
  Do("dblrow", ListName(), "1");
  EXPECT_TRUE(hidden());
  Click("Command000");
  EXPECT_TRUE(hidden());
  Select(1);
  Click("Command003");
  EXPECT_FALSE(hidden()) << "a row below the top has nothing to do with the clipboard";
  Select(0);
  Click("Command003");
  EXPECT_TRUE(hidden());
}

TEST_F(ClipPageTest, DeletesTheSelectedRowsAndBlanksTheTopOne) {
  Fill("ABCDE");
  Select(1, 3, 4);
  Click("Command003");
  EXPECT_EQ(Page(), "AC | Deleted");
  EXPECT_EQ(Clipboard(), "A");
  EXPECT_EQ(Stored(), FileOf({"A", "C"}));
  Select(0, 1);
  Click("Command003");
  EXPECT_EQ(Page(), "_ | Deleted");
  EXPECT_EQ(Clipboard() + Field(), "");
  Fill("FGH");
  EXPECT_EQ(List(), "FGH") << "the next text takes the blank row's place";
}

TEST_F(ClipPageTest, ClearBoardLeavesABlankRowAndItsStatusWord) {
  Fill("AB");
  Advance(2000);
  Click("Command000");
  EXPECT_EQ(Clipboard() + Field(), "");
  EXPECT_EQ(Page(), "_B | Cleared") << "the focus that has moved to the field leaves the word";
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
  EXPECT_EQ(Page(), "_ | Cleared") << "an empty list gets its blank row";
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

TEST_F(ClipPageTest, TheStatusOfSeveralRows) {
  for (const std::string text : {"CCC", "BB", "A"}) Copy(text);
  Select(1, 2);
  EXPECT_EQ(Page(), "ABB*[CCC*] | L: 5");
  EXPECT_FALSE(Is("frmTray.Command001", "Enabled")) << "one entry at a time goes to the Pad-List";
  EXPECT_EQ(Tip(), "CCC");
  Select(0);
  EXPECT_TRUE(Is("frmTray.Command001", "Enabled"));
  Select(2, 2);
  EXPECT_EQ(Page(), "ABB[CCC] | L: 3") << "the current row's, with none selected";
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
  EXPECT_EQ(Page(), "_ | L: 0") << "the focus makes a row";
  Fill("ABC");
  Select(1);
  Do("focus", kField);
  EXPECT_EQ(Page(), "ABC | L: 1");
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
  EXPECT_EQ(Page(), "CB | hidden") << "no second copy stays below";
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
  Fill("AB");
  Select(1);
  Do("dropother", ListName());
  EXPECT_EQ(Page(), "AB | hidden");
  EXPECT_EQ(Clipboard(), "A");
  Do("drop", ListName(), "C");
  EXPECT_EQ(Clipboard(), "C");
  Tick();
  EXPECT_EQ(List(), "CAB");
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

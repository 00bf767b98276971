// The Pad page, as a person works with it. Scripts have tests of their own.
#include "scenarios/Scenario.h"

namespace quillbox {
namespace {

const std::string kList = "frmTray.List1";
const std::string kName = "frmTray.Text3";
const std::string kText = "frmTray.Text101";
const std::string kAdd = "frmTray.Command101";
const std::string kInsert = "frmTray.Command102";
const std::string kFullTitle = "Too many Pad-List entries";

class PadPageTest : public Scenario {
 protected:
  PadPageTest() {
    Do("start");
    Show();
    OpenPage(1);
  }

  // Entries named a, b, c, ... from the top, with the texts A, B, C, ...
  void Fill(int count) {
    for (int i = count - 1; i >= 0; --i) {
      AddPad(std::string(1, static_cast<char>('a' + i)), std::string(1, static_cast<char>('A' + i)));
    }
  }
  // The names in a row, each entry having its text still, the file holding the same.
  std::string Order() {
    const Values rows = Rows("List1");
    const Values slots = Do("slots", "PadEntries");
    std::string names;
    std::vector<Values> entries;
    for (std::size_t i = 0; i < rows.size(); ++i) {
      EXPECT_EQ(slots[i][0] - 'A', rows[i][0] - 'a') << rows[i];
      names += rows[i];
      entries.push_back({rows[i], slots[i]});
    }
    for (std::size_t i = rows.size(); i < slots.size(); ++i) EXPECT_EQ(slots[i], "");
    EXPECT_EQ(DataFile("PadData.qbx"), File("PAD", entries));
    return names;
  }
  std::string Status() {
    const std::string visible = Get("frmTray.Label13", "Visible");
    EXPECT_EQ(Get("frmTray.Line6", "Visible"), visible);
    EXPECT_EQ(Get("frmTray.Line7", "Visible"), visible);
    return visible == "1" ? Get("frmTray.Label13", "Caption") : "hidden";
  }
  Values Fields() { return {Get(kName, "Text"), Get(kText, "Text")}; }
  std::string Mode() { return Get(kAdd, "Caption"); }
  std::string Current() { return Get(kList, "ListIndex"); }
  bool CanMove() { return Get("frmTray.UpDown2", "Enabled") == "1"; }
  std::string Selection() {
    std::string marks;
    for (const std::string& mark : Do("get", kList, "Selected")) marks += mark;
    return marks;
  }
};

TEST_F(PadPageTest, StartState) {
  const std::vector<Values> buttons{{"101", "Add", "Add the current text to the Pad-List", "0"},
                                    {"102", "Insert", "Copy the current text to the clipboard", "0"},
                                    {"103", "Get", "Get text from the clipboard (New entry)", "1"},
                                    {"104", "Clear", "Clear the Pad text field (New entry)", "1"},
                                    {"105", "Delete", "Delete the selected Pad-List entry", "1"}};
  for (const Values& button : buttons) {
    const std::string name = "frmTray.Command" + button[0];
    EXPECT_EQ(Get(name, "Caption"), button[1]);
    EXPECT_EQ(Get(name, "ToolTipText"), button[2]);
    EXPECT_EQ(Get(name, "Enabled"), button[3]);
  }
  EXPECT_FALSE(CanMove());
  EXPECT_EQ(Status(), "hidden");
  EXPECT_EQ(Get("frmTray.Label13", "ToolTipText"), "Length of Pad-List entry");
  Do("type", kText, "x");
  EXPECT_EQ(Get("frmTray.Label13", "ToolTipText"), "");
  EXPECT_EQ(Get(kAdd, "Enabled"), "1");
  EXPECT_EQ(Get(kInsert, "Enabled"), "1");
  EXPECT_EQ(Get(kInsert, "ToolTipText"), "Use the current text as clipboard entry");
  Do("type", kText, "\b");
  EXPECT_EQ(Get(kAdd, "Enabled"), "0");
  EXPECT_EQ(Get(kInsert, "Enabled"), "0");
}

TEST_F(PadPageTest, AddsAtTheTopOrWhereTheTextStood) {
  Fill(3);
  EXPECT_EQ(Order(), "abc");
  EXPECT_EQ(Status(), "Added");
  EXPECT_EQ(Fields(), (Values{"", ""}));
  Do("settext", kText, "X");
  Do("click", kAdd);
  EXPECT_EQ(Rows("List1")[0], "[No Name]");
  AddPad("", "C");
  EXPECT_EQ(Rows("List1"), (Values{"c", "[No Name]", "a", "b"})) << "a nameless repeat keeps the name";
  AddPad("[No Name]", "A");
  EXPECT_EQ(Rows("List1"), (Values{"a", "c", "[No Name]", "b"}));
  AddPad("new", "B");
  EXPECT_EQ(Rows("List1"), (Values{"new", "a", "c", "[No Name]"}));
  AddPad(" ", "Y");
  EXPECT_EQ(Rows("List1")[0], " ") << "blanks are a name";
  EXPECT_EQ(Slots("PadEntries"), (Values{"Y", "B", "A", "C", "X"}));
}

TEST_F(PadPageTest, UpdatesInPlace) {
  Fill(5);
  Do("select", kList, "2");
  EXPECT_EQ(Mode(), "Update");
  EXPECT_EQ(Fields(), (Values{"c", "C"}));
  Do("settext", kText, "X");
  Do("settext", kName, "x");
  Do("click", kAdd);
  EXPECT_EQ(Rows("List1"), (Values{"a", "b", "x", "d", "e"}));
  EXPECT_EQ(Slots("PadEntries"), (Values{"A", "B", "X", "D", "E"}));
  EXPECT_EQ(Status(), "Updated");
  EXPECT_EQ(Mode(), "Add");
  EXPECT_EQ(Current(), "-1");
  EXPECT_EQ(Fields(), (Values{"", ""}));
  EXPECT_EQ(Get("frmTray.Text2", "Text"), "") << "the name field has the focus and left the word";
}

TEST_F(PadPageTest, AnUpdateToAKnownTextTakesBothRows) {
  Fill(3);
  Do("select", kList, "2");
  Do("settext", kText, "A");
  Do("settext", kName, "");
  Do("click", kAdd);
  EXPECT_EQ(Rows("List1"), (Values{"b", "a"})) << "the place behind the end is the end";
  EXPECT_EQ(Slots("PadEntries"), (Values{"B", "A"}));
  Do("select", kList, "0");
  Do("settext", kText, "A");
  Do("click", kAdd);
  EXPECT_EQ(Rows("List1"), (Values{"b"}));
  EXPECT_EQ(Slots("PadEntries"), (Values{"A"}));
}

TEST_F(PadPageTest, AFullListAsksForItsOldestEntry) {
  Set("PermEntriesMax", "2");
  Fill(3);
  Do("boxes");
  Do("answer", "7", "6");
  AddPad("n", "N");
  EXPECT_EQ(Order(), "abc");
  EXPECT_EQ(Fields(), (Values{"n", "N"})) << "the fields keep what found no room";
  EXPECT_EQ(Do("boxes").at(1), kFullTitle);
  Do("click", kAdd);
  EXPECT_EQ(Rows("List1"), (Values{"n", "a", "b"}));
  EXPECT_EQ(Do("boxes").at(0), "68");
  AddPad("", "B");
  Do("select", kList, "1");
  Do("settext", kText, "X");
  Do("click", kAdd);
  EXPECT_EQ(Do("boxes"), Values{}) << "neither a repeat nor an update lets the list grow";
  EXPECT_EQ(Slots("PadEntries"), (Values{"B", "X", "A"}));
}

TEST_F(PadPageTest, AListBeyondItsLimitLosesNothingByItself) {
  Fill(6);
  Set("PermEntriesMax", "2");
  Do("boxes");
  Do("select", kList, "4");
  Do("settext", kText, "X");
  Do("click", kAdd);
  EXPECT_EQ(Slots("PadEntries"), (Values{"A", "B", "C", "D", "X", "F"}));
  EXPECT_EQ(Do("boxes"), Values{});
  AddPad("n", "N");
  EXPECT_EQ(Slots("PadEntries"), (Values{"N", "A", "B", "D", "X", "F"})) << "the row at the limit goes";
}

TEST_F(PadPageTest, TheLargestListStaysWithinItsSlots) {
  Set("PermEntriesMax", "500");
  for (int i = 0; i < 103; ++i) AddPad("n" + std::to_string(i), "t" + std::to_string(i));
  EXPECT_EQ(Rows("List1").size(), 100u);
  const Values slots = Slots("PadEntries");
  EXPECT_EQ(slots.size(), 100u);
  EXPECT_EQ(slots.front(), "t102");
  EXPECT_EQ(slots.back(), "t3");
  Do("drop", kList, "dropped");
  EXPECT_EQ(Rows("List1").size(), 100u);
}

TEST_F(PadPageTest, AnUpdateWhoseRowIsGoneSparesTheOthers) {
  Fill(3);
  Do("select", kList, "1");
  // The dialog's OK reads the list anew: no row is current any more.
  Do("click", "frmTray.Command47");
  Do("click", "frmSettings.Command1");
  ASSERT_EQ(Current(), "-1");
  ASSERT_EQ(Fields(), (Values{"b", "B"}));
  Do("settext", kName, "bb");
  Do("click", kAdd);
  EXPECT_EQ(Slots("PadEntries"), (Values{"B", "A", "C"}));
}

TEST_F(PadPageTest, SeveralRowsEmptyTheFieldsAndCannotBeMoved) {
  Fill(4);
  Do("select", kList, "1");
  EXPECT_TRUE(CanMove());
  EXPECT_EQ(Status(), "L: 1");
  Do("select", kList, "1", "3");
  EXPECT_FALSE(CanMove());
  EXPECT_EQ(Fields(), (Values{"", ""}));
  EXPECT_EQ(Mode(), "Add");
  EXPECT_EQ(Status(), "L: 2");
  EXPECT_EQ(Do("drag", kList), (Values{"B\r\nD"})) << "the texts, not the names";
  Do("focus", kText);
  EXPECT_EQ(Selection(), "0001");
  EXPECT_EQ(Current(), "3");
  EXPECT_EQ(Fields(), (Values{"d", "D"}));
  EXPECT_EQ(Mode(), "Update");
  Do("select", kList, "");
  EXPECT_EQ(Status(), "hidden");
  EXPECT_EQ(Mode(), "Add");
  EXPECT_FALSE(CanMove());
  EXPECT_EQ(Order(), "abcd");
}

TEST_F(PadPageTest, FocusOfListAndFields) {
  Fill(2);
  Do("select", kList, "1");
  Do("settext", kName, "long name");
  EXPECT_EQ(Status(), "L: 9");
  EXPECT_FALSE(CanMove()) << "the list has lost the focus";
  Do("focus", kText);
  EXPECT_EQ(Status(), "L: 1");
  Do("focus", kList);
  EXPECT_EQ(Status(), "L: 1");
  EXPECT_TRUE(CanMove());
  Do("focus", "frmTray.Command6");
  EXPECT_EQ(Status(), "hidden");
  Do("type", kName, "!\rA");
  EXPECT_EQ(Get(kName, "Text"), "long name!") << "Enter goes on to the text";
  EXPECT_EQ(Get(kText, "Text"), "BA");
}

TEST_F(PadPageTest, CopiesToTheClipboard) {
  Fill(3);
  Do("settext", kText, "free text");
  Do("click", kInsert);
  EXPECT_EQ(Clipboard(), "free text");
  EXPECT_EQ(Status(), "Inserted");
  Tick();
  EXPECT_EQ(Rows("List2")[0], "free text");
  EXPECT_EQ(Get("frmTray", "Visible"), "1");
  EXPECT_EQ(Order(), "abc");
  Do("dblrow", kList, "2");
  EXPECT_EQ(Clipboard(), "C");
  EXPECT_EQ(Order(), "abc");
  EXPECT_EQ(Current(), "2");
  Do("select", kList, "1");
  Do("key", kList, "Enter");
  EXPECT_EQ(Clipboard(), "B");

  Set("LastSort", "1");
  Set("Minimize", "1");
  Do("click", kInsert);
  EXPECT_EQ(Order(), "bac");
  EXPECT_EQ(Get("frmTray", "Visible"), "0");
  Show();
  Do("dblrow", kList, "2");
  EXPECT_EQ(Order(), "cba");
  EXPECT_EQ(Current(), "0");
  EXPECT_EQ(Selection(), "100");
  EXPECT_EQ(Get("frmTray.Label13", "Caption"), "Inserted");
  EXPECT_EQ(Get("frmTray", "Visible"), "0");
  Show();
  Do("settext", kText, "unknown");
  Do("click", kInsert);
  EXPECT_EQ(Order(), "cba") << "a text that is no entry moves none";
}

TEST_F(PadPageTest, AUsedEntryCanStillBeRenamed) {
  Set("LastSort", "1");
  Fill(3);
  Do("select", kList, "2");
  Do("click", kInsert);
  EXPECT_EQ(Order(), "cab");
  Do("settext", kName, "cc");
  Do("click", kAdd);
  EXPECT_EQ(Status(), "Updated");
  EXPECT_EQ(Rows("List1"), (Values{"cc", "a", "b"}));
}

TEST_F(PadPageTest, NothingIsUsedWithoutATextOrARow) {
  Copy("kept");
  Do("key", kList, "Enter");
  Do("dblclick", kList);
  Fill(2);
  Do("select", kList, "0", "1");
  Do("key", kList, "Enter");
  EXPECT_EQ(Clipboard(), "kept");
  EXPECT_EQ(Get("frmTray.Timer1", "Enabled"), "1");
}

TEST_F(PadPageTest, GetsAndClears) {
  Fill(1);
  Copy("from outside");
  Do("select", kList, "0");
  Do("click", "frmTray.Command103");
  EXPECT_EQ(Fields(), (Values{"", "from outside"}));
  EXPECT_EQ(Status(), "Got Entry");
  EXPECT_EQ(Mode(), "Add");
  EXPECT_EQ(Current(), "-1");
  Do("clip.lock", "1");
  Do("settext", kName, "n");
  Do("click", "frmTray.Command103");
  EXPECT_EQ(Fields(), (Values{"", "from outside"})) << "what can't be read changes nothing, the rest is done";
  EXPECT_EQ(Status(), "Got Entry");
  Do("clip.lock", "0");
  Do("select", kList, "0");
  Do("click", "frmTray.Command104");
  EXPECT_EQ(Fields(), (Values{"", ""}));
  EXPECT_EQ(Status(), "Cleared");
  EXPECT_EQ(Mode(), "Add");
  EXPECT_EQ(Get(kAdd, "Enabled"), "0");
  EXPECT_EQ(Order(), "a");
}

TEST_F(PadPageTest, Deletes) {
  Fill(5);
  Do("select", kList, "0", "2", "3");
  Do("click", "frmTray.Command105");
  EXPECT_EQ(Order(), "be");
  EXPECT_EQ(Status(), "Deleted");
  EXPECT_EQ(Mode(), "Add");
  Do("select", kList, "");
  Do("settext", kText, "draft");
  Do("boxes");
  Do("answer", "7");
  Do("click", "frmTray.Command105");
  EXPECT_EQ(Order(), "be");
  EXPECT_EQ(Fields()[1], "draft");
  EXPECT_EQ(Do("boxes"),
            (Values{"68", "No entries selected",
                    "You haven't selected any entries to delete. Do you want to delete ALL entries?"}));
  Do("click", "frmTray.Command105");
  EXPECT_EQ(Order(), "");
  EXPECT_EQ(Fields()[1], "");
  EXPECT_EQ(Status(), "Deleted");
}

TEST_F(PadPageTest, TheDeleteKeyAsksIfSet) {
  Fill(3);
  Do("select", kList, "1");
  Do("boxes");
  Do("answer", "7");
  Do("key", kList, "Delete");
  EXPECT_EQ(Order(), "abc");
  EXPECT_EQ(Do("boxes"),
            (Values{"36", "Delete selected entries?", "Do you really want to delete the selected entries?"}));
  Set("AskDelKey", "2");
  Do("key", kList, "Delete");
  EXPECT_EQ(Order(), "ac");
  EXPECT_EQ(Do("boxes"), Values{});
}

TEST_F(PadPageTest, ArrowsMoveTheCurrentRow) {
  Fill(4);
  Do("select", kList, "1");
  Do("spin", "frmTray.UpDown2", "down");
  EXPECT_EQ(Order(), "acbd");
  EXPECT_EQ(Current(), "2");
  EXPECT_EQ(Selection(), "0010");
  Do("spin", "frmTray.UpDown2", "down");
  const int writes = Writes("PadData.qbx");
  Do("spin", "frmTray.UpDown2", "down");
  EXPECT_EQ(Order(), "acdb");
  EXPECT_EQ(Writes("PadData.qbx"), writes) << "at the end there is nothing to save";
  for (int i = 0; i < 4; ++i) Do("spin", "frmTray.UpDown2", "up");
  EXPECT_EQ(Order(), "bacd");
  EXPECT_EQ(Writes("PadData.qbx"), writes + 3);
  EXPECT_EQ(Fields(), (Values{"b", "B"}));
}

TEST_F(PadPageTest, ArrowsScrollTheList) {
  Fill(12);
  Do("select", kList, "4");
  EXPECT_EQ(Get(kList, "TopIndex"), "0");
  const Values topAfterDown{"0", "0", "1", "2"};
  for (const std::string& top : topAfterDown) {
    Do("spin", "frmTray.UpDown2", "down");
    EXPECT_EQ(Get(kList, "TopIndex"), top);
  }
  EXPECT_EQ(Current(), "8");
  for (const std::string top : {"2", "2", "2", "2", "2", "1", "0", "0"}) {
    Do("spin", "frmTray.UpDown2", "up");
    EXPECT_EQ(Get(kList, "TopIndex"), top) << Current();
  }
  EXPECT_EQ(Current(), "0");
}

TEST_F(PadPageTest, CtrlKeysMoveTheCurrentRow) {
  struct Case {
    int rows;
    int row;
    std::string key;
    std::string order;
    std::string current;
  };
  const Case cases[] = {
      {4, 1, "Down", "acbd", "2"},
      {4, 1, "Right", "acbd", "2"},
      {4, 2, "Up", "acbd", "1"},
      {4, 2, "Left", "acbd", "1"},
      {4, 3, "Down", "abcd", "3"},
      {4, 0, "Up", "abcd", "0"},
      {4, 2, "Home", "cabd", "0"},
      {4, 0, "Home", "abcd", "0"},
      {4, 1, "End", "acdb", "3"},
      {4, 3, "End", "abcd", "3"},
      {5, 2, "PageDown", "abdec", "4"},
      {10, 1, "PageDown", "acdefghibj", "8"},
      {10, 9, "PageUp", "abjcdefghi", "2"},
      {10, 4, "PageUp", "eabcdfghij", "0"},
  };
  for (const Case& c : cases) {
    Do("answer", "6");
    Do("select", kList, "");
    Do("click", "frmTray.Command105");
    Fill(c.rows);
    Do("select", kList, std::to_string(c.row));
    const int writes = Writes("PadData.qbx");
    Do("key", kList, c.key, "ctrl", "shift");
    Do("select", kList, std::to_string(c.row));
    Do("key", kList, c.key, "ctrl");
    EXPECT_EQ(Order(), c.order) << c.key << " on " << c.row;
    EXPECT_EQ(Current(), c.current) << c.key << " on " << c.row;
    const bool moved = c.order != std::string("abcdefghij").substr(0, static_cast<std::size_t>(c.rows));
    EXPECT_EQ(Writes("PadData.qbx"), writes + (moved ? 1 : 0));
  }
}

TEST_F(PadPageTest, NoRowIsMovedWhenNoneIsCurrent) {
  Fill(3);
  Do("select", kList, "1");
  Do("key", kList, "Delete");
  ASSERT_EQ(Current(), "-1");
  const int writes = Writes("PadData.qbx");
  for (const std::string key : {"Up", "Down", "Home", "End", "PageUp", "PageDown"})
    Do("key", kList, key, "ctrl");
  EXPECT_EQ(Order(), "ac");
  EXPECT_EQ(Writes("PadData.qbx"), writes);
}

TEST_F(PadPageTest, ADroppedTextBecomesAnEntry) {
  Fill(2);
  Do("select", kList, "1");
  Do("drop", kList, "Dropped");
  EXPECT_EQ(Rows("List1"), (Values{"[No Name]", "a", "b"}));
  EXPECT_EQ(Slots("PadEntries"), (Values{"Dropped", "A", "B"}));
  EXPECT_EQ(Fields(), (Values{"", ""}));
  Do("dropother", kList);
  EXPECT_EQ(Rows("List1").size(), 3u);
}

TEST_F(PadPageTest, ATooLongTextIsCut) {
  Do("settext", kText, std::string(32000, 'x'));
  EXPECT_EQ(Get(kText, "Text").size(), 32000u);
  Do("settext", kText, std::string(32001, 'x'));
  EXPECT_EQ(Get(kText, "Text").size(), 32000u);
  EXPECT_EQ(Status(), "L: 32000");
  Do("settext", kText, std::string(31999, 'x') + "\U0001F600");
  EXPECT_EQ(Get(kText, "Text").size(), 31999u) << "no half character stays";
}

TEST_F(PadPageTest, Rot47IsItsOwnInverse) {
  std::string all = "\xC3\xA9\r\n\t \x7F";
  for (char c = '!'; c <= '~'; ++c) all += c;
  Do("settext", kText, "abc");
  Do("dblclick", "frmTray.Label13");
  EXPECT_EQ(Get(kText, "Text"), "abc") << "off unless set";
  Set("ROT47", "1");
  Do("dblclick", "frmTray.Label13");
  EXPECT_EQ(Get(kText, "Text"), "234");
  Do("settext", kText, all);
  Do("dblclick", "frmTray.Label13");
  const std::string turned = Get(kText, "Text");
  EXPECT_EQ(turned.substr(0, 7), all.substr(0, 7));
  EXPECT_EQ(turned.substr(7), all.substr(7 + 47) + all.substr(7, 47));
  Do("dblclick", "frmTray.Label13");
  EXPECT_EQ(Get(kText, "Text"), all);
  EXPECT_EQ(Slots("PadEntries"), Values{});
}

}  // namespace
}  // namespace quillbox

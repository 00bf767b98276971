// The Pad page, as a person works with it. Scripts have tests of their own.
#include "scenarios/ListPage.h"

namespace quillbox {
namespace {

const std::string kName = "frmTray.Text3";
const std::string kText = "frmTray.Text101";

class PadPageTest : public ListPageScenario {
 protected:
  PadPageTest() : ListPageScenario(kPadPage) {}

  Values Texts() { return Slots("PadEntries"); }
  // The two fields, and the caption of the button that puts them into the list.
  std::string Fields() {
    return Get(kName, "Text") + "=" + Get(kText, "Text") + " " + Of("Command101", "Caption");
  }
  std::string Page() { return ListPageScenario::Page() + " | " + Fields(); }
  void EnterFields(const std::string& name, const std::string& text) {
    Enter("Text101", text);
    Enter("Text3", name);
  }
  void PutIn() { Click("Command101"); }
};

TEST_F(PadPageTest, ATextEnablesTheButtonsThatUseIt) {
  EXPECT_EQ(Tip(), "Length of Pad-List entry");
  for (const std::string typed : {"x", "\b"}) {
    Do("type", kText, typed);
    for (const std::string button : {"Command101", "Command102"})
      EXPECT_EQ(Is("frmTray." + button, "Enabled"), typed == "x");
    EXPECT_EQ(Tip(), "");
    EXPECT_EQ(Of("Command102", "ToolTipText"), "Use the current text as clipboard entry");
  }
}

TEST_F(PadPageTest, AddsAtTheTopOrWhereTheTextStood) {
  Fill("abc");
  EXPECT_EQ(Page(), "abc | Added | = Add");
  EXPECT_EQ(Stored(), File("PAD", {{"a", "A"}, {"b", "B"}, {"c", "C"}}));
  EnterFields("", "X");
  PutIn();
  EXPECT_EQ(AllRows()[0], "[No Name]");
  AddPad("", "C");
  EXPECT_EQ(AllRows(), (Values{"c", "[No Name]", "a", "b"})) << "a nameless repeat keeps the name";
  AddPad("[No Name]", "A");
  EXPECT_EQ(AllRows(), (Values{"a", "c", "[No Name]", "b"}));
  AddPad("new", "B");
  EXPECT_EQ(AllRows(), (Values{"new", "a", "c", "[No Name]"}));
  AddPad(" ", "Y");
  EXPECT_EQ(AllRows()[0], " ") << "blanks are a name";
  EXPECT_EQ(Texts(), (Values{"Y", "B", "A", "C", "X"}));
}

TEST_F(PadPageTest, UpdatesInPlace) {
  Fill("abcde");
  Select(2);
  EXPECT_EQ(Page(), "ab[c*]de | L: 1 | c=C Update");
  EnterFields("x", "X");
  PutIn();
  EXPECT_EQ(Page(), "abxde | Updated | = Add");
  EXPECT_EQ(Of("Text2", "Text"), "") << "the name field has the focus and left the word";
}

TEST_F(PadPageTest, AnUpdateToAKnownTextTakesBothRows) {
  Fill("abc");
  Select(2);
  EnterFields("", "A");
  PutIn();
  EXPECT_EQ(List(), "ba") << "the place behind the end is the end";
  Select(0);
  Enter("Text101", "A");
  PutIn();
  EXPECT_EQ(AllRows(), (Values{"b"}));
  EXPECT_EQ(Texts(), (Values{"A"}));
}

TEST_F(PadPageTest, AFullListAsksForItsOldestEntry) {
  Set("PermEntriesMax", "2");
  Fill("abc");
  Do("answer", "7", "6");
  AddPad("n", "N");
  EXPECT_EQ(List(), "abc");
  EXPECT_EQ(Fields(), "n=N Add") << "the fields keep what found no room";
  PutIn();
  EXPECT_EQ(List(), "nab");
  EXPECT_EQ(Boxes(), (std::vector<Box>{kPadIsFull, kPadIsFull}));
  AddPad("", "B");
  Select(1);
  EnterFields("x", "X");
  PutIn();
  EXPECT_EQ(List(), "bxa");
  EXPECT_TRUE(Boxes().empty()) << "neither a repeat nor an update lets the list grow";
}

TEST_F(PadPageTest, AListBeyondItsLimitLosesNothingByItself) {
  Fill("abcdef");
  Set("PermEntriesMax", "2");
  Select(4);
  EnterFields("x", "X");
  PutIn();
  EXPECT_EQ(List(), "abcdxf");
  EXPECT_TRUE(Boxes().empty());
  Add("n");
  EXPECT_EQ(List(), "nabdxf") << "the row at the limit goes";
}

TEST_F(PadPageTest, TheLargestListStaysWithinItsSlots) {
  Set("PermEntriesMax", "500");
  for (int i = 0; i < 103; ++i) Add("t" + std::to_string(i));
  Do("drop", ListName(), "dropped");
  EXPECT_EQ(AllRows().size(), 100u);
  EXPECT_EQ(Texts().size(), 100u);
  EXPECT_EQ(Texts()[1] + " " + Texts().back(), "T102 T4");
}

TEST_F(PadPageTest, AnUpdateWhoseRowIsGoneSparesTheOthers) {
  Fill("abc");
  Select(1);
  // The dialog's OK reads the list anew: no row is current any more.
  Click("Command47");
  Do("click", "frmSettings.Command1");
  ASSERT_EQ(Index(), "-1");
  ASSERT_EQ(Fields(), "b=B Update");
  Enter("Text3", "bb");
  PutIn();
  EXPECT_EQ(Texts(), (Values{"B", "A", "C"}));
}

TEST_F(PadPageTest, SeveralRowsEmptyTheFieldsAndCannotBeMoved) {
  Fill("abcd");
  Select(1, 3);
  EXPECT_EQ(Page(), "ab*c[d*] | L: 2 | = Add");
  EXPECT_FALSE(Is("frmTray.UpDown2", "Enabled"));
  EXPECT_EQ(Do("drag", ListName()), (Values{"B\r\nD"})) << "the texts, not the names";
  Do("focus", kText);
  EXPECT_EQ(Page(), "abc[d*] | L: 1 | d=D Update");
  SelectNone();
  EXPECT_EQ(Page(), "abcd | hidden | d=D Add");
  EXPECT_FALSE(Is("frmTray.UpDown2", "Enabled"));
  Select(0, 2, 3);
  Click("Command105");
  EXPECT_EQ(Page(), "b | Deleted | = Add");
}

TEST_F(PadPageTest, FocusOfTheFields) {
  Fill("ab");
  Select(1);
  Enter("Text3", "long name");
  EXPECT_EQ(Status(), "L: 9");
  EXPECT_FALSE(Is("frmTray.UpDown2", "Enabled")) << "the list has lost the focus";
  Do("focus", kText);
  EXPECT_EQ(Status(), "L: 1");
  Do("type", kName, "!\rA");
  EXPECT_EQ(Fields(), "long name!=BA Update") << "Enter goes on to the text";
}

TEST_F(PadPageTest, CopiesToTheClipboardAndMovesTheEntryIfSet) {
  Fill("abc");
  Enter("Text101", "free text");
  Click("Command102");
  EXPECT_EQ(Clipboard(), "free text");
  EXPECT_EQ(Page(), "abc | Inserted | =free text Add");
  Tick();
  EXPECT_EQ(Rows("List2")[0], "free text");
  EXPECT_TRUE(Is("frmTray", "Visible"));
  Do("dblrow", ListName(), "2");
  EXPECT_EQ(Clipboard(), "C");
  EXPECT_EQ(Page(), "ab[c*] | L: 1 | c=C Update");
  Select(1);
  Key("Enter");
  EXPECT_EQ(Clipboard(), "B");

  Set("LastSort", "1");
  Set("Minimize", "1");
  Click("Command102");
  EXPECT_EQ(List(), "bac");
  EXPECT_TRUE(Hidden());
  Show();
  Do("dblrow", ListName(), "2");
  EXPECT_EQ(Page(), "[c*]ba | Inserted | c=C Update");
  EXPECT_EQ(Stored(), File("PAD", {{"c", "C"}, {"b", "B"}, {"a", "A"}}));
  EXPECT_TRUE(Hidden());
  Show();
  Enter("Text101", "unknown");
  Click("Command102");
  EXPECT_EQ(List(), "cba") << "a text that is no entry moves none";
}

TEST_F(PadPageTest, AUsedEntryCanStillBeRenamed) {
  Set("LastSort", "1");
  Fill("abc");
  Select(2);
  Click("Command102");
  Enter("Text3", "cc");
  PutIn();
  EXPECT_EQ(Status(), "Updated");
  EXPECT_EQ(AllRows(), (Values{"cc", "a", "b"}));
}

TEST_F(PadPageTest, NothingIsUsedWithoutATextOrARow) {
  Copy("kept");
  Key("Enter");
  Do("dblclick", ListName());
  Fill("ab");
  Select(0, 1);
  Key("Enter");
  EXPECT_EQ(Clipboard(), "kept");
  EXPECT_TRUE(Is("frmTray.Timer1", "Enabled"));
}

TEST_F(PadPageTest, GetsAndClears) {
  Fill("a");
  Copy("from outside");
  Select(0);
  Click("Command103");
  EXPECT_EQ(Page(), "a | Got Entry | =from outside Add");
  Do("clip.lock", "1");
  Enter("Text3", "n");
  Click("Command103");
  EXPECT_EQ(Page(), "a | Got Entry | =from outside Add") << "what can't be read changes nothing else";
  Do("clip.lock", "0");
  Select(0);
  Click("Command104");
  EXPECT_EQ(Page(), "a | Cleared | = Add");
  EXPECT_FALSE(Is("frmTray.Command101", "Enabled"));
}

TEST_F(PadPageTest, ADroppedTextBecomesAnEntry) {
  Fill("ab");
  Select(1);
  Do("drop", ListName(), "Dropped");
  Do("dropother", ListName());
  EXPECT_EQ(AllRows(), (Values{"[No Name]", "a", "b"}));
  EXPECT_EQ(Texts(), (Values{"Dropped", "A", "B"}));
  EXPECT_EQ(Fields(), "= Add");
}

TEST_F(PadPageTest, ATooLongTextIsCut) {
  Enter("Text101", std::string(32000, 'x'));
  EXPECT_EQ(Field().size(), 32000u);
  Enter("Text101", std::string(32001, 'x'));
  EXPECT_EQ(Field().size(), 32000u);
  EXPECT_EQ(Status(), "L: 32000");
  Enter("Text101", std::string(31999, 'x') + "\U0001F600");
  EXPECT_EQ(Field().size(), 31999u) << "no half character stays";
}

TEST_F(PadPageTest, Rot47IsItsOwnInverse) {
  std::string all = "\xC3\xA9\r\n\t \x7F";
  for (char c = '!'; c <= '~'; ++c) all += c;
  Enter("Text101", all);
  Do("dblclick", "frmTray.Label13");
  EXPECT_EQ(Field(), all) << "off unless set";
  Set("ROT47", "1");
  Do("dblclick", "frmTray.Label13");
  EXPECT_EQ(Field(), all.substr(0, 7) + all.substr(7 + 47) + all.substr(7, 47));
  Do("dblclick", "frmTray.Label13");
  EXPECT_EQ(Field(), all);
  EXPECT_EQ(Texts(), Values{});
}

}  // namespace
}  // namespace quillbox

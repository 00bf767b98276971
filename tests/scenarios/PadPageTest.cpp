// The Pad page, as a person works with it. Scripts have tests of their own.
#include "scenarios/ListPage.h"

namespace quillbox {
namespace {

const std::string kText = "frmTray.Text101";

class PadPageTest : public ListPageScenario {
 protected:
  PadPageTest() : ListPageScenario(kPadPage) {}

  // The two fields, and the caption of the button that puts them into the list; a text on the clipboard.
  std::string Rest() override {
    const std::string clipboard = Clipboard();
    return " | " + Of("Text3", "Text") + "=" + Field() + " " + Of("Command101", "Caption") +
           (clipboard.empty() ? "" : " | " + clipboard);
  }
  Values Texts() { return Slots("PadEntries"); }
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
  AddPad("", "X");
  EXPECT_EQ(AllRows(), (Values{"[No Name]", "a", "b", "c"}));
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
  ExpectSteps({
      {"abcde", "select List1 2", "ab[c*]de | L: 1 | c=C Update"},
      {"abcde", "select List1 2; settext Text101 X; settext Text3 x; click Command101",
       "abxde | Updated | = Add"},
      // To a known text: both rows go, and the place behind the end is the end.
      {"abc", "select List1 2; settext Text101 A; settext Text3; click Command101", "ba | Updated | = Add"},
      {"abc", "select List1 0; settext Text101 C; settext Text3 c; click Command101", "cb | Updated | = Add"},
      // An entry that its use has moved is a new one with another text.
      {"abc", "select List1 2; click Command102; settext Text101 X; settext Text3 x; click Command101",
       "xcab | Added | = Add | C", "LastSort 1"},
  });
  Set("LastSort", "1");
  Do("dblrow", ListName(), "3");
  Enter("Text3", "bb");
  Click("Command101");
  EXPECT_EQ(AllRows(), (Values{"bb", "x", "c", "a"})) << "but can still be renamed";
  EXPECT_EQ(Of("Text2", "Text"), "") << "the name field has the focus and left the word";
}

TEST_F(PadPageTest, AFullListAsksForItsOldestEntry) {
  const std::string add = "settext Text3 n; settext Text101 N; click Command101";
  ExpectSteps({
      {"abc", "answer 7; " + add, "abc | hidden | n=N Add ! Too many Pad-List entries", "PermEntriesMax 2"},
      {"abc", add, "nab | Added | = Add ! Too many Pad-List entries", "PermEntriesMax 2"},
      // Neither a repeat nor an update lets the list grow.
      {"abc", "settext Text101 B; click Command101", "bac | Added | = Add", "PermEntriesMax 2"},
      {"abc", "select List1 1; " + add, "anc | Updated | = Add", "PermEntriesMax 2"},
      // A list beyond its limit loses nothing by itself; then the row at the limit goes.
      {"abcdef", "select List1 4; " + add, "abcdnf | Updated | = Add", "PermEntriesMax 2"},
      {"abcdef", add, "nabdef | Added | = Add ! Too many Pad-List entries", "PermEntriesMax 2"},
  });
  Set("PermEntriesMax", "2");
  Do("answer", "7");
  Add("g");
  EXPECT_EQ(Boxes(), std::vector<Box>{kPadIsFull});
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
  ASSERT_EQ(Page(), "abc | hidden | b=B Update");
  Enter("Text3", "bb");
  Click("Command101");
  EXPECT_EQ(Texts(), (Values{"B", "A", "C"}));
}

TEST_F(PadPageTest, SelectionFocusAndButtons) {
  ExpectSteps({
      {"abcd", "select List1 1 3", "ab*c[d*] | L: 2 | = Add"},
      {"abcd", "select List1 1 3; focus Text101", "abc[d*] | L: 1 | d=D Update"},
      {"abcd", "select List1 1; select List1", "abcd | hidden | b=B Add"},
      {"abcd", "select List1 0 2 3; click Command105", "b | Deleted | = Add"},
      {"ab", "select List1 1; settext Text3 name", "a[b*] | L: 4 | name=B Update"},
      {"ab", "select List1 1; settext Text3 name; focus Text101", "a[b*] | L: 1 | name=B Update"},
      {"a", "clip.set C; select List1 0; click Command103", "a | Got Entry | =C Add | C"},
      {"a", "select List1 0; clip.lock 1; click Command103; clip.lock 0", "a | Got Entry | =A Add"},
      {"a", "select List1 0; click Command104", "a | Cleared | = Add"},
      {"ab", "select List1 1; dropother List1", "a[b*] | L: 1 | b=B Update"},
  });
  Select(0, 1);
  EXPECT_FALSE(Is("frmTray.UpDown2", "Enabled")) << "several rows can't be moved";
  EXPECT_EQ(Do("drag", ListName()), (Values{"A\r\nB"})) << "the texts, not the names";
  Select(1);
  Enter("Text3", "name");
  Do("type", "frmTray.Text3", "!\rC");
  EXPECT_EQ(Rest(), " | name!=CB Update") << "Enter goes on to the text";
  Click("Command104");
  EXPECT_FALSE(Is("frmTray.Command101", "Enabled"));
}

TEST_F(PadPageTest, CopiesToTheClipboardAndMovesTheEntryIfSet) {
  const std::string used = "select List1 1; key List1 Enter";
  ExpectSteps({
      {"abc", "settext Text101 X; click Command102", "abc | Inserted | =X Add | X"},
      {"abc", "dblrow List1 2", "ab[c*] | L: 1 | c=C Update | C"},
      {"abc", used, "a[b*]c | Inserted | b=B Update | B"},
      {"abc", used, "bac | Inserted | b=B Update | B", "LastSort 1"},
      {"abc", "dblrow List1 2", "[c*]ab | Inserted | c=C Update | C", "LastSort 1"},
      // A text that is no entry moves none.
      {"abc", "settext Text101 X; click Command102", "abc | Inserted | =X Add | X", "LastSort 1"},
      {"abc", used, "(hidden) a[b*]c | Inserted | b=B Update | B", "Minimize 1"},
      {"abc", "dblrow List1 2", "(hidden) ab[c*] | L: 1 | c=C Update | C", "Minimize 1"},
      // Nothing is used without a text or a row.
      {"", "key List1 Enter; dblclick List1", " | hidden | = Add"},
      {"ab", "select List1 0 1; key List1 Enter", "a*[b*] | L: 2 | = Add"},
  });
  EXPECT_TRUE(Is("frmTray.Timer1", "Enabled"));
  Set("LastSort", "1");
  Do("dblrow", ListName(), "1");
  EXPECT_EQ(Stored(), File("PAD", {{"b", "B"}, {"a", "A"}}));
  Tick();
  EXPECT_EQ(Rows("List2")[0], "B");
}

TEST_F(PadPageTest, ADroppedTextBecomesAnEntry) {
  Fill("ab");
  Select(1);
  Do("drop", ListName(), "Dropped");
  EXPECT_EQ(AllRows(), (Values{"[No Name]", "a", "b"}));
  EXPECT_EQ(Texts(), (Values{"Dropped", "A", "B"}));
  EXPECT_EQ(Rest(), " | = Add");
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

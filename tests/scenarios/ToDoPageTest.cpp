// The ToDo page, as a person works with it.
#include "scenarios/ListPage.h"

namespace quillbox {
namespace {

const Box kFull{"68", "Too many ToDo-List entries",
                "Sorry, but you have reached the maximum number of ToDo-List entries. You have to "
                "delete some entries or increase the maximum number of entries before you "
                "proceed.\n\rWould you like to delete the oldest entry now?"};

class ToDoPageTest : public ListPageScenario {
 protected:
  ToDoPageTest() : ListPageScenario(kToDoPage) {}

  std::string Rest() override { return " | " + Of("Command2", "Caption") + " | " + Field(); }
};

TEST_F(ToDoPageTest, AddsByButtonEnterAndDrop) {
  EXPECT_EQ(Tip(), "Length of ToDo-List entry");
  Do("type", "frmTray.Text1", "a");
  EXPECT_TRUE(Is("frmTray.Command2", "Enabled"));
  EXPECT_EQ(Tip(), "") << "the first change of the label empties its tip";
  Do("type", "frmTray.Text1", "\r");
  EXPECT_EQ(Page(), "a | Added | Add Entry | ");
  Add("b");
  EXPECT_EQ(Page(), "ab | Added | Add Entry | ") << "the focus that comes back leaves the word alone";
  EXPECT_EQ(Of("Text2", "Text"), "");
  Focus("Command4");
  Focus("Text1");
  EXPECT_EQ(Status(), "L: 0") << "the next visit of the field shows its length";
  Select(0);
  Do("drop", ListName(), "dropped\r\nin\ntwo\rbreaks");
  EXPECT_EQ(Page(), "abdropped in two breaks | Added | Add Entry | ");
  EXPECT_EQ(Of("Text2", "Text"), "");
  const int saves = Saves();
  Do("dropother", ListName());
  Do("drop", ListName(), "");
  EXPECT_EQ(Status(), "Ready") << "an empty text leaves a new entry to be typed";
  // Nothing is added and nothing is written without a text.
  Do("type", "frmTray.Text1", "\r");
  EXPECT_TRUE(Fails("click", "frmTray.Command2"));
  EXPECT_EQ(AllRows().size(), 3U);
  EXPECT_EQ(Saves(), saves);
}

TEST_F(ToDoPageTest, Updates) {
  ExpectSteps({
      {"abc", "check List3 1 1", "a[b*]c | L: 1 | Update Entry | b"},
      {"abc", "check List3 1 1; settext Text1 B; click Command2", "aBc | Updated | Add Entry | "},
      {"abc", "check List3 0 1; click Command2", "abc | Updated | Add Entry | "},
      // To the text of another row, in front or behind: both go, one stands at the end.
      {"abc", "check List3 2 1; select List3 0; settext Text1 c; click Command2",
       "bc | Updated | Add Entry | "},
      {"abc", "check List3 0 1; select List3 2; settext Text1 a; click Command2",
       "ba | Updated | Add Entry | "},
      // The same text again moves to the end without its mark, also in a full list.
      {"abc", "check List3 0 1; click Command4; settext Text1 a; click Command2",
       "bca | Added | Add Entry | "},
      {"abc", "settext Text1 a; click Command2", "bca | Added | Add Entry | ", "ToDoEntriesMax 2"},
      // A row that a reload took away is added anew.
      {"ab", "select List3 0; settext Text1 c; click Command47; click frmSettings.Command1",
       "ab | hidden | Update Entry | c"},
      {"ab", "select List3 0; settext Text1 c; click Command47; click frmSettings.Command1; click Command2",
       "abc | Added | Add Entry | "},
  });
}

TEST_F(ToDoPageTest, AFullListAsksForTheOldest) {
  ExpectSteps({
      {"abcd", "settext Text1 e; answer 7; click Command2",
       "abcd | hidden | Add Entry | e ! Too many ToDo-List entries", "ToDoEntriesMax 3"},
      {"abcd", "check List3 0 1; click Command4; settext Text1 e; click Command2",
       "bcde | Added | Add Entry |  ! Too many ToDo-List entries", "ToDoEntriesMax 3"},
      // An update takes its own row away first. Where there are more than allowed, a No takes nothing away.
      {"abcd", "select List3 0; settext Text1 f; click Command2", "fbcd | Updated | Add Entry | ",
       "ToDoEntriesMax 3"},
      {"abcd", "select List3 2; settext Text1 g; answer 7; click Command2",
       "ab[c]d | hidden | Update Entry | g ! Too many ToDo-List entries", "ToDoEntriesMax 2"},
  });
  Set("ToDoEntriesMax", "3");
  Click("Command4");
  Do("answer", "7");
  const int saves = Saves();
  Add("e");
  EXPECT_EQ(Boxes(), std::vector<Box>{kFull});
  EXPECT_EQ(Saves(), saves + 1) << "a No saves too";
}

TEST_F(ToDoPageTest, ButtonsFieldAndKeys) {
  ExpectSteps({
      {"abcd", "check List3 0 1; check List3 3 1; select List3 2; click Command3",
       "a*bd* | Deleted | Add Entry | "},
      {"abcd", "check List3 0 1; check List3 1 1; check List3 3 1; select List3 2; click Command5",
       "c | Refreshed | Add Entry | "},
      {"ab", "select List3 1; click Command5", "ab | Refreshed | Add Entry | "},
      {"ab", "select List3 1; click Command3; focus Command4", "a | hidden | Add Entry | "},
      {"ab", "select List3 1; click Command5; focus Command4", "ab | hidden | Add Entry | "},
      {"ab", "select List3 1; click Command4", "ab | Ready | Add Entry | "},
      // The field and the list show their own lengths.
      {"ab", "select List3 1; type Text1 cd", "a[b] | L: 3 | Update Entry | bcd"},
      {"ab", "select List3 1; type Text1 cd; focus List3", "a[b] | L: 1 | Update Entry | bcd"},
      {"ab", "select List3 1; type Text1 cd; select List3", "ab | hidden | Add Entry | bcd"},
      {"ab", "select List3 1; key List3 Enter", "a[b*] | L: 1 | Update Entry | b"},
      {"ab", "select List3 1; key List3 Enter; key List3 Space", "a[b] | L: 1 | Update Entry | b"},
  });
  // The field has the focus already: no mark is left behind for a later visit.
  Focus("Text1");
  Click("Command4");
  EXPECT_EQ(Of("Text2", "Text"), "");
}

TEST_F(ToDoPageTest, SavesWithEachChangeAndWhenTheListLosesTheFocus) {
  Fill("abc");
  Select(1);
  Key("Enter");
  EXPECT_EQ(Stored(), File("TODO", {{"False", "a"}, {"False", "b"}, {"False", "c"}}));
  Focus("Text1");
  EXPECT_EQ(Stored(), File("TODO", {{"False", "a"}, {"True", "b"}, {"False", "c"}}));
  for (const std::string button : {"Command3", "Command5"}) {
    Select(0);
    const int saves = Saves();
    Click(button);
    EXPECT_EQ(Saves(), saves + 2);
  }
  EXPECT_EQ(List(), "c");
  const int saves = Saves();
  Do("focus", ListName());
  EXPECT_EQ(Saves(), saves);
  OpenPage(0);
  EXPECT_EQ(Saves(), saves + 1);
}

TEST_F(ToDoPageTest, MinimizeAndExitRefreshIfSet) {
  Fill("abc");
  Mark(0);
  Set("AutoRefresh2", "1");
  Click("Command6");
  EXPECT_EQ(List(), "bc");
  EXPECT_NE(Of("Label12", "Caption"), "Refreshed");
  EXPECT_EQ(Of("Text4", "Text"), "");
  EXPECT_EQ(Stored(), File("TODO", {{"False", "b"}, {"False", "c"}}));
  // The close box refreshes nothing; the exit does with its own setting alone.
  Show();
  Mark(1);
  Do("closebox", "frmTray");
  Restart();
  EXPECT_EQ(Marks(), "01");
  Set("AutoRefresh", "1");
  Restart();
  EXPECT_EQ(List(), "b");
}

TEST_F(ToDoPageTest, AClickOnTheStatusOpensTheSettings) {
  EXPECT_TRUE(Fails("click", "frmTray.Label12")) << "hidden";
  EXPECT_FALSE(Is("frmSettings", "Loaded"));
  Focus("Text1");
  Click("Label12");
  EXPECT_TRUE(Is("frmSettings", "Visible"));
}

}  // namespace
}  // namespace quillbox

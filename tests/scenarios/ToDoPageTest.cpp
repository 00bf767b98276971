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

  // With the button's caption and the field.
  std::string Page() {
    return ListPageScenario::Page() + " | " + Of("Command2", "Caption") + " | " + Field();
  }
  void PutIn() { Click("Command2"); }
  // Updates a row to another text.
  void Update(int row, const std::string& text) {
    Select(row);
    Enter("Text1", text);
    PutIn();
  }
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

TEST_F(ToDoPageTest, UpdateKeepsThePlaceAndClearsTheMark) {
  Fill("abc");
  Mark(1);
  EXPECT_EQ(Page(), "a[b*]c | L: 1 | Update Entry | b");
  Update(1, "B");
  EXPECT_EQ(Page(), "aBc | Updated | Add Entry | ") << "capitals make another text";
  Mark(0);
  PutIn();
  EXPECT_EQ(Page(), "aBc | Updated | Add Entry | ") << "updated to what it was: a new row, without the mark";
  // Updated to the text of another row, in front or behind: both go, one stands at the end.
  Mark(2);
  Update(0, "c");
  EXPECT_EQ(Page(), "Bc | Updated | Add Entry | ");
  Update(1, "B");
  EXPECT_EQ(List(), "B");
}

TEST_F(ToDoPageTest, TheSameTextAgainMovesToTheEndWithoutItsMark) {
  Fill("abc");
  Mark(0);
  Click("Command4");
  Add("a");
  EXPECT_EQ(Page(), "bca | Added | Add Entry | ");
  Set("ToDoEntriesMax", "2");
  Add("c");
  EXPECT_EQ(List(), "bac");
  EXPECT_TRUE(Boxes().empty()) << "also in a full list, without a question";
}

TEST_F(ToDoPageTest, AFullListAsksForTheOldest) {
  Set("ToDoEntriesMax", "3");
  Fill("abcd");
  Mark(0);
  Click("Command4");
  EXPECT_TRUE(Boxes().empty());
  Do("answer", "7");
  const int saves = Saves();
  Add("e");
  EXPECT_EQ(Boxes(), std::vector<Box>{kFull});
  EXPECT_EQ(List(), "abcd");
  EXPECT_EQ(Field(), "e");
  EXPECT_EQ(Saves(), saves + 1) << "a No saves too";
  PutIn();
  EXPECT_EQ(Boxes().size(), 1U);
  EXPECT_EQ(Page(), "bcde | Added | Add Entry | ");
  Update(0, "f");
  EXPECT_TRUE(Boxes().empty()) << "an update takes its own row away first";
  EXPECT_EQ(List(), "fcde");
  // With more rows than are allowed it asks, and a No takes nothing away.
  Set("ToDoEntriesMax", "2");
  Do("answer", "7");
  Update(2, "g");
  EXPECT_EQ(Boxes(), std::vector<Box>{kFull});
  EXPECT_EQ(List(), "fcde");
}

TEST_F(ToDoPageTest, DeleteTakesTheSelectedRowRefreshTheMarkedOnes) {
  Fill("abcdef");
  for (const int row : {0, 1, 5}) Mark(row);
  Select(2);
  int saves = Saves();
  Click("Command3");
  EXPECT_EQ(Page(), "a*b*def* | Deleted | Add Entry | ");
  EXPECT_EQ(Saves(), saves + 2) << "the list has lost the focus, and the row is gone";
  Select(2);
  Click("Command5");
  EXPECT_EQ(Page(), "de | Refreshed | Add Entry | ");
  Select(1);
  saves = Saves();
  Click("Command5");
  EXPECT_EQ(Page(), "de | Refreshed | Add Entry | ");
  EXPECT_EQ(Saves(), saves + 2);
  Focus("Command4");
  EXPECT_EQ(Status(), "hidden");
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
  EXPECT_EQ(Marks(), "01");
  Restart();
  EXPECT_EQ(Marks(), "01");
  Set("AutoRefresh", "1");
  Restart();
  EXPECT_EQ(List(), "b");
}

TEST_F(ToDoPageTest, NewEntryLeavesTheListWithReady) {
  Fill("ab");
  Select(1);
  Click("Command4");
  EXPECT_EQ(Page(), "ab | Ready | Add Entry | ");
  EXPECT_FALSE(Is("frmTray.UpDown1", "Enabled"));
  // The field has the focus already: no mark is left behind for a later visit.
  Focus("Text1");
  Click("Command4");
  EXPECT_EQ(Of("Text2", "Text"), "");
}

TEST_F(ToDoPageTest, AClickOnTheStatusOpensTheSettings) {
  EXPECT_TRUE(Fails("click", "frmTray.Label12")) << "hidden";
  EXPECT_FALSE(Is("frmSettings", "Loaded"));
  Focus("Text1");
  Click("Label12");
  EXPECT_TRUE(Is("frmSettings", "Visible"));
}

TEST_F(ToDoPageTest, ARowThatAReloadTookAwayIsAddedAnew) {
  Fill("ab");
  Select(0);
  Enter("Text1", "c");
  Click("Command47");
  Do("click", "frmSettings.Command1");
  EXPECT_EQ(Index(), "-1") << "read again";
  PutIn();
  EXPECT_EQ(Page(), "abc | Added | Add Entry | ");
}

TEST_F(ToDoPageTest, TheFieldAndTheListShowTheirOwnLengths) {
  Fill("ab");
  Select(1);
  Do("type", "frmTray.Text1", "cd");
  EXPECT_EQ(Page(), "a[b] | L: 3 | Update Entry | bcd");
  const int saves = Saves();
  Do("focus", ListName());
  EXPECT_EQ(Page(), "a[b] | L: 1 | Update Entry | bcd");
  SelectNone();
  EXPECT_EQ(Page(), "ab | hidden | Add Entry | bcd");
  EXPECT_FALSE(Is("frmTray.UpDown1", "Enabled"));
  EXPECT_EQ(Saves(), saves);
  OpenPage(0);
  EXPECT_EQ(Saves(), saves + 1) << "the list writes when it loses the focus";
}

TEST_F(ToDoPageTest, MarksByKeyReachTheFileWithTheFocus) {
  Fill("ab");
  Select(1);
  Key("Enter");
  EXPECT_EQ(Marks(), "01");
  Key("Space");
  EXPECT_EQ(Marks(), "00");
  Key("Enter");
  EXPECT_EQ(Stored(), File("TODO", {{"False", "a"}, {"False", "b"}}));
  Focus("Text1");
  EXPECT_EQ(Stored(), File("TODO", {{"False", "a"}, {"True", "b"}}));
}

}  // namespace
}  // namespace quillbox

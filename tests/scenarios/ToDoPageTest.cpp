// The buttons and the field of the ToDo page, and how it is refreshed.
#include "scenarios/ToDoScenario.h"

namespace quillbox {
namespace {

const Box kFull{"68", "Too many ToDo-List entries",
                "Sorry, but you have reached the maximum number of ToDo-List entries. You have to "
                "delete some entries or increase the maximum number of entries before you "
                "proceed.\n\rWould you like to delete the oldest entry now?"};

class ToDoPageTest : public ToDoScenario {};

TEST_F(ToDoPageTest, CaptionsTipsAndStartState) {
  const std::vector<Values> expected{
      {"Command2", "Add Entry", "Add the text above to the ToDo-List"},
      {"Command3", "Delete Entry", "Delete the selected ToDo-List entry"},
      {"Command4", "New Entry", "Clear the text field above for a new entry"},
      {"Command5", "Refresh", "Delete all entries marked \"completed\""},
  };
  for (const Values& button : expected) {
    EXPECT_EQ(Of(button[0], "Caption"), button[1]);
    EXPECT_EQ(Of(button[0], "ToolTipText"), button[2]);
    EXPECT_EQ(Is("frmTray." + button[0], "Enabled"), button[0] != "Command2");
  }
  EXPECT_EQ(Of("UpDown1", "ToolTipText"), "Move ToDo-Entries up or down");
  EXPECT_FALSE(Is("frmTray.UpDown1", "Enabled"));
  EXPECT_EQ(Of("Label12", "ToolTipText"), "Length of ToDo-List entry");
  EXPECT_EQ(Status(), "hidden");
  Do("type", "frmTray.Text1", "a");
  EXPECT_TRUE(Is("frmTray.Command2", "Enabled"));
  EXPECT_EQ(Of("Label12", "ToolTipText"), "") << "the first change of the label empties its tip";
}

TEST_F(ToDoPageTest, AddsByButtonEnterAndDrop) {
  Do("type", "frmTray.Text1", "first\r");
  EXPECT_EQ(List(), Values{"first"});
  EXPECT_EQ(Status(), "Added");
  Add("second");
  EXPECT_EQ(Status(), "Added") << "the focus that comes back to the field leaves the word alone";
  EXPECT_EQ(Of("Text2", "Text"), "");
  EXPECT_EQ(Field(), "");
  EXPECT_FALSE(Is("frmTray.Command2", "Enabled"));
  Do("focus", "frmTray.Command4");
  Do("focus", "frmTray.Text1");
  EXPECT_EQ(Status(), "L: 0") << "the next visit of the field shows its length";

  Select(0);
  Do("drop", kToDoList, "dropped\r\nin\ntwo\rbreaks");
  EXPECT_EQ(List(), (Values{"first", "second", "dropped in two breaks"}));
  EXPECT_EQ(Index(), "-1");
  EXPECT_EQ(Of("Text2", "Text"), "");
  const int writes = ToDoWrites();
  Do("dropother", kToDoList);
  Do("drop", kToDoList, "");
  EXPECT_EQ(List().size(), 3U);
  EXPECT_EQ(Status(), "Ready") << "an empty text leaves a new entry to be typed";

  // Nothing is added and nothing is written without a text.
  Do("type", "frmTray.Text1", "\r");
  EXPECT_TRUE(Fails("click", "frmTray.Command2"));
  EXPECT_EQ(List().size(), 3U);
  EXPECT_EQ(ToDoWrites(), writes);
}

TEST_F(ToDoPageTest, UpdateKeepsThePlaceAndClearsTheMark) {
  Fill({"a", "b", "c"});
  Mark(1);
  EXPECT_EQ(Button(), "Update Entry");
  EXPECT_EQ(Field(), "b");
  Do("settext", "frmTray.Text1", "B");
  EXPECT_EQ(Button(), "Update Entry");
  Do("click", "frmTray.Command2");
  EXPECT_EQ(List(), (Values{"a", "B", "c"})) << "capitals make another text";
  EXPECT_EQ(Marks(), "000");
  EXPECT_EQ(Status(), "Updated");
  EXPECT_EQ(Index(), "-1");
  EXPECT_EQ(Button(), "Add Entry");

  // Updated to what it was: a new row, without the mark.
  Mark(0);
  Do("click", "frmTray.Command2");
  EXPECT_EQ(List(), (Values{"a", "B", "c"}));
  EXPECT_EQ(Marks(), "000");

  // Updated to the text of another row, in front or behind: both go, one stands at the end.
  Mark(2);
  Select(0);
  Do("settext", "frmTray.Text1", "c");
  Do("click", "frmTray.Command2");
  EXPECT_EQ(List(), (Values{"B", "c"}));
  EXPECT_EQ(Marks(), "00");
  Select(1);
  Do("settext", "frmTray.Text1", "B");
  Do("click", "frmTray.Command2");
  EXPECT_EQ(List(), Values{"B"});
}

TEST_F(ToDoPageTest, TheSameTextAgainMovesToTheEndWithoutItsMark) {
  Fill({"a", "b", "c"});
  Mark(0);
  Do("click", "frmTray.Command4");
  Add("a");
  EXPECT_EQ(List(), (Values{"b", "c", "a"}));
  EXPECT_EQ(Marks(), "000");
  EXPECT_EQ(Status(), "Added");

  // Also in a full list, without a question; the last of several counts.
  Do("end");
  Set("ToDoEntriesMax", "2");
  StartOnPage();
  Add("c");
  EXPECT_EQ(List(), (Values{"b", "a", "c"}));
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(ToDoPageTest, AFullListAsksForTheOldest) {
  FillUpTo(50);
  Mark(0);
  Do("click", "frmTray.Command4");
  EXPECT_TRUE(Boxes().empty());
  Do("answer", "7");
  const Values before = List();
  const int writes = ToDoWrites();
  Add("one more");
  EXPECT_EQ(Boxes(), std::vector<Box>{kFull});
  EXPECT_EQ(List(), before);
  EXPECT_EQ(Field(), "one more");
  EXPECT_EQ(ToDoWrites(), writes + 1) << "a No saves too";

  Do("answer", "6");
  Do("click", "frmTray.Command2");
  EXPECT_EQ(Boxes().size(), 1U);
  EXPECT_EQ(List().size(), 50U);
  EXPECT_EQ(List().front(), "task 1");
  EXPECT_EQ(List().back(), "one more");
  EXPECT_EQ(Marks().find('1'), std::string::npos);

  // An update takes its own row away first.
  Select(0);
  Do("settext", "frmTray.Text1", "changed");
  Do("click", "frmTray.Command2");
  EXPECT_TRUE(Boxes().empty());
  EXPECT_EQ(List().front(), "changed");

  // With more rows than are allowed it asks, and a No takes nothing away.
  Set("ToDoEntriesMax", "2");
  Select(7);
  Do("settext", "frmTray.Text1", "changed too");
  Do("answer", "7");
  Do("click", "frmTray.Command2");
  EXPECT_EQ(Boxes(), std::vector<Box>{kFull});
  EXPECT_EQ(List().size(), 50U);
  EXPECT_EQ(List()[7], "task 8");
}

TEST_F(ToDoPageTest, DeleteTakesTheSelectedRowWhateverIsMarked) {
  Fill({"a", "b", "c"});
  Mark(0);
  Select(1);
  const int writes = ToDoWrites();
  Do("click", "frmTray.Command3");
  EXPECT_EQ(List(), (Values{"a", "c"}));
  EXPECT_EQ(Marks(), "10");
  EXPECT_EQ(Field(), "");
  EXPECT_EQ(Button(), "Add Entry");
  EXPECT_EQ(Status(), "Deleted");
  EXPECT_EQ(ToDoWrites(), writes + 2) << "the list has lost the focus, and the row is gone";
  Do("focus", "frmTray.Command4");
  EXPECT_EQ(Status(), "hidden");

  Do("settext", "frmTray.Text1", "typed");
  Do("answer", "7", "6");
  Do("click", "frmTray.Command3");
  EXPECT_EQ(Boxes(), std::vector<Box>{kDeleteAll});
  EXPECT_EQ(List().size(), 2U);
  EXPECT_EQ(Field(), "typed");
  Do("click", "frmTray.Command3");
  EXPECT_TRUE(List().empty());
  EXPECT_EQ(Field(), "");
  EXPECT_EQ(Status(), "Deleted");
  Boxes();
}

TEST_F(ToDoPageTest, RefreshDeletesTheMarkedRows) {
  Fill({"a", "b", "c", "d", "e"});
  for (const int row : {0, 1, 4}) Mark(row);
  Select(2);
  Do("click", "frmTray.Command5");
  EXPECT_EQ(List(), (Values{"c", "d"}));
  EXPECT_EQ(Index(), "-1");
  EXPECT_EQ(Status(), "Refreshed");
  Select(1);
  const int writes = ToDoWrites();
  Do("click", "frmTray.Command5");
  EXPECT_EQ(List(), (Values{"c", "d"}));
  EXPECT_EQ(Index(), "-1");
  EXPECT_EQ(Field(), "");
  EXPECT_EQ(Button(), "Add Entry");
  EXPECT_EQ(ToDoWrites(), writes + 2);
  Do("focus", "frmTray.Command4");
  EXPECT_EQ(Status(), "hidden");
}

TEST_F(ToDoPageTest, MinimizeAndExitRefreshIfSet) {
  Fill({"a", "b", "c"});
  Mark(0);
  Set("AutoRefresh2", "1");
  Do("click", "frmTray.Command6");
  EXPECT_EQ(List(), (Values{"b", "c"}));
  EXPECT_NE(Of("Label12", "Caption"), "Refreshed");
  EXPECT_EQ(Of("Text4", "Text"), "");
  EXPECT_EQ(DataFile("ToDoData.qbx").find("True"), std::string::npos);

  // The close box refreshes nothing; the exit does with its own setting alone.
  Do("tray.mouse", "513");
  Mark(1);
  Do("closebox", "frmTray");
  EXPECT_EQ(Marks(), "01");
  Restart();
  EXPECT_EQ(Marks(), "01");
  Set("AutoRefresh", "1");
  Restart();
  EXPECT_EQ(List(), Values{"b"});
}

TEST_F(ToDoPageTest, NewEntryLeavesTheListWithReady) {
  Fill({"a", "b"});
  Select(1);
  EXPECT_TRUE(Is("frmTray.UpDown1", "Enabled"));
  Do("click", "frmTray.Command4");
  EXPECT_EQ(Index(), "-1");
  EXPECT_EQ(Field(), "");
  EXPECT_EQ(Status(), "Ready");
  EXPECT_EQ(Button(), "Add Entry");
  EXPECT_FALSE(Is("frmTray.UpDown1", "Enabled"));
  // The field has the focus already: no mark is left behind for a later visit.
  Do("focus", "frmTray.Text1");
  Do("click", "frmTray.Command4");
  EXPECT_EQ(Of("Text2", "Text"), "");
}

TEST_F(ToDoPageTest, AClickOnTheStatusOpensTheSettings) {
  EXPECT_FALSE(Is("frmSettings", "Loaded"));
  EXPECT_TRUE(Fails("click", "frmTray.Label12")) << "hidden";
  Do("focus", "frmTray.Text1");
  Do("click", "frmTray.Label12");
  EXPECT_TRUE(Is("frmSettings", "Visible"));
}

TEST_F(ToDoPageTest, ASaveThatFailsIsReportedAndLosesNothing) {
  Fill({"a"});
  Obstruct("ToDoData.qbx");
  Add("b");
  const auto boxes = Boxes();
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_EQ(boxes[0].title, "Quillbox Message");
  EXPECT_EQ(List(), (Values{"a", "b"}));
  Clear("ToDoData.qbx");
  Add("c");
  Restart();
  EXPECT_EQ(List(), (Values{"a", "b", "c"}));
}

TEST_F(ToDoPageTest, ARowThatAReloadTookAwayIsAddedAnew) {
  Fill({"a", "b"});
  Select(0);
  Do("settext", "frmTray.Text1", "changed");
  Do("click", "frmTray.Command47");
  Do("click", "frmSettings.Command1");
  EXPECT_EQ(Index(), "-1") << "read again";
  Do("click", "frmTray.Command2");
  EXPECT_EQ(List(), (Values{"a", "b", "changed"}));
  EXPECT_EQ(Status(), "Added");
  EXPECT_EQ(Button(), "Add Entry");
}

}  // namespace
}  // namespace quillbox

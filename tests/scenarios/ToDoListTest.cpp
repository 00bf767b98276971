// The list of the ToDo page: its keys, its moves, its selection.
#include "scenarios/ToDoScenario.h"

namespace quillbox {
namespace {

const Box kDeleteKey{"36", "Delete selected entries?", "Do you really want to delete the selected entries?"};

class ToDoListTest : public ToDoScenario {};

TEST_F(ToDoListTest, DeleteKeyAsksAsTheSettingSays) {
  Fill({"a", "b"});
  Select(0);
  Do("answer", "7");
  Key("Delete");
  EXPECT_EQ(Boxes(), std::vector<Box>{kDeleteKey});
  EXPECT_EQ(List().size(), 2U);
  Key("Delete");
  EXPECT_EQ(List(), Values{"b"});
  Boxes();
  // The list still has the focus, and no row is current: arrows and Ctrl keys do nothing.
  Do("spin", "frmTray.UpDown1", "down");
  Do("spin", "frmTray.UpDown1", "up");
  for (const std::string key : {"Up", "Down", "Home", "End"}) Key(key, "ctrl");
  EXPECT_EQ(List(), Values{"b"});
  EXPECT_EQ(Index(), "-1");

  Do("answer", "6", "7");
  Key("Delete");
  EXPECT_EQ(Boxes(), (std::vector<Box>{kDeleteKey, kDeleteAll}));
  EXPECT_EQ(List(), Values{"b"});
  Set("AskDelKey", "2");
  Select(0);
  Key("Delete");
  EXPECT_TRUE(List().empty());
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(ToDoListTest, SelectionAndFocusShowLengthAndMode) {
  Fill({"a", "four"});
  Select(1);
  EXPECT_EQ(Status(), "L: 4");
  Do("type", "frmTray.Text1", "teen");
  EXPECT_EQ(Status(), "L: 8");
  EXPECT_EQ(Button(), "Update Entry");
  EXPECT_FALSE(Is("frmTray.UpDown1", "Enabled")) << "the arrows work while the list has the focus";
  const int writes = ToDoWrites();
  Do("focus", kToDoList);
  EXPECT_EQ(Status(), "L: 4") << "the list shows its row, not the field";
  EXPECT_EQ(Field(), "fourteen");
  EXPECT_TRUE(Is("frmTray.UpDown1", "Enabled"));
  Do("select", kToDoList, "");
  EXPECT_EQ(Status(), "hidden");
  EXPECT_EQ(Button(), "Add Entry");
  EXPECT_FALSE(Is("frmTray.UpDown1", "Enabled"));
  EXPECT_EQ(ToDoWrites(), writes);
  Do("tab", "frmTray.SSTab1", "0");
  EXPECT_EQ(ToDoWrites(), writes + 1) << "the list writes when it loses the focus";
}

TEST_F(ToDoListTest, MarksByKeyReachTheFileWithTheFocus) {
  Fill({"a", "b"});
  Select(1);
  Key("Enter");
  EXPECT_EQ(Marks(), "01");
  Key("Space");
  EXPECT_EQ(Marks(), "00");
  Key("Enter");
  EXPECT_EQ(DataFile("ToDoData.qbx").find("True"), std::string::npos);
  Do("focus", "frmTray.Text1");
  EXPECT_NE(DataFile("ToDoData.qbx").find("True\r\nb\r\n"), std::string::npos);
}

TEST_F(ToDoListTest, ArrowsAndKeysMoveTheRowWithItsMark) {
  Fill({"a", "b", "c", "d"});
  Mark(1);
  Do("spin", "frmTray.UpDown1", "down");
  EXPECT_EQ(List(), (Values{"a", "c", "b", "d"}));
  EXPECT_EQ(Marks(), "0010");
  EXPECT_EQ(Index(), "2");
  for (const std::string key : {"Down", "Right"}) Key(key, "ctrl");
  EXPECT_EQ(List(), (Values{"a", "c", "d", "b"})) << "the last row moves no further";
  EXPECT_EQ(Index(), "3");
  for (const std::string key : {"Up", "Left"}) Key(key, "ctrl");
  EXPECT_EQ(List(), (Values{"a", "b", "c", "d"}));
  EXPECT_EQ(Marks(), "0100");
  EXPECT_EQ(Index(), "1");
  EXPECT_EQ(Field(), "b") << "the field shows the moved row";
  Key("End", "ctrl");
  EXPECT_EQ(List(), (Values{"a", "c", "d", "b"}));
  EXPECT_EQ(Marks(), "0001");
  EXPECT_EQ(Index(), "3");
  Key("Home", "ctrl");
  EXPECT_EQ(List(), (Values{"b", "a", "c", "d"}));
  EXPECT_EQ(Marks(), "1000");
  EXPECT_EQ(Index(), "0");

  // At the ends nothing moves and nothing is written.
  const int writes = ToDoWrites();
  Do("spin", "frmTray.UpDown1", "up");
  for (const std::string key : {"Up", "Left", "Home"}) Key(key, "ctrl");
  EXPECT_EQ(ToDoWrites(), writes);
  EXPECT_EQ(Index(), "0");
  // With another modifier, or another key, the row stays where it is.
  Key("Down", "ctrl", "shift");
  Select(3);
  Key("End", "ctrl");
  Key("Up");
  EXPECT_EQ(List(), (Values{"b", "a", "c", "d"}));
  EXPECT_EQ(Marks(), "1000");
}

TEST_F(ToDoListTest, TheListScrollsAlong) {
  FillUpTo(30);
  const auto top = [this] { return Of("List3", "TopIndex"); };
  Select(9);
  EXPECT_EQ(top(), "0");
  Do("spin", "frmTray.UpDown1", "down");
  EXPECT_EQ(top(), "0") << "nine rows below the top row";
  Do("spin", "frmTray.UpDown1", "down");
  EXPECT_EQ(top(), "1") << "ten rows below it";
  for (int i = 0; i < 9; ++i) Do("spin", "frmTray.UpDown1", "up");
  EXPECT_EQ(Index(), "2");
  EXPECT_EQ(top(), "1");
  Do("spin", "frmTray.UpDown1", "up");
  EXPECT_EQ(top(), "0") << "one row below it";
  Key("End", "ctrl");
  EXPECT_EQ(top(), "29");
  Key("Home", "ctrl");
  EXPECT_EQ(top(), "0");
}

}  // namespace
}  // namespace quillbox

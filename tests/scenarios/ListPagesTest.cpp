// What the pages Clip, Pad and ToDo have in common.
#include "scenarios/ListPage.h"

namespace quillbox {
namespace {

class ListPagesTest : public ListPageScenario, public ::testing::WithParamInterface<ListPage> {
 protected:
  ListPagesTest() : ListPageScenario(GetParam()) {}
};

std::string NameOf(const ::testing::TestParamInfo<ListPage>& page) { return page.param.name; }

INSTANTIATE_TEST_SUITE_P(Pages, ListPagesTest, ::testing::Values(kClipPage, kPadPage, kToDoPage), NameOf);

TEST_P(ListPagesTest, DeletesAllWhenAskedTo) {
  Fill("ab");
  SelectNone();
  if (page_.name != "CLIP") Enter(page_.field, "draft");
  const std::string field = Field();
  Do("answer", "7", "6");
  Click(page_.deleteButton);
  EXPECT_EQ(Boxes(), std::vector<Box>{kDeleteAll});
  EXPECT_EQ(List(), "ab");
  EXPECT_EQ(Field(), field);
  Click(page_.deleteButton);
  EXPECT_EQ(List(), "");
  EXPECT_EQ(Field(), "");
  EXPECT_EQ(Status(), "Deleted");
  EXPECT_EQ(Stored(), File(page_.name, {}));
  EXPECT_TRUE(Is("frmTray.Timer1", "Enabled"));
}

TEST_P(ListPagesTest, TheDeleteKeyAsksIfSet) {
  Fill("abcd");
  Select(1);
  Do("answer", "7");
  Key("Delete");
  EXPECT_EQ(Boxes(), std::vector<Box>{kDeleteKey});
  EXPECT_EQ(List(), "abcd");
  Key("Delete");
  EXPECT_EQ(List(), "acd");
  Boxes();
  Do("answer", "6", "7");
  Key("Delete");
  EXPECT_EQ(Boxes(), (std::vector<Box>{kDeleteKey, kDeleteAll})) << "no row is selected any more";
  EXPECT_EQ(List(), "acd");
  Set("AskDelKey", "2");
  Select(1);
  Key("Delete");
  EXPECT_EQ(List(), "ad");
  EXPECT_TRUE(Boxes().empty());
}

TEST_P(ListPagesTest, TheStatusShowsTheLengthOfTheRowWhileTheListHasTheFocus) {
  for (const std::string text : {"ccc", "bb", "ccc"}) Add(text);
  const int row = page_.name == "TODO" ? 0 : 1;  // where the two letters stand
  Select(row);
  EXPECT_EQ(Status(), "L: 2");
  EXPECT_TRUE(page_.arrows.empty() || Is("frmTray." + page_.arrows, "Enabled"));
  Focus("Command6");
  EXPECT_EQ(Status(), "hidden");
  EXPECT_FALSE(!page_.arrows.empty() && Is("frmTray." + page_.arrows, "Enabled"));
  Do("focus", ListName());
  EXPECT_EQ(Status(), "L: 2");
  SelectNone();
  EXPECT_EQ(Status(), "hidden");
  EXPECT_EQ(Index(), "-1");
}

TEST_P(ListPagesTest, ASaveThatFailsIsReportedAndLosesNothing) {
  Fill("ab");
  Obstruct(page_.file);
  Add("c");
  const auto boxes = Boxes();
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_EQ(boxes[0].title, "Quillbox Message");
  const std::string inMemory = List();
  EXPECT_EQ(inMemory.size(), 3U);
  Clear(page_.file);
  Restart();
  EXPECT_EQ(List(), inMemory);
  EXPECT_TRUE(Boxes().empty());
}

class MovingRowsTest : public ListPagesTest {
 protected:
  // The row with its mark, which goes with it.
  void Take(int row) {
    if (page_.name == "TODO") Mark(row);
    Select(row);
  }
};

INSTANTIATE_TEST_SUITE_P(Pages, MovingRowsTest, ::testing::Values(kPadPage, kToDoPage), NameOf);

TEST_P(MovingRowsTest, ArrowsAndCtrlKeysMoveTheCurrentRow) {
  struct Case {
    std::string rows;
    int row;
    std::string way;  // a key, or an arrow
    std::string order;
    int current;
    bool padOnly = false;
  };
  const Case cases[] = {
      {"abcd", 1, "down", "acbd", 2},
      {"abcd", 3, "down", "abcd", 3},
      {"abcd", 2, "up", "acbd", 1},
      {"abcd", 0, "up", "abcd", 0},
      {"abcd", 1, "Down", "acbd", 2},
      {"abcd", 1, "Right", "acbd", 2},
      {"abcd", 2, "Up", "acbd", 1},
      {"abcd", 2, "Left", "acbd", 1},
      {"abcd", 3, "Down", "abcd", 3},
      {"abcd", 0, "Up", "abcd", 0},
      {"abcd", 2, "Home", "cabd", 0},
      {"abcd", 0, "Home", "abcd", 0},
      {"abcd", 1, "End", "acdb", 3},
      {"abcd", 3, "End", "abcd", 3},
      {"abcde", 2, "PageDown", "abdec", 4, true},
      {"abcdefghij", 1, "PageDown", "acdefghibj", 8, true},
      {"abcdefghij", 9, "PageUp", "abjcdefghi", 2, true},
      {"abcdefghij", 4, "PageUp", "eabcdfghij", 0, true},
  };
  for (const Case& c : cases) {
    if (c.padOnly && page_.name != "PAD") continue;
    SCOPED_TRACE(c.way + " on " + std::to_string(c.row));
    Empty();
    Fill(c.rows);
    Take(c.row);
    const int saves = Saves();
    const bool byArrow = std::islower(c.way[0]);
    if (byArrow) {
      Spin(c.way);
    } else {
      Key(c.way, "ctrl", "shift");  // moves the selection at most
      Select(c.row);
      ASSERT_EQ(List(), c.rows);
      Key(c.way, "ctrl");
    }
    EXPECT_EQ(List(), c.order);
    EXPECT_EQ(Index(), std::to_string(c.current));
    // The page keys leave the mark where the row stood.
    const auto marked = static_cast<std::size_t>(c.padOnly ? c.row : c.current);
    std::string marks(c.rows.size(), '0');
    marks[marked] = '1';
    EXPECT_EQ(Marks(), marks);
    EXPECT_EQ(Capitals(Field()), Capitals(c.order.substr(marked, 1)));
    EXPECT_EQ(Saves(), saves + (c.order == c.rows ? 0 : 1));
  }
}

TEST_P(MovingRowsTest, TheListScrollsAlong) {
  const int low = page_.name == "PAD" ? 6 : 10;  // rows below the top one
  Fill("abcdefghijklmnopqrst");
  Select(low - 1);
  for (const std::string top : {"0", "1", "2"}) {
    Spin("down");
    EXPECT_EQ(Top(), top);
  }
  for (int row = low + 2; row > 3; --row) {
    Spin("up");
    EXPECT_EQ(Top(), "2");
  }
  for (const std::string top : {"1", "0", "0"}) {
    Spin("up");
    EXPECT_EQ(Top(), top);
  }
  EXPECT_EQ(Index(), "0");
  Key("End", "ctrl");
  EXPECT_EQ(Top(), "19");
  Key("Home", "ctrl");
  EXPECT_EQ(Top(), "0");
}

TEST_P(MovingRowsTest, NoRowIsMovedWhenNoneIsCurrent) {
  Fill("abc");
  Select(1);
  Key("Delete");
  ASSERT_EQ(Index(), "-1");
  const int saves = Saves();
  for (const std::string key : {"Up", "Down", "Home", "End", "PageUp", "PageDown"}) Key(key, "ctrl");
  if (Is("frmTray." + page_.arrows, "Enabled")) {
    Spin("up");
    Spin("down");
  }
  EXPECT_EQ(List(), "ac");
  EXPECT_EQ(Saves(), saves);
}

}  // namespace
}  // namespace quillbox

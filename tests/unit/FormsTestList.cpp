#include "platform/forms/ListBox.h"
#include "unit/FormsFixture.h"

namespace quillbox {
namespace {

class FormsList : public FormsFixture {
 protected:
  FormsList() {
    for (const char16_t* text : {u"a", u"b", u"c", u"d", u"e", u"f"}) {
      list.AddItem(text);
      marks.AddItem(text);
    }
    list.Click = Count();
    marks.Click = Count();
    marks.ItemCheck = [this](int row) { checked.push_back(row); };
  }

  // A digit a row, 1 for selected.
  static std::string Selection(const ListBox& of) {
    std::string rows;
    for (int row = 0; row < of.GetListCount(); ++row) rows += of.GetSelected(row) ? '1' : '0';
    return rows;
  }

  ListBox list{form, "list", ListBox::Kind::ExtendedSelection, 3};
  ListBox marks{form, "marks", ListBox::Kind::CheckBoxes, 3};
  std::vector<int> checked;
};

TEST_F(FormsList, EventsComeOnlyWithARealChange) {
  list.SetListIndex(2);
  list.SetListIndex(2);
  EXPECT_EQ(Take(), 1);
  list.SetSelected(3, true);
  list.SetSelected(3, true);
  EXPECT_EQ(Take(), 1);
  marks.SetSelected(4, true);
  marks.SetSelected(4, true);
  EXPECT_EQ(checked, std::vector{4});
  EXPECT_EQ(Take(), 0) << "a check mark is no click";
}

TEST_F(FormsList, TheCurrentRowMovesAlongWithoutEvents) {
  list.SetListIndex(2);
  list.SetSelected(2, true);
  Take();
  list.AddItem(u"x", 2);
  EXPECT_EQ(list.GetListIndex(), 3);
  EXPECT_EQ(Selection(list), "0001000");
  list.AddItem(u"y", 4);
  list.RemoveItem(0);
  EXPECT_EQ(list.GetListIndex(), 2);
  list.RemoveItem(2);
  EXPECT_EQ(list.GetListIndex(), -1);
  EXPECT_EQ(Selection(list), "000000");
  EXPECT_EQ(Take(), 0);
}

TEST_F(FormsList, ARowThatIsNotThereIsAFailure) {
  const std::function<void()> failing[] = {
      [&] { list.SetListIndex(6); },       [&] { list.SetListIndex(-2); }, [&] { list.GetList(-1); },
      [&] { list.GetSelected(6); },        [&] { list.RemoveItem(6); },    [&] { list.AddItem(u"x", 7); },
      [&] { list.SetSelected(6, false); },
  };
  for (const auto& statement : failing) EXPECT_THROW(statement(), RuntimeError) << &statement - failing;
  EXPECT_EQ(list.GetListCount(), 6);
  list.AddItem(u"x", 6);
  EXPECT_EQ(list.GetListCount(), 7);
}

TEST_F(FormsList, ClicksOfThePersonClickOnce) {
  list.PersonSelect(1);
  EXPECT_EQ(Take(), 1);
  EXPECT_EQ(Selection(list), "010000");
  list.PersonSelect(1);
  EXPECT_EQ(Take(), 0);
  list.PersonSelect(4, true);
  EXPECT_EQ(Selection(list), "010010");
  list.PersonSelect(4, true);
  EXPECT_EQ(Selection(list), "010000") << "a Ctrl-click takes back what one gave";
  EXPECT_EQ(list.GetListIndex(), 4);
  EXPECT_EQ(Take(), 2);
  list.PersonSelect(2, false, true);
  EXPECT_EQ(Selection(list), "001110") << "Shift selects from the row of the last click on";
  list.PersonSelectNone();
  EXPECT_EQ(Selection(list), "000000");
  EXPECT_EQ(list.GetListIndex(), -1);
}

TEST_F(FormsList, KeysMoveTheCurrentRowAndTheSelection) {
  Press(list, keys::kUp, true);
  EXPECT_EQ(list.GetListIndex(), -1) << "with Ctrl there must be a current row";
  Press(list, keys::kDown);
  EXPECT_EQ(list.GetListIndex(), 0);
  Press(list, keys::kPageDown);
  EXPECT_EQ(Selection(list), "001000") << "a page is one row less than the list shows";
  Take();
  Press(list, keys::kDown, false, true);
  Press(list, keys::kDown, false, true);
  EXPECT_EQ(Selection(list), "001110");
  Press(list, keys::kUp, false, true);
  EXPECT_EQ(Selection(list), "001100");
  EXPECT_EQ(Take(), 3);
  Press(list, keys::kEnd, true);
  EXPECT_EQ(list.GetListIndex(), 5);
  EXPECT_EQ(Selection(list), "001100") << "with Ctrl the selection stays";
  Press(list, keys::kEnd);
  EXPECT_EQ(Selection(list), "000001");
  Take();
  Press(list, keys::kDown);
  EXPECT_EQ(Take(), 0) << "there is no way on";
  Press(list, keys::kHome);
  EXPECT_EQ(list.GetTopIndex(), 0);
  Press(list, keys::kPageDown);
  Press(list, keys::kPageDown);
  EXPECT_EQ(list.GetTopIndex(), 2) << "the list scrolls until the row is seen";
}

TEST_F(FormsList, AHandlerMayTakeAKeyOrMakeAnotherOfIt) {
  int released = 0;
  list.PersonSelect(3);
  list.KeyDown = [](KeyEvent& key) { key.code = key.code == keys::kDelete ? 0 : keys::kHome; };
  list.KeyUp = [&](KeyEvent& key) { released = key.code; };
  Press(list, keys::kDelete);
  EXPECT_EQ(list.GetListIndex(), 3);
  EXPECT_EQ(released, keys::kDelete);
  Press(list, keys::kDown);
  EXPECT_EQ(list.GetListIndex(), 0);
}

TEST_F(FormsList, CheckMarks) {
  marks.PersonCheck(2, true);
  EXPECT_EQ(marks.GetListIndex(), 2) << "a click into a check box makes its row current";
  EXPECT_EQ(Take(), 1);
  marks.PersonSelect(4);
  EXPECT_EQ(Selection(marks), "001000") << "a click on a row marks nothing";
  Press(marks, keys::kSpace);
  EXPECT_EQ(Selection(marks), "001010");
  Press(marks, keys::kSpace);
  EXPECT_EQ(Selection(marks), "001000");
  EXPECT_EQ(checked, (std::vector{2, 4, 4}));
}

TEST_F(FormsList, DraggedText) {
  list.PersonSelect(0);
  list.PersonSelect(2, true);
  EXPECT_EQ(list.PersonStartDrag(), u"a\r\nc");
  list.OLEStartDrag = [](Text& data) { data = u"own"; };
  EXPECT_EQ(list.PersonStartDrag(), u"own");
  marks.PersonSelect(1);
  EXPECT_EQ(marks.PersonStartDrag(), u"b");
}

// The focus handlers may take rows away before the click arrives.
TEST_F(FormsList, AClickOnARowThatGoesMeanwhileDoesNothing) {
  list.GotFocus = [this] { list.Clear(); };
  list.PersonDoubleClick(5);
  EXPECT_EQ(list.GetListCount(), 0);
  EXPECT_EQ(list.GetListIndex(), -1);
  EXPECT_EQ(Take(), 0);
}

}  // namespace
}  // namespace quillbox

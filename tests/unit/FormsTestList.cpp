#include <gtest/gtest.h>

#include "platform/RuntimeError.h"
#include "platform/forms/Dispatcher.h"
#include "platform/forms/Form.h"
#include "platform/forms/ListBox.h"

namespace quillbox {
namespace {

class FormsList : public ::testing::Test {
 protected:
  FormsList() {
    form.SetActivates(false);
    form.Show();
    for (const char16_t* text : {u"a", u"b", u"c", u"d", u"e", u"f"}) {
      list.AddItem(text);
      marks.AddItem(text);
    }
    list.Click = [this] { ++clicks; };
    marks.Click = [this] { ++clicks; };
    marks.ItemCheck = [this](int row) {
      ++checks;
      checkedRow = row;
    };
  }

  // A digit a row, 1 for selected.
  static std::string Selection(const ListBox& of) {
    std::string rows;
    for (int row = 0; row < of.GetListCount(); ++row) rows += of.GetSelected(row) ? '1' : '0';
    return rows;
  }
  void Press(ListBox& on, int code, bool ctrl = false, bool shift = false) {
    KeyEvent key;
    key.code = code;
    key.ctrl = ctrl;
    key.shift = shift;
    on.PersonKey(key);
  }
  int TakeClicks() { return std::exchange(clicks, 0); }

  Dispatcher dispatcher;
  Form form{dispatcher, "form", u"Form"};
  ListBox list{form, "list", ListBox::Kind::ExtendedSelection, 3};
  ListBox marks{form, "marks", ListBox::Kind::CheckBoxes, 3};
  int clicks = 0;
  int checks = 0;
  int checkedRow = -1;
};

TEST_F(FormsList, EventsComeOnlyWithARealChange) {
  list.SetListIndex(2);
  list.SetListIndex(2);
  EXPECT_EQ(TakeClicks(), 1);
  list.SetSelected(3, true);
  list.SetSelected(3, true);
  EXPECT_EQ(TakeClicks(), 1);
  marks.SetSelected(4, true);
  marks.SetSelected(4, true);
  EXPECT_EQ(checks, 1);
  EXPECT_EQ(checkedRow, 4);
  EXPECT_EQ(TakeClicks(), 0) << "a check mark is no click";
}

TEST_F(FormsList, TheCurrentRowMovesAlongWithoutEvents) {
  list.SetListIndex(2);
  list.SetSelected(2, true);
  TakeClicks();
  list.AddItem(u"x", 2);
  EXPECT_EQ(list.GetListIndex(), 3);
  EXPECT_EQ(Selection(list), "0001000");
  list.AddItem(u"y", 4);
  list.RemoveItem(0);
  EXPECT_EQ(list.GetListIndex(), 2);
  list.RemoveItem(2);
  EXPECT_EQ(list.GetListIndex(), -1);
  EXPECT_EQ(Selection(list), "000000");
  EXPECT_EQ(TakeClicks(), 0);
}

TEST_F(FormsList, ARowThatIsNotThereIsAFailure) {
  const auto fails = [](auto&& statement) {
    try {
      statement();
    } catch (const RuntimeError& failure) {
      return failure.Number();
    }
    return 0;
  };
  EXPECT_EQ(fails([&] { list.SetListIndex(6); }), errors::kBadIndex);
  EXPECT_EQ(fails([&] { list.SetListIndex(-2); }), errors::kBadIndex);
  EXPECT_EQ(fails([&] { list.GetList(-1); }), errors::kBadIndex);
  EXPECT_EQ(fails([&] { list.GetSelected(6); }), errors::kBadIndex);
  EXPECT_EQ(fails([&] { list.SetSelected(6, false); }), errors::kBadIndex);
  EXPECT_EQ(fails([&] { list.RemoveItem(6); }), errors::kBadIndex);
  EXPECT_NE(fails([&] { list.AddItem(u"x", 7); }), 0);
  EXPECT_EQ(list.GetListCount(), 6);
  EXPECT_EQ(fails([&] { list.AddItem(u"x", 6); }), 0);
}

TEST_F(FormsList, ClicksOfThePersonClickOnce) {
  list.PersonSelect(1);
  EXPECT_EQ(TakeClicks(), 1);
  EXPECT_EQ(Selection(list), "010000");
  list.PersonSelect(1);
  EXPECT_EQ(TakeClicks(), 0);
  list.PersonSelect(4, true);
  EXPECT_EQ(Selection(list), "010010");
  list.PersonSelect(4, true);
  EXPECT_EQ(Selection(list), "010000") << "a Ctrl-click takes back what one gave";
  EXPECT_EQ(list.GetListIndex(), 4);
  EXPECT_EQ(TakeClicks(), 2);
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
  EXPECT_EQ(list.GetListIndex(), 2) << "a page is one row less than the list shows";
  EXPECT_EQ(Selection(list), "001000");
  TakeClicks();
  Press(list, keys::kDown, false, true);
  Press(list, keys::kDown, false, true);
  EXPECT_EQ(Selection(list), "001110");
  Press(list, keys::kUp, false, true);
  EXPECT_EQ(Selection(list), "001100");
  EXPECT_EQ(TakeClicks(), 3);
  Press(list, keys::kEnd, true);
  EXPECT_EQ(list.GetListIndex(), 5);
  EXPECT_EQ(Selection(list), "001100") << "with Ctrl the selection stays";
  Press(list, keys::kEnd);
  EXPECT_EQ(Selection(list), "000001");
  TakeClicks();
  Press(list, keys::kDown);
  EXPECT_EQ(TakeClicks(), 0) << "there is no way on";
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
  EXPECT_EQ(checks, 1);
  EXPECT_EQ(TakeClicks(), 1);
  marks.PersonSelect(4);
  EXPECT_EQ(Selection(marks), "001000") << "a click on a row marks nothing";
  Press(marks, keys::kSpace);
  EXPECT_EQ(Selection(marks), "001010");
  Press(marks, keys::kSpace);
  EXPECT_EQ(Selection(marks), "001000");
  EXPECT_EQ(checks, 3);
}

// The focus handlers may take rows away before the click arrives.
TEST_F(FormsList, AClickOnARowThatGoesMeanwhileDoesNothing) {
  list.GotFocus = [this] { list.Clear(); };
  list.PersonDoubleClick(5);
  EXPECT_EQ(list.GetListCount(), 0);
  EXPECT_EQ(list.GetListIndex(), -1);
  EXPECT_EQ(TakeClicks(), 0);
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

}  // namespace
}  // namespace quillbox

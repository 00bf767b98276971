// Which events the controls, forms and timers raise, and what fails. How they look to a person is said as
// rules.
#include "memory/VirtualTimers.h"
#include "platform/forms/CheckBox.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/ListBox.h"
#include "platform/forms/OptionButton.h"
#include "platform/forms/ScrollBar.h"
#include "platform/forms/TabControl.h"
#include "platform/forms/Timer.h"
#include "unit/FormsFixture.h"

namespace quillbox {
namespace {

class FormsEvents : public FormsFixture {
 protected:
  FormsEvents() {
    dispatcher.UseTimerHost(&timers);
    for (const char16_t* text : {u"a", u"b", u"c", u"d", u"e", u"f"}) list.AddItem(text);
    list.Click = Count();
  }
  // A digit a row, 1 for selected.
  std::string Selection() const {
    std::string rows;
    for (int row = 0; row < list.GetListCount(); ++row) rows += list.GetSelected(row) ? '1' : '0';
    return rows;
  }

  MemoryClock clock;
  VirtualTimers timers{clock};
  ListBox list{form, "list", ListBox::Kind::ExtendedSelection, 3};
  TextBox line{form, "line", TextBox::Lines::One};
  TextBox block{form, "block", TextBox::Lines::Many};
};

TEST_F(FormsEvents, ComeOnlyWithARealChangeWhoeverMakesIt) {
  OptionGroup group;
  OptionButton one(form, "one", u"1", group, true);
  OptionButton two(form, "two", u"2", group);
  CheckBox check(form, "check", u"Check");
  ComboBox box(form, "box", {u"a", u"b"});
  ScrollBar bar(form, "bar", 3, 100);
  Label label(form, "label");
  ListBox marks(form, "marks", ListBox::Kind::CheckBoxes, 3);
  marks.AddItem(u"a");
  std::vector<int> checked;
  marks.ItemCheck = [&](int row) { checked.push_back(row); };
  one.Click = Count();
  check.Click = Count();
  box.Click = Count();
  marks.Click = Count();
  two.Click = [&] { events += one.GetValue() ? 100 : 1; };  // the others are deselected by then
  bar.Change = Count();
  line.Change = Count();
  label.Change = Count();
  const struct {
    std::function<void()> change;
    int events;
  } cases[] = {
      {[&] { two.PersonClick(); }, 1},
      {[&] { two.PersonClick(); }, 0},
      {[&] { one.SetValue(true); }, 1},
      {[&] { one.SetValue(false); }, 0},
      {[&] { check.SetValue(false); }, 0},
      {[&] { check.SetValue(true); }, 1},
      {[&] { check.PersonClick(); }, 1},
      {[&] { box.SetListIndex(1); }, 1},
      {[&] { box.PersonChoose(1); }, 0},
      {[&] { bar.SetValue(0); }, 0},
      {[&] { bar.PersonScroll(1000); }, 1},
      {[&] { line.SetText(u"ab"); }, 1},
      {[&] { line.PersonSetText(u"ab"); }, 0},
      {[&] { line.PersonSetText(u"abc"); }, 1},
      {[&] { label.SetCaption(u"x"); }, 1},
      {[&] { label.SetCaption(u"x"); }, 0},
      {[&] { list.SetListIndex(2); }, 1},
      {[&] { list.SetListIndex(2); }, 0},
      {[&] { list.SetSelected(3, true); }, 1},
      {[&] { list.SetSelected(3, true); }, 0},
      {[&] { marks.SetSelected(0, true); }, 0},
      {[&] { marks.SetSelected(0, true); }, 0},
      {[&] { list.PersonSelect(1); }, 1},
      {[&] { list.PersonSelect(1); }, 0},
      {[&] { list.PersonSelect(4, true); }, 1},
      {[&] { list.PersonSelect(4, true); }, 1},
      {[&] { Press(list, keys::kEnd, true); }, 1},
      {[&] { Press(list, keys::kDown); }, 1},
      {[&] { Press(list, keys::kDown); }, 0},
  };
  for (const auto& each : cases) {
    each.change();
    EXPECT_EQ(Take(), each.events) << "case " << &each - cases;
  }
  EXPECT_EQ(checked, std::vector{0});
}

TEST_F(FormsEvents, RowsComeAndGoWithoutThem) {
  list.SetListIndex(2);
  list.SetSelected(2, true);
  Take();
  list.AddItem(u"x", 2);
  EXPECT_EQ(list.GetListIndex(), 3);
  EXPECT_EQ(Selection(), "0001000");
  list.AddItem(u"y", 4);
  list.RemoveItem(0);
  EXPECT_EQ(list.GetListIndex(), 2);
  list.RemoveItem(2);
  EXPECT_EQ(list.GetListIndex(), -1);
  EXPECT_EQ(Selection(), "000000");
  EXPECT_EQ(Take(), 0);
  // The focus handlers may take rows away before a click arrives.
  list.GotFocus = [this] { list.Clear(); };
  list.PersonDoubleClick(5);
  EXPECT_EQ(list.GetListIndex(), -1);
  EXPECT_EQ(Take(), 0);
}

TEST_F(FormsEvents, WhatIsNotThereIsAFailure) {
  ComboBox box(form, "box", {u"a", u"b"});
  TabControl tabs(form, "tabs", {u"A", u"B"});
  const std::function<void()> failing[] = {
      [&] { list.SetListIndex(6); },       [&] { list.SetListIndex(-2); }, [&] { list.GetList(-1); },
      [&] { list.GetSelected(6); },        [&] { list.RemoveItem(6); },    [&] { list.AddItem(u"x", 7); },
      [&] { list.SetSelected(6, false); }, [&] { box.SetListIndex(2); },   [&] { tabs.SetTab(2); },
  };
  for (const auto& statement : failing) EXPECT_THROW(statement(), RuntimeError) << &statement - failing;
  EXPECT_EQ(list.GetListCount(), 6);
}

TEST_F(FormsEvents, AHandlerMayTakeAKeyOrMakeAnotherOfIt) {
  int released = 0;
  list.PersonSelect(3);
  list.KeyDown = [](KeyEvent& key) { key.code = key.code == keys::kDelete ? 0 : keys::kHome; };
  list.KeyUp = [&](KeyEvent& key) { released = key.code; };
  Press(list, keys::kDelete);
  EXPECT_EQ(list.GetListIndex(), 3);
  EXPECT_EQ(released, keys::kDelete);
  Press(list, keys::kDown);
  EXPECT_EQ(list.GetListIndex(), 0);
  EXPECT_EQ(Take(), 2);
  CommandButton button(form, "button", u"Button");
  button.Click = Count();
  form.SetDefaultButton(&button);
  Type(block, u"\r");
  EXPECT_EQ(Take(), 0);
  Type(line, u"\r");
  EXPECT_EQ(Take(), 1) << "a field of one line leaves Enter to the default button";
  line.KeyPress = [](char16_t& character) { character = character == u'-' ? u'+' : 0; };
  Type(line, u"-x\r");
  EXPECT_EQ(line.GetText(), u"+");
  EXPECT_EQ(Take(), 0) << "an Enter that was taken away reaches nobody";
  DragData seen;
  block.OLEDragDrop = [&](const DragData& data) { seen = data; };
  block.PersonDrop(u"own");
  EXPECT_EQ(seen, u"own");
  EXPECT_EQ(block.GetText(), u"\n") << "a handler of drops does it all";
  list.SetSelected(2, true);
  EXPECT_EQ(Take(), 1);
  EXPECT_EQ(list.PersonStartDrag(), u"a\r\nc");
  list.OLEStartDrag = [](Text& data) { data = u"own"; };
  EXPECT_EQ(list.PersonStartDrag(), u"own");
  button.SetEnabled(false);
  form.SetCancelButton(&button);
  Press(line, keys::kEscape);
  EXPECT_EQ(Take(), 0);
}

TEST_F(FormsEvents, ALimitHoldsForThePersonAloneAndCutsNoPair) {
  line.SetMaxLength(4);
  line.SetText(u"123456");
  EXPECT_EQ(line.GetText(), u"123456");
  line.PersonSetText(u"123456");
  Type(line, u"5");
  EXPECT_EQ(line.GetText(), u"1234");
  line.Select(0, 4);
  Type(line, u"9");
  EXPECT_EQ(line.GetText(), u"9") << "what is replaced makes room";
  line.PersonSetText(u"abc\U0001F600");
  Type(line, u"\U0001F600");
  EXPECT_EQ(line.GetText(), u"abc") << "there is room for one unit";
  Type(line, u"d");
  EXPECT_EQ(line.GetText(), u"abcd");
  // Whatever is put in the middle, nothing behind it is lost.
  line.SetText(u"aaEND");
  line.PersonEdit(u"abbaEND", 3);
  EXPECT_EQ(line.GetText(), u"aaEND");
}

TEST_F(FormsEvents, OfLoadingResizingAndClosing) {
  Form dialog(dispatcher, "dialog", u"Dialog");
  dialog.LoadHandler = Count();
  dialog.Load();
  dialog.Show();
  EXPECT_EQ(Take(), 1) << "a loaded form stays as it is";
  dialog.Resize = Count();
  dialog.SetWindowState(WindowState::Minimized);
  dialog.SetWindowState(WindowState::Minimized);
  dialog.SetSize(100, 200);
  dialog.SetSize(100, 200);
  dialog.Move(1, 2);
  EXPECT_EQ(Take(), 2);
  CloseReason seen = CloseReason::Code;
  bool refuse = true;
  dialog.QueryUnload = [&](bool& cancel, CloseReason reason) {
    seen = reason;
    cancel = refuse;
  };
  dialog.UnloadHandler = Count();
  dialog.PersonClose();
  EXPECT_EQ(seen, CloseReason::Person);
  EXPECT_TRUE(dialog.GetLoaded());
  refuse = false;
  EXPECT_TRUE(dialog.Close(CloseReason::System));
  EXPECT_EQ(seen, CloseReason::System);
  dialog.Unload();
  EXPECT_EQ(Take(), 1);
  EXPECT_FALSE(dialog.GetVisible());
}

TEST_F(FormsEvents, OfATimer) {
  Timer timer(form, "timer", 250, false);
  timer.Tick = Count();
  const auto after = [&](int milliseconds) {
    timers.Advance(milliseconds);
    return Take();
  };
  EXPECT_EQ(after(1000), 0);
  timer.SetEnabled(true);
  EXPECT_EQ(after(200), 0);
  timer.SetEnabled(true);
  EXPECT_EQ(after(50), 1) << "enabling an enabled one changes nothing";
  EXPECT_EQ(after(200), 0);
  timer.SetEnabled(false);
  timer.SetEnabled(true);
  EXPECT_EQ(after(249), 0) << "starting begins a whole period";
  EXPECT_EQ(after(1), 1);
  timer.Tick = nullptr;
  timer.Tick = [&] {
    ++events;
    EXPECT_TRUE(timer.Ticking());
    dispatcher.WhileWaiting([&] { timer.Fire(); });
    throw RuntimeError(errors::kClipboardBusy, "busy");
  };
  EXPECT_EQ(after(500), 2) << "a tick never overlaps itself, and a failed one is followed by the next";
  EXPECT_FALSE(timer.Ticking());
  timer.Tick = nullptr;
  timer.Tick = [&] {
    ++events;
    timer.SetEnabled(false);
  };
  EXPECT_EQ(after(1000), 1);
}

}  // namespace
}  // namespace quillbox

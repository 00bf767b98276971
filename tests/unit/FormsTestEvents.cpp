// Which events the controls, forms and timers raise, and what fails. How they look to a person is said as
// rules.
#include <functional>
#include <utility>

#include "base/RuntimeError.h"
#include "platform/forms/CheckBox.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/OptionButton.h"
#include "platform/forms/ScrollBar.h"
#include "platform/forms/TabControl.h"
#include "platform/forms/Timer.h"
#include "unit/FormsFixture.h"

namespace quillbox {
namespace {

TEST_F(Forms, EventsComeOnlyWithARealChangeWhoeverMakesIt) {
  OptionGroup group;
  OptionButton one(form, "one", u"1", group, true);
  OptionButton two(form, "two", u"2", group);
  CheckBox check(form, "check", u"Check");
  ComboBox box(form, "box", {u"a", u"b"});
  ScrollBar bar(form, "bar", 3, 100);
  ListBox marks(form, "marks", ListBox::Kind::CheckBoxes, 3);
  marks.AddItem(u"a");
  for (Event<>* event :
       {&one.Click, &check.Click, &box.Click, &marks.Click, &bar.Change, &line.Change, &label.Change})
    *event = Count();
  marks.ItemCheck = [&](int row) { events += 10 + row; };
  two.Click = [&] { events += one.GetValue() ? 100 : 1; };  // the others are deselected by then
  // The first time there is an event, the second time none.
  const std::function<void()> changes[] = {
      [&] { two.PersonClick(); },          [&] { one.SetValue(true); },     [&] { check.SetValue(true); },
      [&] { box.SetListIndex(1); },        [&] { bar.PersonScroll(1000); }, [&] { line.SetText(u"ab"); },
      [&] { line.PersonSetText(u"abc"); }, [&] { label.SetCaption(u"x"); }, [&] { list.SetListIndex(2); },
      [&] { list.SetSelected(3, true); },  [&] { list.PersonSelect(1); },
  };
  for (const auto& change : changes) {
    change();
    EXPECT_EQ(Take(), 1) << "change " << &change - changes;
    change();
    EXPECT_EQ(Take(), 0) << "change " << &change - changes;
  }
  one.SetValue(false);
  box.PersonChoose(1);
  bar.SetValue(100);
  EXPECT_EQ(Take(), 0);
  check.PersonClick();
  EXPECT_EQ(Take(), 1);
  list.PersonSelect(4, true);
  list.PersonSelect(4, true);
  EXPECT_EQ(Take(), 2);
  Press(list, keys::kEnd, true);
  EXPECT_EQ(Take(), 1);
  Press(list, keys::kDown);
  EXPECT_EQ(Take(), 1);
  Press(list, keys::kDown);
  EXPECT_EQ(Take(), 0) << "it is the last row";
  marks.SetSelected(0, true);
  marks.SetSelected(0, true);
  EXPECT_EQ(Take(), 10);
}

TEST_F(Forms, RowsComeAndGoWithoutEventsAndOnesThatAreNotThereFail) {
  list.SetListIndex(2);
  list.SetSelected(2, true);
  Take();
  list.AddItem(u"x", 2);
  EXPECT_EQ(Rows(), "3 0001000");
  list.AddItem(u"y", 4);
  list.RemoveItem(0);
  EXPECT_EQ(Rows(), "2 0010000");
  list.RemoveItem(2);
  EXPECT_EQ(Rows(), "-1 000000");
  ComboBox box(form, "box", {u"a", u"b"});
  TabControl tabs(form, "tabs", {u"A", u"B"});
  const std::function<void()> failing[] = {
      [&] { list.SetListIndex(6); },       [&] { list.SetListIndex(-2); }, [&] { list.GetList(-1); },
      [&] { list.GetSelected(6); },        [&] { list.RemoveItem(6); },    [&] { list.AddItem(u"x", 7); },
      [&] { list.SetSelected(6, false); }, [&] { box.SetListIndex(2); },   [&] { tabs.SetTab(2); },
  };
  for (const auto& statement : failing) EXPECT_THROW(statement(), RuntimeError) << &statement - failing;
  // The focus handlers may take rows away before a click arrives.
  Instead(list.GotFocus, [this] { list.Clear(); });
  list.PersonDoubleClick(5);
  EXPECT_EQ(Rows(), "-1 ");
  EXPECT_EQ(Take(), 0);
}

TEST_F(Forms, AHandlerMayTakeAKeyOrMakeAnotherOfIt) {
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

TEST_F(Forms, ALimitOfAFieldHoldsForThePersonAloneAndCutsNoPair) {
  line.SetMaxLength(4);
  line.SetText(u"123456");
  const std::pair<std::function<void()>, const char16_t*> steps[] = {
      {[] {}, u"123456"},
      {[this] { line.PersonSetText(u"123456"); }, u"1234"},
      {[this] { Type(line, u"5"); }, u"1234"},
      {[this] {
         line.Select(0, 4);
         Type(line, u"9");
       },
       u"9"},  // what is replaced makes room
      {[this] {
         line.PersonSetText(u"abc\U0001F600");
         Type(line, u"\U0001F600");
       },
       u"abc"},
      {[this] { Type(line, u"d"); }, u"abcd"},
      // Whatever is put in the middle, nothing behind it is lost.
      {[this] {
         line.SetText(u"aaEND");
         line.PersonEdit(u"abbaEND", 3);
       },
       u"aaEND"},
  };
  for (const auto& each : steps) {
    each.first();
    EXPECT_EQ(line.GetText(), each.second) << "step " << &each - steps;
  }
}

TEST_F(Forms, LoadResizeAndClose) {
  Form dialog(dispatcher, "dialog", u"Dialog");
  TextBox field(dialog, "field", TextBox::Lines::One);
  Record(field);
  line.PersonFocus();
  TakeLog();
  dialog.LoadHandler = Count();
  dialog.Show();
  EXPECT_EQ(Take(), 1);
  dialog.Load();
  dialog.Show();
  EXPECT_EQ(Take(), 0) << "a loaded form stays as it is";
  EXPECT_EQ(TakeLog(), "from line, to field");
  dialog.Resize = Count();
  for (int twice = 0; twice < 2; ++twice) {
    dialog.SetWindowState(WindowState::Minimized);
    dialog.SetSize(100, 200);
  }
  dialog.Move(1, 2);
  EXPECT_EQ(Take(), 2);
  bool refuse = true;
  dialog.QueryUnload = [&](bool& cancel, CloseReason reason) {
    log += reason == CloseReason::Person ? "person" : reason == CloseReason::System ? "system" : "code";
    cancel = refuse;
  };
  dialog.UnloadHandler = Count();
  dialog.PersonClose();
  EXPECT_TRUE(dialog.GetLoaded());
  refuse = false;
  EXPECT_TRUE(dialog.Close(CloseReason::System));
  dialog.Unload();
  EXPECT_EQ(TakeLog(), "personsystem");
  EXPECT_EQ(Take(), 1);
  EXPECT_FALSE(dialog.GetVisible());
  EXPECT_EQ(dispatcher.Focused(), nullptr);
  block.PersonFocus();
  EXPECT_EQ(TakeLog(), "to block");
}

TEST_F(Forms, ATimer) {
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
  Instead(timer.Tick, [&] {
    ++events;
    EXPECT_TRUE(timer.Ticking());
    dispatcher.WhileWaiting([&] { timer.Fire(); });
    throw RuntimeError(errors::kClipboardBusy, "busy");
  });
  EXPECT_EQ(after(500), 2) << "a tick never overlaps itself, and a failed one is followed by the next";
  EXPECT_FALSE(timer.Ticking());
  Instead(timer.Tick, [&] {
    ++events;
    timer.SetEnabled(false);
  });
  EXPECT_EQ(after(1000), 1);
}

}  // namespace
}  // namespace quillbox

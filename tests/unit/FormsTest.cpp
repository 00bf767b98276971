// Which events the controls, forms and timers raise, where the focus goes, and what fails. How they look to a
// person is said as rules.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "base/RuntimeError.h"
#include "memory/VirtualTimers.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/CommandButton.h"
#include "platform/forms/FormSlot.h"
#include "platform/forms/Label.h"
#include "platform/forms/ListBox.h"
#include "platform/forms/TabControl.h"
#include "platform/forms/TextBox.h"
#include "platform/forms/Timer.h"

namespace quillbox {
namespace {

// A shown form with controls, and what has happened to them since somebody last asked.
class Forms : public testing::Test {
 protected:
  Forms() {
    dispatcher.UseTimerHost(&timers);
    form.SetActivates(false);
    form.Show();
    for (Control* control : form.Controls()) Record(*control);
    for (const char16_t* text : {u"a", u"b", u"c", u"d", u"e", u"f"}) list.AddItem(text);
    list.Click = Count();
  }
  std::function<void()> Count() {
    return [this] { ++events; };
  }
  int Take() { return std::exchange(events, 0); }
  std::function<void()> Note(const std::string& what) {
    return [this, what] { log += (log.empty() ? "" : ", ") + what; };
  }
  std::string TakeLog() { return std::exchange(log, {}); }
  void Record(Control& control) {
    control.GotFocus = Note("to " + control.Name());
    control.LostFocus = Note("from " + control.Name());
  }
  // Gives an event that is noted another handler.
  static void Instead(Event<>& event, const std::function<void()>& handler) {
    event = nullptr;
    event = handler;
  }

  static void Type(TextBox& into, TextView characters) {
    for (const char16_t character : characters) into.PersonCharacter(character);
  }
  static void Press(Control& on, int code) {
    KeyEvent key;
    key.code = code;
    on.PersonKey(key);
  }

  MemoryClock clock;
  VirtualTimers timers{clock};
  Dispatcher dispatcher;
  Form form{dispatcher, "form", u"Form"};
  int events = 0;
  std::string log;
  TextBox line{form, "line", TextBox::Lines::One};
  TextBox block{form, "block", TextBox::Lines::Many};
  CommandButton button{form, "button", u"Button"};
  Label label{form, "label"};
  ListBox list{form, "list", ListBox::Kind::ExtendedSelection, 3};
};

TEST_F(Forms, RowsThatAreNotThereFail) {
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
  EXPECT_EQ(Take(), 0);
}

TEST_F(Forms, AHandlerMayTakeAKeyOrMakeAnotherOfIt) {
  list.PersonSelect(3);
  list.KeyDown = [](KeyEvent& key) { key.code = key.code == keys::kDelete ? 0 : keys::kHome; };
  list.KeyUp = [&](KeyEvent& key) { events += key.code == keys::kDelete ? 10 : 0; };
  Press(list, keys::kDelete);
  EXPECT_EQ(Take(), 11) << "chosen before, and released as it was pressed";
  Press(list, keys::kDown);
  EXPECT_EQ(list.GetListIndex(), 0);
  EXPECT_EQ(Take(), 1);
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
  EXPECT_EQ(Take(), 1) << "a click, and no check mark";
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
  timer.SetEnabled(true);
  timer.Tick = [&] {
    ++events;
    EXPECT_TRUE(timer.Ticking());
    dispatcher.WhileWaiting([&] { timer.Fire(); });
    throw RuntimeError(errors::kClipboardBusy, "busy");
  };
  timers.Advance(500);
  EXPECT_EQ(Take(), 2) << "a tick never overlaps itself, and a failed one is followed by the next";
  EXPECT_FALSE(timer.Ticking());
  Instead(timer.Tick, [&] {
    ++events;
    timer.SetEnabled(false);
  });
  timers.Advance(1000);
  EXPECT_EQ(Take(), 1);
}

TEST_F(Forms, TheFocusMovesAtOnceOrAfterTheOutermostHandler) {
  line.PersonFocus();
  EXPECT_FALSE(line.SetFocus()) << "it has it already";
  EXPECT_FALSE(label.SetFocus());
  EXPECT_TRUE(block.SetFocus());
  EXPECT_EQ(TakeLog(), "to line, from line, to block");
  label.Click = Note("label");
  button.Click = [this] {
    EXPECT_TRUE(line.SetFocus());
    EXPECT_FALSE(line.SetFocus()) << "it will have it, and that counts";
    dispatcher.Post(Note("posted"));
    dispatcher.Dispatch(Note("inner"));
    form.Hide();  // raises nothing, and what is queued is delivered
    Note("end")();
  };
  Instead(line.GotFocus, [this] {
    Note("to line")();
    block.SetFocus();
  });
  button.PersonClick();
  label.PersonClick();
  EXPECT_EQ(TakeLog(),
            "from block, to button, inner, end, from button, to line, from line, to block, posted, label");
  EXPECT_EQ(dispatcher.Focused(), &block);
}

TEST_F(Forms, AFailureEndsItsHandlerAlone) {
  line.PersonFocus();
  for (Event<>* event : {&line.LostFocus, &block.GotFocus}) {
    Instead(*event, [] { throw RuntimeError(errors::kBadIndex, "no row"); });
  }
  TakeLog();
  block.Click = Note("click");
  block.DblClick = Note("double click");
  block.PersonDoubleClick();
  EXPECT_EQ(TakeLog(), "click, double click");
  EXPECT_FALSE(dispatcher.Busy());
}

// While a message box stands open, each input is one of its own; what the waiting handler has asked for
// still comes after it. Views draw before a wait and after the outermost handler.
TEST_F(Forms, InputsWhileAHandlerWaits) {
  dispatcher.OnRefresh = Note("drawn");
  button.Click = [this] {
    line.SetFocus();
    dispatcher.WhileWaiting([this] {
      EXPECT_FALSE(dispatcher.Busy());
      block.PersonFocus();
      dispatcher.Post(Note("posted"));
    });
    EXPECT_TRUE(dispatcher.Busy());
    dispatcher.Dispatch([] {});
    Note("end")();
  };
  button.PersonClick();
  EXPECT_EQ(TakeLog(),
            "to button, drawn, from button, to block, drawn, posted, drawn, end, from block, to line, drawn");
}

// A dialog that is unloaded while one of its handlers waits lives until that handler has ended.
TEST_F(Forms, AFormClosedWhileItsHandlerWaitsStaysUntilTheHandlerEnds) {
  struct Dialog {
    explicit Dialog(Dispatcher& of, bool& isGone) : form(of, "dialog", u"Dialog"), gone(isGone) {}
    ~Dialog() { gone = true; }
    Form form;
    TextBox field{form, "field", TextBox::Lines::One};
    CommandButton ask{form, "ask", u"Ask"};
    bool& gone;
  };
  bool gone = false;
  FormSlot<Dialog> slot(dispatcher, [&] { return std::make_unique<Dialog>(dispatcher, gone); });
  slot.Show();
  Dialog* const dialog = slot.Get();
  dialog->ask.Click = [&] {
    dialog->field.SetFocus();
    dispatcher.WhileWaiting([&] { dispatcher.Dispatch([&] { slot.Unload(); }); });
    EXPECT_EQ(slot.Get(), nullptr);
    EXPECT_FALSE(gone);
  };
  dialog->ask.PersonClick();
  EXPECT_TRUE(gone);
  EXPECT_EQ(dispatcher.Focused(), nullptr) << "the change that it had asked for went with it";
  slot.Show();
  EXPECT_FALSE(slot.Get()->ask.Click) << "each load begins with a new form";
}

}  // namespace
}  // namespace quillbox

// What no person can do to the controls, what fails in them, and what outlives a handler that waits. All else
// of them is said as rules.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "base/RuntimeError.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/CommandButton.h"
#include "platform/forms/FormSlot.h"
#include "platform/forms/ListBox.h"
#include "platform/forms/TabControl.h"
#include "platform/forms/TextBox.h"

namespace quillbox {
namespace {

// A shown form with controls, and what has happened to them since somebody last asked.
class Forms : public testing::Test {
 protected:
  Forms() {
    form.SetActivates(false);
    form.Show();
    for (Control* control : form.Controls()) {
      control->GotFocus = Note("to " + control->Name());
      control->LostFocus = Note("from " + control->Name());
    }
    for (const char16_t* text : {u"a", u"b"}) list.AddItem(text);
  }
  std::function<void()> Note(const std::string& what) {
    return [this, what] { log += (log.empty() ? "" : ", ") + what; };
  }
  std::string TakeLog() { return std::exchange(log, {}); }
  // Gives an event that is noted another handler.
  static void Instead(Event<>& event, const std::function<void()>& handler) {
    event = nullptr;
    event = handler;
  }

  Dispatcher dispatcher;
  Form form{dispatcher, "form", u"Form"};
  std::string log;
  TextBox line{form, "line", TextBox::Lines::One};
  TextBox block{form, "block", TextBox::Lines::Many};
  CommandButton button{form, "button", u"Button"};
  ListBox list{form, "list", ListBox::Kind::ExtendedSelection, 3};
};

TEST_F(Forms, RowsThatAreNotThereFail) {
  ComboBox box(form, "box", {u"a", u"b"});
  TabControl tabs(form, "tabs", {u"A", u"B"});
  EXPECT_THROW(list.SetListIndex(2), RuntimeError);
  EXPECT_THROW(list.SetListIndex(-2), RuntimeError);
  EXPECT_THROW(list.GetList(-1), RuntimeError);
  EXPECT_THROW(list.GetSelected(2), RuntimeError);
  EXPECT_THROW(list.SetSelected(2, false), RuntimeError);
  EXPECT_THROW(list.RemoveItem(2), RuntimeError);
  EXPECT_THROW(list.AddItem(u"x", 3), RuntimeError);
  EXPECT_THROW(box.SetListIndex(2), RuntimeError);
  EXPECT_THROW(tabs.SetTab(2), RuntimeError);
  // The focus handlers may take rows away before a click arrives.
  Instead(list.GotFocus, [this] { list.Clear(); });
  list.Click = Note("click");
  list.PersonDoubleClick(1);
  EXPECT_EQ(TakeLog(), "");
}

TEST_F(Forms, ALimitOfAFieldHoldsForThePersonAloneAndCutsNoPair) {
  line.SetMaxLength(4);
  line.SetText(u"123456");
  EXPECT_EQ(line.GetText(), u"123456");
  line.PersonSetText(u"123456");
  EXPECT_EQ(line.GetText(), u"1234");
  line.Select(0, 4);
  line.PersonCharacter(u'9');
  EXPECT_EQ(line.GetText(), u"9") << "what is replaced makes room";
  line.PersonSetText(u"abc\U0001F600");
  EXPECT_EQ(line.GetText(), u"abc");
  line.Select(0, 3);
  line.SetText(u"aaEND");
  EXPECT_EQ(line.GetSelLength(), 0U);
  line.PersonEdit(u"abbaEND", 3);
  EXPECT_EQ(line.GetText(), u"aaEND") << "whatever is put in the middle, nothing behind it is lost";
}

// A form that nobody has loaded, a size that changes, a row that code selects.
TEST_F(Forms, WhatCodeDoesRaisesEventsWhereSomethingChanges) {
  Form other(dispatcher, "other", u"Other");
  other.LoadHandler = Note("load");
  other.Resize = Note("resize");
  list.Click = Note("click");
  for (int twice = 0; twice < 2; ++twice) {
    other.Show();
    other.SetSize(1, 2);
    list.SetSelected(1, true);
  }
  EXPECT_EQ(TakeLog(), "load, resize, click");
}

TEST_F(Forms, WhatAHandlerTakesAwayOrFailsIn) {
  // An Enter that a handler takes away reaches nobody.
  button.Click = Note("click");
  form.SetDefaultButton(&button);
  line.KeyPress = [](char16_t& character) { character = 0; };
  line.PersonFocus();
  line.PersonCharacter(u'\r');
  EXPECT_EQ(TakeLog(), "to line");
  // A failure ends its handler alone.
  for (Event<>* event : {&line.LostFocus, &block.GotFocus})
    Instead(*event, [] { throw RuntimeError(errors::kBadIndex, "no row"); });
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
    EXPECT_TRUE(line.SetFocus());
    EXPECT_FALSE(line.SetFocus()) << "it will have it, and that counts";
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
    explicit Dialog(Dispatcher& of) : form(of, "dialog", u"Dialog") {}
    Form form;
    TextBox field{form, "field", TextBox::Lines::One};
    CommandButton ask{form, "ask", u"Ask"};
    std::shared_ptr<int> life = std::make_shared<int>();
  };
  FormSlot<Dialog> slot(dispatcher, [&] { return std::make_unique<Dialog>(dispatcher); });
  slot.Show();
  Dialog* const dialog = slot.Get();
  const std::weak_ptr<int> life = dialog->life;
  EXPECT_EQ(dispatcher.Focused(), &dialog->field);
  dialog->ask.Click = [&] {
    dialog->field.SetFocus();
    dispatcher.WhileWaiting([&] { dispatcher.Dispatch([&] { slot.Unload(); }); });
    EXPECT_EQ(slot.Get(), nullptr);
    EXPECT_EQ(dispatcher.Focused(), nullptr);
    EXPECT_FALSE(life.expired());
  };
  dialog->ask.PersonClick();
  EXPECT_TRUE(life.expired());
  EXPECT_EQ(dispatcher.Focused(), nullptr) << "the change that it had asked for went with it";
}

}  // namespace
}  // namespace quillbox

#include "platform/forms/FormSlot.h"
#include "unit/FormsFixture.h"

namespace quillbox {
namespace {

using Log = std::vector<std::string>;

class FormsFocus : public FormsFixture {
 protected:
  FormsFocus() {
    for (Control* control : form.Controls()) Record(*control);
  }
  void Record(Control& control) {
    const std::string name = control.Name();
    control.GotFocus = [this, name] { log.push_back(name + " got"); };
    control.LostFocus = [this, name] { log.push_back(name + " lost"); };
    control.Click = [this, name] { log.push_back(name + " click"); };
  }

  // Gives an event that is logged another handler.
  static void Instead(Event<>& event, const std::function<void()>& handler) {
    event = nullptr;
    event = handler;
  }

  Log log;
  TextBox first{form, "first", TextBox::Lines::One};
  TextBox second{form, "second", TextBox::Lines::One};
  CommandButton button{form, "button", u"Button"};
  Label label{form, "label"};
};

TEST_F(FormsFocus, OutsideOfHandlersItMovesAtOnce) {
  first.PersonFocus();
  log.clear();
  EXPECT_FALSE(first.SetFocus()) << "it has it already";
  EXPECT_FALSE(label.SetFocus());
  EXPECT_TRUE(second.SetFocus());
  EXPECT_EQ(log, (Log{"first lost", "second got"}));
  log.clear();
  button.PersonClick();
  label.PersonClick();
  EXPECT_EQ(log, (Log{"second lost", "button got", "button click", "label click"}));
  EXPECT_EQ(dispatcher.Focused(), &button);
}

TEST_F(FormsFocus, SetFocusInAHandlerComesAfterTheOutermostHandler) {
  Instead(button.Click, [this] {
    EXPECT_TRUE(first.SetFocus());
    // The one that will have the focus has it already, as far as a further call goes.
    EXPECT_FALSE(first.SetFocus());
    dispatcher.Dispatch([this] { log.push_back("inner"); });
    log.push_back("end of click");
  });
  Instead(first.GotFocus, [this] {
    log.push_back("first got");
    second.SetFocus();
  });
  button.PersonClick();
  EXPECT_EQ(log, (Log{"button got", "inner", "end of click", "button lost", "first got", "first lost",
                      "second got"}));
  EXPECT_EQ(dispatcher.Focused(), &second);
}

TEST_F(FormsFocus, AFailureEndsItsHandlerAlone) {
  first.PersonFocus();
  Instead(first.LostFocus, [] { throw RuntimeError(errors::kBadIndex, "no row"); });
  Instead(second.GotFocus, [] { throw RuntimeError(errors::kBadIndex, "no row"); });
  second.DblClick = [this] { log.push_back("second dblclick"); };
  log.clear();
  second.PersonDoubleClick();
  EXPECT_EQ(log, (Log{"second click", "second dblclick"}));
  EXPECT_FALSE(dispatcher.Busy());
}

TEST_F(FormsFocus, WhatAHandlerAsksForComesBeforeWhatItPosts) {
  Instead(button.Click, [this] {
    dispatcher.Post([this] { log.push_back("posted"); });
    first.SetFocus();
    form.Hide();  // raises nothing, and the queued change is delivered
  });
  button.PersonClick();
  EXPECT_EQ(log, (Log{"button got", "button lost", "first got", "posted"}));
}

TEST_F(FormsFocus, AnotherFormInFrontTakesTheFocusAndAnUnloadedOneHasNone) {
  Form dialog(dispatcher, "dialog", u"Dialog");
  TextBox field(dialog, "field", TextBox::Lines::One);
  Record(field);
  first.PersonFocus();
  log.clear();
  dialog.Show();
  EXPECT_EQ(log, (Log{"first lost", "field got"}));
  log.clear();
  dialog.Unload();
  EXPECT_EQ(dispatcher.Focused(), nullptr);
  second.PersonFocus();
  EXPECT_EQ(log, Log{"second got"});
}

// While a message box stands open, each input is one of its own; what the waiting handler has asked for
// still comes after it.
TEST_F(FormsFocus, InputsWhileAHandlerWaits) {
  Instead(button.Click, [this] {
    first.SetFocus();
    dispatcher.WhileWaiting([this] {
      EXPECT_FALSE(dispatcher.Busy());
      second.PersonFocus();
      dispatcher.Post([this] { log.push_back("posted"); });
    });
    EXPECT_TRUE(dispatcher.Busy());
    log.push_back("end of click");
  });
  button.PersonClick();
  EXPECT_EQ(log, (Log{"button got", "button lost", "second got", "posted", "end of click", "second lost",
                      "first got"}));
}

TEST_F(FormsFocus, ViewsDrawAfterTheOutermostHandlerAndBeforeAWait) {
  dispatcher.OnRefresh = [this] { log.push_back("drawn"); };
  Instead(button.Click, [this] {
    dispatcher.Dispatch([] {});
    log.push_back("before");
    dispatcher.WhileWaiting([this] { log.push_back("waiting"); });
    log.push_back("after");
  });
  button.PersonClick();
  EXPECT_EQ(log, (Log{"button got", "before", "drawn", "waiting", "after", "drawn"}));
}

// A dialog that is unloaded while one of its handlers waits lives until that handler has ended.
TEST_F(FormsFocus, AFormClosedWhileItsHandlerWaitsStaysUntilTheHandlerEnds) {
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

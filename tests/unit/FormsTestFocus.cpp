#include <memory>

#include "base/RuntimeError.h"
#include "platform/forms/FormSlot.h"
#include "unit/FormsFixture.h"

namespace quillbox {
namespace {

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

#include "memory/VirtualTimers.h"
#include "platform/forms/CheckBox.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/OptionButton.h"
#include "platform/forms/ScrollBar.h"
#include "platform/forms/TabControl.h"
#include "platform/forms/Timer.h"
#include "platform/forms/UpDown.h"
#include "unit/FormsFixture.h"

namespace quillbox {
namespace {

using FormsControls = FormsFixture;

TEST_F(FormsControls, AnOptionDeselectsTheOthersOfItsGroup) {
  OptionGroup group;
  OptionButton one(form, "one", u"1", group, true);
  OptionButton two(form, "two", u"2", group);
  std::string clicks;
  one.Click = [&] { clicks += '1'; };
  two.Click = [&] {
    EXPECT_FALSE(one.GetValue()) << "the others are deselected by then";
    clicks += '2';
  };
  two.PersonClick();
  two.PersonClick();
  one.SetValue(true);
  one.SetValue(false);
  EXPECT_EQ(clicks, "21");
  EXPECT_FALSE(one.GetValue() || two.GetValue());
}

TEST_F(FormsControls, ValuesThatReallyChangeRaiseAnEvent) {
  CheckBox check(form, "check", u"Check");
  check.Click = Count();
  check.SetValue(false);
  EXPECT_EQ(Take(), 0);
  check.SetValue(true);
  check.PersonClick();
  EXPECT_FALSE(check.GetValue());
  EXPECT_EQ(Take(), 2);
  ComboBox box(form, "box", {u"a", u"b"});
  box.Click = Count();
  box.SetListIndex(1);
  box.PersonChoose(1);
  EXPECT_EQ(Take(), 1);
  EXPECT_THROW(box.SetListIndex(2), RuntimeError);
  ScrollBar bar(form, "bar", 3, 100);
  bar.Change = Count();
  bar.SetValue(0);
  EXPECT_EQ(Take(), 0) << "the nearest value is the one it has";
  bar.PersonScroll(1000);
  EXPECT_EQ(bar.GetValue(), 100);
  EXPECT_EQ(Take(), 1);
}

TEST_F(FormsControls, APageInFrontShowsItsControls) {
  TabControl tabs(form, "tabs", {u"A", u"B"});
  TextBox onA(Place(form, tabs, 0), "onA", TextBox::Lines::One);
  TextBox onB(Place(form, tabs, 1), "onB", TextBox::Lines::One);
  onA.LostFocus = Count();
  onA.PersonFocus();
  tabs.PersonTab(1);
  EXPECT_EQ(Take(), 1) << "a click on a tab gives the tabs the focus";
  EXPECT_TRUE(tabs.HasFocus());
  EXPECT_FALSE(onA.IsShown());
  EXPECT_TRUE(onB.IsReachable());
  onB.SetEnabled(false);
  EXPECT_FALSE(onB.IsReachable());
  EXPECT_THROW(tabs.SetTab(2), RuntimeError);
  form.Hide();
  EXPECT_FALSE(onB.IsShown());
}

TEST_F(FormsControls, ArrowsMoveNoFocusAndEscapeIsTheCancelButton) {
  TextBox field(form, "field", TextBox::Lines::One);
  UpDown arrows(form, "arrows", u"", true);
  field.PersonFocus();
  arrows.UpClick = Count();
  arrows.PersonSpin(true);
  arrows.PersonSpin(false);
  EXPECT_EQ(Take(), 1);
  EXPECT_TRUE(field.HasFocus());
  CommandButton cancel(form, "cancel", u"Cancel");
  cancel.Click = Count();
  form.SetCancelButton(&cancel);
  Press(field, keys::kEscape);
  EXPECT_EQ(Take(), 1);
  cancel.SetEnabled(false);
  Press(field, keys::kEscape);
  EXPECT_EQ(Take(), 0);
  EXPECT_EQ(field.GetText(), u"") << "nor is it a character";
}

TEST_F(FormsControls, LoadingResizingAndClosing) {
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

class FormsTimers : public FormsControls {
 protected:
  FormsTimers() { dispatcher.UseTimerHost(&timers); }
  MemoryClock clock;
  VirtualTimers timers{clock};
};

TEST_F(FormsTimers, StartingBeginsAWholePeriodAndEnablingAnEnabledOneChangesNothing) {
  Timer timer(form, "timer", 250, false);
  timer.Tick = Count();
  timers.Advance(1000);
  EXPECT_EQ(Take(), 0);
  timer.SetEnabled(true);
  timers.Advance(200);
  timer.SetEnabled(true);
  timers.Advance(50);
  EXPECT_EQ(Take(), 1);
  timers.Advance(200);
  timer.SetEnabled(false);
  timer.SetEnabled(true);
  timers.Advance(249);
  EXPECT_EQ(Take(), 0);
  timers.Advance(1);
  EXPECT_EQ(Take(), 1);
}

TEST_F(FormsTimers, ATickNeverOverlapsItself) {
  Timer timer(form, "timer", 250, true);
  timer.Tick = [&] {
    ++events;
    EXPECT_TRUE(timer.Ticking());
    dispatcher.WhileWaiting([&] { timer.Fire(); });
  };
  timers.Advance(250);
  EXPECT_EQ(Take(), 1);
  EXPECT_FALSE(timer.Ticking());
}

TEST_F(FormsTimers, ATickThatFailsOrStopsItsTimer) {
  Timer timer(form, "timer", 250, true);
  timer.Tick = [&] {
    ++events;
    throw RuntimeError(errors::kClipboardBusy, "busy");
  };
  timers.Advance(500);
  EXPECT_EQ(Take(), 2) << "a failed tick is followed by the next";
  timer.Tick = nullptr;
  timer.Tick = [&] {
    ++events;
    timer.SetEnabled(false);
  };
  timers.Advance(1000);
  EXPECT_EQ(Take(), 1);
}

}  // namespace
}  // namespace quillbox

#include <thread>

#include "x11/KeySenderFixture.h"

namespace quillbox::test {
namespace {

// Beside the other program's window, one of ours. {CAPSLOCK} would show wherever it is typed.
class XKeySenderFocus : public KeySenderFixture {
 protected:
  ~XKeySenderFocus() override {
    EXPECT_TRUE(ours.Presses().empty());
    EXPECT_EQ(person.Locked(), 0);
  }
  KeyReceiver ours{{.answersPings = true}};
  XKeySender careful{Plain([this](xcb_window_t window) { return window == ours.Window(); })};
};

TEST_F(XKeySenderFocus, TheWindowThatGetsTheFocusFromUsGetsTheKeys) {
  ours.TakeFocus();
  std::thread leave([&] {
    Sleep(200);
    receiver.TakeFocus();
  });
  careful.Send(u"abc");
  leave.join();
  EXPECT_EQ(receiver.Text(3), "abc");
}

TEST_F(XKeySenderFocus, WithoutAWindowToTypeIntoTheScriptFails) {
  ours.TakeFocus();
  EXPECT_THROW(careful.Send(u"a{CAPSLOCK}"), RuntimeError);
  ours.SetFocus(XCB_NONE);
  EXPECT_THROW(careful.Send(u"b{CAPSLOCK}{CAPSLOCK}{CAPSLOCK}"), RuntimeError);
  receiver.SetFocus(XCB_INPUT_FOCUS_POINTER_ROOT);
  EXPECT_THROW(careful.Send(u"c{CAPSLOCK}"), RuntimeError);
  Sleep(50);
  EXPECT_TRUE(receiver.Presses().empty());
}

TEST_F(XKeySenderFocus, OurWindowsAreKnownByTheirProcess) {
  ours.Set("_NET_WM_PID", "CARDINAL", static_cast<std::uint32_t>(getpid()));
  XKeySender asks(Plain({}));
  ours.SetFocus(ours.MakeChild());
  EXPECT_THROW(asks.Send(u"abc"), RuntimeError);
  receiver.TakeFocus();
  asks.Send(u"def");
  EXPECT_EQ(receiver.Text(3), "def");
}

TEST_F(XKeySenderFocus, KeysMayDependOnTheClassOfTheWindow) {
  receiver.SetClass("XTerm");
  receiver.SetFocus(receiver.MakeChild());
  std::string told;
  careful.SendTo([&](const std::string& windowClass) {
    told = windowClass;
    return u"v";
  });
  careful.SendTo([](const std::string&) { return Text(); });
  EXPECT_EQ(told + " " + receiver.Text(1), "XTerm v");
}

// A window manager marks the windows of programs. Where it parks the focus when no program has it isn't one.
TEST_F(XKeySenderFocus, UnderAWindowManagerOnlyProgramsAreTypedInto) {
  {
    KeyReceiver manager({});
    for (const bool ofRoot : {false, true})
      manager.Set("_NET_SUPPORTING_WM_CHECK", "WINDOW", manager.Window(), ofRoot);
    receiver.SetFocus(receiver.MakeChild());
    EXPECT_THROW(careful.Send(u"a{CAPSLOCK}"), RuntimeError);
    receiver.Set("WM_STATE", "WM_STATE", 1);
    careful.Send(u"é1");
  }
  // It has left its traces, and windows are windows again.
  KeyReceiver unmarked({.answersPings = true});
  unmarked.TakeFocus();
  careful.Send(u"2");
  EXPECT_EQ(receiver.Text(2) + unmarked.Text(1), "é12");
}

}  // namespace
}  // namespace quillbox::test

#include <cstdlib>
#include <thread>

#include "platform/x11/keys/XKeyConnection.h"
#include "x11/KeySenderFixture.h"
#include "x11/OwnProcess.h"

namespace quillbox::test {
namespace {

// Beside the other program's window, one of ours.
class XKeySenderFocus : public KeySenderFixture {
 protected:
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
  ASSERT_TRUE(receiver.WaitFor(3));
  EXPECT_EQ(receiver.Text(), "abc");
  EXPECT_TRUE(ours.Presses().empty());
}

// {CAPSLOCK} would show wherever it is typed.
TEST_F(XKeySenderFocus, WithoutAWindowToTypeIntoTheScriptFails) {
  ours.TakeFocus();
  EXPECT_THROW(careful.Send(u"a{CAPSLOCK}"), RuntimeError);
  ours.GiveFocusToNobody();
  EXPECT_THROW(careful.Send(u"b{CAPSLOCK}{CAPSLOCK}{CAPSLOCK}"), RuntimeError);
  receiver.GiveFocusToPointer();
  EXPECT_THROW(careful.Send(u"c{CAPSLOCK}"), RuntimeError);
  Sleep(50);
  EXPECT_TRUE(receiver.Presses().empty());
  EXPECT_TRUE(ours.Presses().empty());
  EXPECT_EQ(person.Locked(), 0);
}

TEST_F(XKeySenderFocus, OurWindowsAreKnownByTheirProcess) {
  KeyReceiver said({.answersPings = true, .saysOurProcess = true});
  XKeySender asks(Plain({}));
  said.TakeFocus();
  EXPECT_THROW(asks.Send(u"abc"), RuntimeError);
  receiver.TakeFocus();
  asks.Send(u"def");
  EXPECT_EQ(receiver.Text(), "def");
  EXPECT_TRUE(said.Presses().empty());
}

TEST_F(XKeySenderFocus, KeysMayDependOnTheClassOfTheWindow) {
  receiver.SetClass("XTerm");
  std::string told;
  careful.SendTo([&](const std::string& windowClass) {
    told = windowClass;
    return u"v";
  });
  careful.SendTo([](const std::string&) { return Text(); });
  EXPECT_EQ(told + " " + receiver.Text(), "XTerm v");
}

// Under openbox, which parks the focus on a window of its own when no program has it.
TEST(XKeySenderManaged, UnderAWindowManager) {
  if (std::system("command -v openbox >/dev/null") != 0) GTEST_SKIP() << "openbox isn't installed";
  TestKeyboard person("us");
  XKeySender sender(Plain());
  {
    OwnProcess manager([] { Become("openbox", "--sm-disable"); });
    for (int tries = 0; tries < 2000 && !person.RootHas("_NET_SUPPORTING_WM_CHECK"); ++tries) Sleep(10);
    ASSERT_TRUE(person.RootHas("_NET_SUPPORTING_WM_CHECK"));
    Sleep(500);  // it forgets windows that appear while it starts
    {
      KeyReceiver receiver({.answersPings = true});
      Sleep(300);
      receiver.TakeFocus();
      sender.Send(u"é1");
      EXPECT_EQ(receiver.Text(), "é1");
    }
    Sleep(100);
    // It parks the focus by and by; this is where.
    XKeyConnection server(nullptr);
    const auto parking =
        server.Values(server.Root(), server.Atom("_NET_SUPPORTING_WM_CHECK"), xcb_atom_t{XCB_ATOM_WINDOW});
    ASSERT_EQ(parking.size(), 1U);
    xcb_set_input_focus(server.Get(), XCB_INPUT_FOCUS_NONE, parking[0], XCB_CURRENT_TIME);
    ASSERT_EQ(server.Sync(), parking[0]);
    EXPECT_THROW(sender.Send(u"a{CAPSLOCK}"), RuntimeError);
    EXPECT_EQ(person.Locked(), 0);
    manager.End(SIGTERM);
  }
  // It has left its traces, and windows are windows again.
  KeyReceiver receiver({.answersPings = true});
  receiver.TakeFocus();
  sender.Send(u"2");
  EXPECT_EQ(receiver.Text(), "2");
}

}  // namespace
}  // namespace quillbox::test

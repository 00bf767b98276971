#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <thread>

#include "platform/linux/XKeyConnection.h"
#include "platform/linux/XKeySender.h"
#include "x11/KeyReceiver.h"
#include "x11/KeySenderParts.h"
#include "x11/TestKeyboard.h"

namespace quillbox::test {
namespace {

TEST(XKeySenderFocus, TheWindowThatGetsTheFocusFromUsGetsTheKeys) {
  const TestKeyboard person("us");
  KeyReceiver other({.answersPings = true});
  KeyReceiver ours({.answersPings = true});
  const auto isOurs = [&](xcb_window_t window) { return window == ours.Window(); };
  ours.TakeFocus();
  std::thread leave([&] {
    Sleep(200);
    other.TakeFocus();
  });
  XKeySender(Plain(isOurs)).Send(u"abc");
  leave.join();
  ASSERT_TRUE(other.WaitFor(3));
  EXPECT_EQ(other.Text(), "abc");
  EXPECT_TRUE(ours.Presses().empty());
}

// {CAPSLOCK} would show wherever it is typed.
TEST(XKeySenderFocus, WithoutAWindowToTypeIntoNothingIsTyped) {
  TestKeyboard person("us");
  KeyReceiver other({.answersPings = true});
  KeyReceiver ours({.answersPings = true});
  XKeySender sender(Plain([&](xcb_window_t window) { return window == ours.Window(); }));
  ours.TakeFocus();
  sender.Send(u"a{CAPSLOCK}");
  ours.GiveFocusToNobody();
  sender.Send(u"b{CAPSLOCK}{CAPSLOCK}{CAPSLOCK}");
  other.GiveFocusToPointer();
  sender.Send(u"c{CAPSLOCK}");
  Sleep(50);
  EXPECT_TRUE(other.Presses().empty());
  EXPECT_TRUE(ours.Presses().empty());
  EXPECT_EQ(person.Locked(), 0);
}

TEST(XKeySenderFocus, OurWindowsAreKnownByTheirProcess) {
  const TestKeyboard person("us");
  KeyReceiver ours({.answersPings = true, .saysOurProcess = true});
  KeyReceiver other({.answersPings = true});
  XKeySender sender(Plain({}));
  ours.TakeFocus();
  sender.Send(u"abc");
  other.TakeFocus();
  sender.Send(u"def");
  EXPECT_EQ(other.Text(), "def");
  EXPECT_TRUE(ours.Presses().empty());
}

// openbox, which parks the focus on a window of its own when no program has it.
class WindowManager {
 public:
  explicit WindowManager(TestKeyboard& display) {
    process_ = fork();
    if (process_ == 0) {
      const int nowhere = open("/dev/null", O_WRONLY);
      dup2(nowhere, STDOUT_FILENO);
      dup2(nowhere, STDERR_FILENO);
      execlp("openbox", "openbox", "--sm-disable", static_cast<char*>(nullptr));
      _exit(1);
    }
    for (int tries = 0; tries < 300 && !display.RootHas("_NET_SUPPORTING_WM_CHECK"); ++tries) Sleep(10);
    Sleep(500);  // it forgets windows that appear while it starts
  }
  ~WindowManager() {
    kill(process_, SIGTERM);
    waitpid(process_, nullptr, 0);
  }
  WindowManager(const WindowManager&) = delete;
  WindowManager& operator=(const WindowManager&) = delete;

 private:
  pid_t process_ = 0;
};

TEST(XKeySenderFocus, UnderAWindowManager) {
  if (std::system("command -v openbox >/dev/null") != 0) GTEST_SKIP() << "openbox isn't installed";
  TestKeyboard person("us");
  XKeySender sender(Plain());
  {
    const WindowManager manager(person);
    ASSERT_TRUE(person.RootHas("_NET_SUPPORTING_WM_CHECK"));
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
    sender.Send(u"a{CAPSLOCK}");
    EXPECT_EQ(person.Locked(), 0);
  }
  // It has left its traces, and windows are windows again.
  KeyReceiver receiver({.answersPings = true});
  receiver.TakeFocus();
  sender.Send(u"2");
  EXPECT_EQ(receiver.Text(), "2");
}

}  // namespace
}  // namespace quillbox::test

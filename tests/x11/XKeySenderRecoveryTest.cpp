#include <sys/wait.h>

#include <stdexcept>

#include "x11/KeySenderFixture.h"

namespace quillbox::test {
namespace {

// Types in a process that ends, whatever it has done to the keyboard, when the first key has arrived. Called
// before this process has threads.
void TypeAndDie() {
  const pid_t child = fork();
  if (child == 0) {
    KeyReceiver receiver({});
    receiver.TakeFocus();
    XKeySender::Options options = Plain();
    options.pause = [&](int milliseconds) {
      if (!receiver.Presses().empty()) _exit(7);
      Sleep(milliseconds);
    };
    XKeySender(std::move(options)).Send(u"+({é 32767}{漢 32767}{a 32767}{é 32767}{漢 32767})");
    _exit(1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  ASSERT_EQ(WEXITSTATUS(status), 7);
}

TEST(XKeySenderRecovery, AfterAKillTheNextStartPutsTheKeyboardRight) {
  constexpr std::uint8_t kBothLocks = TestKeyboard::kCapsLock | TestKeyboard::kNumLock;
  TestKeyboard person("de");
  person.UseLocks(kBothLocks);
  const std::string before = TestKeyboard::Dump();
  TypeAndDie();
  ASSERT_NE(TestKeyboard::Dump(), before);
  ASSERT_EQ(person.Locked(), TestKeyboard::kNumLock);
  ASSERT_TRUE(person.AnyKeyDown());
  XKeySender(Plain()).Recover();
  EXPECT_EQ(TestKeyboard::Dump(), before);
  EXPECT_EQ(person.Locked(), kBothLocks);
  EXPECT_FALSE(person.AnyKeyDown());
  EXPECT_FALSE(person.TracesAreLeft());
}

TEST(XKeySenderRecovery, ALayoutThatWasSetMeanwhileIsLeftAlone) {
  const TestKeyboard person("de");
  TypeAndDie();
  TestKeyboard::UseLayouts("fr");
  const std::string before = TestKeyboard::Dump();
  XKeySender(Plain()).Recover();
  EXPECT_EQ(TestKeyboard::Dump(), before);
}

TEST(XKeySenderRecovery, AFailureOnTheWayLeavesNothingBehind) {
  TestKeyboard person("us");
  person.UseLocks(TestKeyboard::kCapsLock);
  const std::string before = TestKeyboard::Dump();
  KeyReceiver receiver({});
  receiver.TakeFocus();
  XKeySender::Options options = Plain();
  options.pause = [&](int milliseconds) {
    Sleep(milliseconds);
    if (person.TracesAreLeft()) throw std::runtime_error("from the program's own events");
  };
  EXPECT_THROW(XKeySender(std::move(options)).Send(u"+(é)"), std::runtime_error);
  EXPECT_EQ(TestKeyboard::Dump(), before);
  EXPECT_EQ(person.Locked(), TestKeyboard::kCapsLock);
  EXPECT_FALSE(person.AnyKeyDown());
}

}  // namespace
}  // namespace quillbox::test

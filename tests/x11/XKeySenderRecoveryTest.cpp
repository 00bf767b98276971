#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

#include "x11/KeySenderFixture.h"

namespace quillbox::test {
namespace {

// A process that waits for a byte and then types without end.
class TypingProcess {
 public:
  TypingProcess() {
    EXPECT_EQ(pipe(pipe_), 0);
    process_ = fork();
    if (process_ != 0) return;
    char go = 0;
    if (read(pipe_[0], &go, 1) == 1)
      XKeySender(Plain()).Send(u"+({é 32767}{漢 32767}{a 32767}{é 32767}{漢 32767})");
    _exit(0);
  }
  ~TypingProcess() {
    if (process_ > 0) Kill();
    close(pipe_[0]);
    close(pipe_[1]);
  }
  TypingProcess(const TypingProcess&) = delete;
  TypingProcess& operator=(const TypingProcess&) = delete;

  // Types into the receiver and is killed on the way.
  void TypeAndDie(KeyReceiver& receiver) {
    receiver.TakeFocus();
    EXPECT_EQ(write(pipe_[1], "g", 1), 1);
    for (int tries = 0; tries < 500 && receiver.Presses().empty(); ++tries) Sleep(5);
    EXPECT_TRUE(WIFSIGNALED(Kill()));
  }

 private:
  // The state that the process ended with.
  int Kill() {
    kill(process_, SIGKILL);
    int status = 0;
    waitpid(process_, &status, 0);
    process_ = 0;
    return status;
  }

  int pipe_[2] = {};
  pid_t process_ = 0;
};

TEST(XKeySenderRecovery, AfterAKillTheNextStartPutsTheKeyboardRight) {
  // Forked before this process has threads.
  TypingProcess typing;
  TestKeyboard person("de");
  person.Lock(TestKeyboard::kCapsLock | TestKeyboard::kNumLock);
  const std::string before = TestKeyboard::Dump();
  KeyReceiver receiver({});
  typing.TypeAndDie(receiver);
  ASSERT_NE(TestKeyboard::Dump(), before);
  ASSERT_EQ(person.Locked(), TestKeyboard::kNumLock);
  ASSERT_TRUE(person.AnyKeyDown());

  XKeySender next(Plain());
  next.Recover();
  EXPECT_EQ(TestKeyboard::Dump(), before);
  EXPECT_EQ(person.Locked(), TestKeyboard::kCapsLock | TestKeyboard::kNumLock);
  EXPECT_FALSE(person.AnyKeyDown());
  EXPECT_FALSE(person.RootHas("_QUILLBOX_SPARE_KEYS"));
  EXPECT_FALSE(person.RootHas("_QUILLBOX_TYPING"));
}

TEST(XKeySenderRecovery, ALayoutThatWasSetMeanwhileIsLeftAlone) {
  TypingProcess typing;
  TestKeyboard person("de");
  KeyReceiver receiver({});
  typing.TypeAndDie(receiver);
  const TestKeyboard other("fr");
  const std::string before = TestKeyboard::Dump();
  XKeySender(Plain()).Recover();
  EXPECT_EQ(TestKeyboard::Dump(), before);
}

TEST(XKeySenderRecovery, AFailureOnTheWayLeavesNothingBehind) {
  TestKeyboard person("us");
  person.Lock(TestKeyboard::kCapsLock);
  const std::string before = TestKeyboard::Dump();
  KeyReceiver receiver({});
  receiver.TakeFocus();
  XKeySender::Options options = Plain();
  options.pause = [&](int milliseconds) {
    Sleep(milliseconds);
    if (person.RootHas("_QUILLBOX_SPARE_KEYS")) throw std::runtime_error("from the program's own events");
  };
  EXPECT_THROW(XKeySender(std::move(options)).Send(u"+(é)"), std::runtime_error);
  EXPECT_EQ(TestKeyboard::Dump(), before);
  EXPECT_EQ(person.Locked(), TestKeyboard::kCapsLock);
  EXPECT_FALSE(person.AnyKeyDown());
}

}  // namespace
}  // namespace quillbox::test

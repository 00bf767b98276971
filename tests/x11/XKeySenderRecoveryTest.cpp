#include <stdexcept>

#include "x11/KeySenderFixture.h"
#include "x11/OwnProcess.h"

namespace quillbox::test {
namespace {

// A process that types without end once it is told to. Made before this process has threads.
class TypingProcess {
 public:
  ~TypingProcess() {
    for (const int end : pipe_.ends) close(end);
  }
  // Types into the receiver and is killed on the way.
  void TypeAndDie(KeyReceiver& receiver) {
    receiver.TakeFocus();
    EXPECT_EQ(write(pipe_.ends[1], "g", 1), 1);
    EXPECT_TRUE(receiver.WaitFor(1));
    EXPECT_TRUE(WIFSIGNALED(process_.End(SIGKILL)));
  }

 private:
  Pipe pipe_;
  OwnProcess process_{[this] {
    char go = 0;
    if (read(pipe_.ends[0], &go, 1) == 1)
      XKeySender(Plain()).Send(u"+({é 32767}{漢 32767}{a 32767}{é 32767}{漢 32767})");
  }};
};

TEST(XKeySenderRecovery, AfterAKillTheNextStartPutsTheKeyboardRight) {
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

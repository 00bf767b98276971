#include <gtest/gtest.h>

#include "base/Utf8.h"
#include "platform/x11/keys/XGlobalKey.h"
#include "x11/KeyReceiver.h"
#include "x11/PollEventLoop.h"
#include "x11/TestKeyboard.h"

namespace quillbox::test {
namespace {

constexpr xcb_keycode_t kControl = 37, kAlt = 64, kShift = 50, kSuper = 133;
constexpr xcb_keycode_t kOne = 10, kY = 29, kZ = 52, kV = 55, kF12 = 96, kPause = 127;

class XGlobalKeys : public testing::Test {
 protected:
  XGlobalKeys() { receiver.TakeFocus(); }

  KeyBinding Bind(GlobalKey& of, const char16_t* name) { return of.Bind(*ParseCombination(name)); }
  // How often we are told of it when a person holds these keys down, one after the other, for so long.
  int Pressed(const std::vector<xcb_keycode_t>& codes, int milliseconds = 20) {
    loop.RunFor(50);
    presses = 0;
    for (const xcb_keycode_t code : codes) person.Key(code, true);
    loop.RunFor(milliseconds);
    for (const xcb_keycode_t code : codes) person.Key(code, false);
    loop.RunFor(50);
    return presses;
  }

  TestKeyboard person{"us,gr"};
  KeyReceiver receiver{{.answersPings = true}};
  PollEventLoop loop;
  XGlobalKey key{loop};
  int presses = 0;
  Hook pressed = key.OnPressed([this] { ++presses; });
};

TEST_F(XGlobalKeys, OnePressIsToldOnceWhateverIsLocked) {
  const std::pair<const char16_t*, std::vector<xcb_keycode_t>> rows[] = {
      {u"Ctrl+Alt+V", {kControl, kAlt, kV}},
      {u"Ctrl+Shift+!", {kControl, kShift, kOne}},
      {u"Meta+F12", {kSuper, kF12}},
      {u"Pause", {kPause}}};
  for (const auto& [name, codes] : rows) {
    ASSERT_EQ(Bind(key, name), KeyBinding::Bound);
    for (const int locks : {0, 2, 16, 18}) {
      person.UseLocks(static_cast<std::uint8_t>(locks));
      EXPECT_EQ(Pressed(codes), 1) << ToUtf8(name) << " with the locks " << locks;
    }
  }
  EXPECT_EQ(Pressed({kPause}, 1500), 1) << "while it repeats itself";
  EXPECT_EQ(Pressed({kControl, kAlt, kV}), 0) << "the one of before";
  key.Release();
  EXPECT_EQ(Pressed({kPause}), 0);
  receiver.WaitFor(1);
  ASSERT_FALSE(receiver.Presses().empty());
  EXPECT_EQ(receiver.Presses().back().keysym, XKB_KEY_Pause) << "others have it again";
}

TEST_F(XGlobalKeys, AKeyOfAnotherProgramIsNotTakenAndIsFreeAfterItsEnd) {
  {
    XGlobalKey other(loop);
    ASSERT_EQ(Bind(other, u"Ctrl+Y"), KeyBinding::Bound);
    EXPECT_EQ(Bind(key, u"Ctrl+Y"), KeyBinding::Taken);
    EXPECT_EQ(Bind(key, u"Ctrl+V"), KeyBinding::Bound);
  }
  EXPECT_EQ(Bind(key, u"Ctrl+Y"), KeyBinding::Bound);
  EXPECT_EQ(Pressed({kControl, kY}), 1);
}

TEST_F(XGlobalKeys, TheKeyIsWhereTheLayoutInUseHasIt) {
  std::vector<KeyBinding> changes;
  const Hook changed = key.OnChanged([&](KeyBinding binding) { changes.push_back(binding); });
  EXPECT_EQ(Bind(key, u"Ctrl+Ö"), KeyBinding::NoSuchKey);
  ASSERT_EQ(Bind(key, u"Ctrl+Y"), KeyBinding::Bound);
  person.UseGroup(1);
  EXPECT_EQ(Pressed({kControl, kY}), 1) << "the Greek layout has no y";
  TestKeyboard::UseLayouts("de");
  EXPECT_EQ(Pressed({kControl, kY}), 0);
  EXPECT_EQ(Pressed({kControl, kZ}), 1);
  TestKeyboard::UseLayouts("us,de");
  EXPECT_EQ(Pressed({kControl, kY}), 1);
  person.UseGroup(1);
  EXPECT_EQ(Pressed({kControl, kZ}), 1);
  ASSERT_EQ(Bind(key, u"Ctrl+Ö"), KeyBinding::Bound);
  TestKeyboard::UseLayouts("us");
  EXPECT_TRUE(loop.RunUntil([&] { return !changes.empty(); }));
  EXPECT_EQ(changes, std::vector{KeyBinding::NoSuchKey});
}

TEST_F(XGlobalKeys, WithoutAServerItSaysSo) {
  XGlobalKey nowhere(loop, ":4711");
  EXPECT_EQ(Bind(nowhere, u"Ctrl+Y"), KeyBinding::Impossible);
}

}  // namespace
}  // namespace quillbox::test

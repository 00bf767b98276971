#include <xkbcommon/xkbcommon-keysyms.h>

#include <chrono>
#include <thread>

#include "base/RuntimeError.h"
#include "base/Utf8.h"
#include "x11/KeySenderFixture.h"

namespace quillbox::test {
namespace {

// The key string that types the text.
Text Quote(TextView text) {
  Text keys;
  for (const char16_t unit : text) {
    if (TextView(u"+^%~(){}[]").find(unit) != TextView::npos) {
      keys += Text(u"{") + unit + u"}";
    } else {
      keys += unit;
    }
  }
  return keys;
}

// Every character of a keyboard and some that few have.
Text MixedText(std::size_t characters) {
  Text all;
  for (char16_t unit = u' '; unit < 0x7F; ++unit) all += unit;
  all += u"½€ßé漢😀\tÄöЖжαΩ\n^´`«~é€A€b€";
  std::size_t inAll = 0;
  for (const char16_t unit : all) inAll += IsLowSurrogate(unit) ? 0 : 1;
  Text text;
  std::size_t count = 0;
  for (; count + inAll <= characters; count += inAll) text += all;
  return text + Text(characters - count, u'x');
}

struct Keyboard {
  const char* layouts;
  int group;
  std::uint8_t locked;
  bool answersPings;
  int microsecondsPerKey;
};

class XKeySenderText : public testing::TestWithParam<Keyboard> {};

TEST_P(XKeySenderText, ArrivesWholeAndTheKeyboardStaysAsItWas) {
  const Keyboard& keyboard = GetParam();
  TestKeyboard person(keyboard.layouts, keyboard.group);
  person.Lock(keyboard.locked);
  KeyReceiver receiver(
      {.answersPings = keyboard.answersPings, .microsecondsPerKey = keyboard.microsecondsPerKey});
  receiver.TakeFocus();
  const std::string before = TestKeyboard::Dump();

  const Text text = MixedText(5000);
  XKeySender(Plain()).Send(Quote(text));

  ASSERT_TRUE(receiver.WaitFor(5000));
  EXPECT_EQ(receiver.Text(), ToUtf8(text));
  EXPECT_EQ(receiver.Unpaired(), 0);
  EXPECT_EQ(TestKeyboard::Dump(), before);
  EXPECT_EQ(person.Locked(), keyboard.locked);
  EXPECT_EQ(person.Group(), keyboard.group);
  EXPECT_FALSE(person.AnyKeyDown());
  EXPECT_FALSE(person.RootHas("_QUILLBOX_SPARE_KEYS"));
  EXPECT_FALSE(person.RootHas("_QUILLBOX_TYPING"));
}

constexpr std::uint8_t kBothLocks = TestKeyboard::kCapsLock | TestKeyboard::kNumLock;

INSTANTIATE_TEST_SUITE_P(
    Keyboards, XKeySenderText,
    testing::Values(Keyboard{"us", 0, 0, false, 0}, Keyboard{"us", 0, 0, false, 150},
                    Keyboard{"us", 0, 0, true, 300}, Keyboard{"us", 0, kBothLocks, true, 0},
                    Keyboard{"de", 0, 0, true, 0}, Keyboard{"de", 0, kBothLocks, false, 0},
                    Keyboard{"fr", 0, 0, true, 0}, Keyboard{"fr", 0, kBothLocks, true, 0},
                    Keyboard{"us,gr", 1, 0, true, 0}, Keyboard{"us,gr", 1, kBothLocks, true, 0}),
    [](const auto& keyboard) {
      std::string name = keyboard.param.layouts;
      std::erase(name, ',');
      if (keyboard.param.locked != 0) name += "Locked";
      name += keyboard.param.answersPings ? "Asked" : "Waited";
      return name + std::to_string(keyboard.param.microsecondsPerKey);
    });

TEST(XKeySender, MoreCharactersThanSpareKeys) {
  for (const bool answersPings : {true, false}) {
    TestKeyboard person("us");
    KeyReceiver receiver({.answersPings = answersPings, .microsecondsPerKey = 50});
    receiver.TakeFocus();
    const std::string before = TestKeyboard::Dump();
    Text text;
    for (int i = 0; i < 400; ++i) (text += static_cast<char16_t>(0x4E00 + i)) += u'-';
    XKeySender(Plain()).Send(text);
    ASSERT_TRUE(receiver.WaitFor(800));
    EXPECT_EQ(receiver.Text(), ToUtf8(text));
    EXPECT_EQ(TestKeyboard::Dump(), before);
  }
}

TEST(XKeySender, SpareKeysStayUntilTheProgramHasLookedThemUp) {
  const TestKeyboard person("us");
  XKeySender sender(Plain());
  for (const bool asQt : {false, true}) {
    KeyReceiver receiver({.answersPings = true, .answersAsQt = asQt, .millisecondsToStart = 600});
    receiver.TakeFocus();
    const auto start = std::chrono::steady_clock::now();
    sender.Send(u"漢é😀");
    // Taken in, that is: no further wait.
    EXPECT_EQ(receiver.Text(), "漢é😀");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3));
  }
}

constexpr int kShift = 1;
constexpr int kControl = 4;
constexpr int kAlt = 8;

using XKeySenderKeys = KeySenderFixture;

TEST_F(XKeySenderKeys, ModifiersRepeatsAndSpecialKeys) {
  struct Typed {
    TextView keys;
    std::vector<std::pair<xkb_keysym_t, int>> presses;  // keysym and real modifiers
  };
  const auto plain = [](const std::vector<xkb_keysym_t>& keysyms) {
    std::vector<std::pair<xkb_keysym_t, int>> presses;
    for (const xkb_keysym_t keysym : keysyms) presses.emplace_back(keysym, 0);
    return presses;
  };
  const std::vector<Typed> rows{
      {u"+a^b%c", {{XKB_KEY_A, kShift}, {XKB_KEY_b, kControl}, {XKB_KEY_c, kAlt}}},
      {u"^%+x", {{XKB_KEY_X, kControl | kAlt | kShift}}},
      {u"^A^@", {{XKB_KEY_A, kControl | kShift}, {XKB_KEY_at, kControl | kShift}}},
      {u"^(ab)c", {{XKB_KEY_a, kControl}, {XKB_KEY_b, kControl}, {XKB_KEY_c, 0}}},
      {u"+(1)", {{XKB_KEY_exclam, kShift}}},
      {u"+é^é", {{XKB_KEY_Eacute, kShift}, {XKB_KEY_eacute, kControl}}},
      {u"{LEFT 3}{h 2}", plain({XKB_KEY_Left, XKB_KEY_Left, XKB_KEY_Left, XKB_KEY_h, XKB_KEY_h})},
      {u"~\r\n\t+{TAB}",
       {{XKB_KEY_Return, 0}, {XKB_KEY_Return, 0}, {XKB_KEY_Tab, 0}, {XKB_KEY_ISO_Left_Tab, kShift}}},
      {u"{{}{}}{+}", {{XKB_KEY_braceleft, kShift}, {XKB_KEY_braceright, kShift}, {XKB_KEY_plus, kShift}}},
      {u"{BS}{DEL}{ESC}{HOME}{END}{PGUP}{PGDN}{INS}",
       plain({XKB_KEY_BackSpace, XKB_KEY_Delete, XKB_KEY_Escape, XKB_KEY_Home, XKB_KEY_End, XKB_KEY_Prior,
              XKB_KEY_Next, XKB_KEY_Insert})},
      {u"{UP}{DOWN}{RIGHT}{F1}{F12}{F16}",
       plain({XKB_KEY_Up, XKB_KEY_Down, XKB_KEY_Right, XKB_KEY_F1, XKB_KEY_F12, XKB_KEY_F16})},
      {u"{ADD}{SUBTRACT}{MULTIPLY}{DIVIDE}{PRTSC}{HELP}{CLEAR}",
       plain({XKB_KEY_KP_Add, XKB_KEY_KP_Subtract, XKB_KEY_KP_Multiply, XKB_KEY_KP_Divide, XKB_KEY_Print,
              XKB_KEY_Help, XKB_KEY_Clear})},
      {u"%{F4}{BREAK}", {{XKB_KEY_F4, kAlt}, {XKB_KEY_Break, kControl}}},
  };
  for (const Typed& row : rows) {
    receiver.Clear();
    sender.Send(Text(row.keys));
    EXPECT_TRUE(receiver.WaitFor(row.presses.size()));
    std::vector<std::pair<xkb_keysym_t, int>> presses;
    for (const KeyPress& press : receiver.Presses()) presses.emplace_back(press.keysym, press.modifiers);
    EXPECT_EQ(presses, row.presses) << ToUtf8(row.keys);
  }
  EXPECT_EQ(receiver.Unpaired(), 0);
}

TEST_F(XKeySenderKeys, GroupsKeepTheirModifiersDown) {
  for (const auto& [keys, modifierPresses] : std::initializer_list<std::pair<TextView, int>>{
           {u"%{TAB}%{TAB}", 2}, {u"%({TAB}{TAB})", 1}, {u"%{TAB 3}", 1}, {u"^(a+(bc)d)", 2}, {u"ABC", 1}}) {
    receiver.Clear();
    sender.Send(Text(keys));
    EXPECT_EQ(receiver.ModifierPresses(), modifierPresses) << ToUtf8(keys);
    EXPECT_EQ(receiver.Unpaired(), 0);
  }
}

TEST_F(XKeySenderKeys, CapsLockOfTheStringOutlastsIt) {
  sender.Send(u"a{CAPSLOCK}");
  EXPECT_EQ(person.Locked(), TestKeyboard::kCapsLock);
  sender.Send(u"b{CAPSLOCK}");
  EXPECT_EQ(person.Locked(), 0);
  ASSERT_TRUE(receiver.WaitFor(4));
  EXPECT_EQ(receiver.Text(), "ab");
}

TEST_F(XKeySenderKeys, WaitsForAModifierThatIsHeld) {
  person.Key(TestKeyboard::kShiftKey, true);
  std::thread release([&] {
    Sleep(300);
    person.Key(TestKeyboard::kShiftKey, false);
  });
  sender.Send(u"abc é");
  release.join();
  ASSERT_TRUE(receiver.WaitFor(5));
  EXPECT_EQ(receiver.Text(), "abc é");
  // Another key that stays down does no harm; a modifier is a failure.
  receiver.Clear();
  person.Key(TestKeyboard::kPauseKey, true);
  sender.Send(u"abc");
  EXPECT_EQ(receiver.Text(), "abc");
  person.Key(TestKeyboard::kShiftKey, true);
  receiver.Clear();
  try {
    sender.Send(u"abc");
    FAIL() << "typed under Shift";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), errors::kDeviceError);
  }
  Sleep(50);
  EXPECT_TRUE(receiver.Presses().empty());
}

TEST_F(XKeySenderKeys, ABadStringTypesNothing) {
  const std::string before = TestKeyboard::Dump();
  for (const Text& keys : {Text(u"abc{END"), Text(u"abc)"), Text(u"漢{NAME}"), Text(u"abc\uFFFF")}) {
    EXPECT_THROW(sender.Send(keys), RuntimeError) << ToUtf8(keys);
  }
  sender.Send(u"");
  sender.Send(u"z");
  ASSERT_TRUE(receiver.WaitFor(1));
  EXPECT_EQ(receiver.Text(), "z");
  EXPECT_EQ(TestKeyboard::Dump(), before);
}

TEST_F(XKeySenderKeys, AStringFromWithinAStringFails) {
  XKeySender* inner = nullptr;
  int refused = 0;
  XKeySender::Options options = Plain();
  options.pause = [&](int milliseconds) {
    Sleep(milliseconds);
    try {
      inner->Send(u"x");
    } catch (const RuntimeError& error) {
      if (error.Number() == errors::kPermission) ++refused;
    }
  };
  XKeySender outer(std::move(options));
  inner = &outer;
  outer.Send(u"abc");
  ASSERT_TRUE(receiver.WaitFor(3));
  EXPECT_EQ(receiver.Text(), "abc");
  EXPECT_GT(refused, 0);
}

}  // namespace
}  // namespace quillbox::test

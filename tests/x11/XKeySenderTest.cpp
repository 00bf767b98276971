#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <thread>

#include "base/RuntimeError.h"
#include "base/Utf8.h"
#include "x11/KeySenderFixture.h"
#include "x11/OwnXServer.h"

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

// Every character of a keyboard and some that few have, again and again.
Text MixedText(int rounds) {
  Text all, text;
  for (char16_t unit = u' '; unit < 0x7F; ++unit) all += unit;
  all += u"½€ßé漢\tÄöЖжαΩ\n^´`«~é€A€b€";
  for (; rounds > 0; --rounds) text += all;
  return text;
}

TEST(XKeySender, ALongTextArrivesWholeAndTheKeyboardStaysAsItWas) {
  constexpr std::uint8_t kBothLocks = TestKeyboard::kCapsLock | TestKeyboard::kNumLock;
  const struct {
    const char* layouts;
    int group = 0;
    std::uint8_t locked = 0;
    bool answersPings = true;
    std::chrono::microseconds perKey{0};
  } keyboards[] = {{.layouts = "us", .answersPings = false},
                   {.layouts = "us", .perKey = std::chrono::microseconds(300)},
                   {.layouts = "us", .locked = kBothLocks},
                   {.layouts = "de", .locked = kBothLocks, .answersPings = false},
                   {.layouts = "fr"},
                   {.layouts = "us,gr", .group = 1},
                   {.layouts = "us,gr", .group = 1, .locked = kBothLocks}};
  for (const auto& keyboard : keyboards) {
    SCOPED_TRACE(&keyboard - keyboards);
    TestKeyboard person(keyboard.layouts, keyboard.group);
    person.UseLocks(keyboard.locked);
    KeyReceiver receiver({.answersPings = keyboard.answersPings,
                          .overKey = [&] { std::this_thread::sleep_for(keyboard.perKey); }});
    receiver.TakeFocus();
    const std::string before = TestKeyboard::Dump();
    Text text = MixedText(40);
    // More characters than there are spare keys.
    for (int i = 0; i < 400; ++i) (text += static_cast<char16_t>(0x4E00 + i)) += u'-';
    XKeySender(Plain()).Send(Quote(text));
    EXPECT_EQ(receiver.Text(text.size()), ToUtf8(text));
    EXPECT_EQ(receiver.Unpaired(), 0);
    EXPECT_EQ(TestKeyboard::Dump(), before);
    EXPECT_EQ(person.Locked(), keyboard.locked);
    EXPECT_EQ(person.Group(), keyboard.group);
    EXPECT_FALSE(person.AnyKeyDown());
    EXPECT_FALSE(person.TracesAreLeft());
  }
}

TEST(XKeySender, SpareKeysStayUntilTheProgramHasLookedThemUp) {
  const TestKeyboard person("us");
  XKeySender sender(Plain());
  for (const auto& [asQt, inChild] : {std::pair(false, false), {true, false}, {false, true}}) {
    const auto startSlowly = [first = true]() mutable { Sleep(std::exchange(first, false) ? 600 : 0); };
    KeyReceiver receiver({.answersPings = true, .answersAsQt = asQt, .overKey = startSlowly});
    receiver.SetFocus(inChild ? receiver.MakeChild() : receiver.Window());
    sender.Send(u"漢é😀");
    EXPECT_EQ(receiver.Text(), "漢é😀") << "taken in, that is";
  }
}

// The server replaces the keyboard by the one that the first key comes from, which types alike.
TEST(XKeySender, TheFirstKeysOfASession) {
  const OwnXServer server;
  const TestKeyboard person("us");
  KeyReceiver receiver({.answersPings = true});
  receiver.TakeFocus();
  EXPECT_NO_THROW(XKeySender(Plain()).Send(u"+(é)漢a"));
  EXPECT_EQ(receiver.Text(3), "É漢a");
}

// Nothing is lost or changed without a word: what stands in the window is right, or the script fails and what
// stands there is its beginning, but for the last character.
TEST(XKeySender, AKeyboardThatIsUsedMeanwhile) {
  TestKeyboard person("us,gr");
  const std::pair<const char*, std::function<void()>> rows[] = {
      {"Shift held for a while",
       [&] {
         person.Key(TestKeyboard::kShiftKey, true);
         Sleep(100);
         person.Key(TestKeyboard::kShiftKey, false);
       }},
      {"another group", [&] { person.UseGroup(1); }},
      {"Caps Lock", [&] { person.UseLocks(TestKeyboard::kCapsLock); }},
      {"another layout", [&] { TestKeyboard::UseLayouts("de"); }},
  };
  const Text text = MixedText(30) + Text(4000, u'y');
  for (const auto& [name, disturb] : rows) {
    SCOPED_TRACE(name);
    TestKeyboard::UseLayouts("us,gr");
    person.UseGroup(0);
    KeyReceiver receiver({.answersPings = true});
    receiver.TakeFocus();
    std::thread meanwhile([&receiver, &disturb = disturb] {
      while (receiver.Presses().size() < 1000) Sleep(1);
      disturb();
    });
    bool failed = false;
    try {
      XKeySender(Plain()).Send(Quote(text));
    } catch (const RuntimeError&) {
      failed = true;
    }
    meanwhile.join();
    Sleep(100);
    quillbox::Text begun = FromUtf8(receiver.Text(failed ? 0 : text.size()));
    if (failed) begun.resize(begun.size() - std::min<std::size_t>(begun.size(), 2));
    EXPECT_TRUE(failed ? text.starts_with(begun) : text == begun);
  }
}

using XKeySenderKeys = KeySenderFixture;

// "S-A C-b": the keysyms that came, with the real modifiers of each.
std::string Named(const std::vector<KeyPress>& presses) {
  std::string names;
  for (const KeyPress& press : presses) {
    char name[64] = {};
    xkb_keysym_get_name(press.keysym, name, sizeof name);
    if (!names.empty()) names += ' ';
    for (const auto& [bit, letter] : {std::pair(1, 'S'), {4, 'C'}, {8, 'A'}})
      if ((press.modifiers & bit) != 0) (names += letter) += '-';
    names += name;
  }
  return names;
}

TEST_F(XKeySenderKeys, ModifiersRepeatsAndSpecialKeys) {
  const std::pair<TextView, const char*> rows[] = {
      {u"+a^b%c", "S-A C-b A-c"},
      {u"^%+x", "S-C-A-X"},
      {u"^A^@", "S-C-A S-C-at"},
      {u"^(ab)c", "C-a C-b c"},
      {u"+(1)", "S-exclam"},
      {u"+é^é", "S-Eacute C-eacute"},
      {u"{LEFT 3}{h 2}", "Left Left Left h h"},
      {u"~\r\n\t+{TAB}", "Return Return Tab S-ISO_Left_Tab"},
      {u"{{}{}}{+}", "S-braceleft S-braceright S-plus"},
      {u"{BS}{DEL}{ESC}{HOME}{END}{PGUP}{PGDN}{INS}", "BackSpace Delete Escape Home End Prior Next Insert"},
      {u"{UP}{DOWN}{RIGHT}{F1}{F12}{F16}", "Up Down Right F1 F12 F16"},
      {u"{ADD}{SUBTRACT}{MULTIPLY}{DIVIDE}{PRTSC}{HELP}{CLEAR}",
       "KP_Add KP_Subtract KP_Multiply KP_Divide Print Help Clear"},
      {u"%{F4}{BREAK}", "A-F4 C-Break"},
  };
  for (const auto& [keys, names] : rows) {
    receiver.Clear();
    sender.Send(Text(keys));
    receiver.WaitFor(static_cast<std::size_t>(1 + std::count(names, names + std::strlen(names), ' ')));
    EXPECT_EQ(Named(receiver.Presses()), names) << ToUtf8(keys);
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
  EXPECT_EQ(receiver.Text(4), "ab");
}

TEST_F(XKeySenderKeys, WaitsForAModifierThatIsHeld) {
  person.Key(TestKeyboard::kShiftKey, true);
  std::thread release([&] {
    Sleep(300);
    person.Key(TestKeyboard::kShiftKey, false);
  });
  sender.Send(u"abc é");
  release.join();
  EXPECT_EQ(receiver.Text(5), "abc é");
  // Another key that stays down does no harm; a modifier is a failure.
  person.Key(TestKeyboard::kPauseKey, true);
  sender.Send(u"d");
  person.Key(TestKeyboard::kShiftKey, true);
  EXPECT_THROW(sender.Send(u"e"), RuntimeError);
  EXPECT_EQ(receiver.Text(6), "abc éd");
}

TEST_F(XKeySenderKeys, ABadStringTypesNothingNorDoesOneFromWithinAString) {
  EXPECT_THROW(sender.Send(u"abc\uFFFF"), RuntimeError);
  XKeySender* inner = nullptr;
  int refused = 0;
  XKeySender::Options options = Plain();
  options.pause = [&](int milliseconds) {
    Sleep(milliseconds);
    EXPECT_THROW(inner->Send(u"x"), RuntimeError);
    ++refused;
  };
  XKeySender outer(std::move(options));
  inner = &outer;
  outer.Send(u"abc");
  EXPECT_EQ(receiver.Text(3), "abc");
  EXPECT_GT(refused, 0);
}

}  // namespace
}  // namespace quillbox::test

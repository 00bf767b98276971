#include <gtest/gtest.h>

#include <optional>

#include "base/RuntimeError.h"
#include "base/Utf8.h"
#include "platform/ports/KeyNotation.h"

namespace quillbox {

// How a failed comparison shows a stroke.
static void PrintTo(const KeyStroke& stroke, std::ostream* out) {
  *out << std::hex << "U+" << static_cast<std::uint32_t>(stroke.character) << std::dec << " special "
       << static_cast<int>(stroke.special) << " modifiers " << static_cast<int>(stroke.modifiers)
       << (stroke.joined ? " joined" : "");
}

namespace {

using modifier::kAlt;
using modifier::kControl;
using modifier::kShift;

using Strokes = std::vector<KeyStroke>;

KeyStroke Char(char32_t character, int modifiers = 0) {
  return {.character = character, .modifiers = static_cast<std::uint8_t>(modifiers)};
}

KeyStroke Key(SpecialKey key, int modifiers = 0) {
  return {.special = key, .modifiers = static_cast<std::uint8_t>(modifiers)};
}

KeyStroke Joined(KeyStroke stroke) {
  stroke.joined = true;
  return stroke;
}

std::optional<Strokes> TryParse(TextView keys) {
  try {
    return ParseKeys(keys);
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), errors::kBadCall);
    return std::nullopt;
  }
}

struct Reading {
  TextView keys;
  Strokes strokes;
};

void ExpectReadings(std::initializer_list<Reading> table) {
  for (const Reading& row : table) EXPECT_EQ(TryParse(row.keys), row.strokes) << ToUtf8(row.keys);
}

TEST(KeyNotation, CharactersStandForThemselves) {
  ExpectReadings({
      {u"", {}},
      {u"aA 1", {Char(U'a'), Char(U'A'), Char(U' '), Char(U'1')}},
      {u"[é]", {Char(U'['), Char(U'é'), Char(U']')}},
      {u"漢😀", {Char(U'漢'), Char(U'😀')}},
      {u"\t", {Key(SpecialKey::Tab)}},
      {u"a\r\n\nb\r\r",
       {Char(U'a'), Key(SpecialKey::Enter), Key(SpecialKey::Enter), Char(U'b'), Key(SpecialKey::Enter),
        Key(SpecialKey::Enter)}},
      {u"~", {Key(SpecialKey::Enter)}},
  });
}

TEST(KeyNotation, SignsHoldForOneKeyOrOneGroup) {
  ExpectReadings({
      {u"+ab", {Char(U'a', kShift), Char(U'b')}},
      {u"^%+a", {Char(U'a', kShift | kControl | kAlt)}},
      {u"++a", {Char(U'a', kShift)}},
      {u"+~%\r\n^\t",
       {Key(SpecialKey::Enter, kShift), Key(SpecialKey::Enter, kAlt), Key(SpecialKey::Tab, kControl)}},
      {u"^(ab)c", {Char(U'a', kControl), Joined(Char(U'b', kControl)), Char(U'c')}},
      {u"^({x 0}a)^(b)", {Char(U'a', kControl), Char(U'b', kControl)}},
      {u"%{TAB}%{TAB 2}",
       {Key(SpecialKey::Tab, kAlt), Key(SpecialKey::Tab, kAlt), Joined(Key(SpecialKey::Tab, kAlt))}},
      {u"+(a^(b%c)d)e",
       {Char(U'a', kShift), Joined(Char(U'b', kShift | kControl)),
        Joined(Char(U'c', kShift | kControl | kAlt)), Joined(Char(U'd', kShift)), Char(U'e')}},
      {u"(a(b))", {Char(U'a'), Char(U'b')}},
      {u"+()a", {Char(U'a')}},
      {u"%{F4}", {Key(SpecialKey::F4, kAlt)}},
      {u"+{a 0}b", {Char(U'b')}},
      {u"+😀a", {Char(U'😀', kShift), Char(U'a')}},
  });
}

TEST(KeyNotation, BracesNameQuoteAndRepeat) {
  ExpectReadings({
      {u"{end}{End}", {Key(SpecialKey::End), Key(SpecialKey::End)}},
      {u"{BS}{bksp}{BackSpace}", {3, Key(SpecialKey::Backspace)}},
      {u"{DEL}{DELETE}", {2, Key(SpecialKey::Delete)}},
      {u"{INS}{INSERT}", {2, Key(SpecialKey::Insert)}},
      {u"{ESC}{ESCAPE}", {2, Key(SpecialKey::Escape)}},
      {u"{F1}{f9}{F10}{F24}",
       {Key(SpecialKey::F1), Key(SpecialKey::F9), Key(SpecialKey::F10), Key(SpecialKey::F24)}},
      {u"{+}{^}{%}{~}{(}{)}{{}{}}{[}{]}",
       {Char(U'+'), Char(U'^'), Char(U'%'), Char(U'~'), Char(U'('), Char(U')'), Char(U'{'), Char(U'}'),
        Char(U'['), Char(U']')}},
      {u"{LEFT 3}", {3, Key(SpecialKey::Left)}},
      {u"^{x  2}", {Char(U'x', kControl), Joined(Char(U'x', kControl))}},
      {u"{} 2}{{ 2}", {Char(U'}'), Char(U'}'), Char(U'{'), Char(U'{')}},
      {u"{ }{  2}", {3, Char(U' ')}},
      {u"{😀 2}", {2, Char(U'😀')}},
      {u"{\t}{\r\n}{\n 2}",
       {Key(SpecialKey::Tab), Key(SpecialKey::Enter), Key(SpecialKey::Enter), Key(SpecialKey::Enter)}},
      {u"{h 0}", {}},
  });
  EXPECT_EQ(ParseKeys(u"{h 32767}").size(), 32767U);
}

TEST(KeyNotation, WhatCannotBeReadFailsAsAWhole) {
  for (const Text keys :
       {// Braces and parentheses that don't match.
        u"abc{", u"abc{END", u"{", u"}", u"a}", u"{}", u"{}a", u"{}a}", u"(", u"(a", u")", u"a)", u"(a))",
        // Signs without a key.
        u"+", u"ab^", u"+(a%)", u"(+)",
        // No such key.
        u"{NAME}", u"{SCRIPT}", u"{ab}", u"{F0}", u"{F25}", u"{F01}", u"{F 1x}", u"{F999999999999999999999}",
        // No such count.
        u"{LEFT }", u"{LEFT x}", u"{LEFT -1}", u"{LEFT 1 }", u"{LEFT 32768}",
        u"{LEFT 99999999999999999999999}", u"{LEFT 1.5}", u"{ LEFT}", u"{ 3}",
        // Control characters.
        u"\x1B", u"\x7F"}) {
    EXPECT_EQ(TryParse(keys), std::nullopt) << ToUtf8(keys);
  }
  for (const Text& keys : {Text{u'a', 0xD83D}, Text{0xDE00, u'a'}, Text{u'a', 0}}) {
    EXPECT_EQ(TryParse(keys), std::nullopt) << ToUtf8(keys);
  }
}

TEST(KeyNotation, ExpansionIsBounded) {
  Text keys;
  for (int i = 0; i < 30; ++i) keys += u"{x 32767}";
  EXPECT_EQ(ParseKeys(keys).size(), 30U * 32767U);
  EXPECT_EQ(TryParse(keys + u"{x 32767}"), std::nullopt);
  EXPECT_EQ(ParseKeys(keys + u"{x 16990}").size(), kMaxKeyStrokes);
  EXPECT_EQ(TryParse(keys + u"{x 16990}a"), std::nullopt);
}

TEST(KeyNotation, DeepNestingIsNoProblem) {
  const Text open(200000, u'(');
  const Text close(200000, u')');
  EXPECT_EQ(TryParse(open + u"a" + close), Strokes{Char(U'a')});
  EXPECT_EQ(TryParse(open + u"a"), std::nullopt);
}

}  // namespace
}  // namespace quillbox

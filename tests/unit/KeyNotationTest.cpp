#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "base/RuntimeError.h"
#include "base/Utf8.h"
#include "platform/ports/KeyCombination.h"
#include "platform/ports/KeyNotation.h"

namespace quillbox {
namespace {

// The strokes with a blank between them, "fails" where there are none to be had. Signs before a key are the
// modifiers that are held; "_" says that they were held already for the key before.
std::string Strokes(TextView keys) {
  std::string strokes;
  try {
    for (const KeyStroke& stroke : ParseKeys(keys)) {
      if (!strokes.empty()) strokes += ' ';
      if (stroke.joined) strokes += '_';
      if ((stroke.modifiers & modifier::kShift) != 0) strokes += '+';
      if ((stroke.modifiers & modifier::kControl) != 0) strokes += '^';
      if ((stroke.modifiers & modifier::kAlt) != 0) strokes += '%';
      strokes += ToUtf8(stroke.character != 0 ? TextOf(stroke.character)
                                              : FormatCombination({0, 0, stroke.special}));
    }
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), errors::kBadCall);
    return "fails";
  }
  return strokes;
}

TEST(KeyNotation, IsReadWholeOrNotAtAll) {
  const std::pair<Text, const char*> cases[] = {
      // Characters stand for themselves.
      {u"", ""},
      {u"aA[1]é漢😀", "a A [ 1 ] é 漢 😀"},
      {u"\t~a\r\n\nb\r\r", "Tab Enter a Enter Enter b Enter Enter"},
      // Signs hold for one key or one group.
      {u"+ab", "+a b"},
      {u"^%+a++b", "+^%a +b"},
      {u"+~%\r\n^\t", "+Enter %Enter ^Tab"},
      {u"^(ab)c", "^a _^b c"},
      {u"^({x 0}a)^(b)", "^a ^b"},
      {u"%{TAB}%{TAB 2}", "%Tab %Tab _%Tab"},
      {u"+(a^(b%c)d)e", "+a _+^b _+^%c _+d e"},
      {u"(a(b))+()c+{a 0}d", "a b c d"},
      {u"%{F4}+😀a", "%F4 +😀 a"},
      // Braces name, quote and repeat.
      {u"{end}{BS}{bksp}{BackSpace}{DEL}{DELETE}", "End Backspace Backspace Backspace Delete Delete"},
      {u"{INS}{INSERT}{ESC}{ESCAPE}{F1}{f9}{F10}{F24}", "Insert Insert Escape Escape F1 F9 F10 F24"},
      {u"{+}{^}{%}{~}{(}{)}{{}{}}{[}{]}", "+ ^ % ~ ( ) { } [ ]"},
      {u"{LEFT 3}^{x  2}{h 0}", "Left Left Left ^x _^x"},
      {u"{} 2}{{ 2}{ }{  2}", "} } { {      "},
      {u"{😀 2}{\t}{\r\n}{\n 2}", "😀 😀 Tab Enter Enter Enter"},
  };
  for (const auto& [keys, strokes] : cases) EXPECT_EQ(Strokes(keys), strokes) << ToUtf8(keys);
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
        // Control characters, and halves of one.
        u"\x1B", u"\x7F", u"a\xD83D", u"\xDE00", u"\xD83D\xD83D"}) {
    EXPECT_EQ(Strokes(keys), "fails") << ToUtf8(keys);
  }
  EXPECT_EQ(Strokes(Text{u'a', 0}), "fails");
}

TEST(KeyNotation, ExpansionIsBoundedAndDeepNestingIsNoProblem) {
  Text keys;
  for (int i = 0; i < 30; ++i) keys += u"{x 32767}";
  EXPECT_EQ(ParseKeys(keys + u"{x 16990}").size(), kMaxKeyStrokes);
  EXPECT_EQ(Strokes(keys + u"{x 16990}a"), "fails");
  const Text open(200000, u'(');
  EXPECT_EQ(Strokes(open + u"a" + Text(200000, u')')), "a");
  EXPECT_EQ(Strokes(open + u"a"), "fails");
}

// What a person reads is what is read.
TEST(KeyCombination, IsWrittenAsItIsRead) {
  for (const Text key : {u"V", u"Ctrl+Alt+V", u"Ctrl+Alt+Shift+Meta+F24", u"Meta+Space", u"Ctrl++", u"Alt+-",
                         u"Shift+F1", u"Ctrl+PageUp", u"Alt+ö", u"Ctrl+😀"})
    EXPECT_EQ(FormatCombination(ParseCombination(key).value_or(KeyCombination())), key) << ToUtf8(key);
  EXPECT_EQ(FormatCombination(*ParseCombination(u"shift+META+alt+CTRL+pause")), u"Ctrl+Alt+Shift+Meta+Pause");
  for (const Text none : {u"", u"Ctrl", u"Ctrl+", u"+V", u"Ctrl+Ctrl", u"Strg+V", u"Ctrl+VV", u"Ctrl+ ",
                          u"F0", u"F25", u"\xD83D", u"\x1B", u"Ctrl+Alt+V "})
    EXPECT_FALSE(ParseCombination(none)) << ToUtf8(none);
}

}  // namespace
}  // namespace quillbox

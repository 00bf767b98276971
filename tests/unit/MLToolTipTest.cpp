// Tips in several lines. A character is 7 pixels wide here, a line 14 high, a border 1.
#include <gtest/gtest.h>

#include "base/Utf8.h"
#include "memory/MemoryTips.h"
#include "tray/tips/MLToolTip.h"

namespace quillbox {
namespace {

constexpr int kBorders = 4;
constexpr int kScreen = 1000;

class MLToolTipTest : public testing::Test {
 protected:
  MLToolTipTest() {
    tips.MLToolTipInstall();
    tips.MLToolTipSetMaxWidth(320);
  }
  void WidthInCharacters(int count) { tips.MLToolTipSetMaxWidth(count * MemoryTips::kCharacterWidth); }
  TipLayout Lay(const Text& tip, int mouse = 500) { return tips.Layout(tip, mouse, kScreen, surface); }
  // The lines, with "|" between them; what is underlined stands in brackets.
  std::string Lines(const Text& tip) {
    Text lines;
    const TipLayout layout = Lay(tip);
    for (const TipLine& line : layout.lines) {
      if (&line != &layout.lines.front()) lines += u'|';
      std::size_t next = 0;
      for (std::size_t i = 0; i < line.text.size(); ++i) {
        const bool underlined = next < line.underlined.size() && line.underlined[next] == i;
        if (underlined) ++next;
        lines += underlined ? Text{u'[', line.text[i], u']'} : Text{line.text[i]};
      }
      EXPECT_EQ(next, line.underlined.size()) << "a position without a character";
    }
    return ToUtf8(lines);
  }

  MemoryTips surface;
  MLToolTip tips;
};

TEST_F(MLToolTipTest, LinesAsTheyStandInTheText) {
  const TipLayout layout = Lay(u"Description\r\n\r\n(Default = YES)");
  ASSERT_EQ(layout.lines.size(), 3U);
  EXPECT_EQ(layout.lines[1].text, u"");
  EXPECT_EQ(layout.width, 15 * 7 + kBorders) << "as wide as the longest line";
  EXPECT_EQ(layout.height, 3 * 14 + kBorders);
  EXPECT_EQ(Lines(u"a\rb\nc\r\nd"), "a|b|c|d");
  EXPECT_EQ(Lines(u"a\r\n"), "a") << "a break at the end begins no line";
  EXPECT_EQ(Lay(u"").lines.size(), 0U);
  EXPECT_EQ(Lay(u"").width, kBorders);
}

TEST_F(MLToolTipTest, WrapsAtWordEnds) {
  WidthInCharacters(10);
  EXPECT_EQ(Lines(u"one two three"), "one two|three");
  EXPECT_EQ(Lines(u"1234567890 next"), "1234567890|next") << "a line may be as wide as the limit";
  EXPECT_EQ(Lines(u"12345678901"), "1234567890|1") << "a longer word is broken by characters";
  EXPECT_EQ(Lines(u"ab 123456789012345678901234"), "ab|1234567890|1234567890|1234");
  EXPECT_EQ(Lines(u"one two   three"), "one two|three") << "the blanks go with the line's end";
  EXPECT_EQ(Lines(u"  in   two"), "  in   two");
  EXPECT_EQ(Lines(u"            far"), "          |far");
  EXPECT_EQ(Lines(u"one\r\ntwo three four"), "one|two three|four");
  // Nothing is lost with a limit below one character, and no pair is torn.
  WidthInCharacters(0);
  EXPECT_EQ(Lines(u"abc"), "a|b|c");
  WidthInCharacters(3);
  EXPECT_EQ(Lines(u"\U0001F600\U0001F600"), "\U0001F600|\U0001F600");
}

TEST_F(MLToolTipTest, WidthIsWithoutLimitUntilItIsSet) {
  MLToolTip fresh;
  fresh.MLToolTipSetMaxWidth(70);
  fresh.MLToolTipInstall();
  const Text longText(200, u'x');
  EXPECT_EQ(fresh.Layout(longText, 0, kScreen, surface).lines.size(), 1U);
  fresh.MLToolTipSetMaxWidth(70);
  fresh.MLToolTipInstall();
  EXPECT_EQ(fresh.Layout(longText, 0, kScreen, surface).lines.size(), 20U) << "installed once only";
  fresh.MLToolTipRemove();
  EXPECT_FALSE(fresh.IsInstalled());
}

TEST_F(MLToolTipTest, MarksAlignAndAreNotShown) {
  const struct {
    Text tip;
    int alignment;
    std::string shown;
  } cases[] = {
      {u"plain", 0, "plain"},  {u"<c>text", 1, "text"}, {u"<C>text", 1, "text"},
      {u"<r>text", 2, "text"}, {u"<R>text", 2, "text"}, {u"<c><r>text", 1, "<r>text"},  // one mark at most
      {u"a<c>b", 0, "a<c>b"},  {u" <r>b", 0, " <r>b"},  {u"<l>b", 0, "<l>b"},
      {u"<c", 0, "<c"},
  };
  for (const auto& [tip, alignment, shown] : cases) {
    EXPECT_EQ(Lay(tip).alignment, alignment) << ToUtf8(tip);
    EXPECT_EQ(Lines(tip), shown);
  }
}

TEST_F(MLToolTipTest, AmpersandsAreReadAsInAMenu) {
  EXPECT_EQ(Lines(u"a && b"), "a & b");
  EXPECT_EQ(Lines(u"&File and &Edit"), "[F]ile and [E]dit");
  EXPECT_EQ(Lines(u"&&&x"), "&[x]");
  EXPECT_EQ(Lines(u"&&&&"), "&&");
  EXPECT_EQ(Lines(u"end&"), "end");
  EXPECT_EQ(Lines(u"end&\r\nnext"), "end|next");
  EXPECT_EQ(Lay(u"&&&&").width, 2 * 7 + kBorders) << "measured as it is drawn";
  WidthInCharacters(5);
  EXPECT_EQ(Lines(u"first &second"), "first|[s]econ|d") << "positions count from the line's beginning";
}

TEST_F(MLToolTipTest, TabsReachTheNextColumnOfEight) {
  EXPECT_EQ(Lines(u"a\tb"), "a       b");
  EXPECT_EQ(Lines(u"12345678\tb"), "12345678        b");
  EXPECT_EQ(Lines(u"\t\tx"), "                x");
  WidthInCharacters(10);
  EXPECT_EQ(Lines(u"a\tbcd"), "a|bcd") << "a tab is a place to break, too";
}

TEST_F(MLToolTipTest, StandsUnderTheMouseAndOnTheScreen) {
  const Text tip(10, u'x');  // 74 pixels wide
  EXPECT_EQ(Lay(tip, 500).left, 500 - 37);
  EXPECT_EQ(Lay(u"123456789012345", 500).left, 500 - 54) << "half of 109, rounded down";
  EXPECT_EQ(Lay(tip, 36).left, 0);
  EXPECT_EQ(Lay(tip, -50).left, 0);
  EXPECT_EQ(Lay(tip, 963).left, 926);
  EXPECT_EQ(Lay(tip, 999).left, kScreen - 74);
  EXPECT_EQ(tips.Layout(tip, 30, 50, surface).left, 0) << "wider than the screen";
}

TEST_F(MLToolTipTest, AVeryLongTextIsLaidOutWhole) {
  Text text;
  while (text.size() < 32000) text += u"word and another & ";
  std::size_t characters = 0;
  for (const TipLine& line : Lay(text).lines) {
    EXPECT_LE(surface.TextWidth(line.text), 320);
    for (const char16_t unit : line.text) characters += unit != u' ' ? 1 : 0;
  }
  std::size_t expected = 0;
  for (const char16_t unit : text) expected += unit != u' ' && unit != u'&' ? 1 : 0;
  EXPECT_EQ(characters, expected);
}

}  // namespace
}  // namespace quillbox

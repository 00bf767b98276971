// What no console can show of the tips: what is underlined, and other widths than the program's own.
#include <gtest/gtest.h>

#include "base/Utf8.h"
#include "memory/MemoryTips.h"
#include "tray/tips/MLToolTip.h"

namespace quillbox {
namespace {

// The lines, with "|" between them; what is underlined stands in brackets.
std::string Lines(const MLToolTip& tips, const Text& tip) {
  MemoryTips surface;
  Text lines;
  const TipLayout layout = tips.Layout(tip, 0, 1000, surface);
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

TEST(MLToolTip, UnderlinesAndNarrowWidths) {
  MLToolTip tips;
  const struct {
    int characters;
    Text tip;
    std::string lines;
  } cases[] = {
      {45, u"&File and &Edit", "[F]ile and [E]dit"},
      {45, u"&&&x &&&&", "&[x] &&"},
      {45, u"end&\r\n&next", "end|[n]ext"},
      {5, u"first &second", "first|[s]econ|d"},  // positions count from the line's beginning
      {10, u"ab 123456789012345678901234", "ab|1234567890|1234567890|1234"},
      {10, u"            far", "          |far"},
      {10, u"a\tbcd", "a|bcd"},
      // Nothing is lost with a limit below one character, and no pair is torn.
      {0, u"abc", "a|b|c"},
      {3, u"\U0001F600\U0001F600", "\U0001F600|\U0001F600"},
  };
  for (const auto& [characters, tip, lines] : cases) {
    tips.MLToolTipSetMaxWidth(characters * MemoryTips::kCharacterWidth);
    EXPECT_EQ(Lines(tips, tip), lines) << ToUtf8(tip);
  }
}

}  // namespace
}  // namespace quillbox

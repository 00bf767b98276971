// What no console can show of the tips: what is underlined, and other widths than the program's own.
#include <gtest/gtest.h>

#include "base/Utf8.h"
#include "memory/MemoryDesktop.h"
#include "tray/tips/MLToolTip.h"

namespace quillbox {
namespace {

// The lines, with "|" between them; what is underlined stands in brackets.
std::string Lines(const MLToolTip& tips, const Text& tip) {
  MemoryTips surface;
  Text lines;
  const TipLayout layout = tips.Layout(tip, 0, 1000, surface);
  for (const auto& [text, underlined] : layout.lines) {
    Text line = text;
    for (auto at = underlined.rbegin(); at != underlined.rend(); ++at) {
      line.insert(*at, u"[").insert(*at + 2, u"]");
    }
    lines += (&text == &layout.lines.front().text ? u"" : u"|") + line;
  }
  return ToUtf8(lines);
}

TEST(MLToolTip, UnderlinesAndNarrowWidths) {
  MLToolTip tips;
  const std::tuple<int, Text, std::string> cases[] = {
      {45, u"&File and &Edit", "[F]ile and [E]dit"},
      {45, u"&&&x &&&&", "&[x] &&"},
      {45, u"end&\r\n&next", "end|[n]ext"},
      {5, u"first &second", "first|[s]econ|d"},  // positions count from the line's beginning
      // Nothing is lost with a limit below one character, and no pair is torn.
      {0, u"a\U0001F600", "a|\U0001F600"},
  };
  for (const auto& [characters, tip, lines] : cases) {
    tips.MLToolTipSetMaxWidth(characters * MemoryTips::kCharacterWidth);
    EXPECT_EQ(Lines(tips, tip), lines) << ToUtf8(tip);
  }
  // The first installation takes the limit away, a second one nothing.
  for (const std::string lines : {"long", "l|o|n|g"}) {
    tips.MLToolTipInstall();
    EXPECT_EQ(Lines(tips, u"long"), lines);
    tips.MLToolTipSetMaxWidth(1);
  }
}

}  // namespace
}  // namespace quillbox

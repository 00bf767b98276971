// Texts as bytes: UTF-8, the code page, and what is kept of a text in memory.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "base/CodePage.h"
#include "base/SharedText.h"
#include "base/Utf8.h"

namespace quillbox {
namespace {

TEST(Utf8, EdgesOfEachLengthOfSequence) {
  const Text text = Text(1, u'\0') + u"\x7F\x80\x7FF\x800\xD7FF\xE000\xFFFF\U00010000\U0010FFFF";
  const std::string bytes = std::string(1, '\0') +
                            "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF"
                            "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF";
  for (std::size_t size = 0; size <= text.size(); ++size) {
    if (size == 9 || size == 11) continue;  // half a pair
    const Text begin = text.substr(0, size);
    EXPECT_TRUE(bytes.starts_with(ToUtf8(begin))) << size;
    EXPECT_EQ(ToLosslessUtf8(begin), ToUtf8(begin));
    EXPECT_EQ(FromUtf8(ToUtf8(begin)), begin);
    EXPECT_EQ(FromLosslessUtf8(ToUtf8(begin)), begin);
  }
  EXPECT_EQ(ToUtf8(text), bytes);
}

TEST(Utf8, EachByteOfABrokenSequenceIsReplacedAndALoneSurrogateToo) {
  // "?" for what is replaced.
  const std::pair<std::string, std::string> cases[] = {
      {"a\xFF\xFEz", "a??z"},
      {"\xC0\x80\xC1\xBF\xE0\x9F\xBF\xF0\x8F\xBF\xBF", "???????????"},  // longer than need be
      {"\xF4\x90\x80\x80\xF5\x80\x80\x80x", "????????x"},               // above U+10FFFF
      {"\x80\xE4\xB8", "???"},                                          // cut off at the end
      {"\xF0\x9F\x98z", "???z"},
      {"\xE4\xC2\xBD\xE4\xB8\xE4\xB8\xAD", "?\xC2\xBD??\xE4\xB8\xAD"},  // the next sequence is whole
  };
  for (const auto& [bytes, shown] : cases) {
    Text text = FromUtf8(bytes);
    EXPECT_EQ(FromLosslessUtf8(bytes), text);
    std::replace(text.begin(), text.end(), u'\xFFFD', u'?');
    EXPECT_EQ(ToUtf8(text), shown);
  }
  const Text text = u"a\xD800z\xDC00\xDFFF\xDBFF";
  EXPECT_EQ(ToUtf8(text), "a\xEF\xBF\xBDz\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(ToLosslessUtf8(text), "a\xED\xA0\x80z\xED\xB0\x80\xED\xBF\xBF\xED\xAF\xBF");
  EXPECT_EQ(FromLosslessUtf8(ToLosslessUtf8(text)), text);
  EXPECT_EQ(FromUtf8("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");
}

TEST(CodePage, EveryByteIsACharacterAndBack) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
  const Text all = FromBytes(bytes);
  EXPECT_EQ(ToBytes(all), bytes);
  EXPECT_EQ(all.substr(0x80, 32), u"€\x81‚ƒ„…†‡ˆ‰Š‹Œ\x8DŽ\x8F\x90‘’“”•–—˜™š›œ\x9DžŸ");
  for (const char16_t unit : TextView(u"\x80\x9F\x100\x3B1\x20AB\xD800\xFEFF\xFFFF"))
    EXPECT_FALSE(ByteOf(unit));
}

TEST(CodePage, OneForeignCharacterMakesTheWholeTextUtf8) {
  const std::string mark = "\xEF\xBB\xBF";
  EXPECT_EQ(ToBytes(u"50 €"), "50 \x80");
  EXPECT_EQ(ToBytes(u"50 € α"), mark + "50 \xE2\x82\xAC \xCE\xB1");
  EXPECT_EQ(ToBytes(u"\xFEFF"), mark + mark);
  EXPECT_EQ(ToBytes(u"\xDC00!"), mark + "\xED\xB0\x80!");
  // A text that looks like the mark comes back.
  EXPECT_EQ(ToBytes(u"ï»¿x"), mark + "\xC3\xAF\xC2\xBB\xC2\xBFx");
  for (const Text text : {u"ï»¿", u"xï»¿", u"ï»", u"ï»¿ï»¿α", u"\xFEFFï»¿"}) {
    EXPECT_EQ(FromBytes(ToBytes(text)), text);
  }
}

// What is kept as bytes reads as it was, and is like no other text.
TEST(SharedText, IsTheTextItWasMadeOf) {
  const Text before(32, u'b'), behind(15, u'e');
  std::vector<Text> texts{u"", u"a", u"\u20AC", u"\u0080", u"\u0081", before + u"\u00FC" + behind + u"f"};
  for (const char16_t* one : {u"\u20AC", u"\u00FC", u"\u0080", u"\u03B1"})
    texts.push_back(before + one + behind);
  for (const Text& text : texts) {
    const SharedText shared(text);
    EXPECT_EQ(shared.Get(), text);
    EXPECT_EQ(shared.Get(33), text.substr(0, 33));
    EXPECT_EQ(shared.Length(), text.size());
    for (const Text& other : texts) {
      EXPECT_EQ(shared.Is(other), text == other);
      EXPECT_EQ(shared == SharedText(other), text == other);
    }
  }
  EXPECT_TRUE(SharedText(before + u"\u20AC").SingleBytes());
  EXPECT_FALSE(SharedText(before + u"\u0080").SingleBytes());
}

}  // namespace
}  // namespace quillbox

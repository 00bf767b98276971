#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "base/CodePage.h"
#include "base/SharedText.h"

namespace quillbox {
namespace {

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
  std::mt19937 random(7);
  for (int i = 0; i < 20000; ++i) {
    Text text(random() % 60, u'\0');
    const unsigned range = random() % 2 == 0 ? 0x100 : 0x10000;
    for (char16_t& unit : text) unit = static_cast<char16_t>(random() % (random() % 8 == 0 ? range : 0x80));
    ASSERT_EQ(FromBytes(ToBytes(text)), text);
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

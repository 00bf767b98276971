#include <gtest/gtest.h>

#include <random>

#include "base/Utf8.h"

namespace quillbox {
namespace {

TEST(Utf8, EdgesOfEachLengthOfSequence) {
  const std::pair<Text, std::string> cases[] = {
      {u"", ""},
      {Text(1, u'\0'), std::string(1, '\0')},
      {u"\x7F", "\x7F"},
      {u"\x80", "\xC2\x80"},
      {u"\x7FF", "\xDF\xBF"},
      {u"\x800", "\xE0\xA0\x80"},
      {u"\xD7FF", "\xED\x9F\xBF"},
      {u"\xE000", "\xEE\x80\x80"},
      {u"\xFFFF", "\xEF\xBF\xBF"},
      {u"\U00010000", "\xF0\x90\x80\x80"},
      {u"\U0010FFFF", "\xF4\x8F\xBF\xBF"},
      {u"a\u00BD\u4E2D\U0001F600z", "a\xC2\xBD\xE4\xB8\xAD\xF0\x9F\x98\x80z"},
  };
  for (const auto& [text, bytes] : cases) {
    EXPECT_EQ(ToUtf8(text), bytes);
    EXPECT_EQ(ToLosslessUtf8(text), bytes);
    EXPECT_EQ(FromUtf8(bytes), text);
    EXPECT_EQ(FromLosslessUtf8(bytes), text);
  }
}

TEST(Utf8, EachByteOfABrokenSequenceIsReplaced) {
  const std::pair<std::string, Text> cases[] = {
      {"\x80", u"\uFFFD"},
      {"a\xFF\xFEz", u"a\uFFFD\uFFFDz"},
      {"\xC0\x80", u"\uFFFD\uFFFD"},                      // overlong NUL
      {"\xC1\xBF", u"\uFFFD\uFFFD"},                      // overlong ASCII
      {"\xE0\x9F\xBF", u"\uFFFD\uFFFD\uFFFD"},            // overlong U+07FF
      {"\xF0\x8F\xBF\xBF", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // overlong U+FFFF
      {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // above U+10FFFF
      {"\xF5\x80\x80\x80x", u"\uFFFD\uFFFD\uFFFD\uFFFDx"},
      {"\xE4\xB8", u"\uFFFD\uFFFD"},  // cut off at the end
      {"\xF0\x9F\x98z", u"\uFFFD\uFFFD\uFFFDz"},
      {"\xE4\xC2\xBD", u"\uFFFD\u00BD"},  // the next sequence is whole
      {"\xE4\xB8\xE4\xB8\xAD", u"\uFFFD\uFFFD\u4E2D"},
  };
  for (const auto& [bytes, text] : cases) {
    EXPECT_EQ(FromUtf8(bytes), text);
    EXPECT_EQ(FromLosslessUtf8(bytes), text);
  }
}

TEST(Utf8, LoneSurrogatesAreReplacedOrKept) {
  const Text text = u"a\xD800z\xDC00\xDFFF\xDBFF";
  EXPECT_EQ(ToUtf8(text), "a\xEF\xBF\xBDz\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(ToLosslessUtf8(text), "a\xED\xA0\x80z\xED\xB0\x80\xED\xBF\xBF\xED\xAF\xBF");
  EXPECT_EQ(FromLosslessUtf8(ToLosslessUtf8(text)), text);
  EXPECT_EQ(FromUtf8("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");
}

// What is read from any bytes can be written, and reads the same again.
TEST(Utf8, RandomBytesGiveAValidText) {
  std::mt19937 random(20240608);
  constexpr unsigned char likely[] = {0x41, 0x80, 0xBF, 0xC2, 0xE0, 0xA0, 0xED, 0xEF, 0xF0, 0x90, 0xF4, 0x8F};
  for (int i = 0; i < 20000; ++i) {
    std::string bytes(random() % 40, '\0');
    for (char& byte : bytes) {
      byte = static_cast<char>(random() % 4 == 0 ? random() : likely[random() % std::size(likely)]);
    }
    const Text text = FromUtf8(bytes);
    ASSERT_LE(text.size(), bytes.size());
    ASSERT_EQ(FromUtf8(ToUtf8(text)), text);
    ASSERT_TRUE(text.find(u'\uFFFD') != Text::npos || ToUtf8(text) == bytes);
  }
}

}  // namespace
}  // namespace quillbox

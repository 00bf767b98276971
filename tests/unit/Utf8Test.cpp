#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>

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

}  // namespace
}  // namespace quillbox

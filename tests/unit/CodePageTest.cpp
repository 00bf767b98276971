#include <gtest/gtest.h>

#include <chrono>
#include <random>

#include "base/CodePage.h"
#include "base/Utf8.h"

namespace quillbox {
namespace {

TEST(CodePage, EveryByteIsACharacterAndBack) {
  Text all;
  for (unsigned byte = 0; byte < 256; ++byte) {
    const std::string bytes(1, static_cast<char>(byte));
    const Text text = FromBytes(bytes);
    ASSERT_EQ(text.size(), 1U);
    EXPECT_EQ(ByteOf(text[0]), byte);
    EXPECT_EQ(ToBytes(text), bytes);
    EXPECT_EQ(all.find(text), Text::npos);
    all += text;
  }
  EXPECT_EQ(ToBytes(all).size(), 256U);
}

TEST(CodePage, CharactersOfTheWesternCodePage) {
  EXPECT_EQ(FromBytes("\x80\x82\x85\x91\x92\x93\x94\x96\x97\x99\x9F"), u"€‚…‘’“”–—™Ÿ");
  EXPECT_EQ(FromBytes("\x81\x8D\x8F\x90\x9D"), u"\x81\x8D\x8F\x90\x9D");
  EXPECT_EQ(FromBytes("\xA0\xBD\xE4\xFF"), u"\u00A0½äÿ");
}

TEST(CodePage, CharactersOutsideHaveNoByte) {
  for (const char16_t unit :
       {u'\x80', u'\x9F', u'\x100', u'\x3B1', u'\x20AB', u'\xD800', u'\xFEFF', u'\xFFFF'}) {
    EXPECT_FALSE(ByteOf(unit));
  }
}

TEST(CodePage, OneForeignCharacterMakesTheWholeTextUtf8) {
  EXPECT_EQ(ToBytes(u"50 €"), "50 \x80");
  EXPECT_EQ(ToBytes(u"50 € α"),
            "\xEF\xBB\xBF"
            "50 \xE2\x82\xAC \xCE\xB1");
  EXPECT_EQ(ToBytes(u"\xFEFF"), "\xEF\xBB\xBF\xEF\xBB\xBF");
  EXPECT_EQ(ToBytes(u"\xDC00!"), "\xEF\xBB\xBF\xED\xB0\x80!");
}

TEST(CodePage, ATextThatLooksLikeTheMarkComesBack) {
  EXPECT_EQ(ToBytes(u"ï»¿x"), "\xEF\xBB\xBF\xC3\xAF\xC2\xBB\xC2\xBFx");
  for (const Text text : {u"ï»¿", u"xï»¿", u"ï»", u"ï»¿ï»¿α", u"\xFEFFï»¿"}) {
    EXPECT_EQ(FromBytes(ToBytes(text)), text);
  }
}

TEST(CodePage, RandomTextsComeBack) {
  std::mt19937 random(7);
  for (int i = 0; i < 20000; ++i) {
    Text text(random() % 60, u'\0');
    const unsigned range = random() % 2 == 0 ? 0x100 : 0x10000;
    for (char16_t& unit : text) unit = static_cast<char16_t>(random() % (random() % 8 == 0 ? range : 0x80));
    ASSERT_EQ(FromBytes(ToBytes(text)), text);
  }
}

// A list of a hundred longest entries is written at each change: that must not be felt. The bound is far
// above what a conversion at memory speed takes and far below what one that looks at each character by itself
// takes.
TEST(CodePage, MegabytesInMilliseconds) {
  Text text(3'000'000, u'x');
  for (std::size_t i = 0; i < text.size(); i += 500) text[i] = u'ü';
  Text foreign = text;
  foreign.back() = u'α';
  auto best = std::chrono::steady_clock::duration::max();
  for (int i = 0; i < 5; ++i) {
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_EQ(FromBytes(ToBytes(text)).size(), text.size());
    ASSERT_EQ(FromBytes(ToBytes(foreign)).size(), text.size());
    best = std::min(best, std::chrono::steady_clock::now() - begin);
  }
  const double milliseconds = std::chrono::duration<double, std::milli>(best).count();
  RecordProperty("milliseconds", std::to_string(milliseconds));
  EXPECT_LT(milliseconds, 200.0);
}

}  // namespace
}  // namespace quillbox

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace quillbox

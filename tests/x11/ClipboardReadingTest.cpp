#include <iterator>

#include "x11/ClipboardFixture.h"

namespace quillbox::test {
namespace {

const std::string kUtf8 = "UTF8_STRING";
const std::string kHint = "x-kde-passwordManagerHint";

using ClipboardReading = ClipboardFixture;

TEST_F(ClipboardReading, TakesTheBestTextThatIsOffered) {
  std::string letters;
  for (int i = 0; i < 300000; ++i) letters += static_cast<char>('a' + i % 26);
  const std::string large(5'000'003, 'q');
  struct Case {
    std::vector<std::pair<std::string, Reaction>> offers;
    Text text;
    bool asksForLatin = false;
  };
  const Case cases[] = {
      {{{"STRING", Gives("STRING", "latin")}, {kUtf8, Gives(kUtf8, "utf-8 \xE2\x82\xAC")}}, u"utf-8 \u20AC"},
      {{{"text/plain;charset=utf-8", Gives("text/plain;charset=utf-8", "pl\xC3\xA4in")}}, u"pl\u00E4in"},
      {{{"STRING", Gives("STRING", "\xE4\xF6 \xFF")}}, u"\u00E4\u00F6 \u00FF", true},
      // The better one is offered and then refused; so is the list of an old client.
      {{{kUtf8, Of(Reaction::Refuse)}, {"STRING", Gives("STRING", "second")}}, u"second", true},
      {{{"TARGETS", Of(Reaction::Refuse)}, {"STRING", Gives("STRING", "old client")}}, u"old client", true},
      {{{"TARGETS", Gives("ATOM", "", 32)}, {kUtf8, Gives(kUtf8, "lists nothing")}}, u"lists nothing"},
      // As it came.
      {{{kUtf8, Gives(kUtf8, std::string("a\0b\r\nc\rd\n\0", 10))}}, Text(u"a\0b\r\nc\rd\n\0", 10)},
      {{{kUtf8, Gives(kUtf8, "bad \xFF\xC3 end \xF0\x9F\x98\x80")}}, u"bad \uFFFD\uFFFD end \U0001F600"},
      {{{kUtf8, Gives(kUtf8, large)}}, Text(large.size(), u'q')},
      // In increments, through the middle of a character, too.
      {{{kUtf8, GivesInPieces(kUtf8, letters, 5000)}}, Text(letters.begin(), letters.end())},
      {{{kUtf8, GivesInPieces(kUtf8, "x\xE2\x82\xACy", 1)}}, u"x\u20ACy"},
      // The same again is news again.
      {{{kUtf8, Gives(kUtf8, "x\xE2\x82\xACy")}}, u"x\u20ACy"},
  };
  for (const Case& c : cases) {
    TestOwner owner(loop);
    for (const auto& [target, reaction] : c.offers) owner.Offer(target, reaction);
    EXPECT_TRUE(ReadAfter(owner) == c.text) << ToUtf8(c.text.substr(0, 40));
    EXPECT_EQ(owner.WasAskedFor("STRING"), c.asksForLatin);
  }
  EXPECT_EQ(news, std::vector<ClipboardNews>(std::size(cases), ClipboardNews::Text));
}

TEST_F(ClipboardReading, WhatIsNoTextReadsEmpty) {
  const std::pair<std::string, Reaction> offers[] = {
      {"image/png", Gives("image/png", "PNG")}, {kUtf8, Gives(kUtf8, "")}, {"none", Of(Reaction::Refuse)}};
  for (const auto& [target, reaction] : offers) {
    TestOwner owner(loop);
    owner.Offer(target, reaction);
    EXPECT_EQ(ReadAfter(owner), u"") << target;
    EXPECT_EQ(owner.WasAskedFor(kUtf8), target == kUtf8);
    EXPECT_EQ(news.back(), ClipboardNews::Other);
  }
}

TEST_F(ClipboardReading, AtTheStartWaitsForTheOwnerThatIsThere) {
  EXPECT_EQ(Read(), u"") << "without an owner it is known at once";
  TestOwner owner(loop);  // nobody turns its loop while the clipboard settles
  owner.OfferText("before").Own();
  XClipboard late(loop);
  EXPECT_THROW(late.Read(), RuntimeError);
  EXPECT_FALSE(late.Settle(50));
  EXPECT_THROW(late.Read(), RuntimeError);
  bool arrived = false;
  const Hook hook = late.Listen([&](ClipboardNews each) { arrived = each == ClipboardNews::Text; });
  ASSERT_TRUE(loop.RunUntil([&] { return arrived; }));
  EXPECT_TRUE(late.Settle(0));
  EXPECT_EQ(late.Read(), u"before");
}

TEST_F(ClipboardReading, ANewOwnerEndsTheReadingOfTheOldOne) {
  TestOwner first(loop), second(loop);
  std::size_t said = 0;
  first.Offer(kUtf8, GivesPieces(
                         [&](std::size_t) {
                           return ++said, std::optional(Piece{kUtf8, 8, "old "});
                         },
                         5));
  first.Own();
  ASSERT_TRUE(loop.RunUntil([&] { return said > 3; }));
  EXPECT_EQ(Read(), std::nullopt) << "while a text is under way";
  Reaction steadily = GivesInPieces(kUtf8, "new new new", 1);
  steadily.pieceDelayMs = 7;
  second.Offer(kUtf8, steadily);
  EXPECT_EQ(ReadAfter(second), u"new new new");
  loop.RunFor(50);  // the first one may still be talking
  EXPECT_EQ(Read(), u"new new new");
  EXPECT_EQ(news.size(), 1u);
}

TEST_F(ClipboardReading, TheLastOfManyQuickCopiesIsCaptured) {
  TestOwner a(loop), b(loop);
  for (int i = 0; i < 600; ++i) {
    (i % 2 ? a : b).OfferText("copy " + std::to_string(i)).Own();
    loop.RunFor(i % 3 ? 5 : 0);
  }
  ASSERT_TRUE(loop.RunUntil([&] { return Read() == u"copy 599"; }));
  EXPECT_EQ(loop.Timers(), 0u);
  EXPECT_LE(a.Asked() + b.Asked(), 1800u) << "one transfer at a time, TARGETS, hint and text for each";
}

TEST_F(ClipboardReading, NothingHappensWhileNothingChanges) {
  TestOwner owner(loop);
  owner.OfferText(std::string(5'000'000, 'i'));
  ASSERT_EQ(ReadAfter(owner)->size(), 5'000'000u);
  loop.RunFor(50);
  const int wakeups = loop.Wakeups();
  const char16_t* text = clipboard->Read().data();
  for (int tick = 0; tick < 4; ++tick) {
    loop.RunFor(100);
    EXPECT_EQ(clipboard->Read().data(), text) << "a tick copies nothing";
  }
  EXPECT_EQ(loop.Wakeups(), wakeups);
  EXPECT_EQ(owner.Asked(), 3u);
}

TEST_F(ClipboardReading, AHugeTextIsCut) {
  std::string part;  // 50 MB of three-byte characters
  for (int k = 0; k < 20000; ++k) part += "\xE2\x82\xAC";
  TestOwner huge(loop);
  huge.Offer(kUtf8, GivesPieces([&](std::size_t i) {
               return std::optional(Piece{kUtf8, 8, i < 833 ? part : ""});
             }));
  EXPECT_EQ(ReadAfter(huge)->size(), XTransfer::kMaxBytes / 3);
  EXPECT_EQ(clipboard->Read().back(), u'\u20AC') << "no half character";
}

// Neither taken over nor, when others offer it again without the mark, read; until there is another text.
TEST_F(ClipboardReading, ASecretIsNoText) {
  struct Row {
    Reaction hint;
    bool listed, secret;
    std::string text = "hunter2";
  };
  const Row rows[] = {{Gives(kHint, "secret"), true, true},
                      {Gives(kHint, std::string("\tSecret\r\n\0", 10)), true, true},
                      {Gives("STRING", "SECRET "), false, true},
                      {Of(Reaction::Refuse), true, true},
                      {Of(Reaction::Silent), true, true},
                      {GivesInPieces(kHint, "secret", 1), true, true, "p\xC3\xA4ss"},
                      {Gives(kHint, "public"), true, false},
                      {Of(Reaction::Silent), false, false},
                      {GivesInPieces(kUtf8, "secret", 1), false, false},
                      {Gives(kUtf8, "secret"), false, false, "secret"}};  // whatever it is asked for
  for (const Row& row : rows) {
    TestOwner owner(loop), again(loop), other(loop);
    owner.OfferText(row.text).Offer(kHint, row.hint);
    if (!row.listed) owner.Offer("TARGETS", owner.TargetList({kUtf8}));
    const Text text = row.secret ? u"" : FromUtf8(row.text);
    EXPECT_EQ(ReadAfter(owner), text);
    EXPECT_EQ(clipboard->HoldsSecret(), row.secret);
    owner.Quit();
    loop.RunFor(50);
    EXPECT_EQ(Paste().has_value(), !row.secret);
    EXPECT_EQ(ReadAfter(again.OfferText(row.text)), text);
    EXPECT_EQ(ReadAfter(other.OfferText("other")), u"other");
    EXPECT_EQ(ReadAfter(again), FromUtf8(row.text));
  }
}

}  // namespace
}  // namespace quillbox::test

#include <iterator>

#include "base/Utf8.h"
#include "x11/ClipboardFixture.h"

namespace quillbox::test {
namespace {

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
  const std::string utf8 = "UTF8_STRING";
  const Case cases[] = {
      {{{"STRING", Gives("STRING", "latin")}, {utf8, Gives(utf8, "utf-8 \xE2\x82\xAC")}}, u"utf-8 \u20AC"},
      {{{"text/plain;charset=utf-8", Gives("text/plain;charset=utf-8", "pl\xC3\xA4in")}}, u"pl\u00E4in"},
      {{{"STRING", Gives("STRING", "\xE4\xF6 \xFF")}}, u"\u00E4\u00F6 \u00FF", true},
      // The better one is offered and then refused; so is the list of an old client.
      {{{utf8, Of(Reaction::Refuse)}, {"STRING", Gives("STRING", "second")}}, u"second", true},
      {{{"TARGETS", Of(Reaction::Refuse)}, {"STRING", Gives("STRING", "old client")}}, u"old client", true},
      // As it came.
      {{{utf8, Gives(utf8, std::string("a\0b\r\nc\rd\n\0", 10))}}, Text(u"a\0b\r\nc\rd\n\0", 10)},
      {{{utf8, Gives(utf8, "bad \xFF\xC3 end \xF0\x9F\x98\x80")}}, u"bad \uFFFD\uFFFD end \U0001F600"},
      {{{utf8, Gives(utf8, large)}}, Text(large.size(), u'q')},
      // In increments, through the middle of a character, too.
      {{{utf8, GivesInPieces(utf8, letters, 5000)}}, Text(letters.begin(), letters.end())},
      {{{utf8, GivesInPieces(utf8, "x\xE2\x82\xACy", 1)}}, u"x\u20ACy"},
  };
  for (const Case& c : cases) {
    TestOwner owner(loop);
    for (const auto& [target, reaction] : c.offers) owner.Offer(target, reaction);
    EXPECT_TRUE(ReadAfter(owner) == c.text) << ToUtf8(c.text.substr(0, 40));
    EXPECT_EQ(owner.WasAskedFor("STRING"), c.asksForLatin);
  }
  EXPECT_EQ(news, std::vector<ClipboardNews>(std::size(cases), ClipboardNews::Text));
}

TEST_F(ClipboardReading, IsBusyWhileATextIsUnderWay) {
  TestOwner owner(loop);
  owner.OfferText("first");
  EXPECT_EQ(ReadAfter(owner), u"first");
  bool asked = false;
  owner.Offer("TARGETS", Of(Reaction::Silent));
  owner.Own();
  loop.RunUntil([&] { return asked = owner.Asked().size() > 2; });
  ASSERT_TRUE(asked);
  EXPECT_EQ(Read(), std::nullopt);
}

TEST_F(ClipboardReading, ContentWithoutTextReadsEmpty) {
  TestOwner picture(loop);
  picture.Offer("image/png", Gives("image/png", "PNG"));
  EXPECT_EQ(ReadAfter(picture), u"");
  EXPECT_FALSE(picture.WasAskedFor("UTF8_STRING"));
  EXPECT_EQ(news.back(), ClipboardNews::Other);

  TestOwner empty(loop);
  empty.OfferText("");
  EXPECT_EQ(ReadAfter(empty), u"");
}

TEST_F(ClipboardReading, TheSameTextAgainIsNewsAndSoIsAClear) {
  TestOwner owner(loop);
  owner.OfferText("again");
  EXPECT_EQ(ReadAfter(owner), u"again");
  EXPECT_EQ(ReadAfter(owner), u"again");
  owner.Clear();
  ASSERT_TRUE(AwaitNews());
  EXPECT_EQ(Read(), u"");
  EXPECT_EQ(news, (std::vector{ClipboardNews::Text, ClipboardNews::Text, ClipboardNews::Other}));
}

TEST_F(ClipboardReading, FindsTheOwnerThatIsThereAtTheStart) {
  TestOwner owner(loop);
  owner.OfferText("before");
  owner.Own();
  loop.RunFor(5);
  XClipboard late(loop);
  bool arrived = false;
  const Hook hook = late.Listen([&](ClipboardNews each) { arrived = each == ClipboardNews::Text; });
  EXPECT_THROW(late.Read(), RuntimeError);
  ASSERT_TRUE(loop.RunUntil([&] { return arrived; }));
  EXPECT_EQ(late.Read(), u"before");
}

TEST_F(ClipboardReading, SettlesInTimeWithASilentOwnerOrNone) {
  TestOwner owner(loop);  // nobody turns its loop while the clipboard settles
  for (const bool owned : {false, true}) {
    owner.OfferText("later");
    if (owned) owner.Own();
    XClipboard fresh(loop);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(fresh.Settle(owned ? 100 : 2000), !owned);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1000));
    if (owned)
      EXPECT_THROW(fresh.Read(), RuntimeError);
    else
      EXPECT_EQ(fresh.Read(), u"");
  }
}

TEST_F(ClipboardReading, ANewOwnerEndsTheReadingOfTheOldOne) {
  TestOwner first(loop);
  std::vector<Piece> pieces(50, Piece{"UTF8_STRING", 8, "old "});
  pieces.push_back({"UTF8_STRING", 8, ""});
  Reaction slowly = GivesPieces(pieces);
  slowly.pieceDelayMs = 10;
  first.Offer("UTF8_STRING", slowly);
  first.Own();
  ASSERT_TRUE(loop.RunUntil([&] { return first.WasAskedFor("UTF8_STRING"); }));
  loop.RunFor(30);
  TestOwner second(loop);
  Reaction steadily = GivesInPieces("UTF8_STRING", "new new new", 1);
  steadily.pieceDelayMs = 15;
  second.Offer("UTF8_STRING", steadily);
  EXPECT_EQ(ReadAfter(second), u"new new new");
  loop.RunFor(100);  // the first one is still talking
  EXPECT_EQ(Read(), u"new new new");
  EXPECT_EQ(news.size(), 1u);
}

using ClipboardSecrets = ClipboardFixture;

TEST_F(ClipboardSecrets, ASecretIsNeitherAskedForNorTakenOver) {
  TestOwner owner(loop);
  owner.OfferText("hunter2").Offer("x-kde-passwordManagerHint", Gives("x-kde-passwordManagerHint", "secret"));
  EXPECT_EQ(ReadAfter(owner), u"");
  EXPECT_FALSE(owner.WasAskedFor("UTF8_STRING"));
  EXPECT_EQ(news.back(), ClipboardNews::Other);
  owner.Quit();
  loop.RunFor(50);
  TestReader reader(loop);
  EXPECT_TRUE(reader.Fetch("UTF8_STRING").refused);
}

TEST_F(ClipboardSecrets, OnlyAnAnsweredHintCanSayThatItIsNone) {
  TestOwner open(loop);
  open.OfferText("public").Offer("x-kde-passwordManagerHint", Gives("x-kde-passwordManagerHint", "public"));
  EXPECT_EQ(ReadAfter(open), u"public");
  TestOwner refuses(loop), silent(loop);
  refuses.OfferText("hidden").Offer("x-kde-passwordManagerHint", Of(Reaction::Refuse));
  EXPECT_EQ(ReadAfter(refuses), u"");
  silent.OfferText("hidden").Offer("x-kde-passwordManagerHint", Of(Reaction::Silent));
  EXPECT_EQ(ReadAfter(silent, XTransfer::kDeadlineMs + 1000), u"");
  EXPECT_FALSE(silent.WasAskedFor("UTF8_STRING"));
}

}  // namespace
}  // namespace quillbox::test

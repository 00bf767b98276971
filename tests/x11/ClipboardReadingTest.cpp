#include "x11/ClipboardFixture.h"

namespace quillbox::test {
namespace {

using ClipboardReading = ClipboardFixture;

TEST_F(ClipboardReading, TakesTheBestTextThatIsOffered) {
  TestOwner all(loop);
  all.Offer("STRING", Gives("STRING", "latin")).OfferText("utf-8 \xE2\x82\xAC");
  EXPECT_EQ(ReadAfter(all), u"utf-8 \u20AC");
  EXPECT_FALSE(all.WasAskedFor("STRING"));

  TestOwner plain(loop);
  plain.Offer("text/plain;charset=utf-8", Gives("text/plain;charset=utf-8", "pl\xC3\xA4in"));
  EXPECT_EQ(ReadAfter(plain), u"pl\u00E4in");

  TestOwner latin(loop);
  latin.Offer("STRING", Gives("STRING", "\xE4\xF6 \xFF"));
  EXPECT_EQ(ReadAfter(latin), u"\u00E4\u00F6 \u00FF");

  TestOwner falls(loop);  // the better one is offered and then refused
  Reaction refuse;
  refuse.kind = Reaction::Refuse;
  falls.Offer("UTF8_STRING", refuse).Offer("STRING", Gives("STRING", "second"));
  EXPECT_EQ(ReadAfter(falls), u"second");
  EXPECT_EQ(news, std::vector<ClipboardNews>(4, ClipboardNews::Text));
}

TEST_F(ClipboardReading, KeepsTextsAsTheyCame) {
  TestOwner owner(loop);
  owner.OfferText(std::string("a\0b\r\nc\rd\n\0", 10));
  EXPECT_EQ(ReadAfter(owner), Text(u"a\0b\r\nc\rd\n\0", 10));
  owner.OfferText("bad \xFF\xC3 end \xF0\x9F\x98\x80");
  EXPECT_EQ(ReadAfter(owner), u"bad \uFFFD\uFFFD end \U0001F600");
}

TEST_F(ClipboardReading, CollectsIncrements) {
  std::string long1;
  for (int i = 0; i < 300000; ++i) long1 += static_cast<char>('a' + i % 26);
  TestOwner owner(loop);
  owner.Offer("UTF8_STRING", GivesInPieces("UTF8_STRING", long1, 5000));
  EXPECT_EQ(ReadAfter(owner) == Text(long1.begin(), long1.end()), true);
  // A byte at a time, through the middle of a character.
  TestOwner slow(loop);
  slow.Offer("UTF8_STRING", GivesInPieces("UTF8_STRING", "x\xE2\x82\xACy", 1));
  EXPECT_EQ(ReadAfter(slow), u"x\u20ACy");
}

TEST_F(ClipboardReading, ReadsOneLargePropertyInParts) {
  const std::string large(5'000'003, 'q');
  TestOwner owner(loop);
  owner.OfferText(large);
  EXPECT_EQ(ReadAfter(owner) == Text(large.size(), u'q'), true);
}

TEST_F(ClipboardReading, IsBusyWhileATextIsUnderWay) {
  TestOwner owner(loop);
  owner.OfferText("first");
  EXPECT_EQ(ReadAfter(owner), u"first");
  bool asked = false;
  Reaction silent;
  silent.kind = Reaction::Silent;
  owner.Offer("TARGETS", silent);
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

TEST_F(ClipboardReading, AClearIsReadAsEmpty) {
  TestOwner owner(loop);
  owner.OfferText("something");
  EXPECT_EQ(ReadAfter(owner), u"something");
  owner.Clear();
  ASSERT_TRUE(AwaitNews());
  EXPECT_EQ(Read(), u"");
  EXPECT_EQ(news.back(), ClipboardNews::Other);
}

TEST_F(ClipboardReading, TheSameTextAgainIsNews) {
  TestOwner owner(loop);
  owner.OfferText("again");
  EXPECT_EQ(ReadAfter(owner), u"again");
  EXPECT_EQ(ReadAfter(owner), u"again");
  EXPECT_EQ(news.size(), 2u);
}

TEST_F(ClipboardReading, FindsTheOwnerThatIsThereAtTheStart) {
  TestOwner owner(loop);
  owner.OfferText("before");
  owner.Own();
  loop.RunFor(5);
  XClipboard late(loop);
  bool arrived = false;
  late.Listen([&](ClipboardNews each) { arrived = each == ClipboardNews::Text; });
  EXPECT_THROW(late.Read(), RuntimeError);
  ASSERT_TRUE(loop.RunUntil([&] { return arrived; }));
  EXPECT_EQ(late.Read(), u"before");
}

TEST_F(ClipboardReading, SettlesAtOnceWithoutAnOwner) {
  const auto start = std::chrono::steady_clock::now();
  XClipboard fresh(loop);
  EXPECT_TRUE(fresh.Settle(2000));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(500));
  EXPECT_EQ(fresh.Read(), u"");
}

TEST_F(ClipboardReading, SettlesInTimeWithASilentOwner) {
  TestOwner owner(loop);  // nobody turns its loop while the clipboard settles
  owner.OfferText("later");
  owner.Own();
  XClipboard fresh(loop);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(fresh.Settle(100));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1000));
  EXPECT_THROW(fresh.Read(), RuntimeError);
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

TEST_F(ClipboardReading, AnOldClientWithoutTargetsIsAskedForItsText) {
  TestOwner owner(loop);
  Reaction refuse;
  refuse.kind = Reaction::Refuse;
  owner.Offer("TARGETS", refuse).Offer("STRING", Gives("STRING", "old client"));
  EXPECT_EQ(ReadAfter(owner), u"old client");
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
  TestOwner refuses(loop);
  Reaction refuse;
  refuse.kind = Reaction::Refuse;
  refuses.OfferText("hidden").Offer("x-kde-passwordManagerHint", refuse);
  EXPECT_EQ(ReadAfter(refuses), u"");
  TestOwner silent(loop);
  Reaction nothing;
  nothing.kind = Reaction::Silent;
  silent.OfferText("hidden").Offer("x-kde-passwordManagerHint", nothing);
  EXPECT_EQ(ReadAfter(silent, XTransfer::kDeadlineMs + 1000), u"");
  EXPECT_FALSE(silent.WasAskedFor("UTF8_STRING"));
}

}  // namespace
}  // namespace quillbox::test

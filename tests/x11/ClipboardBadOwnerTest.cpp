#include "x11/ClipboardFixture.h"

namespace quillbox::test {
namespace {

using ClipboardBadOwner = ClipboardFixture;

TEST_F(ClipboardBadOwner, OneThatNeverAnswersStaysUnreadableUntilTheNext) {
  TestOwner owner(loop);
  owner.Offer("TARGETS", Of(Reaction::Silent));
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(ReadAfter(owner, XTransfer::kDeadlineMs + 1000), std::nullopt);
  EXPECT_GE(std::chrono::steady_clock::now() - start,
            std::chrono::milliseconds(XTransfer::kDeadlineMs - 100));
  EXPECT_EQ(news.back(), ClipboardNews::Other);
  EXPECT_EQ(loop.Timers(), 0u);
  TestOwner next(loop);
  next.OfferText("next");
  EXPECT_EQ(ReadAfter(next), u"next");
}

TEST_F(ClipboardBadOwner, OneThatTricklesHasOneDeadlineForAll) {
  TestOwner owner(loop);
  Reaction drops = GivesPieces({});
  drops.pieces = [](std::size_t) { return std::optional(Piece{"UTF8_STRING", 8, "."}); };
  drops.pieceDelayMs = 100;
  owner.Offer("UTF8_STRING", drops);
  EXPECT_EQ(ReadAfter(owner, XTransfer::kDeadlineMs + 1000), std::nullopt);
}

TEST_F(ClipboardBadOwner, OneThatDiesInTheMiddleLeavesAnEmptyClipboard) {
  TestOwner owner(loop);
  Reaction dies = GivesPieces({});
  dies.pieces = [&](std::size_t i) {
    if (i == 3) owner.Quit();
    return i < 3 ? std::optional(Piece{"UTF8_STRING", 8, "part"}) : std::nullopt;
  };
  owner.Offer("UTF8_STRING", dies);
  EXPECT_EQ(ReadAfter(owner), u"");
  EXPECT_EQ(news.back(), ClipboardNews::Other);
}

// A text target that is answered with anything but text counts for nothing, and the next best is taken.
TEST_F(ClipboardBadOwner, LiesAboutTypeAndFormatAreNoText) {
  const std::vector<Reaction> lies = {
      Gives("UTF8_STRING", "abcdabcd", 16),
      Gives("UTF8_STRING", "abcdabcd", 32),
      Gives("COMPOUND_TEXT", "abcd"),
      Gives("ATOM", "abcd", 32),
      Of(Reaction::WithoutProperty),
      GivesPieces({{"UTF8_STRING", 8, "good"}, {"image/png", 8, "bad"}, {"UTF8_STRING", 8, ""}}),
      GivesPieces({{"UTF8_STRING", 8, "good"}, {"UTF8_STRING", 32, "bad!"}, {"UTF8_STRING", 8, ""}}),
      GivesPieces({{"INCR", 32, "\1\1\1\1"}}),
  };
  for (std::size_t i = 0; i < lies.size(); ++i) {
    SCOPED_TRACE(i);
    TestOwner onlyLies(loop);
    onlyLies.Offer("UTF8_STRING", lies[i]);
    EXPECT_EQ(ReadAfter(onlyLies), u"");
    TestOwner otherwiseHonest(loop);
    otherwiseHonest.Offer("UTF8_STRING", lies[i]).Offer("STRING", Gives("STRING", "honest"));
    EXPECT_EQ(ReadAfter(otherwiseHonest), u"honest");
  }
}

TEST_F(ClipboardBadOwner, AnnouncedSizesDontMatter) {
  for (const std::string& announced :
       {std::string(4, '\xFF'), std::string(4, '\0'), std::string(), std::string(80000, 'x')}) {
    Reaction incr = GivesInPieces("UTF8_STRING", "the text", 3);
    incr.piece = {"INCR", 32, announced};
    TestOwner owner(loop);
    owner.Offer("UTF8_STRING", incr);
    EXPECT_EQ(ReadAfter(owner), u"the text");
  }
}

TEST_F(ClipboardBadOwner, AnEmptyPieceIsTheEnd) {
  TestOwner owner(loop);
  owner.Offer("UTF8_STRING",
              GivesPieces({{"UTF8_STRING", 8, "up to here"}, {"ATOM", 32, ""}, {"UTF8_STRING", 8, "!"}}));
  EXPECT_EQ(ReadAfter(owner), u"up to here");
  // What is still said after it doesn't get into the next text.
  TestOwner next(loop);
  next.Offer("UTF8_STRING", GivesInPieces("UTF8_STRING", "clean", 2));
  EXPECT_EQ(ReadAfter(next), u"clean");
}

TEST_F(ClipboardBadOwner, GarbageInTheListOfTargets) {
  TestOwner garbage(loop);
  garbage.OfferText("text").Offer("TARGETS", Gives("STRING", "not a list"));
  EXPECT_EQ(ReadAfter(garbage), u"text");

  std::string unknown;
  for (std::uint32_t i = 0; i < 5000; ++i) {
    const std::uint32_t atom = 0x1000000 + i;
    unknown.append(reinterpret_cast<const char*>(&atom), 4);
  }
  TestOwner thousands(loop);
  Reaction list = thousands.TargetList({"UTF8_STRING"});
  list.piece.bytes = unknown + list.piece.bytes;
  thousands.OfferText("after thousands").Offer("TARGETS", list);
  EXPECT_EQ(ReadAfter(thousands), u"after thousands");

  TestOwner targetsType(loop);
  Reaction own = targetsType.TargetList({"UTF8_STRING"});
  own.piece.type = "TARGETS";
  targetsType.OfferText("old style").Offer("TARGETS", own);
  EXPECT_EQ(ReadAfter(targetsType), u"old style");
}

}  // namespace
}  // namespace quillbox::test

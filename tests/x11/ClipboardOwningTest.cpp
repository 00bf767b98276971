#include <algorithm>
#include <functional>

#include "x11/ClipboardFixture.h"

namespace quillbox::test {
namespace {

// Characters of one to four bytes, so that any cut by bytes goes through one sooner or later.
std::string LongText(std::size_t bytes) {
  std::string text;
  for (std::size_t i = 0; text.size() < bytes; ++i)
    text += "\xE2\x82\xAC\xF0\x9F\x98\x80\xC3\xA9" + std::to_string(i);
  return text;
}

using ClipboardOwning = ClipboardFixture;

TEST_F(ClipboardOwning, GivesEveryTargetThatItNames) {
  clipboard->Put(u"Gr\u00FC\u00DFe");
  EXPECT_EQ(Read(), u"Gr\u00FC\u00DFe");  // at once
  TestReader reader(loop);
  const auto targets = reader.Names(reader.Fetch("TARGETS").bytes);
  EXPECT_EQ(std::vector(targets.begin(), targets.end()),
            (std::vector<std::string>{"TARGETS", "TIMESTAMP", "MULTIPLE", "SAVE_TARGETS", "UTF8_STRING",
                                      "text/plain;charset=utf-8", "TEXT", "STRING"}));
  for (const std::string& name : targets)
    EXPECT_TRUE(name == "MULTIPLE" || !reader.Fetch(name).refused) << name;
  const std::string utf8 = "Gr\xC3\xBC\xC3\x9F\x65";
  EXPECT_EQ(reader.Got("UTF8_STRING").bytes, utf8);
  EXPECT_EQ(reader.Got("UTF8_STRING").type, "UTF8_STRING");
  EXPECT_EQ(reader.Got("text/plain;charset=utf-8").bytes, utf8);
  EXPECT_EQ(reader.Got("STRING").bytes, "Gr\xFC\xDF\x65");
  EXPECT_EQ(reader.Got("TEXT").type, "STRING");
  const std::string since = reader.Got("TIMESTAMP").bytes;
  ASSERT_EQ(since.size(), 4u);
  EXPECT_NE(since, std::string(4, '\0'));
  EXPECT_TRUE(news.empty()) << "our own change is no news";
  // The rest is refused at once, and so is a request from before we owned it.
  EXPECT_TRUE(reader.Fetch("image/png").refused);
  EXPECT_TRUE(reader.Fetch("COMPOUND_TEXT").refused);
  xcb_timestamp_t time = 0;
  std::memcpy(&time, since.data(), sizeof time);
  reader.Ask("UTF8_STRING", time - 1000);
  ASSERT_TRUE(loop.RunUntil([&] { return reader.Got("UTF8_STRING").answered; }));
  EXPECT_TRUE(reader.Got("UTF8_STRING").refused);
  // What Latin-1 lacks is marked in it.
  clipboard->Put(u"5 \u20AC \U0001F600");
  EXPECT_EQ(reader.Fetch("STRING").bytes, "5 ? ?");
  EXPECT_EQ(reader.Fetch("TEXT").type, "UTF8_STRING");
  // A part of what is read.
  clipboard->Put(clipboard->Read().substr(2, 1));
  EXPECT_EQ(Read(), u"\u20AC");
}

TEST_F(ClipboardOwning, AnswersSeveralTargetsInOneRequest) {
  clipboard->Put(u"many");
  TestReader reader(loop);
  reader.AskMultiple({{"UTF8_STRING", "A"}, {"image/png", "B"}, {"STRING", "C"}, {"TARGETS", "D"}});
  ASSERT_TRUE(loop.RunUntil([&] { return reader.Complete("MULTIPLE"); }));
  EXPECT_EQ(
      reader.Names(reader.Got("MULTIPLE").bytes),
      (std::vector<std::string>{"UTF8_STRING", "A", "image/png", "None", "STRING", "C", "TARGETS", "D"}));
  EXPECT_EQ(reader.Got("A").bytes, "many");
  EXPECT_EQ(reader.Got("C").bytes, "many");
  EXPECT_FALSE(reader.Got("D").bytes.empty());
  reader.AskMultiple({});
  ASSERT_TRUE(loop.RunUntil([&] { return reader.Got("MULTIPLE").answered; }));
  EXPECT_EQ(reader.Got("MULTIPLE").bytes, "");
}

TEST_F(ClipboardOwning, SendsLongTextsInIncrementsToManyAtOnce) {
  const std::string text = LongText(5'000'000);
  clipboard->Put(FromUtf8(text));
  TestReader a(loop), b(loop), c(loop), stuck(loop), closes(loop), destroys(loop);
  for (TestReader* reader : {&stuck, &closes, &destroys}) reader->StopReading();
  for (TestReader* reader : {&a, &b, &c, &stuck, &closes, &destroys}) reader->Ask("UTF8_STRING");
  for (TestReader* reader : {&stuck, &closes, &destroys})
    ASSERT_TRUE(loop.RunUntil([&] { return reader->Got("UTF8_STRING").incremental; }));
  closes.Quit();
  destroys.DestroyWindow(destroys.Window());
  clipboard->Put(u"short");  // those under way get what they asked for
  for (TestReader* reader : {&a, &b, &c}) {
    ASSERT_TRUE(loop.RunUntil([&] { return reader->Complete("UTF8_STRING"); }));
    EXPECT_TRUE(reader->Got("UTF8_STRING").bytes == text);
    EXPECT_GT(reader->Got("UTF8_STRING").pieces.size(), 5u);
    // Some readers convert each piece by itself.
    for (const std::string& piece : reader->Got("UTF8_STRING").pieces)
      EXPECT_TRUE(ToUtf8(FromUtf8(piece)) == piece);
  }
  EXPECT_EQ(a.Fetch("UTF8_STRING").bytes, "short");
  // Those that stop are given up one after the other, and no timer is left behind.
  clipboard->Put(FromUtf8(text));
  TestReader stuckLater(loop);
  stuckLater.StopReading();
  stuckLater.Ask("UTF8_STRING");
  ASSERT_TRUE(loop.RunUntil([&] { return stuckLater.Got("UTF8_STRING").incremental; }));
  EXPECT_EQ(loop.Timers(), 1u);
  EXPECT_TRUE(loop.RunUntil([&] { return loop.Timers() == 0; }));
}

TEST_F(ClipboardOwning, AReaderThatVanishesHoldsNothing) {
  clipboard->Put(Text(1'000'000, u'v'));
  TestReader closes(loop), destroys(loop);
  for (TestReader* reader : {&closes, &destroys}) {
    reader->StopReading();
    reader->Ask("UTF8_STRING");
    ASSERT_TRUE(loop.RunUntil([&] { return reader->Got("UTF8_STRING").incremental; }));
  }
  closes.Quit();
  destroys.DestroyWindow(destroys.Window());
  EXPECT_TRUE(loop.RunUntil([&] { return loop.Timers() == 0; }, XSelectionServer::kStuckMs / 2));
}

TEST_F(ClipboardOwning, TheLastOneToCopyWins) {
  TestOwner other(loop);
  other.OfferText("theirs");
  // Unseen by us before we put ours: ours is the newer one all the same.
  other.Own();
  clipboard->Put(u"ours");
  loop.RunFor(50);
  EXPECT_EQ(Read(), u"ours");
  EXPECT_EQ(Paste(), "ours");
  EXPECT_EQ(ReadAfter(other), u"theirs");
  EXPECT_EQ(Paste(), "theirs");
  for (int i = 0; i < 20; ++i) {
    clipboard->Put(u"ours " + Decimal(i));
    other.Own();
    clipboard->Put(u"ours again " + Decimal(i));
  }
  loop.RunFor(50);
  EXPECT_EQ(Read(), u"ours again 19");
  EXPECT_EQ(Paste(), "ours again 19");
}

TEST_F(ClipboardOwning, AClearOfOursOrTheirsLeavesNobody) {
  TestOwner other(loop);
  const std::function<void()> ways[] = {[&] { clipboard->Clear(); }, [&] { clipboard->Put(u""); },
                                        [&] {
                                          other.Clear();
                                          EXPECT_TRUE(AwaitNews());
                                        }};
  for (const auto& clear : ways) {
    clipboard->Put(u"gone soon");
    EXPECT_EQ(Paste(), "gone soon");
    clear();
    EXPECT_EQ(Read(), u"");
    EXPECT_EQ(Paste(), std::nullopt);
    EXPECT_EQ(other.OwnerOf("CLIPBOARD"), xcb_window_t{XCB_NONE});
  }
  other.OfferText("theirs");
  EXPECT_EQ(ReadAfter(other), u"theirs");
}

}  // namespace
}  // namespace quillbox::test

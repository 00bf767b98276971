#include <algorithm>
#include <cstring>
#include <functional>

#include "base/Utf8.h"
#include "x11/ClipboardFixture.h"

namespace quillbox::test {
namespace {

std::string LongText(std::size_t bytes) {
  std::string text;
  for (std::size_t i = 0; text.size() < bytes; ++i) text += "\xE2\x82\xAC" + std::to_string(i);
  return text;
}

Text Wide(const std::string& ascii) { return Text(ascii.begin(), ascii.end()); }

using ClipboardOwning = ClipboardFixture;

TEST_F(ClipboardOwning, GivesEveryTargetThatItNames) {
  clipboard->Put(u"Gr\u00FC\u00DFe");
  EXPECT_EQ(Read(), u"Gr\u00FC\u00DFe");  // at once
  TestReader reader(loop);
  const auto targets = reader.Names(reader.Fetch("TARGETS").bytes);
  for (const char* name : {"TARGETS", "TIMESTAMP", "MULTIPLE", "UTF8_STRING", "text/plain;charset=utf-8",
                           "TEXT", "STRING", "SAVE_TARGETS"})
    EXPECT_NE(std::find(targets.begin(), targets.end(), name), targets.end()) << name;
  for (const std::string& name : targets)
    if (name != "MULTIPLE") {
      EXPECT_FALSE(reader.Fetch(name).refused) << name;
    }
  const std::string utf8 = "Gr\xC3\xBC\xC3\x9F\x65";
  EXPECT_EQ(reader.Got("UTF8_STRING").bytes, utf8);
  EXPECT_EQ(reader.Got("UTF8_STRING").type, "UTF8_STRING");
  EXPECT_EQ(reader.Got("text/plain;charset=utf-8").bytes, utf8);
  EXPECT_EQ(reader.Got("STRING").bytes, "Gr\xFC\xDF\x65");
  EXPECT_EQ(reader.Got("TEXT").type, "STRING");
  EXPECT_EQ(reader.Got("TIMESTAMP").bytes.size(), 4u);
  EXPECT_NE(reader.Got("TIMESTAMP").bytes, std::string(4, '\0'));
  EXPECT_TRUE(news.empty()) << "our own change is no news";
  // What Latin-1 lacks is marked in it.
  clipboard->Put(u"5 \u20AC \U0001F600");
  EXPECT_EQ(reader.Fetch("STRING").bytes, "5 ? ?");
  EXPECT_EQ(reader.Fetch("TEXT").type, "UTF8_STRING");
}

TEST_F(ClipboardOwning, RefusesTheRestAtOnce) {
  clipboard->Put(u"text");
  TestReader reader(loop);
  EXPECT_TRUE(reader.Fetch("image/png").refused);
  EXPECT_TRUE(reader.Fetch("COMPOUND_TEXT").refused);
  // A request from before we owned it.
  const std::string since = reader.Fetch("TIMESTAMP").bytes;
  xcb_timestamp_t time = 0;
  std::memcpy(&time, since.data(), sizeof time);
  reader.Ask("UTF8_STRING", time - 1000);
  ASSERT_TRUE(loop.RunUntil([&] { return reader.Got("UTF8_STRING").answered; }));
  EXPECT_TRUE(reader.Got("UTF8_STRING").refused);
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
}

TEST_F(ClipboardOwning, SendsLongTextsInIncrementsToManyAtOnce) {
  const std::string text = LongText(5'000'000);
  clipboard->Put(FromUtf8(text));
  TestReader a(loop), b(loop), c(loop), stuck(loop);
  stuck.StopReading();
  for (TestReader* reader : {&a, &b, &c, &stuck}) reader->Ask("UTF8_STRING");
  loop.RunFor(10);
  clipboard->Put(u"short");  // those under way get what they asked for
  ASSERT_TRUE(loop.RunUntil(
      [&] { return a.Complete("UTF8_STRING") && b.Complete("UTF8_STRING") && c.Complete("UTF8_STRING"); },
      5000));
  for (TestReader* reader : {&a, &b, &c}) {
    EXPECT_TRUE(reader->Got("UTF8_STRING").incremental);
    EXPECT_GT(reader->Got("UTF8_STRING").pieces, 1u);
    EXPECT_EQ(reader->Got("UTF8_STRING").bytes == text, true);
  }
  EXPECT_EQ(a.Fetch("UTF8_STRING").bytes, "short");
  // Those that stop are given up one after the other, and no timer is left behind.
  clipboard->Put(FromUtf8(text));
  TestReader stuckLater(loop);
  stuckLater.StopReading();
  stuckLater.Ask("UTF8_STRING");
  ASSERT_TRUE(loop.RunUntil([&] { return stuckLater.Got("UTF8_STRING").incremental; }));
  EXPECT_EQ(loop.Timers(), 1u);
  EXPECT_TRUE(loop.RunUntil([&] { return loop.Timers() == 0; }, 2 * XSelectionServer::kStuckMs));
}

TEST_F(ClipboardOwning, AReaderThatVanishesHoldsNothing) {
  clipboard->Put(Wide(std::string(1'000'000, 'v')));
  TestReader closes(loop), destroys(loop);
  for (TestReader* reader : {&closes, &destroys}) {
    reader->StopReading();
    reader->Ask("UTF8_STRING");
    ASSERT_TRUE(loop.RunUntil([&] { return reader->Got("UTF8_STRING").incremental; }));
  }
  EXPECT_EQ(loop.Timers(), 1u);
  closes.Quit();
  destroys.DestroyWindow();
  EXPECT_TRUE(loop.RunUntil([&] { return loop.Timers() == 0; }, 1000));
}

TEST_F(ClipboardOwning, TheLastOneToCopyWins) {
  TestOwner other(loop);
  other.OfferText("theirs");
  // Unseen by us before we put ours: ours is the newer one all the same.
  other.Own();
  clipboard->Put(u"ours");
  loop.RunFor(50);
  EXPECT_EQ(Read(), u"ours");
  TestReader reader(loop);
  EXPECT_EQ(reader.Fetch("UTF8_STRING").bytes, "ours");
  EXPECT_EQ(ReadAfter(other), u"theirs");
  EXPECT_EQ(reader.Fetch("UTF8_STRING").bytes, "theirs");
  for (int i = 0; i < 20; ++i) {
    clipboard->Put(u"ours " + Decimal(i));
    other.Own();
    clipboard->Put(u"ours again " + Decimal(i));
  }
  loop.RunFor(50);
  EXPECT_EQ(Read(), u"ours again 19");
  EXPECT_EQ(reader.Fetch("UTF8_STRING").bytes, "ours again 19");
}

TEST_F(ClipboardOwning, AClearOfOursOrTheirsLeavesNobody) {
  TestReader reader(loop);
  TestOwner other(loop);
  const std::function<void()> ways[] = {[&] { clipboard->Clear(); }, [&] { clipboard->Put(u""); },
                                        [&] {
                                          other.Clear();
                                          EXPECT_TRUE(AwaitNews());
                                        }};
  for (const auto& clear : ways) {
    clipboard->Put(u"gone soon");
    EXPECT_EQ(reader.Fetch("UTF8_STRING").bytes, "gone soon");
    clear();
    EXPECT_EQ(Read(), u"");
    EXPECT_TRUE(reader.Fetch("UTF8_STRING").refused);
  }
  other.OfferText("theirs");
  EXPECT_EQ(ReadAfter(other), u"theirs");
}

TEST_F(ClipboardOwning, MayPutAPartOfWhatItReads) {
  clipboard->Put(u"one two three");
  clipboard->Put(clipboard->Read().substr(4, 3));
  EXPECT_EQ(Read(), u"two");
}

}  // namespace
}  // namespace quillbox::test

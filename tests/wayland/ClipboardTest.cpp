#include <algorithm>

#include "wayland/ClipboardFixture.h"

namespace quillbox::test {
namespace {

constexpr char kBest[] = "text/plain;charset=utf-8";
constexpr char kHint[] = "x-kde-passwordManagerHint";

std::string Times(std::size_t count, std::string_view what) {
  std::string all;
  for (std::size_t i = 0; i < count; ++i) all += what;
  return all;
}

// Everything that an owner may offer, what is read of it, and whether the text outlives its owner.
TEST_F(WaylandClipboardTest, WhatIsReadAndWhatOutlivesItsOwner) {
  struct Row {
    const char* what;
    TestCompositor::Offer offer;
    Text text;
    bool outlives;
  };
  const Row rows[] = {
      {"the best type",
       {{kBest, Gives("\u20ac")}, {"text/plain", Gives("worse")}, {"STRING", Gives("?")}},
       u"\u20ac",
       true},
      {"spelt otherwise", {{"text/plain;charset=UTF-8", Gives("a")}, {"TEXT", Gives("worse")}}, u"a", true},
      {"the names of X11",
       {{"UTF8_STRING", Gives("\u00fc")}, {"STRING", Gives("\xfc")}, {"TARGETS", Refuses()}},
       u"\u00fc",
       true},
      {"Latin-1", {{"STRING", Gives("\xfc\xe9")}}, u"\u00fc\u00e9", true},
      {"UTF-8 in a type that leaves it open", {{"text/plain", Gives("\u6f22")}}, u"\u6f22", true},
      {"not UTF-8 against its word", {{kBest, Gives("a\xff")}}, u"a\uFFFD", true},
      {"in pieces", {{kBest, Gives(Times(40000, "0123456789"))}}, Text(1, u'0'), true},
      {"text beside more", {{kBest, Gives("plain")}, {"text/html", Gives("<b>")}}, u"plain", false},
      {"no text", {{"image/png", Gives("PNG")}}, u"", false},
      {"the best type isn't there", {{kBest, Refuses()}, {"UTF8_STRING", Gives("next")}}, u"next", true},
      {"no type is there", {{kBest, Refuses()}, {"TEXT", Refuses()}}, u"", false},
      {"a secret", {{kHint, Gives("secret")}, {kBest, Gives("word")}}, u"", false},
      {"the same again", {{"STRING", Gives("word")}}, u"", false},
      {"another text", {{kBest, Gives("more")}}, u"more", true},
      {"no secret any more", {{kBest, Gives("word")}}, u"word", true},
      {"a secret with an end",
       {{kHint, Gives(std::string("Secret\r\n\0", 9))}, {kBest, Gives("word")}},
       u"",
       false},
      {"a hint without a value", {{kHint, Refuses()}, {kBest, Gives("word")}}, u"", false},
      {"a hint that says no", {{kHint, Gives("public")}, {kBest, Gives("open")}}, u"open", true},
  };
  for (const char* manager : {"ext_data_control_manager_v1", "zwlr_data_control_manager_v1"}) {
    Start({.managers = {manager}});
    for (const Row& row : rows) {
      SCOPED_TRACE(row.what);
      const std::optional<Text> read = ReadAfter(row.offer);
      ASSERT_TRUE(read);
      if (read->size() == 400000)
        EXPECT_EQ(read->substr(0, 1), row.text);
      else
        EXPECT_EQ(*read, row.text);
      EXPECT_EQ(news.back(), read->empty() ? ClipboardNews::Other : ClipboardNews::Text);
      news.clear();
      compositor->OwnNothing();
      if (row.outlives) {
        ASSERT_TRUE(AwaitOffered());
        EXPECT_EQ(Read(), read);
        EXPECT_TRUE(news.empty()) << "it is the same text";
      } else {
        ASSERT_TRUE(Await([this] { return Read() == u""; }));
        EXPECT_TRUE(compositor->Offered().empty());
      }
    }
    Close();
  }
}

TEST_F(WaylandClipboardTest, OurOwnTextIsServedAndGoesWhenAnotherComes) {
  Start({.managers = {"zwlr_data_control_manager_v1", "ext_data_control_manager_v1"}});
  clipboard->Put(u"\u00fc \u20ac \U0001F600");
  EXPECT_EQ(Read(), u"\u00fc \u20ac \U0001F600");
  ASSERT_TRUE(AwaitOffered());
  EXPECT_EQ(Paste(), "\u00fc \u20ac \U0001F600");
  EXPECT_EQ(Paste("UTF8_STRING"), "\u00fc \u20ac \U0001F600");
  EXPECT_EQ(Paste("STRING"), "\xfc ? ?");
  EXPECT_EQ(Paste("image/png"), std::nullopt);
  clipboard->Put(u"second");
  ASSERT_TRUE(Await([this] { return Paste() == "second"; }));
  EXPECT_TRUE(news.empty()) << "what we put ourselves is no news";
  EXPECT_EQ(ReadAfter({{kBest, Gives("another's")}}), u"another's");
  EXPECT_TRUE(compositor->Offered().empty());
  // Cleared by us it stays clear, cleared by another it does, too, being our own.
  clipboard->Clear();
  loop.RunFor(200);
  EXPECT_EQ(Read(), u"");
  EXPECT_TRUE(compositor->Offered().empty());
  clipboard->Put(u"third");
  ASSERT_TRUE(AwaitOffered());
  compositor->OwnNothing();
  ASSERT_TRUE(Await([this] { return Read() == u""; }));
  loop.RunFor(100);
  EXPECT_TRUE(compositor->Offered().empty());
}

// Another manager offers all that it was offered again, our own mark included.
TEST_F(WaylandClipboardTest, OurMarkInAnothersOfferIsNotOurOffer) {
  Start();
  clipboard->Put(u"text");
  ASSERT_TRUE(AwaitOffered());
  TestCompositor::Offer copy;
  for (const std::string& type : compositor->Offered()) copy[type] = Gives("copied");
  EXPECT_EQ(ReadAfter(copy), u"copied");
  compositor->OwnNothing();
  ASSERT_TRUE(AwaitOffered());
  EXPECT_EQ(Paste(), "copied");
}

TEST_F(WaylandClipboardTest, AnEmptyClipboardOfWhichNothingIsSaidIsKnown) {
  Start({.tellsOfNobody = false});
  EXPECT_EQ(Read(), u"");
  Close();
  compositor->OwnText("before the start");
  Open();
  EXPECT_EQ(Read(), u"before the start");
}

// Nobody waits for a compositor that takes nothing in, and the last word gets there.
TEST_F(WaylandClipboardTest, AStoppedCompositorHoldsNobodyUp) {
  Start();
  std::atomic<bool> stopped = true;
  std::thread stop([&] { compositor->Do([&] { stopped.wait(true); }); });
  Text last;
  for (int i = 0; i < 3000; ++i) {
    last = u"text " + Decimal(i);
    if (i % 7 == 3) clipboard->Clear();
    clipboard->Put(last);
    if (i % 100 == 0) loop.RunFor(0);
  }
  EXPECT_EQ(Read(), last);
  stopped = false;
  stopped.notify_all();
  stop.join();
  ASSERT_TRUE(Await([this] { return Paste() == "text 2999"; }));
  EXPECT_EQ(Read(), last);
  EXPECT_TRUE(news.empty());
}

TEST_F(WaylandClipboardTest, NothingHappensWhileNothingChanges) {
  Start();
  ASSERT_EQ(ReadAfter({{kBest, Gives(Times(500'000, "0123456789"))}})->size(), 5'000'000u);
  loop.RunFor(50);
  const int wakeups = loop.Wakeups();
  const char16_t* const text = clipboard->Read().data();
  loop.RunFor(500);
  EXPECT_EQ(clipboard->Read().data(), text) << "a look copies nothing";
  EXPECT_EQ(loop.Wakeups(), wakeups);
  EXPECT_EQ(compositor->Asked(), 1);
}

TEST_F(WaylandClipboardTest, ADeviceThatIsFinishedIsMadeAnew) {
  Start();
  EXPECT_EQ(ReadAfter({{kBest, Gives("first")}}), u"first");
  compositor->Finish();
  ASSERT_TRUE(Await([this] { return Read() == std::nullopt; }));
  EXPECT_THROW(clipboard->Put(u"into nothing"), RuntimeError);
  ASSERT_TRUE(Await([this] { return Read() == u"first"; }));
  EXPECT_EQ(ReadAfter({{kBest, Gives("second")}}), u"second");
}

TEST_F(WaylandClipboardTest, ATextOutlivesTheCompositorThatComesBack) {
  Start();
  int lost = 0;
  clipboard->OnLost([&] { ++lost; });
  for (const bool own : {true, false}) {
    if (own)
      clipboard->Put(u"kept");
    else
      ASSERT_EQ(ReadAfter({{kBest, Gives("kept")}}), u"kept");
    loop.RunFor(20);
    const std::string socket = compositor->Socket();
    compositor.reset();
    ASSERT_TRUE(Await([this] { return Read() == std::nullopt; }));
    compositor = std::make_unique<TestCompositor>(TestCompositor::Options{.socket = socket});
    ASSERT_TRUE(AwaitOffered());
    EXPECT_EQ(Paste(), "kept");
    EXPECT_EQ(Read(), u"kept");
  }
  EXPECT_EQ(lost, 0);
  compositor.reset();
  ASSERT_TRUE(Await([&] { return lost > 0; }));
  loop.RunFor(500);
  EXPECT_EQ(lost, 1);
  EXPECT_EQ(Read(), std::nullopt);
  EXPECT_THROW(clipboard->Clear(), RuntimeError);
}

TEST_F(WaylandClipboardTest, WithoutDataControlThereIsNone) {
  compositor = std::make_unique<TestCompositor>(TestCompositor::Options{.managers = {}});
  EXPECT_THROW(WaylandClipboard(loop, compositor->Socket().c_str()), RuntimeError);
  EXPECT_THROW(WaylandClipboard(loop, "/nowhere/at/all"), RuntimeError);
  EXPECT_EQ(loop.WatchCount(), 0u);
}

}  // namespace
}  // namespace quillbox::test

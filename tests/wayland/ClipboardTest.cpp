#include "wayland/ClipboardFixture.h"

namespace quillbox::test {
namespace {

// Everything that an owner may offer, what is read of it, and what becomes of it without its owner.
TEST_F(WaylandClipboardTest, WhatIsReadAndWhatOutlivesItsOwner) {
  enum After { Lasts, Goes, Secret };  // a secret is not read and goes
  struct Row {
    const char* what;
    TestCompositor::Offer offer;
    Text text;
    After after = Lasts;
  };
  const TestCompositor::Offer word = {{kBest, Gives("word")}};
  const Row rows[] = {
      {"the best type",
       {{kBest, Gives("\u20ac")}, {"text/plain", Gives("worse")}, {"STRING", Gives("?")}},
       u"\u20ac"},
      {"spelt otherwise", {{"text/plain;charset=UTF-8", Gives("a")}, {"TEXT", Gives("worse")}}, u"a"},
      {"the names of X11",
       {{"UTF8_STRING", Gives("\u00fc")}, {"STRING", Gives("\xfc")}, {"TARGETS", Refuses()}},
       u"\u00fc"},
      {"Latin-1", {{"STRING", Gives("\xfc\xe9")}}, u"\u00fc\u00e9"},
      {"UTF-8 in a type that leaves it open", {{"text/plain", Gives("\u6f22")}}, u"\u6f22"},
      {"not UTF-8 against its word", {{kBest, Gives("a\xff")}}, u"a\uFFFD"},
      {"in pieces", {{kBest, Gives(Times(400'000, "0"))}}, Text(400'000, u'0')},
      {"text beside more", {{kBest, Gives("plain")}, {"text/html", Gives("<b>")}}, u"plain", Goes},
      {"no text", {{"image/png", Gives("PNG")}}, u"", Goes},
      {"the best type isn't there", {{kBest, Refuses()}, {"UTF8_STRING", Gives("next")}}, u"next"},
      {"no type is there", {{kBest, Refuses()}, {"TEXT", Refuses()}}, u"", Goes},
      {"a secret", {{kHint, Gives("secret")}, {kBest, Gives("word")}}, u"", Secret},
      {"the same again", {{"STRING", Gives("word")}}, u"", Secret},
      {"another text", {{kBest, Gives("more")}}, u"more"},
      {"no secret any more", word, u"word"},
      {"a secret with an end",
       {{kHint, Gives(std::string("Secret\r\n\0", 9))}, {kBest, Gives("word")}},
       u"",
       Secret},
      {"no text, which says that it is over", {{"image/png", Gives("PNG")}}, u"", Goes},
      {"no secret any more, either", word, u"word"},
      {"a secret that isn't there", {{kHint, Gives("secret")}, {kBest, Refuses()}}, u"", Secret},
      {"a hint without a value", {{kHint, Refuses()}, {kBest, Gives("unsaid")}}, u"", Secret},
      {"a hint that says no", {{kHint, Gives("public")}, {kBest, Gives("open")}}, u"open"},
  };
  for (const char* manager : {"ext_data_control_manager_v1", "zwlr_data_control_manager_v1"}) {
    Start({.managers = {manager}});
    for (const Row& row : rows) {
      SCOPED_TRACE(row.what);
      EXPECT_TRUE(ReadAfter(row.offer) == row.text);
      EXPECT_EQ(news.back(), row.text.empty() ? ClipboardNews::Other : ClipboardNews::Text);
      EXPECT_EQ(clipboard->HoldsSecret(), row.after == Secret);
      news.clear();
      compositor->Own({});
      if (row.after == Lasts) {
        ASSERT_TRUE(AwaitOffered());
        EXPECT_TRUE(Read() == row.text);
      } else {
        ASSERT_TRUE(Await([this] { return Read() == u"" && !clipboard->HoldsSecret(); }));
        EXPECT_TRUE(compositor->Offered().empty());
      }
      EXPECT_EQ(news.empty(), row.after == Lasts || row.text.empty()) << "it is the same text";
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
  // Cleared by us it stays clear; cleared by another it does, too, being our own.
  clipboard->Clear();
  loop.RunFor(200);
  EXPECT_EQ(Read(), u"");
  EXPECT_TRUE(compositor->Offered().empty());
  clipboard->Put(u"third");
  ASSERT_TRUE(AwaitOffered());
  compositor->Own({});
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
  compositor->Own({});
  ASSERT_TRUE(AwaitOffered());
  EXPECT_EQ(Paste(), "copied");
}

TEST_F(WaylandClipboardTest, AnEmptyClipboardOfWhichNothingIsSaidIsKnown) {
  Start({.tellsOfNobody = false});
  EXPECT_EQ(Read(), u"");
  Close();
  compositor->Own({{kBest, Gives("before the start")}});
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
    loop.RunFor(300);  // it is looked for more than once
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

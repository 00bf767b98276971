#include <atomic>
#include <functional>
#include <iterator>
#include <thread>

#include "x11/ClipboardFixture.h"
#include "x11/OwnProcess.h"

namespace quillbox::test {
namespace {

// The clipboard outlives the program that it was copied in.
using ClipboardTakeover = ClipboardFixture;

TEST_F(ClipboardTakeover, ATextStaysHoweverItsOwnerQuits) {
  const std::string large(3'000'000, 'L');
  struct Case {
    std::string text;
    Reaction reaction;
    std::function<void(TestOwner&)> goes;
  };
  TestOwner* owner = nullptr;
  const auto lastWords = [&](const std::string& text) {
    Reaction last = Gives("UTF8_STRING", text);
    last.answered = [&owner] { owner->Quit(); };
    return last;
  };
  Reaction inPieces = GivesInPieces("UTF8_STRING", "in pieces", 4);
  inPieces.quitsAtTheEnd = true;
  const auto gone = [](TestOwner&) {};
  const Case cases[] = {
      {"closes", Gives("UTF8_STRING", "closes"), [](TestOwner& each) { each.Quit(); }},
      {"destroys", Gives("UTF8_STRING", "destroys"),
       [](TestOwner& each) { each.DestroyWindow(each.Window()); }},
      {"last words", lastWords("last words"), gone},
      {"in pieces", inPieces, gone},
      {large, lastWords(large), gone},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text.substr(0, 10));
    TestOwner each(loop);
    owner = &each;
    each.Offer("UTF8_STRING", c.reaction).Offer("STRING", Gives("STRING", "worse"));
    EXPECT_TRUE(ReadAfter(each) == FromUtf8(c.text));
    c.goes(each);
    loop.RunFor(30);
    EXPECT_TRUE(Read() == FromUtf8(c.text));
    EXPECT_TRUE(Paste() == c.text);
  }
  EXPECT_EQ(news.size(), std::size(cases)) << "taking over is no news";
}

TEST_F(ClipboardTakeover, ContentBesideTextIsNotReplacedNorIsAClear) {
  for (const char* other :
       {"image/png", "text/uri-list", "x-special/gnome-copied-files", "text/html", "clear"}) {
    TestOwner owner(loop);
    const bool clears = std::string(other) == "clear";
    owner.OfferText("beside");
    if (!clears) owner.Offer(other, Gives(other, "x"));
    EXPECT_EQ(ReadAfter(owner), u"beside");
    if (clears) owner.Clear();
    owner.Quit();
    ASSERT_TRUE(AwaitNews()) << other;
    EXPECT_EQ(Read(), u"") << other;
    EXPECT_EQ(Paste(), std::nullopt) << other;
  }
}

TEST_F(ClipboardTakeover, ANewOwnerAtTheSameMomentKeepsTheClipboard) {
  TestOwner first(loop), second(loop);
  first.OfferText("first");
  second.OfferText("second");
  EXPECT_EQ(ReadAfter(first), u"first");
  first.Quit();
  second.Own();
  ASSERT_TRUE(AwaitNews());
  EXPECT_EQ(Read(), u"second");
  EXPECT_EQ(Paste(), "second");
}

// A clipboard manager that saves what it is asked to, a text at a time.
class TestManager final : public TestClient {
 public:
  TestManager(PollEventLoop& loop, bool answers) : TestClient(loop), answers_(answers) {
    SetOwner("CLIPBOARD_MANAGER", Window());
  }
  std::size_t targets = 0;
  std::string saved;

 private:
  void OnEvent(const xcb_generic_event_t& event) override {
    const int type = event.response_type & 0x7F;
    if (type == XCB_SELECTION_REQUEST) {
      request_ = reinterpret_cast<const xcb_selection_request_event_t&>(event);
      targets = Property(request_.requestor, request_.property, false)->value_len;
      xcb_convert_selection(Connection(), Window(), Atom("CLIPBOARD"), Atom("UTF8_STRING"), Atom("SAVED"),
                            request_.time);
    } else if (type == XCB_SELECTION_NOTIFY) {
      saved = BytesOf(*Property(Window(), Atom("SAVED"), true));
      if (answers_) Notify(request_, request_.property);
    }
  }

  bool answers_;
  xcb_selection_request_event_t request_{};
};

using ClipboardHandover = ClipboardFixture;

// The manager works at the same time, as another program does.
TEST_F(ClipboardHandover, TheManagerReadsTheTextBeforeWeGo) {
  EXPECT_FALSE(clipboard->HandOver(20'000)) << "nothing is ours";
  clipboard->Put(u"saved");
  EXPECT_FALSE(clipboard->HandOver(20'000)) << "nobody to take it";
  for (const bool answers : {true, false}) {
    std::atomic<bool> ready = false, over = false;
    std::string text;
    std::size_t targets = 0;
    std::thread other([&] {
      PollEventLoop own;
      TestManager manager(own, answers);
      ready = true;
      while (!over) own.RunFor(5);
      text = manager.saved;
      targets = manager.targets;
    });
    while (!ready) std::this_thread::yield();
    // One that never says that it has saved is left when the time is up.
    EXPECT_EQ(clipboard->HandOver(answers ? 20'000 : 300), answers);
    over = true;
    other.join();
    EXPECT_TRUE(!answers || text == "saved");
    EXPECT_TRUE(!answers || targets == 4u);
  }
}

// What becomes of the program when its X server doesn't behave.
TEST(ClipboardServer, ItsEndIsReportedOnce) {
  OwnXServer server;
  PollEventLoop loop;
  XClipboard clipboard(loop, server.Display().c_str());
  ASSERT_TRUE(clipboard.Settle(20'000));
  clipboard.Put(u"text");
  loop.RunFor(20);
  int lost = 0;
  clipboard.OnLost([&] { ++lost; });
  server.End();
  EXPECT_TRUE(loop.RunUntil([&] { return lost > 0; }));
  loop.RunFor(50);
  EXPECT_EQ(lost, 1);
  EXPECT_EQ(loop.WatchCount(), 0u);
  EXPECT_THROW(clipboard.Read(), RuntimeError);
  EXPECT_THROW(clipboard.Put(u"more"), RuntimeError);
  EXPECT_FALSE(clipboard.HandOver(1000));
}

TEST(ClipboardServer, NothingWaitsForAStoppedOne) {
  OwnXServer server;
  PollEventLoop loop;
  XClipboard clipboard(loop, server.Display().c_str());
  ASSERT_TRUE(clipboard.Settle(20'000));
  server.Stop();  // for good: whatever waited for it would never end
  for (int i = 0; i < 100; ++i) clipboard.Put(u"while it is stopped");
  EXPECT_EQ(clipboard.Read(), u"while it is stopped");
  loop.RunFor(20);
  EXPECT_FALSE(clipboard.HandOver(200));
}

TEST(ClipboardServer, WithoutOneThereIsNoClipboard) {
  PollEventLoop loop;
  EXPECT_THROW(XClipboard(loop, ":65000"), RuntimeError);
  EXPECT_EQ(loop.WatchCount(), 0u);
}

}  // namespace
}  // namespace quillbox::test

#include <atomic>
#include <functional>
#include <iterator>
#include <thread>

#include "base/Utf8.h"
#include "x11/ClipboardFixture.h"

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
      {"destroys", Gives("UTF8_STRING", "destroys"), [](TestOwner& each) { each.DestroyWindow(); }},
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
    EXPECT_TRUE(TestReader(loop).Fetch("UTF8_STRING").bytes == c.text);
  }
  EXPECT_EQ(news.size(), std::size(cases)) << "taking over is no news";
}

TEST_F(ClipboardTakeover, ContentBesideTextIsNotReplaced) {
  for (const char* other : {"image/png", "text/uri-list", "x-special/gnome-copied-files", "text/html"}) {
    TestOwner owner(loop);
    owner.OfferText("beside").Offer(other, Gives(other, "x"));
    EXPECT_EQ(ReadAfter(owner), u"beside");
    owner.Quit();
    ASSERT_TRUE(AwaitNews()) << other;
    EXPECT_EQ(Read(), u"") << other;
    EXPECT_TRUE(TestReader(loop).Fetch("UTF8_STRING").refused) << other;
  }
}

TEST_F(ClipboardTakeover, AClearStaysAClear) {
  TestOwner owner(loop);
  owner.OfferText("cleared");
  EXPECT_EQ(ReadAfter(owner), u"cleared");
  owner.Clear();
  owner.Quit();
  loop.RunFor(50);
  EXPECT_EQ(Read(), u"");
  EXPECT_TRUE(TestReader(loop).Fetch("UTF8_STRING").refused);
}

TEST_F(ClipboardTakeover, ANewOwnerAtTheSameMomentKeepsTheClipboard) {
  TestOwner first(loop), second(loop);
  first.OfferText("first");
  second.OfferText("second");
  EXPECT_EQ(ReadAfter(first), u"first");
  first.Quit();
  second.Own();
  loop.RunFor(100);
  EXPECT_EQ(Read(), u"second");
  EXPECT_EQ(TestReader(loop).Fetch("UTF8_STRING").bytes, "second");
}

// A clipboard manager that saves what it is asked to, a text at a time.
class TestManager final : public TestClient {
 public:
  explicit TestManager(PollEventLoop& loop, bool answers) : TestClient(loop), answers_(answers) {
    xcb_set_selection_owner(Connection(), Window(), Atom("CLIPBOARD_MANAGER"), XCB_CURRENT_TIME);
    xcb_flush(Connection());
  }
  std::vector<xcb_atom_t> toSave;
  std::string saved;

 private:
  void OnEvent(const xcb_generic_event_t& event) override {
    const int type = event.response_type & 0x7F;
    if (type == XCB_SELECTION_REQUEST) {
      request_ = reinterpret_cast<const xcb_selection_request_event_t&>(event);
      const auto list = Property(request_.requestor, request_.property, false);
      const auto* atoms = static_cast<const xcb_atom_t*>(xcb_get_property_value(list.get()));
      toSave.assign(atoms, atoms + list->value_len);
      xcb_convert_selection(Connection(), Window(), Atom("CLIPBOARD"), Atom("UTF8_STRING"), Atom("SAVED"),
                            request_.time);
    } else if (type == XCB_SELECTION_NOTIFY) {
      const auto text = Property(Window(), Atom("SAVED"), true);
      saved.assign(static_cast<const char*>(xcb_get_property_value(text.get())), text->value_len);
      if (answers_) Notify(request_, request_.property);
    }
  }

  bool answers_;
  xcb_selection_request_event_t request_{};
};

using ClipboardHandover = ClipboardFixture;

struct Farewell {
  bool saved = false;
  std::string text;
  std::size_t targets = 0;
  std::chrono::steady_clock::duration took{};
};

// Hands the clipboard over while a manager runs at the same time.
Farewell HandOverTo(XClipboard& clipboard, bool managerAnswers) {
  Farewell farewell;
  std::atomic<bool> ready = false, over = false;
  std::thread other([&] {
    PollEventLoop loop;
    TestManager manager(loop, managerAnswers);
    manager.Atom("SAVED");  // a round trip: it is the manager now
    ready = true;
    while (!over) loop.RunFor(5);
    farewell.text = manager.saved;
    farewell.targets = manager.toSave.size();
  });
  while (!ready) std::this_thread::yield();
  const auto start = std::chrono::steady_clock::now();
  farewell.saved = clipboard.HandOver(1000);
  farewell.took = std::chrono::steady_clock::now() - start;
  over = true;
  other.join();
  return farewell;
}

TEST_F(ClipboardHandover, TheManagerReadsTheTextBeforeWeGo) {
  clipboard->Put(u"saved");
  const Farewell farewell = HandOverTo(*clipboard, true);
  EXPECT_TRUE(farewell.saved);
  EXPECT_EQ(farewell.text, "saved");
  EXPECT_EQ(farewell.targets, 4u);
  EXPECT_LT(farewell.took, std::chrono::milliseconds(500));
}

TEST_F(ClipboardHandover, AManagerThatNeverEndsIsLeftAfterASecond) {
  clipboard->Put(u"unsaved");
  const Farewell farewell = HandOverTo(*clipboard, false);
  EXPECT_FALSE(farewell.saved);
  EXPECT_LT(farewell.took, std::chrono::milliseconds(1300));
}

TEST_F(ClipboardHandover, TakesNoTimeWithoutAManagerOrAText) {
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(clipboard->HandOver(1000));
  clipboard->Put(u"text");
  EXPECT_FALSE(clipboard->HandOver(1000));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(500));
}

}  // namespace
}  // namespace quillbox::test

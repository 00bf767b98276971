#include <atomic>
#include <cstring>
#include <thread>

#include "x11/ClipboardFixture.h"

namespace quillbox::test {
namespace {

// The clipboard outlives the program that it was copied in.
using ClipboardTakeover = ClipboardFixture;

TEST_F(ClipboardTakeover, ATextStaysWhenItsOwnerQuits) {
  TestReader reader(loop);
  TestOwner closes(loop);
  closes.OfferText("stays").Offer("STRING", Gives("STRING", "stays"));
  EXPECT_EQ(ReadAfter(closes), u"stays");
  closes.Quit();
  loop.RunFor(30);
  EXPECT_EQ(Read(), u"stays");
  EXPECT_EQ(reader.Fetch("UTF8_STRING").bytes, "stays");

  TestOwner destroys(loop);
  destroys.OfferText("stays too");
  EXPECT_EQ(ReadAfter(destroys), u"stays too");
  destroys.DestroyWindow();
  loop.RunFor(30);
  EXPECT_EQ(reader.Fetch("UTF8_STRING").bytes, "stays too");
  EXPECT_EQ(news.size(), 2u) << "taking over is no news";
}

TEST_F(ClipboardTakeover, AnOwnerMayQuitRightAfterItsAnswer) {
  TestReader reader(loop);
  TestOwner whole(loop);
  Reaction last = Gives("UTF8_STRING", "last words");
  last.answered = [&] { whole.Quit(); };
  whole.Offer("UTF8_STRING", last);
  EXPECT_EQ(ReadAfter(whole), u"last words");
  loop.RunFor(30);
  EXPECT_EQ(reader.Fetch("UTF8_STRING").bytes, "last words");

  TestOwner pieces(loop);
  Reaction incr = GivesInPieces("UTF8_STRING", "in pieces", 4);
  incr.quitsAtTheEnd = true;
  pieces.Offer("UTF8_STRING", incr);
  EXPECT_EQ(ReadAfter(pieces), u"in pieces");
  loop.RunFor(30);
  EXPECT_EQ(reader.Fetch("UTF8_STRING").bytes, "in pieces");
}

TEST_F(ClipboardTakeover, ALargeTextOfADyingOwnerIsStillReadToItsEnd) {
  const std::string large(3'000'000, 'L');
  TestOwner owner(loop);
  Reaction last = Gives("UTF8_STRING", large);
  last.answered = [&] { owner.Quit(); };
  owner.Offer("UTF8_STRING", last);
  EXPECT_EQ(ReadAfter(owner) == Text(large.size(), u'L'), true);
  loop.RunFor(30);
  TestReader reader(loop);
  EXPECT_EQ(reader.Fetch("UTF8_STRING").bytes == large, true);
}

TEST_F(ClipboardTakeover, ContentBesideTextIsNotReplaced) {
  for (const char* other : {"image/png", "text/uri-list", "x-special/gnome-copied-files", "text/html"}) {
    TestOwner owner(loop);
    owner.OfferText("beside").Offer(other, Gives(other, "x"));
    EXPECT_EQ(ReadAfter(owner), u"beside");
    owner.Quit();
    ASSERT_TRUE(AwaitNews()) << other;
    EXPECT_EQ(Read(), u"") << other;
    TestReader reader(loop);
    EXPECT_TRUE(reader.Fetch("UTF8_STRING").refused) << other;
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
  TestReader reader(loop);
  EXPECT_TRUE(reader.Fetch("UTF8_STRING").refused);
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
  TestReader reader(loop);
  EXPECT_EQ(reader.Fetch("UTF8_STRING").bytes, "second");
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
      const auto cookie =
          xcb_get_property(Connection(), 0, request_.requestor, request_.property, XCB_ATOM_ATOM, 0, 99);
      const auto list = Malloced(xcb_get_property_reply(Connection(), cookie, nullptr));
      const auto* atoms = static_cast<const xcb_atom_t*>(xcb_get_property_value(list.get()));
      toSave.assign(atoms, atoms + list->value_len);
      xcb_convert_selection(Connection(), Window(), Atom("CLIPBOARD"), Atom("UTF8_STRING"), Atom("SAVED"),
                            request_.time);
    } else if (type == XCB_SELECTION_NOTIFY) {
      const auto cookie =
          xcb_get_property(Connection(), 1, Window(), Atom("SAVED"), XCB_GET_PROPERTY_TYPE_ANY, 0, 9999);
      const auto text = Malloced(xcb_get_property_reply(Connection(), cookie, nullptr));
      saved.assign(static_cast<const char*>(xcb_get_property_value(text.get())), text->value_len);
      if (answers_) Answer();
    }
  }

  void Answer() {
    xcb_selection_notify_event_t answer{};
    answer.response_type = XCB_SELECTION_NOTIFY;
    answer.time = request_.time;
    answer.requestor = request_.requestor;
    answer.selection = request_.selection;
    answer.target = request_.target;
    answer.property = request_.property;
    char wire[32] = {};
    std::memcpy(wire, &answer, sizeof answer);
    xcb_send_event(Connection(), 0, request_.requestor, XCB_EVENT_MASK_NO_EVENT, wire);
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
  farewell.saved = clipboard.HandOver();
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
  EXPECT_FALSE(clipboard->HandOver());
  clipboard->Put(u"text");
  EXPECT_FALSE(clipboard->HandOver());
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(500));
}

}  // namespace
}  // namespace quillbox::test

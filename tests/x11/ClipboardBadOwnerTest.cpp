#include <functional>
#include <list>

#include "x11/ClipboardFixture.h"

namespace quillbox::test {
namespace {

const std::string kUtf8 = "UTF8_STRING";

using ClipboardBadOwner = ClipboardFixture;

TEST_F(ClipboardBadOwner, OneThatDoesntDeliverCannotBeOpenedUntilTheNext) {
  const std::pair<const char*, Reaction> rows[] = {
      {"TARGETS", Of(Reaction::Silent)},
      // One deadline for all of it, not one a piece.
      {"UTF8_STRING", GivesPieces(
                          [](std::size_t) {
                            return std::optional(Piece{kUtf8, 8, "."});
                          },
                          100)},
  };
  for (const auto& [target, reaction] : rows) {
    TestOwner owner(loop), next(loop);
    owner.Offer(target, reaction);
    EXPECT_EQ(ReadAfter(owner), std::nullopt) << target;
    EXPECT_EQ(news.back(), ClipboardNews::Other);
    next.OfferText("next");
    EXPECT_EQ(ReadAfter(next), u"next");
  }
}

// A text target that is answered with anything but text counts for nothing, and the next best is taken.
TEST_F(ClipboardBadOwner, LiesAboutTypeAndFormatAreNoText) {
  TestOwner* owner = nullptr;
  const auto dies = [&](std::size_t i) {
    if (i == 3) owner->Quit();
    return i < 3 ? std::optional(Piece{kUtf8, 8, "part"}) : std::nullopt;
  };
  const std::vector<Reaction> lies = {
      Gives(kUtf8, "abcdabcd", 16),
      Gives(kUtf8, "abcdabcd", 32),
      Gives("COMPOUND_TEXT", "abcd"),
      Gives("ATOM", "abcd", 32),
      Of(Reaction::WithoutProperty),
      GivesPieces({{kUtf8, 8, "good"}, {"image/png", 8, "bad"}, {kUtf8, 8, ""}}),
      GivesPieces({{kUtf8, 8, "good"}, {kUtf8, 32, "bad!"}, {kUtf8, 8, ""}}),
      GivesPieces({{"INCR", 32, "\1\1\1\1"}}),
      GivesPieces(dies),
  };
  for (std::size_t i = 0; i < lies.size(); ++i) {
    SCOPED_TRACE(i);
    TestOwner onlyLies(loop);
    owner = &onlyLies;
    onlyLies.Offer(kUtf8, lies[i]);
    EXPECT_EQ(ReadAfter(onlyLies), u"");
    EXPECT_EQ(news.back(), ClipboardNews::Other);
    TestOwner otherwiseHonest(loop);
    owner = &otherwiseHonest;
    otherwiseHonest.Offer(kUtf8, lies[i]).Offer("STRING", Gives("STRING", "honest"));
    EXPECT_EQ(ReadAfter(otherwiseHonest), i + 1 < lies.size() ? u"honest" : u"");
  }
}

TEST_F(ClipboardBadOwner, WhatIsSaidAroundATextDoesntMatter) {
  const auto announces = [](const std::string& size) {
    Reaction reaction = GivesInPieces(kUtf8, "the text", 3);
    reaction.piece.bytes = size;
    return reaction;
  };
  const Reaction rows[] = {
      announces(std::string(4, '\xFF')), announces(std::string(4, '\0')), announces(""),
      announces(std::string(80000, 'x')),
      // An empty piece is the end, and what is said after it doesn't get into the next text.
      GivesPieces({{kUtf8, 8, "the text"}, {"ATOM", 32, ""}, {kUtf8, 8, "!"}, {kUtf8, 8, "!"}})};
  for (const Reaction& row : rows) {
    TestOwner owner(loop);
    owner.Offer(kUtf8, row);
    EXPECT_EQ(ReadAfter(owner), u"the text");
  }
}

TEST_F(ClipboardBadOwner, GarbageInTheListOfTargets) {
  std::string unknown;
  for (std::uint32_t atom = 0x1000000; atom < 0x1001388; ++atom)
    unknown.append(reinterpret_cast<const char*>(&atom), 4);
  const std::function<void(Reaction&)> rows[] = {
      [](Reaction& list) { list = Gives("STRING", "not a list"); },
      [&](Reaction& list) { list.piece.bytes.insert(0, unknown); },
      [](Reaction& list) { list.piece.type = "TARGETS"; },  // of old clients
  };
  std::list<TestOwner> owners;  // whose ends are no news in between
  for (const auto& spoil : rows) {
    TestOwner& owner = owners.emplace_back(loop);
    Reaction list = owner.TargetList({kUtf8});
    spoil(list);
    owner.OfferText("text").Offer("TARGETS", list);
    EXPECT_EQ(ReadAfter(owner), u"text");
  }
}

// A list too long to be read whole may name the hint of a secret behind its end.
TEST_F(ClipboardBadOwner, AnEndlessListOfTargetsMayHideASecret) {
  TestOwner owner(loop);
  Reaction list = owner.TargetList({kUtf8});
  while (list.piece.bytes.size() < 100'000) list.piece.bytes += list.piece.bytes;
  owner.OfferText("hidden").Offer("TARGETS", list);
  EXPECT_EQ(ReadAfter(owner), u"");
  EXPECT_TRUE(clipboard->HoldsSecret());
}

// What strangers send or destroy without having any part in it.
using ClipboardStranger = ClipboardFixture;

TEST_F(ClipboardStranger, AWindowThatIsDestroyedIsMadeAnew) {
  TestOwner owner(loop);
  TestClient stranger(loop);
  const auto destroyAllOfOurs = [&] {
    const auto cookie = xcb_query_tree(stranger.Connection(), stranger.Root());
    const XReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(stranger.Connection(), cookie, nullptr));
    const xcb_window_t* windows = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i)
      if (windows[i] != owner.Window() && windows[i] != stranger.Window()) stranger.DestroyWindow(windows[i]);
    loop.RunFor(50);
  };
  destroyAllOfOurs();
  owner.OfferText("after the first");
  EXPECT_EQ(ReadAfter(owner), u"after the first");
  // While a text is under way.
  owner.Offer("TARGETS", Of(Reaction::Silent)).Own();
  ASSERT_TRUE(loop.RunUntil([&] { return owner.Asked() == 3; }));
  owner.Offer("TARGETS", owner.TargetList({kUtf8})).OfferText("after the second");
  destroyAllOfOurs();
  EXPECT_TRUE(loop.RunUntil([&] { return Read() == u"after the second"; }));
  // While the clipboard is ours.
  clipboard->Put(u"ours");
  EXPECT_EQ(Paste(), "ours");
  destroyAllOfOurs();
  EXPECT_EQ(Read(), u"ours");
  EXPECT_EQ(Paste(), "ours");
  EXPECT_EQ(ReadAfter(owner), u"after the second");
}

TEST_F(ClipboardStranger, ForgedEventsLeaveTheClipboardAlone) {
  TestOwner owner(loop);
  owner.OfferText("kept");
  EXPECT_EQ(ReadAfter(owner), u"kept");
  clipboard->Put(u"ours");
  EXPECT_EQ(Paste(), "ours");
  TestClient stranger(loop);
  const xcb_window_t ours = stranger.OwnerOf("CLIPBOARD");
  // As reports that nobody owns it any more, and that it is ours.
  for (const xcb_window_t named : {xcb_window_t{XCB_NONE}, ours}) {
    for (std::uint32_t type = 2; type < 127; ++type) {
      const std::uint32_t wire[8] = {type, ours, named, stranger.Atom("CLIPBOARD"), 0, 0, 0, 0};
      xcb_send_event(stranger.Connection(), 0, ours, XCB_EVENT_MASK_NO_EVENT,
                     reinterpret_cast<const char*>(wire));
    }
  }
  stranger.Sync();
  loop.RunFor(50);
  EXPECT_EQ(Read(), u"ours");
  EXPECT_EQ(Paste(), "ours");
  EXPECT_EQ(news.size(), 1u);
}

// Each asks for a long text, and nobody takes any: the rest of the program has its turn in between.
TEST_F(ClipboardStranger, AFloodOfRequestsGivesWay) {
  clipboard->Put(Text(60'000, u'f'));
  TestClient stranger(loop);
  TestReader last(loop);
  int turns = 0;
  std::function<void()> turn = [&] {
    ++turns;
    loop.StartTimer(0, turn);
  };
  for (int i = 0; i < 3000; ++i)
    xcb_convert_selection(stranger.Connection(), stranger.Window(), stranger.Atom("CLIPBOARD"),
                          stranger.Atom(kUtf8), XCB_ATOM_STRING, XCB_CURRENT_TIME);
  stranger.Sync();
  last.Ask(kUtf8);
  turn();
  ASSERT_TRUE(loop.RunUntil([&] { return last.Complete(kUtf8); }));
  EXPECT_GT(turns, 25);
}

// The window manager of a Wayland session, which owns the clipboard on behalf of the windows that aren't
// X11's.
class ClipboardManaged : public ClipboardFixture {
 protected:
  // As it does while none of X11's windows has the focus.
  void Refuse() {
    for (const char* target : {"TARGETS", "UTF8_STRING", "STRING"})
      manager.Offer(target, Of(Reaction::Refuse));
  }
  void Show(const std::string& text) {
    manager.Offer("TARGETS", manager.TargetList({kUtf8})).OfferText(text);
  }
  void FocusAnotherWindow() {
    const xcb_window_t window = manager.Window();
    xcb_change_property(manager.Connection(), XCB_PROP_MODE_REPLACE, manager.Root(),
                        manager.Atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW, 32, 1, &window);
    manager.Sync();
  }

  TestOwner manager{loop};
};

TEST_F(ClipboardManaged, WhatItRefusesCannotBeOpened) {
  manager.SetOwner("WM_S0", manager.Window());
  Refuse();
  EXPECT_EQ(ReadAfter(manager), std::nullopt);
  EXPECT_EQ(news.back(), ClipboardNews::Other);
  EXPECT_THROW(clipboard->Put(u"without effect"), RuntimeError);
  EXPECT_THROW(clipboard->Clear(), RuntimeError);
  EXPECT_EQ(manager.OwnerOf("CLIPBOARD"), manager.Window());
  // It shows the clipboard when one of X11's windows has the focus again, and says nothing of that.
  Show("copied meanwhile");
  FocusAnotherWindow();
  ASSERT_TRUE(AwaitNews());
  EXPECT_EQ(Read(), u"copied meanwhile");
  clipboard->Put(u"ours");
  EXPECT_EQ(Paste(), "ours");
  // Another owner that refuses can be replaced: it has no say in what we may put.
  TestOwner other(loop);
  for (const char* target : {"TARGETS", "UTF8_STRING", "STRING"}) other.Offer(target, Of(Reaction::Refuse));
  EXPECT_EQ(ReadAfter(other), std::nullopt);
  clipboard->Put(u"ours again");
  EXPECT_EQ(Paste(), "ours again");
}

TEST_F(ClipboardManaged, WhatItGivesUpIsHiddenNotCleared) {
  manager.SetOwner("WM_S0", manager.Window());
  Show("native");
  EXPECT_EQ(ReadAfter(manager), u"native");
  manager.Clear();
  ASSERT_TRUE(AwaitNews());
  EXPECT_EQ(Read(), std::nullopt);
  EXPECT_EQ(ReadAfter(manager), u"native");
  // Without being the window manager it has cleared.
  manager.SetOwner("WM_S0", XCB_NONE);
  manager.Clear();
  ASSERT_TRUE(AwaitNews());
  EXPECT_EQ(Read(), u"");
}

}  // namespace
}  // namespace quillbox::test

#include "platform/ports/TextTypes.h"
#include "wayland/ClipboardFixture.h"

namespace quillbox::test {
namespace {

std::string Euros(std::size_t count) { return Times(count, "\u20ac"); }

// Whatever an owner does, the next one's text is read, and nothing of it gets into that: neither when it
// comes at once nor when the owner has been read to the end.
TEST_F(WaylandClipboardTest, BadOwners) {
  const auto gone = [this](std::string_view written) {
    return [this, written](int fd) {
      EXPECT_EQ(write(fd, written.data(), written.size()), static_cast<ssize_t>(written.size()));
      close(fd);
      compositor->OwnerDies();
    };
  };
  struct Row {
    const char* what;
    TestCompositor::Offer offer;
    std::vector<std::optional<Text>> texts;  // one of them in the end; nothing: it can't be read
    bool secret = false;
    bool outlives = false;
  };
  const Text most(kMaxClipboardBytes / 3, u'\u20ac');  // cut at a whole character
  const Row rows[] = {
      {"never writes", {{kBest, NeverWrites()}}, {std::nullopt}},
      {"trickles", {{kBest, Trickles(".")}}, {std::nullopt}},
      {"writes without an end", {{kBest, Trickles(Euros(100'000))}}, {std::nullopt, most}},
      {"a huge text", {{kBest, Gives(Euros(16'700'000))}}, {std::nullopt, most}},
      {"never says whether it is a secret", {{kHint, NeverWrites()}, {kBest, NeverWrites()}}, {u""}, true},
      {"half a text, and gone", {{kBest, gone("half")}}, {u"half"}, false, true},
      {"gone before the text", {{kBest, gone("")}}, {u""}},
  };
  Start();
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    if (!row.outlives) {
      const int asked = compositor->Asked();
      compositor->Own(row.offer);
      ASSERT_TRUE(Await([&] { return compositor->Asked() > asked; }));
      compositor->Own({{kBest, Gives("new")}});
      EXPECT_TRUE(Await([&] { return Read() == u"new"; }));
    }
    const std::optional<Text> read = ReadAfter(row.offer);
    EXPECT_TRUE(std::find(row.texts.begin(), row.texts.end(), read) != row.texts.end());
    EXPECT_EQ(clipboard->HoldsSecret(), row.secret);
    EXPECT_TRUE(!row.outlives || AwaitOffered());
    EXPECT_EQ(ReadAfter({{kBest, Gives("next")}}), u"next");
    loop.RunFor(kLookMs);
    EXPECT_TRUE(compositor->Offered().empty()) << "its owner is there";
  }
}

TEST_F(WaylandClipboardTest, AFloodOfOwnersIsReadOnceItIsOver) {
  Start();
  for (int i = 0; i < 200; ++i) compositor->Own({{kBest, NeverWrites()}});
  compositor->Own({{kBest, Gives("last")}});
  std::size_t most = 0;
  ASSERT_TRUE(Await([&] {
    most = std::max(most, OpenDescriptors());
    return Read() == u"last";
  }));
  EXPECT_LT(most, descriptors + 40);
  EXPECT_LT(compositor->Asked(), 60);
  // At two hundred a second, each is read or followed by the next.
  for (int i = 0; i < 400; ++i) {
    compositor->Own({{kBest, Gives("copy " + std::to_string(i))}});
    loop.RunFor(5);
  }
  EXPECT_TRUE(Await([this] { return Read() == u"copy 399"; }));
}

TEST_F(WaylandClipboardTest, ReadersDisturbNobody) {
  Start();
  clipboard->Put(Text(1'700'000, u'\u20ac'));  // five million bytes
  const std::string whole = Euros(1'700'000);
  ASSERT_TRUE(AwaitOffered());
  const int stopped = compositor->Paste(kBest);
  const int dies = compositor->Paste(kBest);
  char piece[100];
  ASSERT_TRUE(Await([&] { return read(dies, piece, sizeof piece) == sizeof piece; }));
  close(dies);
  EXPECT_TRUE(Paste() == whole);
  EXPECT_TRUE(Paste("UTF8_STRING") == whole);
  // The clipboard goes on with other texts, and a reader of the old one still gets it whole.
  const int late = compositor->Paste(kBest);
  std::string all;
  loop.RunFor(10);
  TakeAll(late, all);
  clipboard->Put(u"our next");
  EXPECT_TRUE(Await([this] { return Paste() == "our next"; }));
  EXPECT_EQ(ReadAfter({{kBest, Gives("another's")}}), u"another's");
  EXPECT_TRUE(Await([&] { return TakeAll(late, all); }));
  EXPECT_TRUE(all == whole);
  close(late);
  // The one that has stopped is given up; it has got whole characters.
  ASSERT_TRUE(Await([this] { return loop.Timers() == 0; }));
  all.clear();
  EXPECT_TRUE(TakeAll(stopped, all));
  EXPECT_EQ(all.size() % 3, 0u);
  EXPECT_LT(all.size(), whole.size());
  close(stopped);
}

TEST_F(WaylandClipboardTest, TheEndWaitsForReadersUnderWay) {
  Start();
  clipboard->Put(Text(1'000'000, u'x'));
  ASSERT_TRUE(AwaitOffered());
  const int fd = compositor->Paste(kBest);
  std::string all;
  std::thread reader([&] {
    while (!TakeAll(fd, all)) std::this_thread::yield();
  });
  loop.RunFor(1);
  EXPECT_FALSE(clipboard->HandOver(kPatience));
  Close();
  reader.join();
  close(fd);
  EXPECT_EQ(all.size(), 1'000'000u);
}

}  // namespace
}  // namespace quillbox::test

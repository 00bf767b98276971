#include <malloc.h>

#include <csignal>

#include "platform/ports/TextTypes.h"
#include "wayland/ClipboardFixture.h"

namespace quillbox::test {
namespace {

constexpr char kBest[] = "text/plain;charset=utf-8";

std::string Euros(std::size_t count) {
  std::string all;
  for (std::size_t i = 0; i < count; ++i) all += "\u20ac";
  return all;
}

// Whatever an owner does, the next one's text is read, and nothing of it gets into that.
TEST_F(WaylandClipboardTest, BadOwners) {
  struct Row {
    const char* what;
    Giving giving;
    std::optional<Text> text;  // in the end
  };
  const Row rows[] = {
      {"never writes", NeverWrites(), std::nullopt},
      {"trickles", Trickles("."), std::nullopt},
      {"writes without an end", Trickles(Euros(100'000)), Text()},
      {"half a text, and gone",
       [this](int fd) {
         EXPECT_EQ(write(fd, "half", 4), 4);
         close(fd);
         compositor->OwnerDies();
       },
       u"half"},
      {"gone before the text",
       [this](int fd) {
         close(fd);
         compositor->OwnerDies();
       },
       u""},
  };
  Start();
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    const std::optional<Text> read = ReadAfter({{kBest, row.giving}});
    if (row.text == Text())
      EXPECT_TRUE(!read || read->size() <= kMaxClipboardBytes / 3);
    else
      EXPECT_EQ(read, row.text);
    EXPECT_EQ(ReadAfter({{kBest, Gives("next")}}), u"next");
  }
}

TEST_F(WaylandClipboardTest, AnOwnerIsReplacedWhileItIsRead) {
  Start();
  for (const Giving& giving : {NeverWrites(), Trickles("old"), Gives(Euros(5'000'000))}) {
    const int asked = compositor->Asked();
    compositor->Own({{kBest, giving}});
    ASSERT_TRUE(Await([&] { return compositor->Asked() > asked; }));
    EXPECT_EQ(ReadAfter({{kBest, Gives("new")}}), u"new");
  }
}

TEST_F(WaylandClipboardTest, AFloodOfOwnersIsReadOnceItIsOver) {
  Start();
  for (int i = 0; i < 200; ++i) compositor->Own({{kBest, NeverWrites()}});
  compositor->OwnText("last");
  std::size_t most = 0;
  ASSERT_TRUE(Await([&] {
    most = std::max(most, OpenDescriptors());
    return Read() == u"last";
  }));
  EXPECT_LT(most, descriptors + 40);
  EXPECT_LT(compositor->Asked(), 60);
  // At two hundred a second, each is read or followed by the next.
  for (int i = 0; i < 400; ++i) {
    compositor->OwnText("copy " + std::to_string(i));
    loop.RunFor(5);
  }
  EXPECT_TRUE(Await([this] { return Read() == u"copy 399"; }));
}

TEST_F(WaylandClipboardTest, AHugeTextIsCutAtAWholeCharacter) {
  Start();
  malloc_trim(0);
  EXPECT_EQ(ReadAfter({{kBest, Gives(Euros(16'700'000))}})->size(), kMaxClipboardBytes / 3);
  EXPECT_EQ(clipboard->Read().back(), u'\u20ac');
  EXPECT_EQ(ReadAfter({{kBest, Gives("small")}}), u"small");
}

TEST_F(WaylandClipboardTest, ReadersDisturbNobody) {
  Start();
  const Text text(1'700'000, u'\u20ac');  // five million bytes
  clipboard->Put(text);
  ASSERT_TRUE(AwaitOffered());
  const int stopped = compositor->Paste(kBest);
  const int dies = compositor->Paste(kBest);
  char piece[100];
  ASSERT_TRUE(Await([&] { return read(dies, piece, sizeof piece) == sizeof piece; }));
  close(dies);
  const std::string whole = Euros(1'700'000);
  EXPECT_TRUE(Paste() == whole);
  EXPECT_TRUE(Paste("UTF8_STRING") == whole);
  // The clipboard goes on with another text, and a reader of the old one still gets it whole.
  const int late = compositor->Paste(kBest);
  std::string all;
  loop.RunFor(10);
  TakeAll(late, all);
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

#include "scenarios/RecordScenario.h"

namespace quillbox {
namespace {

class Watcher : public RecordScenario {
 protected:
  void Start(int maximum = -1) {
    if (maximum >= 0) Set("ClipEntriesMax", std::to_string(maximum));
    Do("start");
  }
  // Rows and slots are one list, the first row stands in the field.
  void ExpectClips(const Values& clips) {
    EXPECT_EQ(Rows("List2"), clips);
    Values slots = Do("slots", "ClipEntries");
    slots.resize(clips.size());
    EXPECT_EQ(slots, clips);
    EXPECT_EQ(Of("Text0", "Text"), clips.empty() ? "" : clips[0]);
  }
  std::string Image() { return Do("tray").at(1); }
};

TEST_F(Watcher, EachChangeIsWrittenOnce) {
  Start();
  Copy("one");
  EXPECT_EQ(DataFile("ClipData.qbx"), File("CLIP", {{"one"}}));
  int writes = Writes("ClipData.qbx");
  Copy("one");
  Advance(2000);
  EXPECT_EQ(Writes("ClipData.qbx"), writes) << "the same text again is no change";
  Do("clip.picture");
  Tick();
  EXPECT_EQ(DataFile("ClipData.qbx"), File("CLIP", {{""}, {"one"}}));
  writes = Writes("ClipData.qbx");
  Do("clip.picture");
  Advance(1000);
  EXPECT_EQ(Writes("ClipData.qbx"), writes);
  EXPECT_EQ(Do("clip.writes"), Values{"1"}) << "only the start has emptied the clipboard";
}

TEST_F(Watcher, OfTwoEqualRowsTheLowerOneGoes) {
  WriteData("ClipData.qbx", File("CLIP", {{"top"}, {"x"}, {"same"}, {"y"}, {"same"}, {"z"}}));
  Start();
  Copy("same");
  ExpectClips({"same", "top", "x", "same", "y", "z"});
}

TEST_F(Watcher, TheLargestListUsesAllSlots) {
  Start(99);
  for (int i = 1; i <= 101; ++i) Copy("text " + std::to_string(i));
  EXPECT_EQ(Rows("List2").size(), 100u);
  EXPECT_EQ(Rows("List2").back(), "text 2");
  Do("clip.clear");
  Tick();
  Copy("new");
  EXPECT_EQ(Rows("List2").size(), 100u);
  EXPECT_EQ(Rows("List2").front(), "new");
  EXPECT_EQ(Rows("List2").back(), "text 3");
  EXPECT_EQ(Slots("ClipEntries"), Rows("List2"));
}

TEST_F(Watcher, LongTextsAreCutInTheListAlone) {
  Start();
  const std::string half = std::string(31999, 'x') + "\U0001F600";
  Copy(half);
  EXPECT_EQ(Rows("List2").at(0), std::string(31999, 'x')) << "pairs stay whole";
  EXPECT_TRUE(Boxes().empty()) << "no warning by default";
  Set("Warning", "1");
  Copy(std::string(32000, 'x'));
  EXPECT_TRUE(Boxes().empty());
  Copy(std::string(32001, 'y'));
  EXPECT_EQ(Rows("List2").at(0), std::string(32000, 'y'));
  EXPECT_EQ(Clipboard().size(), 32001u);
  EXPECT_EQ(
      Boxes(),
      (std::vector<Box>{
          {"64", "Quillbox: Entry larger than 32KB",
           "The current clipboard entry is larger than 32 KB. To save disk space, Quillbox does not save "
           "entries that large - it will be truncated to 32 KB when it is stored. Of course, this doesn't "
           "affect the current clipboard entry itself.\n\r(You can turn this message off in the "
           "\"Settings\" Menu.)"}}));
  Do("clip.set", std::string(32001, 'y'));
  Advance(1000);
  EXPECT_TRUE(Boxes().empty());
  EXPECT_EQ(Rows("List2").size(), 3u);
}

TEST_F(Watcher, TheIconBlinksForFiveTicks) {
  Start();
  EXPECT_EQ(Image(), "window");
  Copy("text");
  EXPECT_EQ(Image(), "Picture1");
  Values images;
  for (int i = 0; i < 7; ++i) {
    Tick();
    images.push_back(Image());
  }
  EXPECT_EQ(images, (Values{"window", "Picture1", "window", "Picture1", "window", "window", "window"}));
  Copy("more");
  Tick();
  Copy("and more");
  EXPECT_EQ(Image(), "Picture1") << "a change within a blink begins it anew";
}

TEST_F(Watcher, TheUrlCut) {
  Set("CutURL", "2");
  Start();
  const std::string whole = "http://x/go?to=http://y/z&id=3";
  Copy(whole);
  ExpectClips({"http://y/z"});
  EXPECT_EQ(DataFile("ClipData.qbx"), File("CLIP", {{whole}})) << "the file follows with the next write";
  const int writes = Writes("ClipData.qbx");
  Advance(1000);
  EXPECT_EQ(Writes("ClipData.qbx"), writes) << "the cut text is no change";
  for (const Values& pair : std::vector<Values>{
           {whole, "http://y/z"}, {"a=b&c", "b"}, {"x?yz", "yz"}, {"abc&d", "abc"}, {"plain", "plain"}}) {
    Copy(pair[0]);
    EXPECT_EQ(Clipboard(), pair[1]);
  }
}

TEST_F(Watcher, TheUrlCutByHand) {
  Set("CutURL", "1");
  Start();
  Show();
  Copy("a=b&c");
  EXPECT_EQ(Clipboard(), "a=b&c");
  Click("Text0");
  Do("dblclick", "frmTray.Label7");
  EXPECT_EQ(Clipboard(), "b");
  ExpectClips({"b"});
  Set("CutURL", "0");
  Copy("a=b&c");
  Do("dblclick", "frmTray.Label7");
  EXPECT_EQ(Clipboard(), "a=b&c");
}

}  // namespace
}  // namespace quillbox

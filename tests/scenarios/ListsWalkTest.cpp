// A random walk over the Clip and the Pad page, the tray menu and copies of other programs. After each step
// rows, slots and files hold the same entries, and no step has lost an entry that it had no right to.
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <random>
#include <set>

#include "platform/CodePage.h"
#include "platform/Utf8.h"
#include "scenarios/Scenario.h"

namespace quillbox {
namespace {

const std::string kClip = "frmTray.List2";
const std::string kPad = "frmTray.List1";
constexpr int kDefaultSteps = 3000;

class ListsWalkTest : public Scenario {
 protected:
  // Entries that a step may take away at most, of each list; not counting repeats.
  struct MayLose {
    std::size_t clips = 0;
    std::size_t pads = 0;
  };
  static constexpr std::size_t kAny = 1000;
  struct Lists {
    Values clips;
    Values names;
    Values pads;
  };

  int Random(int below) { return std::uniform_int_distribution<>(0, below - 1)(random_); }
  std::string Number(int below) { return std::to_string(Random(below)); }
  const std::string& OneOf(const Values& values) { return values[Random(static_cast<int>(values.size()))]; }
  static int FromEnvironment(const char* name, int otherwise) {
    const char* const value = std::getenv(name);
    return value ? std::atoi(value) : otherwise;
  }

  // What can't be reached now is refused, and nothing happens.
  void Try(const Values& parts) {
    std::string line;
    for (const std::string& part : parts) line += (line.empty() ? "" : "\t") + part;
    const std::string answer = console.Answer(line);
    EXPECT_EQ(answer.find("no such"), std::string::npos) << line << ": " << answer;
  }

  std::string AnyText() {
    static const Values kTexts{
        "one",         "two",       "three",    "a&b", "line\r\nmore", "gr\xC3\xB6\xC3\x9F",
        "{SCRIPT}abc", "{script}{", "tab\tand", " "};
    if (Random(300) == 0) return std::string(32001, 'x');
    return Random(3) == 0 ? "text " + Number(40) : OneOf(kTexts);
  }

  MayLose Copies() {
    switch (Random(6)) {
      case 0:
        Do("clip.clear");
        break;
      case 1:
        Do("clip.picture");
        break;
      case 2:
        Do("clip.lock", Number(2));
        break;
      default:
        Do("clip.set", AnyText());
    }
    if (Random(4) > 0) Advance(Random(600));
    return {1, 0};
  }

  MayLose Uses() {
    switch (Random(6)) {
      case 0:
        Do("pick", "mnuClip" + std::to_string(1 + Random(10)));
        break;
      case 1:
        Do("pick", "mnuPadSub" + std::to_string(1 + Random(25)));
        break;
      case 2:
        Try({"dblrow", kClip, Number(10)});
        break;
      case 3:
        Try({"dblrow", kPad, Number(10)});
        break;
      case 4:
        Try({"key", OneOf({kClip, kPad}), "Enter"});
        break;
      default:
        Try({"click", "frmTray.Command102"});
    }
    // The clipboard's text comes in like any other, in a list that may be beyond its limit.
    return {ClipsBeyondLimit() ? 1u : 0u, 0};
  }

  MayLose Moves() {
    static const Values kKeys{"Home", "End", "Up", "Down", "Left", "Right", "PageUp", "PageDown"};
    switch (Random(4)) {
      case 0:
        Try({"spin", "frmTray.UpDown2", OneOf({"up", "down"})});
        return {};
      case 1:
        Try({"key", kPad, OneOf(kKeys), "ctrl"});
        return {};
      case 2:
        Try({"key", OneOf({kClip, kPad}), OneOf(kKeys)});
        return {};
      default:
        Try({"key", kClip, OneOf(kKeys), "ctrl"});
        return {ClipsBeyondLimit() ? 1u : 0u, 0};
    }
  }

  MayLose Selects() {
    const std::string list = OneOf({kClip, kPad});
    switch (Random(4)) {
      case 0:
        Try({"select", list, Number(10), Number(10)});
        break;
      case 1:
        Try({"select", list, Number(10), Number(10), Number(10)});
        break;
      case 2:
        Try({"select", list, Number(10)});
        break;
      default:
        Try({"drag", list});
    }
    return {};
  }

  MayLose Edits() {
    switch (Random(6)) {
      case 0:
        Try({"settext", "frmTray.Text0", OneOf({"one", "edited", "", "a\\r\\nb"})});
        return {1, 0};
      case 1:
        Try({"type", "frmTray.Text0", OneOf({"a", "\\r", "\\u0008"})});
        return {1, 0};
      case 2:
        Try({"settext", "frmTray.Text3", OneOf({"", "name", "[No Name]"})});
        return {};
      case 3:
        Try({"settext", "frmTray.Text101", OneOf({"", "one", "two", "fresh " + Number(20), "{SCRIPT}x"})});
        return {};
      case 4:
        Try({"dblclick", "frmTray.Label13"});
        return {};
      default:
        Try({"focus", OneOf({"frmTray.Text0", "frmTray.Text3", "frmTray.Text101", kClip, kPad})});
        return {};
    }
  }

  MayLose Commands() {
    switch (Random(9)) {
      case 0:
      case 1:
        Try({"click", "frmTray.Command101"});
        return {0, 1};
      case 2:
        Try({"click", "frmTray.Command001"});
        return {0, 1};
      case 3:
        Try({"drop", kPad, OneOf({"dropped", "one", "two"})});
        return {0, 1};
      case 4:
        Try({"click", OneOf({"frmTray.Command103", "frmTray.Command104", "frmTray.Command6"})});
        return {};
      case 5:
        Try({"drop", kClip, OneOf({"dropped", "one"})});
        return {};
      case 6:
        Do("pick", "mnuClear");
        return {1, 0};
      case 7:
        Try({"click", "frmTray.Command000"});
        return {1, 0};
      default:
        return Deletes();
    }
  }

  MayLose Deletes() {
    // Mostly a few rows, now and then all of them.
    Do("answer", Random(5) == 0 ? "6" : "7");
    switch (Random(3)) {
      case 0:
        Try({"click", "frmTray.Command003"});
        return {kAny, 0};
      case 1:
        Try({"click", "frmTray.Command105"});
        return {0, kAny};
      default:
        Do("answer", "7", "7");
        Try({"key", OneOf({kClip, kPad}), "Delete"});
        return {kAny, kAny};
    }
  }

  MayLose Surroundings() {
    switch (Random(7)) {
      case 0:
        Do("closebox", "frmTray");
        return {};
      case 1:
        Set(OneOf({"Insert", "LastSort", "Minimize", "AskDelKey", "AlwaysOnTop"}), OneOf({"1", "2"}));
        return {};
      case 2:
        if (!largest_) {
          clipMaximum_ = 3 + Random(8);
          Set("ClipEntriesMax", std::to_string(clipMaximum_));
          Set("PermEntriesMax", std::to_string(3 + Random(8)));
        }
        return {};
      default:
        Show();
        Try({"tab", "frmTray.SSTab1", Number(2)});
        return {};
    }
  }

  MayLose Step() {
    if (Random(10) == 0) Do("answer", OneOf({"6", "7"}));
    switch (Random(14)) {
      case 0:
      case 1:
      case 2:
        return Copies();
      case 3:
      case 4:
        return Uses();
      case 5:
      case 6:
        return Moves();
      case 7:
        return Selects();
      case 8:
      case 9:
        return Edits();
      case 10:
      case 11:
        return Commands();
      default:
        return Surroundings();
    }
  }

  bool ClipsBeyondLimit() const { return static_cast<int>(before_.clips.size()) > clipMaximum_ + 1; }

  // The rows; their slots hold the same, and those behind them nothing.
  void Look(Lists& lists) {
    lists.clips = Rows("List2");
    Values slots = Slots("ClipEntries");
    ASSERT_LE(lists.clips.size(), 100u);
    ASSERT_LE(slots.size(), lists.clips.size());
    slots.resize(lists.clips.size());
    ASSERT_EQ(slots, lists.clips);
    lists.names = Rows("List1");
    lists.pads = Slots("PadEntries");
    ASSERT_LE(lists.names.size(), 100u);
    ASSERT_LE(lists.pads.size(), lists.names.size());
    lists.pads.resize(lists.names.size());
  }

  static std::string Bytes(const std::string& text) { return ToBytes(FromUtf8(text)); }
  static std::string ClipFile(const Lists& lists) {
    std::vector<Values> entries;
    for (const std::string& text : lists.clips) entries.push_back({Bytes(text)});
    return File("CLIP", entries);
  }
  static std::string PadFile(const Lists& lists) {
    std::vector<Values> entries;
    for (std::size_t i = 0; i < lists.pads.size(); ++i) {
      entries.push_back({Bytes(lists.names[i]), Bytes(lists.pads[i])});
    }
    return File("PAD", entries);
  }

  static std::size_t Lost(const Values& before, const Values& after) {
    std::set<std::string> were(before.begin(), before.end());
    were.erase("");
    for (const std::string& text : after) were.erase(text);
    return were.size();
  }

  void Check(const MayLose& may) {
    ASSERT_EQ(Get("frmTray.Timer1", "Enabled"), "1");
    Lists now;
    ASSERT_NO_FATAL_FAILURE(Look(now));
    EXPECT_LE(Lost(before_.clips, now.clips), may.clips);
    EXPECT_LE(Lost(before_.pads, now.pads), may.pads);
    if (may.pads == 0) {
      Values were = before_.pads;
      Values are = now.pads;
      std::sort(were.begin(), were.end());
      std::sort(are.begin(), are.end());
      EXPECT_EQ(are, were) << "a repeat has come or gone";
    }
    EXPECT_EQ(DataFile("PadData.qbx"), PadFile(now));
    if (DataFile("ClipData.qbx") != ClipFile(now)) {
      // What is edited is saved when the field is left.
      Show();
      Do("tab", "frmTray.SSTab1", "0");
      Do("focus", "frmTray.Command6");
      ASSERT_NO_FATAL_FAILURE(Look(now));
      EXPECT_EQ(DataFile("ClipData.qbx"), ClipFile(now));
      ++lagging_;
    }
    before_ = now;
  }

  // With the clipboard free and a tick gone, the top row is what stands on it.
  void CheckTop() {
    Do("clip.lock", "0");
    Tick();
    ASSERT_NO_FATAL_FAILURE(Check({1, 0}));
    const std::string text = Clipboard();
    EXPECT_EQ(before_.clips.empty() ? "" : before_.clips[0], text.substr(0, 32000));
    EXPECT_EQ(Get("frmTray.Text0", "Text"), text.substr(0, 32000));
  }

  void Walk(int steps, int maximum) {
    largest_ = maximum == 99;
    clipMaximum_ = maximum;
    Set("ClipEntriesMax", std::to_string(maximum));
    Set("PermEntriesMax", std::to_string(maximum));
    Set("ROT47", "1");
    const int seed =
        FromEnvironment("QUILLBOX_WALK_SEED", static_cast<int>(std::random_device()() & 0x7FFFFFFF));
    std::cout << "seed " << seed << ", " << steps << " steps" << std::endl;
    random_.seed(static_cast<unsigned>(seed));
    Do("start");
    Show();
    Do("pick", "mnuClear");
    Do("click", "frmTray.Command6");
    ASSERT_NO_FATAL_FAILURE(Look(before_));
    for (int i = 0; i < steps; ++i) {
      const MayLose may = Step();
      ASSERT_NO_FATAL_FAILURE(Check(may)) << "step " << i;
      if (i % 20 == 19) {
        ASSERT_NO_FATAL_FAILURE(CheckTop()) << "step " << i;
      }
      if (i % 50 == 49) {
        Do("boxes");
        Do("keys");
      }
      ASSERT_FALSE(HasFailure()) << "step " << i;
    }
    EXPECT_LT(lagging_, steps / 4) << "the file is hardly ever looked at";
  }

  std::mt19937 random_;
  bool largest_ = false;
  int clipMaximum_ = 0;
  int lagging_ = 0;
  Lists before_;
};

TEST_F(ListsWalkTest, RowsSlotsAndFilesStayOne) {
  Walk(FromEnvironment("QUILLBOX_WALK_STEPS", kDefaultSteps), 7);
}

TEST_F(ListsWalkTest, TheLargestListsStayOne) {
  std::vector<Values> clips;
  std::vector<Values> pads;
  for (int i = 0; i < 100; ++i) {
    const std::string number = std::to_string(i);
    clips.push_back({"clip " + number});
    pads.push_back({"name " + number, "pad " + number});
  }
  WriteData("ClipData.qbx", File("CLIP", clips));
  WriteData("PadData.qbx", File("PAD", pads));
  Do("clip.set", "clip 0");
  Walk(FromEnvironment("QUILLBOX_WALK_STEPS", kDefaultSteps) / 10, 99);
}

}  // namespace
}  // namespace quillbox

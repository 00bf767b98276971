#include <random>

#include "scenarios/Scenario.h"

namespace quillbox {
namespace {

// A person, other programs and the time do whatever comes to mind. What must hold, holds after every step.
class RandomWalk : public Scenario {
 protected:
  std::size_t Below(std::size_t limit) { return random_() % limit; }
  const std::string& OneOf(const Values& values) { return values[Below(values.size())]; }
  std::string Number(std::size_t limit) { return std::to_string(Below(limit)); }

  // Texts that repeat often, and some that are long, empty, of several lines or of special characters.
  std::string AnyText() {
    static const Values texts{
        "",      "one",         "two",       "three",           "four",     "a=b&c", "<r>tip", "line\r\nline",
        "½½½½½", "{SCRIPT}abc", "{SCRIPT}{", "日本 \U0001F600", "tab\tand", "12,5",  "-3e5",   "FF"};
    if (Below(8) == 0) return std::string(Below(2) == 0 ? 32001 : 300, 'x');
    return Below(4) == 0 ? "text " + Number(200) : OneOf(texts);
  }

  void OtherPrograms() {
    switch (Below(5)) {
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
  }
  // What can't be reached now answers with an error, which is as good as anything here.
  void Try(const Values& parts) {
    std::string line;
    for (const std::string& part : parts) line += (line.empty() ? "" : "\t") + part;
    console.Answer(line);
  }
  void Person() {
    static const Values buttons{
        "Command000", "Command001", "Command003", "Command101", "Command102", "Command103", "Command104",
        "Command105", "Command2",   "Command3",   "Command4",   "Command5",   "Command6",   "Text0",
        "Text1",      "Text3",      "Text101",    "Label7",     "List1",      "List2",      "List3"};
    static const Values lists{"List1", "List2", "List3"};
    static const Values fields{"Text0", "Text1", "Text3", "Text101"};
    static const Values keyNames{"Delete", "Enter",  "Home",     "End",  "Up",
                                 "Down",   "PageUp", "PageDown", "Space"};
    const std::string list = "frmTray." + OneOf(lists);
    switch (Below(10)) {
      case 0:
        return Try({"tab", "frmTray.SSTab1", Number(5)});
      case 1:
        return Try({"settext", "frmTray." + OneOf(fields), OneOf({"", "one", "two", "text\\r\\nmore", "x"})});
      case 2:
        return Try({"type", "frmTray." + OneOf(fields), OneOf({"a", "\\r", "bc", "\\u0008"})});
      case 3:
        return Try({"select", list, Number(8), Number(8)});
      case 4:
        return Try({"dblrow", list, Number(8)});
      case 5:
        return Try({"key", list, OneOf(keyNames), OneOf({"ctrl", "shift", "ctrl"})});
      case 6:
        return Try({"key", list, OneOf(keyNames)});
      case 7:
        return Try({"spin", OneOf({"frmTray.UpDown1", "frmTray.UpDown2"}), OneOf({"up", "down"})});
      case 8:
        return Try({"drop", list, OneOf({"dropped", "one", ""})});
      default:
        return Try({"click", "frmTray." + OneOf(buttons)});
    }
  }
  void Tray() {
    switch (Below(5)) {
      case 0:
        return Try({"pick", "mnuClip" + Number(11)});
      case 1:
        return Try({"pick", "mnuPadSub" + Number(26)});
      case 2:
        return Try({"pick", OneOf({"mnuClear", "mnuOnTop", "mnuShow"})});
      case 3:
        return Try({"tray.mouse", "516"});
      default:
        return Show();
    }
  }
  void Step() {
    if (Below(6) == 0) Try({"answer", OneOf({"6", "7"})});
    switch (Below(8)) {
      case 0:
      case 1:
        OtherPrograms();
        return Advance(static_cast<int>(Below(600)));
      case 2:
        return Tray();
      case 3:
        return Show();
      default:
        return Person();
    }
  }

  // One list: as many slots as rows, the same texts where a row shows the text.
  void Check() {
    ASSERT_EQ(Get("frmTray.Timer1", "Enabled"), "1");
    const Values clips = Rows("List2");
    Values slots = Do("slots", "ClipEntries");
    ASSERT_LE(clips.size(), 101u);
    for (std::size_t i = clips.size(); i < slots.size(); ++i) ASSERT_EQ(slots[i], "") << "Clip slot " << i;
    slots.resize(clips.size());
    ASSERT_EQ(slots, clips);
    const std::size_t pads = Rows("List1").size();
    ASSERT_LE(pads, 100u);
    slots = Do("slots", "PadEntries");
    for (std::size_t i = pads; i < slots.size(); ++i) ASSERT_EQ(slots[i], "") << "Pad slot " << i;
    for (const std::string& name : Rows("List1")) ASSERT_NE(name, "");
    for (const char* list : {"List1", "List2", "List3"}) {
      const int current = std::stoi(Get(std::string("frmTray.") + list, "ListIndex"));
      ASSERT_LT(current, std::stoi(Get(std::string("frmTray.") + list, "ListCount"))) << list;
      ASSERT_GE(current, -1) << list;
    }
  }

  // The lists that the user sees are those that come back.
  void RestartAndCompare() {
    Do("clip.lock", "0");
    Do("clip.clear");
    Do("end");
    const Values clips = Rows("List2");
    const Values names = Rows("List1");
    const Values pads = Slots("PadEntries");
    Do("start");
    Do("boxes");
    ASSERT_EQ(Rows("List2"), clips);
    ASSERT_EQ(Rows("List1"), names);
    ASSERT_EQ(Slots("PadEntries"), pads);
  }

  std::mt19937 random_;
};

TEST_F(RandomWalk, TheListsStayWhole) {
  const unsigned seed = std::random_device()();
  random_.seed(seed);
  SCOPED_TRACE("seed " + std::to_string(seed));
  for (const char* key : {"PermEntriesMax", "ClipEntriesMax", "ToDoEntriesMax"}) Set(key, "5");
  for (const char* key : {"Insert", "LastSort", "Minimize", "AutoRefresh", "Warning"}) {
    Set(key, std::to_string(1 + Below(2)));
  }
  Set("AlwaysOnTop", std::to_string(1 + Below(2)));
  Do("start");
  for (int i = 0; i < 3000; ++i) {
    Step();
    Check();
    if (HasFatalFailure()) return;
    if (i % 500 == 499) {
      RestartAndCompare();
      if (HasFatalFailure()) return;
    }
  }
}

}  // namespace
}  // namespace quillbox

// A random walk over the whole program: all pages, dialogs and the tray menu, other programs' copies,
// restarts, data files and a registry that can't be written. After each step rows, slots, files and menu hold
// the same entries, and no step has lost an entry that it had no right to.
#include <algorithm>
#include <set>

#include "scenarios/ProgramWalk.h"

namespace quillbox {
namespace {

class ProgramWalkTest : public ProgramWalk {
 protected:
  void Begin() override {
    Do("start");
    Do("boxes");
    Do("keys");
    Do("sounds");
  }

  void Look(Lists& lists) {
    lists.clips = Rows("List2");
    Values slots = Slots("ClipEntries");
    ASSERT_LE(lists.clips.size(), 101u);
    ASSERT_TRUE(leftovers_ || slots.size() <= lists.clips.size()) << "a slot without a row";
    slots.resize(lists.clips.size());
    ASSERT_EQ(slots, lists.clips);
    lists.names = Rows("List1");
    lists.pads = Slots("PadEntries");
    ASSERT_LE(lists.names.size(), 100u);
    ASSERT_TRUE(leftovers_ || lists.pads.size() <= lists.names.size()) << "a slot without a row";
    lists.pads.resize(lists.names.size());
    lists.tasks = Rows("List3");
    lists.marks = lists.tasks.empty() ? Values() : Do("get", "frmTray.List3", "Selected");
    ASSERT_LE(lists.tasks.size(), 100u);
  }

  static std::string Stored(const std::string& list, const std::vector<const Values*>& columns) {
    std::vector<Values> entries(columns[0]->size());
    for (const Values* column : columns) {
      for (std::size_t i = 0; i < entries.size(); ++i) entries[i].push_back((*column)[i]);
    }
    return WalkScenario::Stored(list, entries);
  }
  static std::string Stored(const std::string& file, const Lists& lists) {
    if (file == "ClipData.qbx") return Stored("CLIP", {&lists.clips});
    if (file == "PadData.qbx") return Stored("PAD", {&lists.names, &lists.pads});
    Values marks;
    for (const std::string& mark : lists.marks) marks.push_back(mark == "1" ? "True" : "False");
    return Stored("TODO", {&marks, &lists.tasks});
  }

  // Whether the file must hold what the list holds: it has been written since it fell behind.
  bool IsUpToDate(const std::string& file) {
    if (IsObstructed(file)) {
      behind_[file] = Writes(file);
      return false;
    }
    const auto since = behind_.find(file);
    if (since == behind_.end()) return true;
    if (Writes(file) == since->second) return false;
    behind_.erase(since);
    return true;
  }

  static std::size_t Lost(const Values& before, const Values& after) {
    std::set<std::string> were(before.begin(), before.end());
    were.erase("");
    for (const std::string& text : after) were.erase(text);
    return were.size();
  }

  void CheckLosses(const MayLose& may, const Lists& now) {
    EXPECT_LE(Lost(before_.clips, now.clips), may.clips);
    EXPECT_LE(Lost(before_.pads, now.pads), may.pads);
    EXPECT_LE(Lost(before_.tasks, now.tasks), may.tasks);
    if (may.pads > 0) return;
    Values were = before_.pads;
    Values are = now.pads;
    std::sort(were.begin(), were.end());
    std::sort(are.begin(), are.end());
    EXPECT_EQ(are, were) << "a repeat has come or gone";
  }

  // What is edited, cut or marked is saved when the field or the list is left.
  void LeaveAll() {
    ShowWindow();
    Do("tab", "frmTray.SSTab1", "4");
    Do("focus", "frmTray.List3");
    Do("tab", "frmTray.SSTab1", "0");
    Do("focus", "frmTray.Text0");
    Do("focus", "frmTray.Command6");
    ++left_;
  }

  void CheckFiles(Lists& now) {
    bool left = false;
    for (const std::string file : {"PadData.qbx", "ClipData.qbx", "ToDoData.qbx"}) {
      if (!IsUpToDate(file)) continue;
      if (!left && file != "PadData.qbx" && DataFile(file) != Stored(file, now)) {
        LeaveAll();
        left = true;
        ASSERT_NO_FATAL_FAILURE(Look(now));
      }
      EXPECT_EQ(DataFile(file), Stored(file, now)) << file;
      ++filesCompared_;
    }
  }

  void Check(const MayLose& may) {
    ASSERT_EQ(Get("frmTray.Timer1", "Enabled"), "1");
    Lists now;
    ASSERT_NO_FATAL_FAILURE(Look(now));
    CheckLosses(may, now);
    ASSERT_NO_FATAL_FAILURE(CheckFiles(now));
    before_ = now;
  }

  // With the clipboard free and a tick gone, the top row is what stands on it.
  void CheckTop() {
    Do("clip.lock", "0");
    Tick();
    ASSERT_NO_FATAL_FAILURE(Check({1, 0, 0}));
    const std::string text = Clipboard();
    EXPECT_EQ(before_.clips.empty() ? "" : before_.clips[0], text.substr(0, 32000));
    EXPECT_EQ(Get("frmTray.Text0", "Text"), text.substr(0, 32000));
    EXPECT_NE(Get("frmTray.Text7", "Text") + Get("frmTray.Text23", "Text"), "") << "an empty display";
  }

  // Plain texts stand in the menu as they are, one item each.
  void CheckMenu() {
    Do("tray.mouse", "516");
    const Values menu = Do("menu");
    int clips = 0;
    int pads = 0;
    for (std::size_t i = 0; i + 2 < menu.size(); i += 3) {
      const std::string& name = menu[i];
      if (name.rfind("mnuClip", 0) == 0 && name != "mnuClips") {
        CheckItem(name, menu[i + 1], before_.clips);
        ++clips;
      } else if (name.rfind("mnuPad", 0) == 0 && name != "mnuPads") {
        CheckItem(name, menu[i + 1], before_.names);
        ++pads;
      }
    }
    EXPECT_LE(clips, 35);
    EXPECT_LE(pads, 35);
    itemsCompared_ += clips + pads;
  }
  void CheckItem(const std::string& item, const std::string& caption, const Values& rows) {
    const auto number = static_cast<std::size_t>(std::stoi(item.substr(item.find_first_of("0123456789"))));
    const std::size_t colon = caption.find(":  ");
    ASSERT_NE(colon, std::string::npos) << item << " " << caption;
    const std::string shown = caption.substr(colon + 3);
    const std::string whole = number > rows.size() ? "" : rows[number - 1];
    if (number > rows.size() && leftovers_) return;
    EXPECT_TRUE(number <= rows.size() || number == 1) << item << " stands for no row";
    if (whole.find_first_of("\r\n\t&") != std::string::npos) return;
    const bool isCut = shown.size() >= 3 && shown.compare(shown.size() - 3, 3, "...") == 0;
    EXPECT_EQ(shown.substr(0, isCut ? shown.size() - 3 : shown.npos),
              isCut ? whole.substr(0, shown.size() - 3) : whole)
        << item;
  }

  // What a start doesn't read, the limit having been lowered, stands in the file until the next save.
  void CutToLimit(const std::string& file, const std::string& key, const std::vector<Values*>& columns) {
    const std::size_t limit = Limit(key);
    if (columns[0]->size() <= limit) return;
    for (Values* column : columns) column->resize(limit);
    behind_[file] = Writes(file);
  }
  void Restarted(bool droppedMarked) override {
    Lists expected = before_;
    const auto behind = behind_;
    CutToLimit("PadData.qbx", "PermEntriesMax", {&expected.names, &expected.pads});
    CutToLimit("ClipData.qbx", "ClipEntriesMax", {&expected.clips});
    CutToLimit("ToDoData.qbx", "ToDoEntriesMax", {&expected.tasks, &expected.marks});
    Lists now;
    ASSERT_NO_FATAL_FAILURE(Look(now));
    if (behind.count("PadData.qbx") == 0) {
      EXPECT_EQ(now.names, expected.names);
      EXPECT_EQ(now.pads, expected.pads);
    }
    if (behind.count("ClipData.qbx") == 0) {
      EXPECT_LE(Lost(expected.clips, now.clips), 1u);
    }
    if (behind.count("ToDoData.qbx") == 0 && !droppedMarked) {
      EXPECT_EQ(now.tasks, expected.tasks);
      EXPECT_EQ(now.marks, expected.marks);
    }
    ++restarts_;
  }

  void Walk(int steps) {
    Set("ROT47", "1");
    Begin();
    ShowWindow();
    Do("pick", "mnuClear");
    Do("click", "frmTray.Command6");
    ASSERT_NO_FATAL_FAILURE(Look(before_));
    for (int i = 0; i < steps; ++i) {
      const MayLose may = Step();
      ASSERT_NO_FATAL_FAILURE(Check(may)) << "step " << i;
      if (i % 20 == 19) {
        ASSERT_NO_FATAL_FAILURE(CheckTop()) << "step " << i;
      }
      if (i % 20 == 9) {
        ASSERT_NO_FATAL_FAILURE(CheckMenu()) << "step " << i;
      }
      if (i % 50 == 49) {
        Do("boxes");
        Do("keys");
      }
      ASSERT_FALSE(HasFailure()) << "step " << i;
    }
    EXPECT_LT(left_, steps / 3) << "the files are hardly ever looked at";
    EXPECT_GT(filesCompared_, steps / 2) << "the files are hardly ever looked at";
    EXPECT_GT(itemsCompared_, steps / 20);
    EXPECT_GE(restarts_, steps / 1000);
  }

  int left_ = 0;
  int filesCompared_ = 0;
  int itemsCompared_ = 0;
  int restarts_ = 0;
};

TEST_F(ProgramWalkTest, RowsSlotsFilesAndMenuStayOne) {
  for (const char* key : {"ClipEntriesMax", "PermEntriesMax", "ToDoEntriesMax"}) Set(key, "7");
  Walk(StepsOr(3000));
}

TEST_F(ProgramWalkTest, TheLargestListsStayOne) {
  std::vector<Values> clips;
  std::vector<Values> pads;
  std::vector<Values> tasks;
  for (int i = 0; i < 100; ++i) {
    const std::string number = std::to_string(i);
    clips.push_back({"clip " + number});
    pads.push_back({"name " + number, "pad " + number});
    tasks.push_back({"False", "task " + number});
  }
  WriteData("ClipData.qbx", File("CLIP", clips));
  WriteData("PadData.qbx", File("PAD", pads));
  WriteData("ToDoData.qbx", File("TODO", tasks));
  for (const char* key : {"ClipEntriesMax", "PermEntriesMax", "ToDoEntriesMax"}) Set(key, "99");
  Do("clip.set", "clip 0");
  Walk(StepsOr(3000) / 10);
}

}  // namespace
}  // namespace quillbox

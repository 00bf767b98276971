// A long random walk over the ToDo page, beside a plain model of the list: after each step the rows, the
// marks, the current row and the data file are what the model says.
#include <algorithm>

#include "scenarios/WalkScenario.h"

namespace quillbox {
namespace {

const std::string kList = "frmTray.List3";

class ToDoWalkTest : public WalkScenario {
 protected:
  struct Task {
    std::string text;
    bool marked = false;
  };

  int Count() const { return static_cast<int>(tasks_.size()); }
  // Few texts, so that they meet again; some that a file could be confused by.
  std::string AnyText() {
    static const std::string kEndLine = "½½½½½ [TODO ENTRY FILE END] ½½½½½";
    static const Values kTexts{"True", "False", " ", kEndLine, "½½½½½ [TODO ENTRY 0] ½½½½½", "größer"};
    const int choice = Random(20);
    return choice < static_cast<int>(kTexts.size()) ? kTexts[choice] : "task " + std::to_string(choice);
  }

  void Begin() {
    Do("start");
    Show();
    OpenPage(4);
    index_ = -1;
    pending_ = false;
  }

  // The model's way of putting a text in; `old`: the row that it replaces, -1 for none.
  void Put(const std::string& text, int old, bool yes) {
    std::vector<Task> after = tasks_;
    if (old >= 0) after.erase(after.begin() + old);
    const auto same =
        std::find_if(after.rbegin(), after.rend(), [&](const Task& t) { return t.text == text; });
    if (same != after.rend()) {
      after.erase(std::next(same).base());
      after.push_back({text});
    } else if (static_cast<int>(after.size()) > maximum_) {
      ++questions_;
      if (!yes) return;
      after.erase(after.begin());
      after.push_back({text});
    } else {
      after.insert(old >= 0 ? after.begin() + old : after.end(), {text});
    }
    tasks_ = after;
    index_ = -1;
  }

  void Enter(const std::string& text) {
    const bool yes = Chance(50);
    const bool drop = Chance(20);
    const int old = drop ? -1 : index_;
    const bool full = Count() - (old >= 0 ? 1 : 0) > maximum_;
    const bool known = std::any_of(tasks_.begin(), tasks_.end(), [&](const Task& task) {
      return task.text == text && (old < 0 || &task != &tasks_[static_cast<std::size_t>(old)]);
    });
    if (full && !known) Do("answer", yes ? "6" : "7");
    if (drop) index_ = -1;
    Put(text, old, yes);
    if (drop) {
      Do("drop", kList, text);
    } else {
      Do("settext", "frmTray.Text1", text);
      Chance(50) ? Do("click", "frmTray.Command2") : Do("key", "frmTray.Text1", "Enter");
    }
    pending_ = false;
  }

  void Select(int row) {
    Do("select", kList, std::to_string(row));
    index_ = row;
  }
  void Toggle() {
    const int row = Random(Count());
    Task& task = tasks_[static_cast<std::size_t>(row)];
    task.marked = !task.marked;
    if (Chance(50)) {
      Do("check", kList, std::to_string(row), task.marked ? "1" : "0");
    } else {
      Do("select", kList, std::to_string(row));
      Do("key", kList, Chance(50) ? "Enter" : "Space");
    }
    index_ = row;
    pending_ = true;
  }

  void MoveOne() {
    Select(Random(Count()));
    static const Values kWays{"Up", "Left", "Down", "Right", "Home", "End", "up", "down"};
    const int choice = Random(8);
    const std::string& way = kWays[static_cast<std::size_t>(choice)];
    const int to =
        way == "Home" ? 0
        : way == "End"
            ? Count() - 1
            : std::clamp(index_ + (way == "Up" || way == "Left" || way == "up" ? -1 : 1), 0, Count() - 1);
    choice < 6 ? Do("key", kList, way, "ctrl") : Do("spin", "frmTray.UpDown1", way);
    if (to == index_) return;
    const Task task = tasks_[static_cast<std::size_t>(index_)];
    tasks_.erase(tasks_.begin() + index_);
    tasks_.insert(tasks_.begin() + to, task);
    index_ = to;
    pending_ = false;
  }

  void Delete() {
    const bool key = Chance(50);
    const bool all = index_ < 0;
    if (key) ++questions_;
    if (all) {
      const bool yes = Chance(10);
      if (key) Do("answer", "6");
      Do("answer", yes ? "6" : "7");
      ++questions_;
      if (yes) tasks_.clear();
    } else {
      tasks_.erase(tasks_.begin() + index_);
      index_ = -1;
    }
    if (key) {
      Do("key", kList, "Delete");
      pending_ = pending_ && all && Count() > 0;
    } else {
      Do("click", "frmTray.Command3");
      pending_ = false;
    }
  }

  void DropMarked() {
    tasks_.erase(std::remove_if(tasks_.begin(), tasks_.end(), [](const Task& task) { return task.marked; }),
                 tasks_.end());
    index_ = -1;
  }
  void Minimize() {
    const bool refresh = Chance(50);
    Set("AutoRefresh2", refresh ? "1" : "2");
    Do("click", "frmTray.Command6");
    EXPECT_EQ(Of("Text4", "Text"), "");
    if (refresh) DropMarked();
    Show();
    pending_ = false;
  }
  void EndAndStart() {
    const bool refresh = Chance(50);
    Set("AutoRefresh", refresh ? "1" : "2");
    EXPECT_EQ(Chance(50) ? Do("end") : Do("shutdown"), Values{"0"});
    if (refresh) DropMarked();
    Begin();
  }
  void LowerOrRaiseTheMaximum() {
    maximum_ = 2 + Random(7);
    Do("click", "frmTray.Command47");
    Do("tab", "frmSettings.SSTab1", "1");
    Do("settext", "frmSettings.Text3", std::to_string(maximum_ + 1));
    Do("click", "frmSettings.Command1");
    if (Count() > maximum_ + 1) tasks_.resize(static_cast<std::size_t>(maximum_) + 1);
    index_ = -1;
    // The file keeps what the lower maximum has cut until the next save.
    Do("focus", kList);
    Do("focus", "frmTray.Text1");
    pending_ = false;
  }

  void Step() {
    const int choice = Random(100);
    if (choice < 30) {
      Enter(AnyText());
    } else if (choice < 55 && Count() > 0) {
      Toggle();
    } else if (choice < 65 && Count() > 0) {
      Select(Random(Count()));
    } else if (choice < 80 && Count() > 0) {
      MoveOne();
    } else if (choice < 87) {
      Delete();
    } else if (choice < 90) {
      Do("click", "frmTray.Command5");
      DropMarked();
      pending_ = false;
    } else if (choice < 93) {
      Do("click", "frmTray.Command4");
      index_ = -1;
      pending_ = false;
    } else if (choice < 96) {
      Minimize();
    } else if (choice < 98) {
      EndAndStart();
    } else {
      LowerOrRaiseTheMaximum();
    }
  }

  void Compare() {
    Values rows;
    Values marks;
    std::vector<Values> entries;
    for (const Task& task : tasks_) {
      rows.push_back(task.text);
      marks.push_back(task.marked ? "1" : "0");
      entries.push_back({task.marked ? "True" : "False", task.text});
    }
    ASSERT_EQ(Rows("List3"), rows);
    ASSERT_EQ(Do("get", kList, "Selected"), marks);
    ASSERT_EQ(Of("List3", "ListIndex"), std::to_string(index_));
    ASSERT_EQ(static_cast<int>(Boxes().size()), questions_);
    questions_ = 0;
    if (!pending_ && Writes("ToDoData.qbx") > 0) {
      ASSERT_EQ(DataFile("ToDoData.qbx"), Stored("TODO", entries));
    }
  }

  std::vector<Task> tasks_;
  int index_ = -1;
  int maximum_ = 49;
  int questions_ = 0;
  // A mark waits for the list to lose the focus.
  bool pending_ = false;
};

TEST_F(ToDoWalkTest, RowsMarksAndFileAgree) {
  const int steps = StepsOr(6000);
  Begin();
  for (int i = 0; i < steps; ++i) {
    Step();
    Compare();
    ASSERT_FALSE(HasFailure()) << "step " << i;
  }
}

}  // namespace
}  // namespace quillbox

#pragma once

#include <string>

#include "scenarios/RecordScenario.h"

namespace quillbox {

inline const std::string kToDoList = "frmTray.List3";
inline const Box kDeleteAll{"68", "No entries selected",
                            "You haven't selected any entries to delete. Do you want to delete ALL entries?"};

// The ToDo page in a person's hands.
class ToDoScenario : public RecordScenario {
 protected:
  ToDoScenario() { StartOnPage(); }

  void StartOnPage() {
    Do("start");
    Show();
    OpenPage(4);
  }
  void Add(const std::string& text) {
    Do("settext", "frmTray.Text1", text);
    Do("click", "frmTray.Command2");
  }
  void Fill(const Values& rows) {
    for (const std::string& row : rows) Add(row);
  }
  void FillUpTo(int count) {
    for (int i = 0; i < count; ++i) Add("task " + std::to_string(i));
  }
  template <class... Modifiers>
  void Key(const std::string& name, const Modifiers&... modifiers) {
    Do("key", kToDoList, name, modifiers...);
  }
  void Select(int row) { Do("select", kToDoList, std::to_string(row)); }
  void Mark(int row) { Do("check", kToDoList, std::to_string(row), "1"); }

  Values List() { return Rows("List3"); }
  // A digit for each row: 1 is marked.
  std::string Marks() {
    std::string marks;
    for (const std::string& mark : Do("get", kToDoList, "Selected")) marks += mark;
    return marks;
  }
  std::string Index() { return Of("List3", "ListIndex"); }
  std::string Button() { return Of("Command2", "Caption"); }
  std::string Field() { return Of("Text1", "Text"); }
  // What the status shows; "hidden" while it doesn't.
  std::string Status() {
    const bool shown = Is("frmTray.Label12", "Visible");
    EXPECT_EQ(Is("frmTray.Line11", "Visible"), shown);
    EXPECT_EQ(Is("frmTray.Line12", "Visible"), shown);
    return shown ? Of("Label12", "Caption") : "hidden";
  }
  int ToDoWrites() { return Writes("ToDoData.qbx"); }
};

}  // namespace quillbox

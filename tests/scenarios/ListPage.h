#pragma once

#include <algorithm>
#include <cctype>
#include <ostream>
#include <string>
#include <vector>

#include "scenarios/RecordScenario.h"

namespace quillbox {

// A page with a list, and the names of its parts.
struct ListPage {
  std::string name;  // in the files, too
  int number;
  std::string list;
  std::string label, upperLine, lowerLine;  // the status
  std::string field;
  std::string deleteButton;
  std::string arrows;
  std::string file;
};

inline void PrintTo(const ListPage& page, std::ostream* to) { *to << page.name; }

inline const ListPage kClipPage{"CLIP",  0,       "List2",      "Label7", "Line4",
                                "Line5", "Text0", "Command003", "",       "ClipData.qbx"};
inline const ListPage kPadPage{"PAD",   1,         "List1",      "Label13", "Line6",
                               "Line7", "Text101", "Command105", "UpDown2", "PadData.qbx"};
inline const ListPage kToDoPage{"TODO",   4,       "List3",    "Label12", "Line11",
                                "Line12", "Text1", "Command3", "UpDown1", "ToDoData.qbx"};

inline const Box kPadIsFull{
    "68", "Too many Pad-List entries",
    "Sorry, but you have reached the maximum number of Pad-List entries. You have to delete some entries or "
    "increase the maximum number of entries in the \"Settings...\" menu before you proceed.\n\rWould you "
    "like "
    "to delete the oldest entry now?"};

// A list, what is done then, and what is seen of it: requests whose controls are the main window's.
struct Step {
  std::string rows;
  std::string requests;
  std::string page;
  std::string setting = {};  // a key and its value
};

// A page in a person's hands. Entries are mostly of one letter, so that a word is a whole list.
class ListPageScenario : public RecordScenario {
 protected:
  explicit ListPageScenario(const ListPage& page) : page_(page) { StartOnPage(); }

  void StartOnPage() {
    Do("start");
    Show();
    OpenPage(page_.number);
  }
  // An entry of each letter, from the top; on the Pad page of that name, with the capital as its text.
  void Fill(const std::string& letters) {
    std::string inOrder = letters;
    if (page_.name != "TODO") std::reverse(inOrder.begin(), inOrder.end());
    for (const char letter : inOrder) Add(std::string(1, letter));
  }
  void Add(const std::string& text);
  void Empty() {
    SelectNone();
    Do("answer", "6");
    Click(page_.deleteButton);
    Boxes();
  }
  template <class... Rows>
  void Select(Rows... rows) {
    Do("select", ListName(), std::to_string(rows)...);
  }
  void SelectNone() { Do("select", ListName(), ""); }
  void Mark(int row) { Do("check", ListName(), std::to_string(row), "1"); }
  template <class... Modifiers>
  void Key(const std::string& name, const Modifiers&... modifiers) {
    Do("key", ListName(), name, modifiers...);
  }
  void Spin(const std::string& way) { Do("spin", "frmTray." + page_.arrows, way); }

  std::string ListName() const { return "frmTray." + page_.list; }
  Values AllRows() { return Rows(page_.list); }
  // The rows as one word. Each has its slot, and no slot behind them is used.
  std::string List();
  // The page as it is seen. The list: [] around the current row, * behind each one that is selected or
  // marked, _ for a blank one. Then the status, the rest, and the titles of the boxes since.
  std::string Page();
  virtual std::string Rest() { return ""; }
  // Each step on a program that has just been started for the first time.
  void ExpectSteps(const std::vector<Step>& steps);
  std::string Index() { return Of(page_.list, "ListIndex"); }
  std::string Top() { return Of(page_.list, "TopIndex"); }
  std::string Marks() { return RecordScenario::Marks(page_.list); }
  std::string Field() { return Of(page_.field, "Text"); }
  std::string Status() { return RecordScenario::Status(page_.label, page_.upperLine, page_.lowerLine); }
  std::string Tip() { return Of(page_.label, "ToolTipText"); }
  std::string Stored() { return DataFile(page_.file); }
  int Saves() { return Writes(page_.file); }

  static std::string Capitals(std::string text) {
    for (char& letter : text) letter = static_cast<char>(std::toupper(letter));
    return text;
  }

  const ListPage page_;

 private:
  void Renew();
  static Values Padded(Values values) {
    values.resize(101);
    return values;
  }
};

}  // namespace quillbox

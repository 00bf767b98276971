#pragma once

#include "core/window/MainWindow.h"
#include "core/window/StatusArea.h"
#include "platform/forms/UpDown.h"
#include "storage/DataFiles.h"
#include "storage/ToDoList.h"
#include "todo/ToDoMoves.h"

namespace quillbox {

// The ToDo page: adds tasks, changes, moves and deletes them. A row under the selection bar is being updated,
// without one a new task is entered. A mark reaches the file when the list loses the focus, everything else
// at once.
class ToDoPage {
 public:
  ToDoPage(MainWindow& window, ToDoList& toDo, DataFiles& files, Norvane& settings);

  ListBox& List3;          // the tasks
  TextBox Text1;           // a task's text, one line: line breaks that are pasted or dropped become blanks
  CommandButton Command2;  // adds the field's text, or updates the selected row with it
  CommandButton Command3;  // deletes the selected row
  CommandButton Command4;  // a new task: empties the field
  CommandButton Command5;  // deletes the tasks that are done
  UpDown UpDown1;          // moves the selected row
  StatusArea status;       // Label12 with Line11 and Line12
  Label& Label12;          // length of a task, or what a button has done; a click opens the settings

  // Refresh: deletes the marked rows.
  void Command5_Click();
  // Opens the settings dialog.
  Event<> OpenSettings;

 private:
  // The buttons and the field.
  void Command2_Click();
  void Command3_Click();
  void Command4_Click();
  void Text1_Change();
  void Text1_GotFocus();
  void Text1_KeyPress(char16_t& character);
  // Puts the field's text into the list; `old`: the row that it replaces, -1 for none. False if the list is
  // full and stays as it is.
  bool PutIn(int old);
  bool MayDeleteOldest();
  void Deleted();
  void ShowMode();

  // The list.
  void List3_Click();
  void List3_GotFocus();
  void List3_LostFocus();
  void List3_KeyDown(KeyEvent& key);
  void List3_OLEDragDrop(const DragData& data);

  MainWindow& window_;
  DataFiles& files_;
  Norvane& settings_;
  ToDoMoves moves_;
};

}  // namespace quillbox

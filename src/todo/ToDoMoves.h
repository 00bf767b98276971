#pragma once

#include "storage/DataFiles.h"
#include "storage/ToDoList.h"

namespace quillbox {

// Moves the row of the selection bar by hand, with its text and its mark, and saves. Without such a row, or
// where it already stands at that end, nothing happens and nothing is saved.
class ToDoMoves {
 public:
  ToDoMoves(ListBox& list, DataFiles& files) : list_(list), files_(files) {}

  // The arrows: one step, the moved row stays selected.
  void OneUp();
  void OneDown();
  // A Ctrl key of the list; others do nothing. The list's own handling of the key, which moves the selection
  // bar on, follows.
  void Key(int code);

 private:
  void ToTop();
  void ToEnd();
  void MoveTo(int row, int top);

  ListBox& list_;
  DataFiles& files_;
};

}  // namespace quillbox

#pragma once

#include "platform/forms/ListBox.h"

namespace quillbox {

// The tasks. The rows of List3 are the store: text and "completed" mark of an entry stand nowhere else.
class ToDoList {
 public:
  explicit ToDoList(const Place& place) : List3(place, "List3", ListBox::Kind::CheckBoxes, 12) {}

  ListBox List3;
};

}  // namespace quillbox

#pragma once

#include <cassert>
#include <vector>

#include "platform/forms/ListBox.h"

namespace quillbox {

// What the three lists do with their rows alike.

// Deselects each row, from the first to the last, and then makes none current. An empty list stays as it is.
inline void ClearSelection(ListBox& list) {
  if (list.GetListCount() == 0) return;
  for (int i = 0; i < list.GetListCount(); ++i) list.SetSelected(i, false);
  list.SetListIndex(-1);
}

inline bool HasCurrentRow(const ListBox& list) { return list.GetListIndex() >= 0; }

// The selected rows, or the marked ones of a list with check boxes, from the top.
inline std::vector<int> SelectedRows(const ListBox& list) {
  std::vector<int> rows;
  for (int i = 0; i < list.GetListCount(); ++i) {
    if (list.GetSelected(i)) rows.push_back(i);
  }
  return rows;
}

// Calls `deleteRow` for each selected row in turn, from the top, with the index that it has by then; a row
// that it keeps is passed over. How many were selected.
template <class DeleteRow>
int DeleteSelected(ListBox& list, const DeleteRow& deleteRow) {
  int selected = 0;
  for (int row = 0; row < list.GetListCount();) {
    const int before = list.GetListCount();
    if (list.GetSelected(row)) {
      deleteRow(row);
      ++selected;
    }
    if (list.GetListCount() == before) ++row;
  }
  return selected;
}

// The row from `first` on (0 or more) of which `isIt` is true, the last of several; -1 if there is none.
template <class IsIt>
int LastRow(const ListBox& list, int first, const IsIt& isIt) {
  assert(first >= 0);
  for (int row = list.GetListCount() - 1; row >= first; --row) {
    if (isIt(row)) return row;
  }
  return -1;
}

}  // namespace quillbox

#include "todo/ToDoMoves.h"

#include <algorithm>

namespace quillbox {

namespace {

// Fit the height of the list: where the row stands when the list has to scroll along.
constexpr int kLowRow = 10;
constexpr int kHighRow = 1;

}  // namespace

void ToDoMoves::MoveTo(int row, int top) {
  const int from = list_.GetListIndex();
  const SharedText text = list_.GetList(from);
  const bool marked = list_.GetSelected(from);
  list_.RemoveItem(from);
  list_.AddItem(text, row);
  list_.SetListIndex(row);
  list_.SetSelected(row, marked);
  list_.SetTopIndex(top);
  files_.AktualisiereCle3();
}

void ToDoMoves::OneUp() {
  const int row = list_.GetListIndex();
  if (row <= 0) return;
  const int top = list_.GetTopIndex();
  MoveTo(row - 1, row - top <= kHighRow ? std::max(top - 1, 0) : top);
}

void ToDoMoves::OneDown() {
  const int row = list_.GetListIndex();
  const int last = list_.GetListCount() - 1;
  if (row < 0 || row == last) return;
  const int top = list_.GetTopIndex();
  MoveTo(row + 1, row - top >= kLowRow ? std::min(top + 1, last) : top);
}

void ToDoMoves::ToTop() {
  if (list_.GetListIndex() > 0) MoveTo(0, 0);
}

void ToDoMoves::ToEnd() {
  const int last = list_.GetListCount() - 1;
  const int row = list_.GetListIndex();
  if (row >= 0 && row < last) MoveTo(last, last);
}

void ToDoMoves::Key(int code) {
  const int row = list_.GetListIndex();
  switch (code) {
    // The list's own handling of the key then takes the selection bar along with the moved row.
    case keys::kUp:
    case keys::kLeft:
      OneUp();
      return list_.SetListIndex(row);
    case keys::kDown:
    case keys::kRight:
      OneDown();
      return list_.SetListIndex(row);
    case keys::kHome:
      return ToTop();
    case keys::kEnd:
      return ToEnd();
    default:
      return;
  }
}

}  // namespace quillbox

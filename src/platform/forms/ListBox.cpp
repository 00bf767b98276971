#include "platform/forms/ListBox.h"

#include <algorithm>

#include "base/RuntimeError.h"

namespace quillbox {

ListBox::ListBox(const Place& place, std::string_view name, Kind kind, int visibleRows)
    : Control(place, name), kind_(kind), visibleRows_(visibleRows) {}

void ListBox::Check(int row) const {
  if (row < 0 || row >= GetListCount()) throw RuntimeError(errors::kBadIndex, "Invalid property array index");
}

void ListBox::RowsChanged() {
  top_ = std::clamp(top_, 0, std::max(0, GetListCount() - 1));
  ++rowsRevision_;
  Touch();
}

const SharedText& ListBox::GetList(int row) const {
  Check(row);
  return rows_[row].text;
}

void ListBox::AddItem(const SharedText& text, int row) {
  if (row < 0 || row > GetListCount())
    throw RuntimeError(errors::kBadCall, "Invalid procedure call or argument");
  rows_.insert(rows_.begin() + row, Row{text, false});
  if (index_ >= row) ++index_;
  if (anchor_ >= row) ++anchor_;
  RowsChanged();
}

void ListBox::RemoveItem(int row) {
  Check(row);
  rows_.erase(rows_.begin() + row);
  const auto without = [row](int index) { return index == row ? -1 : index > row ? index - 1 : index; };
  index_ = without(index_);
  anchor_ = without(anchor_);
  RowsChanged();
}

void ListBox::Clear() {
  rows_.clear();
  index_ = -1;
  anchor_ = -1;
  RowsChanged();
}

void ListBox::SetListIndex(int row) {
  if (row != -1) Check(row);
  if (index_ == row) return;
  index_ = row;
  anchor_ = row;
  Touch();
  Raise(Click);
}

bool ListBox::GetSelected(int row) const {
  Check(row);
  return rows_[row].selected;
}

void ListBox::SetSelected(int row, bool selected) {
  Check(row);
  if (rows_[row].selected == selected) return;
  rows_[row].selected = selected;
  Touch();
  if (HasCheckBoxes()) {
    Raise(ItemCheck, row);
  } else {
    Raise(Click);
  }
}

void ListBox::SetTopIndex(int row) {
  top_ = std::clamp(row, 0, std::max(0, GetListCount() - 1));
  Touch();
}

}  // namespace quillbox

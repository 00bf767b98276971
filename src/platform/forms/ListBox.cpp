#include "platform/forms/ListBox.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "base/RuntimeError.h"
#include "platform/forms/Dispatcher.h"

namespace quillbox {

ListBox::ListBox(const Place& place, std::string_view name, Kind kind, int visibleRows)
    : Control(place, name), kind_(kind), visibleRows_(visibleRows) {
  assert(visibleRows > 0);
}

void ListBox::Check(int row) const {
  if (row < 0 || row >= GetListCount()) throw RuntimeError(errors::kBadIndex, "Invalid property array index");
}

void ListBox::RowsChanged() {
  top_ = std::clamp(top_, 0, std::max(0, GetListCount() - 1));
  ++rowsRevision_;
  Touch();
  Raise(RowsChange);
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
  if (row != -1 && !IsRowShown(row)) row = -1;
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
  if (rows_[row].selected == selected || (selected && !HasCheckBoxes() && !IsRowShown(row))) return;
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

// What is shown.

bool ListBox::IsRowShown(int row) const {
  Check(row);
  if (!filter_) return true;
  const Row& at = rows_[row];
  if (at.shown == Shown::Unknown) at.shown = filter_(row) ? Shown::Yes : Shown::No;
  return at.shown == Shown::Yes;
}

int ListBox::ShownCount() const { return PositionOf(GetListCount()); }

int ListBox::PositionOf(int row) const {
  if (!filter_) return row;
  int position = 0;
  for (int i = 0; i < row; ++i) position += IsRowShown(i);
  return position;
}

int ListBox::RowAt(int position) const {
  if (!filter_) return position;
  assert(position >= 0 && position < ShownCount());
  int row = 0;
  while (!IsRowShown(row) || position-- > 0) ++row;
  return row;
}

bool ListBox::LetGo(int row) {
  const bool current = index_ == row;
  if (current) index_ = -1;
  if (anchor_ == row) anchor_ = -1;
  return (!HasCheckBoxes() && std::exchange(rows_[row].selected, false)) || current;
}

void ListBox::ShowOnly(Filter filter, bool narrower) {
  filter_ = std::move(filter);
  bool changed = false;
  for (int row = 0; row < GetListCount(); ++row) {
    Shown& shown = rows_[row].shown;
    if (!narrower || shown != Shown::No) shown = Shown::Unknown;
    if (!IsRowShown(row)) changed |= LetGo(row);
  }
  top_ = 0;
  ++rowsRevision_;
  Touch();
  if (changed) Raise(Click);
}

void ListBox::ShowAll() {
  if (!filter_) return;
  filter_ = nullptr;
  for (Row& row : rows_) row.shown = Shown::Unknown;
  ++rowsRevision_;
  if (index_ >= 0) ScrollTo(index_);
  Touch();
}

void ListBox::TakeFirstShown() {
  if (ShownCount() > 0 && Take(RowAt(0), false, false)) Raise(Click);
}

// What a person does with a list: clicks, keys, drags.

void ListBox::ScrollTo(int row) {
  if (row < top_) SetTopIndex(row);
  const int shown = shownRows_ > 0 ? shownRows_ : visibleRows_;
  const int position = PositionOf(row);
  if (position >= PositionOf(top_) + shown) SetTopIndex(RowAt(position - shown + 1));
}

bool ListBox::SelectOnly(int first, int last) {
  bool changed = false;
  for (int i = 0; i < GetListCount(); ++i) {
    const bool selected = i >= first && i <= last && IsRowShown(i);
    changed |= rows_[i].selected != selected;
    rows_[i].selected = selected;
  }
  return changed;
}

bool ListBox::Take(int row, bool ctrl, bool shift) {
  bool changed = index_ != row;
  index_ = row;
  if (!HasCheckBoxes()) {
    if (shift) {
      if (anchor_ < 0) anchor_ = row;
      changed |= SelectOnly(std::min(anchor_, row), std::max(anchor_, row));
    } else if (ctrl) {
      rows_[row].selected = !rows_[row].selected;
      anchor_ = row;
      changed = true;
    } else {
      changed |= SelectOnly(row, row);
      anchor_ = row;
    }
  }
  ScrollTo(row);
  Touch();
  return changed;
}

void ListBox::PersonSelect(int row, bool ctrl, bool shift) {
  Check(row);
  Dispatch().Dispatch([&] {
    PersonFocus();
    // The focus handlers may have taken rows away.
    if (IsRowShown(row) && Take(row, ctrl, shift)) Raise(Click);
  });
}

void ListBox::PersonSelectNone() {
  Dispatch().Dispatch([&] {
    PersonFocus();
    bool changed = index_ != -1;
    index_ = -1;
    anchor_ = -1;
    if (!HasCheckBoxes()) changed |= SelectOnly(0, -1);
    Touch();
    if (changed) Raise(Click);
  });
}

void ListBox::PersonCheck(int row, bool checked) {
  Check(row);
  Dispatch().Dispatch([&] {
    PersonFocus();
    if (!IsRowShown(row)) return;
    if (Take(row, false, false)) Raise(Click);
    SetSelected(row, checked);
  });
}

void ListBox::PersonDoubleClick(int row) {
  Check(row);
  Dispatch().Dispatch([&] {
    PersonSelect(row);
    if (index_ == row || !filter_) Raise(DblClick);
  });
}

Text ListBox::PersonStartDrag() {
  Text data;
  Dispatch().Dispatch([&] {
    std::vector<int> dragged;
    for (int i = 0; i < GetListCount(); ++i) {
      if (HasCheckBoxes() ? i == index_ : rows_[i].selected) dragged.push_back(i);
    }
    data = Joined(dragged, [this](int row) { return rows_[row].text; });
    Raise(OLEStartDrag, data);
  });
  return data;
}

void ListBox::PersonType(TextView characters) {
  Dispatch().Dispatch([&] {
    PersonFocus();
    for (char16_t unit : characters) Raise(KeyPress, unit);
  });
}

void ListBox::OwnKey(const KeyEvent& key, char16_t) {
  const int last = ShownCount() - 1;
  if (last < 0 || key.alt) return;
  if (key.code == keys::kSpace) {
    if (index_ < 0) return;
    if (HasCheckBoxes()) {
      SetSelected(index_, !rows_[index_].selected);
    } else if (Take(index_, key.ctrl, key.shift)) {
      Raise(Click);
    }
    return;
  }
  if (key.code == keys::kA) {
    if (key.ctrl && !key.shift && !HasCheckBoxes() && SelectOnly(0, GetListCount() - 1)) {
      Touch();
      Raise(Click);
    }
    return;
  }
  const int page = PageRows();
  const int at = index_ < 0 ? -1 : PositionOf(index_);
  int to = 0;
  switch (key.code) {
    case keys::kUp:
    case keys::kLeft:
      to = at - 1;
      break;
    case keys::kDown:
    case keys::kRight:
      to = at + 1;
      break;
    case keys::kPageUp:
      to = at - page;
      break;
    case keys::kPageDown:
      to = at + page;
      break;
    case keys::kHome:
      to = 0;
      break;
    case keys::kEnd:
      to = last;
      break;
    default:
      return;
  }
  if (index_ < 0) {
    // With Ctrl a key moves the current row, and there is none; else it gets into the list.
    if (key.ctrl) return;
    to = key.code == keys::kEnd ? last : 0;
  }
  to = RowAt(std::clamp(to, 0, last));
  if (key.ctrl) {
    MoveCurrent(to);
  } else if (Take(to, false, key.shift)) {
    Raise(Click);
  }
}

void ListBox::MoveCurrent(int row) {
  if (!IsRowShown(row) || row == index_) return;
  index_ = row;
  ScrollTo(row);
  Touch();
  Raise(Click);
}

}  // namespace quillbox

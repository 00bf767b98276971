#include "platform/forms/ListBox.h"

#include <algorithm>
#include <cassert>

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

// What a person does with a list: clicks, keys, drags.

void ListBox::ScrollTo(int row) {
  if (row < top_) SetTopIndex(row);
  const int shown = shownRows_ > 0 ? shownRows_ : visibleRows_;
  if (row >= top_ + shown) SetTopIndex(row - shown + 1);
}

bool ListBox::SelectOnly(int first, int last) {
  bool changed = false;
  for (int i = 0; i < GetListCount(); ++i) {
    const bool selected = i >= first && i <= last;
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
    Check(row);
    if (Take(row, ctrl, shift)) Raise(Click);
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
    Check(row);
    if (Take(row, false, false)) Raise(Click);
    SetSelected(row, checked);
  });
}

void ListBox::PersonDoubleClick(int row) {
  Check(row);
  Dispatch().Dispatch([&] {
    PersonSelect(row);
    Raise(DblClick);
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

void ListBox::OwnKey(const KeyEvent& key, char16_t) {
  const int last = GetListCount() - 1;
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
    if (key.ctrl && !key.shift && !HasCheckBoxes() && SelectOnly(0, last)) {
      Touch();
      Raise(Click);
    }
    return;
  }
  const int page = PageRows();
  int to = 0;
  switch (key.code) {
    case keys::kUp:
    case keys::kLeft:
      to = index_ - 1;
      break;
    case keys::kDown:
    case keys::kRight:
      to = index_ + 1;
      break;
    case keys::kPageUp:
      to = index_ - page;
      break;
    case keys::kPageDown:
      to = index_ + page;
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
  to = std::clamp(to, 0, last);
  if (key.ctrl) {
    MoveCurrent(to);
  } else if (Take(to, false, key.shift)) {
    Raise(Click);
  }
}

void ListBox::MoveCurrent(int row) {
  Check(row);
  if (row == index_) return;
  index_ = row;
  ScrollTo(row);
  Touch();
  Raise(Click);
}

}  // namespace quillbox

#include "pad/PadMoves.h"

#include <algorithm>
#include <cassert>

namespace quillbox {

namespace {

// How far a page goes, and when an arrow's step scrolls the list.
constexpr int kPage = 7;
constexpr int kScrollDownFrom = 6;
constexpr int kScrollUpFrom = 1;

}  // namespace

PadMoves::Entry PadMoves::TakeCurrent() {
  assert(Current() >= 0);
  const int row = Current();
  Entry entry{pad_.List1.GetList(row), pad_.PadEntries(row), pad_.List1.GetSelected(row)};
  pad_.DeleteEntry1(row);
  return entry;
}

void PadMoves::MakeCurrent(int row, bool selected) {
  pad_.List1.SetListIndex(row);
  pad_.List1.SetSelected(row, selected);
}

void PadMoves::OneDown() {
  if (!CanMoveDown()) return;
  const int row = Current();
  const int top = pad_.List1.GetTopIndex();
  Entry entry = TakeCurrent();
  pad_.AddEntry1(entry.name, entry.text, row + 1);
  MakeCurrent(row + 1, entry.selected);
  const int scrolled = row - top >= kScrollDownFrom ? top + 1 : top;
  pad_.List1.SetTopIndex(std::min(scrolled, pad_.List1.GetListCount() - 1));
  files_.AktualisiereCle1();
}

void PadMoves::OneUp() {
  if (!CanMoveUp()) return;
  const int row = Current();
  const int top = pad_.List1.GetTopIndex();
  Entry entry = TakeCurrent();
  pad_.AddEntry1(entry.name, entry.text, row - 1);
  MakeCurrent(row - 1, entry.selected);
  const int scrolled = row - top <= kScrollUpFrom ? top - 1 : top;
  pad_.List1.SetTopIndex(std::max(scrolled, 0));
  files_.AktualisiereCle1();
}

void PadMoves::Key(KeyEvent& key) {
  const int row = Current();
  if (row < 0) return;
  switch (key.code) {
    case keys::kUp:
    case keys::kLeft:
      OneUp();
      return pad_.List1.SetListIndex(row);
    case keys::kDown:
    case keys::kRight:
      OneDown();
      return pad_.List1.SetListIndex(row);
    case keys::kHome:
      return ToTop();
    case keys::kEnd:
      return ToEnd();
    case keys::kPageUp:
      key.code = 0;
      return PageUp();
    case keys::kPageDown:
      key.code = 0;
      return PageDown();
    default:
      return;
  }
}

void PadMoves::ToTop() {
  if (!CanMoveUp()) return;
  Entry entry = TakeCurrent();
  pad_.AddEntry1(entry.name, entry.text, 0);
  MakeCurrent(0, entry.selected);
  pad_.List1.SetTopIndex(0);
  files_.AktualisiereCle1();
}

void PadMoves::ToEnd() {
  if (!CanMoveDown()) return;
  Entry entry = TakeCurrent();
  const int last = pad_.List1.GetListCount();
  pad_.AddEntry1(entry.name, entry.text, last);
  MakeCurrent(last, entry.selected);
  pad_.List1.SetTopIndex(last);
  files_.AktualisiereCle1();
}

void PadMoves::PageUp() {
  if (!CanMoveUp()) return;
  const int row = Current();
  Entry entry = TakeCurrent();
  const int to = std::max(row - kPage, 0);
  pad_.AddEntry1(entry.name, entry.text, to);
  FinishPage(row, entry.selected, to);
}

void PadMoves::PageDown() {
  if (!CanMoveDown()) return;
  const int row = Current();
  Entry entry = TakeCurrent();
  const int to = std::min(row + kPage, pad_.List1.GetListCount());
  pad_.AddEntry1(entry.name, entry.text, to);
  FinishPage(row, entry.selected, to);
}

void PadMoves::FinishPage(int row, bool selected, int moved) {
  pad_.List1.SetTopIndex(row);
  MakeCurrent(row, selected);
  files_.AktualisiereCle1();
  pad_.List1.MoveCurrent(moved);
}

}  // namespace quillbox

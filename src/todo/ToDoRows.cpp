// The list of the ToDo page: its selection, its keys, and the rows that move.
#include <algorithm>

#include "core/window/DeleteKey.h"
#include "todo/ToDoPage.h"

namespace quillbox {

namespace {

// Fit the height of the list: where the row stands when the list has to scroll along.
constexpr int kLowRow = 10;
constexpr int kHighRow = 1;

}  // namespace

void ToDoPage::List3_Click() {
  const int row = List3.GetListIndex();
  if (row >= 0) {
    const Text text = List3.GetList(row);
    Text1.SetText(text);
    status.WriteLength(text.size());
    status.Show();
  } else {
    status.Hide();
  }
  ShowMode();
  UpDown1.SetEnabled(row >= 0);
}

void ToDoPage::List3_GotFocus() {
  const int row = List3.GetListIndex();
  if (row >= 0) {
    status.WriteLength(List3.GetList(row).Length());
    status.Show();
    UpDown1.SetEnabled(true);
  } else {
    status.Hide();
  }
  ShowMode();
}

void ToDoPage::List3_LostFocus() {
  status.Hide();
  UpDown1.SetEnabled(false);
  files_.AktualisiereCle3();
}

void ToDoPage::List3_KeyDown(KeyEvent& key) {
  if (key.code == keys::kEnter) key.code = keys::kSpace;
  if (key.code == keys::kDelete) DeleteKey();
  if (!key.CtrlAlone() || !UpDown1.GetEnabled()) return;
  const int row = List3.GetListIndex();
  switch (key.code) {
    // The list's own handling of the key then takes the selection bar along with the moved row.
    case keys::kUp:
    case keys::kLeft:
      MoveUp();
      List3.SetListIndex(row);
      break;
    case keys::kDown:
    case keys::kRight:
      MoveDown();
      List3.SetListIndex(row);
      break;
    case keys::kHome:
      MoveHome();
      break;
    case keys::kEnd:
      MoveEnd();
      break;
    default:
      break;
  }
}

void ToDoPage::DeleteKey() {
  if (MayDeleteByKey(window_, settings_)) Command3_Click();
}

void ToDoPage::List3_OLEDragDrop(const DragData& data) {
  if (!data) return;
  Command4_Click();
  Text1.SetText(*data);
  Command2_Click();
}

void ToDoPage::MoveRow(int to, int top) {
  const int from = List3.GetListIndex();
  const SharedText text = List3.GetList(from);
  const bool marked = List3.GetSelected(from);
  List3.RemoveItem(from);
  List3.AddItem(text, to);
  List3.SetListIndex(to);
  List3.SetSelected(to, marked);
  List3.SetTopIndex(top);
  files_.AktualisiereCle3();
}

void ToDoPage::MoveUp() {
  const int row = List3.GetListIndex();
  if (row <= 0) return;
  const int top = List3.GetTopIndex();
  MoveRow(row - 1, row - top <= kHighRow ? std::max(top - 1, 0) : top);
}

void ToDoPage::MoveDown() {
  const int row = List3.GetListIndex();
  const int last = List3.GetListCount() - 1;
  if (row < 0 || row == last) return;
  const int top = List3.GetTopIndex();
  MoveRow(row + 1, row - top >= kLowRow ? std::min(top + 1, last) : top);
}

void ToDoPage::MoveHome() {
  if (List3.GetListIndex() > 0) MoveRow(0, 0);
}

void ToDoPage::MoveEnd() {
  const int last = List3.GetListCount() - 1;
  const int row = List3.GetListIndex();
  if (row >= 0 && row < last) MoveRow(last, last);
}

}  // namespace quillbox

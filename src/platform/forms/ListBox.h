#pragma once

#include <algorithm>
#include <vector>

#include "base/SharedText.h"
#include "platform/forms/Control.h"

namespace quillbox {

// Rows of text in the order in which they were put in, with a current row (ListIndex, -1 for none) and a
// state for each row: selected, or in a list with check boxes marked. A row index without a row is
// RuntimeError 381.
class ListBox : public Control {
 public:
  enum class Kind { ExtendedSelection, CheckBoxes };
  // `visibleRows`: rows that the list shows at once until its view says how many there are; at least 1.
  ListBox(const Place& place, std::string_view name, Kind kind, int visibleRows);

  bool TakesFocus() const override { return true; }
  bool HasCheckBoxes() const { return kind_ == Kind::CheckBoxes; }
  int GetListCount() const { return static_cast<int>(rows_.size()); }
  const SharedText& GetList(int row) const;

  // Adding a row at or above the current row moves ListIndex along with its row; removing the current row
  // makes it -1. Neither raises an event.
  void AddItem(const SharedText& text) { AddItem(text, GetListCount()); }
  void AddItem(const SharedText& text, int row);
  void RemoveItem(int row);
  void Clear();

  // Their texts one below the other, as they are dragged. `textOf` gives the text of a row.
  template <class TextOf>
  static Text Joined(const std::vector<int>& rows, const TextOf& textOf) {
    Text joined;
    for (const int row : rows) {
      if (row != rows.front()) joined += u"\r\n";
      joined += textOf(row).Get();
    }
    return joined;
  }

  int GetListIndex() const { return index_; }
  void SetListIndex(int row);  // -1: no row is current. Click if it changes
  bool GetSelected(int row) const;
  void SetSelected(int row, bool selected);  // Click, or ItemCheck with check boxes, if it changes
  int GetTopIndex() const { return top_; }
  void SetTopIndex(int row);
  int GetVisibleRows() const { return visibleRows_; }
  // Told by the view: whole rows that it shows at once. A window too low for one counts as one row.
  void SetShownRows(int rows) { shownRows_ = std::max(rows, 1); }
  // How far a page goes: what the view shows less one row; 7 without a view.
  int PageRows() const { return shownRows_ > 0 ? std::max(shownRows_ - 1, 1) : kPageWithoutView; }
  // What a key does with Ctrl: another row is current and the selection stays. Click if it changes.
  void MoveCurrent(int row);

  Event<int> ItemCheck;
  // The data to be dragged, the selected rows at first; the handler may replace it.
  Event<Text&> OLEStartDrag;

  // The person's inputs; each moves the focus here first and raises Click once if anything changed.
  void PersonSelect(int row, bool ctrl = false, bool shift = false);
  void PersonSelectNone();
  void PersonCheck(int row, bool checked);
  void PersonDoubleClick(int row);
  Text PersonStartDrag();

  // Grows when rows, their order or their texts change.
  unsigned long RowsRevision() const { return rowsRevision_; }

 protected:
  void OwnClick() override {}
  void OwnKey(const KeyEvent& key, char16_t character) override;

 private:
  static constexpr int kPageWithoutView = 7;
  struct Row {
    SharedText text;
    bool selected = false;
  };
  void Check(int row) const;
  // What a person's click or key does to current row and selection; true if it changed anything.
  bool Take(int row, bool ctrl, bool shift);
  bool SelectOnly(int first, int last);
  void ScrollTo(int row);
  void RowsChanged();

  Kind kind_;
  int visibleRows_;
  int shownRows_ = 0;  // 0: there is no view
  std::vector<Row> rows_;
  int index_ = -1;
  int top_ = 0;
  int anchor_ = -1;
  unsigned long rowsRevision_ = 0;
};

}  // namespace quillbox

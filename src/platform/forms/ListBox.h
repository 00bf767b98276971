#pragma once

#include <algorithm>
#include <functional>
#include <vector>

#include "base/SharedText.h"
#include "platform/forms/Control.h"

namespace quillbox {

// Rows of text in the order in which they were put in, with a current row (ListIndex, -1 for none) and a
// state for each row: selected, or in a list with check boxes marked. A row index without a row is
// RuntimeError 381.
//
// A filter may hide rows. Nothing is ever done to a row that the person doesn't see: a hidden row is neither
// selected nor current. A row that becomes hidden is deselected, one that is hidden already can't be chosen
// by anybody, and keys go past it. In all else it is a row like others: indices, order and texts know nothing
// of the filter.
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

  // Whether a row is to be shown. It is asked once for each row, when that is first looked at: a row that has
  // just come in may get the rest of its entry first.
  using Filter = std::function<bool(int row)>;
  // Shows the rows of which `filter` is true. `narrower`: all that it shows was shown before. Click if that
  // takes the current row or a selected one away.
  void ShowOnly(Filter filter, bool narrower = false);
  void ShowAll();
  bool IsFiltered() const { return filter_ != nullptr; }
  bool IsRowShown(int row) const;
  int ShownCount() const;
  // The row at a position among the shown ones, counted from 0; and how many shown rows lie above a row.
  int RowAt(int position) const;
  int PositionOf(int row) const;
  // Makes the uppermost shown row the only selected one, as a click does, but moves no focus.
  void TakeFirstShown();
  // What a key does with the list while another control has the focus.
  void TakeKey(const KeyEvent& key) { OwnKey(key, 0); }

  Event<int> ItemCheck;
  // Rows have come, gone or moved; an entry that comes in may not be whole yet.
  Event<> RowsChange;
  // The data to be dragged, the selected rows at first; the handler may replace it.
  Event<Text&> OLEStartDrag;

  // The person's inputs; each moves the focus here first and raises Click once if anything changed.
  void PersonSelect(int row, bool ctrl = false, bool shift = false);
  void PersonSelectNone();
  void PersonCheck(int row, bool checked);
  void PersonDoubleClick(int row);
  Text PersonStartDrag();
  // Characters typed in the list: KeyPress for each unit.
  void PersonType(TextView characters);

  // Grows when rows, their order, their texts or what is shown of them change.
  unsigned long RowsRevision() const { return rowsRevision_; }

 protected:
  void OwnClick() override {}
  void OwnKey(const KeyEvent& key, char16_t character) override;

 private:
  static constexpr int kPageWithoutView = 7;
  enum class Shown : unsigned char { Unknown, Yes, No };
  struct Row {
    SharedText text;
    bool selected = false;
    mutable Shown shown = Shown::Unknown;  // in a filtered list
  };
  void Check(int row) const;
  // What a person's click or key does to current row and selection; true if it changed anything.
  bool Take(int row, bool ctrl, bool shift);
  bool SelectOnly(int first, int last);
  void ScrollTo(int row);
  void RowsChanged();
  // Lets go of a row that is hidden; true if it was selected or current.
  bool LetGo(int row);

  Kind kind_;
  int visibleRows_;
  int shownRows_ = 0;  // 0: there is no view
  std::vector<Row> rows_;
  int index_ = -1;
  int top_ = 0;
  int anchor_ = -1;
  Filter filter_;
  unsigned long rowsRevision_ = 0;
};

}  // namespace quillbox

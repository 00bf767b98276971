#pragma once

#include "storage/DataFiles.h"
#include "storage/PadList.h"

namespace quillbox {

// Moves the current row of the Pad-List by hand, with its name, text and selected state, and saves. Without a
// current row, in a list that is filtered, or where the row already stands at that end, nothing happens and
// nothing is saved.
class PadMoves {
 public:
  PadMoves(PadList& pad, DataFiles& files) : pad_(pad), files_(files) {}

  // The arrows: one step, the moved row stays current.
  void OneUp();
  void OneDown();
  // A Ctrl key of the list; others do nothing. The list's own handling of the key, which moves the current
  // row on, follows; but not for the page keys, whose page is one of these moves and not one of the list.
  void Key(KeyEvent& key);

 private:
  // What a move keeps of the row.
  struct Entry {
    Text name;
    SharedText text;
    bool selected;
  };

  int Current() const { return pad_.List1.GetListIndex(); }
  bool CanMoveUp() const { return Current() > 0 && !pad_.List1.IsFiltered(); }
  bool CanMoveDown() const {
    return Current() >= 0 && Current() < pad_.List1.GetListCount() - 1 && !pad_.List1.IsFiltered();
  }
  Entry TakeCurrent();
  void MakeCurrent(int row, bool selected);
  void ToTop();
  void ToEnd();
  void PageUp();
  void PageDown();
  // The last steps of a move by a page: what stands at `row` now is current, selected as the moved row was.
  // Then the moved row, at `moved`, is the current one.
  void FinishPage(int row, bool selected, int moved);

  PadList& pad_;
  DataFiles& files_;
};

}  // namespace quillbox

#pragma once

#include "clip/ClipWatcher.h"
#include "core/window/MainWindow.h"
#include "platform/forms/CommandButton.h"
#include "storage/ClipList.h"
#include "storage/DataFiles.h"
#include "storage/PadList.h"

namespace quillbox {

// The page of the Clip-List: an old entry becomes the clipboard again, entries go to the Pad-List or are
// deleted, and the field's text follows the focus. Its field and status label stand in the watcher.
class ClipPage {
 public:
  ClipPage(MainWindow& window, ClipWatcher& watcher, ClipList& clip, PadList& pad, DataFiles& files,
           Norvane& settings, Clipboard& clipboard);

  CommandButton Command000;
  CommandButton Command001;
  CommandButton Command003;

  // Empties the text field of the Pad page. Given by the owner of that page.
  Event<> EmptyPadText;

  // Puts the current row's entry on the clipboard and at the top. Nothing without a current row or with
  // fewer than two rows.
  void List2_DblClick();

 private:
  void List2_Click();
  void List2_GotFocus();
  void List2_KeyDown(const KeyEvent& key);
  void List2_KeyUp(const KeyEvent& key);
  void List2_OLEDragDrop(const DragData& data);
  void Label7_Change();
  void Command000_Click();
  void Command001_Click();
  void Command003_Click();
  void Text0_GotFocus();
  void Text0_LostFocus();

  bool HasCurrentRow() const { return clip_.List2.GetListIndex() >= 0; }
  void ShowLength(std::size_t length);
  void ShowStatus(const Text& word);
  void SelectTopRow();
  void PutOnClipboard(const SharedText& text);
  // Empties clipboard, field and row 0. The caller has paused the poll.
  void ClearCurrentEntry();
  void ExchangeWithTop(int row, const SharedText& text);
  // False if the person wanted no room to be made for it.
  bool AddToPad(const SharedText& text);
  void DeleteAll();
  void DeleteCopyBelowTop();

  MainWindow& window_;
  ClipWatcher& watcher_;
  ClipList& clip_;
  PadList& pad_;
  DataFiles& files_;
  Norvane& settings_;
  Clipboard& clipboard_;
};

}  // namespace quillbox

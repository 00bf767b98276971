#pragma once

#include "clip/ClipWatcher.h"
#include "core/window/MainWindow.h"
#include "core/window/StatusArea.h"
#include "find/ListFind.h"
#include "platform/forms/CommandButton.h"
#include "platform/forms/TextBox.h"
#include "storage/ClipList.h"
#include "storage/DataFiles.h"
#include "storage/PadList.h"

namespace quillbox {

// The page of the Clip-List: an old entry becomes the clipboard again, entries go to the Pad-List or are
// deleted, and what is edited in the field is the clipboard at once.
class ClipPage {
 public:
  ClipPage(MainWindow& window, ClipWatcher& watcher, ClipList& clip, PadList& pad, DataFiles& files,
           Norvane& settings, Clipboard& clipboard, FoldTable& folds);

  TextBox Text0;             // the clipboard's text, edited by the person
  StatusArea status;         // Label7 with Line4 and Line5
  Label& Label7;             // length of an entry, or what a button has done; a double click cuts an address
  CommandButton Command000;  // clears the clipboard
  CommandButton Command001;  // to the Pad-List
  CommandButton Command003;  // deletes the selected entries
  ListFind find;             // FindClip with FoundClip

  // Empties the text field of the Pad page. Given by the owner of that page.
  Event<> EmptyPadText;
  // Rebuilds the Clip part of the tray menu and the tip.
  Event<> RebuildMenu;

  // Puts the current row's entry on the clipboard and at the top. Nothing without a current row or with
  // fewer than two rows.
  void List2_DblClick();
  // Opens find, empty and with the focus, on the page in front; closes it.
  void OpenFind() { find.Open(); }
  void CloseFind() { find.Close(); }
  // The person picks an entry in the list: whether the window is to go away behind that. Asked before, since
  // the pick itself may send it away.
  Event<bool&> Picking;
  // The entry has been copied, and the window is to go away.
  Event<const SharedText&> PickedToGo;
  // Clears clipboard, field and the entry at the top, and says so.
  void ClearBoard();

 private:
  // A double click or Enter on the current row.
  void Pick();
  void List2_Click();
  void List2_GotFocus();
  void List2_KeyDown(const KeyEvent& key);
  void List2_KeyUp(const KeyEvent& key);
  void List2_OLEDragDrop(const DragData& data);
  void Label7_Change();
  void Label7_DblClick();
  void Command000_Click();
  void Command001_Click();
  void Command003_Click();
  void Text0_Change();
  void Text0_GotFocus();
  void Text0_LostFocus();

  // Above 0 a text is cut by hand, above 1 each new one by itself.
  double CutUrlGrade();
  void ShowLength(std::size_t length);
  void SelectTopRow();
  void PutOnClipboard(const SharedText& text);
  // Empties clipboard, field and row 0, and minimises if set. The poll is paused.
  void ClearTop();
  void ClearCurrentEntry();
  void SayCleared();
  void ExchangeWithTop(int row, const SharedText& text);
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

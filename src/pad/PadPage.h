#pragma once

#include "core/window/MainWindow.h"
#include "core/window/StatusArea.h"
#include "find/ListFind.h"
#include "pad/PadMoves.h"
#include "pad/PadUse.h"
#include "platform/forms/CommandButton.h"
#include "platform/forms/Picture.h"
#include "platform/forms/TextBox.h"
#include "platform/forms/UpDown.h"
#include "storage/DataFiles.h"
#include "storage/ListRows.h"
#include "storage/PadList.h"

namespace quillbox {

// The page of the Pad-List. The caption of Command101 is its only mode: "Update" means that the fields stand
// for the current row. An entry is used by copying it to the clipboard, or by typing it if it is a script.
class PadPage {
 public:
  PadPage(MainWindow& window, PadList& pad, DataFiles& files, Norvane& settings, Clipboard& clipboard,
          KeySender& keySender, FoldTable& folds);

  TextBox Text3;             // the entry's name
  TextBox Text101;           // the entry's text
  CommandButton Command101;  // adds the fields, or updates the current row with them
  CommandButton Command102;  // uses the field's text: copies it, or types it if it is a script
  CommandButton Command103;  // gets the clipboard's text
  CommandButton Command104;  // empties the fields
  CommandButton Command105;  // deletes the selected rows
  UpDown UpDown2;            // moves the current row
  Picture Image3;            // what Command102 shows for a text
  Picture Image4;            // and for a script
  StatusArea status;         // Label13 with Line6 and Line7
  Label& Label13;            // length of an entry, or what a button has done; a double click is ROT47
  ListFind find;             // FindPad with FoundPad

  // Uses the current row's entry; nothing without one.
  void List1_DblClick();
  // Opens find, empty and with the focus, on the page in front; closes it.
  void OpenFind() { find.Open(); }
  void CloseFind() { find.Close(); }

 private:
  void Command101_Click();
  void Command102_Click();
  void Command103_Click();
  void Command104_Click();
  void Command105_Click();
  void List1_Click();
  void List1_GotFocus();
  void List1_LostFocus();
  void List1_KeyDown(KeyEvent& key);
  void List1_OLEDragDrop(const DragData& data);
  void List1_OLEStartDrag(Text& data);
  void Text101_Change();
  void Text101_GotFocus();
  void Text3_Change();
  void Text3_GotFocus();
  void Text3_KeyPress(char16_t& character);
  void Label13_Change();
  void Label13_DblClick();

  void WireList();
  void WireFieldsAndButtons();
  // The caption of Command101 by whether a row is current.
  void ShowMode();
  void LoadFields(int row);
  void EmptyFields();
  void ShowCurrentLength();
  // Whether the fields hold nothing that would be lost if another entry came into them.
  bool FieldsAreKept() const;
  // A row can be moved by hand where all rows are seen.
  bool MayMove() const { return HasCurrentRow(pad_.List1) && !pad_.List1.IsFiltered(); }
  void SelectOnly(int row);
  // Whether Command101 replaces row `row`.
  bool Updates(int row) const;

  MainWindow& window_;
  PadList& pad_;
  DataFiles& files_;
  Norvane& settings_;
  Clipboard& clipboard_;
  PadMoves moves_;
  PadUse use_;
};

}  // namespace quillbox

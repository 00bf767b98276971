#pragma once

#include "core/window/MainWindow.h"
#include "core/window/StatusArea.h"
#include "pad/ListMoves.h"
#include "pad/ScriptEntry.h"
#include "platform/forms/CommandButton.h"
#include "platform/forms/Picture.h"
#include "platform/forms/TextBox.h"
#include "platform/forms/UpDown.h"
#include "storage/DataFiles.h"
#include "storage/PadList.h"

namespace quillbox {

// The page of the Pad-List. The caption of Command101 is its only mode: "Update" means that the fields stand
// for the current row. An entry is used by copying it to the clipboard, or by typing it if it is a script.
class PadPage {
 public:
  PadPage(MainWindow& window, PadList& pad, DataFiles& files, Norvane& settings, Clipboard& clipboard,
          KeySender& keySender);

  TextBox Text3;    // the entry's name
  TextBox Text101;  // the entry's text
  CommandButton Command101;
  CommandButton Command102;
  CommandButton Command103;
  CommandButton Command104;
  CommandButton Command105;
  UpDown UpDown2;
  Picture Image3;  // what Command102 shows for a text
  Picture Image4;  // and for a script
  StatusArea status;
  Label& Label13;

  // Uses the current row's entry; nothing without one.
  void List1_DblClick();
  void Command101_Click();
  void Command102_Click();
  void Command103_Click();
  void Command104_Click();
  void Command105_Click();

 private:
  void List1_Click();
  void List1_GotFocus();
  void List1_LostFocus();
  void List1_KeyDown(const KeyEvent& key);
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
  bool HasCurrentRow() const { return pad_.List1.GetListIndex() >= 0; }
  // The caption of Command101 by whether a row is current.
  void ShowMode();
  void ShowStatus(const Text& word);
  void ShowLength(std::size_t length);
  void LoadFields(int row);
  void EmptyFields();
  void SelectOnly(int row);
  int SelectedRows() const;
  // Whether Command101 replaces row `row`.
  bool Updates(int row) const;
  // To the clipboard, and to the tray if set. The caller has paused the poll.
  void CopyText(const SharedText& text);
  // The script in the field, and the current row's.
  void ExecuteShown();
  void ExecuteCurrent();
  // Used entries move to the top if the setting `LastSort` asks for it. They take name and text of the
  // fields.
  bool MovesUsedEntries() { return settings_.IsOn(u"LastSort", u"2"); }
  void MoveToTop(int row);
  void MoveShownToTop();
  void MoveCurrentToTop(const Text& word);

  MainWindow& window_;
  PadList& pad_;
  DataFiles& files_;
  Norvane& settings_;
  Clipboard& clipboard_;
  ListMoves moves_;
  ScriptRunner scripts_;
};

}  // namespace quillbox

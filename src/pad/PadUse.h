#pragma once

#include "core/window/MainWindow.h"
#include "core/window/StatusArea.h"
#include "pad/ScriptRunner.h"
#include "storage/DataFiles.h"
#include "storage/PadList.h"

namespace quillbox {

// Uses an entry of the Pad-List: a text goes to the clipboard, a script is typed. A used entry moves to the
// top if the setting `LastSort` asks for it; it takes name and text of the page's fields.
class PadUse {
 public:
  // The page's fields and its status label.
  struct Fields {
    const TextBox& name;
    const TextBox& text;
    StatusArea& status;
  };
  PadUse(MainWindow& window, PadList& pad, DataFiles& files, Norvane& settings, Clipboard& clipboard,
         KeySender& keySender, const Fields& fields);

  // The field's text, whether it is in the list or not.
  void UseShown();
  // The current row's entry, which the fields show. There must be a current row.
  void UseCurrent();

 private:
  void ExecuteShown();
  void ExecuteCurrent();
  // To the clipboard, and to the tray if set. The poll is paused.
  void CopyText(const SharedText& text);
  bool MovesUsedEntries() { return settings_.IsOn(setting::kLastSort); }
  void MoveToTop(int row);
  void MoveShownToTop();
  void MoveCurrentToTop(const Text& word);

  MainWindow& window_;
  PadList& pad_;
  DataFiles& files_;
  Norvane& settings_;
  Clipboard& clipboard_;
  ScriptRunner scripts_;
  Fields fields_;
};

}  // namespace quillbox

#pragma once

#include "clip/ClipPage.h"
#include "core/window/PastePick.h"
#include "pad/PadPage.h"
#include "tray/menu/TrayMenu.h"

namespace quillbox {

// What the items of the tray menu do, but for the dialogs and the exit. An entry's item selects its row and
// runs the page's double click, so that a pick and a double click are one operation;
// find, which may hide that row, is closed first.
class TrayCommands {
 public:
  TrayCommands(TrayMenu& menu, MainWindow& window, ClipPage& clipPage, PadPage& padPage, ClipList& clip,
               PadList& pad, PastePick& pastePick, Norvane& settings);

 private:
  void mnuShow_Click();
  void mnuOnTop_Click();
  // Item k of the Clip family, and of the Pad family; nothing if there is no such row any more.
  void UseClipEntry(int k);
  void UsePadEntry(int k);
  // The first Clip item, which stands for what is on the clipboard already.
  void PasteTop() { pastePick_.Picked(clip_.ClipEntries(0)); }

  TrayMenu& menu_;
  MainWindow& window_;
  ClipPage& clipPage_;
  PadPage& padPage_;
  ClipList& clip_;
  PadList& pad_;
  PastePick& pastePick_;
  Norvane& settings_;
};

}  // namespace quillbox

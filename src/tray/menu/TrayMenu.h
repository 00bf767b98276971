#pragma once

#include <deque>

#include "core/settings/Norvane.h"
#include "platform/forms/MenuItem.h"
#include "storage/ClipList.h"
#include "storage/PadList.h"
#include "tray/menu/SysTray.h"

namespace quillbox {

// The tray menu: one fixed tree. Building it means to set caption and visibility of the items that stand for
// entries; item k stands for row k - 1. Nothing in it fails: a setting that can't be read has its default.
class TrayMenu {
 public:
  TrayMenu(ClipList& clip, PadList& pad, SysTray& tray, Norvane& settings, const Text& programName);

  // From the top. A "Trennlinie" is a separator.
  MenuItem mnuBase;   // the menu itself
  MenuItem mnuShow;   // shows the main window
  MenuItem mnuClear;  // clears the clipboard
  MenuItem mnuTrennlinie3;
  std::deque<MenuItem> mnuClip;     // Clip entries: items 1 to limits::kMenuItems, from index 0
  MenuItem mnuClips;                // opens the submenu of more of them
  std::deque<MenuItem> mnuClipSub;  // its items 1 to limits::kSubMenuItems, from index 0
  MenuItem mnuTrennlinie5;
  std::deque<MenuItem> mnuPad;     // the same of the Pad-List
  MenuItem mnuPads;                // opens the submenu
  std::deque<MenuItem> mnuPadSub;  // its items
  MenuItem mnuTrennlinie4;
  MenuItem mnuOnTop;     // the main window stays above all others, or doesn't
  MenuItem mnuSettings;  // opens the settings
  MenuItem mnuTrennlinie;
  MenuItem mnuInfo;       // opens the Info dialog
  MenuItem mnuStartHelp;  // opens the introduction
  MenuItem mnuTrennlinie2;
  MenuItem mnuEnd;  // ends the program

  // The Clip part, from the slots alone, and the tip of the icon.
  void AktualisiereContextMnu();
  // The Pad part, from the names in the rows.
  void AktualisiereContextMnu2();
  // A text made fit for a caption: one line, its ampersands doubled.
  static Text TextBeautify(TextView UglyText);

 private:
  struct Shown;
  Shown ReadShown(const NumberSetting& normal, const NumberSetting& collapsed);
  void UpdateTip();

  ClipList& clip_;
  PadList& pad_;
  SysTray& tray_;
  Norvane& settings_;
  Text programName_;
};

}  // namespace quillbox

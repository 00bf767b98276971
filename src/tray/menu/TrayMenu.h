#pragma once

#include <deque>

#include "core/settings/Norvane.h"
#include "platform/forms/MenuItem.h"
#include "storage/ClipList.h"
#include "storage/PadList.h"
#include "tray/menu/SysTray.h"

namespace quillbox {

// The tray menu: one fixed tree. Building it means to set caption and visibility of the items that stand for
// entries; item k stands for row k - 1. Failures are ignored: the menu stays as far as it got.
class TrayMenu {
 public:
  TrayMenu(ClipList& clip, PadList& pad, SysTray& tray, Norvane& settings, const Text& programName);

  MenuItem mnuBase;
  MenuItem mnuShow;
  MenuItem mnuClear;
  MenuItem mnuTrennlinie3;
  std::deque<MenuItem> mnuClip;  // 1 to limits::kMenuItems, from index 0
  MenuItem mnuClips;
  std::deque<MenuItem> mnuClipSub;  // 1 to limits::kSubMenuItems, from index 0
  MenuItem mnuTrennlinie5;
  std::deque<MenuItem> mnuPad;
  MenuItem mnuPads;
  std::deque<MenuItem> mnuPadSub;
  MenuItem mnuTrennlinie4;
  MenuItem mnuOnTop;
  MenuItem mnuSettings;
  MenuItem mnuTrennlinie;
  MenuItem mnuInfo;
  MenuItem mnuStartHelp;
  MenuItem mnuTrennlinie2;
  MenuItem mnuEnd;

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

#pragma once

#include "core/window/MainWindow.h"
#include "core/window/StatusArea.h"
#include "platform/forms/Picture.h"
#include "platform/forms/TextBox.h"
#include "storage/ClipList.h"
#include "storage/DataFiles.h"
#include "tray/menu/SysTray.h"

namespace quillbox {

// Polls the clipboard, and takes each new text into the Clip-List, the field of the Clip page, the file and
// the tray. Edits of the field go the opposite way. Whoever else rewrites the clipboard together with the
// list stops Timer1 first and starts it when done, so that a tick never sees a half-done change.
class ClipWatcher {
 public:
  ClipWatcher(MainWindow& window, ClipList& clip, DataFiles& files, SysTray& tray, Norvane& settings,
              Clipboard& clipboard);

  TextBox Text0;      // the clipboard's current text
  StatusArea status;  // Label7 with Line4 and Line5
  Label& Label7;
  Picture Picture1;  // holds the tray's second image

  // One tick. A failure ends it silently; the next one tries again.
  void TimerAktion();
  void Label7_DblClick();

  // The next tick begins a blink.
  void RequestBlink() { IconBlinkStep = -1; }
  void ResetBlink() { IconBlinkStep = 0; }
  // Rebuilds the Clip part of the tray menu and the tip.
  Event<> RebuildMenu;

 private:
  void TakeChange(TextView text, bool truncated);
  void Blink();
  void Text0_Change();
  bool NothingToDo();
  // Above 0 a text is cut by hand, above 1 each new one by itself.
  double CutUrlGrade();

  MainWindow& window_;
  ClipList& clip_;
  DataFiles& files_;
  SysTray& tray_;
  Norvane& settings_;
  Clipboard& clipboard_;
  Hook news_;
  int IconBlinkStep = 0;
};

}  // namespace quillbox

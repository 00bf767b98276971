#pragma once

#include "core/window/MainWindow.h"
#include "platform/forms/Picture.h"
#include "storage/ClipList.h"
#include "storage/DataFiles.h"
#include "tray/menu/SysTray.h"

namespace quillbox {

// Polls the clipboard, and takes each new text into the Clip-List, the file and the tray; the page shows it
// when it is told. Whoever else rewrites the clipboard together with the list pauses the poll, so that a tick
// never sees a half-done change.
class ClipWatcher {
 public:
  ClipWatcher(MainWindow& window, ClipList& clip, DataFiles& files, SysTray& tray, Norvane& settings,
              Clipboard& clipboard);

  Picture Picture1;  // holds the tray's second image

  // One tick. A failure ends it silently; the next one tries again.
  void TimerAktion();
  // The next tick begins a blink.
  void RequestBlink() { IconBlinkStep = -1; }

  // A new text stands at the top of the list; the poll is paused.
  Event<const SharedText&> Arrived;
  // It is in the file and the menu; the poll runs.
  Event<> Saved;

 private:
  void TakeChange(TextView text, bool truncated);
  void Blink();
  bool NothingToDo();

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

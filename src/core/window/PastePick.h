#pragma once

#include "base/SharedText.h"
#include "core/window/MainWindow.h"

namespace quillbox {

// What a person wants with a picked entry as a rule: it is typed into the window that had the focus, by the
// keys with which that window pastes. Off by default: the setting `PastePick`.
class PastePick {
 public:
  PastePick(MainWindow& window, Norvane& settings, Platform& platform);

  bool IsWanted() { return settings_.IsOn(setting::kPastePick); }
  // The picked text has been put on the clipboard. When the handler under way has ended the keys are sent, if
  // they are wanted and another window than ours may have the focus, and only while the clipboard still holds
  // that text. A failure is told in a message.
  void Picked(const SharedText& text);

 private:
  void Send(const SharedText& text);
  bool Holds(const SharedText& text);

  MainWindow& window_;
  Norvane& settings_;
  WindowManager& windows_;
  Clipboard& clipboard_;
  KeySender& keySender_;
  bool sending_ = false;
};

}  // namespace quillbox

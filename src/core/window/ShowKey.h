#pragma once

#include <optional>

#include "core/window/MainWindow.h"
#include "platform/ports/GlobalKey.h"

namespace quillbox {

// The key that brings the main window up from anywhere, on the Clip page where an entry is looked for, and
// sends it away again while it is in front. None by default: the setting `ShowKey`.
class ShowKey {
 public:
  ShowKey(MainWindow& window, Norvane& settings, Platform& platform);

  // The window has come up: the caret is to go where an entry is looked for. Given by the owner of the page.
  Event<> Open;

  // Binds the key of the settings. At the start what doesn't work is no more than a line of the trace; it
  // stands in the settings dialog.
  void Start() { Bind(false); }
  // The settings may name another key. What doesn't work is told in a message: the person has just chosen it.
  void Follow();
  void End();

  // Why the key doesn't work, in a sentence; empty while it does, or while there is none.
  Text Fault() const;
  // Whether the window stands open because the key was pressed, and nothing else has brought it up since.
  bool HasOpened() const;
  // The window has gone away, however.
  void WentAway() { shows_.reset(); }

 private:
  void Bind(bool told);
  void Become(KeyBinding binding);
  void Pressed();

  MainWindow& window_;
  Norvane& settings_;
  WindowManager& windows_;
  GlobalKey& key_;
  Text wanted_;  // what the settings have named, in their words
  KeyBinding binding_ = KeyBinding::None;
  bool told_ = false;              // a fault is still to be told
  std::optional<unsigned> shows_;  // of the form, when the key had opened it
  Hook pressed_, changed_;
};

}  // namespace quillbox

#pragma once

#include "core/window/MainWindow.h"
#include "platform/ports/KeySender.h"

namespace quillbox {

// Types the scripts of the Pad-List into the window that has the input focus. Keys take their time, in which
// the program goes on; a script that is under way isn't joined by a second one.
class ScriptRunner {
 public:
  ScriptRunner(MainWindow& window, KeySender& keySender) : window_(window), keySender_(keySender) {}

  bool Running() const { return running_; }
  // Sends what stands behind the mark of `script` and waits; a failure is told in a message.
  void Run(const Text& script);

 private:
  MainWindow& window_;
  KeySender& keySender_;
  bool running_ = false;
};

}  // namespace quillbox

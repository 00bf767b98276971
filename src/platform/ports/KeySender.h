#pragma once

#include "base/RuntimeError.h"
#include "base/Text.h"

namespace quillbox {

// Types keys into the window that has the input focus.
class KeySender {
 public:
  virtual ~KeySender() = default;
  // Sends a string in the notation of KeyNotation.h and returns when the keys have been taken in.
  // RuntimeError if the string can't be read, in which case nothing is typed, or can't be sent.
  virtual void Send(const Text& keys) = 0;
  // Puts right what a process left behind that was killed while it typed. For the start.
  virtual void Recover() {}
};

}  // namespace quillbox

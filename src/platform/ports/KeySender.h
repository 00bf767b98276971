#pragma once

#include <functional>
#include <string>

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
  // The string for the window that takes it, by the class that its program gives its windows; empty where the
  // session doesn't tell one, and in small or capital letters as it comes.
  using KeysFor = std::function<Text(const std::string& windowClass)>;
  // The same for keys that depend on the window, or on what holds by then: `keysFor` is asked once, when the
  // focus has left our windows and the first key would be sent. It gives an empty string: nothing is typed.
  virtual void SendTo(const KeysFor& keysFor) = 0;
  // Puts right what a process left behind that was killed while it typed. For the start.
  virtual void Recover() {}
};

}  // namespace quillbox

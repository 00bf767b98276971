#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "platform/ports/KeyNotation.h"
#include "platform/ports/KeySender.h"

namespace quillbox {

// Keeps the key strings that could have been typed.
class MemoryKeySender : public KeySender {
 public:
  void SendTo(const KeysFor& keysFor) override {
    if (failing_) throw RuntimeError(errors::kPermission, "Permission denied");
    if (WhileSending) WhileSending();
    const Text keys = keysFor(windowClass);
    if (keys.empty()) return;
    ParseKeys(keys);
    sent_.push_back(keys);
  }
  void Send(const Text& keys) override {
    if (failing_) throw RuntimeError(errors::kPermission, "Permission denied");
    ParseKeys(keys);
    sent_.push_back(keys);
    if (WhileSending) WhileSending();
  }

  void SetFailing(bool failing) { failing_ = failing; }
  std::vector<Text> TakeSent() { return std::exchange(sent_, {}); }
  // Of the window that has the focus.
  std::string windowClass;
  // What happens while keys are being typed.
  std::function<void()> WhileSending;

 private:
  bool failing_ = false;
  std::vector<Text> sent_;
};

}  // namespace quillbox

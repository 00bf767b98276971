#pragma once

#include "platform/ports/GlobalKey.h"

namespace quillbox {

// A desktop that answers as it was told to.
class MemoryGlobalKey : public GlobalKey {
 public:
  KeyBinding Bind(const KeyCombination& key) override {
    bound_ = FormatCombination(key);
    return answer_;
  }
  void Release() override { bound_.clear(); }

  // To the next Bind, and to one that waits for it.
  void Answer(KeyBinding answer) {
    const bool waits = answer_ == KeyBinding::Pending && !bound_.empty();
    answer_ = answer;
    if (waits) TellChanged(answer);
  }
  // What was asked for last and not let go.
  const Text& Asked() const { return bound_; }
  bool Works() const { return !bound_.empty() && answer_ == KeyBinding::Bound; }
  void Press() { TellPressed(); }

 private:
  Text bound_;
  KeyBinding answer_ = KeyBinding::Bound;
};

}  // namespace quillbox

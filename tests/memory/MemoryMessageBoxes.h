#pragma once

#include <deque>
#include <utility>
#include <vector>

#include "platform/ports/MessageBoxes.h"

namespace quillbox {

// Boxes that are answered at once: with the answers prepared for them, else Yes where there is one, else OK.
class MemoryMessageBoxes : public MessageBoxes {
 public:
  struct Box {
    Text text;
    int code = 0;
    Text title;
  };

  int Show(const Text& text, int code, const Text& title) override {
    shown_.push_back({text, code, title});
    if (WhileOpen) WhileOpen();
    if (answers_.empty()) return HasYes(code) ? kYes : kOk;
    const int answer = answers_.front();
    answers_.pop_front();
    return answer;
  }

  void Answer(int button) { answers_.push_back(button); }
  const std::vector<Box>& Shown() const { return shown_; }
  std::vector<Box> TakeShown() { return std::exchange(shown_, {}); }
  // What happens while a box stands open.
  std::function<void()> WhileOpen;

 private:
  static constexpr int kOk = 1;
  static constexpr int kYes = 6;
  static bool HasYes(int code) { return (code & 15) == 4; }

  std::deque<int> answers_;
  std::vector<Box> shown_;
};

}  // namespace quillbox

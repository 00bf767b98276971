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
    BoxCode code = BoxCode::Plain;
    Text title;
  };

  BoxAnswer Show(const Text& text, BoxCode code, const Text& title) override {
    shown_.push_back({text, code, title});
    if (WhileOpen) WhileOpen();
    if (answers_.empty()) return Asks(code) ? BoxAnswer::Yes : BoxAnswer::Ok;
    const BoxAnswer answer = answers_.front();
    answers_.pop_front();
    return answer;
  }

  void Answer(int button) { answers_.push_back(static_cast<BoxAnswer>(button)); }
  std::vector<Box> TakeShown() { return std::exchange(shown_, {}); }
  // What happens while a box stands open.
  std::function<void()> WhileOpen;

 private:
  std::deque<BoxAnswer> answers_;
  std::vector<Box> shown_;
};

}  // namespace quillbox

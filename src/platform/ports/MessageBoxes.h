#pragma once

#include "base/Text.h"

namespace quillbox {

// What a message box shows: the sum of its buttons (0 OK, 4 Yes and No) and its icon (16 stop, 32 question,
// 64 information).
enum class BoxCode : int {
  Plain = 0,
  Stop = 16,
  Question = 32 + 4,
  Information = 64,
  InformationYesNo = 64 + 4
};
// The number of the pressed button.
enum class BoxAnswer : int { Ok = 1, Yes = 6, No = 7 };

// Whether the box has buttons for Yes and No, not one for OK alone.
constexpr bool Asks(BoxCode code) {
  constexpr int buttons = 7;
  return (static_cast<int>(code) & buttons) == 4;
}

class MessageBoxes {
 public:
  virtual ~MessageBoxes() = default;
  // Shows a modal box and waits for its answer.
  virtual BoxAnswer Show(const Text& text, BoxCode code, const Text& title) = 0;
};

}  // namespace quillbox

#pragma once

#include "base/Text.h"

namespace quillbox {

class MessageBoxes {
 public:
  virtual ~MessageBoxes() = default;
  // Shows a modal box and returns the number of the pressed button: 1 OK, 6 Yes, 7 No. `code` is the sum of
  // buttons (0 OK, 4 Yes and No) and icon (16 stop, 32 question, 64 information).
  virtual int Show(const Text& text, int code, const Text& title) = 0;
};

}  // namespace quillbox

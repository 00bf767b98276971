#pragma once

#include <deque>

#include "calc/CalcDisplay.h"
#include "platform/forms/CommandButton.h"

namespace quillbox {

// The buttons that take the shown number from one unit to another.
class UnitConversions {
 public:
  UnitConversions(const Place& place, CalcDisplay& display);

 private:
  CalcDisplay& display_;
  std::deque<CommandButton> buttons_;  // Commandu1 to Commandu6
};

}  // namespace quillbox

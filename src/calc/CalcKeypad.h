#pragma once

#include "calc/CalcDisplay.h"
#include "platform/forms/CommandButton.h"

namespace quillbox {

// The buttons that enter numbers, join them by an operator, and give the result.
class CalcKeypad {
 public:
  CalcKeypad(const Place& place, CalcDisplay& display);

  CommandButton Command10;  // 0
  CommandButton Command11;  // 1
  CommandButton Command12;  // 2
  CommandButton Command13;  // 3
  CommandButton Command14;  // 4
  CommandButton Command15;  // 5
  CommandButton Command16;  // 6
  CommandButton Command17;  // 7
  CommandButton Command18;  // 8
  CommandButton Command19;  // 9
  CommandButton Command20;  // the decimal point
  CommandButton Command21;  // +/-
  CommandButton Command22;  // backspace
  CommandButton Command9;   // CE
  CommandButton Command23;  // plus
  CommandButton Command24;  // minus
  CommandButton Command25;  // times
  CommandButton Command26;  // divided by
  CommandButton Command34;  // to the power of
  CommandButton Command27;  // =
  CommandButton Command31;  // Pi

 private:
  void DigitClick(char16_t digit);         // Command10_Click to Command19_Click
  void OperatorClick(TextView operation);  // Command23_Click to Command26_Click, Command34_Click
  void Command9_Click();
  void Command20_Click();
  void Command21_Click();
  void Command22_Click();
  void Command27_Click();
  void Command31_Click();

  CalcDisplay& display_;
};

}  // namespace quillbox

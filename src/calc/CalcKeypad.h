#pragma once

#include <deque>
#include <functional>

#include "calc/CalcDisplay.h"
#include "calc/CalcFunctions.h"
#include "platform/forms/CommandButton.h"

namespace quillbox {

// The buttons that enter numbers and compute.
class CalcKeypad {
 public:
  CalcKeypad(const Place& place, CalcDisplay& display);

 private:
  void Add(std::string_view name, TextView caption, TextView toolTipText, std::function<void()> handler);

  void DigitClick(char16_t digit);         // Command10_Click to Command19_Click
  void OperatorClick(TextView operation);  // Command23_Click to Command26_Click, Command34_Click
  void FunctionClick(const CalcFunction& function);
  void Command9_Click();   // CE
  void Command20_Click();  // decimal point
  void Command21_Click();  // +/-
  void Command22_Click();  // backspace
  void Command27_Click();  // =
  void Command31_Click();  // Pi

  CalcDisplay& display_;
  Place place_;
  std::deque<CommandButton> buttons_;
};

}  // namespace quillbox

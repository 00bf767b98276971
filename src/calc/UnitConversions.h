#pragma once

#include "calc/CalcDisplay.h"
#include "platform/forms/CommandButton.h"

namespace quillbox {

// The buttons that take the shown number from one unit to another.
class UnitConversions {
 public:
  UnitConversions(const Place& place, CalcDisplay& display);

  CommandButton Commandu1;  // centimeters to inches
  CommandButton Commandu2;  // inches to centimeters
  CommandButton Commandu3;  // grams to ounces
  CommandButton Commandu4;  // ounces to grams
  CommandButton Commandu5;  // kilograms to pounds
  CommandButton Commandu6;  // pounds to kilograms

 private:
  // What a click does with the shown number.
  void Divide(CommandButton& button, double by);
  void Multiply(CommandButton& button, double by);
  void Finish(double result);

  CalcDisplay& display_;
};

}  // namespace quillbox

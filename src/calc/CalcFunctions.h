#pragma once

#include "calc/CalcDisplay.h"
#include "platform/forms/CommandButton.h"

namespace quillbox {

// The buttons that make another number of the one that is shown.
class CalcFunctions {
 public:
  CalcFunctions(const Place& place, CalcDisplay& display);

  CommandButton Command7;   // sine of an angle in degrees
  CommandButton Command8;   // cosine
  CommandButton Command28;  // tangent
  CommandButton Command29;  // arc sine, in degrees
  CommandButton Command41;  // arc cosine
  CommandButton Command44;  // arc tangent
  CommandButton Command30;  // square root
  CommandButton Command32;  // percent
  CommandButton Command33;  // square
  CommandButton Command36;  // e to the power of the number
  CommandButton Command37;  // natural logarithm
  CommandButton Command40;  // reciprocal

 private:
  struct Function;
  void Apply(const Function& function);

  CalcDisplay& display_;
};

}  // namespace quillbox

#pragma once

#include "calc/BaseSelector.h"
#include "calc/CalcDisplay.h"

namespace quillbox {

// Typing into the display. Unlike the buttons, a key that follows an operator or a result empties the display
// at once.
class CalcKeyboard {
 public:
  CalcKeyboard(CalcDisplay& display, BaseSelector& bases);

 private:
  void Text7_GotFocus();
  void Text7_LostFocus();
  void Text7_KeyPress(char16_t& key);
  void Text7_OLEDragDrop(const DragData& data);

  void EmptyFinishedDisplay(char16_t key);
  void TypeOperator(TextView operation);
  void TypeEquals();
  void TypePoint();

  CalcDisplay& display_;
  BaseSelector& bases_;
};

}  // namespace quillbox

#pragma once

#include <array>

#include "calc/BaseText.h"
#include "calc/CalcDisplay.h"
#include "platform/forms/Label.h"
#include "platform/forms/Picture.h"

namespace quillbox {

// The three labels that turn the display into another base. The blue one is the base of the display's text.
class BaseSelector {
 public:
  BaseSelector(const Place& place, CalcDisplay& display);

  NumberBase Base() const;
  // Shown and hidden with the focus of the display; hidden, the base is decimal, whatever the display holds.
  void Show();
  void Hide();

  Label Label9;    // decimal
  Label Label10;   // hexadecimal
  Label Label11;   // octal
  Picture Shape1;  // the frame around the three
  Picture Line8;   // the lines between them
  Picture Line9;

 private:
  void SetVisible(bool visible);
  void Select(NumberBase base);
  void LabelClick(NumberBase base);
  void Convert(NumberBase from, NumberBase to);

  CalcDisplay& display_;
};

}  // namespace quillbox

#pragma once

#include <string_view>

class QAbstractButton;
class QGridLayout;
class QLayout;

namespace quillbox {

class FormView;

// The keys of the calculator, each in the colour of its kind.
class CalcKeys {
 public:
  explicit CalcKeys(FormView& view) : view_(view) {}
  QAbstractButton* Make(std::string_view control);
  // All keys that don't stand beside the display.
  QLayout* MakePad();

 private:
  FormView& view_;
};

}  // namespace quillbox

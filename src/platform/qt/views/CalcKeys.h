#pragma once

class QHBoxLayout;
class QLayout;

namespace quillbox {

class CalcPage;
class FormView;

// The keys of the calculator, each in the colour of its kind.
class CalcKeys {
 public:
  CalcKeys(FormView& view, CalcPage& page) : view_(view), page_(page) {}
  // The two keys beside the display.
  void AddEditKeys(QHBoxLayout& display);
  // All others.
  QLayout* MakePad();

 private:
  QLayout* MakeStores();
  QLayout* MakeGrid();
  QLayout* MakeUnits();

  FormView& view_;
  CalcPage& page_;
};

}  // namespace quillbox

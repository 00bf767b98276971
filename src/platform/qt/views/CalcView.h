#pragma once

class QWidget;

namespace quillbox {

class CalcPage;
class FormView;

// The calculator: the display above, functions at the left, digits and operators at the right. `page` has its
// controls on the view's form.
QWidget* MakeCalcPage(FormView& view, CalcPage& page);

}  // namespace quillbox

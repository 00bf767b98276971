#pragma once

class QWidget;

namespace quillbox {

class FormView;
class StatusArea;

// The status label of a list page between its two lines.
QWidget* MakeStatus(FormView& view, StatusArea& status);

}  // namespace quillbox

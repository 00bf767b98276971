#pragma once

class QWidget;

namespace quillbox {

class FormView;
class TimerPage;

// The clock, the one timer's settings and its message. `page` has its controls on the view's form.
QWidget* MakeTimerPage(FormView& view, TimerPage& page);

}  // namespace quillbox

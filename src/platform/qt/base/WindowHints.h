#pragma once

class QWidget;

namespace quillbox {

// Whether windows know where they are and can stand above others: native windows of Wayland don't.
bool WindowsHavePlaces();

// What a window asks of the window manager, or comes with if it isn't shown yet, so that no panel sees it
// otherwise.
void SetAbove(QWidget& window, bool above);
void SetSkipTaskbar(QWidget& window, bool skip);
// Brings a shown window to the front and gives it the focus, whatever program has it now.
void ActivateWindow(QWidget& window);

}  // namespace quillbox

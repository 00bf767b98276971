#pragma once

#include "platform/ports/PixelSize.h"
#include "platform/ports/WindowManager.h"

namespace quillbox {

// Sets and clears the topmost state of a form. Either makes the form visible, without giving it the focus.
// What the window manager makes of it isn't looked at.
class OnTop {
 public:
  explicit OnTop(WindowManager& windows) : windows_(windows) {}
  void OnTopSet(Form& form) { Set(form, true); }
  void OnTopClear(Form& form) { Set(form, false); }
  // Puts the form in the middle of the screen, fractions dropped.
  void Center(Form& form);
  // The screen's size in twips.
  PixelSize ScreenTwips();

 private:
  void Set(Form& form, bool topmost);

  WindowManager& windows_;
};

}  // namespace quillbox

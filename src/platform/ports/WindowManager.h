#pragma once

#include "platform/ports/PixelSize.h"

namespace quillbox {

class Form;
class MenuItem;

class WindowManager {
 public:
  virtual ~WindowManager() = default;
  virtual PixelSize ScreenSize() = 0;
  // Puts the form's window above all others, or back among them, at `place`, without activating it. The
  // form's own state (shown, topmost) is set by the caller.
  virtual void SetTopmost(Form& form, bool topmost, const PixelRect& place) = 0;
  virtual void SetForeground(Form& form) = 0;
  // Whether the form's window has the keyboard now, and no window of another program has.
  virtual bool IsForeground(const Form& form) = 0;
  // Opens the menu below `root` at the mouse; its items call MenuItem::Click when picked.
  virtual void OpenPopup(MenuItem& root) = 0;
};

}  // namespace quillbox

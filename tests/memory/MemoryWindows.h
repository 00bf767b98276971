#pragma once

#include <functional>

#include "platform/ports/PixelSize.h"
#include "platform/ports/WindowManager.h"

namespace quillbox {

// A screen without windows. A menu that opens stays open until somebody closes it.
class MemoryWindows : public WindowManager {
 public:
  PixelSize ScreenSize() override { return screen_; }
  void SetTopmost(Form&, bool, const PixelRect& place) override { topmostPlace_ = place; }
  void SetForeground(Form& form) override { foreground_ = &form; }
  void OpenPopup(MenuItem& root) override {
    openMenu_ = &root;
    if (MenuChanged) MenuChanged();
  }

  void SetScreenSize(PixelSize size) { screen_ = size; }
  // The place of the last topmost call.
  const PixelRect& TopmostPlace() const { return topmostPlace_; }
  // The form that was last brought to the front, or null.
  const Form* Foreground() const { return foreground_; }
  // The root of the menu that stands open, or null.
  MenuItem* OpenMenu() const { return openMenu_; }
  void CloseMenu() {
    openMenu_ = nullptr;
    if (MenuChanged) MenuChanged();
  }
  // The menu has opened or closed.
  std::function<void()> MenuChanged;
  // The program's windows and menus are gone.
  void Forget() {
    MenuChanged = nullptr;
    openMenu_ = nullptr;
    foreground_ = nullptr;
  }

 private:
  PixelSize screen_{1024, 768};
  PixelRect topmostPlace_;
  const Form* foreground_ = nullptr;
  MenuItem* openMenu_ = nullptr;
};

}  // namespace quillbox

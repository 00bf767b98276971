#pragma once

#include <functional>

#include "platform/forms/Form.h"
#include "platform/ports/PixelSize.h"
#include "platform/ports/WindowManager.h"

namespace quillbox {

// A screen without windows. A menu that opens stays open until somebody closes it.
class MemoryWindows : public WindowManager {
 public:
  PixelSize ScreenSize() override { return screen_; }
  void SetTopmost(Form&, bool, const PixelRect&) override {}
  void SetForeground(Form&) override {}
  bool IsForeground(const Form& form) override { return form.GetVisible() && form.Shows() != left_; }
  void OpenPopup(MenuItem& root) override {
    openMenu_ = &root;
    if (MenuChanged) MenuChanged();
  }

  // The person goes to another program's window, until the form is shown again.
  void Leave(const Form& form) { left_ = form.Shows(); }
  void SetScreenSize(PixelSize size) { screen_ = size; }
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
    left_ = 0;
  }

 private:
  PixelSize screen_{1024, 768};
  MenuItem* openMenu_ = nullptr;
  unsigned left_ = 0;
};

}  // namespace quillbox

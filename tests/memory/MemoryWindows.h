#pragma once

#include <functional>

#include "platform/ports/PixelSize.h"
#include "platform/ports/WindowManager.h"

namespace quillbox {

// A screen without windows. A menu that opens stays open until somebody closes it.
class MemoryWindows : public WindowManager {
 public:
  PixelSize ScreenSize() override { return screen_; }
  void SetTopmost(Form&, bool, const PixelRect&) override {}
  void SetForeground(Form&) override {}
  void OpenPopup(MenuItem& root) override {
    openMenu_ = &root;
    if (MenuChanged) MenuChanged();
  }

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
  }

 private:
  PixelSize screen_{1024, 768};
  MenuItem* openMenu_ = nullptr;
};

}  // namespace quillbox

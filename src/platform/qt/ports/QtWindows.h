#pragma once

#include <functional>
#include <memory>

#include "platform/forms/Dispatcher.h"
#include "platform/ports/PixelSize.h"
#include "platform/ports/WindowManager.h"
#include "platform/qt/ports/TrayMenuView.h"

namespace quillbox {

// Windows on the real screen.
class QtWindows : public WindowManager {
 public:
  explicit QtWindows(Dispatcher& dispatcher) : dispatcher_(dispatcher) {}

  PixelSize ScreenSize() override;
  void SetTopmost(Form& form, bool topmost, const PixelRect& place) override;
  void SetForeground(Form&) override {}  // a popup of ours takes keys and clicks by itself
  bool IsForeground(const Form& form) override;
  void OpenPopup(MenuItem& root) override;
  // The menu's view, made at the first call: with the fonts that it loads it takes 1.3 MiB, and a program in
  // whose menu nobody has looked yet does without.
  TrayMenuView& MenuFor(MenuItem& root);
  // As TrayMenuView's.
  std::function<void(const QPoint&)> RightPressBesideMenu;

 private:
  Dispatcher& dispatcher_;
  std::unique_ptr<TrayMenuView> menu_;
};

}  // namespace quillbox

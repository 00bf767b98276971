#include "tray/menu/SysTray.h"

#include "platform/forms/Dispatcher.h"

namespace quillbox {

namespace {

// The shell's field for the tip.
constexpr std::size_t kTipLength = 64;

}  // namespace

SysTray::SysTray(TrayIcon& icon, Form& window, Norvane& settings)
    : icon_(icon), window_(window), settings_(settings), TrayTipText(window.GetCaption()) {
  mouse_ = icon_.OnMouse(
      [this](int message) { window_.GetDispatcher().Dispatch([&] { SysTrayWindowProc(message); }); });
}

void SysTray::SysTrayAdd() {
  TrayTipText = window_.GetCaption();
  TrayIconImage = TrayImage::Window;
  added_ = true;
  icon_.Add(TrayIconImage, TrayTipText);
}

void SysTray::SysTrayDelete() {
  if (!added_) return;
  added_ = false;
  icon_.Delete();
}

void SysTray::SysTrayModify() {
  if (added_) icon_.Change(TrayIconImage, Text(CutTo(TrayTipText, kTipLength)));
}

void SysTray::ShowImage(TrayImage image) {
  TrayIconImage = image;
  SysTrayModify();
}

void SysTray::ShowTip(const Text& tip) {
  TrayTipText = tip;
  SysTrayModify();
}

void SysTray::SysTrayWindowProc(int message) {
  if (!hooked_) return;
  if (message == mouse::kRightDown) {
    Raise(SysTrayMouseEventHandler);
  } else if (message == (settings_.ShowsOnDoubleClick() ? mouse::kLeftDouble : mouse::kLeftDown)) {
    window_.Show();
  }
}

}  // namespace quillbox

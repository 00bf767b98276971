#pragma once

#include "core/settings/Norvane.h"
#include "platform/forms/Form.h"
#include "platform/ports/TrayIcon.h"

namespace quillbox {

// The icon in the tray and the messages that its mouse sends. Every change of image or tip hands over both.
class SysTray {
 public:
  SysTray(TrayIcon& icon, Form& window, Norvane& settings);

  // Opens the tray menu. Given by the owner of the menu.
  Event<> SysTrayMouseEventHandler;

  // While hooked, the icon's messages are answered.
  void SysTrayHook() { hooked_ = true; }
  void SysTrayUnhook() { hooked_ = false; }
  void SysTrayAdd();
  void SysTrayDelete();
  // Each goes through to the icon with what the other one has set last.
  void ShowImage(TrayImage image);
  void ShowTip(const Text& tip);

 private:
  void SysTrayModify();
  void SysTrayWindowProc(int message);

  TrayIcon& icon_;
  Form& window_;
  Norvane& settings_;
  Hook mouse_;
  bool hooked_ = false;
  bool added_ = false;
  Text TrayTipText;
  TrayImage TrayIconImage = TrayImage::Window;
};

}  // namespace quillbox

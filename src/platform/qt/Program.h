#pragma once

#include <memory>
#include <optional>

#include "core/app/frmTray.h"
#include "platform/linux/files/PosixFiles.h"
#include "platform/linux/registry/FileRegistry.h"
#include "platform/linux/system/EndingSignals.h"
#include "platform/linux/system/LinuxClock.h"
#include "platform/linux/system/LinuxSystem.h"
#include "platform/ports/DropText.h"
#include "platform/ports/SessionClipboard.h"
#include "platform/qt/ports/QtDrops.h"
#include "platform/qt/ports/QtEventLoop.h"
#include "platform/qt/ports/QtMessageBoxes.h"
#include "platform/qt/ports/QtSound.h"
#include "platform/qt/ports/QtTextFolding.h"
#include "platform/qt/ports/QtTimers.h"
#include "platform/qt/ports/QtTips.h"
#include "platform/qt/ports/QtTrayIcon.h"
#include "platform/qt/ports/QtWindows.h"
#include "platform/qt/ports/TrayPresence.h"
#include "platform/qt/views/ProgramViews.h"

namespace quillbox {

// The logic on the real platform: ports, views, and the ways in which the program starts and ends.
class Program {
 public:
  explicit Program(EndingSignals& signals);
  ~Program();

  // Starts; false if the program has ended again already, being the second one.
  bool Start();
  // Ends by itself: signals, the end of the session.
  void End(CloseReason reason);
  // After the event loop: ends what has not ended yet, the session being over; and a text that we own
  // outlives us where a clipboard manager takes it over.
  void Finish();
  // The display has gone away: no window can be drawn any more, the lists are saved.
  void SaveAfterLoss();

 private:
  void ShowWithoutTray();
  void FillHostMenu();
  // The page of the manual about what a form has in front.
  const char* HelpPage(const Form& form) const;
  void ShowHelp(const Form& form);

  QtEventLoop loop_;
  std::unique_ptr<SessionClipboard> clipboard_;
  std::unique_ptr<DropText> dropText_;
  std::optional<QtDrops> drops_;  // while dropText_ is
  QtTimers timers_;
  Dispatcher dispatcher_;
  QtTips tips_;
  ProgramViews views_;
  TrayPresence presence_;
  QtTrayIcon trayIcon_;
  QtWindows windows_;
  QtMessageBoxes messageBoxes_;
  QtSound sound_;
  std::unique_ptr<KeySender> keySender_;
  std::unique_ptr<GlobalKey> globalKey_;
  PosixFiles files_;
  FileRegistry registry_;
  LinuxSystem system_;
  LinuxClock clock_;
  QtTextFolding folding_;
  Platform platform_;
  std::unique_ptr<frmTray> frmTray_;
  TrayMenuView* hostMenu_ = nullptr;  // once a host has it that draws it itself
};

}  // namespace quillbox

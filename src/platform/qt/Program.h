#pragma once

#include <memory>

#include "core/frmTray.h"
#include "platform/linux/EndingSignals.h"
#include "platform/linux/FileRegistry.h"
#include "platform/linux/LinuxClock.h"
#include "platform/linux/LinuxSystem.h"
#include "platform/linux/PosixFiles.h"
#include "platform/linux/XClipboard.h"
#include "platform/linux/XKeySender.h"
#include "platform/qt/QtEventLoop.h"
#include "platform/qt/QtMessageBoxes.h"
#include "platform/qt/QtSound.h"
#include "platform/qt/QtTimers.h"
#include "platform/qt/QtTips.h"
#include "platform/qt/QtTrayIcon.h"
#include "platform/qt/QtWindows.h"
#include "platform/qt/TrayPresence.h"
#include "platform/qt/ViewHost.h"

namespace quillbox {

class MainView;

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
  // The X server has gone away: no window can be drawn any more, the lists are saved.
  void SaveAfterLoss();

 private:
  std::unique_ptr<FormView> MakeView(Form& form);
  MainView* Main() const;
  void OnShown();

  QtEventLoop loop_;
  QtTimers timers_;
  Dispatcher dispatcher_;
  ViewHost views_;
  QtTips tips_;
  TrayPresence presence_;
  QtTrayIcon trayIcon_;
  QtWindows windows_;
  QtMessageBoxes messageBoxes_;
  QtSound sound_;
  XClipboard clipboard_;
  XKeySender keySender_;
  PosixFiles files_;
  FileRegistry registry_;
  LinuxSystem system_;
  LinuxClock clock_;
  Platform platform_;
  std::unique_ptr<frmTray> frmTray_;
  bool mainShown_ = false;
  unsigned mainShows_ = 0;
};

}  // namespace quillbox

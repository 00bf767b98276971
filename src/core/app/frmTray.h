#pragma once

#include "calc/CalcPage.h"
#include "clip/ClipPage.h"
#include "clip/ClipWatcher.h"
#include "core/settings/Norvane.h"
#include "core/window/MainWindow.h"
#include "core/window/PastePick.h"
#include "core/window/ShowKey.h"
#include "dialogs/frmAbout.h"
#include "dialogs/frmSettings.h"
#include "dialogs/frmStartHelp.h"
#include "find/FoldTable.h"
#include "pad/PadPage.h"
#include "platform/forms/FormSlot.h"
#include "storage/DataFileSetup.h"
#include "storage/DataFiles.h"
#include "timer/TimerPage.h"
#include "timer/frmMessage.h"
#include "todo/ToDoPage.h"
#include "tray/commands/TrayCommands.h"
#include "tray/menu/SysTray.h"
#include "tray/menu/TrayMenu.h"
#include "tray/tips/MLToolTip.h"

namespace quillbox {

// The main window and the program in one: owns the lists, the pages, the tray and the dialogs, wires them,
// and starts and stops them in a fixed order. Load of its form is the start; the program ends when the form
// is unloaded.
class frmTray {
 public:
  frmTray(Dispatcher& dispatcher, Platform& platform);

  Form form;
  Norvane settings;
  MainWindow window;
  ShowKey showKey;
  PastePick pastePick;
  PadList pad;
  ClipList clip;
  ToDoList toDo;
  DataFiles files;
  DataFileReader reader;
  DataFileSetup setup;
  SysTray tray;
  TrayMenu menu;
  ClipWatcher watcher;
  FoldTable folds;
  PadPage padPage;
  ClipPage clipPage;
  CalcPage calcPage;
  FormSlot<frmMessage> message;
  TimerPage timerPage;
  ToDoPage toDoPage;
  TrayCommands commands;
  FormSlot<frmAbout> about;
  FormSlot<frmSettings> settingsDialog;
  FormSlot<frmStartHelp> startHelp;
  MLToolTip toolTips;

  bool Running() const { return form.GetLoaded(); }
  // The main form is unloaded: the program is to end.
  Event<> Ended;
  // The tray menu's "Exit Quillbox".
  void mnuEnd_Click() { form.Close(CloseReason::Code); }

 private:
  void Wire();
  void Form_Load();
  void Form_QueryUnload(bool& cancel, CloseReason reason);
  void Form_Unload();
  void RefuseSecondInstance();
  void RestoreClipboard();
  void RecordVersion();
  void SaveLists();
  void RebuildMenus();
  void OpenFind();
  void SysTrayMouseEventHandler();

  Dispatcher& dispatcher_;
  Platform& platform_;
  // False in a second instance, which has nothing to stop.
  bool started_ = false;
};

}  // namespace quillbox

#include "core/app/frmTray.h"

#include "core/settings/Version.h"

namespace quillbox {

namespace {

constexpr int kToolTipWidth = 320;  // pixels

}  // namespace

frmTray::frmTray(Dispatcher& dispatcher, Platform& platform)
    : form(dispatcher, "frmTray", u"Quillbox"),
      settings(platform.registry, platform.system),
      window(form, settings, platform),
      showKey(window, settings, platform),
      pastePick(window, settings, platform),
      pad(window.On(Page::Pad)),
      clip(window.On(Page::Clip)),
      toDo(window.On(Page::ToDo)),
      files(pad, clip, toDo, settings, platform.files, platform.system),
      reader(pad, clip, toDo, settings, platform.files),
      setup(files, reader, pad, clip, toDo, platform.clipboard),
      tray(platform.trayIcon, form, settings),
      menu(clip, pad, tray, settings, form.GetCaption()),
      watcher(window, clip, files, tray, settings, platform.clipboard),
      folds(platform.folding),
      padPage(window, pad, files, settings, platform.clipboard, platform.keySender, folds),
      clipPage(window, watcher, clip, pad, files, settings, platform.clipboard, folds),
      calcPage(window, settings, platform.clipboard, platform.system),
      message(dispatcher,
              [this] {
                return std::make_unique<frmMessage>(dispatcher_, window, settings, platform_.sound,
                                                    [this] { timerPage.ShowAgainInTwoMinutes(); });
              }),
      timerPage(window, settings, platform.clipboard, platform.clock, message),
      toDoPage(window, toDo, files, settings),
      commands(menu, window, clipPage, padPage, clip, pad, pastePick, settings),
      about(dispatcher,
            [this] {
              return std::make_unique<frmAbout>(dispatcher_, window, settings, platform_.system,
                                                platform_.clipboard);
            }),
      settingsDialog(dispatcher,
                     [this] {
                       return std::make_unique<frmSettings>(dispatcher_, window, settings, files, setup, pad,
                                                            clip, toDo, platform_.messageBoxes, showKey,
                                                            [this] { RebuildMenus(); });
                     }),
      startHelp(dispatcher,
                [this] {
                  return std::make_unique<frmStartHelp>(dispatcher_, window, settings,
                                                        [this] { about.Show(); });
                }),
      dispatcher_(dispatcher),
      platform_(platform) {
  Wire();
}

void frmTray::Wire() {
  form.LoadHandler = [this] { Form_Load(); };
  form.QueryUnload = [this](bool& cancel, CloseReason reason) { Form_QueryUnload(cancel, reason); };
  form.UnloadHandler = [this] { Form_Unload(); };
  form.Unloaded = [this] {
    window.poll.Stop();
    window.Timer2.SetEnabled(false);
    Raise(Ended);
  };
  files.MessageBox = [this](const Text& text, BoxCode code, const Text& title) {
    window.MessageBox(text, code, title);
  };
  files.RebuildClipMenu = [this] { menu.AktualisiereContextMnu(); };
  files.RebuildPadMenu = [this] { menu.AktualisiereContextMnu2(); };
  clipPage.RebuildMenu = [this] { menu.AktualisiereContextMnu(); };
  showKey.Open = [this] { clipPage.OpenFind(); };
  clipPage.Picking = [this](bool& goes) { goes = showKey.HasOpened(); };
  clipPage.PickedToGo = [this](const SharedText& text) {
    window.Minimize();
    pastePick.Picked(text);
  };
  window.RefreshToDo = [this] { toDoPage.Command5_Click(); };
  form.FindWanted = [this] { OpenFind(); };
  window.WentAway = [this] {
    showKey.WentAway();
    clipPage.CloseFind();
    padPage.CloseFind();
  };
  window.SaveLists = [this] { SaveLists(); };
  clipPage.EmptyPadText = [this] { padPage.Text101.SetText(u""); };
  toDoPage.OpenSettings = [this] { settingsDialog.Show(); };
  tray.SysTrayMouseEventHandler = [this] { SysTrayMouseEventHandler(); };
  window.Command47.Click = [this] { settingsDialog.Show(); };
  menu.mnuSettings.Click = [this] { settingsDialog.Show(); };
  window.Command48.Click = [this] { about.Show(); };
  menu.mnuInfo.Click = [this] { about.Show(); };
  menu.mnuStartHelp.Click = [this] { startHelp.Show(); };
  menu.mnuEnd.Click = [this] { mnuEnd_Click(); };
}

void frmTray::Form_Load() {
  settings.PrepareRegistry();
  if (settings.IsOn(setting::kAlwaysOnTop)) {
    window.GetOnTop().OnTopSet(form);
  } else {
    menu.mnuOnTop.SetChecked(false);
  }
  window.Minimize();
  if (platform_.system.AnotherInstanceRuns()) {
    RefuseSecondInstance();
    return;
  }
  started_ = true;
  tray.SysTrayHook();
  tray.SysTrayAdd();
  setup.GetClesAndLists();
  // Ended while a message about a data file stood open.
  if (!Running()) return;
  IgnoreFailure([this] { RestoreClipboard(); });
  RebuildMenus();
  RecordVersion();
  timerPage.message.Text13.SetText(settings.Read(setting::kMessageEntry));
  calcPage.RestoreMemory();
  settings.ReadClicksToShow();
  toolTips.MLToolTipInstall();
  toolTips.MLToolTipSetMaxWidth(kToolTipWidth);
  clipPage.Text0.SetText(clip.ClipEntries(0));
  padPage.Text101.SetText(u"");
  toDoPage.Text1.SetText(u"");
  window.poll.Start();
  showKey.Start();
  if (!settings.IsNo(setting::kStartHelp)) startHelp.Show();
}

void frmTray::RefuseSecondInstance() {
  dispatcher_.WhileWaiting([this] {
    return platform_.messageBoxes.Show(
        u"The start of Quillbox has been aborted because the program is already running.\r\n"
        u"To use Quillbox click on the icon in the system traybar.",
        BoxCode::Information, u"Quillbox already running");
  });
  form.Unload();
}

void frmTray::RestoreClipboard() {
  const SharedText newest = clip.ClipEntries(0);
  const bool empty = platform_.clipboard.Read().empty() && !platform_.clipboard.HoldsSecret();
  if (!newest.IsEmpty() && empty) platform_.clipboard.PutUnlessTaken(newest.Get());
}

void frmTray::RecordVersion() {
  const double major = settings.Read(setting::kQuillboxVMajor);
  const double minor = settings.Read(setting::kQuillboxVMinor);
  if (kMajor > major) settings.Empty(setting::kStartHelp);
  const bool storedIsNewer = major > kMajor || (major == kMajor && minor > kMinor);
  settings.Write(setting::kQuillboxPath, platform_.system.ProgramFolder());
  settings.Write(setting::kQuillboxName, platform_.system.ProgramName());
  if (storedIsNewer) return;
  settings.Write(setting::kQuillboxVMajor, kMajor);
  settings.Write(setting::kQuillboxVMinor, kMinor);
  settings.Write(setting::kQuillboxVRev, kRevision);
}

void frmTray::Form_QueryUnload(bool& cancel, CloseReason reason) {
  if (reason != CloseReason::Person) return;
  cancel = true;
  window.Minimize();
}

void frmTray::Form_Unload() {
  // A second instance must leave the running one's files and icon alone.
  if (!started_) return;
  if (settings.IsOn(setting::kAutoRefresh)) toDoPage.Command5_Click();
  SaveLists();
  toolTips.MLToolTipRemove();
  showKey.End();
  tray.SysTrayUnhook();
  tray.SysTrayDelete();
  about.Unload();
  message.Unload();
  settingsDialog.Unload();
  startHelp.Unload();
}

void frmTray::SaveLists() {
  files.AktualisiereCle3();
  files.AktualisiereCle2();
  files.AktualisiereCle1();
}

void frmTray::RebuildMenus() {
  menu.AktualisiereContextMnu();
  menu.AktualisiereContextMnu2();
}

void frmTray::OpenFind() {
  switch (static_cast<Page>(window.SSTab1.GetTab())) {
    case Page::Clip:
      return clipPage.OpenFind();
    case Page::Pad:
      return padPage.OpenFind();
    default:
      return;
  }
}

void frmTray::SysTrayMouseEventHandler() {
  RebuildMenus();
  platform_.windows.SetForeground(form);
  platform_.windows.OpenPopup(menu.mnuBase);
}

}  // namespace quillbox

#include "platform/qt/Program.h"

#include <QApplication>
#include <QSessionManager>

#include "base/Utf8.h"
#include "platform/qt/SessionPorts.h"
#include "platform/qt/ports/Help.h"
#include "platform/qt/widgets/FormAccess.h"
#include "platform/qt/widgets/ReadableStyle.h"

namespace quillbox {

namespace {

// A start on a slow clipboard doesn't wait longer to know whether there is a text on it.
constexpr int kSettleMilliseconds = 300;
// An end is not held up longer by whoever shall keep the clipboard's text.
constexpr int kHandOverMilliseconds = 1000;

}  // namespace

Program::Program(EndingSignals& signals)
    : clipboard_(ChooseClipboard(loop_)),
      dropText_(ChooseDropText(loop_)),
      views_(dispatcher_, tips_, *clipboard_, [this] { return trayIcon_.Reachable(); }),
      trayIcon_(presence_),
      windows_(dispatcher_),
      keySender_(ChooseKeySender([this] { return ToLosslessUtf8(frmTray_->settings.UserDataDir()); })),
      globalKey_(ChooseGlobalKey(loop_)),
      registry_(RegistryPlaces::FromEnvironment()),
      platform_{*clipboard_, registry_, trayIcon_, windows_, messageBoxes_, *keySender_, sound_,
                system_,     clock_,    files_,    tips_,    folding_,      *globalKey_} {
  UseFormAccess();
  UseReadableStyle();
  if (dropText_) drops_.emplace(*dropText_);
  dispatcher_.UseTimerHost(&timers_);
  dispatcher_.OnRefresh = [this] {
    timers_.WakeSleepers();
    views_.Refresh();
    FillHostMenu();
  };
  views_.Help = [this](const Form& form) { ShowHelp(form); };
  views_.MenuWithoutTray = [this] { trayIcon_.RightPress(); };
  views_.Appeared = [this] { frmTray_->timerPage.CatchUp(); };
  presence_.Changed = [this] {
    trayIcon_.Follow();
    views_.FollowTray();
  };
  clipboard_->OnLost([this] { SaveAfterLoss(); });
  files_.MakeOnDemand(system_.DataFolder());
  if (signals.Descriptor() >= 0) {
    loop_.Watch(signals.Descriptor(), [this, &signals] {
      while (signals.Take()) End(CloseReason::System);
    });
  }
  QObject::connect(qApp, &QGuiApplication::commitDataRequest, qApp, [this](QSessionManager& session) {
    // The next session starts us if the setting says so: once more would be a second start, with its message.
    session.setRestartHint(QSessionManager::RestartNever);
    End(CloseReason::System);
  });
}

Program::~Program() { dispatcher_.OnRefresh = nullptr; }

bool Program::Start() {
  frmTray_ = std::make_unique<frmTray>(dispatcher_, platform_);
  tips_.Use(frmTray_->toolTips);
  views_.Use(*frmTray_);
  trayIcon_.HostMenu = [this] {
    hostMenu_ = &windows_.MenuFor(frmTray_->menu.mnuBase);
    FillHostMenu();
    return hostMenu_->Menu();
  };
  windows_.RightPressBesideMenu = [this](const QPoint& place) { trayIcon_.RightPressAt(place); };
  frmTray_->Ended = [this] {
    messageBoxes_.CloseAll();
    QApplication::exit(0);
  };
  clipboard_->Settle(kSettleMilliseconds);
  dispatcher_.Dispatch([this] { frmTray_->form.Load(); });
  if (!frmTray_->Running()) return false;
  views_.Begin();
  keySender_->Recover();
  if (!trayIcon_.Reachable()) ShowWithoutTray();
  return true;
}

// Nobody is locked out: the start shows the window, behind the start help if that is there.
void Program::ShowWithoutTray() {
  dispatcher_.Dispatch([this] { frmTray_->form.Show(); });
  if (frmTray_->startHelp.Get()) dispatcher_.Dispatch([this] { frmTray_->startHelp.Show(); });
}

const char* Program::HelpPage(const Form& form) const {
  // In the order of the tabs.
  constexpr const char* kPages[] = {"clip.html", "pad.html", "calc.html", "timer.html", "todo.html"};
  const frmTray& program = *frmTray_;
  if (const auto* const dialog = program.settingsDialog.Get(); dialog && &form == &dialog->form)
    return "settings.html";
  if (const auto* const message = program.message.Get(); message && &form == &message->form)
    return "timer.html";
  return &form == &program.form ? kPages[program.window.SSTab1.GetTab()] : "index.html";
}

void Program::ShowHelp(const Form& form) {
  if (OpenHelp(system_.HelpFolder(), QLatin1String(HelpPage(form)))) return;
  Text text = u"The manual can't be opened: it isn't in ";
  text.append(system_.HelpFolder()).append(u", or xdg-open, which finds your browser, isn't installed.");
  dispatcher_.Dispatch([&] { frmTray_->window.MessageBox(text, BoxCode::Information, u"Quillbox Manual"); });
}

// A host measures the menu before it asks for its items, so they are always up to date.
void Program::FillHostMenu() {
  if (!hostMenu_ || !frmTray_->Running()) return;
  hostMenu_->Follow(true);
}

void Program::End(CloseReason reason) {
  dispatcher_.Dispatch([&] {
    if (frmTray_ && frmTray_->Running()) frmTray_->form.Close(reason);
  });
}

void Program::Finish() {
  End(CloseReason::System);
  clipboard_->HandOver(kHandOverMilliseconds);
}

void Program::SaveAfterLoss() {
  if (!frmTray_ || !frmTray_->Running()) return;
  dispatcher_.OnRefresh = nullptr;
  End(CloseReason::System);
}

}  // namespace quillbox

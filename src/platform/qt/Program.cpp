#include "platform/qt/Program.h"

#include <QApplication>
#include <QSessionManager>

#include "base/Utf8.h"
#include "platform/qt/SessionPorts.h"
#include "platform/qt/ports/Help.h"
#include "platform/qt/views/AboutView.h"
#include "platform/qt/views/MainView.h"
#include "platform/qt/views/MessageView.h"
#include "platform/qt/views/SettingsView.h"
#include "platform/qt/views/StartHelpView.h"
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
    : views_(dispatcher_),
      trayIcon_(presence_),
      windows_(dispatcher_),
      clipboard_(ChooseClipboard(loop_)),
      keySender_(ChooseKeySender([this] { return ToLosslessUtf8(frmTray_->settings.UserDataDir()); })),
      registry_(RegistryPlaces::FromEnvironment()),
      platform_{*clipboard_, registry_, trayIcon_, windows_, messageBoxes_, *keySender_,
                sound_,      system_,   clock_,    files_,   tips_} {
  UseFormAccess();
  UseReadableStyle();
  dispatcher_.UseTimerHost(&timers_);
  dispatcher_.OnRefresh = [this] {
    timers_.WakeSleepers();
    views_.Refresh();
    OnShown();
  };
  views_.Make = [this](Form& form) {
    std::unique_ptr<FormView> view = MakeView(form);
    if (view) view->Help = [this, &form] { OpenHelp(system_.HelpFolder(), HelpPageFor(form)); };
    return view;
  };
  // Without a tray the hidden window stands in the task bar, and must be there for that.
  views_.IsNeeded = [this](const Form& form) { return &form == &frmTray_->form && !trayIcon_.Reachable(); };
  presence_.Changed = [this] {
    trayIcon_.Follow();
    if (MainView* const main = Main()) {
      main->FollowTray();
    } else {
      views_.Refresh();
    }
  };
  clipboard_->OnLost([this] { SaveAfterLoss(); });
  files_.MakeOnDemand(system_.DataFolder());
  if (signals.Descriptor() >= 0) {
    loop_.Watch(signals.Descriptor(), [this, &signals] {
      while (signals.Take()) End(CloseReason::System);
    });
  }
  QObject::connect(qApp, &QGuiApplication::commitDataRequest, qApp,
                   [this](QSessionManager&) { End(CloseReason::System); });
}

Program::~Program() {
  dispatcher_.OnRefresh = nullptr;
  views_.Make = nullptr;
}

bool Program::Start() {
  frmTray_ = std::make_unique<frmTray>(dispatcher_, platform_);
  tips_.Use(frmTray_->toolTips);
  trayIcon_.HostMenu = [this] {
    TrayMenuView& menu = windows_.MenuFor(frmTray_->menu.mnuBase);
    menu.BeforeHostOpens = [this] {
      frmTray_->menu.AktualisiereContextMnu();
      frmTray_->menu.AktualisiereContextMnu2();
    };
    return menu.Menu();
  };
  frmTray_->Ended = [this] {
    messageBoxes_.CloseAll();
    QApplication::exit(0);
  };
  clipboard_->Settle(kSettleMilliseconds);
  dispatcher_.Dispatch([this] { frmTray_->form.Load(); });
  if (!frmTray_->Running()) return false;
  keySender_->Recover();
  // Nobody is locked out: without a tray the start shows the window.
  if (!trayIcon_.Reachable()) dispatcher_.Dispatch([this] { frmTray_->form.Show(); });
  return true;
}

MainView* Program::Main() const {
  return frmTray_ ? static_cast<MainView*>(views_.Of(frmTray_->form)) : nullptr;
}

std::unique_ptr<FormView> Program::MakeView(Form& form) {
  frmTray& program = *frmTray_;
  if (&form == &program.form) {
    return std::make_unique<MainView>(program, tips_, [this] { return trayIcon_.Reachable(); });
  }
  if (auto* const dialog = program.settingsDialog.Get(); dialog && &form == &dialog->form) {
    return MakeSettingsView(*dialog, tips_);
  }
  if (auto* const dialog = program.about.Get(); dialog && &form == &dialog->form)
    return MakeAboutView(*dialog, tips_);
  if (auto* const dialog = program.startHelp.Get(); dialog && &form == &dialog->form) {
    return MakeStartHelpView(*dialog, tips_);
  }
  if (auto* const dialog = program.message.Get(); dialog && &form == &dialog->form) {
    return MakeMessageView(*dialog, tips_);
  }
  return nullptr;
}

void Program::OnShown() {
  if (!frmTray_) return;
  const Form& form = frmTray_->form;
  const bool appeared = form.GetVisible() && !mainShown_;
  mainShown_ = form.GetVisible();
  if (appeared) frmTray_->timerPage.CatchUp();
  // A window that appears only because a dialog does stays behind that.
  if (std::exchange(mainShows_, form.Shows()) == form.Shows() || !form.GetVisible()) return;
  if (MainView* const main = Main()) main->BringUp();
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

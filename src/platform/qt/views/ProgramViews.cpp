#include "platform/qt/views/ProgramViews.h"

#include <utility>

#include "core/app/frmTray.h"
#include "platform/qt/views/AboutView.h"
#include "platform/qt/views/MainView.h"
#include "platform/qt/views/MessageView.h"
#include "platform/qt/views/SettingsView.h"
#include "platform/qt/views/StartHelpView.h"

namespace quillbox {

ProgramViews::ProgramViews(Dispatcher& dispatcher, QtTips& tips, Clipboard& clipboard,
                           std::function<bool()> trayReachable)
    : host_(dispatcher), fields_(clipboard), tools_{tips, fields_}, trayReachable_(std::move(trayReachable)) {
  host_.Make = [this](Form& form) {
    std::unique_ptr<FormView> view = Make(form);
    if (view) {
      view->Help = [this, &form] {
        if (Help) Help(form);
      };
    }
    return view;
  };
  // Without a tray the hidden window stands in the task bar, and must be there for that; but not behind what
  // is said at the start, when the program may be the second one.
  host_.IsNeeded = [this](const Form& form) {
    return begun_ && &form == &program_->form && !trayReachable_();
  };
}

std::unique_ptr<FormView> ProgramViews::Make(Form& form) {
  if (!program_) return nullptr;
  if (&form == &program_->form) {
    auto view = std::make_unique<MainView>(*program_, tools_, trayReachable_);
    view->MenuWithoutTray = MenuWithoutTray;
    return view;
  }
  if (auto* const dialog = program_->settingsDialog.Get(); dialog && &form == &dialog->form) {
    return MakeSettingsView(*dialog, tools_);
  }
  if (auto* const dialog = program_->about.Get(); dialog && &form == &dialog->form) {
    return MakeAboutView(*dialog, tools_);
  }
  if (auto* const dialog = program_->startHelp.Get(); dialog && &form == &dialog->form) {
    return MakeStartHelpView(*dialog, tools_);
  }
  if (auto* const dialog = program_->message.Get(); dialog && &form == &dialog->form) {
    return MakeMessageView(*dialog, tools_);
  }
  return nullptr;
}

MainView* ProgramViews::Main() const {
  return program_ ? static_cast<MainView*>(host_.Of(program_->form)) : nullptr;
}

void ProgramViews::Refresh() {
  host_.Refresh();
  if (!program_) return;
  const Form& form = program_->form;
  const bool appeared = form.GetVisible() && !mainShown_;
  mainShown_ = form.GetVisible();
  if (appeared && Appeared) Appeared();
  // A window that appears only because a dialog does stays behind that.
  if (std::exchange(mainShows_, form.Shows()) == form.Shows() || !form.GetVisible()) return;
  if (MainView* const main = Main()) main->BringUp();
}

void ProgramViews::FollowTray() {
  if (MainView* const main = Main()) {
    main->FollowTray();
  } else {
    host_.Refresh();
  }
}

}  // namespace quillbox

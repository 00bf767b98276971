#pragma once

#include <functional>
#include <memory>

#include "platform/qt/views/ViewHost.h"
#include "platform/qt/widgets/FieldClipboard.h"

namespace quillbox {

class MainView;
class frmTray;

// The views of all forms of the program: which form has which, and when the main window comes up.
class ProgramViews {
 public:
  // `trayReachable`: see MainView.
  ProgramViews(Dispatcher& dispatcher, QtTips& tips, Clipboard& clipboard,
               std::function<bool()> trayReachable);

  // From now on its forms are shown. It outlives the views.
  void Use(frmTray& program) { program_ = &program; }
  // The forms keep the sizes that they have without a window.
  void KeepSizes() { tools_.tellSizes = false; }
  // It has started: from now on its window may stand in the task bar.
  void Begin() { begun_ = true; }
  // The person asks for help in the window of a form.
  std::function<void(const Form&)> Help;
  // The person asks for the icon's menu while there is no icon.
  std::function<void()> MenuWithoutTray;
  // The main window has appeared.
  std::function<void()> Appeared;

  // Draws what has changed, and brings the main window up if somebody asked for it.
  void Refresh();
  // A tray has come or gone.
  void FollowTray();
  // Null while the form has no view.
  FormView* Of(const Form& form) const { return host_.Of(form); }

 private:
  std::unique_ptr<FormView> Make(Form& form);
  MainView* Main() const;

  ViewHost host_;
  FieldClipboard fields_;
  ViewTools tools_;
  std::function<bool()> trayReachable_;
  frmTray* program_ = nullptr;
  bool begun_ = false;
  bool mainShown_ = false;
  unsigned mainShows_ = 0;
};

}  // namespace quillbox

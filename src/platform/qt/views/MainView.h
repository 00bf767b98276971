#pragma once

#include <array>
#include <functional>

#include "core/app/frmTray.h"
#include "platform/qt/widgets/FormView.h"

class QStackedWidget;
class QTabBar;

namespace quillbox {

// The main window: the tabs, a page for each that is made when it is first in front, and the row of buttons.
class MainView : public FormView {
 public:
  // `trayReachable`: whether a person can bring the window back through the tray. While that isn't so the
  // window goes to the task bar instead of hiding.
  MainView(frmTray& program, const ViewTools& tools, std::function<bool()> trayReachable);

  // The person asks for the icon's menu where there is no icon: with the right button, in the window.
  std::function<void()> MenuWithoutTray;

  // A tray has come or gone: a window that is away moves between tray and task bar.
  void FollowTray();
  // The person asked for the window.
  void BringUp();

 protected:
  void AppearOrGo() override;
  void ShowWindow() override;
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void ShowPage(int page);
  QWidget* MakePage(int page);
  // The window has come back from the task bar, if it has.
  void FollowReturn();
  // A page in front needs more room than any before.
  void Grow();

  frmTray& program_;
  std::function<bool()> trayReachable_;
  QTabBar* tabs_ = nullptr;
  QStackedWidget* stack_ = nullptr;
  std::array<QWidget*, 3> buttons_{};
  std::array<bool, 5> made_{};
  bool inTaskbar_ = false;
  bool seen_ = false;  // it is on the screen since it last was to appear
};

}  // namespace quillbox

#include "platform/qt/ports/QtWindows.h"

#include <QApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include "platform/forms/Form.h"

namespace quillbox {

PixelSize QtWindows::ScreenSize() {
  const QScreen* const screen = QGuiApplication::primaryScreen();
  return screen ? PixelSize{screen->geometry().width(), screen->geometry().height()} : PixelSize{1024, 768};
}

void QtWindows::SetTopmost(Form&, bool, const PixelRect&) {
  // The form holds the state; its view follows it as it follows all others, when the handler has ended.
}

bool QtWindows::IsForeground(const Form& form) {
  // Not QApplication::activeWindow: that of a window which has gone and comes back at once stays empty.
  const QWindow* const focused = QGuiApplication::focusWindow();
  for (const QWidget* window : QApplication::topLevelWidgets()) {
    // Windows bear the names of their forms.
    if (focused && window->windowHandle() == focused)
      return window->objectName() == QString::fromStdString(form.Name());
  }
  return false;
}

TrayMenuView& QtWindows::MenuFor(MenuItem& root) {
  if (!menu_) {
    menu_ = std::make_unique<TrayMenuView>(dispatcher_, root);
    menu_->RightPressBeside = RightPressBesideMenu;
  }
  return *menu_;
}

void QtWindows::OpenPopup(MenuItem& root) { MenuFor(root).OpenAt(QCursor::pos()); }

}  // namespace quillbox

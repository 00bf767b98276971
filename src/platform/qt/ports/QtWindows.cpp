#include "platform/qt/ports/QtWindows.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace quillbox {

PixelSize QtWindows::ScreenSize() {
  const QScreen* const screen = QGuiApplication::primaryScreen();
  return screen ? PixelSize{screen->geometry().width(), screen->geometry().height()} : PixelSize{1024, 768};
}

void QtWindows::SetTopmost(Form&, bool, const PixelRect&) {
  // The form holds the state; its view follows it as it follows all others, when the handler has ended.
}

TrayMenuView& QtWindows::MenuFor(MenuItem& root) {
  if (!menu_) menu_ = std::make_unique<TrayMenuView>(dispatcher_, root);
  return *menu_;
}

void QtWindows::OpenPopup(MenuItem& root) { MenuFor(root).OpenAt(QCursor::pos()); }

}  // namespace quillbox

#include "platform/qt/ports/QtMessageBoxes.h"

#include <QApplication>
#include <QEventLoop>
#include <QMessageBox>
#include <QWindow>
#include <algorithm>

#include "platform/qt/base/Icons.h"
#include "platform/qt/base/QtText.h"
#include "platform/qt/base/WindowHints.h"

namespace quillbox {

namespace {

QMessageBox::Icon IconOf(BoxCode code) {
  switch (code) {
    case BoxCode::Stop:
      return QMessageBox::Critical;
    case BoxCode::Question:
      return QMessageBox::Question;
    default:
      return QMessageBox::Information;
  }
}

// What a person does to a window.
bool IsInput(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::DragEnter:
    case QEvent::Drop:
    case QEvent::Close:
      return true;
    default:
      return false;
  }
}

// The icon is a window of its own in trays of the older kind; Qt names it so.
bool IsTrayIcon(const QWindow& window) {
  return window.objectName().startsWith(QStringLiteral("QSystemTrayIconSys"));
}

}  // namespace

QMessageBox* QtMessageBoxes::Front() const {
  for (auto box = open_.rbegin(); box != open_.rend(); ++box)
    if (*box) return *box;
  return nullptr;
}

bool QtMessageBoxes::eventFilter(QObject* watched, QEvent* event) {
  if (!watched->isWindowType() || !IsInput(event->type())) return false;
  const auto& window = *static_cast<QWindow*>(watched);
  QMessageBox* const box = Front();
  if (!box || &window == box->windowHandle() || window.type() == Qt::Popup || IsTrayIcon(window))
    return false;
  event->ignore();
  box->raise();
  return true;
}

BoxAnswer QtMessageBoxes::Show(const Text& text, BoxCode code, const Text& title) {
  QString shown = ToQt(text);
  shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"))
      .replace(QStringLiteral("\n\r"), QStringLiteral("\n"));
  const bool asks = Asks(code);
  // A message that is open already is brought up again instead of being stacked upon itself.
  for (const QPointer<QMessageBox>& other : open_) {
    if (!asks && other && other->text() == shown) {
      other->raise();
      return BoxAnswer::Ok;
    }
  }
  QMessageBox box(IconOf(code), ToQt(title), shown,
                  asks ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok);
  box.setTextFormat(Qt::PlainText);
  box.setTextInteractionFlags(Qt::TextSelectableByMouse);
  box.setWindowIcon(WindowIcon());
  box.setWindowFlag(Qt::WindowStaysOnTopHint);
  if (asks) box.setEscapeButton(QMessageBox::No);
  const QPointer<QWidget> from = QApplication::activeWindow();
  if (open_.empty()) qApp->installEventFilter(this);
  open_.emplace_back(&box);
  QEventLoop answered;
  connect(&box, &QMessageBox::finished, &answered, &QEventLoop::quit);
  box.setModal(false);
  box.show();
  answered.exec();
  // The focus goes back to where the question came from; not every window manager sees to that.
  if (from && from->isVisible()) ActivateWindow(*from);
  open_.erase(
      std::remove_if(open_.begin(), open_.end(), [&](const auto& other) { return !other || other == &box; }),
      open_.end());
  if (open_.empty()) qApp->removeEventFilter(this);
  return !asks ? BoxAnswer::Ok : box.result() == QMessageBox::Yes ? BoxAnswer::Yes : BoxAnswer::No;
}

void QtMessageBoxes::CloseAll() {
  for (const QPointer<QMessageBox>& box : open_) {
    if (box) box->reject();
  }
}

}  // namespace quillbox

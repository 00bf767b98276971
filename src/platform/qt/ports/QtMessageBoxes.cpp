#include "platform/qt/ports/QtMessageBoxes.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
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

}  // namespace

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
  open_.emplace_back(&box);
  const int pressed = box.exec();
  // The focus goes back to where the question came from; not every window manager sees to that.
  if (from && from->isVisible()) ActivateWindow(*from);
  open_.erase(
      std::remove_if(open_.begin(), open_.end(), [&](const auto& other) { return !other || other == &box; }),
      open_.end());
  return !asks ? BoxAnswer::Ok : pressed == QMessageBox::Yes ? BoxAnswer::Yes : BoxAnswer::No;
}

void QtMessageBoxes::CloseAll() {
  for (const QPointer<QMessageBox>& box : open_) {
    if (box) box->reject();
  }
}

}  // namespace quillbox

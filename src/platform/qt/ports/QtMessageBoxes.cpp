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

constexpr int kOk = 1;
constexpr int kYes = 6;
constexpr int kNo = 7;
constexpr int kYesNo = 4;

QMessageBox::Icon IconOf(int code) {
  switch (code & 0x70) {
    case 16:
      return QMessageBox::Critical;
    case 32:
      return QMessageBox::Question;
    case 48:
      return QMessageBox::Warning;
    default:
      return QMessageBox::Information;
  }
}

}  // namespace

int QtMessageBoxes::Show(const Text& text, int code, const Text& title) {
  QString shown = ToQt(text);
  shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"))
      .replace(QStringLiteral("\n\r"), QStringLiteral("\n"));
  const bool asks = (code & 7) == kYesNo;
  // A message that is open already is brought up again instead of being stacked upon itself.
  for (const QPointer<QMessageBox>& other : open_) {
    if (!asks && other && other->text() == shown) {
      other->raise();
      return kOk;
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
  return !asks ? kOk : pressed == QMessageBox::Yes ? kYes : kNo;
}

void QtMessageBoxes::CloseAll() {
  for (const QPointer<QMessageBox>& box : open_) {
    if (box) box->reject();
  }
}

}  // namespace quillbox

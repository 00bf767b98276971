#include "console/window/Hand.h"

#include <QtTest/qtestkeyboard.h>
#include <QtTest/qtestmouse.h>

#include <QApplication>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QPointer>
#include <QWidget>
#include <QWindow>

namespace quillbox::hand {

namespace {

QWindow* WindowOf(QWidget& widget) { return widget.window()->windowHandle(); }

QPoint InWindow(QWidget& widget, const QPoint& place) { return widget.mapTo(widget.window(), place); }

Qt::Key QtKey(int code) {
  switch (code) {
    case keys::kBackspace:
      return Qt::Key_Backspace;
    case keys::kEnter:
      return Qt::Key_Return;
    case keys::kEscape:
      return Qt::Key_Escape;
    case keys::kSpace:
      return Qt::Key_Space;
    case keys::kPageUp:
      return Qt::Key_PageUp;
    case keys::kPageDown:
      return Qt::Key_PageDown;
    case keys::kEnd:
      return Qt::Key_End;
    case keys::kHome:
      return Qt::Key_Home;
    case keys::kLeft:
      return Qt::Key_Left;
    case keys::kUp:
      return Qt::Key_Up;
    case keys::kRight:
      return Qt::Key_Right;
    case keys::kDown:
      return Qt::Key_Down;
    default:
      return Qt::Key_Delete;
  }
}

QString TextOf(const KeyEvent& key) {
  const bool brings = key.code == keys::kBackspace || key.code == keys::kEnter || key.code == keys::kEscape ||
                      key.code == keys::kSpace;
  return brings ? QString(QChar(static_cast<char16_t>(key.code))) : QString();
}

}  // namespace

void Click(QWidget& widget, const QPoint& place, Qt::KeyboardModifiers held) {
  QTest::mouseClick(WindowOf(widget), Qt::LeftButton, held, InWindow(widget, place));
}

void DoubleClick(QWidget& widget, const QPoint& place) {
  QTest::mouseDClick(WindowOf(widget), Qt::LeftButton, {}, InWindow(widget, place));
}

void Press(QWidget& widget, const QPoint& place) {
  QTest::mousePress(WindowOf(widget), Qt::LeftButton, {}, InWindow(widget, place));
}

void MoveTo(QWidget& widget, const QPoint& place) {
  QTest::mouseMove(WindowOf(widget), InWindow(widget, place));
}

void Release(QWidget& widget, const QPoint& place) {
  QTest::mouseRelease(WindowOf(widget), Qt::LeftButton, {}, InWindow(widget, place));
}

void Key(QWidget& widget, const KeyEvent& key) {
  Qt::KeyboardModifiers held;
  held.setFlag(Qt::ControlModifier, key.ctrl);
  held.setFlag(Qt::ShiftModifier, key.shift);
  held.setFlag(Qt::AltModifier, key.alt);
  QTest::sendKeyEvent(QTest::Click, WindowOf(widget), QtKey(key.code), TextOf(key), held);
}

void Character(QWidget& widget, const QString& character) {
  const QChar unit = character.front();
  const bool onKey = unit.isSurrogate() ? character.size() == 2 : unit.isPrint();
  if (onKey) {
    QTest::sendKeyEvent(QTest::Click, WindowOf(widget), Qt::Key_unknown, character, {});
    return;
  }
  // An input method brings what no key does.
  QInputMethodEvent event;
  event.setCommitString(character);
  QWidget* const focused = widget.window()->focusWidget();
  if (focused) QCoreApplication::sendEvent(focused, &event);
}

bool Drop(QWidget& widget, const QPoint& place, QMimeData& data) {
  const QPointer<QWidget> target(&widget);
  QDragEnterEvent enter(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
  QApplication::sendEvent(&widget, &enter);
  if (!target || !enter.isAccepted()) return false;
  QDragMoveEvent move(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
  move.setDropAction(enter.dropAction());
  move.accept();
  QApplication::sendEvent(&widget, &move);
  if (!target || !move.isAccepted()) return false;
  QDropEvent drop(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
  QApplication::sendEvent(&widget, &drop);
  return true;
}

void Rest() {
  for (int round = 0; round < 2; ++round) {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
}

}  // namespace quillbox::hand

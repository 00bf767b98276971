#pragma once

#include <QtTest/qtestkeyboard.h>
#include <QtTest/qtestmouse.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeySequence>
#include <QMimeData>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <map>

#include "console/Protocol.h"
#include "platform/qt/base/QtText.h"

// Mouse, keys and drops as Qt gets them from a window system. Places are in the widget's pixels.
namespace quillbox::hand {

inline QWindow* WindowOf(const QWidget& widget) { return widget.window()->windowHandle(); }
inline QPoint InWindow(const QWidget& widget, const QPoint& place) {
  return widget.mapTo(widget.window(), place);
}

inline void Click(QWidget& widget, const QPoint& place, Qt::KeyboardModifiers held = {}) {
  QTest::mouseClick(WindowOf(widget), Qt::LeftButton, held, InWindow(widget, place));
}
inline void DoubleClick(QWidget& widget, const QPoint& place) {
  QTest::mouseDClick(WindowOf(widget), Qt::LeftButton, {}, InWindow(widget, place));
}

// Keys go to whatever has the focus in the widget's window.
inline void Key(QWidget& widget, const KeyEvent& key) {
  static const std::map<int, Qt::Key> kKeys{{keys::kBackspace, Qt::Key_Backspace},
                                            {keys::kEnter, Qt::Key_Return},
                                            {keys::kEscape, Qt::Key_Escape},
                                            {keys::kSpace, Qt::Key_Space},
                                            {keys::kPageUp, Qt::Key_PageUp},
                                            {keys::kPageDown, Qt::Key_PageDown},
                                            {keys::kEnd, Qt::Key_End},
                                            {keys::kHome, Qt::Key_Home},
                                            {keys::kLeft, Qt::Key_Left},
                                            {keys::kUp, Qt::Key_Up},
                                            {keys::kRight, Qt::Key_Right},
                                            {keys::kDown, Qt::Key_Down},
                                            {keys::kDelete, Qt::Key_Delete}};
  Qt::KeyboardModifiers held;
  held.setFlag(Qt::ControlModifier, key.ctrl);
  held.setFlag(Qt::ShiftModifier, key.shift);
  held.setFlag(Qt::AltModifier, key.alt);
  const bool bringsText = key.code < keys::kPageUp;
  const QString text = bringsText ? QString(QChar(static_cast<char16_t>(key.code))) : QString();
  QTest::sendKeyEvent(QTest::Click, WindowOf(widget), kKeys.at(key.code), text, held);
}
inline void Combination(QWidget& widget, const KeyCombination& key) {
  // Qt writes combinations as we do, but for two names.
  const QString name = ToQt(FormatCombination(key)).replace(QStringLiteral("Page"), QStringLiteral("Pg"));
  const QKeyCombination pressed = QKeySequence(name, QKeySequence::PortableText)[0];
  QTest::sendKeyEvent(QTest::Click, WindowOf(widget), pressed.key(), QString(), pressed.keyboardModifiers());
}
inline void Character(QWidget& widget, const QString& character) {
  const QChar unit = character.front();
  if (unit.isSurrogate() ? character.size() == 2 : unit.isPrint())
    return QTest::sendKeyEvent(QTest::Click, WindowOf(widget), Qt::Key_unknown, character, {});
  // An input method brings what no key does.
  QInputMethodEvent event;
  event.setCommitString(character);
  if (QWidget* const focused = widget.window()->focusWidget()) QCoreApplication::sendEvent(focused, &event);
}

// Dragged from another program to the place and let go there. False if it isn't welcome.
inline bool Drop(QWidget& widget, const QPoint& place, QMimeData& data) {
  constexpr Qt::DropActions kActions = Qt::CopyAction | Qt::MoveAction;
  const QPointer<QWidget> target(&widget);
  const auto isWelcome = [&](QDropEvent& event) {
    QApplication::sendEvent(&widget, &event);
    return target && event.isAccepted();
  };
  QDragEnterEvent enter(place, kActions, &data, Qt::LeftButton, {});
  if (!isWelcome(enter)) return false;
  QDragMoveEvent move(place, kActions, &data, Qt::LeftButton, {});
  move.setDropAction(enter.dropAction());
  move.accept();
  if (!isWelcome(move)) return false;
  QDropEvent drop(place, kActions, &data, Qt::LeftButton, {});
  QApplication::sendEvent(&widget, &drop);
  return true;
}

// Everything that waits in Qt is done.
inline void Rest() {
  for (int round = 0; round < 2; ++round) {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
}

// What gets the mouse of a widget.
inline QWidget& Surface(QWidget& widget) {
  auto* const area = qobject_cast<QAbstractScrollArea*>(&widget);
  return area ? *area->viewport() : widget;
}
// A place where the widget itself is hit, and no part of it or other widget. ConsoleError if there is none.
inline QPoint FreePlace(const QWidget& widget, bool atItsLeft = false) {
  const int right = widget.width() - 1;
  const int bottom = widget.height() - 1;
  const QPoint middle(right / 2, bottom / 2);
  const QPoint left(std::min(8, right), bottom / 2);
  const QPoint places[] = {atItsLeft ? left : middle, left,   {right / 2, 2},
                           {right - 3, bottom / 2},   {2, 2}, {1, bottom}};
  for (const QPoint& place : places) {
    if (widget.window()->childAt(InWindow(widget, place)) == &widget) return place;
  }
  throw ConsoleError("another widget covers it");
}

// The middle of a row, scrolled into view.
inline QPoint PlaceOfRow(QAbstractItemView& view, int row) {
  const QModelIndex index = view.model()->index(row, 0);
  view.scrollTo(index);
  return view.visualRect(index).center();
}
// Below the last row. ConsoleError if rows stand everywhere.
inline QPoint PlaceBelowRows(QAbstractItemView& view) {
  view.scrollToBottom();
  const QPoint place(view.viewport()->width() / 2, view.viewport()->height() - 2);
  return view.indexAt(place).isValid() ? throw ConsoleError("there is no place below the rows") : place;
}
// Begins a drag on a row; its text. Nothing is dropped.
inline Text DragOut(QAbstractItemView& view, int row) {
  Text text;
  QWindow* const window = WindowOf(view);
  const QPoint place = InWindow(*view.viewport(), PlaceOfRow(view, row));
  QTest::mousePress(window, Qt::LeftButton, {}, place);
  // A drag waits for its end in a loop of its own.
  QTimer::singleShot(0, &view, [&] {
    if (const auto* const drag = view.findChild<QDrag*>()) text = FromQt(drag->mimeData()->text());
    QDrag::cancel();
  });
  QTest::mouseMove(window, place + QPoint(2 * QApplication::startDragDistance(), 0));
  QTest::mouseRelease(window, Qt::LeftButton, {}, place);
  return text;
}

}  // namespace quillbox::hand

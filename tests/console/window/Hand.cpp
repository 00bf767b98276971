#include "console/window/Hand.h"

#include <QtTest/qtestkeyboard.h>
#include <QtTest/qtestmouse.h>

#include <QAbstractItemView>
#include <QAbstractScrollArea>
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

namespace quillbox::hand {

namespace {

QWindow* WindowOf(QWidget& widget) { return widget.window()->windowHandle(); }

QPoint InWindow(QWidget& widget, const QPoint& place) { return widget.mapTo(widget.window(), place); }

Qt::Key QtKey(int code) {
  static const std::map<int, Qt::Key> kKeys{
      {keys::kBackspace, Qt::Key_Backspace},
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
      {keys::kDelete, Qt::Key_Delete},
  };
  return kKeys.at(code);
}

// The text that the key brings with it.
QString TextOf(int code) {
  return code < keys::kPageUp ? QString(QChar(static_cast<char16_t>(code))) : QString();
}

Qt::KeyboardModifiers Held(bool control, bool shift, bool alt, bool meta) {
  Qt::KeyboardModifiers held;
  held.setFlag(Qt::ControlModifier, control);
  held.setFlag(Qt::ShiftModifier, shift);
  held.setFlag(Qt::AltModifier, alt);
  held.setFlag(Qt::MetaModifier, meta);
  return held;
}

}  // namespace

void Click(QWidget& widget, const QPoint& place, Qt::KeyboardModifiers held) {
  QTest::mouseClick(WindowOf(widget), Qt::LeftButton, held, InWindow(widget, place));
}

void DoubleClick(QWidget& widget, const QPoint& place) {
  QTest::mouseDClick(WindowOf(widget), Qt::LeftButton, {}, InWindow(widget, place));
}

void Key(QWidget& widget, const KeyEvent& key) {
  QTest::sendKeyEvent(QTest::Click, WindowOf(widget), QtKey(key.code), TextOf(key.code),
                      Held(key.ctrl, key.shift, key.alt, false));
}

void Combination(QWidget& widget, const KeyCombination& key) {
  // Qt writes combinations as we do, but for two names.
  QString name = ToQt(FormatCombination(key));
  name.replace(QStringLiteral("PageUp"), QStringLiteral("PgUp"))
      .replace(QStringLiteral("PageDown"), QStringLiteral("PgDown"));
  const auto has = [&key](int each) { return (key.modifiers & each) != 0; };
  QTest::sendKeyEvent(
      QTest::Click, WindowOf(widget), QKeySequence(name, QKeySequence::PortableText)[0].key(), QString(),
      Held(has(modifier::kControl), has(modifier::kShift), has(modifier::kAlt), has(modifier::kMeta)));
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
  constexpr Qt::DropActions kActions = Qt::CopyAction | Qt::MoveAction;
  const QPointer<QWidget> target(&widget);
  QDragEnterEvent enter(place, kActions, &data, Qt::LeftButton, {});
  QApplication::sendEvent(&widget, &enter);
  if (!target || !enter.isAccepted()) return false;
  QDragMoveEvent move(place, kActions, &data, Qt::LeftButton, {});
  move.setDropAction(enter.dropAction());
  move.accept();
  QApplication::sendEvent(&widget, &move);
  if (!target || !move.isAccepted()) return false;
  QDropEvent drop(place, kActions, &data, Qt::LeftButton, {});
  QApplication::sendEvent(&widget, &drop);
  return true;
}

void Rest() {
  for (int round = 0; round < 2; ++round) {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
}

QWidget& Surface(QWidget& widget) {
  auto* const area = qobject_cast<QAbstractScrollArea*>(&widget);
  return area ? *area->viewport() : widget;
}

QPoint FreePlace(QWidget& widget, bool atItsLeft) {
  const int right = widget.width() - 1;
  const int bottom = widget.height() - 1;
  const QPoint middle(right / 2, bottom / 2);
  const QPoint left(std::min(8, right), bottom / 2);
  const QPoint places[] = {atItsLeft ? left : middle, left,   {right / 2, 2},
                           {right - 3, bottom / 2},   {2, 2}, {1, bottom}};
  QWidget& window = *widget.window();
  for (const QPoint& place : places) {
    if (window.childAt(widget.mapTo(&window, place)) == &widget) return place;
  }
  throw ConsoleError("another widget covers it");
}

QPoint PlaceOfRow(QAbstractItemView& view, int row) {
  const QModelIndex index = view.model()->index(row, 0);
  view.scrollTo(index);
  return view.visualRect(index).center();
}

QPoint PlaceBelowRows(QAbstractItemView& view) {
  view.scrollToBottom();
  const QPoint place(view.viewport()->width() / 2, view.viewport()->height() - 2);
  if (view.indexAt(place).isValid()) throw ConsoleError("there is no place below the rows");
  return place;
}

Text DragOut(QAbstractItemView& view, int row) {
  QWidget& surface = *view.viewport();
  const QPoint place = PlaceOfRow(view, row);
  Text text;
  QWindow* const window = WindowOf(surface);
  QTest::mousePress(window, Qt::LeftButton, {}, InWindow(surface, place));
  // A drag waits for its end in a loop of its own.
  QTimer::singleShot(0, &view, [&] {
    if (const auto* const drag = view.findChild<QDrag*>()) text = FromQt(drag->mimeData()->text());
    QDrag::cancel();
  });
  const QPoint away(2 * QApplication::startDragDistance(), 0);
  QTest::mouseMove(window, InWindow(surface, place + away));
  QTest::mouseRelease(window, Qt::LeftButton, {}, InWindow(surface, place));
  return text;
}

}  // namespace quillbox::hand

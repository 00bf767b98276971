#include "console/window/Widgets.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QDrag>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QTimer>
#include <algorithm>

#include "console/ConsoleError.h"
#include "console/window/Hand.h"
#include "platform/qt/base/QtText.h"
#include "platform/qt/widgets/AreaField.h"

namespace quillbox::hand {

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
  Press(surface, place);
  // A drag waits for its end in a loop of its own.
  QTimer::singleShot(0, &view, [&] {
    if (const auto* const drag = view.findChild<QDrag*>()) text = FromQt(drag->mimeData()->text());
    QDrag::cancel();
  });
  MoveTo(surface, place + QPoint(2 * QApplication::startDragDistance(), 0));
  Release(surface, place);
  return text;
}

void PasteOverAll(QWidget& field, const Text& text) {
  if (auto* const line = qobject_cast<QLineEdit*>(&field)) {
    line->selectAll();
    line->insert(ToQt(text));
  } else if (auto* const area = dynamic_cast<AreaField*>(&field)) {
    area->selectAll();
    area->PutIn(text);
  }
}

void Slide(QWidget& bar, int value) {
  auto& slider = dynamic_cast<QAbstractSlider&>(bar);
  slider.setSliderDown(true);
  slider.setSliderPosition(value);
  slider.setSliderDown(false);
}

bool PickFrom(QMenu& menu, const QString& name) {
  for (QAction* action : menu.actions()) {
    if (action->menu() && PickFrom(*action->menu(), name)) return true;
    if (action->objectName() != name) continue;
    if (menu.isVisible() && action->isVisible()) {
      menu.setActiveAction(action);
      Key(menu, KeyEvent{keys::kEnter});
    } else {
      action->trigger();
    }
    return true;
  }
  return false;
}

}  // namespace quillbox::hand

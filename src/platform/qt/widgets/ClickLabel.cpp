#include "platform/qt/widgets/ClickLabel.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <utility>

#include "platform/forms/Control.h"

namespace quillbox {

ClickLabel::ClickLabel(QWidget* parent, Control& control) : QLabel(parent), control_(control) {
  setTextFormat(Qt::PlainText);
  if (!control.Click && !control.DblClick) return;
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::TabFocus);
}

void ClickLabel::mousePressEvent(QMouseEvent* event) { pressed_ = event->button() == Qt::LeftButton; }

// A click acts when it is released: what comes up under the mouse then gets no press of it.
void ClickLabel::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !std::exchange(pressed_, false)) return;
  if (rect().contains(event->position().toPoint())) control_.PersonClick();
}

// The second press of a double click means nothing where one click is all there is.
void ClickLabel::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && control_.DblClick) control_.PersonDoubleClick();
}

void ClickLabel::keyPressEvent(QKeyEvent* event) {
  const bool presses =
      event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
  if (!presses || focusPolicy() == Qt::NoFocus) return QLabel::keyPressEvent(event);
  if (control_.DblClick) {
    control_.PersonDoubleClick();
  } else {
    control_.PersonClick();
  }
}

void ClickLabel::paintEvent(QPaintEvent* event) {
  QLabel::paintEvent(event);
  if (!hasFocus()) return;
  QPainter painter(this);
  QStyleOptionFocusRect option;
  option.initFrom(this);
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

}  // namespace quillbox

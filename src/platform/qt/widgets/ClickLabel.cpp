#include "platform/qt/widgets/ClickLabel.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

#include "platform/forms/Control.h"

namespace quillbox {

ClickLabel::ClickLabel(QWidget* parent, Control& control) : QLabel(parent), control_(control) {
  setTextFormat(Qt::PlainText);
  if (!control.Click && !control.DblClick) return;
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::TabFocus);
}

void ClickLabel::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) control_.PersonClick();
}

void ClickLabel::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  if (control_.DblClick) {
    control_.PersonDoubleClick();
  } else {
    control_.PersonClick();
  }
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

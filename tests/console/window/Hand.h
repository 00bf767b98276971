#pragma once

#include <QPoint>
#include <QString>

#include "platform/forms/Keys.h"

class QMimeData;
class QWidget;

// Mouse, keys and drops as Qt gets them from a window system. Places are in the widget's pixels.
namespace quillbox::hand {

void Click(QWidget& widget, const QPoint& place, Qt::KeyboardModifiers held = {});
void DoubleClick(QWidget& widget, const QPoint& place);
void Press(QWidget& widget, const QPoint& place);
void MoveTo(QWidget& widget, const QPoint& place);  // with the button held
void Release(QWidget& widget, const QPoint& place);

// To whatever has the focus in the widget's window.
void Key(QWidget& widget, const KeyEvent& key);
void Character(QWidget& widget, const QString& character);

// Dragged from another program to the place and let go there. False if it isn't welcome.
bool Drop(QWidget& widget, const QPoint& place, QMimeData& data);

// Everything that waits in Qt is done.
void Rest();

}  // namespace quillbox::hand

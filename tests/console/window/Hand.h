#pragma once

#include <QPoint>
#include <QString>

#include "base/Text.h"
#include "platform/forms/Keys.h"
#include "platform/ports/KeyCombination.h"

class QAbstractItemView;
class QMimeData;
class QWidget;

// Mouse, keys and drops as Qt gets them from a window system. Places are in the widget's pixels.
namespace quillbox::hand {

void Click(QWidget& widget, const QPoint& place, Qt::KeyboardModifiers held = {});
void DoubleClick(QWidget& widget, const QPoint& place);

// To whatever has the focus in the widget's window.
void Key(QWidget& widget, const KeyEvent& key);
void Combination(QWidget& widget, const KeyCombination& key);
void Character(QWidget& widget, const QString& character);

// Dragged from another program to the place and let go there. False if it isn't welcome.
bool Drop(QWidget& widget, const QPoint& place, QMimeData& data);

// Everything that waits in Qt is done.
void Rest();

// What gets the mouse of a widget.
QWidget& Surface(QWidget& widget);
// A place where the widget itself is hit, and no part of it or other widget. ConsoleError if there is none.
QPoint FreePlace(QWidget& widget, bool atItsLeft = false);

// The middle of a row, scrolled into view.
QPoint PlaceOfRow(QAbstractItemView& view, int row);
// Below the last row. ConsoleError if rows stand everywhere.
QPoint PlaceBelowRows(QAbstractItemView& view);
// Begins a drag on a row; its text. Nothing is dropped.
Text DragOut(QAbstractItemView& view, int row);

}  // namespace quillbox::hand

#pragma once

#include <QPoint>

#include "base/Text.h"

class QAbstractItemView;
class QMenu;
class QString;
class QWidget;

// What a person does with one kind of widget alone.
namespace quillbox::hand {

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

void PasteOverAll(QWidget& field, const Text& text);
// The slider of a scroll bar is dragged.
void Slide(QWidget& bar, int value);

// By its name, in the menu or one below it. False if there is none.
bool PickFrom(QMenu& menu, const QString& name);

}  // namespace quillbox::hand

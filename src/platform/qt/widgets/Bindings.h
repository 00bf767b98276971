#pragma once

class QAbstractButton;
class QBoxLayout;
class QCheckBox;
class QComboBox;
class QFrame;
class QLabel;
class QRadioButton;
class QScrollBar;
class QToolButton;
class QWidget;

#include <QIcon>
#include <QString>
#include <functional>

#include "platform/qt/widgets/FormView.h"

namespace quillbox {

class CheckBox;
class ComboBox;
class CommandButton;
class Label;
class ListBox;
class OptionButton;
class Picture;
class ScrollBar;
class TextBox;
class UpDown;

// Each makes the widget for a control, joins the two on the view and gives the widget back; the layout that
// it is put into owns it. `name` is what a screen reader says where the caption alone says too little.
QAbstractButton* MakeButton(FormView& view, CommandButton& button, const QString& name = {});
QLabel* MakeLabel(FormView& view, Label& label, const QString& name = {});
QCheckBox* MakeCheckBox(FormView& view, CheckBox& box);
QRadioButton* MakeOption(FormView& view, OptionButton& option);
QComboBox* MakeComboBox(FormView& view, ComboBox& box, const QString& name);
QScrollBar* MakeScrollBar(FormView& view, ScrollBar& bar, const QString& name);
// A field of one line or of many, as the control is. `whenEmpty`: what an empty field or list says.
QWidget* MakeField(FormView& view, TextBox& box, const QString& name, const QString& whenEmpty = {});
// `iconOf`: what stands at the end of a row.
QWidget* MakeList(FormView& view, ListBox& list, const QString& name, const QString& whenEmpty,
                  std::function<QIcon(int row)> iconOf = {});
// Two arrows, one above the other.
QWidget* MakeUpDown(FormView& view, UpDown& upDown, const QString& name);
// A thin line.
QFrame* MakeLine(FormView& view, Picture& line);

}  // namespace quillbox

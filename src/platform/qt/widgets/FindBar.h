#pragma once

class QString;
class QWidget;

namespace quillbox {

class FormView;
class ListFind;

// The row above a list in which a person types what is to be found. It is there while find is open.
// `name` is what a screen reader calls the field.
QWidget* MakeFindBar(FormView& view, ListFind& find, const QString& name);

}  // namespace quillbox

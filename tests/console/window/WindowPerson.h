#pragma once

#include <QObject>
#include <memory>

#include "console/Person.h"

class QAbstractItemView;
class QWidget;

namespace quillbox {

class FormView;
class ProgramViews;
class TrayMenuView;

// Works on the windows, with mouse, keys and drops as Qt gets them from a window system; never on the forms.
//
// There is no window manager: which window is in front is the forms' word alone, a window that Qt brings to
// the front by itself brings nothing about, and a window that isn't shown is closed on its form. An item that
// the tray menu doesn't show is carried out by its action, and what a window refuses to take is dropped on
// the control.
//
// What a window can't do as the forms do it is refused (ConsoleError), each with its reason:
// - a double click on a field marks a word, one on a button is two clicks, one on a list selects the row
// under it;
// - keys with which a field, tabs, options, a choice or a scroll bar work by themselves, in lines, words and
// steps
//   that the forms don't know;
// - a window dragged to a place between two pixels.
class WindowPerson : public QObject, public Person {
 public:
  WindowPerson(Dispatcher& dispatcher, ProgramViews& views, TrayMenuView& menu);
  ~WindowPerson() override;

  void Focus(Control& control) override;
  void Click(Control& control) override;
  void DoubleClick(Control& control) override;
  void Key(Control& control, const KeyEvent& key) override;
  void Press(KeyBox& box, const KeyCombination& key) override;
  void SetText(TextBox& field, const Text& text) override;
  void Type(Control& control, const Text& characters) override;
  void Find(Form& form) override;
  void Drop(Control& control, const DragData& data) override;
  void Select(ListBox& list, const std::vector<int>& rows) override;
  void DoubleClickRow(ListBox& list, int row) override;
  void Check(ListBox& list, int row, bool checked) override;
  Text Drag(ListBox& list) override;
  void Spin(UpDown& upDown, bool up) override;
  void Scroll(ScrollBar& bar, int value) override;
  void Choose(ComboBox& box, int index) override;
  void Tab(TabControl& tabs, int index) override;
  void Move(Form& form, int left, int top) override;
  void CloseBox(Form& form) override;
  void Pick(MenuItem& item) override;
  std::vector<ShownItem> Look(MenuItem& root) override;
  std::vector<Difference> Rest() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  FormView& ViewOf(const Control& control) const;
  QWidget& WidgetOf(const Control& control) const;
  // Brings the window to the front.
  void Bring(FormView& view) const;
  // The widget, its window in front and ready for a focus change.
  QWidget& InFront(Control& control) const;
  QAbstractItemView& RowsOf(const ListBox& list) const;

  // Another program's window: what is brought to the front comes from behind it.
  std::unique_ptr<QWidget> other_;
  ProgramViews& views_;
  TrayMenuView& menu_;
};

}  // namespace quillbox

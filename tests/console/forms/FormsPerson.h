#pragma once

#include "console/Person.h"
#include "platform/forms/Dispatcher.h"

namespace quillbox {

// Works without a screen, on the controls themselves.
class FormsPerson : public Person {
 public:
  explicit FormsPerson(Dispatcher& dispatcher) : dispatcher_(dispatcher) {}

  void Focus(Control& control) override { control.PersonFocus(); }
  void Click(Control& control) override { control.PersonClick(); }
  void DoubleClick(Control& control) override { control.PersonDoubleClick(); }
  void Key(Control& control, const KeyEvent& key) override { control.PersonKey(key); }
  void SetText(TextBox& field, const Text& text) override { field.PersonSetText(text); }
  void Type(TextBox& field, const Text& characters) override;
  void Drop(Control& control, const DragData& data) override { control.PersonDrop(data); }
  void Select(ListBox& list, const std::vector<int>& rows) override;
  void DoubleClickRow(ListBox& list, int row) override { list.PersonDoubleClick(row); }
  void Check(ListBox& list, int row, bool checked) override { list.PersonCheck(row, checked); }
  Text Drag(ListBox& list) override { return list.PersonStartDrag(); }
  void Spin(UpDown& upDown, bool up) override { upDown.PersonSpin(up); }
  void Scroll(ScrollBar& bar, int value) override { bar.PersonScroll(value); }
  void Choose(ComboBox& box, int index) override { box.PersonChoose(index); }
  void Tab(TabControl& tabs, int index) override { tabs.PersonTab(index); }
  void Move(Form& form, int left, int top) override { form.PersonMove(left, top); }
  void CloseBox(Form& form) override { form.PersonClose(); }
  void Pick(MenuItem& item) override;
  std::vector<ShownItem> Look(MenuItem& root) override;
  std::vector<Difference> Rest() override { return {}; }

 private:
  Dispatcher& dispatcher_;
};

}  // namespace quillbox

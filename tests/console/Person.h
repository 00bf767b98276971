#pragma once

#include <string>
#include <vector>

#include "base/Text.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/Dispatcher.h"
#include "platform/forms/Form.h"
#include "platform/forms/KeyBox.h"
#include "platform/forms/ListBox.h"
#include "platform/forms/MenuItem.h"
#include "platform/forms/ScrollBar.h"
#include "platform/forms/TabControl.h"
#include "platform/forms/TextBox.h"
#include "platform/forms/UpDown.h"

namespace quillbox {

// Where a screen shows something else than the control that it stands for.
struct Difference {
  std::string control;
  std::string property;
  Text is;
  Text shouldBe;
};

// Whether typed characters mean anything to a control: a field, or a list in which they find something.
inline bool TakesCharacters(const Control& control) {
  const auto* const list = dynamic_cast<const ListBox*>(&control);
  return dynamic_cast<const TextBox*>(&control) || (list && list->KeyPress);
}

// An item of the open menu.
struct ShownItem {
  std::string name;
  Text caption;
  bool checked = false;
};

// The hand of the person in front of the program; this one works without a screen, on the controls
// themselves. Whoever calls has checked that the control can be worked with now, that the form is visible,
// that rows and indices are there.
class Person {
 public:
  explicit Person(Dispatcher& dispatcher) : dispatcher_(dispatcher) {}
  virtual ~Person() = default;

  virtual void Focus(Control& control) { control.PersonFocus(); }
  virtual void Click(Control& control) { control.PersonClick(); }
  virtual void DoubleClick(Control& control) { control.PersonDoubleClick(); }
  virtual void Key(Control& control, const KeyEvent& key) { control.PersonKey(key); }
  virtual void Press(KeyBox& box, const KeyCombination& key) { box.PersonPress(key); }
  virtual void SetText(TextBox& field, const Text& text) { field.PersonSetText(text); }
  // Characters as keys: they go to whatever has the focus by then.
  void Type(Control& control, const Text& characters);
  // Ctrl+F.
  virtual void Find(Form& form) { form.PersonFind(); }
  virtual void Drop(Control& control, const DragData& data) { control.PersonDrop(data); }
  // The first row is clicked, the others are Ctrl-clicked; no row: nothing is selected.
  virtual void Select(ListBox& list, const std::vector<int>& rows);
  virtual void DoubleClickRow(ListBox& list, int row) { list.PersonDoubleClick(row); }
  virtual void Check(ListBox& list, int row, bool checked) { list.PersonCheck(row, checked); }
  // A drag begins; its text.
  virtual Text Drag(ListBox& list) { return list.PersonStartDrag(); }
  virtual void Spin(UpDown& upDown, bool up) { upDown.PersonSpin(up); }
  virtual void Scroll(ScrollBar& bar, int value) { bar.PersonScroll(value); }
  virtual void Choose(ComboBox& box, int index) { box.PersonChoose(index); }
  virtual void Tab(TabControl& tabs, int index) { tabs.PersonTab(index); }
  // In twips.
  virtual void Move(Form& form, int left, int top) { form.PersonMove(left, top); }
  virtual void CloseBox(Form& form) { form.PersonClose(); }
  // An item of the tray menu, whether it is visible or not.
  virtual void Pick(MenuItem& item);
  // What the open menu of that root shows, from the top, a submenu's items behind the submenu.
  virtual std::vector<ShownItem> Look(MenuItem& root);

  // All that is under way on the screen comes to an end. What differs then from the controls.
  virtual std::vector<Difference> Rest() { return {}; }

 protected:
  // Those that have a key of their own, whatever the control.
  static bool IsKey(char16_t character);
  // One character, two units or one, to a control that has a use for it.
  virtual void TypeInto(Control& focused, TextView character);

  Dispatcher& dispatcher_;
};

}  // namespace quillbox

#pragma once

#include <string>
#include <vector>

#include "console/Protocol.h"
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

// Whether typed characters mean anything to a control: a field, or a list in which they find something.
inline bool TakesCharacters(const Control& control) {
  const auto* const list = dynamic_cast<const ListBox*>(&control);
  return dynamic_cast<const TextBox*>(&control) || (list && list->KeyPress);
}

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
  void Type(Control& control, const Text& characters) {
    Focus(control);
    for (TextView rest = characters; !rest.empty();) {
      Control* const focused = dispatcher_.Focused();
      if (!focused || !focused->IsReachable()) return;
      const bool pair = rest.size() > 1 && IsHighSurrogate(rest[0]) && IsLowSurrogate(rest[1]);
      const TextView character = rest.substr(0, pair ? 2 : 1);
      rest.remove_prefix(character.size());
      const bool means = IsKey(character[0]) ? character[0] != keys::kBackspace : TakesCharacters(*focused);
      if (means || dynamic_cast<TextBox*>(focused)) TypeInto(*focused, character);
    }
  }
  // Ctrl+F.
  virtual void Find(Form& form) { form.PersonFind(); }
  virtual void Drop(Control& control, const DragData& data) { control.PersonDrop(data); }
  // The first row is clicked, the others are Ctrl-clicked; no row: nothing is selected.
  virtual void Select(ListBox& list, const std::vector<int>& rows) {
    if (rows.empty()) list.PersonSelectNone();
    for (std::size_t i = 0; i < rows.size(); ++i) list.PersonSelect(rows[i], i > 0);
  }
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
  virtual void Pick(MenuItem& item) {
    if (item.Click) dispatcher_.Dispatch([&] { item.Click(); });
  }
  // Name, caption and mark of each item that the open menu of that root shows, from the top, a submenu's
  // items behind the submenu.
  virtual void Look(const MenuItem& root, Answer& shown) {
    for (const MenuItem* item : root.Children()) {
      if (!item->GetVisible()) continue;
      shown.Add(std::string_view(item->Name()), TextView(item->GetCaption()), item->GetChecked());
      Person::Look(*item, shown);
    }
  }

  // All that is under way on the screen comes to an end. The answer, whatever the request's own would have
  // been, if something is shown then that differs from its control; else empty.
  virtual std::string Rest() { return {}; }

 protected:
  // Those that have a key of their own, whatever the control.
  static bool IsKey(char16_t character) {
    return character == keys::kEnter || character == keys::kBackspace || character == keys::kEscape ||
           character == keys::kSpace;
  }
  // One character, two units or one, to a control that has a use for it.
  virtual void TypeInto(Control& focused, TextView character) {
    if (auto* const field = dynamic_cast<TextBox*>(&focused)) {
      for (const char16_t unit : character) field->PersonCharacter(unit);
    } else if (IsKey(character[0])) {
      focused.PersonKey(KeyEvent{character[0]});
    } else if (character[0] > keys::kSpace) {
      dynamic_cast<ListBox&>(focused).PersonType(character);
    }
  }

  Dispatcher& dispatcher_;
};

}  // namespace quillbox

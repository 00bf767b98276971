#pragma once

#include <string>
#include <vector>

#include "base/Text.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/Form.h"
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

// The hand of the person in front of the program. Whoever calls has checked that the control can be worked
// with now, that the form is visible, that rows and indices are there.
class Person {
 public:
  virtual ~Person() = default;

  virtual void Focus(Control& control) = 0;
  virtual void Click(Control& control) = 0;
  virtual void DoubleClick(Control& control) = 0;
  virtual void Key(Control& control, const KeyEvent& key) = 0;
  virtual void SetText(TextBox& field, const Text& text) = 0;
  // Characters as keys: they go to whatever has the focus by then.
  virtual void Type(TextBox& field, const Text& characters) = 0;
  virtual void Drop(Control& control, const DragData& data) = 0;
  // The first row is clicked, the others are Ctrl-clicked; no row: nothing is selected.
  virtual void Select(ListBox& list, const std::vector<int>& rows) = 0;
  virtual void DoubleClickRow(ListBox& list, int row) = 0;
  virtual void Check(ListBox& list, int row, bool checked) = 0;
  // A drag begins; its text.
  virtual Text Drag(ListBox& list) = 0;
  virtual void Spin(UpDown& upDown, bool up) = 0;
  virtual void Scroll(ScrollBar& bar, int value) = 0;
  virtual void Choose(ComboBox& box, int index) = 0;
  virtual void Tab(TabControl& tabs, int index) = 0;
  // In twips.
  virtual void Move(Form& form, int left, int top) = 0;
  virtual void CloseBox(Form& form) = 0;
  // An item of the tray menu, whether it is visible or not.
  virtual void Pick(MenuItem& item) = 0;
  // What the open menu of that root shows, from the top, a submenu's items behind the submenu.
  struct ShownItem {
    std::string name;
    Text caption;
    bool checked = false;
  };
  virtual std::vector<ShownItem> Look(MenuItem& root) = 0;

  // All that is under way on the screen comes to an end. What differs then from the controls; empty if
  // nothing does.
  virtual std::vector<Difference> Rest() = 0;
};

}  // namespace quillbox

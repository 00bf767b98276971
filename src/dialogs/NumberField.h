#pragma once

#include <functional>
#include <string_view>

#include "core/settings/Settings.h"
#include "platform/forms/Label.h"
#include "platform/forms/Picture.h"
#include "platform/forms/ScrollBar.h"
#include "platform/forms/TextBox.h"

namespace quillbox {

// A whole number within bounds: a field, a scroll bar beside it that shows the same number, and a label with
// their tip. The bar runs on negative numbers, so that its up arrow raises the number. A number out of bounds
// stands while it is typed, and is corrected when the field loses the focus.
class NumberField {
 public:
  struct Names {
    std::string_view field;
    std::string_view scroll;
    std::string_view label;
  };
  // The field is created empty.
  NumberField(const Place& place, const Names& names, const Text& caption, Range bounds);

  Label label;
  TextBox field;
  ScrollBar scroll;

  // The numeric prefix of the text; 0 if there is none.
  long long Number() const;
  // Brought to the nearer bound. A drop on the field moves no focus, and nothing corrects it there.
  int NumberWithin() const;
  // Field and scroll bar; a number out of bounds is brought to the nearer one.
  void SetNumber(long long number);
  // Before the scroll bar follows a change of the text: what depends on the number.
  std::function<void(long long)> Changing;

 private:
  int Within(long long number) const;
  void Text_Change();
  void Scroll_Change();
  void Text_LostFocus();

  Range bounds_;
};

// The items of a list that the tray menu shows directly are never more than the list may hold: each of the
// two numbers follows the other.
void CoupleListAndMenu(NumberField& list, NumberField& menu);

}  // namespace quillbox

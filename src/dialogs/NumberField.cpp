#include "dialogs/NumberField.h"

#include <algorithm>

#include "base/NumberText.h"

namespace quillbox {

NumberField::NumberField(const Place& place, const Names& names, const Text& caption, Range bounds)
    : label(place, names.label, caption),
      field(place, names.field, TextBox::Lines::One),
      scroll(place, names.scroll, -bounds.highest, -bounds.lowest),
      bounds_(bounds) {
  field.Change = [this] { Text_Change(); };
  field.LostFocus = [this] { Text_LostFocus(); };
  scroll.Change = [this] { Scroll_Change(); };
}

long long NumberField::Number() const { return WholeNumber(field.GetText()); }

int NumberField::NumberWithin() const { return Within(Number()); }

int NumberField::Within(long long number) const {
  return static_cast<int>(std::clamp<long long>(number, bounds_.lowest, bounds_.highest));
}

void NumberField::SetNumber(long long number) {
  field.SetText(Decimal(Within(number)));
  scroll.SetValue(-Within(number));
}

void NumberField::Text_Change() {
  const long long number = Number();
  if (Changing) Changing(number);
  if (number >= bounds_.lowest && number <= bounds_.highest) scroll.SetValue(-static_cast<int>(number));
}

void NumberField::Scroll_Change() {
  if (Number() != -scroll.GetValue()) field.SetText(Decimal(-scroll.GetValue()));
}

void NumberField::Text_LostFocus() { field.SetText(Decimal(NumberWithin())); }

// A smaller list, or a longer menu, is still being typed and moves nothing else.
void CoupleListAndMenu(NumberField& list, NumberField& menu) {
  list.Changing = [&menu](long long number) {
    if (number >= limits::kFewestEntries && menu.Number() > number) menu.field.SetText(Decimal(number));
  };
  menu.Changing = [&list](long long number) {
    if (number <= limits::kMenuItems && number > list.Number()) list.field.SetText(Decimal(number));
  };
}

}  // namespace quillbox

#include "dialogs/NumberField.h"

#include <algorithm>

#include "base/NumberText.h"

namespace quillbox {

namespace {

// A smaller list, or a longer menu, is still being typed and moves nothing else.
constexpr long long kSmallestList = 3;
constexpr long long kLargestMenu = 10;

}  // namespace

NumberField::NumberField(const Place& place, const Names& names, const Text& caption, Bounds bounds)
    : label(place, names.label, caption),
      field(place, names.field, TextBox::Lines::One),
      scroll(place, names.scroll, -bounds.upper, -bounds.lower),
      bounds_(bounds) {
  field.Change = [this] { Text_Change(); };
  field.LostFocus = [this] { Text_LostFocus(); };
  scroll.Change = [this] { Scroll_Change(); };
}

long long NumberField::Number() const { return WholeNumber(field.GetText()); }

void NumberField::SetNumber(long long number) {
  const int within = static_cast<int>(std::clamp<long long>(number, bounds_.lower, bounds_.upper));
  field.SetText(Decimal(within));
  scroll.SetValue(-within);
}

void NumberField::Text_Change() {
  const long long number = Number();
  if (Changing) Changing(number);
  if (number >= bounds_.lower && number <= bounds_.upper) scroll.SetValue(-static_cast<int>(number));
}

void NumberField::Scroll_Change() {
  if (Number() != -scroll.GetValue()) field.SetText(Decimal(-scroll.GetValue()));
}

void NumberField::Text_LostFocus() {
  field.SetText(Decimal(std::clamp<long long>(Number(), bounds_.lower, bounds_.upper)));
}

void CoupleListAndMenu(NumberField& list, NumberField& menu) {
  list.Changing = [&menu](long long number) {
    if (number >= kSmallestList && menu.Number() > number) menu.field.SetText(Decimal(number));
  };
  menu.Changing = [&list](long long number) {
    if (number <= kLargestMenu && number > list.Number()) list.field.SetText(Decimal(number));
  };
}

}  // namespace quillbox

#include "console/Person.h"

namespace quillbox {

bool Person::IsKey(char16_t character) {
  return character == keys::kEnter || character == keys::kBackspace || character == keys::kEscape ||
         character == keys::kSpace;
}

void Person::Type(Control& control, const Text& characters) {
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

void Person::TypeInto(Control& focused, TextView character) {
  if (auto* const field = dynamic_cast<TextBox*>(&focused)) {
    for (const char16_t unit : character) field->PersonCharacter(unit);
  } else if (IsKey(character[0])) {
    focused.PersonKey(KeyEvent{character[0]});
  } else if (character[0] > keys::kSpace) {
    dynamic_cast<ListBox&>(focused).PersonType(character);
  }
}

void Person::Select(ListBox& list, const std::vector<int>& rows) {
  if (rows.empty()) list.PersonSelectNone();
  for (std::size_t i = 0; i < rows.size(); ++i) list.PersonSelect(rows[i], i > 0);
}

void Person::Pick(MenuItem& item) {
  if (item.Click) dispatcher_.Dispatch([&] { item.Click(); });
}

std::vector<ShownItem> Person::Look(MenuItem& root) {
  std::vector<ShownItem> shown;
  for (MenuItem* item : root.Children()) {
    if (!item->GetVisible()) continue;
    shown.push_back({item->Name(), item->GetCaption(), item->GetChecked()});
    for (ShownItem& below : Person::Look(*item)) shown.push_back(std::move(below));
  }
  return shown;
}

}  // namespace quillbox

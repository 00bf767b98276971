#include "console/Person.h"

namespace quillbox {

void Person::Type(Control& control, const Text& characters) {
  control.PersonFocus();
  for (const char16_t character : characters) {
    Control* const focused = dispatcher_.Focused();
    if (!focused || !focused->IsReachable()) return;
    if (auto* const into = dynamic_cast<TextBox*>(focused)) {
      into->PersonCharacter(character);
    } else if (character == keys::kEnter || character == keys::kSpace || character == keys::kEscape) {
      focused->PersonKey(KeyEvent{character});
    } else if (TakesCharacters(*focused) && character > keys::kSpace) {
      dynamic_cast<ListBox&>(*focused).PersonType(TextView(&character, 1));
    }
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

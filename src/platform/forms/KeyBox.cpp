#include "platform/forms/KeyBox.h"

#include "platform/forms/Dispatcher.h"

namespace quillbox {

void KeyBox::PersonPress(const KeyCombination& key) {
  Dispatch().Dispatch([&] {
    PersonFocus();
    const bool erases = key.special == SpecialKey::Delete || key.special == SpecialKey::Backspace;
    if (erases && key.modifiers == 0) return SetText({});
    const Text text = FormatCombination(key);
    if (text.empty() || IsMissedEverywhere(key)) {
      Raise(Refuse);
    } else {
      SetText(text);
    }
  });
}

}  // namespace quillbox

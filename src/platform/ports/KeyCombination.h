#pragma once

#include <cstdint>
#include <optional>

#include "base/Text.h"
#include "platform/ports/KeyNotation.h"

namespace quillbox {

// A key that is pressed while others are held down, as a person reads it and as the settings keep it:
// "Ctrl+Alt+V", "Meta+Space", "Shift+F5".
struct KeyCombination {
  std::uint8_t modifiers = 0;  // sum of `modifier`
  char32_t character = 0;      // a letter of ASCII is a capital; 0 for a special key
  SpecialKey special = SpecialKey::None;

  friend bool operator==(const KeyCombination&, const KeyCombination&) = default;
};

// Names in capitals or small letters. Nothing for a text that is no combination, one modifier alone too.
std::optional<KeyCombination> ParseCombination(TextView text);
// The modifiers in the order Ctrl, Alt, Shift, Meta. Empty for a key that has no name.
Text FormatCombination(const KeyCombination& key);

// Whether every program would miss the key if one took it away from all others: without Ctrl, Alt or Meta it
// types a character or moves a caret. The function keys and their neighbours may be taken.
bool IsMissedEverywhere(const KeyCombination& key);

}  // namespace quillbox

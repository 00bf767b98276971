#pragma once

#include <xkbcommon/xkbcommon.h>

#include <vector>

#include "platform/ports/KeyCombination.h"
#include "platform/ports/KeyNotation.h"

namespace quillbox {

// The keysym of a special key; NoSymbol for None.
xkb_keysym_t KeysymOf(SpecialKey key);

// The keysym of a character; NoSymbol if it can't be typed by any key.
xkb_keysym_t KeysymOf(char32_t character);

// The keysym of a stroke, whatever its modifiers.
xkb_keysym_t KeysymOf(const KeyStroke& stroke);

// The keysym of a combination's key without its modifiers: that of a letter is the small one's.
xkb_keysym_t KeysymOf(const KeyCombination& key);

// As ParseKeys, and errors::kBadCall for a character that no key can type.
std::vector<KeyStroke> ParseTypeableKeys(TextView keys);

}  // namespace quillbox

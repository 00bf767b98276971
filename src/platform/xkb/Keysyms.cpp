#include "platform/xkb/Keysyms.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>

#include "base/RuntimeError.h"

namespace quillbox {

xkb_keysym_t KeysymOf(SpecialKey key) {
  switch (key) {
    case SpecialKey::None:
      return XKB_KEY_NoSymbol;
    case SpecialKey::Backspace:
      return XKB_KEY_BackSpace;
    case SpecialKey::Break:
      return XKB_KEY_Break;
    case SpecialKey::CapsLock:
      return XKB_KEY_Caps_Lock;
    case SpecialKey::Clear:
      return XKB_KEY_Clear;
    case SpecialKey::Delete:
      return XKB_KEY_Delete;
    case SpecialKey::Down:
      return XKB_KEY_Down;
    case SpecialKey::End:
      return XKB_KEY_End;
    case SpecialKey::Enter:
      return XKB_KEY_Return;
    case SpecialKey::Escape:
      return XKB_KEY_Escape;
    case SpecialKey::Help:
      return XKB_KEY_Help;
    case SpecialKey::Home:
      return XKB_KEY_Home;
    case SpecialKey::Insert:
      return XKB_KEY_Insert;
    case SpecialKey::Left:
      return XKB_KEY_Left;
    case SpecialKey::NumLock:
      return XKB_KEY_Num_Lock;
    case SpecialKey::PageDown:
      return XKB_KEY_Next;
    case SpecialKey::PageUp:
      return XKB_KEY_Prior;
    case SpecialKey::PrintScreen:
      return XKB_KEY_Print;
    case SpecialKey::Right:
      return XKB_KEY_Right;
    case SpecialKey::ScrollLock:
      return XKB_KEY_Scroll_Lock;
    case SpecialKey::Tab:
      return XKB_KEY_Tab;
    case SpecialKey::Up:
      return XKB_KEY_Up;
    case SpecialKey::Add:
      return XKB_KEY_KP_Add;
    case SpecialKey::Subtract:
      return XKB_KEY_KP_Subtract;
    case SpecialKey::Multiply:
      return XKB_KEY_KP_Multiply;
    case SpecialKey::Divide:
      return XKB_KEY_KP_Divide;
    default:
      break;
  }
  return XKB_KEY_F1 + static_cast<xkb_keysym_t>(key) - static_cast<xkb_keysym_t>(SpecialKey::F1);
}

xkb_keysym_t KeysymOf(char32_t character) {
  const xkb_keysym_t keysym = xkb_utf32_to_keysym(character);
  // Some characters have a keysym that types none.
  return xkb_keysym_to_utf32(keysym) == character ? keysym : xkb_keysym_t{XKB_KEY_NoSymbol};
}

xkb_keysym_t KeysymOf(const KeyStroke& stroke) {
  return stroke.special != SpecialKey::None ? KeysymOf(stroke.special) : KeysymOf(stroke.character);
}

xkb_keysym_t KeysymOf(const KeyCombination& key) {
  return key.special != SpecialKey::None ? KeysymOf(key.special)
                                         : xkb_keysym_to_lower(KeysymOf(key.character));
}

std::vector<KeyStroke> ParseTypeableKeys(TextView keys) {
  std::vector<KeyStroke> strokes = ParseKeys(keys);
  if (std::any_of(strokes.begin(), strokes.end(),
                  [](const KeyStroke& stroke) { return KeysymOf(stroke) == XKB_KEY_NoSymbol; })) {
    throw RuntimeError(errors::kBadCall, "The key string has a character that no key can type.");
  }
  return strokes;
}

}  // namespace quillbox

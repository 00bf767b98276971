#include "platform/x11/keys/XKeyboardMap.h"

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <algorithm>
#include <bit>

#include "base/RuntimeError.h"
#include "platform/x11/keys/XKeyConnection.h"

namespace quillbox {
namespace {

// The keys behind these codes exist on every keyboard; what lies above is often a symbol without a key.
constexpr xkb_keycode_t kLastOrdinaryCode = 91;

bool IsKeypad(xkb_keysym_t keysym) { return keysym >= XKB_KEY_KP_Space && keysym <= XKB_KEY_KP_Equal; }

template <class Key, class Found>
void Keep(std::unordered_map<Key, Found>& places, Key key, const Found& found) {
  const auto [at, added] = places.try_emplace(key, found);
  if (!added && found.rank < at->second.rank) at->second = found;
}

}  // namespace

XKeyboardMap::XKeyboardMap(XKeyConnection& connection, std::uint32_t group, std::uint8_t lockedModifiers)
    : context_(xkb_context_new(XKB_CONTEXT_NO_FLAGS)), group_(group) {
  const std::int32_t keyboard = xkb_x11_get_core_keyboard_device_id(connection.Get());
  if (context_ && keyboard >= 0) {
    keymap_.reset(xkb_x11_keymap_new_from_device(context_.get(), connection.Get(), keyboard,
                                                 XKB_KEYMAP_COMPILE_NO_FLAGS));
  }
  if (!keymap_) throw RuntimeError(errors::kDeviceError, "The keyboard map can't be read.");
  FindModifierKeys();
  Enumerate(lockedModifiers);
}

XKeyboardMap::State XKeyboardMap::FreshState() const {
  State state(xkb_state_new(keymap_.get()));
  if (!state) throw RuntimeError(errors::kDeviceError, "The keyboard map can't be used.");
  xkb_state_update_mask(state.get(), 0, 0, 0, 0, 0, group_);
  return state;
}

// The real modifiers that a press of the key holds down, or with `locking` those that it locks; 0 if the
// press does anything besides.
std::uint8_t XKeyboardMap::ModifiersOf(xkb_keycode_t code, bool locking) const {
  const State state = FreshState();
  xkb_state_update_key(state.get(), code, XKB_KEY_DOWN);
  const auto mods = [&](xkb_state_component part) {
    return xkb_state_serialize_mods(state.get(), part) & 0xFFU;
  };
  const xkb_mod_mask_t down = mods(XKB_STATE_MODS_DEPRESSED);
  const xkb_mod_mask_t locked = mods(XKB_STATE_MODS_LOCKED);
  if (mods(XKB_STATE_MODS_LATCHED) != 0) return 0;
  if (xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE) != group_) return 0;
  if (locking) return static_cast<std::uint8_t>(locked);
  return locked == 0 && std::has_single_bit(down) ? static_cast<std::uint8_t>(down) : std::uint8_t{0};
}

void XKeyboardMap::FindModifierKeys() {
  constexpr xkb_keysym_t kHolding[] = {
      XKB_KEY_Shift_L,     XKB_KEY_Shift_R,         XKB_KEY_Control_L, XKB_KEY_Control_R,
      XKB_KEY_Alt_L,       XKB_KEY_Alt_R,           XKB_KEY_Meta_L,    XKB_KEY_ISO_Level3_Shift,
      XKB_KEY_Mode_switch, XKB_KEY_ISO_Level5_Shift};
  const State state = FreshState();
  const xkb_keycode_t first = xkb_keymap_min_keycode(keymap_.get());
  const xkb_keycode_t last = std::min<xkb_keycode_t>(xkb_keymap_max_keycode(keymap_.get()), 255);
  for (const xkb_keysym_t keysym : kHolding) {
    for (xkb_keycode_t code = first; code <= last; ++code) {
      if (xkb_state_key_get_one_sym(state.get(), code) != keysym) continue;
      const std::uint8_t modifier = ModifiersOf(code, false);
      if (modifier == 0) continue;
      xcb_keycode_t& key = modifierKeys_[static_cast<std::size_t>(std::countr_zero(modifier))];
      if (key == 0) key = static_cast<xcb_keycode_t>(code);
      const bool isAlt = keysym == XKB_KEY_Alt_L || keysym == XKB_KEY_Alt_R || keysym == XKB_KEY_Meta_L;
      if (isAlt && alt_ == 0) alt_ = modifier;
    }
  }
  for (xkb_keycode_t code = first; code <= last; ++code) {
    const xkb_keysym_t keysym = xkb_state_key_get_one_sym(state.get(), code);
    if (keysym == XKB_KEY_Num_Lock && numLock_ == 0) numLock_ = ModifiersOf(code, true);
    const bool logo = keysym == XKB_KEY_Super_L || keysym == XKB_KEY_Super_R;
    if (logo && super_ == 0) super_ = ModifiersOf(code, false);
  }
}

bool XKeyboardMap::CanHold(std::uint32_t modifiers) const {
  if (modifiers > 0xFF || (modifiers & (realmodifier::kLock | numLock_)) != 0) return false;
  for (int bit = 0; bit < 8; ++bit) {
    if ((modifiers >> bit & 1U) != 0 && ModifierKey(bit) == 0) return false;
  }
  return true;
}

void XKeyboardMap::Enumerate(std::uint8_t lockedModifiers) {
  const State state = FreshState();
  const xkb_keycode_t first = xkb_keymap_min_keycode(keymap_.get());
  const xkb_keycode_t last = std::min<xkb_keycode_t>(xkb_keymap_max_keycode(keymap_.get()), 255);
  for (xkb_keycode_t code = first; code <= last; ++code) {
    EnumerateKey(code, state.get(), lockedModifiers & numLock_);
  }
}

void XKeyboardMap::EnumerateKey(xkb_keycode_t code, xkb_state* state, std::uint8_t locked) {
  bool empty = true;
  const xkb_layout_index_t groups = xkb_keymap_num_layouts_for_key(keymap_.get(), code);
  for (xkb_layout_index_t group = 0; group < groups; ++group) {
    const xkb_level_index_t count = xkb_keymap_num_levels_for_key(keymap_.get(), code, group);
    for (xkb_level_index_t level = 0; level < count; ++level) {
      const xkb_keysym_t* symbols = nullptr;
      if (xkb_keymap_key_get_syms_by_level(keymap_.get(), code, group, level, &symbols) > 0) empty = false;
    }
  }
  if (empty) {
    spareCodes_.push_back(static_cast<xcb_keycode_t>(code));
    return;
  }

  xkb_state_update_mask(state, 0, 0, 0, 0, 0, group_);
  const xkb_layout_index_t layout = xkb_state_key_get_layout(state, code);
  if (layout == XKB_LAYOUT_INVALID) return;
  const xkb_level_index_t levels = xkb_keymap_num_levels_for_key(keymap_.get(), code, layout);
  for (xkb_level_index_t level = 0; level < levels; ++level) {
    std::array<xkb_mod_mask_t, 32> masks{};
    const std::size_t count =
        xkb_keymap_key_get_mods_for_level(keymap_.get(), code, layout, level, masks.data(), masks.size());
    for (std::size_t i = 0; i < count; ++i) {
      if (!CanHold(masks[i])) continue;
      // The state says what really comes, with Num Lock as it is.
      xkb_state_update_mask(state, masks[i], 0, locked, 0, 0, group_);
      const xkb_keysym_t keysym = xkb_state_key_get_one_sym(state, code);
      if (keysym == XKB_KEY_NoSymbol) continue;
      const Ranked found{{static_cast<xcb_keycode_t>(code), static_cast<std::uint8_t>(masks[i])},
                         std::popcount(masks[i]) + (code > kLastOrdinaryCode ? 10 : 0)};
      Keep(keysyms_, keysym, found);
      // With Ctrl or Alt down a character is a command.
      if (IsKeypad(keysym) || (masks[i] & (realmodifier::kControl | alt_)) != 0) continue;
      const char32_t character = xkb_keysym_to_utf32(keysym);
      if (character >= 0x20) Keep(characters_, character, found);
    }
  }
}

std::optional<XKeyboardMap::Place> XKeyboardMap::FindCharacter(char32_t character) const {
  const auto found = characters_.find(character);
  if (found == characters_.end()) return std::nullopt;
  return found->second.place;
}

std::optional<XKeyboardMap::Place> XKeyboardMap::FindKeysym(xkb_keysym_t keysym) const {
  const auto found = keysyms_.find(keysym);
  if (found == keysyms_.end()) return std::nullopt;
  return found->second.place;
}

}  // namespace quillbox

#pragma once

#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon.h>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "platform/xkb/RealModifiers.h"

namespace quillbox {

class XKeyConnection;

// Which keys of the keyboard type what in one group, as the server's map stands at the construction.
class XKeyboardMap {
 public:
  struct Place {
    xcb_keycode_t code = 0;
    std::uint8_t modifiers = 0;  // real modifiers that must be down, all others but Num Lock up
    bool operator==(const Place&) const = default;
  };

  XKeyboardMap() = default;  // of a keyboard that types nothing
  // `lockedModifiers` are the real modifiers that are locked now; Num Lock among them stays on while keys are
  // sent. RuntimeError errors::kDeviceError if the server doesn't give the map away.
  XKeyboardMap(XKeyConnection& connection, std::uint32_t group, std::uint8_t lockedModifiers);

  // The best place of a character (on no keypad and no dead key) or of a keysym; nothing if the group lacks
  // it.
  std::optional<Place> FindCharacter(char32_t character) const;
  std::optional<Place> FindKeysym(xkb_keysym_t keysym) const;

  // A key that holds one real modifier, 0 to 7, down and does nothing else; 0 if there is none.
  xcb_keycode_t ModifierKey(int modifier) const { return modifierKeys_[static_cast<std::size_t>(modifier)]; }
  std::uint8_t Alt() const { return alt_; }          // the real modifier of the Alt key; 0 if there is none
  std::uint8_t NumLock() const { return numLock_; }  // likewise
  std::uint8_t Super() const { return super_; }      // likewise, of the key with the logo

  // Codes without any symbol, which no key uses; ascending.
  const std::vector<xcb_keycode_t>& SpareCodes() const { return spareCodes_; }

 private:
  struct Ranked {
    Place place;
    int rank = 0;  // lower is better
  };
  struct Free {
    void operator()(xkb_context* context) const { xkb_context_unref(context); }
    void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
    void operator()(xkb_state* state) const { xkb_state_unref(state); }
  };
  using State = std::unique_ptr<xkb_state, Free>;

  State FreshState() const;
  void FindModifierKeys();
  std::uint8_t ModifiersOf(xkb_keycode_t code, bool locking) const;
  void Enumerate(std::uint8_t lockedModifiers);
  void EnumerateKey(xkb_keycode_t code, xkb_state* state, std::uint8_t locked);
  bool CanHold(std::uint32_t modifiers) const;

  std::unique_ptr<xkb_context, Free> context_;
  std::unique_ptr<xkb_keymap, Free> keymap_;
  xkb_layout_index_t group_ = 0;
  std::array<xcb_keycode_t, 8> modifierKeys_{};
  std::uint8_t alt_ = 0;
  std::uint8_t numLock_ = 0;
  std::uint8_t super_ = 0;
  std::unordered_map<char32_t, Ranked> characters_;
  std::unordered_map<xkb_keysym_t, Ranked> keysyms_;
  std::vector<xcb_keycode_t> spareCodes_;
};

}  // namespace quillbox

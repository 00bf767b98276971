#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/Text.h"

// The notation of key strings.
//
//   abc      each character stands for its own key; "[" and "]" too
//   + ^ %    Shift, Ctrl, Alt for the key behind the sign; several signs may stand before one key
//   ( )      group keys under such signs; in a group within a group the signs add up
//   ~        Enter, as does a line break, of whichever kind (CR LF is one)
//   {NAME}   a special key, in capitals or small letters
//   {x}      the character x itself, whatever it means elsewhere: {+} {~} {(} {{} {}}
//   {k n}    the key n times, n from 0 to 32767
namespace quillbox {

enum class SpecialKey : std::uint8_t {
  None,
  Backspace,
  Break,
  CapsLock,
  Clear,
  Delete,
  Down,
  End,
  Enter,
  Escape,
  Help,
  Home,
  Insert,
  Left,
  NumLock,
  PageDown,
  PageUp,
  PrintScreen,
  Right,
  ScrollLock,
  Tab,
  Up,
  Add,
  Subtract,
  Multiply,
  Divide,
  F1,
  F2,
  F3,
  F4,
  F5,
  F6,
  F7,
  F8,
  F9,
  F10,
  F11,
  F12,
  F13,
  F14,
  F15,
  F16,
  F17,
  F18,
  F19,
  F20,
  F21,
  F22,
  F23,
  F24,
};

inline constexpr int kFunctionKeys = 24;
// F1 to F24 by their number.
constexpr SpecialKey NthFunctionKey(int number) {
  return static_cast<SpecialKey>(static_cast<int>(SpecialKey::F1) + number - 1);
}

namespace modifier {
inline constexpr std::uint8_t kShift = 1;
inline constexpr std::uint8_t kControl = 2;
inline constexpr std::uint8_t kAlt = 4;
inline constexpr std::uint8_t kMeta = 8;  // no sign stands for it
}  // namespace modifier

// One key, pressed and released.
struct KeyStroke {
  char32_t character = 0;  // a whole character, 0 for a special key
  SpecialKey special = SpecialKey::None;
  std::uint8_t modifiers = 0;  // sum of `modifier`, held down during the stroke
  // The modifiers that the stroke before has too stay down in between: both are of one group or one repeat.
  // Else they are released and pressed again, so that %{TAB}%{TAB} isn't %({TAB}{TAB}).
  bool joined = false;

  friend bool operator==(const KeyStroke&, const KeyStroke&) = default;
};

// Whether a stroke's effect may be another window with the focus, which the next stroke is meant for.
bool MayMoveFocus(const KeyStroke& stroke);

// The most strokes that one string may give.
inline constexpr std::size_t kMaxKeyStrokes = 1'000'000;

// The strokes of a whole string, in order. RuntimeError errors::kBadCall if any part of it can't be read: a
// brace or parenthesis without its partner, a sign with no key behind it, an unknown name, a bad repeat, a
// control character or half a character, more than kMaxKeyStrokes strokes.
std::vector<KeyStroke> ParseKeys(TextView keys);

}  // namespace quillbox

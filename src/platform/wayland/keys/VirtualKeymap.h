#pragma once

#include <xkbcommon/xkbcommon.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/ports/KeyNotation.h"

namespace quillbox {

// A keyboard of our own that can type a whole string at once, as text for the compositor. What a US keyboard
// has stands where that has it: programs that go by the place of a key, such as the screen of a virtual
// machine, read it right. Every other character that is needed lies on a key that no US keyboard has: on its
// plain level first, then on three more levels that Shift has no part in, and when those are used up on keys
// beyond the ones that X11 knows.
class VirtualKeymap {
 public:
  struct Place {
    std::uint32_t key = 0;       // as the kernel numbers keys, 8 less than XKB does
    std::uint8_t modifiers = 0;  // real modifiers that must be down, those of the stroke not counted
  };

  // Each stroke has a keysym.
  explicit VirtualKeymap(std::span<const KeyStroke> strokes);

  // In the format XKB_KEYMAP_FORMAT_TEXT_V1; understood by X11's own compiler too.
  const std::string& Text() const { return text_; }
  // Where a stroke's key is; the stroke is one of the constructor's.
  Place Find(const KeyStroke& stroke) const;
  // The key that holds one real modifier down, from 0 as the server numbers them; 0 if there is none.
  static std::uint32_t ModifierKey(int modifier);

 private:
  static xkb_keysym_t SymbolOf(const KeyStroke& stroke);
  void AddFixedKeys();
  void AddExtra(xkb_keysym_t keysym);
  std::string Write() const;

  std::unordered_map<xkb_keysym_t, Place> places_;
  std::unordered_map<std::uint32_t, std::string> symbols_;  // of each key, as in the text
  std::vector<std::uint32_t> freeKeys_;                     // that X11 can number
  std::size_t extras_ = 0;
  std::string text_;
};

}  // namespace quillbox

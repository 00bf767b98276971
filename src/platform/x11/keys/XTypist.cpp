#include "platform/x11/keys/XTypist.h"

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <vector>

#include "base/RuntimeError.h"
#include "platform/x11/keys/XKeyConnection.h"
#include "platform/x11/keys/XSpareKeys.h"
#include "platform/xkb/Keysyms.h"

namespace quillbox {

std::optional<XKeyboardMap::Place> XTypist::Find(const KeyStroke& stroke, const XKeyboardMap& map) {
  if (stroke.special != SpecialKey::None) return map.FindKeysym(KeysymOf(stroke.special));
  return map.FindCharacter(stroke.character);
}

// A spare key gives the same with and without Shift, so a letter under Shift is put on as the capital.
xkb_keysym_t XTypist::SpareSymbol(const KeyStroke& stroke) {
  const xkb_keysym_t keysym = KeysymOf(stroke);
  return (stroke.modifiers & modifier::kShift) != 0 ? xkb_keysym_to_upper(keysym) : keysym;
}

std::size_t XTypist::Prepare(std::span<const KeyStroke> strokes) {
  const auto& codes = map_.SpareCodes();
  std::vector<xkb_keysym_t> keysyms;
  std::size_t count = 0;
  for (; count < strokes.size(); ++count) {
    if (Find(strokes[count], map_)) continue;
    const xkb_keysym_t keysym = SpareSymbol(strokes[count]);
    if (std::find(keysyms.begin(), keysyms.end(), keysym) != keysyms.end()) continue;
    if (codes.empty())
      throw RuntimeError(errors::kDeviceError, "The keyboard has no room for its missing characters.");
    if (keysyms.size() == codes.size()) break;
    keysyms.push_back(keysym);
  }
  spareKeys_.PutOn(keysyms, codes);
  return count;
}

bool XTypist::TypesAlike(std::span<const KeyStroke> strokes, const XKeyboardMap& other) const {
  return std::all_of(strokes.begin(), strokes.end(), [&](const KeyStroke& stroke) {
    const auto place = Find(stroke, map_);
    return !place || place == Find(stroke, other);
  });
}

std::uint8_t XTypist::RealModifiers(std::uint8_t modifiers) const {
  std::uint8_t real = 0;
  if ((modifiers & modifier::kShift) != 0) real |= realmodifier::kShift;
  if ((modifiers & modifier::kControl) != 0) real |= realmodifier::kControl;
  if ((modifiers & modifier::kAlt) != 0) real |= map_.Alt();
  return real;
}

// Shift goes down last and up first: some keyboards switch their group on Shift followed by another modifier.
void XTypist::Hold(std::uint8_t modifiers) {
  constexpr int kOrder[] = {2, 3, 4, 5, 6, 7, 1, 0};
  const auto change = [&](int bit, bool press) {
    const int mask = 1 << bit;
    const bool wanted = (modifiers & mask) != 0;
    const bool isDown = (down_ & mask) != 0;
    if (wanted != press || isDown == press || map_.ModifierKey(bit) == 0) return;
    connection_.Key(map_.ModifierKey(bit), press);
    down_ = static_cast<std::uint8_t>(down_ ^ mask);
  };
  for (auto bit = std::rbegin(kOrder); bit != std::rend(kOrder); ++bit) change(*bit, false);
  for (const int bit : kOrder) change(bit, true);
}

void XTypist::Type(const KeyStroke& stroke) {
  const auto place = Find(stroke, map_);
  const xcb_keycode_t code = place ? place->code : spareKeys_.CodeOf(SpareSymbol(stroke));
  const std::uint8_t own = place ? place->modifiers : std::uint8_t{0};
  // Ctrl and Alt mark a command of their own each time, unless the notation groups the strokes.
  if (!stroke.joined) Hold(down_ & static_cast<std::uint8_t>(~(realmodifier::kControl | map_.Alt())));
  Hold(own | RealModifiers(stroke.modifiers));
  connection_.Key(code, true);
  connection_.Key(code, false);
}

}  // namespace quillbox

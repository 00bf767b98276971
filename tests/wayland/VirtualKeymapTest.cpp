// The keyboard that scripts are typed on: compiled back, each key types what it
// was made for.
#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/wayland/keys/VirtualKeymap.h"
#include "platform/xkb/Keysyms.h"
#include "platform/xkb/RealModifiers.h"

namespace quillbox::test {
namespace {

// A keyboard made of the text alone, as a client of the compositor makes it.
std::unique_ptr<xkb_state, decltype(&xkb_state_unref)> Compiled(const VirtualKeymap& map) {
  xkb_context* const context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
  xkb_keymap* const keymap = xkb_keymap_new_from_string(
      context, map.Text().c_str(), XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS);
  xkb_state* const state = keymap ? xkb_state_new(keymap) : nullptr;
  xkb_keymap_unref(keymap);
  xkb_context_unref(context);
  return {state, xkb_state_unref};
}

xkb_keysym_t Symbol(xkb_state* keyboard, std::uint32_t key, std::uint8_t modifiers) {
  xkb_state_update_mask(keyboard, modifiers, 0, 0, 0, 0, 0);
  return xkb_state_key_get_one_sym(keyboard, key + 8);
}

std::vector<KeyStroke> Characters(char32_t first, std::size_t count) {
  std::vector<KeyStroke> strokes;
  for (char32_t character = first; strokes.size() < count; ++character)
    strokes.push_back({.character = character});
  return strokes;
}

void ExpectTyped(const std::vector<KeyStroke>& strokes, std::uint32_t lastKey) {
  const VirtualKeymap keymap(strokes);
  const auto keyboard = Compiled(keymap);
  ASSERT_TRUE(keyboard) << keymap.Text();
  std::uint32_t highest = 0;
  for (const KeyStroke& stroke : strokes) {
    const auto place = keymap.Find(stroke);
    ASSERT_EQ(Symbol(keyboard.get(), place.key, place.modifiers), KeysymOf(stroke)) << place.key;
    highest = std::max(highest, place.key);
  }
  EXPECT_LE(highest, lastKey);
}

TEST(VirtualKeymap, TypesEveryCharacterAndKey) {
  constexpr std::uint32_t kLastOfX11 = 247;
  std::vector<KeyStroke> all = Characters(U' ', 95);
  for (int special = 1; special <= static_cast<int>(SpecialKey::F24); ++special)
    all.push_back({.special = static_cast<SpecialKey>(special)});
  ExpectTyped(all, kLastOfX11);
  for (const KeyStroke& extra : Characters(0xA0, 0x60)) all.push_back(extra);
  for (const char32_t character : {U'€', U'漢', U'ß', U'ẞ', U'Ω', U'😀', U'\U0010FFFD'})
    all.push_back({.character = character});
  ExpectTyped(all, kLastOfX11);
  ExpectTyped(Characters(0x4E00, 400), kLastOfX11);
  ExpectTyped(Characters(0x4E00, 20000), 0xFFFF);
}

TEST(VirtualKeymap, ShiftGivesTheCapital) {
  for (const auto& [plain, capital] : {std::pair{U'a', U'A'}, {U'1', U'!'}, {U'é', U'É'}, {U'漢', U'漢'}}) {
    const KeyStroke stroke{.character = plain, .modifiers = modifier::kShift};
    const VirtualKeymap keymap({&stroke, 1});
    const auto place = keymap.Find(stroke);
    EXPECT_EQ(Symbol(Compiled(keymap).get(), place.key, place.modifiers | realmodifier::kShift),
              KeysymOf(capital));
  }
}

}  // namespace
}  // namespace quillbox::test

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
class Compiled {
 public:
  explicit Compiled(const std::string& text)
      : context_(xkb_context_new(XKB_CONTEXT_NO_FLAGS), xkb_context_unref),
        keymap_(xkb_keymap_new_from_string(context_.get(), text.c_str(), XKB_KEYMAP_FORMAT_TEXT_V1,
                                           XKB_KEYMAP_COMPILE_NO_FLAGS),
                xkb_keymap_unref),
        state_(keymap_ ? xkb_state_new(keymap_.get()) : nullptr, xkb_state_unref) {}

  bool Sound() const { return state_ != nullptr; }
  xkb_keysym_t Symbol(std::uint32_t key, std::uint8_t modifiers) const {
    xkb_state_update_mask(state_.get(), modifiers, 0, 0, 0, 0, 0);
    return xkb_state_key_get_one_sym(state_.get(), key + 8);
  }

 private:
  template <class Object>
  using Owned = std::unique_ptr<Object, void (*)(Object*)>;
  Owned<xkb_context> context_;
  Owned<xkb_keymap> keymap_;
  Owned<xkb_state> state_;
};

std::vector<KeyStroke> Characters(char32_t first, std::size_t count) {
  std::vector<KeyStroke> strokes;
  for (char32_t character = first; strokes.size() < count; ++character)
    strokes.push_back({.character = character});
  return strokes;
}

void ExpectTyped(const std::vector<KeyStroke>& strokes, std::uint32_t lastKey) {
  const VirtualKeymap keymap(strokes);
  const Compiled keyboard(keymap.Text());
  ASSERT_TRUE(keyboard.Sound()) << keymap.Text();
  std::uint32_t highest = 0;
  for (const KeyStroke& stroke : strokes) {
    const auto place = keymap.Find(stroke);
    ASSERT_EQ(keyboard.Symbol(place.key, place.modifiers), KeysymOf(stroke)) << place.key;
    highest = std::max(highest, place.key);
  }
  EXPECT_LE(highest, lastKey);
}

TEST(VirtualKeymap, TypesEveryCharacterAndKey) {
  constexpr std::uint32_t kLastOfX11 = 247;
  std::vector<KeyStroke> all = Characters(U' ', 95);
  for (int special = 1; special <= static_cast<int>(SpecialKey::F24); ++special) {
    all.push_back({.special = static_cast<SpecialKey>(special)});
  }
  ExpectTyped(all, kLastOfX11);
  for (const KeyStroke& extra : Characters(0xA0, 0x60)) all.push_back(extra);
  for (const char32_t character : U"€漢ßẞΩ😀\U0010FFFD") {
    if (character != 0) all.push_back({.character = character});
  }
  ExpectTyped(all, kLastOfX11);
  ExpectTyped(Characters(0x4E00, 400), kLastOfX11);
  ExpectTyped(Characters(0x4E00, 20000), 0xFFFF);
}

TEST(VirtualKeymap, ShiftGivesTheCapital) {
  for (const auto& [plain, capital] : {std::pair{U'a', U'A'}, {U'1', U'!'}, {U'é', U'É'}, {U'漢', U'漢'}}) {
    const KeyStroke stroke{.character = plain, .modifiers = modifier::kShift};
    const VirtualKeymap keymap({&stroke, 1});
    const auto place = keymap.Find(stroke);
    const std::uint8_t modifiers = place.modifiers | realmodifier::kShift;
    EXPECT_EQ(Compiled(keymap.Text()).Symbol(place.key, modifiers), KeysymOf(capital));
  }
}

}  // namespace
}  // namespace quillbox::test

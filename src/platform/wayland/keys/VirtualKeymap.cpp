#include "platform/wayland/keys/VirtualKeymap.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <map>
#include <string_view>
#include <vector>

#include "platform/xkb/Keysyms.h"
#include "platform/xkb/RealModifiers.h"

namespace quillbox {
namespace {

constexpr std::uint32_t kXkbOffset = 8;     // of XKB's number of a key above the kernel's
constexpr std::uint32_t kLastLowKey = 247;  // the last one that X11 can number

// The rows of a US keyboard: the number of the first key, and what each types without and with Shift.
struct Row {
  std::uint32_t first;
  std::string_view plain, shifted;
};
constexpr std::array kRows{Row{2, "1234567890-=", "!@#$%^&*()_+"}, Row{16, "qwertyuiop[]", "QWERTYUIOP{}"},
                           Row{30, "asdfghjkl;'`", "ASDFGHJKL:\"~"}, Row{43, "\\zxcvbnm,./", "|ZXCVBNM<>?"}};
constexpr std::uint32_t kSpaceKey = 57;

struct SpecialPlace {
  SpecialKey special;
  std::uint32_t key;
};
// F1 to F24 have a rule of their own.
constexpr std::array kSpecials{
    SpecialPlace{SpecialKey::Escape, 1},       SpecialPlace{SpecialKey::Backspace, 14},
    SpecialPlace{SpecialKey::Tab, 15},         SpecialPlace{SpecialKey::Enter, 28},
    SpecialPlace{SpecialKey::Multiply, 55},    SpecialPlace{SpecialKey::CapsLock, 58},
    SpecialPlace{SpecialKey::NumLock, 69},     SpecialPlace{SpecialKey::ScrollLock, 70},
    SpecialPlace{SpecialKey::Subtract, 74},    SpecialPlace{SpecialKey::Clear, 76},
    SpecialPlace{SpecialKey::Add, 78},         SpecialPlace{SpecialKey::Divide, 98},
    SpecialPlace{SpecialKey::PrintScreen, 99}, SpecialPlace{SpecialKey::Home, 102},
    SpecialPlace{SpecialKey::Up, 103},         SpecialPlace{SpecialKey::PageUp, 104},
    SpecialPlace{SpecialKey::Left, 105},       SpecialPlace{SpecialKey::Right, 106},
    SpecialPlace{SpecialKey::End, 107},        SpecialPlace{SpecialKey::Down, 108},
    SpecialPlace{SpecialKey::PageDown, 109},   SpecialPlace{SpecialKey::Insert, 110},
    SpecialPlace{SpecialKey::Delete, 111},     SpecialPlace{SpecialKey::Break, 119},
    SpecialPlace{SpecialKey::Help, 138}};

std::uint32_t FunctionKey(int number) {
  if (number <= 10) return 59 + static_cast<std::uint32_t>(number) - 1;
  if (number <= 12) return 87 + static_cast<std::uint32_t>(number) - 11;
  return 183 + static_cast<std::uint32_t>(number) - 13;
}

struct ModifierPlace {
  std::uint8_t modifier;
  std::uint32_t key;
  const char* name;
  const char* symbol;
};
constexpr std::array kModifiers{ModifierPlace{realmodifier::kShift, 42, "Shift", "Shift_L"},
                                ModifierPlace{realmodifier::kControl, 29, "Control", "Control_L"},
                                ModifierPlace{realmodifier::kMod1, 56, "Mod1", "Alt_L"},
                                ModifierPlace{realmodifier::kMod3, 97, "Mod3", "ISO_Level5_Shift"},
                                ModifierPlace{realmodifier::kMod5, 100, "Mod5", "ISO_Level3_Shift"}};

// What must be down for each level of a key with extra characters, in the order of the type below.
constexpr std::array<std::uint8_t, 4> kExtraLevels{0, realmodifier::kMod5, realmodifier::kMod3,
                                                   realmodifier::kMod3 | realmodifier::kMod5};

// The rest is what every keyboard's map has: XWayland takes none without virtual modifiers, and was seen to
// crash on Shift in one with nothing but what is needed here. It forgets the levels of a type that have no
// names, and then Qt's programs can't read the map.
constexpr std::string_view kTypes = R"(
xkb_types "quillbox" {
  include "complete"
  type "EXTRA" {
    modifiers = Mod3+Mod5; map[Mod5] = Level2; map[Mod3] = Level3; map[Mod3+Mod5] = Level4;
    level_name[Level1] = "1"; level_name[Level2] = "2"; level_name[Level3] = "3"; level_name[Level4] = "4";
  };
};
xkb_compatibility "quillbox" { include "complete" };
)";

std::string NameOf(xkb_keysym_t keysym) {
  char name[64];
  const int length = xkb_keysym_get_name(keysym, name, sizeof name);
  assert(length > 0 && static_cast<std::size_t>(length) < sizeof name);
  return {name, static_cast<std::size_t>(length)};
}

std::string KeyName(std::uint32_t key) { return "<K" + std::to_string(key) + ">"; }

}  // namespace

VirtualKeymap::VirtualKeymap(std::span<const KeyStroke> strokes) {
  AddFixedKeys();
  for (const KeyStroke& stroke : strokes) AddExtra(SymbolOf(stroke));
  text_ = Write();
}

// An extra character is the same with Shift and without, so a letter under Shift is the capital.
xkb_keysym_t VirtualKeymap::SymbolOf(const KeyStroke& stroke) {
  const xkb_keysym_t keysym = KeysymOf(stroke);
  const bool shifted = (stroke.modifiers & modifier::kShift) != 0 && stroke.character >= 0x80;
  return shifted ? xkb_keysym_to_upper(keysym) : keysym;
}

void VirtualKeymap::AddFixedKeys() {
  const auto one = [this](xkb_keysym_t keysym, std::uint32_t key) {
    places_[keysym] = {.key = key};
    symbols_[key] = "[" + NameOf(keysym) + "]";
  };
  for (const Row& row : kRows) {
    for (std::size_t i = 0; i < row.plain.size(); ++i) {
      const std::uint32_t key = row.first + static_cast<std::uint32_t>(i);
      const xkb_keysym_t plain = KeysymOf(static_cast<char32_t>(row.plain[i]));
      const xkb_keysym_t shifted = KeysymOf(static_cast<char32_t>(row.shifted[i]));
      places_[plain] = {.key = key};
      places_[shifted] = {.key = key, .modifiers = realmodifier::kShift};
      symbols_[key] = "type=\"TWO_LEVEL\",[" + NameOf(plain) + "," + NameOf(shifted) + "]";
    }
  }
  one(KeysymOf(U' '), kSpaceKey);
  for (const SpecialPlace& place : kSpecials) one(KeysymOf(place.special), place.key);
  for (int number = 1; number <= 24; ++number) {
    one(XKB_KEY_F1 + static_cast<xkb_keysym_t>(number) - 1, FunctionKey(number));
  }
  for (const ModifierPlace& place : kModifiers) symbols_[place.key] = std::string("[") + place.symbol + "]";
  for (std::uint32_t key = kLastLowKey; key > 0; --key) {
    if (symbols_.count(key) == 0) freeKeys_.push_back(key);
  }
}

void VirtualKeymap::AddExtra(xkb_keysym_t keysym) {
  if (places_.count(keysym) != 0) return;
  const std::size_t low = freeKeys_.size() * kExtraLevels.size();
  std::uint32_t key = 0;
  std::size_t level = 0;
  if (extras_ < low) {
    key = freeKeys_[extras_ % freeKeys_.size()];
    level = extras_ / freeKeys_.size();
  } else {
    key = kLastLowKey + 1 + static_cast<std::uint32_t>((extras_ - low) / kExtraLevels.size());
    level = (extras_ - low) % kExtraLevels.size();
  }
  ++extras_;
  places_[keysym] = {.key = key, .modifiers = kExtraLevels[level]};
  std::string& symbols = symbols_[key];
  if (level == 0) {
    symbols = "type=\"EXTRA\",[" + NameOf(keysym) + "]";
  } else {
    symbols.insert(symbols.size() - 1, "," + NameOf(keysym));
  }
}

std::string VirtualKeymap::Write() const {
  const std::map<std::uint32_t, std::string> keys(symbols_.begin(), symbols_.end());
  const std::uint32_t last = std::max(keys.rbegin()->first, kLastLowKey);
  std::string text = "xkb_keymap {\nxkb_keycodes \"quillbox\" {\nminimum = " + std::to_string(kXkbOffset) +
                     ";\nmaximum = " + std::to_string(last + kXkbOffset) + ";\n";
  for (const auto& [key, symbols] : keys) {
    text += KeyName(key) + "=" + std::to_string(key + kXkbOffset) + ";\n";
  }
  text += "};";
  text += kTypes;
  text += "xkb_symbols \"quillbox\" {\n";
  for (const auto& [key, symbols] : keys) text += "key " + KeyName(key) + " {" + symbols + "};\n";
  for (const ModifierPlace& place : kModifiers) {
    text += std::string("modifier_map ") + place.name + " {" + KeyName(place.key) + "};\n";
  }
  return text + "};\n};\n";
}

VirtualKeymap::Place VirtualKeymap::Find(const KeyStroke& stroke) const {
  const auto found = places_.find(SymbolOf(stroke));
  assert(found != places_.end());
  return found->second;
}

std::uint32_t VirtualKeymap::ModifierKey(int modifier) {
  for (const ModifierPlace& place : kModifiers) {
    if (place.modifier == 1 << modifier) return place.key;
  }
  return 0;
}

}  // namespace quillbox

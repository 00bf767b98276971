#include "platform/ports/KeyCombination.h"

#include <algorithm>
#include <array>

namespace quillbox {
namespace {

struct Modifier {
  TextView name;
  std::uint8_t bit;
};
constexpr std::array kModifiers{Modifier{u"Ctrl", modifier::kControl}, Modifier{u"Alt", modifier::kAlt},
                                Modifier{u"Shift", modifier::kShift}, Modifier{u"Meta", modifier::kMeta}};

struct Named {
  TextView name;
  SpecialKey key;
};
// The function keys are read by their number.
constexpr std::array kNames{Named{u"Backspace", SpecialKey::Backspace},
                            Named{u"Delete", SpecialKey::Delete},
                            Named{u"Down", SpecialKey::Down},
                            Named{u"End", SpecialKey::End},
                            Named{u"Enter", SpecialKey::Enter},
                            Named{u"Escape", SpecialKey::Escape},
                            Named{u"Help", SpecialKey::Help},
                            Named{u"Home", SpecialKey::Home},
                            Named{u"Insert", SpecialKey::Insert},
                            Named{u"Left", SpecialKey::Left},
                            Named{u"PageDown", SpecialKey::PageDown},
                            Named{u"PageUp", SpecialKey::PageUp},
                            Named{u"Pause", SpecialKey::Break},
                            Named{u"Print", SpecialKey::PrintScreen},
                            Named{u"Right", SpecialKey::Right},
                            Named{u"ScrollLock", SpecialKey::ScrollLock},
                            Named{u"Tab", SpecialKey::Tab},
                            Named{u"Up", SpecialKey::Up}};
constexpr TextView kSpace = u"Space";

bool Same(TextView a, TextView b) { return AsciiUpper(a) == AsciiUpper(b); }

bool IsControl(char32_t character) { return character < 0x20 || (character >= 0x7F && character < 0xA0); }

char32_t OneCharacter(TextView text) {
  const bool pair = text.size() == 2 && IsHighSurrogate(text[0]) && IsLowSurrogate(text[1]);
  if (pair) return JoinSurrogates(text[0], text[1]);
  return text.size() == 1 && !IsHighSurrogate(text[0]) && !IsLowSurrogate(text[0]) ? text[0] : U'\0';
}

std::optional<KeyCombination> ParseKey(TextView name) {
  for (const Named& known : kNames) {
    if (Same(name, known.name)) return KeyCombination{.special = known.key};
  }
  if (Same(name, kSpace)) return KeyCombination{.character = U' '};
  for (int number = 1; number <= kFunctionKeys; ++number) {
    if (Same(name, Text(u"F").append(Decimal(number))))
      return KeyCombination{.special = NthFunctionKey(number)};
  }
  const char32_t character = OneCharacter(AsciiUpper(name));
  if (character == U' ' || IsControl(character)) return std::nullopt;
  return KeyCombination{.character = character};
}

Text NameOf(const KeyCombination& key) {
  if (key.special >= SpecialKey::F1)
    return Text(u"F").append(Decimal(static_cast<int>(key.special) - static_cast<int>(SpecialKey::F1) + 1));
  for (const Named& known : kNames) {
    if (key.special == known.key) return Text(known.name);
  }
  if (key.special != SpecialKey::None || IsControl(key.character)) return {};
  if (key.character == U' ') return Text(kSpace);
  return TextOf(key.character);
}

}  // namespace

std::optional<KeyCombination> ParseCombination(TextView text) {
  std::uint8_t modifiers = 0;
  // The key itself may be a plus sign.
  for (std::size_t plus = text.find(u'+'); plus != TextView::npos && plus > 0; plus = text.find(u'+')) {
    const auto named = [name = text.substr(0, plus)](const Modifier& each) { return Same(name, each.name); };
    const auto* const found = std::find_if(kModifiers.begin(), kModifiers.end(), named);
    if (found == kModifiers.end()) return std::nullopt;
    modifiers |= found->bit;
    text.remove_prefix(plus + 1);
  }
  std::optional<KeyCombination> key = ParseKey(text);
  if (key) key->modifiers = modifiers;
  return key;
}

Text FormatCombination(const KeyCombination& key) {
  const Text name = NameOf(key);
  if (name.empty()) return {};
  Text text;
  for (const Modifier& each : kModifiers) {
    if ((key.modifiers & each.bit) != 0) text.append(each.name).append(u"+");
  }
  return text.append(name);
}

bool IsMissedEverywhere(const KeyCombination& key) {
  if ((key.modifiers & ~modifier::kShift) != 0) return false;
  return key.special < SpecialKey::F1 && key.special != SpecialKey::Help &&
         key.special != SpecialKey::Break && key.special != SpecialKey::PrintScreen &&
         key.special != SpecialKey::ScrollLock;
}

}  // namespace quillbox

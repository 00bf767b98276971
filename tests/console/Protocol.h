#pragma once

#include <charconv>
#include <concepts>
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

// Control characters and halves of surrogate pairs become escapes, so the result is one line of valid UTF-8
// without a tab.
std::string Escape(TextView text);
// ConsoleError for an unknown or incomplete escape, or bytes that aren't UTF-8.
Text Unescape(std::string_view bytes);
// Nothing if there is anything but digits, with a minus before them where the type has one, or too many.
template <class Number>
std::optional<Number> ReadNumber(TextView text, int base = 10) {
  const std::string digits = ToUtf8(text);
  const char* const end = digits.data() + digits.size();
  Number number{};
  const auto [stop, error] = std::from_chars(digits.data(), end, number, base);
  return stop == end && error == std::errc() ? std::optional(number) : std::nullopt;
}

class Request {
 public:
  // Reads a line without its line feed; a carriage return at its end is ignored. ConsoleError if it can't be
  // read.
  explicit Request(std::string_view line);

  const std::string& Verb() const { return verb_; }
  std::size_t Count() const { return values_.size(); }
  // An argument, counted from 0; a missing one is empty.
  const Text& operator[](std::size_t i) const;
  // The argument as the name of something of the program.
  std::string Name(std::size_t i) const;
  // ConsoleError if the argument isn't a whole number in plain decimal within the bounds.
  long long Number(std::size_t i, long long least, long long most) const;
  int Int(std::size_t i) const;
  // `0` or `1`, else ConsoleError.
  bool Flag(std::size_t i) const { return Number(i, 0, 1) == 1; }

 private:
  std::string verb_;
  std::vector<Text> values_;
};

// The values of an answer, in their order.
class Answer {
 public:
  void Add(TextView value) { Add(std::string_view(Escape(value))); }
  void Add(std::string_view plain) { (line_ += '\t') += plain; }
  void Add(Color color);
  template <class Value>
  requires std::integral<Value> || std::is_enum_v<Value>
  void Add(Value number) { Add(std::string_view(std::to_string(static_cast<long long>(number)))); }
  template <class Value>
  void Add(const std::vector<Value>& values) {
    for (const Value& value : values) Add(value);
  }
  const std::string& Line() const { return line_; }

 private:
  std::string line_ = "ok";
};

}  // namespace quillbox

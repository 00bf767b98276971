#include "console/Protocol.h"

#include <cstdio>
#include <limits>

namespace quillbox {

namespace {

constexpr TextView kSigns = u"\\\n\r\t";
constexpr TextView kLetters = u"\\nrt";       // which stand for them
constexpr std::size_t kMostArguments = 1000;  // more than any request has a use for

// The characters at which some readers of lines end a line belong to them.
bool IsControl(char16_t unit) {
  return unit < 0x20 || (unit >= 0x7F && unit <= 0x9F) || unit == 0x2028 || unit == 0x2029;
}

char16_t ReadUnit(TextView digits) {
  if (digits.size() < 4) throw ConsoleError("incomplete \\u escape");
  const auto unit = ReadNumber<std::uint16_t>(digits.substr(0, 4), 16);
  if (!unit) throw ConsoleError("bad digit in \\u escape");
  return *unit;
}

}  // namespace

std::string Escape(TextView text) {
  Text line;
  line.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    const std::size_t sign = kSigns.find(unit);
    if (IsHighSurrogate(unit) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
      line += text.substr(i++, 2);
    } else if (sign != TextView::npos) {
      (line += u'\\') += kLetters[sign];
    } else if (IsControl(unit) || IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(unit));
      line.append(escape, escape + 6);
    } else {
      line += unit;
    }
  }
  return ToUtf8(line);
}

Text Unescape(std::string_view bytes) {
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
    const std::size_t sign = kLetters.find(letter);
    if (letter == u'u') {
      result += ReadUnit(TextView(text).substr(i + 1));
      i += 4;
    } else if (sign != TextView::npos) {
      result += kSigns[sign];
    } else {
      throw ConsoleError("unknown escape");
    }
  }
  return result;
}

Request::Request(std::string_view line) {
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  std::size_t end = line.find('\t');
  verb_ = std::string(line.substr(0, end));
  while (end != std::string_view::npos) {
    line.remove_prefix(end + 1);
    end = line.find('\t');
    if (values_.size() == kMostArguments) throw ConsoleError("too many arguments");
    values_.push_back(Unescape(line.substr(0, end)));
  }
}

const Text& Request::operator[](std::size_t i) const {
  static const Text missing;
  return i < values_.size() ? values_[i] : missing;
}

std::string Request::Name(std::size_t i) const { return ToUtf8((*this)[i]); }

long long Request::Number(std::size_t i, long long least, long long most) const {
  const auto number = ReadNumber<long long>((*this)[i]);
  if (!number || *number < least || *number > most)
    throw ConsoleError("argument " + std::to_string(i + 1) + " isn't a number that fits here");
  return *number;
}

int Request::Int(std::size_t i) const {
  return static_cast<int>(Number(i, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

void Answer::Add(Color color) {
  Add(std::string_view(color == Color::Blue         ? "blue"
                       : color == Color::ButtonText ? "buttontext"
                       : color == Color::Window     ? "window"
                       : color == Color::Menu       ? "menu"
                                                    : "default"));
}

}  // namespace quillbox

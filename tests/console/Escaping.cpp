#include "console/Escaping.h"

#include "base/Utf8.h"
#include "console/ConsoleError.h"

namespace quillbox {

namespace {

void AppendUnit(std::string& line, char16_t unit) {
  constexpr char kDigits[] = "0123456789abcdef";
  line += "\\u";
  for (int shift = 12; shift >= 0; shift -= 4) line += kDigits[(unit >> shift) & 15];
}

// The characters at which some readers of lines end a line belong to them.
bool IsControl(char16_t unit) {
  return unit < 0x20 || (unit >= 0x7F && unit <= 0x9F) || unit == 0x2028 || unit == 0x2029;
}

int HexDigit(char16_t unit) {
  if (unit >= u'0' && unit <= u'9') return unit - u'0';
  if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10;
  if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10;
  return -1;
}

char16_t ReadUnit(TextView digits) {
  if (digits.size() < 4) throw ConsoleError("incomplete \\u escape");
  unsigned unit = 0;
  for (const char16_t digit : digits.substr(0, 4)) {
    const int value = HexDigit(digit);
    if (value < 0) throw ConsoleError("bad digit in \\u escape");
    unit = unit * 16 + static_cast<unsigned>(value);
  }
  return static_cast<char16_t>(unit);
}

}  // namespace

std::string Escape(TextView text) {
  std::string line;
  std::size_t plain = 0;  // where the characters begin that stay as they are
  const auto flush = [&](std::size_t end) { line += ToUtf8(text.substr(plain, end - plain)); };
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    if (IsHighSurrogate(unit) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
      ++i;
      continue;
    }
    const bool half = IsHighSurrogate(unit) || IsLowSurrogate(unit);
    if (unit != u'\\' && !half && !IsControl(unit)) continue;
    flush(i);
    plain = i + 1;
    switch (unit) {
      case u'\\':
        line += "\\\\";
        break;
      case u'\n':
        line += "\\n";
        break;
      case u'\r':
        line += "\\r";
        break;
      case u'\t':
        line += "\\t";
        break;
      default:
        AppendUnit(line, unit);
    }
  }
  flush(text.size());
  return line;
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
    ++i;
    switch (i < text.size() ? text[i] : u'\0') {
      case u'\\':
        result += u'\\';
        break;
      case u'n':
        result += u'\n';
        break;
      case u'r':
        result += u'\r';
        break;
      case u't':
        result += u'\t';
        break;
      case u'u':
        result += ReadUnit(TextView(text).substr(i + 1));
        i += 4;
        break;
      default:
        throw ConsoleError("unknown escape");
    }
  }
  return result;
}

}  // namespace quillbox

#include "platform/linux/registry/RegText.h"

#include <algorithm>
#include <cctype>
#include <charconv>

#include "base/CodePage.h"

namespace quillbox::regtext {
namespace {

constexpr int kMaxLinesOfText = 1000;
constexpr std::size_t kHexColumns = 78;
constexpr std::string_view kHive = "HKEY_";

bool IsSpace(char c) { return c == ' ' || c == '\t'; }

bool HasPrefixNoCase(std::string_view text, std::string_view prefix) {
  return text.size() >= prefix.size() &&
         std::equal(prefix.begin(), prefix.end(), text.begin(), [](char a, char b) {
           return std::toupper(static_cast<unsigned char>(a)) == std::toupper(static_cast<unsigned char>(b));
         });
}

std::string_view Trimmed(std::string_view line) {
  while (!line.empty() && (IsSpace(line.back()) || line.back() == '\r' || line.back() == '\n')) {
    line.remove_suffix(1);
  }
  while (!line.empty() && IsSpace(line.front())) line.remove_prefix(1);
  return line;
}

// Reads from the front of a text. Every function leaves the place alone when it fails.
class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  std::size_t At() const { return at_; }
  bool AtEnd() const { return at_ == text_.size(); }
  char Next() const { return AtEnd() ? '\0' : text_[at_]; }
  std::string_view Rest() const { return text_.substr(at_); }

  void SkipSpaces() {
    while (!AtEnd() && IsSpace(text_[at_])) ++at_;
  }

  bool Take(std::string_view word) {
    if (!HasPrefixNoCase(Rest(), word)) return false;
    at_ += word.size();
    return true;
  }

  // The rest of the line may hold a comment.
  bool TakeLineEnd(bool comment) {
    std::size_t at = at_;
    while (at < text_.size() && (IsSpace(text_[at]) || text_[at] == '\r')) ++at;
    if (comment && at < text_.size() && text_[at] == ';') at = std::min(text_.find('\n', at), text_.size());
    if (at < text_.size() && text_[at] != '\n') return false;
    at_ = std::min(at + 1, text_.size());
    return true;
  }

  std::optional<unsigned> TakeHex(std::size_t maxDigits) {
    unsigned value = 0;
    const std::size_t end = std::min(text_.size(), at_ + maxDigits);
    const auto [stop, failure] = std::from_chars(text_.data() + at_, text_.data() + end, value, 16);
    if (failure != std::errc()) return std::nullopt;
    at_ = static_cast<std::size_t>(stop - text_.data());
    return value;
  }

  // What stands between double quotes. With `lines` it may go on over line ends, as the original exports
  // texts; an entry or a header on one of the lines shows that the closing quote is missing instead.
  std::optional<std::string> TakeQuoted(bool lines);

 private:
  std::string_view text_;
  std::size_t at_ = 0;
};

bool TakeName(Reader& reader, std::string& name) {
  reader.SkipSpaces();
  if (reader.Take("@")) {
    name.clear();
  } else {
    std::optional<std::string> quoted = reader.TakeQuoted(false);
    if (!quoted) return false;
    name = *std::move(quoted);
  }
  reader.SkipSpaces();
  if (!reader.Take("=")) return false;
  reader.SkipSpaces();
  return true;
}

bool LooksLikeEntry(std::string_view line) {
  Reader reader(line);
  std::string name;
  return TakeName(reader, name);
}

std::optional<std::string> Reader::TakeQuoted(bool lines) {
  if (Next() != '"') return std::nullopt;
  std::string result;
  int taken = 0;
  for (std::size_t at = at_ + 1; at < text_.size(); ++at) {
    char c = text_[at];
    if (c == '"') {
      at_ = at + 1;
      return result;
    }
    if (c == '\0') return std::nullopt;  // no writer puts it there: the file is damaged
    if (c == '\n') {
      const std::string_view next = FirstLine(text_.substr(at + 1));
      if (!lines || ++taken > kMaxLinesOfText || LooksLikeEntry(next) ||
          HasPrefixNoCase(Trimmed(next), "[HKEY_") || HasPrefixNoCase(Trimmed(next), "[-HKEY_")) {
        return std::nullopt;
      }
    }
    if (c == '\\' && at + 1 < text_.size() && (text_[at + 1] == '\\' || text_[at + 1] == '"'))
      c = text_[++at];
    result += c;
  }
  return std::nullopt;
}

bool TakeHexBytes(Reader& reader, std::string& bytes) {
  reader.SkipSpaces();
  if (reader.TakeLineEnd(true)) return true;  // no bytes at all
  for (;;) {
    reader.SkipSpaces();
    if (reader.Take("\\")) {
      if (!reader.TakeLineEnd(false)) return false;
      continue;
    }
    const std::optional<unsigned> byte = reader.TakeHex(2);
    if (!byte) return false;
    bytes += static_cast<char>(*byte);
    reader.SkipSpaces();
    if (reader.Take(",")) continue;
    return reader.TakeLineEnd(true);
  }
}

bool TakeValue(Reader& reader, Entry& entry) {
  if (reader.Next() == '"') {
    std::optional<std::string> text = reader.TakeQuoted(true);
    if (!text) return false;
    entry.type = 1;
    entry.bytes = *std::move(text);
    return reader.TakeLineEnd(true);
  }
  if (reader.Take("-")) {
    entry.deleted = true;
    return reader.TakeLineEnd(true);
  }
  if (reader.Take("dword:")) {
    reader.SkipSpaces();
    const std::optional<unsigned> number = reader.TakeHex(8);
    if (!number) return false;
    entry.type = 4;
    for (unsigned shift = 0; shift < 32; shift += 8)
      entry.bytes += static_cast<char>(*number >> shift & 0xFF);
    return reader.TakeLineEnd(true);
  }
  if (reader.Take("hex:")) {
    entry.type = 3;
  } else {
    if (!reader.Take("hex(")) return false;
    const std::optional<unsigned> type = reader.TakeHex(8);
    if (!type || !reader.Take("):")) return false;
    entry.type = *type;
  }
  return TakeHexBytes(reader, entry.bytes);
}

bool HasControl(std::string_view bytes) {
  return std::any_of(bytes.begin(), bytes.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; });
}

std::string Quoted(std::string_view bytes) {
  std::string result = "\"";
  for (const char c : bytes) {
    if (c == '"' || c == '\\') result += '\\';
    result += c;
  }
  return result + '"';
}

std::string HexDigits(std::uint32_t value, std::size_t width) {
  char digits[8];
  const auto end = std::to_chars(digits, digits + sizeof digits, value, 16);
  const std::string text(digits, end.ptr);
  return text.size() < width ? std::string(width - text.size(), '0') + text : text;
}

void AppendHexBytes(std::string& line, std::string_view bytes, std::string_view lineEnd) {
  std::size_t column = line.size();
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i > 0) line += ',';
    if (column > kHexColumns) {
      line += '\\';
      line += lineEnd;
      line += "  ";
      column = 2;
    }
    line += HexDigits(static_cast<unsigned char>(bytes[i]), 2);
    column += 3;
  }
}

}  // namespace

std::string_view FirstLine(std::string_view text) {
  const std::size_t end = text.find('\n');
  return end == std::string_view::npos ? text : text.substr(0, end + 1);
}

bool IsBlank(std::string_view line) { return Trimmed(line).empty(); }

std::optional<Entry> ReadEntry(std::string_view text, std::size_t& length) {
  Reader reader(text);
  Entry entry;
  std::string name;
  if (!TakeName(reader, name) || !TakeValue(reader, entry)) return std::nullopt;
  entry.name = FromBytes(name);
  length = reader.At();
  return entry;
}

bool LooksLikeHeader(std::string_view line) {
  const std::string_view text = Trimmed(line);
  if (text.empty() || text.front() == ';') return false;
  // Even a damaged one: the entries below must not go to the section above.
  for (std::size_t at = 0; at <= std::min<std::size_t>(3, text.size()); ++at) {
    if (HasPrefixNoCase(text.substr(at), kHive)) return true;
  }
  if (HasPrefixNoCase(text, "[H")) return true;
  return text.back() == ']' && text.find('\\') != std::string_view::npos &&
         text.find('=') == std::string_view::npos;
}

std::optional<Header> ReadHeader(std::string_view line) {
  std::string_view text = Trimmed(line);
  if (text.empty() || text.front() != '[') return std::nullopt;
  text.remove_prefix(1);
  Header header;
  if (text.starts_with('-')) {
    header.deleted = true;
    text.remove_prefix(1);
  }
  // Without the closing bracket the path still can be told.
  if (text.ends_with(']')) text.remove_suffix(1);
  if (!HasPrefixNoCase(text, kHive) || text.find('\0') != std::string_view::npos) return std::nullopt;
  while (!text.empty()) {
    const std::string_view part = text.substr(0, text.find('\\'));
    if (!part.empty()) {
      if (!header.path.empty()) header.path += u'\\';
      header.path += FromBytes(part);
    }
    text.remove_prefix(std::min(text.size(), part.size() + 1));
  }
  return header;
}

std::optional<std::string> WriteEntry(const Entry& entry, std::string_view lineEnd) {
  const std::string name = ToBytes(entry.name);
  if (HasControl(name)) return std::nullopt;
  std::string line = (name.empty() ? "@" : Quoted(name)) + "=";
  if (entry.deleted) {
    line += '-';
  } else if (entry.type == 1 && !HasControl(entry.bytes)) {
    line += Quoted(entry.bytes);
  } else if (entry.type == 4 && entry.bytes.size() == 4) {
    std::uint32_t number = 0;
    for (std::size_t i = 4; i-- > 0;) number = number << 8 | static_cast<unsigned char>(entry.bytes[i]);
    line += "dword:" + HexDigits(number, 8);
  } else {
    line += entry.type == 3 ? "hex:" : "hex(" + HexDigits(entry.type, 1) + "):";
    AppendHexBytes(line, entry.bytes, lineEnd);
  }
  return line.append(lineEnd);
}

std::optional<std::string> WriteHeader(TextView path, std::string_view lineEnd) {
  std::string line = "[";
  while (!path.empty()) {
    const TextView part = path.substr(0, path.find(u'\\'));
    if (line.size() > 1) line += '\\';
    line += ToBytes(part);
    path.remove_prefix(std::min(path.size(), part.size() + 1));
  }
  if (HasControl(line)) return std::nullopt;
  return line.append("]").append(lineEnd);
}

}  // namespace quillbox::regtext

#include "platform/linux/registry/DesktopEntry.h"

#include <algorithm>

namespace quillbox::desktopentry {
namespace {

constexpr std::string_view kGroup = "[Desktop Entry]";

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kSpaces = " \t\r";
  const std::size_t first = text.find_first_not_of(kSpaces);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kSpaces) - first + 1);
}

// The raw value of a key in the group of the entry.
std::optional<std::string_view> ValueOf(std::string_view entry, std::string_view key) {
  bool inGroup = false;
  while (!entry.empty()) {
    const std::string_view whole = entry.substr(0, entry.find('\n'));
    entry.remove_prefix(std::min(entry.size(), whole.size() + 1));
    const std::string_view line = Trimmed(whole);
    if (line.starts_with('[')) {
      inGroup = line == kGroup;
      continue;
    }
    const std::size_t equals = line.find('=');
    if (inGroup && equals != std::string_view::npos && Trimmed(line.substr(0, equals)) == key) {
      return Trimmed(line.substr(equals + 1));
    }
  }
  return std::nullopt;
}

// An argument of an Exec line: first the quoting of arguments, then the escapes of every string value.
std::string Argument(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '`' || c == '$' || c == '\\') quoted += '\\';
    if (c == '%') quoted += '%';
    quoted += c;
  }
  quoted += '"';
  std::string value;
  for (const char c : quoted) {
    switch (c) {
      case '\\':
        value += "\\\\";
        break;
      case '\n':
        value += "\\n";
        break;
      case '\r':
        value += "\\r";
        break;
      case '\t':
        value += "\\t";
        break;
      default:
        value += c;
    }
  }
  return value;
}

std::string WithoutEscapes(std::string_view value) {
  std::string text;
  for (std::size_t i = 0; i < value.size(); ++i) {
    char c = value[i];
    if (c == '\\' && i + 1 < value.size()) {
      c = value[++i];
      switch (c) {
        case 's':
          c = ' ';
          break;
        case 'n':
          c = '\n';
          break;
        case 'r':
          c = '\r';
          break;
        case 't':
          c = '\t';
          break;
        default:
          break;
      }
    }
    text += c;
  }
  return text;
}

// What every entry of ours begins with.
std::string Beginning() { return std::string(kGroup).append("\nType=Application\nName=Quillbox\n"); }

}  // namespace

std::string Autostart(std::string_view program) {
  std::string entry = Beginning();
  entry += "Comment=Keeps what was copied, and notes, tasks and a calculator at hand\nExec=";
  entry += Argument(program);
  entry +=
      "\nIcon=quillbox"
      "\nTerminal=false"
      "\nX-GNOME-Autostart-enabled=true\n";
  return entry;
}

std::string Hidden() { return Beginning().append("Hidden=true\n"); }

bool IsHidden(std::string_view entry) { return ValueOf(entry, "Hidden") == "true"; }

std::optional<std::string> ProgramOf(std::string_view entry) {
  const std::optional<std::string_view> value = ValueOf(entry, "Exec");
  if (!value) return std::nullopt;
  const std::string line = WithoutEscapes(*value);
  std::string program;
  bool quoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (c == '"') {
      quoted = !quoted;
    } else if (!quoted && (c == ' ' || c == '\t')) {
      break;
    } else if ((c == '\\' && quoted) || (c == '%' && i + 1 < line.size() && line[i + 1] == '%')) {
      if (++i < line.size()) program += line[i];
    } else {
      program += c;
    }
  }
  if (quoted || program.empty()) return std::nullopt;
  return program;
}

}  // namespace quillbox::desktopentry

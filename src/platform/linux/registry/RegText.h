#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/Text.h"

// The lines of a file in the format REGEDIT4. Its bytes are in the code page; so are the names in it, each by
// itself.
namespace quillbox::regtext {

struct Entry {
  Text name;             // empty for the key's default value
  bool deleted = false;  // "name"=-
  std::uint32_t type = 0;
  std::string bytes;
};

struct Header {
  Text path;             // with the hive; small letters and capitals as they stand there
  bool deleted = false;  // [-path]
};

// The first line, with its end.
std::string_view FirstLine(std::string_view text);
bool IsBlank(std::string_view line);

// Reads the entry at the beginning of `text`; `length` becomes what it takes, with its line end. Nothing if
// what stands there is no entry, or a damaged one.
std::optional<Entry> ReadEntry(std::string_view text, std::size_t& length);

// Whether the line was meant to head a section; what it heads may still be unreadable.
bool LooksLikeHeader(std::string_view line);
std::optional<Header> ReadHeader(std::string_view line);

// The entry or header with its line end. Nothing for names that can't stand in such a file.
std::optional<std::string> WriteEntry(const Entry& entry, std::string_view lineEnd);
std::optional<std::string> WriteHeader(TextView path, std::string_view lineEnd);

}  // namespace quillbox::regtext

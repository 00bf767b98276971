#pragma once

#include <optional>
#include <string>
#include <string_view>

// Entries of the desktop for programs that start with the session.
namespace quillbox::desktopentry {

// Starts the program of that path (UTF-8).
std::string Autostart(std::string_view program);
// Hides an entry of the same name that the system has.
std::string Hidden();

bool IsHidden(std::string_view entry);
// The program of the entry's Exec line, without its arguments; nothing if it has none or it can't be read.
std::optional<std::string> ProgramOf(std::string_view entry);

}  // namespace quillbox::desktopentry

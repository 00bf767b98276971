#pragma once

#include <string>
#include <string_view>

#include "base/Text.h"

// Values on a line of their own: \\, \n, \r, \t and \uXXXX stand for backslash, line feed, carriage return,
// tab and a 16-bit unit. Everything else is UTF-8.
namespace quillbox {

// Control characters and halves of surrogate pairs become escapes, so the result is one line of valid UTF-8
// without a tab.
std::string Escape(TextView text);

// ConsoleError for an unknown or incomplete escape, or bytes that aren't UTF-8.
Text Unescape(std::string_view bytes);

}  // namespace quillbox

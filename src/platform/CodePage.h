#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/Text.h"

// The code page of the data files and of the registry: Windows-1252, extended so that no character is lost.
namespace quillbox {

// The character's byte in Windows-1252; nothing if it isn't in it. The five bytes without a character (81,
// 8D, 8F, 90, 9D) stand for the control characters of the same code.
std::optional<unsigned char> ByteOf(char16_t unit);

// One byte a unit if all of `text` is in Windows-1252, else all of it as UTF-8 behind the mark EF BB BF. A
// text whose single bytes would begin with that mark is written as UTF-8 too. FromBytes gives any text back
// unchanged.
std::string ToBytes(TextView text);
Text FromBytes(std::string_view bytes);

}  // namespace quillbox

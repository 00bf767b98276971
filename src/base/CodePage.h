#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/Text.h"

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

// The same for a file that is written and read piece by piece.
enum class Encoding { SingleBytes, Utf8 };
// The mark that a file in UTF-8 begins with.
inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

// Appends the bytes of `text`. False for a text with a character that isn't in Windows-1252, of which nothing
// or a beginning is appended then.
bool AppendBytes(std::string& bytes, TextView text, Encoding encoding);
Text FromBytes(std::string_view bytes, Encoding encoding);
// Whether these are the single bytes of `text`.
bool AreBytesOf(std::string_view bytes, TextView text);

}  // namespace quillbox

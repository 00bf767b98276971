#pragma once

#include <string>
#include <string_view>

#include "base/Text.h"

namespace quillbox {

// UTF-8 of a text. A lone surrogate becomes U+FFFD, so the result is always valid.
std::string ToUtf8(TextView text);

// The text of UTF-8 bytes. Each byte that belongs to no valid sequence becomes U+FFFD.
Text FromUtf8(std::string_view bytes);

bool IsUtf8(std::string_view bytes);

// The same for the program's own files: a lone surrogate is written in three bytes like any other unit of its
// range, and read back so; nothing that was copied is changed by being stored.
std::string ToLosslessUtf8(TextView text);
Text FromLosslessUtf8(std::string_view bytes);

}  // namespace quillbox

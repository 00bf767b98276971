#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "base/Text.h"

namespace quillbox {

// What every side of the clipboard knows of the types that other programs offer their content in.

// Of a text, as its owner sends it. What comes behind is taken off the owner's hands and forgotten.
inline constexpr std::size_t kMaxClipboardBytes = 16 * 1024 * 1024;
inline constexpr int kOwnerDeadlineMs = 5000;               // for all that is asked of one owner
inline constexpr int kSecretHintMs = kOwnerDeadlineMs / 2;  // for the mark of a secret, if it is offered
inline constexpr int kStuckReaderMs = 5000;  // a reader that takes nothing for so long is given up

// The type by which password managers mark a secret: its value says so.
inline constexpr std::string_view kSecretHintType = "x-kde-passwordManagerHint";
inline constexpr std::size_t kMaxSecretHintBytes = 64;
// Whether the value does, in whatever capitals, with or without blanks, line ends and NULs around it.
bool SaysSecret(std::string_view value);

// The names of what toolkits answer about the owner itself, of references that mean nothing once the owner is
// gone, and of other encodings of plain text.
std::span<const std::string_view> HarmlessTypes();

// True for types that are plain text in some encoding, or no content at all but talk between programs: what
// offers nothing else loses nothing when only its text is kept.
bool IsTextOrTalk(std::string_view type);

// How good a type is to read a text in: 0 is the best, each higher one is worse; -1 is no text that we read.
int TextTypeRank(std::string_view type);
inline constexpr int kTextTypeRanks = 6;

// The text of bytes that came as `type`. Programs of the one session write UTF-8 where those of the other
// mean Latin-1: what isn't valid UTF-8 is read as Latin-1, unless the type itself says UTF-8.
Text DecodeText(std::string_view type, std::string_view bytes);

// Each byte a character, and back; what Latin-1 lacks becomes a question mark.
Text FromLatin1(std::string_view bytes);
std::string ToLatin1(TextView text);

// Takes off the first bytes of a character of UTF-8 whose last ones are missing.
void DropHalfCharacter(std::string& bytes);

}  // namespace quillbox

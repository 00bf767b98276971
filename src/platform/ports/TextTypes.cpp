#include "platform/ports/TextTypes.h"

#include <algorithm>
#include <array>

#include "base/Utf8.h"

namespace quillbox {

namespace {

// The best first. "TEXT" leaves the encoding to the owner, as all behind the first two do.
constexpr std::array<std::string_view, kTextTypeRanks - 1> kTextTypes = {
    "text/plain;charset=utf-8", "UTF8_STRING", "text/plain", "STRING", "TEXT",
};
constexpr std::string_view kPlain = "text/plain;charset=";
// Encodings that DecodeText reads by the way.
constexpr std::array<std::string_view, 3> kLatinCharsets = {"us-ascii", "iso-8859-1", "ansi_x3.4-1968"};

constexpr std::string_view kHarmless[] = {
    kSecretHintType,
    "TARGETS",
    "TIMESTAMP",
    "MULTIPLE",
    "SAVE_TARGETS",
    "COMPOUND_TEXT",
    "C_STRING",
    "_VIM_TEXT",
    "_VIMENC_TEXT",
    "GTK_TEXT_BUFFER_CONTENTS",
    "DELETE",
    "INSERT_SELECTION",
    "INSERT_PROPERTY",
    "LENGTH",
    "LIST_LENGTH",
    "CHARACTER_POSITION",
    "LINE_NUMBER",
    "COLUMN_NUMBER",
    "CLIENT_WINDOW",
    "CLASS",
    "NAME",
    "USER",
    "HOSTNAME",
    "HOST_NAME",
    "IP_ADDRESS",
    "OWNER_OS",
    "PROCESS",
    "TASK",
};

char Lower(char letter) { return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter; }

bool SameLetters(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return Lower(x) == Lower(y); });
}

bool IsPlainWithCharset(std::string_view type) { return SameLetters(type.substr(0, kPlain.size()), kPlain); }

}  // namespace

bool SaysSecret(std::string_view value) {
  constexpr std::string_view kAround(" \t\r\n\0", 5);
  const std::size_t start = std::min(value.find_first_not_of(kAround), value.size());
  return SameLetters(value.substr(start, value.find_last_not_of(kAround) + 1 - start), "secret");
}

int TextTypeRank(std::string_view type) {
  const auto found = std::find_if(kTextTypes.begin(), kTextTypes.end(),
                                  [type](std::string_view each) { return SameLetters(each, type); });
  if (found != kTextTypes.end()) return static_cast<int>(found - kTextTypes.begin());
  if (!IsPlainWithCharset(type)) return -1;
  const std::string_view charset = type.substr(kPlain.size());
  const bool latin = std::any_of(kLatinCharsets.begin(), kLatinCharsets.end(),
                                 [charset](std::string_view each) { return SameLetters(each, charset); });
  return latin ? kTextTypeRanks - 1 : -1;
}

std::span<const std::string_view> HarmlessTypes() { return kHarmless; }

bool IsTextOrTalk(std::string_view type) {
  return TextTypeRank(type) >= 0 || IsPlainWithCharset(type) ||
         std::find(std::begin(kHarmless), std::end(kHarmless), type) != std::end(kHarmless);
}

Text DecodeText(std::string_view type, std::string_view bytes) {
  return TextTypeRank(type) <= 1 || IsUtf8(bytes) ? FromUtf8(bytes) : FromLatin1(bytes);
}

Text FromLatin1(std::string_view bytes) {
  Text text(bytes.size(), u'\0');
  std::transform(bytes.begin(), bytes.end(), text.begin(),
                 [](char byte) { return static_cast<char16_t>(static_cast<unsigned char>(byte)); });
  return text;
}

std::string ToLatin1(TextView text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (const char16_t unit : text) {
    if (IsLowSurrogate(unit)) continue;  // one mark for both halves
    bytes.push_back(unit < 0x100 ? static_cast<char>(unit) : '?');
  }
  return bytes;
}

void DropHalfCharacter(std::string& bytes) {
  std::size_t end = bytes.size();
  for (int back = 0; back < 3 && end > 0; ++back) {
    const auto byte = static_cast<unsigned char>(bytes[--end]);
    if (byte < 0x80) return;
    if (byte < 0xC0) continue;
    const std::size_t needed = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : 2;
    if (bytes.size() - end < needed) bytes.resize(end);
    return;
  }
}

}  // namespace quillbox

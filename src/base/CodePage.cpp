#include "base/CodePage.h"

#include <algorithm>
#include <array>

#include "base/AsciiRun.h"
#include "base/Utf8.h"

namespace quillbox {

namespace {

// The characters of the bytes 80 to 9F; all other bytes are their own code.
constexpr unsigned kSpecialFirst = 0x80;
constexpr std::array<char16_t, 32> kSpecial = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char16_t CharacterOf(unsigned char byte) {
  return byte >= kSpecialFirst && byte < kSpecialFirst + kSpecial.size() ? kSpecial[byte - kSpecialFirst]
                                                                         : byte;
}

bool AppendSingleBytes(std::string& bytes, TextView text) {
  const std::size_t start = bytes.size();
  bytes.resize(start + text.size());
  char* const to = bytes.data() + start;
  for (std::size_t at = 0;; ++at) {
    at += NarrowAscii(text.data() + at, text.size() - at, to + at);
    if (at == text.size()) return true;
    const std::optional<unsigned char> byte = ByteOf(text[at]);
    if (!byte) return false;
    to[at] = static_cast<char>(*byte);
  }
}

Text FromSingleBytes(std::string_view bytes) {
  Text result(bytes.size(), u'\0');
  for (std::size_t at = 0;; ++at) {
    at += WidenAscii(bytes.data() + at, bytes.size() - at, result.data() + at);
    if (at == bytes.size()) return result;
    result[at] = CharacterOf(static_cast<unsigned char>(bytes[at]));
  }
}

}  // namespace

std::optional<unsigned char> ByteOf(char16_t unit) {
  if (unit < kSpecialFirst || (unit >= kSpecialFirst + kSpecial.size() && unit <= 0xFF)) {
    return static_cast<unsigned char>(unit);
  }
  const auto hit = std::find(kSpecial.begin(), kSpecial.end(), unit);
  if (hit == kSpecial.end()) return std::nullopt;
  return static_cast<unsigned char>(kSpecialFirst + static_cast<unsigned>(hit - kSpecial.begin()));
}

bool AppendBytes(std::string& bytes, TextView text, Encoding encoding) {
  if (encoding == Encoding::SingleBytes) return AppendSingleBytes(bytes, text);
  bytes += ToLosslessUtf8(text);
  return true;
}

Text FromBytes(std::string_view bytes, Encoding encoding) {
  return encoding == Encoding::Utf8 ? FromLosslessUtf8(bytes) : FromSingleBytes(bytes);
}

bool AreBytesOf(std::string_view bytes, TextView text) {
  if (bytes.size() != text.size()) return false;
  constexpr std::size_t kAtOnce = 16 * kAsciiBlock;
  for (std::size_t at = 0; at < bytes.size();) {
    const std::size_t end = std::min(at + kAtOnce, bytes.size());
    if (end - at == kAtOnce && IsSameAscii<kAtOnce>(bytes.data() + at, text.data() + at)) at = end;
    for (; at < end; ++at)
      if (CharacterOf(static_cast<unsigned char>(bytes[at])) != text[at]) return false;
  }
  return true;
}

std::string ToBytes(TextView text) {
  std::string bytes;
  if (AppendSingleBytes(bytes, text) && !bytes.starts_with(kUtf8Mark)) return bytes;
  return ToLosslessUtf8(text).insert(0, kUtf8Mark);
}

Text FromBytes(std::string_view bytes) {
  if (bytes.starts_with(kUtf8Mark)) return FromLosslessUtf8(bytes.substr(kUtf8Mark.size()));
  return FromSingleBytes(bytes);
}

}  // namespace quillbox

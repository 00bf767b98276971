#include "base/Utf8.h"

#include "base/AsciiRun.h"

namespace quillbox {

namespace {

enum class Surrogates { Replace, Keep };

constexpr char16_t kReplacement = 0xFFFD;

// Room for the bytes of a text; a surrogate pair needs less than this counts.
std::size_t MostBytes(TextView text) {
  std::size_t bytes = text.size();
  for (const char16_t unit : text) bytes += (unit >= 0x80 ? 1U : 0U) + (unit >= 0x800 ? 1U : 0U);
  return bytes;
}

char LastByte(unsigned bits) { return static_cast<char>(0x80 | (bits & 0x3F)); }

// Writes a code point above ASCII, a surrogate like any other of three bytes; returns the end.
char* WriteCodePoint(unsigned code, char* to) {
  if (code < 0x800) {
    *to++ = static_cast<char>(0xC0 | (code >> 6));
  } else if (code < 0x10000) {
    *to++ = static_cast<char>(0xE0 | (code >> 12));
    *to++ = LastByte(code >> 6);
  } else {
    *to++ = static_cast<char>(0xF0 | (code >> 18));
    *to++ = LastByte(code >> 12);
    *to++ = LastByte(code >> 6);
  }
  *to++ = LastByte(code);
  return to;
}

std::string Encode(TextView text, Surrogates surrogates) {
  std::string result(MostBytes(text), '\0');
  char* to = result.data();
  const char16_t* from = text.data();
  const char16_t* const end = from + text.size();
  while (true) {
    const std::size_t run = NarrowAscii(from, static_cast<std::size_t>(end - from), to);
    from += run;
    to += run;
    if (from == end) break;
    unsigned code = *from++;
    if (IsHighSurrogate(static_cast<char16_t>(code)) && from != end && IsLowSurrogate(*from)) {
      code = JoinSurrogates(static_cast<char16_t>(code), *from++);
    } else if ((code & 0xF800) == 0xD800 && surrogates == Surrogates::Replace) {
      code = kReplacement;
    }
    to = WriteCodePoint(code, to);
  }
  result.resize(static_cast<std::size_t>(to - result.data()));
  return result;
}

struct CodePoint {
  unsigned code = 0;
  std::size_t length = 0;  // bytes; 0 if no valid sequence begins here
};

// The sequence of two to four bytes at the start of `bytes`, in its shortest form only.
CodePoint ReadCodePoint(std::string_view bytes, Surrogates surrogates) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const unsigned lead = byte(0);
  CodePoint point;
  if (lead >= 0xC2 && lead <= 0xDF) {
    point = {lead & 0x1F, 2};
  } else if ((lead & 0xF0) == 0xE0) {
    point = {lead & 0x0F, 3};
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    point = {lead & 0x07, 4};
  }
  if (point.length == 0 || bytes.size() < point.length) return {};
  for (std::size_t i = 1; i < point.length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return {};
    point.code = (point.code << 6) | (byte(i) & 0x3FU);
  }
  const bool isSurrogate = point.code >= 0xD800 && point.code <= 0xDFFF;
  if (point.length == 3 && (point.code < 0x800 || (isSurrogate && surrogates == Surrogates::Replace)))
    return {};
  if (point.length == 4 && (point.code < 0x10000 || point.code > 0x10FFFF)) return {};
  return point;
}

Text Decode(std::string_view bytes, Surrogates surrogates) {
  Text result(bytes.size(), u'\0');  // never more units than bytes
  char16_t* to = result.data();
  while (true) {
    const std::size_t run = WidenAscii(bytes.data(), bytes.size(), to);
    bytes.remove_prefix(run);
    to += run;
    if (bytes.empty()) break;
    const CodePoint point = ReadCodePoint(bytes, surrogates);
    if (point.length == 0) {
      *to++ = kReplacement;
      bytes.remove_prefix(1);
      continue;
    }
    if (point.code >= 0x10000) {
      *to++ = HighSurrogateOf(point.code);
      *to++ = LowSurrogateOf(point.code);
    } else {
      *to++ = static_cast<char16_t>(point.code);
    }
    bytes.remove_prefix(point.length);
  }
  result.resize(static_cast<std::size_t>(to - result.data()));
  return result;
}

}  // namespace

std::string ToUtf8(TextView text) { return Encode(text, Surrogates::Replace); }

Text FromUtf8(std::string_view bytes) { return Decode(bytes, Surrogates::Replace); }

bool IsUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const bool ascii = static_cast<unsigned char>(bytes.front()) < 0x80;
    const std::size_t length = ascii ? 1 : ReadCodePoint(bytes, Surrogates::Replace).length;
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

std::string ToLosslessUtf8(TextView text) { return Encode(text, Surrogates::Keep); }

Text FromLosslessUtf8(std::string_view bytes) { return Decode(bytes, Surrogates::Keep); }

}  // namespace quillbox

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

// The leading run of ASCII of a text, copied from one width of character to the other. Nearly everything that
// is stored is ASCII, so the conversions run at the speed of these two.
namespace quillbox {

// Units looked at in one go; what is left over, or isn't ASCII, is looked at one by one.
inline constexpr std::size_t kAsciiBlock = 16;

// A block as the processor takes it whole.
using ByteBlock = unsigned char __attribute__((vector_size(kAsciiBlock)));
using UnitBlock = char16_t __attribute__((vector_size(2 * kAsciiBlock)));

// Copies one block; false, with nothing copied, if not all of it is ASCII.
inline bool WidenAsciiBlock(const char* from, char16_t* to) {
  std::uint64_t words[2];
  std::memcpy(words, from, sizeof words);
  if (((words[0] | words[1]) & 0x8080808080808080) != 0) return false;
  ByteBlock bytes;
  std::memcpy(&bytes, from, sizeof bytes);
  const UnitBlock units = __builtin_convertvector(bytes, UnitBlock);
  std::memcpy(to, &units, sizeof units);
  return true;
}

inline bool NarrowAsciiBlock(const char16_t* from, char* to) {
  std::uint64_t words[4];
  std::memcpy(words, from, sizeof words);
  if (((words[0] | words[1] | words[2] | words[3]) & 0xFF80FF80FF80FF80) != 0) return false;
  UnitBlock units;
  std::memcpy(&units, from, sizeof units);
  const ByteBlock bytes = __builtin_convertvector(units, ByteBlock);
  std::memcpy(to, &bytes, sizeof bytes);
  return true;
}

// Whether so many characters are ASCII and the same in both widths.
template <std::size_t count>
bool IsSameAscii(const char* bytes, const char16_t* units) {
  unsigned short different = 0, all = 0;
  for (std::size_t i = 0; i < count; ++i) {  // as simple as the compiler wants it to take many at once
    const unsigned short unit = units[i];
    different |= static_cast<unsigned short>(static_cast<unsigned char>(bytes[i]) ^ unit);
    all |= unit;
  }
  return different == 0 && (all & 0xFF80) == 0;
}

// Copies characters from `from` (`count` are there) to `to` until one isn't ASCII; returns how many it
// copied.
inline std::size_t WidenAscii(const char* from, std::size_t count, char16_t* to) {
  std::size_t done = 0;
  while (count - done >= kAsciiBlock && WidenAsciiBlock(from + done, to + done)) done += kAsciiBlock;
  for (; done < count && static_cast<unsigned char>(from[done]) < 0x80; ++done) {
    to[done] = static_cast<unsigned char>(from[done]);
  }
  return done;
}

// The other way round.
inline std::size_t NarrowAscii(const char16_t* from, std::size_t count, char* to) {
  std::size_t done = 0;
  while (count - done >= kAsciiBlock && NarrowAsciiBlock(from + done, to + done)) done += kAsciiBlock;
  for (; done < count && from[done] < 0x80; ++done) to[done] = static_cast<char>(from[done]);
  return done;
}

}  // namespace quillbox

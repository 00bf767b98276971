#pragma once

#include <cstddef>

// The leading run of ASCII of a text, copied from one width of character to the other. Nearly everything that
// is stored is ASCII, so the conversions run at the speed of these two.
namespace quillbox {

// Units looked at in one go; a loop of a fixed count becomes a few vector instructions.
inline constexpr std::size_t kAsciiBlock = 16;

// Copies characters from `from` (`count` are there) to `to` until one isn't ASCII; returns how many it
// copied.
inline std::size_t WidenAscii(const char* from, std::size_t count, char16_t* to) {
  std::size_t done = 0;
  for (; count - done >= kAsciiBlock; done += kAsciiBlock) {
    unsigned char all = 0;
    for (std::size_t i = 0; i < kAsciiBlock; ++i) all |= static_cast<unsigned char>(from[done + i]);
    if (all >= 0x80) break;
    for (std::size_t i = 0; i < kAsciiBlock; ++i) to[done + i] = static_cast<unsigned char>(from[done + i]);
  }
  for (; done < count && static_cast<unsigned char>(from[done]) < 0x80; ++done) {
    to[done] = static_cast<unsigned char>(from[done]);
  }
  return done;
}

// The other way round.
inline std::size_t NarrowAscii(const char16_t* from, std::size_t count, char* to) {
  std::size_t done = 0;
  for (; count - done >= kAsciiBlock; done += kAsciiBlock) {
    char16_t all = 0;
    for (std::size_t i = 0; i < kAsciiBlock; ++i) all |= from[done + i];
    if (all >= 0x80) break;
    for (std::size_t i = 0; i < kAsciiBlock; ++i) to[done + i] = static_cast<char>(from[done + i]);
  }
  for (; done < count && from[done] < 0x80; ++done) to[done] = static_cast<char>(from[done]);
  return done;
}

}  // namespace quillbox

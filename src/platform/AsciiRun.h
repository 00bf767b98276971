#pragma once

#include <cstddef>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

// The leading run of ASCII of a text, copied from one width of character to the other. Nearly everything that
// is stored is ASCII, so the conversions run at the speed of these two.
namespace quillbox {

// Units looked at in one go; what is left over, or isn't ASCII, is looked at one by one.
inline constexpr std::size_t kAsciiBlock = 16;

// Copies one block; false, with nothing copied, if not all of it is ASCII.
inline bool WidenAsciiBlock(const char* from, char16_t* to) {
#ifdef __SSE2__
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
  if (_mm_movemask_epi8(bytes) != 0) return false;
  auto* const halves = reinterpret_cast<__m128i*>(to);
  _mm_storeu_si128(halves, _mm_unpacklo_epi8(bytes, _mm_setzero_si128()));
  _mm_storeu_si128(halves + 1, _mm_unpackhi_epi8(bytes, _mm_setzero_si128()));
#else
  unsigned char all = 0;
  for (std::size_t i = 0; i < kAsciiBlock; ++i) all |= static_cast<unsigned char>(from[i]);
  if (all >= 0x80) return false;
  for (std::size_t i = 0; i < kAsciiBlock; ++i) to[i] = static_cast<unsigned char>(from[i]);
#endif
  return true;
}

inline bool NarrowAsciiBlock(const char16_t* from, char* to) {
#ifdef __SSE2__
  const auto* const halves = reinterpret_cast<const __m128i*>(from);
  const __m128i low = _mm_loadu_si128(halves);
  const __m128i high = _mm_loadu_si128(halves + 1);
  const __m128i beyond = _mm_and_si128(_mm_or_si128(low, high), _mm_set1_epi16(static_cast<short>(0xFF80)));
  if (_mm_movemask_epi8(_mm_cmpeq_epi16(beyond, _mm_setzero_si128())) != 0xFFFF) return false;
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_packus_epi16(low, high));
#else
  char16_t all = 0;
  for (std::size_t i = 0; i < kAsciiBlock; ++i) all |= from[i];
  if (all >= 0x80) return false;
  for (std::size_t i = 0; i < kAsciiBlock; ++i) to[i] = static_cast<char>(from[i]);
#endif
  return true;
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

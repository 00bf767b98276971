#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace quillbox {

// Eight units of a text as the processor takes them in one go. Signed: comparisons of the other kind are
// taken apart where it has none.
using Units = short __attribute__((vector_size(16)));
inline constexpr std::size_t kUnits = sizeof(Units) / sizeof(char16_t);

inline Units UnitsAt(const char16_t* place) {
  Units units;
  std::memcpy(&units, place, sizeof units);
  return units;
}

// Whether a unit of the block has one of the bits.
inline bool HasAny(const Units& units, std::uint64_t bits) {
  std::uint64_t words[2];
  std::memcpy(words, &units, sizeof words);
  return ((words[0] | words[1]) & bits) != 0;
}

}  // namespace quillbox

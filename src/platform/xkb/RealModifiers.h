#pragma once

#include <cstdint>

// The real modifiers, as XKB numbers them.
namespace quillbox::realmodifier {

inline constexpr std::uint8_t kShift = 1;
inline constexpr std::uint8_t kLock = 2;
inline constexpr std::uint8_t kControl = 4;
inline constexpr std::uint8_t kMod1 = 8;
inline constexpr std::uint8_t kMod3 = 32;
inline constexpr std::uint8_t kMod5 = 128;

}  // namespace quillbox::realmodifier

#pragma once

#include <cstddef>

// How much the program holds. Each number stands here once; what follows from it follows here.
namespace quillbox::limits {

// The most entries that a list may be set to hold.
inline constexpr int kEntries = 100;
// The index of its last row, which is what the settings store.
inline constexpr int kHighestRow = kEntries - 1;
// A new entry stands beside the blank row that it takes the place of, for a moment.
inline constexpr int kSlots = kEntries + 1;
// What a list holds as long as nobody has chosen a number.
inline constexpr int kDefaultEntries = kEntries / 2;
// A list can't be set to hold fewer than these.
inline constexpr int kFewestEntries = 3;

// Entries of one list that the tray menu has items for: directly in it, and in the submenu.
inline constexpr int kMenuItems = 10;
inline constexpr int kSubMenuItems = 25;
// Characters of an entry that its menu item may be set to show.
inline constexpr int kFewestMenuCharacters = 3;
inline constexpr int kMostMenuCharacters = 100;

// The longest text that an entry holds, in units.
inline constexpr std::size_t kEntryLength = 32000;
// The longest message of the timer that a person can put in, in units.
inline constexpr std::size_t kTimerMessageLength = 512;

}  // namespace quillbox::limits

#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <string>

namespace quillbox::test {

// The person's keyboard and what the system tells about it. Its destructor releases and unlocks everything.
class TestKeyboard {
 public:
  // Layouts as for setxkbmap ("us,gr"); `group` is the active one, from 0.
  explicit TestKeyboard(const std::string& layouts, int group = 0);
  ~TestKeyboard();
  TestKeyboard(const TestKeyboard&) = delete;
  TestKeyboard& operator=(const TestKeyboard&) = delete;

  static constexpr std::uint8_t kCapsLock = 2;  // real modifiers
  static constexpr std::uint8_t kNumLock = 16;
  static constexpr xcb_keycode_t kShiftKey = 50;
  static constexpr xcb_keycode_t kPauseKey = 127;

  void Lock(std::uint8_t modifiers);
  std::uint8_t Locked();
  int Group();
  void Key(xcb_keycode_t code, bool press);
  bool AnyKeyDown();
  // The whole keyboard map as text: symbols, types, modifiers, actions.
  static std::string Dump();
  // Whether the root window has the property.
  bool RootHas(const char* property);

 private:
  xcb_connection_t* connection_;
  xcb_window_t root_;
};

}  // namespace quillbox::test

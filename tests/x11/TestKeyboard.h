#pragma once

#include <cstdint>
#include <string>

#include "platform/x11/keys/XKeyConnection.h"

// The header has a member of that name.
#define explicit explicitParts
#include <xcb/xkb.h>
#undef explicit

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
  XReply<xcb_xkb_get_state_reply_t> State();
  XReply<xcb_query_keymap_reply_t> Keys();

  XKeyConnection server_{nullptr};
};

}  // namespace quillbox::test

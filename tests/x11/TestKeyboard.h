#pragma once

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

#include "platform/x11/keys/XKeyConnection.h"
#include "platform/x11/keys/XKeySender.h"
#include "platform/x11/server/Xkb.h"

namespace quillbox::test {

inline void Sleep(int milliseconds) { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); }

// Of a sender whose program does nothing meanwhile, and has no windows unless it says so.
inline XKeySender::Options Plain(XFocus::IsOurs isOurs = [](xcb_window_t) { return false; }) {
  return {.display = {}, .pause = Sleep, .isOurs = std::move(isOurs)};
}

// The person's keyboard and what the system tells about it. Its destructor releases and unlocks everything.
class TestKeyboard {
 public:
  static constexpr std::uint8_t kCapsLock = 2;  // real modifiers
  static constexpr std::uint8_t kNumLock = 16;
  static constexpr xcb_keycode_t kShiftKey = 50;
  static constexpr xcb_keycode_t kPauseKey = 127;

  // Layouts as for setxkbmap ("us,gr"); `group` is the active one, from 0.
  explicit TestKeyboard(const std::string& layouts, int group = 0) {
    if (server_.Lost()) throw std::runtime_error("no X server");
    UseLayouts(layouts);
    UseGroup(group);
  }
  ~TestKeyboard() {
    const auto keys = Keys();
    for (int code = 8; code < 256; ++code)
      if ((keys->keys[code / 8] >> (code % 8) & 1) != 0) Key(static_cast<xcb_keycode_t>(code), false);
    UseGroup(0);
  }
  TestKeyboard(const TestKeyboard&) = delete;
  TestKeyboard& operator=(const TestKeyboard&) = delete;

  static void UseLayouts(const std::string& layouts) {
    const std::string command = "setxkbmap -model pc105 -layout '" + layouts + "' -variant '' -option ''";
    if (std::system(command.c_str()) != 0) throw std::runtime_error("setxkbmap failed");
  }
  // Without a lock.
  void UseGroup(int group) {
    xcb_xkb_latch_lock_state(server_.Get(), XCB_XKB_ID_USE_CORE_KBD, 0xFF, 0, 1,
                             static_cast<std::uint8_t>(group), 0, 0, 0);
    server_.Sync();
  }
  // Caps Lock and Num Lock as given.
  void UseLocks(std::uint8_t locked) {
    xcb_xkb_latch_lock_state(server_.Get(), XCB_XKB_ID_USE_CORE_KBD, kCapsLock | kNumLock, locked, 0, 0, 0, 0,
                             0);
    server_.Sync();
  }
  std::uint8_t Locked() { return State()->lockedMods; }
  int Group() { return State()->group; }
  void Key(xcb_keycode_t code, bool press) {
    server_.Key(code, press);
    server_.Sync();
  }
  bool AnyKeyDown() {
    const auto keys = Keys();
    return std::any_of(std::begin(keys->keys), std::end(keys->keys), [](auto bits) { return bits != 0; });
  }
  // The whole keyboard map as text: symbols, types, modifiers, actions.
  static std::string Dump() {
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen("xkbcomp -w0 \"$DISPLAY\" - 2>/dev/null", "r"),
                                                     &pclose);
    std::string dump;
    std::array<char, 4096> buffer{};
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe.get()))
      dump.append(buffer.data(), count);
    if (dump.empty()) throw std::runtime_error("xkbcomp failed");
    return dump;
  }
  // Whether a sender has marked the root window and not taken its marks away.
  bool TracesAreLeft() {
    for (const char* property : {"_QUILLBOX_SPARE_KEYS", "_QUILLBOX_TYPING"}) {
      const auto cookie =
          xcb_get_property(server_.Get(), 0, server_.Root(), server_.Atom(property), XCB_ATOM_ANY, 0, 1);
      const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(server_.Get(), cookie, nullptr));
      if (reply->type != XCB_ATOM_NONE) return true;
    }
    return false;
  }

 private:
  XReply<xcb_xkb_get_state_reply_t> State() {
    const auto cookie = xcb_xkb_get_state(server_.Get(), XCB_XKB_ID_USE_CORE_KBD);
    return XReply<xcb_xkb_get_state_reply_t>(xcb_xkb_get_state_reply(server_.Get(), cookie, nullptr));
  }
  XReply<xcb_query_keymap_reply_t> Keys() {
    return XReply<xcb_query_keymap_reply_t>(
        xcb_query_keymap_reply(server_.Get(), xcb_query_keymap(server_.Get()), nullptr));
  }

  XKeyConnection server_{nullptr};
};

}  // namespace quillbox::test

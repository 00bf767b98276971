#include "x11/TestKeyboard.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <stdexcept>

namespace quillbox::test {

TestKeyboard::TestKeyboard(const std::string& layouts, int group) {
  if (server_.Lost()) throw std::runtime_error("no X server");
  const std::string command = "setxkbmap -model pc105 -layout '" + layouts + "' -variant '' -option ''";
  if (std::system(command.c_str()) != 0) throw std::runtime_error("setxkbmap failed");
  xcb_xkb_latch_lock_state(server_.Get(), XCB_XKB_ID_USE_CORE_KBD, 0xFF, 0, 1,
                           static_cast<std::uint8_t>(group), 0, 0, 0);
  server_.Sync();
}

TestKeyboard::~TestKeyboard() {
  const auto keys = Keys();
  for (int code = 8; code < 256; ++code) {
    if ((keys->keys[code / 8] >> (code % 8) & 1) != 0) Key(static_cast<xcb_keycode_t>(code), false);
  }
  xcb_xkb_latch_lock_state(server_.Get(), XCB_XKB_ID_USE_CORE_KBD, 0xFF, 0, 1, 0, 0, 0, 0);
  server_.Sync();
}

void TestKeyboard::Lock(std::uint8_t modifiers) {
  xcb_xkb_latch_lock_state(server_.Get(), XCB_XKB_ID_USE_CORE_KBD, modifiers, modifiers, 0, 0, 0, 0, 0);
  server_.Sync();
}

XReply<xcb_xkb_get_state_reply_t> TestKeyboard::State() {
  const auto cookie = xcb_xkb_get_state(server_.Get(), XCB_XKB_ID_USE_CORE_KBD);
  return XReply<xcb_xkb_get_state_reply_t>(xcb_xkb_get_state_reply(server_.Get(), cookie, nullptr));
}

XReply<xcb_query_keymap_reply_t> TestKeyboard::Keys() {
  const auto cookie = xcb_query_keymap(server_.Get());
  return XReply<xcb_query_keymap_reply_t>(xcb_query_keymap_reply(server_.Get(), cookie, nullptr));
}

std::uint8_t TestKeyboard::Locked() { return State()->lockedMods; }

int TestKeyboard::Group() { return State()->group; }

void TestKeyboard::Key(xcb_keycode_t code, bool press) {
  server_.Key(code, press);
  server_.Sync();
}

bool TestKeyboard::AnyKeyDown() {
  const auto keys = Keys();
  return std::any_of(std::begin(keys->keys), std::end(keys->keys), [](auto bits) { return bits != 0; });
}

std::string TestKeyboard::Dump() {
  const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen("xkbcomp -w0 \"$DISPLAY\" - 2>/dev/null", "r"),
                                                   &pclose);
  std::string dump;
  std::array<char, 4096> buffer{};
  while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe.get())) {
    dump.append(buffer.data(), count);
  }
  if (dump.empty()) throw std::runtime_error("xkbcomp failed");
  return dump;
}

bool TestKeyboard::RootHas(const char* property) {
  const auto cookie =
      xcb_get_property(server_.Get(), 0, server_.Root(), server_.Atom(property), XCB_ATOM_ANY, 0, 1);
  return XReply<xcb_get_property_reply_t>(xcb_get_property_reply(server_.Get(), cookie, nullptr))->type !=
         XCB_ATOM_NONE;
}

}  // namespace quillbox::test

#include "x11/TestKeyboard.h"

#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <memory>
#include <stdexcept>

// The header has a member of that name.
#define explicit explicitParts
#include <xcb/xkb.h>
#undef explicit

namespace quillbox::test {
namespace {

template <class T>
std::unique_ptr<T, decltype(&std::free)> Owned(T* reply) {
  if (!reply) throw std::runtime_error("no reply of the X server");
  return {reply, &std::free};
}

}  // namespace

TestKeyboard::TestKeyboard(const std::string& layouts, int group)
    : connection_(xcb_connect(nullptr, nullptr)) {
  if (xcb_connection_has_error(connection_)) throw std::runtime_error("no X server");
  root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
  xkb_x11_setup_xkb_extension(connection_, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                              XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr);
  const std::string command = "setxkbmap -model pc105 -layout '" + layouts + "' -variant '' -option ''";
  if (std::system(command.c_str()) != 0) throw std::runtime_error("setxkbmap failed");
  xcb_xkb_latch_lock_state(connection_, XCB_XKB_ID_USE_CORE_KBD, 0xFF, 0, 1, static_cast<std::uint8_t>(group),
                           0, 0, 0);
  Group();
}

TestKeyboard::~TestKeyboard() {
  const auto keys = Owned(xcb_query_keymap_reply(connection_, xcb_query_keymap(connection_), nullptr));
  for (int code = 8; code < 256; ++code) {
    if ((keys->keys[code / 8] >> (code % 8) & 1) != 0) Key(static_cast<xcb_keycode_t>(code), false);
  }
  xcb_xkb_latch_lock_state(connection_, XCB_XKB_ID_USE_CORE_KBD, 0xFF, 0, 1, 0, 0, 0, 0);
  Group();
  xcb_disconnect(connection_);
}

void TestKeyboard::Lock(std::uint8_t modifiers) {
  xcb_xkb_latch_lock_state(connection_, XCB_XKB_ID_USE_CORE_KBD, modifiers, modifiers, 0, 0, 0, 0, 0);
  Group();
}

std::uint8_t TestKeyboard::Locked() {
  return Owned(xcb_xkb_get_state_reply(connection_, xcb_xkb_get_state(connection_, XCB_XKB_ID_USE_CORE_KBD),
                                       nullptr))
      ->lockedMods;
}

int TestKeyboard::Group() {
  return Owned(xcb_xkb_get_state_reply(connection_, xcb_xkb_get_state(connection_, XCB_XKB_ID_USE_CORE_KBD),
                                       nullptr))
      ->group;
}

void TestKeyboard::Key(xcb_keycode_t code, bool press) {
  xcb_test_fake_input(connection_, press ? XCB_KEY_PRESS : XCB_KEY_RELEASE, code, XCB_CURRENT_TIME, XCB_NONE,
                      0, 0, 0);
  Group();
}

bool TestKeyboard::AnyKeyDown() {
  const auto keys = Owned(xcb_query_keymap_reply(connection_, xcb_query_keymap(connection_), nullptr));
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
  const auto atom = Owned(xcb_intern_atom_reply(
      connection_,
      xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(property)), property), nullptr));
  return Owned(xcb_get_property_reply(connection_,
                                      xcb_get_property(connection_, 0, root_, atom->atom, XCB_ATOM_ANY, 0, 1),
                                      nullptr))
             ->type != XCB_ATOM_NONE;
}

}  // namespace quillbox::test

#include "platform/x11/keys/XKeyboardState.h"

#include <algorithm>
#include <iterator>

#include "base/RuntimeError.h"
#include "platform/x11/keys/XKeyConnection.h"
#include "platform/x11/server/Xkb.h"

namespace quillbox {
namespace {

[[noreturn]] void ThrowUnreadable() {
  throw RuntimeError(errors::kDeviceError, "The keyboard's state can't be read.");
}

}  // namespace

XKeyboardState::XKeyboardState(XKeyConnection& connection) : connection_(connection) {
  if (connection.Lost()) return;
  record_ = connection.Atom("_QUILLBOX_TYPING");
  const std::uint16_t replaced = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY;
  xcb_xkb_select_events(connection.Get(), XCB_XKB_ID_USE_CORE_KBD, replaced, 0, replaced, 0, 0, nullptr);
}

XKeyboardState::Snapshot XKeyboardState::Read() {
  xcb_connection_t* server = connection_.Get();
  const unsigned question = Ask();
  const auto keysCookie = xcb_query_keymap(server);
  Snapshot snapshot = Answer(question);
  const XReply<xcb_query_keymap_reply_t> keys(xcb_query_keymap_reply(server, keysCookie, nullptr));
  if (!keys) ThrowUnreadable();
  snapshot.anyKey =
      std::any_of(std::begin(keys->keys), std::end(keys->keys), [](auto bits) { return bits != 0; });
  return snapshot;
}

unsigned XKeyboardState::Ask() {
  return xcb_xkb_get_state(connection_.Get(), XCB_XKB_ID_USE_CORE_KBD).sequence;
}

XKeyboardState::Snapshot XKeyboardState::Answer(unsigned question) {
  const XReply<xcb_xkb_get_state_reply_t> state(
      xcb_xkb_get_state_reply(connection_.Get(), {question}, nullptr));
  if (!state) ThrowUnreadable();
  return {.held = state->baseMods, .locked = state->lockedMods, .group = state->group};
}

void XKeyboardState::SetLocks(std::uint8_t affected, std::uint8_t locked) {
  if (affected == 0) return;
  xcb_xkb_latch_lock_state(connection_.Get(), XCB_XKB_ID_USE_CORE_KBD, affected, locked, 0, 0, 0, 0, 0);
}

void XKeyboardState::BeginTyping(std::uint8_t locked) {
  unlocked_ = static_cast<std::uint8_t>(unlocked_.value_or(0) | locked);
  connection_.SetValues(connection_.Root(), record_, {*unlocked_});
  SetLocks(locked, 0);
}

void XKeyboardState::EndTyping() {
  if (!unlocked_ || connection_.Lost()) return;
  if (*unlocked_ != 0) SetLocks(*unlocked_, *unlocked_ & static_cast<std::uint8_t>(~Read().locked));
  xcb_delete_property(connection_.Get(), connection_.Root(), record_);
  unlocked_.reset();
}

void XKeyboardState::Recover() {
  const auto record = connection_.Values(connection_.Root(), record_, XCB_ATOM_CARDINAL);
  if (record.empty()) return;
  xcb_connection_t* server = connection_.Get();
  const XReply<xcb_query_keymap_reply_t> keys(
      xcb_query_keymap_reply(server, xcb_query_keymap(server), nullptr));
  for (int code = 8; keys && code < 256; ++code) {
    if ((keys->keys[code / 8] >> (code % 8) & 1) != 0)
      connection_.Key(static_cast<xcb_keycode_t>(code), false);
  }
  const auto locked = static_cast<std::uint8_t>(record[0]);
  SetLocks(locked, locked);
  xcb_delete_property(server, connection_.Root(), record_);
}

}  // namespace quillbox

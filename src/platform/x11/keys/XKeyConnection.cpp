#include "platform/x11/keys/XKeyConnection.h"

#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <utility>

#include "platform/x11/server/XServer.h"
#include "platform/x11/server/Xkb.h"

namespace quillbox {
namespace {

bool HasTest(xcb_connection_t* connection) {
  const xcb_query_extension_reply_t* test = xcb_get_extension_data(connection, &xcb_test_id);
  return test && test->present;
}

bool StartXkb(xcb_connection_t* connection, std::uint8_t& event) {
  return xkb_x11_setup_xkb_extension(connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                     XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &event,
                                     nullptr) == 1;
}

}  // namespace

XKeyConnection::XKeyConnection(const char* display) {
  int screen = 0;
  connection_ = xcb_connect(display, &screen);
  if (xcb_connection_has_error(connection_)) return;
  root_ = RootOf(connection_, screen);
  usable_ = HasTest(connection_) && StartXkb(connection_, keyboardEvent_);
}

XKeyConnection::~XKeyConnection() { xcb_disconnect(connection_); }

bool XKeyConnection::Lost() const { return !usable_ || xcb_connection_has_error(connection_) != 0; }

xcb_atom_t XKeyConnection::Atom(std::string_view name) { return AtomOf(connection_, name); }

std::vector<std::uint32_t> XKeyConnection::Values(xcb_window_t window, xcb_atom_t property, xcb_atom_t type) {
  const auto cookie = xcb_get_property(connection_, 0, window, property, type, 0, 1024);
  const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_, cookie, nullptr));
  if (!reply || reply->format != 32) return {};
  const auto* values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
  return {values, values + reply->value_len};
}

std::string XKeyConnection::String(xcb_window_t window, xcb_atom_t property) {
  const auto cookie = xcb_get_property(connection_, 0, window, property, XCB_ATOM_STRING, 0, 1024);
  const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_, cookie, nullptr));
  if (!reply || reply->format != 8) return {};
  const auto* bytes = static_cast<const char*>(xcb_get_property_value(reply.get()));
  return {bytes, bytes + xcb_get_property_value_length(reply.get())};
}

void XKeyConnection::SetValues(xcb_window_t window, xcb_atom_t property,
                               const std::vector<std::uint32_t>& values) {
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_CARDINAL, 32,
                      static_cast<std::uint32_t>(values.size()), values.data());
}

void XKeyConnection::Key(xcb_keycode_t code, bool press) {
  xcb_test_fake_input(connection_, press ? XCB_KEY_PRESS : XCB_KEY_RELEASE, code, XCB_CURRENT_TIME, XCB_NONE,
                      0, 0, 0);
}

xcb_window_t XKeyConnection::Sync() {
  const XReply<xcb_get_input_focus_reply_t> reply(
      xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
  return reply ? reply->focus : xcb_window_t{XCB_NONE};
}

bool XKeyConnection::IsOfKeyboard(const xcb_generic_event_t& event) const {
  const int type = event.response_type & 0x7F;
  return type == keyboardEvent_ || type == XCB_MAPPING_NOTIFY;
}

XReply<xcb_generic_event_t> XKeyConnection::NextEvent() {
  XReply<xcb_generic_event_t> event(xcb_poll_for_event(connection_));
  // The second byte of an XKB event says which of them it is.
  if (event && (event->response_type & 0x7F) == keyboardEvent_ && event->pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY)
    keyboardReplaced_ = true;
  return event;
}

bool XKeyConnection::KeyboardWasReplaced() {
  while (NextEvent()) continue;
  return std::exchange(keyboardReplaced_, false);
}

}  // namespace quillbox

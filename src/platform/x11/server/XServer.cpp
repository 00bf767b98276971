#include "platform/x11/server/XServer.h"

#include <cstdint>

#include "platform/x11/server/XReply.h"

namespace quillbox {

xcb_window_t RootOf(xcb_connection_t* connection, int screen) {
  xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
  for (; screens.rem > 1 && screen > 0; --screen) xcb_screen_next(&screens);
  return screens.data->root;
}

std::vector<xcb_atom_t> AtomsOf(xcb_connection_t* connection, std::span<const std::string_view> names) {
  std::vector<xcb_intern_atom_cookie_t> cookies;
  for (const std::string_view name : names)
    cookies.push_back(xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data()));
  std::vector<xcb_atom_t> atoms;
  for (const auto cookie : cookies) {
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
    atoms.push_back(reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE});
  }
  return atoms;
}

xcb_atom_t AtomOf(xcb_connection_t* connection, std::string_view name) {
  return AtomsOf(connection, {&name, 1}).front();
}

}  // namespace quillbox

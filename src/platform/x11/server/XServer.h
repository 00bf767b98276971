#pragma once

#include <xcb/xcb.h>

#include <span>
#include <string_view>
#include <vector>

namespace quillbox {

// The root window of a screen, counted from 0; of the last one if there are fewer.
xcb_window_t RootOf(xcb_connection_t* connection, int screen);

// The atoms of the names, in their order, for one round trip. None for each if the server has gone away.
std::vector<xcb_atom_t> AtomsOf(xcb_connection_t* connection, std::span<const std::string_view> names);
xcb_atom_t AtomOf(xcb_connection_t* connection, std::string_view name);

}  // namespace quillbox

#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/x11/server/XReply.h"

namespace quillbox {

// The connection that keys are sent over. Its calls wait for the server, never for another client.
class XKeyConnection {
 public:
  // `display` as in DISPLAY; null takes that variable. Without a server, or one without XTEST and XKB, it
  // stays lost.
  explicit XKeyConnection(const char* display);
  ~XKeyConnection();
  XKeyConnection(const XKeyConnection&) = delete;
  XKeyConnection& operator=(const XKeyConnection&) = delete;

  bool Lost() const;
  xcb_connection_t* Get() const { return connection_; }
  xcb_window_t Root() const { return root_; }

  xcb_atom_t Atom(std::string_view name);
  // The 32-bit values of a property, at most 1024; empty if it is missing or of another type.
  std::vector<std::uint32_t> Values(xcb_window_t window, xcb_atom_t property, xcb_atom_t type);
  // A property of the type STRING, at most 4096 bytes; empty if there is none.
  std::string String(xcb_window_t window, xcb_atom_t property);
  void SetValues(xcb_window_t window, xcb_atom_t property, const std::vector<std::uint32_t>& values);

  // Presses or releases a key through XTEST.
  void Key(xcb_keycode_t code, bool press);
  // Waits until the server has carried out everything; returns the window that has the focus then.
  xcb_window_t Sync();
  // Whether the keyboard's map has been replaced since the last such question, as by setxkbmap or by a change
  // between keyboards; perhaps by the same one. Takes in all events that have come.
  bool KeyboardWasReplaced();
  // Whether an event says that the keyboard's map has changed, or whatever else of XKB was asked for.
  bool IsOfKeyboard(const xcb_generic_event_t& event) const;
  // The next event that has come in, or null.
  XReply<xcb_generic_event_t> NextEvent();

 private:
  xcb_connection_t* connection_ = nullptr;
  xcb_window_t root_ = XCB_NONE;
  std::uint8_t keyboardEvent_ = 0;  // the number of the events of XKB
  bool usable_ = false;
  bool keyboardReplaced_ = false;
};

}  // namespace quillbox

#pragma once

#include <wayland-client.h>

#include <cstdint>

struct zwp_virtual_keyboard_manager_v1;
struct zwlr_foreign_toplevel_manager_v1;

namespace quillbox {

// The connection that keys are sent over, for one string: a compositor that was started anew is simply found
// by the next. Its calls wait for the compositor, at most 5 s, and never for another client.
class WaylandKeyConnection {
 public:
  // `display` as in WAYLAND_DISPLAY; null takes that variable. Without a compositor it stays lost.
  explicit WaylandKeyConnection(const char* display);
  ~WaylandKeyConnection();
  WaylandKeyConnection(const WaylandKeyConnection&) = delete;
  WaylandKeyConnection& operator=(const WaylandKeyConnection&) = delete;

  bool Lost() const { return lost_; }
  wl_seat* Seat() const { return seat_; }
  // Whether the seat has a keyboard, besides one of ours.
  bool SeatHasKeyboard() const { return (capabilities_ & WL_SEAT_CAPABILITY_KEYBOARD) != 0; }
  // Null where the compositor doesn't offer it.
  zwp_virtual_keyboard_manager_v1* KeyboardManager() const { return keyboardManager_; }
  // Made anew by each call, since its events begin at once: the caller listens and destroys.
  zwlr_foreign_toplevel_manager_v1* BindToplevels();

  // Sends what has been asked and waits until the compositor has carried it out; its events have been taken
  // in then. Lost if it is gone or doesn't answer.
  void Sync();

 private:
  void Global(std::uint32_t name, const char* interface);
  void ReadOnce(std::int64_t milliseconds);

  wl_display* display_ = nullptr;
  wl_registry* registry_ = nullptr;
  wl_seat* seat_ = nullptr;
  zwp_virtual_keyboard_manager_v1* keyboardManager_ = nullptr;
  std::uint32_t toplevelsName_ = 0;  // in the registry; 0 for none
  std::uint32_t capabilities_ = 0;
  bool lost_ = true;
};

}  // namespace quillbox

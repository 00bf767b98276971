#include "platform/wayland/keys/WaylandKeyConnection.h"

#include <poll.h>
#include <virtual-keyboard-unstable-v1.h>
#include <wlr-foreign-toplevel-management-unstable-v1.h>

#include <cerrno>
#include <chrono>
#include <cstring>

namespace quillbox {
namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kLongestAnswer{5000};

}  // namespace

WaylandKeyConnection::WaylandKeyConnection(const char* display) : display_(wl_display_connect(display)) {
  if (!display_) return;
  lost_ = false;
  static constexpr wl_registry_listener kGlobals{
      .global = [](void* self, wl_registry*, std::uint32_t name, const char* interface,
                   std::uint32_t) { static_cast<WaylandKeyConnection*>(self)->Global(name, interface); },
      .global_remove = [](void*, wl_registry*, std::uint32_t) {}};
  registry_ = wl_display_get_registry(display_);
  wl_registry_add_listener(registry_, &kGlobals, this);
  Sync();  // what there is
  Sync();  // what the seat can do
}

WaylandKeyConnection::~WaylandKeyConnection() {
  if (!display_) return;
  if (keyboardManager_) zwp_virtual_keyboard_manager_v1_destroy(keyboardManager_);
  if (seat_) wl_seat_destroy(seat_);
  wl_registry_destroy(registry_);
  wl_display_disconnect(display_);
}

void WaylandKeyConnection::Global(std::uint32_t name, const char* interface) {
  const auto bind = [&](const wl_interface& wanted) {
    return std::strcmp(interface, wanted.name) == 0 ? wl_registry_bind(registry_, name, &wanted, 1) : nullptr;
  };
  if (void* const manager = bind(zwp_virtual_keyboard_manager_v1_interface)) {
    keyboardManager_ = static_cast<zwp_virtual_keyboard_manager_v1*>(manager);
  } else if (std::strcmp(interface, zwlr_foreign_toplevel_manager_v1_interface.name) == 0) {
    toplevelsName_ = name;
  } else if (void* const seat = seat_ ? nullptr : bind(wl_seat_interface)) {
    static constexpr wl_seat_listener kSeat{.capabilities =
                                                [](void* self, wl_seat*, std::uint32_t all) {
                                                  static_cast<WaylandKeyConnection*>(self)->capabilities_ =
                                                      all;
                                                },
                                            .name = [](void*, wl_seat*, const char*) {}};
    seat_ = static_cast<wl_seat*>(seat);
    wl_seat_add_listener(seat_, &kSeat, this);
  }
}

zwlr_foreign_toplevel_manager_v1* WaylandKeyConnection::BindToplevels() {
  if (lost_ || toplevelsName_ == 0) return nullptr;
  return static_cast<zwlr_foreign_toplevel_manager_v1*>(
      wl_registry_bind(registry_, toplevelsName_, &zwlr_foreign_toplevel_manager_v1_interface, 1));
}

void WaylandKeyConnection::Sync() {
  if (lost_) return;
  bool done = false;
  static constexpr wl_callback_listener kDone{
      .done = [](void* flag, wl_callback*, std::uint32_t) { *static_cast<bool*>(flag) = true; }};
  wl_callback* const callback = wl_display_sync(display_);
  wl_callback_add_listener(callback, &kDone, &done);
  const auto end = SteadyClock::now() + kLongestAnswer;
  while (!done && !lost_) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - SteadyClock::now());
    if (left.count() <= 0) {
      lost_ = true;
    } else {
      ReadOnce(left.count());
    }
  }
  wl_callback_destroy(callback);
}

void WaylandKeyConnection::ReadOnce(std::int64_t milliseconds) {
  if (wl_display_prepare_read(display_) != 0) {
    lost_ = wl_display_dispatch_pending(display_) < 0;
    return;
  }
  const bool sent = wl_display_flush(display_) >= 0;
  lost_ = !sent && errno != EAGAIN;
  pollfd socket{wl_display_get_fd(display_), static_cast<short>(sent ? POLLIN : POLLIN | POLLOUT), 0};
  if (lost_ || poll(&socket, 1, static_cast<int>(milliseconds)) <= 0 || (socket.revents & ~POLLOUT) == 0) {
    wl_display_cancel_read(display_);
    return;
  }
  lost_ = wl_display_read_events(display_) < 0 || wl_display_dispatch_pending(display_) < 0;
}

}  // namespace quillbox

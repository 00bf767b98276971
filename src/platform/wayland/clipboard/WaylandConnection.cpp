#include "platform/wayland/clipboard/WaylandConnection.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "base/RuntimeError.h"

namespace quillbox {

namespace {

[[noreturn]] void Fail(const std::string& why) { throw RuntimeError(errors::kDeviceError, why); }

std::string SocketPath(const char* display) {
  if (!display) display = std::getenv("WAYLAND_DISPLAY");
  if (!display || !*display) Fail("there is no Wayland compositor: WAYLAND_DISPLAY is not set");
  if (*display == '/') return display;
  const char* const folder = std::getenv("XDG_RUNTIME_DIR");
  if (!folder || !*folder) Fail("there is no Wayland compositor: XDG_RUNTIME_DIR is not set");
  return std::string(folder) + "/" + display;
}

// The library's own way takes a connection away that was handed down to the toolkit, and waits for a
// compositor that accepts nobody.
int Connect(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) Fail("the name of the Wayland socket is too long");
  std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  const int fd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  if (fd >= 0 && connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) return fd;
  if (fd >= 0) close(fd);
  Fail("the Wayland compositor at " + path + " cannot be reached");
}

}  // namespace

WaylandConnection::WaylandConnection(EventLoop& loop, const char* display) : loop_(loop) {
  const int fd = Connect(SocketPath(display));
  display_ = wl_display_connect_to_fd(fd);
  if (!display_) {
    close(fd);
    Fail("no connection to the Wayland compositor");
  }
  registry_ = wl_display_get_registry(display_);
  ListenToRegistry();
  Sync([this] { globalsKnown_ = true; });
  loop_.Watch(fd, [this] { Dispatch(); });
  Flush();
}

WaylandConnection::~WaylandConnection() {
  const int fd = Descriptor();
  if (!lost_) loop_.Unwatch(fd);
  if (blocked_) loop_.UnwatchWritable(fd);
  for (const Awaited& each : awaited_) wl_callback_destroy(each.callback);
  wl_registry_destroy(registry_);
  wl_display_disconnect(display_);
}

void WaylandConnection::ListenToRegistry() {
  static constexpr wl_registry_listener kListener = {
      .global =
          [](void* self, wl_registry*, std::uint32_t name, const char* interface, std::uint32_t version) {
            static_cast<WaylandConnection*>(self)->globals_.push_back({name, interface, version});
          },
      .global_remove =
          [](void* self, wl_registry*, std::uint32_t name) {
            std::erase_if(static_cast<WaylandConnection*>(self)->globals_,
                          [name](const Global& each) { return each.name == name; });
          },
  };
  wl_registry_add_listener(registry_, &kListener, this);
}

const WaylandConnection::Global* WaylandConnection::Find(std::string_view interface) const {
  const auto found = std::find_if(globals_.begin(), globals_.end(),
                                  [interface](const Global& each) { return each.interface == interface; });
  return found == globals_.end() ? nullptr : &*found;
}

void* WaylandConnection::Bind(const Global& global, const wl_interface& interface, std::uint32_t version) {
  return wl_registry_bind(registry_, global.name, &interface, version);
}

void WaylandConnection::Sync(std::function<void()> done) {
  static constexpr wl_callback_listener kListener = {
      .done =
          [](void* data, wl_callback* callback, std::uint32_t) {
            WaylandConnection& self = *static_cast<Awaited*>(data)->connection;
            const auto awaited = std::find_if(self.awaited_.begin(), self.awaited_.end(),
                                              [data](const Awaited& each) { return &each == data; });
            const std::function<void()> call = std::move(awaited->done);
            self.awaited_.erase(awaited);
            wl_callback_destroy(callback);
            call();
          },
  };
  wl_callback* const callback = wl_display_sync(display_);
  awaited_.push_back({this, callback, std::move(done)});
  wl_callback_add_listener(callback, &kListener, &awaited_.back());
}

void WaylandConnection::Flush() {
  if (lost_) return;
  // A broken connection is found when it is read: what has come in before still counts.
  const bool full = wl_display_flush(display_) < 0 && errno == EAGAIN;
  if (full == blocked_) return;
  blocked_ = full;
  const int fd = Descriptor();
  if (!full) return loop_.UnwatchWritable(fd);
  loop_.WatchWritable(fd, [this] {
    Flush();
    if (!blocked_ && !dispatching_) Dispatch();  // what had to be put off
  });
}

void WaylandConnection::Dispatch() {
  if (lost_) return;
  dispatching_ = true;
  while (wl_display_prepare_read(display_) != 0) wl_display_dispatch_pending(display_);
  const bool read = wl_display_read_events(display_) == 0 || errno == EAGAIN;
  const bool sound = read && wl_display_dispatch_pending(display_) >= 0;
  if (sound && round_) round_();
  Flush();
  dispatching_ = false;
  if (!sound || wl_display_get_error(display_) != 0) Lose();
}

void WaylandConnection::Lose() {
  lost_ = true;
  const int fd = Descriptor();
  loop_.Unwatch(fd);
  if (blocked_) loop_.UnwatchWritable(fd);
  blocked_ = false;
  if (lostSink_) lostSink_();
}

}  // namespace quillbox

#include "platform/wayland/keys/WaylandToplevels.h"

#include <strings.h>
#include <wlr-foreign-toplevel-management-unstable-v1.h>

#include <algorithm>
#include <utility>

#include "platform/wayland/keys/WaylandKeyConnection.h"

namespace quillbox {

// What the compositor tells, by object.
struct WaylandToplevels::Events {
  using Handle = zwlr_foreign_toplevel_handle_v1;

  static Window& Of(void* self, Handle* handle) {
    return static_cast<WaylandToplevels*>(self)->windows_[handle];
  }
  static void State(void* self, Handle* handle, wl_array* states) {
    const auto* const first = static_cast<const std::uint32_t*>(states->data);
    const auto* const last = first + states->size / sizeof *first;
    Of(self, handle).active = std::find(first, last, ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED) != last;
  }

  static constexpr zwlr_foreign_toplevel_handle_v1_listener kWindow{
      .title = [](void*, Handle*, const char*) {},
      .app_id = [](void* self, Handle* handle, const char* id) { Of(self, handle).id = id; },
      .output_enter = [](void*, Handle*, wl_output*) {},
      .output_leave = [](void*, Handle*, wl_output*) {},
      .state = State,
      .done = [](void*, Handle*) {},
      .closed = [](void* self, Handle* handle) { static_cast<WaylandToplevels*>(self)->Remove(handle); }};
  static constexpr zwlr_foreign_toplevel_manager_v1_listener kManager{
      .toplevel = [](void* self, zwlr_foreign_toplevel_manager_v1*,
                     Handle* handle) { static_cast<WaylandToplevels*>(self)->Add(handle); },
      .finished = [](void*, zwlr_foreign_toplevel_manager_v1*) {}};
};

WaylandToplevels::WaylandToplevels(WaylandKeyConnection& connection, std::string ownId)
    : manager_(connection.BindToplevels()), ownId_(std::move(ownId)) {
  if (!manager_) return;
  zwlr_foreign_toplevel_manager_v1_add_listener(manager_, &Events::kManager, this);
  connection.Sync();
}

WaylandToplevels::~WaylandToplevels() {
  for (const auto& [handle, window] : windows_) zwlr_foreign_toplevel_handle_v1_destroy(handle);
  if (manager_) zwlr_foreign_toplevel_manager_v1_destroy(manager_);
}

const WaylandToplevels::Window* WaylandToplevels::FindOther() const {
  const auto found = std::find_if(windows_.begin(), windows_.end(), [this](const auto& each) {
    return each.second.active && strcasecmp(each.second.id.c_str(), ownId_.c_str()) != 0;
  });
  return found == windows_.end() ? nullptr : &found->second;
}

void WaylandToplevels::Add(zwlr_foreign_toplevel_handle_v1* handle) {
  windows_[handle] = {};
  zwlr_foreign_toplevel_handle_v1_add_listener(handle, &Events::kWindow, this);
}

void WaylandToplevels::Remove(zwlr_foreign_toplevel_handle_v1* handle) {
  windows_.erase(handle);
  zwlr_foreign_toplevel_handle_v1_destroy(handle);
}

}  // namespace quillbox

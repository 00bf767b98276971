#pragma once

#include <cstdint>
#include <map>
#include <string>

struct wl_array;
struct zwlr_foreign_toplevel_handle_v1;
struct zwlr_foreign_toplevel_manager_v1;

namespace quillbox {

class WaylandKeyConnection;

// The windows of all programs, where the compositor tells of them: a client knows of itself alone whether it
// has the focus, and keys that nobody gets would be lost without a word.
class WaylandToplevels {
 public:
  // The windows whose program's id is `ownId`, in capitals or small letters, are ours.
  WaylandToplevels(WaylandKeyConnection& connection, std::string ownId);
  ~WaylandToplevels();
  WaylandToplevels(const WaylandToplevels&) = delete;
  WaylandToplevels& operator=(const WaylandToplevels&) = delete;

  // Whether the compositor tells at all.
  bool Known() const { return manager_ != nullptr; }
  // Whether another program's window has the focus, as of the connection's last Sync.
  bool OtherIsActive() const { return FindOther() != nullptr; }
  // That program's id; empty if there is none.
  std::string OtherActive() const { return FindOther() ? FindOther()->id : std::string(); }

 private:
  struct Window {
    std::string id;
    bool active = false;
  };
  struct Events;

  const Window* FindOther() const;
  void Add(zwlr_foreign_toplevel_handle_v1* handle);
  void Remove(zwlr_foreign_toplevel_handle_v1* handle);

  zwlr_foreign_toplevel_manager_v1* manager_;
  std::string ownId_;
  std::map<zwlr_foreign_toplevel_handle_v1*, Window> windows_;
};

}  // namespace quillbox

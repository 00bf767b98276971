#pragma once

#include <wayland-client.h>

#include <cstdint>
#include <functional>
#include <list>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ports/EventLoop.h"

namespace quillbox {

// A connection to the Wayland compositor that never waits for it: what comes in is handed out by the event
// loop, what it doesn't take in at once is sent when it does.
class WaylandConnection {
 public:
  struct Global {
    std::uint32_t name;  // the number that it is bound by
    std::string interface;
    std::uint32_t version;
  };

  // `display` as in WAYLAND_DISPLAY; null takes that variable. RuntimeError 57 if nobody listens there. Asks
  // for the globals and waits for nothing.
  WaylandConnection(EventLoop& loop, const char* display);
  ~WaylandConnection();
  WaylandConnection(const WaylandConnection&) = delete;
  WaylandConnection& operator=(const WaylandConnection&) = delete;

  // `round` is called whenever all that had come in has been handed out. Requests belong there: an answer to
  // each single one of a flood of events would only make more of it.
  void OnRound(std::function<void()> round) { round_ = std::move(round); }
  // Called once when the compositor has gone away, or has broken the connection off; by then it isn't watched
  // any more. The connection must outlive the call.
  void OnLost(std::function<void()> lost) { lostSink_ = std::move(lost); }
  bool Lost() const { return lost_; }

  // True once all that the compositor has to offer is known.
  bool GlobalsKnown() const { return globalsKnown_; }
  // Null if there is none of that name. Later ones come and go as the compositor says.
  const Global* Find(std::string_view interface) const;
  // `interface` is what the object is to be at this end.
  void* Bind(const Global& global, const wl_interface& interface, std::uint32_t version);

  // `done` is called when the compositor has carried out all that was asked before.
  void Sync(std::function<void()> done);
  // False while the compositor takes nothing in: the library keeps a few kilobytes for it and breaks off when
  // they are full.
  bool CanSend() const { return !blocked_; }
  // Sends what has been asked for. Needed after requests that were not made in a round.
  void Flush();

  // For whoever waits outside of the event loop: what to poll for, and what to do when it is so.
  int Descriptor() const { return wl_display_get_fd(display_); }
  bool WantsToWrite() const { return blocked_; }
  void Dispatch();

 private:
  struct Awaited {
    WaylandConnection* connection;
    wl_callback* callback;
    std::function<void()> done;
  };

  void ListenToRegistry();
  void Lose();

  EventLoop& loop_;
  wl_display* display_ = nullptr;
  wl_registry* registry_ = nullptr;
  std::vector<Global> globals_;
  std::list<Awaited> awaited_;
  std::function<void()> round_, lostSink_;
  bool globalsKnown_ = false;
  bool dispatching_ = false;
  bool blocked_ = false;
  bool lost_ = false;
};

}  // namespace quillbox

#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

#include "platform/ports/EventLoop.h"
#include "platform/x11/clipboard/XAtoms.h"

namespace quillbox {

// A connection to the X server that never waits for it: events and replies are handed out by the event loop
// as they come in. Only the constructor makes round trips.
class XConnection {
 public:
  using EventSink = std::function<void(const xcb_generic_event_t&)>;
  // The reply, or null after an error. It is wiped and freed when the call-back returns.
  using ReplySink = std::function<void(const void*)>;

  // `display` as in DISPLAY; null takes that variable. RuntimeError 57 if there is no server, or one without
  // XFixes.
  XConnection(EventLoop& loop, const char* display);
  ~XConnection();
  XConnection(const XConnection&) = delete;
  XConnection& operator=(const XConnection&) = delete;

  // Every event and every error without a reply (response type 0) goes to `sink`.
  void OnEvent(EventSink sink) { eventSink_ = std::move(sink); }
  // Called after each round of events and replies that were there at once.
  void OnRound(std::function<void()> sink) { roundSink_ = std::move(sink); }
  // Called once when the server has gone away; by then the connection isn't watched any more.
  void OnLost(std::function<void()> lost) { lostSink_ = std::move(lost); }
  bool Lost() const { return lost_; }

  xcb_connection_t* Get() const { return connection_; }
  xcb_window_t Root() const { return root_; }
  const XAtoms& Atoms() const { return atoms_; }
  std::uint8_t FixesEvent() const { return fixesEvent_; }  // the number of the first XFixes event
  std::size_t MaxRequestBytes() const;                     // of a request without BIG-REQUESTS

  // Whether two windows, or their numbers, belong to the same client: the server gives each a range of its
  // own.
  bool SameClient(xcb_window_t a, xcb_window_t b) const;
  bool IsOurs(xcb_window_t window) const;  // made by this connection

  // An invisible window of our own that reports changes of its properties, and its end: a stranger may
  // destroy it.
  xcb_window_t CreateWindow();

  // `sink` is called once with the reply to the request `sequence`, unless it is forgotten before.
  void Await(unsigned sequence, ReplySink sink);
  void Forget(unsigned sequence);
  // Wipes what the library still has of replies in its own buffer, by a reply that fills it. `window` is
  // ours, and `property` a scratch one of it.
  void WipeBuffer(xcb_window_t window, xcb_atom_t property);

  // Sends what has been asked for. Needed after requests that were not made from an event or a reply.
  void Flush();
  // Hands out events and replies, outside of the event loop, until `done` or for `milliseconds`. False if the
  // time is up or the server gone.
  bool Pump(const std::function<bool()>& done, int milliseconds);

 private:
  struct Awaited {
    unsigned sequence;
    ReplySink sink;
  };

  void Dispatch();
  int TakeEvents(int limit);
  int TakeReplies();
  bool Send();  // false if the server takes nothing in just now
  void DispatchIn(int milliseconds);
  bool TurnIsOver() const;
  void CheckLost();

  EventLoop& loop_;
  xcb_connection_t* connection_ = nullptr;
  xcb_window_t root_ = XCB_NONE;
  XAtoms atoms_;
  std::uint8_t fixesEvent_ = 0;
  std::deque<Awaited> awaited_;
  EventSink eventSink_;
  std::function<void()> roundSink_, lostSink_;
  EventLoop::TimerId soon_ = 0;
  std::chrono::steady_clock::time_point turnEnds_;
  int dispatching_ = 0;
  bool lost_ = false;
};

}  // namespace quillbox

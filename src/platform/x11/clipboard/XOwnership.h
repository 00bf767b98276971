#pragma once

#include <xcb/xfixes.h>

#include <functional>

#include "platform/x11/clipboard/XConnection.h"

namespace quillbox {

// clang-format off
// Who owns the selection CLIPBOARD, as far as the server has told us, and our own wish to own it or to have it
// owned by nobody.
//
//                          +---------+     the owner is found      +--------+
//               start ---->| Unknown |---------------------------->| Others |<---- taken by another
//                          +---------+                             +--------+      client, in any state
//                               | there is none                        |
//                               v                                      | given up, hidden,
//                          +---------+                                 | or the owner has died
//                          | Nobodys |<--------------------------------+
//                          +---------+
//                            ^     | Inherit
//      reported after GiveUp |     v
//            +--------+      |  +------------+
//  Claim --->| Wished |------+  | Inheriting |
//  GiveUp    +--------+         +------------+
//  in any      |    | reported      | nobody has come since: claimed
//  state       |    | after Claim   v
//   not        |    |           +------+
//   reported   |    +---------->| Ours |
//              v                +------+
//        +-------------+            ^
//        | WishedAgain |------------+ in any case; Nobodys after GiveUp
//        +-------------+
// clang-format on
//
// The rules of X11 behind it (ICCCM 2.1 to 2.4, and the XFixes extension):
//
// A wish has a time. The server carries it out only if that lies between the last change of owner and now,
// and says nothing when it doesn't. For a wish to take effect at once it bears the latest time that we
// know, which only a change that we haven't heard of can make too old. It isn't reported back then, and is
// sent again with the server's time. We ask for that by appending nothing to a property, which is reported
// with the time.
//
// Reports come in the order of events. Each bears the number of the last request that was carried out
// before it, so a change that is older than our wish is known: it is over, and must not undo what the wish
// has done.
//
// An owner that dies leaves nobody, as one that clears does; only XFixes tells the two apart. What a dead
// one has left is claimed with the time just before its death, so that whoever has taken the selection
// since comes first.
//
// A window that is destroyed owns nothing any more, whoever has destroyed it. Ours is made anew, and claims
// again.
//
// Under Wayland the window manager owns the selection for the windows that aren't X11's, and gives it up
// when it hides theirs from us. Its windows are known by their client, which owns WM_S0.
class XOwnership {
 public:
  // What others have done. All but `claims` are the last thing that is done with an event.
  struct Sink {
    std::function<void(xcb_timestamp_t)> taken;   // another client owns it, at that time of the server
    std::function<void()> died;                   // the owner is gone and has left nobody: Inherit may follow
    std::function<void()> cleared;                // nobody owns it, on purpose
    std::function<void()> hidden;                 // the window manager has given it up
    std::function<void(xcb_timestamp_t)> claims;  // we are about to own it, as of that time
  };

  // Asks who the owner is; the sink is told.
  XOwnership(XConnection& connection, Sink sink);

  void Claim() { Wish(window_); }
  void GiveUp() { Wish(XCB_NONE); }
  // Takes over what a dead owner has left, unless somebody else has done so by now.
  void Inherit();
  // Claims what is nobody's as Inherit does, anything else as Claim does.
  void ClaimUnlessTaken();

  bool Ours() const;
  // Whether another client owns it that is the window manager.
  bool IsManagers() const;
  xcb_window_t Window() const { return window_; }           // which owns the selection when we do
  xcb_timestamp_t LatestTime() const { return lastTime_; }  // of the server that we know; 0 if none

  void OnReport(const xcb_xfixes_selection_notify_event_t& event);
  // False if the event is none of this object's.
  bool OnProperty(const xcb_property_notify_event_t& event);
  void OnWindowGone(xcb_window_t window);

 private:
  enum class State {
    Unknown,      // at the start: the server was asked for its time, then for the owner
    Others,       // owned by another client
    Nobodys,      // owned by nobody
    Wished,       // we want it changed, and have sent that with the latest time known
    WishedAgain,  // the same with the server's time, since the first wish had no effect
    Inheriting,   // the server was asked whether anybody has taken what a dead owner left
    Ours,         // owned by us
  };

  void Begin();
  void Wish(xcb_window_t owner);
  void SendWish(xcb_timestamp_t time);
  void Granted() { state_ = wished_ ? State::Ours : State::Nobodys; }
  void AskForOwner(xcb_timestamp_t time);
  unsigned AskForTime();
  void AskForManager();
  bool Wishing() const { return state_ == State::Wished || state_ == State::WishedAgain; }

  XConnection& connection_;
  Sink sink_;
  xcb_window_t window_ = XCB_NONE;
  State state_ = State::Unknown;
  xcb_window_t owner_ = XCB_NONE;    // that was reported last
  xcb_window_t manager_ = XCB_NONE;  // a window of the window manager
  xcb_timestamp_t lastTime_ = 0;     // 0 if none is known yet
  xcb_timestamp_t inheritTime_ = 0;  // with which what has become nobody's is claimed; 0 after a wish of ours
  // While Wished or WishedAgain.
  xcb_window_t wished_ = XCB_NONE;  // who shall own it
  unsigned wishSequence_ = 0;       // number of the first request that says so
  unsigned timeSequence_ = 0;       // of the question for the time behind the last one
};

}  // namespace quillbox

#include "platform/x11/clipboard/XOwnership.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "base/Trace.h"

namespace quillbox {

namespace {

// Whether a request was made before another one. Their numbers wrap around.
bool Before(unsigned a, unsigned b) { return static_cast<std::int32_t>(a - b) < 0; }

template <class Event>
unsigned SequenceOf(const Event& event) {
  return reinterpret_cast<const xcb_generic_event_t&>(event).full_sequence;
}

}  // namespace

XOwnership::XOwnership(XConnection& connection, Sink sink) : connection_(connection), sink_(std::move(sink)) {
  Begin();
}

void XOwnership::Begin() {
  window_ = connection_.CreateWindow();
  state_ = State::Unknown;
  const std::uint32_t changes = XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE;
  for (const xcb_atom_t selection : {connection_.Atoms().clipboard, connection_.Atoms().windowManager})
    xcb_xfixes_select_selection_input(connection_.Get(), window_, selection, changes);
  AskForManager();
  AskForTime();
  connection_.Flush();
}

bool XOwnership::Ours() const {
  return state_ == State::Ours || state_ == State::Inheriting || (Wishing() && wished_ == window_);
}

bool XOwnership::IsManagers() const { return owner_ && manager_ && connection_.SameClient(owner_, manager_); }

void XOwnership::OnReport(const xcb_xfixes_selection_notify_event_t& event) {
  if (event.selection == connection_.Atoms().windowManager) {
    manager_ = event.owner;
    return;
  }
  if (event.selection != connection_.Atoms().clipboard) return;
  lastTime_ = event.timestamp;
  if (Wishing() && Before(SequenceOf(event), wishSequence_)) return;
  const bool wishing = Wishing() || state_ == State::Inheriting;
  if (event.owner == window_ || (Wishing() && event.owner == wished_)) {
    owner_ = event.owner;
    if (wishing) Granted();
    return;
  }
  const bool died = event.subtype != XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER;
  if (died && (wishing || state_ == State::Ours)) return;  // we follow it, or it is our own window
  const bool managers = IsManagers();
  owner_ = event.owner;
  state_ = owner_ ? State::Others : State::Nobodys;
  if (owner_) return sink_.taken(event.timestamp);
  // A new owner of the same millisecond must not lose to us.
  inheritTime_ = std::max(event.selection_timestamp, event.timestamp - 1);
  if (managers) return sink_.hidden();
  if (!died) return sink_.cleared();
  sink_.died();
}

bool XOwnership::OnProperty(const xcb_property_notify_event_t& event) {
  if (event.window != window_ || event.atom != connection_.Atoms().forTime) return false;
  lastTime_ = event.time;
  if (state_ == State::Unknown) {
    AskForOwner(event.time);
  } else if (Wishing() && !Before(SequenceOf(event), timeSequence_)) {
    if (state_ == State::WishedAgain) {
      Granted();
    } else {
      state_ = State::WishedAgain;
      SendWish(event.time);
      timeSequence_ = AskForTime();
    }
  }
  return true;
}

void XOwnership::OnWindowGone(xcb_window_t window) {
  if (window != window_) return;
  const bool ours = Ours();
  Begin();
  if (ours) Claim();
}

void XOwnership::AskForOwner(xcb_timestamp_t time) {
  const auto cookie = xcb_get_selection_owner(connection_.Get(), connection_.Atoms().clipboard);
  connection_.Await(cookie.sequence, [this, time](const void* answer) {
    if (state_ != State::Unknown) return;  // something has happened in between
    const auto* reply = static_cast<const xcb_get_selection_owner_reply_t*>(answer);
    owner_ = reply ? reply->owner : xcb_window_t{XCB_NONE};
    state_ = owner_ ? State::Others : State::Nobodys;
    inheritTime_ = time;
    if (owner_)
      sink_.taken(time);
    else
      sink_.cleared();
  });
}

void XOwnership::AskForManager() {
  const auto cookie = xcb_get_selection_owner(connection_.Get(), connection_.Atoms().windowManager);
  connection_.Await(cookie.sequence, [this](const void* answer) {
    const auto* reply = static_cast<const xcb_get_selection_owner_reply_t*>(answer);
    if (reply) manager_ = reply->owner;
  });
}

unsigned XOwnership::AskForTime() {
  return xcb_change_property(connection_.Get(), XCB_PROP_MODE_APPEND, window_, connection_.Atoms().forTime,
                             XCB_ATOM_INTEGER, 32, 0, nullptr)
      .sequence;
}

void XOwnership::Wish(xcb_window_t owner) {
  Trace({"clipboard: ", owner ? "ours" : "cleared by us"});
  wished_ = owner;
  wishSequence_ = 0;
  inheritTime_ = 0;
  state_ = State::Wished;
  if (lastTime_) SendWish(lastTime_);
  timeSequence_ = AskForTime();
  if (!wishSequence_) wishSequence_ = timeSequence_;
  connection_.Flush();
}

void XOwnership::SendWish(xcb_timestamp_t time) {
  if (wished_) sink_.claims(time);
  const auto cookie =
      xcb_set_selection_owner(connection_.Get(), wished_, connection_.Atoms().clipboard, time);
  if (!wishSequence_) wishSequence_ = cookie.sequence;
}

void XOwnership::ClaimUnlessTaken() {
  // After a clear of our own, or with an owner whose content isn't a text, there is no such time.
  if (state_ == State::Nobodys && inheritTime_)
    Inherit();
  else
    Claim();
}

void XOwnership::Inherit() {
  Trace({"clipboard: ", "taken over from nobody"});
  wished_ = window_;
  state_ = State::Inheriting;
  const auto cookie = xcb_get_selection_owner(connection_.Get(), connection_.Atoms().clipboard);
  connection_.Await(cookie.sequence, [this](const void* answer) {
    const auto* reply = static_cast<const xcb_get_selection_owner_reply_t*>(answer);
    if (state_ != State::Inheriting || !reply || reply->owner) return;
    SendWish(inheritTime_);
    state_ = State::Ours;
  });
  connection_.Flush();
}

}  // namespace quillbox

#include "platform/x11/clipboard/XClipboard.h"

#include <malloc.h>

#include <algorithm>
#include <utility>

#include "base/RuntimeError.h"

namespace quillbox {

namespace {

constexpr std::size_t kLargeUnits = 256 * 1024;

// Of requests and of what the server says it has seen of them, the wrap-around included.
bool Before(unsigned a, unsigned b) { return static_cast<std::int32_t>(a - b) < 0; }

[[noreturn]] void ThrowBusy() { throw RuntimeError(errors::kClipboardBusy, "Can't open Clipboard"); }

}  // namespace

XClipboard::XClipboard(EventLoop& loop, const char* display)
    : loop_(loop),
      connection_(loop, display),
      window_(connection_.CreateWindow()),
      windows_(connection_),
      server_(connection_, loop),
      text_(std::make_shared<const Text>()) {
  connection_.OnEvent([this](const xcb_generic_event_t& event) { OnEvent(event); });
  connection_.OnLost([this] { OnConnectionLost(); });
  const std::uint32_t changes = XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE;
  xcb_xfixes_select_selection_input(connection_.Get(), window_, connection_.Atoms().clipboard, changes);
  AskForTime();
  connection_.Flush();
}

XClipboard::~XClipboard() = default;

TextView XClipboard::Read() {
  if (connection_.Lost() || state_ == State::Starting || state_ == State::Reading ||
      state_ == State::Unreadable)
    ThrowBusy();
  return *text_;
}

void XClipboard::Clear() {
  if (connection_.Lost()) ThrowBusy();
  EndTransfer();
  SetText({});
  state_ = State::Empty;
  server_.Withdraw();
  MakeClaim(XCB_NONE);
}

void XClipboard::Put(TextView text) {
  if (text.empty()) return Clear();
  if (connection_.Lost()) ThrowBusy();
  EndTransfer();
  SetText(Text(text));
  state_ = State::Owned;
  MakeClaim(window_);
}

bool XClipboard::Settle(int milliseconds) {
  const auto known = [this] { return state_ != State::Starting && state_ != State::Reading; };
  return known() || connection_.Pump(known, milliseconds);
}

bool XClipboard::HandOver(int milliseconds) {
  if (state_ != State::Owned || connection_.Lost()) return false;
  handover_ = std::make_unique<XClipboardManagerHandover>(connection_, window_);
  const bool saved = handover_->Run(server_.TextTargets(), lastTime_, milliseconds);
  handover_.reset();
  return saved;
}

void XClipboard::OnEvent(const xcb_generic_event_t& event) {
  const int type = event.response_type & 0x7F;
  const bool sentByClient = event.response_type & 0x80;
  if (sentByClient && type != XCB_SELECTION_NOTIFY) return;  // nothing else is a client's to send
  if (type == 0) {
    const auto& error = reinterpret_cast<const xcb_generic_error_t&>(event);
    if (error.error_code == XCB_WINDOW) server_.OnWindowGone(error.resource_id);
  } else if (type == connection_.FixesEvent() + XCB_XFIXES_SELECTION_NOTIFY) {
    OnOwnerChange(reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event));
  } else if (type == XCB_SELECTION_REQUEST) {
    server_.OnRequest(reinterpret_cast<const xcb_selection_request_event_t&>(event));
  } else if (type == XCB_SELECTION_NOTIFY) {
    const auto& notify = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
    if (transfer_) transfer_->OnSelectionNotify(notify);
    if (handover_) handover_->OnSelectionNotify(notify);
  } else if (type == XCB_PROPERTY_NOTIFY) {
    const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (notify.window == window_ && notify.atom == connection_.Atoms().forTime) return OnServerTime(notify);
    if (transfer_) transfer_->OnPropertyNotify(notify);
    server_.OnPropertyNotify(notify);
  } else if (type == XCB_DESTROY_NOTIFY) {
    server_.OnWindowGone(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
  }
}

void XClipboard::OnOwnerChange(const xcb_xfixes_selection_notify_event_t& event) {
  lastTime_ = event.timestamp;
  const auto* generic = reinterpret_cast<const xcb_generic_event_t*>(&event);
  const bool older = claim_.open && !claim_.inherited && Before(generic->full_sequence, claim_.sequence);
  if (older) return;  // than what we have put
  if (event.owner == window_ || (claim_.open && event.owner == claim_.owner)) {
    claim_.granted = true;
    return;
  }
  const bool quit = event.subtype != XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER;
  if (claim_.open && quit) return;  // an owner that we are about to follow
  claim_.open = false;
  if (event.owner != XCB_NONE) {
    server_.Withdraw();
    EndTransfer();
    StartTransfer(event.timestamp);
  } else if (quit) {
    // A new owner of the same millisecond must not lose to us.
    inheritTime_ = std::max(event.selection_timestamp, event.timestamp - 1);
    OnOwnerGone();
  } else {
    OnNobody();
  }
}

void XClipboard::OnOwnerGone() {
  if (transfer_) {
    ownerGone_ = true;
    transfer_->OwnerGone();
  } else if (state_ == State::Held && textOnly_) {
    state_ = State::Owned;
    Inherit();
  } else {
    OnNobody();
  }
}

void XClipboard::OnNobody() {
  server_.Withdraw();
  EndTransfer();
  const bool news = state_ != State::Empty;
  SetText({});
  state_ = State::Empty;
  if (news) Report(ClipboardNews::Other);
}

void XClipboard::StartTransfer(xcb_timestamp_t time) {
  SetText({});
  state_ = State::Reading;
  ownerGone_ = false;
  transfer_ =
      std::make_unique<XTransfer>(connection_, loop_, windows_.Take(), time,
                                  [this](XTransfer::Result result) { OnTransfer(std::move(result)); });
}

void XClipboard::EndTransfer() {
  if (!transfer_) return;
  windows_.GiveBack(transfer_->Window(), transfer_->WindowSpoilt());
  transfer_.reset();
}

void XClipboard::OnTransfer(XTransfer::Result result) {
  const std::unique_ptr<XTransfer> ended = std::move(transfer_);  // it is still at work further up the stack
  windows_.GiveBack(ended->Window(), ended->WindowSpoilt());
  SetText(std::move(result.text));
  textOnly_ = result.textOnly;
  if (result.outcome == XTransfer::Outcome::Arrived) {
    state_ = State::Held;
    if (ownerGone_ && textOnly_) OnOwnerGone();
    Report(ClipboardNews::Text);
    return;
  }
  state_ = result.outcome == XTransfer::Outcome::Unanswered ? State::Unreadable : State::Empty;
  Report(ClipboardNews::Other);
}

void XClipboard::AskForFirstOwner(xcb_timestamp_t time) {
  const auto cookie = xcb_get_selection_owner(connection_.Get(), connection_.Atoms().clipboard);
  connection_.Await(cookie.sequence, [this, time](const void* answer) {
    if (state_ != State::Starting) return;  // something has happened in between
    const auto* reply = static_cast<const xcb_get_selection_owner_reply_t*>(answer);
    if (reply && reply->owner)
      StartTransfer(time);
    else
      OnNobody();
  });
}

unsigned XClipboard::AskForTime() {
  // Appending nothing to a property changes nothing, but is reported with the server's time.
  return xcb_change_property(connection_.Get(), XCB_PROP_MODE_APPEND, window_, connection_.Atoms().forTime,
                             XCB_ATOM_INTEGER, 32, 0, nullptr)
      .sequence;
}

// A claim needs the server's time. So that it takes effect at once, it is made with the latest time known,
// which only a change of owner that we haven't heard of can make too old. The question behind it shows
// whether that was so.
void XClipboard::MakeClaim(xcb_window_t owner) {
  claim_ = {};
  claim_.owner = owner;
  claim_.open = true;
  if (lastTime_) {
    SendClaim(lastTime_);
    claim_.timeSequence = AskForTime();
  } else {
    claim_.sequence = claim_.timeSequence = AskForTime();
  }
  connection_.Flush();
}

// Takes over what a dead owner has left, unless somebody else has done so by now.
void XClipboard::Inherit() {
  claim_ = {};
  claim_.owner = window_;
  claim_.open = claim_.inherited = true;
  const auto cookie = xcb_get_selection_owner(connection_.Get(), connection_.Atoms().clipboard);
  connection_.Await(cookie.sequence, [this](const void* answer) {
    const auto* reply = static_cast<const xcb_get_selection_owner_reply_t*>(answer);
    if (!claim_.open || !claim_.inherited || !reply || reply->owner) return;
    SendClaim(inheritTime_);
    claim_.open = false;
  });
}

void XClipboard::SendClaim(xcb_timestamp_t time) {
  if (claim_.owner) server_.Offer(text_, time);
  const auto cookie =
      xcb_set_selection_owner(connection_.Get(), claim_.owner, connection_.Atoms().clipboard, time);
  if (!claim_.sequence) claim_.sequence = cookie.sequence;
}

void XClipboard::OnServerTime(const xcb_property_notify_event_t& event) {
  lastTime_ = event.time;
  if (state_ == State::Starting) return AskForFirstOwner(event.time);
  const auto* generic = reinterpret_cast<const xcb_generic_event_t*>(&event);
  if (!claim_.open || claim_.inherited || Before(generic->full_sequence, claim_.timeSequence)) return;
  if (claim_.granted || claim_.repeated) {
    claim_.open = false;
    return;
  }
  claim_.repeated = true;
  SendClaim(event.time);
  claim_.timeSequence = AskForTime();
}

void XClipboard::SetText(Text text) {
  // What a large text took, or took on its way, goes back to the system.
  const bool large = std::max(text_->size(), text.capacity()) > kLargeUnits;
  if (large && text.capacity() / 2 > text.size()) text.shrink_to_fit();
  text_ = std::make_shared<const Text>(std::move(text));
  if (large) malloc_trim(0);
}

void XClipboard::Report(ClipboardNews news) { Tell(news); }

void XClipboard::OnConnectionLost() {
  transfer_.reset();
  if (lost_) lost_();
}

}  // namespace quillbox

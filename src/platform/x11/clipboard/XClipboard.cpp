#include "platform/x11/clipboard/XClipboard.h"

#include <malloc.h>

#include <algorithm>
#include <cstdint>
#include <utility>

#include "base/RuntimeError.h"
#include "base/Trace.h"

namespace quillbox {

namespace {

constexpr std::size_t kLargeUnits = 256 * 1024;

[[noreturn]] void ThrowBusy() { throw RuntimeError(errors::kClipboardBusy, "Can't open Clipboard"); }

}  // namespace

XClipboard::XClipboard(EventLoop& loop, const char* display)
    : loop_(loop),
      connection_(loop, display),
      windows_(connection_),
      server_(connection_, loop),
      ownership_(connection_, {.taken = [this](xcb_timestamp_t time) { OnTaken(time); },
                               .died = [this] { OnDied(); },
                               .cleared = [this] { OnNobody(Content::NoText); },
                               .hidden = [this] { OnNobody(Content::Unreadable); },
                               .claims = [this](xcb_timestamp_t time) { server_.Offer(text_, time); }}),
      text_(std::make_shared<const Text>()) {
  connection_.OnEvent([this](const xcb_generic_event_t& event) { OnEvent(event); });
  connection_.OnRound([this] { StartDueTransfer(); });
  connection_.OnLost([this] { OnConnectionLost(); });
}

XClipboard::~XClipboard() = default;

TextView XClipboard::Read() {
  if (connection_.Lost() || (content_ != Content::HasText && content_ != Content::NoText)) ThrowBusy();
  return *text_;
}

void XClipboard::Clear() {
  RequireWritable();
  EndTransfer();
  SetText({});
  content_ = Content::NoText;
  server_.Withdraw();
  ownership_.GiveUp();
}

void XClipboard::Put(TextView text) {
  if (text.empty()) return Clear();
  Hold(text);
  ownership_.Claim();
}

void XClipboard::PutUnlessTaken(TextView text) {
  Hold(text);
  ownership_.ClaimUnlessTaken();
}

void XClipboard::Hold(TextView text) {
  RequireWritable();
  EndTransfer();
  SetText(Text(text));
  content_ = Content::HasText;
}

void XClipboard::RequireWritable() {
  if (connection_.Lost() || (content_ == Content::Refused && ownership_.IsManagers())) ThrowBusy();
}

bool XClipboard::Settle(int milliseconds) {
  const auto known = [this] { return content_ != Content::Unknown && content_ != Content::Reading; };
  return known() || connection_.Pump(known, milliseconds);
}

bool XClipboard::HandOver(int milliseconds) {
  if (!ownership_.Ours() || connection_.Lost()) return false;
  handover_ = std::make_unique<XClipboardManagerHandover>(connection_, ownership_.Window());
  const bool saved = handover_->Run(server_.TextTargets(), ownership_.LatestTime(), milliseconds);
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
    ownership_.OnReport(reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event));
  } else if (type == XCB_SELECTION_REQUEST) {
    server_.OnRequest(reinterpret_cast<const xcb_selection_request_event_t&>(event));
  } else if (type == XCB_SELECTION_NOTIFY) {
    const auto& notify = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
    if (transfer_) transfer_->OnSelectionNotify(notify);
    if (handover_) handover_->OnSelectionNotify(notify);
  } else if (type == XCB_PROPERTY_NOTIFY) {
    OnProperty(reinterpret_cast<const xcb_property_notify_event_t&>(event));
  } else if (type == XCB_DESTROY_NOTIFY) {
    OnWindowGone(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
  }
}

void XClipboard::OnProperty(const xcb_property_notify_event_t& event) {
  if (ownership_.OnProperty(event)) return;
  // Another window has the focus now: perhaps one for which the window manager shows what it has.
  if (event.window == connection_.Root()) {
    if (event.atom == connection_.Atoms().activeWindow && content_ == Content::Refused)
      StartTransfer(ownership_.LatestTime());
    return;
  }
  if (transfer_) transfer_->OnPropertyNotify(event);
  server_.OnPropertyNotify(event);
}

// Our own windows are none of a stranger's to destroy, but any client can.
void XClipboard::OnWindowGone(xcb_window_t window) {
  server_.OnWindowGone(window);
  windows_.OnWindowGone(window);
  ownership_.OnWindowGone(window);
  if (!transfer_ || transfer_->Window() != window) return;
  transfer_.reset();
  StartTransfer(ownership_.LatestTime());
}

// Owners may follow each other faster than they can be asked; of those in one round only the last one is.
void XClipboard::OnTaken(xcb_timestamp_t time) {
  server_.Withdraw();
  EndTransfer();
  content_ = Content::Reading;
  due_ = time;
}

void XClipboard::OnDied() {
  StartDueTransfer();
  if (transfer_) {
    ownerGone_ = true;
    transfer_->OwnerGone();
  } else if (content_ == Content::HasText && textOnly_) {
    ownership_.Inherit();
  } else {
    OnNobody(Content::NoText);
  }
}

void XClipboard::OnNobody(Content content) {
  server_.Withdraw();
  EndTransfer();
  SetText({});
  Trace({"clipboard: ", content == Content::NoText ? "nobody's" : "hidden"});
  if (std::exchange(content_, content) != content) Tell(ClipboardNews::Other);
}

void XClipboard::StartTransfer(xcb_timestamp_t time) {
  SetText({});
  content_ = Content::Reading;
  ownerGone_ = false;
  transfer_ =
      std::make_unique<XTransfer>(connection_, loop_, windows_, secrets_, time,
                                  [this](XTransfer::Result result) { OnTransfer(std::move(result)); });
}

void XClipboard::StartDueTransfer() {
  if (const auto due = std::exchange(due_, std::nullopt)) StartTransfer(*due);
}

void XClipboard::EndTransfer() {
  due_.reset();
  transfer_.reset();
}

void XClipboard::OnTransfer(XTransfer::Result result) {
  const std::unique_ptr<XTransfer> ended = std::move(transfer_);  // it is still at work further up the stack
  SetText(std::move(result.text));
  secret_ = result.outcome == XTransfer::Outcome::Secret;
  if (result.outcome == XTransfer::Outcome::NoText && !ownerGone_) secrets_.Forget();
  textOnly_ = result.textOnly;
  content_ = result.outcome == XTransfer::Outcome::Arrived      ? Content::HasText
             : result.outcome == XTransfer::Outcome::Unanswered ? Content::Unreadable
             : result.outcome == XTransfer::Outcome::Refused    ? Content::Refused
                                                                : Content::NoText;
  FollowFocus(content_ == Content::Refused && ownership_.IsManagers());
  const bool arrived = content_ == Content::HasText;
  Trace({"clipboard: ", arrived   ? "a text of others"
                        : secret_ ? "a secret"
                                  : "nothing that can be read as a text"});
  if (arrived && ownerGone_ && textOnly_) OnDied();
  Tell(arrived ? ClipboardNews::Text : ClipboardNews::Other);
}

void XClipboard::FollowFocus(bool follow) {
  if (std::exchange(followsFocus_, follow) == follow) return;
  const std::uint32_t events = follow ? XCB_EVENT_MASK_PROPERTY_CHANGE : XCB_EVENT_MASK_NO_EVENT;
  xcb_change_window_attributes(connection_.Get(), connection_.Root(), XCB_CW_EVENT_MASK, &events);
}

void XClipboard::SetText(Text text) {
  // What a large text took, or took on its way, goes back to the system.
  const bool large = std::max(text_->size(), text.capacity()) > kLargeUnits;
  if (large && text.capacity() / 2 > text.size()) text.shrink_to_fit();
  text_ = std::make_shared<const Text>(std::move(text));
  secret_ = false;
  if (large) malloc_trim(0);
}

void XClipboard::OnConnectionLost() {
  EndTransfer();
  if (lost_) lost_();
}

}  // namespace quillbox

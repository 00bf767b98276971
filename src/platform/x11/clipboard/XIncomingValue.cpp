#include "platform/x11/clipboard/XIncomingValue.h"

#include <algorithm>
#include <utility>

namespace quillbox {

namespace {

constexpr std::uint32_t kPieceUnits =
    64 * 1024;  // 256 KiB a request: the reply stays small, whatever is there

}  // namespace

XIncomingValue::XIncomingValue(XConnection& connection, xcb_window_t window, xcb_atom_t property, int format,
                               std::size_t keep, std::function<void()> done)
    : connection_(connection),
      window_(window),
      property_(property),
      format_(format),
      done_(std::move(done)),
      bytes_(keep) {}

XIncomingValue::~XIncomingValue() {
  if (pending_) connection_.Forget(pending_);
}

void XIncomingValue::Request() {
  // The server deletes the property with its last piece, which tells the other client to go on.
  pending_ = xcb_get_property(connection_.Get(), 1, window_, property_, XCB_GET_PROPERTY_TYPE_ANY, offset_,
                              kPieceUnits)
                 .sequence;
  connection_.Await(pending_, [this](const void* reply) {
    pending_ = 0;
    OnReply(static_cast<const xcb_get_property_reply_t*>(reply));
  });
}

void XIncomingValue::OnNewValue() {
  if (finished_) return;
  if (pending_)
    again_ = true;  // also before the reply that says INCR: events are looked at first
  else if (incremental_)
    Request();
}

void XIncomingValue::OwnerGone() {
  ownerGone_ = true;
  if (!pending_ && !finished_) Finish(false);
}

void XIncomingValue::OnReply(const xcb_get_property_reply_t* reply) {
  if (!reply) return Finish(false);
  const auto length = static_cast<std::size_t>(std::max(0, xcb_get_property_value_length(reply)));

  if (reply->type == connection_.Atoms().incr && !incremental_ && offset_ == 0) {
    incremental_ = true;
    if (reply->bytes_after > 0) xcb_delete_property(connection_.Get(), window_, property_);
  } else if (reply->type == XCB_ATOM_NONE) {
    // No value: between two increments nothing to worry about.
    if (!incremental_ || offset_ > 0) return Finish(false);
  } else if (length == 0 && reply->bytes_after == 0 && offset_ == 0) {
    if (type_ == XCB_ATOM_NONE) type_ = reply->type;
    return Finish(true);
  } else {
    if (type_ == XCB_ATOM_NONE) type_ = reply->type;
    if (reply->format != format_ || reply->type != type_ || length == 0) return Finish(false);
    const bool whole = bytes_.Append({static_cast<const char*>(xcb_get_property_value(reply)), length});
    truncated_ = truncated_ || !whole;
    if (reply->bytes_after > 0) {
      offset_ += static_cast<std::uint32_t>(length / 4);
      return Request();
    }
    if (!incremental_) return Finish(true);
    offset_ = 0;
  }
  if (std::exchange(again_, false)) return Request();
  if (ownerGone_) Finish(false);
}

void XIncomingValue::Finish(bool valid) {
  valid_ = valid;
  finished_ = true;
  const auto done = std::move(done_);
  if (done) done();
}

}  // namespace quillbox

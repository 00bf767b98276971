#include "platform/x11/clipboard/XSelectionServer.h"

#include <malloc.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "base/Utf8.h"
#include "platform/ports/TextTypes.h"

namespace quillbox {

namespace {

constexpr std::uint32_t kMaxPairs = 64;  // of a MULTIPLE request
constexpr std::size_t kLarge = 1024 * 1024;

bool FitsLatin1(TextView text) {
  return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit <= 0xFF; });
}

// The wrap-around of server times included.
bool Earlier(xcb_timestamp_t a, xcb_timestamp_t b) { return static_cast<std::int32_t>(a - b) < 0; }

}  // namespace

XSelectionServer::~XSelectionServer() {
  if (stuckTimer_) loop_.CancelTimer(stuckTimer_);
}

void XSelectionServer::Offer(std::shared_ptr<const Text> text, xcb_timestamp_t since) {
  if (text != text_) {
    utf8_.reset();
    latin1_.reset();
  }
  text_ = std::move(text);
  since_ = since;
}

void XSelectionServer::Withdraw() { Offer(nullptr, 0); }

std::vector<xcb_atom_t> XSelectionServer::TextTargets() const {
  const XAtoms& atoms = connection_.Atoms();
  return {atoms.utf8String, atoms.plainUtf8, atoms.text, XCB_ATOM_STRING};
}

void XSelectionServer::OnRequest(const xcb_selection_request_event_t& event) {
  const XAtoms& atoms = connection_.Atoms();
  const bool tooEarly = event.time != XCB_CURRENT_TIME && Earlier(event.time, since_);
  const bool ours = connection_.IsOurs(event.requestor);  // nobody else may have us answer to our own windows
  if (!text_ || event.selection != atoms.clipboard || tooEarly || ours) return Answer(event, XCB_ATOM_NONE);
  if (event.target == atoms.multiple) return ConvertMultiple(event);
  // An old client names no property: then the target's name is the property's, too (ICCCM 2.2).
  const xcb_atom_t property = event.property ? event.property : event.target;
  Answer(event, Convert(event.requestor, event.target, property) ? property : xcb_atom_t{XCB_ATOM_NONE});
}

void XSelectionServer::Answer(const xcb_selection_request_event_t& event, xcb_atom_t property) {
  xcb_selection_notify_event_t answer{};
  answer.response_type = XCB_SELECTION_NOTIFY;
  answer.time = event.time;
  answer.requestor = event.requestor;
  answer.selection = event.selection;
  answer.target = event.target;
  answer.property = property;
  char wire[32] = {};  // events are that long on the wire
  static_assert(sizeof answer <= sizeof wire);
  std::memcpy(wire, &answer, sizeof answer);
  xcb_send_event(connection_.Get(), 0, event.requestor, XCB_EVENT_MASK_NO_EVENT, wire);
}

bool XSelectionServer::Convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property) {
  const XAtoms& atoms = connection_.Atoms();
  const auto put32 = [&](xcb_atom_t type, std::uint32_t count, const void* values) {
    xcb_change_property(connection_.Get(), XCB_PROP_MODE_REPLACE, requestor, property, type, 32, count,
                        values);
    return true;
  };
  if (target == atoms.targets) {
    std::vector<xcb_atom_t> targets = TextTargets();
    targets.insert(targets.begin(), {atoms.targets, atoms.timestamp, atoms.multiple, atoms.saveTargets});
    return put32(XCB_ATOM_ATOM, static_cast<std::uint32_t>(targets.size()), targets.data());
  }
  if (target == atoms.timestamp) return put32(XCB_ATOM_INTEGER, 1, &since_);
  if (target == atoms.saveTargets) return put32(atoms.null, 0, nullptr);
  if (target == atoms.utf8String || target == atoms.plainUtf8) return PutText(requestor, property, target);
  if (target == XCB_ATOM_STRING) return PutText(requestor, property, XCB_ATOM_STRING);
  if (target == atoms.text)
    return PutText(requestor, property, FitsLatin1(*text_) ? xcb_atom_t{XCB_ATOM_STRING} : atoms.utf8String);
  return false;
}

void XSelectionServer::ConvertMultiple(const xcb_selection_request_event_t& event) {
  if (!event.property) return Answer(event, XCB_ATOM_NONE);
  // The pairs of target and property stand in the requestor's property. A pair that fails gets None as its
  // property.
  const auto cookie = xcb_get_property(connection_.Get(), 0, event.requestor, event.property,
                                       XCB_GET_PROPERTY_TYPE_ANY, 0, 2 * kMaxPairs);
  connection_.Await(cookie.sequence, [this, event](const void* answer) {
    const auto* reply = static_cast<const xcb_get_property_reply_t*>(answer);
    if (!reply || !text_ || reply->format != 32 || reply->bytes_after > 0)
      return Answer(event, XCB_ATOM_NONE);
    std::vector<xcb_atom_t> pairs(reply->value_len & ~1U);
    if (!pairs.empty())
      std::memcpy(pairs.data(), xcb_get_property_value(reply), pairs.size() * sizeof(xcb_atom_t));
    for (std::size_t i = 0; i < pairs.size(); i += 2) {
      const bool done =
          pairs[i + 1] && pairs[i + 1] != event.property && Convert(event.requestor, pairs[i], pairs[i + 1]);
      if (!done) pairs[i + 1] = XCB_ATOM_NONE;
    }
    xcb_change_property(connection_.Get(), XCB_PROP_MODE_REPLACE, event.requestor, event.property,
                        connection_.Atoms().atomPair, 32, static_cast<std::uint32_t>(pairs.size()),
                        pairs.data());
    Answer(event, event.property);
  });
}

XSelectionServer::Bytes XSelectionServer::Utf8() {
  Bytes bytes = utf8_.lock();
  if (!bytes) utf8_ = bytes = std::make_shared<const std::string>(ToUtf8(*text_));
  return bytes;
}

XSelectionServer::Bytes XSelectionServer::Latin1() {
  Bytes bytes = latin1_.lock();
  if (!bytes) latin1_ = bytes = std::make_shared<const std::string>(ToLatin1(*text_));
  return bytes;
}

bool XSelectionServer::PutText(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type) {
  Bytes bytes = type == XCB_ATOM_STRING ? Latin1() : Utf8();
  const auto old = Find(requestor, property);
  if (old != transfers_.end()) EndTransfer(old);
  if (bytes->size() > PieceBytes()) {
    StartTransfer({requestor, property, type, std::move(bytes), 0, Clock::now()});
  } else {
    xcb_change_property(connection_.Get(), XCB_PROP_MODE_REPLACE, requestor, property, type, 8,
                        static_cast<std::uint32_t>(bytes->size()), bytes->data());
  }
  return true;
}

void XSelectionServer::StartTransfer(Transfer transfer) {
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_.Get(), transfer.requestor, XCB_CW_EVENT_MASK, &events);
  const auto size = static_cast<std::uint32_t>(transfer.bytes->size());
  xcb_change_property(connection_.Get(), XCB_PROP_MODE_REPLACE, transfer.requestor, transfer.property,
                      connection_.Atoms().incr, 32, 1, &size);
  transfers_.push_back(std::move(transfer));
  if (!stuckTimer_) stuckTimer_ = loop_.StartTimer(kStuckMs, [this] { DropStuck(); });
}

std::list<XSelectionServer::Transfer>::iterator XSelectionServer::Find(xcb_window_t requestor,
                                                                       xcb_atom_t property) {
  return std::find_if(transfers_.begin(), transfers_.end(), [&](const Transfer& each) {
    return each.requestor == requestor && each.property == property;
  });
}

void XSelectionServer::OnPropertyNotify(const xcb_property_notify_event_t& event) {
  if (event.state != XCB_PROPERTY_DELETE) return;
  const auto transfer = Find(event.window, event.atom);
  if (transfer != transfers_.end()) SendPiece(transfer);
}

void XSelectionServer::SendPiece(std::list<Transfer>::iterator transfer) {
  const std::string& bytes = *transfer->bytes;
  std::size_t end = std::min(bytes.size(), transfer->offset + PieceBytes());
  // Whole characters only: some readers convert each piece by itself.
  if (transfer->type != XCB_ATOM_STRING)
    while (end < bytes.size() && end > transfer->offset && (bytes[end] & 0xC0) == 0x80) --end;
  const std::size_t length = end - transfer->offset;
  xcb_change_property(connection_.Get(), XCB_PROP_MODE_REPLACE, transfer->requestor, transfer->property,
                      transfer->type, 8, static_cast<std::uint32_t>(length), bytes.data() + transfer->offset);
  transfer->offset = end;
  transfer->moved = Clock::now();
  if (length == 0) EndTransfer(transfer);  // the empty piece says that it was all
}

void XSelectionServer::EndTransfer(std::list<Transfer>::iterator transfer) {
  const xcb_window_t window = transfer->requestor;
  const bool large = transfer->bytes->size() > kLarge && transfer->bytes.use_count() == 1;
  transfers_.erase(transfer);
  if (large) malloc_trim(0);
  const bool more = std::any_of(transfers_.begin(), transfers_.end(),
                                [window](const Transfer& each) { return each.requestor == window; });
  const std::uint32_t events = XCB_EVENT_MASK_NO_EVENT;
  if (!more) xcb_change_window_attributes(connection_.Get(), window, XCB_CW_EVENT_MASK, &events);
  if (!transfers_.empty() || !stuckTimer_) return;
  loop_.CancelTimer(stuckTimer_);
  stuckTimer_ = 0;
}

void XSelectionServer::OnWindowGone(xcb_window_t window) {
  for (auto each = transfers_.begin(); each != transfers_.end();) {
    const auto transfer = each++;
    if (transfer->requestor == window) EndTransfer(transfer);
  }
}

void XSelectionServer::DropStuck() {
  stuckTimer_ = 0;
  const Clock::time_point now = Clock::now();
  for (auto each = transfers_.begin(); each != transfers_.end();) {
    const auto transfer = each++;
    if (now - transfer->moved >= std::chrono::milliseconds(kStuckMs)) EndTransfer(transfer);
  }
  connection_.Flush();
  if (transfers_.empty()) return;
  Clock::time_point oldest = now;
  for (const Transfer& each : transfers_) oldest = std::min(oldest, each.moved);
  const auto rest =
      std::chrono::ceil<std::chrono::milliseconds>(oldest + std::chrono::milliseconds(kStuckMs) - now);
  stuckTimer_ = loop_.StartTimer(static_cast<int>(rest.count()), [this] { DropStuck(); });
}

}  // namespace quillbox

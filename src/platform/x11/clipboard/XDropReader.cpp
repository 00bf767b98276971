#include "platform/x11/clipboard/XDropReader.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

#include "base/Trace.h"
#include "base/Utf8.h"
#include "platform/ports/TextTypes.h"
#include "platform/x11/server/XReply.h"
#include "platform/x11/server/XServer.h"

namespace quillbox {

namespace {

constexpr std::uint32_t kMostTypes = 1024;
constexpr std::size_t kMaxAddressBytes = 1024 * 1024;

}  // namespace

XDropReader::XDropReader(EventLoop& loop, const char* display)
    : loop_(loop), connection_(loop, display), windows_(connection_) {
  constexpr std::string_view kNames[] = {"XdndEnter",     "XdndDrop",      "XdndTypeList",
                                         "XdndSelection", "text/uri-list", "text/plain"};
  const std::vector<xcb_atom_t> atoms = AtomsOf(connection_.Get(), kNames);
  auto next = atoms.begin();
  for (xcb_atom_t* atom : {&enter_, &drop_, &typeList_, &selection_, &addresses_, &plain_}) *atom = *next++;
  connection_.OnEvent([this](const xcb_generic_event_t& event) { OnEvent(event); });
  connection_.OnLost([this] { Leave(); });
}

XDropReader::~XDropReader() { Leave(); }

void XDropReader::See(const void* event) {
  const auto& message = *static_cast<const xcb_client_message_event_t*>(event);
  if ((message.response_type & 0x7F) != XCB_CLIENT_MESSAGE || message.format != 32) return;
  const std::uint32_t* const data = message.data.data32;
  if (message.type == enter_) {
    source_ = data[0];
    typesInList_ = data[1] & 1;
    types_.assign(data + 2, data + 5);
  } else if (message.type == drop_) {
    time_ = data[2];
  }
}

std::vector<xcb_atom_t> XDropReader::OfferedTypes() const {
  if (!typesInList_) return types_;
  const auto asked = xcb_get_property(connection_.Get(), 0, source_, typeList_, XCB_ATOM_ATOM, 0, kMostTypes);
  const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_.Get(), asked, nullptr));
  if (!reply || reply->format != 32) return types_;
  const auto* const first = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get()));
  return {first, first + reply->value_len};
}

void XDropReader::Ask(Done done) {
  Leave();
  if (connection_.Lost()) return;
  const XAtoms& atoms = connection_.Atoms();
  const std::vector<xcb_atom_t> types = OfferedTypes();
  const auto offered = [&types](xcb_atom_t type) {
    return std::find(types.begin(), types.end(), type) != types.end();
  };
  const xcb_atom_t texts[] = {atoms.utf8String, atoms.plainUtf8, plain_, XCB_ATOM_STRING, atoms.text};
  const auto* const best = std::find_if(std::begin(texts), std::end(texts), offered);

  done_ = std::move(done);
  window_ = windows_.Take();
  parts_.push_back({best == std::end(texts) ? atoms.utf8String : *best, atoms.forUtf8, false, nullptr});
  if (offered(addresses_)) parts_.push_back({addresses_, atoms.forPlain, false, nullptr});
  for (const Part& part : parts_) {
    xcb_delete_property(connection_.Get(), window_, part.property);
    xcb_convert_selection(connection_.Get(), window_, selection_, part.target, part.property, time_);
  }
  deadline_ = loop_.StartTimer(kOwnerDeadlineMs, [this] {
    deadline_ = 0;
    Trace({"drop: the other program doesn't deliver its text"});
    Leave();
    connection_.Flush();
  });
  // The toolkit has a connection of its own, by which it tells the source that all is over.
  const XReply<xcb_get_input_focus_reply_t> there(
      xcb_get_input_focus_reply(connection_.Get(), xcb_get_input_focus(connection_.Get()), nullptr));
  connection_.Flush();
}

void XDropReader::OnEvent(const xcb_generic_event_t& event) {
  const int type = event.response_type & 0x7F;
  const bool sentByClient = event.response_type & 0x80;
  if (type == XCB_SELECTION_NOTIFY) {
    OnSelectionNotify(reinterpret_cast<const xcb_selection_notify_event_t&>(event));
  } else if (type == XCB_PROPERTY_NOTIFY && !sentByClient) {
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (change.window != window_ || change.state != XCB_PROPERTY_NEW_VALUE) return;
    for (const Part& part : parts_)
      if (part.property == change.atom && part.value) part.value->OnNewValue();
  } else if (type == XCB_DESTROY_NOTIFY && !sentByClient) {
    const xcb_window_t gone = reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window;
    if (gone == window_) Leave();
    windows_.OnWindowGone(gone);
  }
}

void XDropReader::OnSelectionNotify(const xcb_selection_notify_event_t& event) {
  if (!done_ || event.requestor != window_ || event.selection != selection_) return;
  const bool refused = event.property == XCB_ATOM_NONE;
  const auto found = std::find_if(parts_.begin(), parts_.end(), [&event, refused](const Part& part) {
    return refused ? part.target == event.target : part.property == event.property;
  });
  if (found == parts_.end() || found->ended || found->value) return;
  Part& part = *found;
  if (refused) return OnEnded(part);
  const std::size_t keep = part.target == addresses_ ? kMaxAddressBytes : kMaxClipboardBytes;
  part.value = std::make_unique<XIncomingValue>(connection_, window_, part.property, 8, keep,
                                                [this, &part] { OnEnded(part); });
  part.value->Start();
}

void XDropReader::OnEnded(Part& part) {
  part.ended = true;
  if (std::all_of(parts_.begin(), parts_.end(), [](const Part& each) { return each.ended; })) Finish();
}

void XDropReader::Finish() {
  const auto valid = [](const Part& part) { return part.value && part.value->Valid(); };
  const Part& text = parts_.front();
  if (!valid(text)) return Leave();
  const bool utf8 = text.value->Type() == connection_.Atoms().utf8String ||
                    text.value->Type() == connection_.Atoms().plainUtf8;
  std::string& bytes = text.value->Bytes();
  if (text.value->Truncated() && text.value->Type() != XCB_ATOM_STRING) DropHalfCharacter(bytes);
  Content content;
  content.text = text.value->Type() == XCB_ATOM_STRING
                     ? FromLatin1(bytes)
                     : DecodeText(utf8 ? "UTF8_STRING" : "text/plain", bytes);
  if (valid(parts_.back()) && parts_.back().target == addresses_)
    content.addresses = std::move(parts_.back().value->Bytes());
  const Done done = std::move(done_);
  Leave();
  done(std::move(content));
}

void XDropReader::Leave() {
  if (const EventLoop::TimerId timer = std::exchange(deadline_, 0)) loop_.CancelTimer(timer);
  done_ = nullptr;
  // A source that has more to say, or anything yet, may go on writing.
  const bool spoilt = std::any_of(parts_.begin(), parts_.end(), [](const Part& part) {
    return !part.ended || (part.value && part.value->Incremental());
  });
  parts_.clear();
  if (const xcb_window_t window = std::exchange(window_, xcb_window_t{XCB_NONE}))
    windows_.GiveBack(window, spoilt);
}

}  // namespace quillbox

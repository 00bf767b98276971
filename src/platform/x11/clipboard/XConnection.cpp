#include "platform/x11/clipboard/XConnection.h"

#include <poll.h>
#include <xcb/xcbext.h>
#include <xcb/xfixes.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <string>

#include "base/RuntimeError.h"
#include "base/Wipe.h"
#include "platform/x11/server/XReply.h"
#include "platform/x11/server/XServer.h"

namespace quillbox {

namespace {

// Under a flood of events the rest of the program has its turn after so many of them, or after so long.
constexpr int kEventsAtOnce = 100;
constexpr std::chrono::milliseconds kTimeAtOnce{10};
constexpr int kWriteMs = 2;                      // a server that works has taken in a full socket by then
constexpr int kRetryMs = 50;                     // while one takes nothing in
constexpr std::size_t kBufferBytes = 32 * 1024;  // more than the library reads in one go

std::size_t ReplyBytes(const void* reply) {
  return sizeof(xcb_raw_generic_event_t) +
         4 * std::size_t{static_cast<const xcb_generic_reply_t*>(reply)->length};
}

}  // namespace

XConnection::XConnection(EventLoop& loop, const char* display) : loop_(loop) {
  int screen = 0;
  std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> connection(xcb_connect(display, &screen),
                                                                            xcb_disconnect);
  connection_ = connection.get();
  if (xcb_connection_has_error(connection_)) throw RuntimeError(errors::kDeviceError, "no X server");
  root_ = RootOf(connection_, screen);

  const xcb_query_extension_reply_t* fixes = xcb_get_extension_data(connection_, &xcb_xfixes_id);
  if (!fixes || !fixes->present) throw RuntimeError(errors::kDeviceError, "the X server lacks XFixes");
  fixesEvent_ = fixes->first_event;
  const auto version = xcb_xfixes_query_version(connection_, 5, 0);
  atoms_.Intern(connection_);
  XReply<xcb_xfixes_query_version_reply_t> answer(
      xcb_xfixes_query_version_reply(connection_, version, nullptr));
  if (!answer) throw RuntimeError(errors::kDeviceError, "the X server lacks XFixes");

  loop_.Watch(xcb_get_file_descriptor(connection_), [this] { Dispatch(); });
  (void)connection.release();
}

XConnection::~XConnection() {
  if (soon_) loop_.CancelTimer(soon_);
  if (!lost_) loop_.Unwatch(xcb_get_file_descriptor(connection_));
  xcb_disconnect(connection_);
}

std::size_t XConnection::MaxRequestBytes() const {
  // The limit without BIG-REQUESTS. A larger request could fill the socket, and then we would wait for the
  // server.
  return std::size_t{xcb_get_setup(connection_)->maximum_request_length} * 4;
}

bool XConnection::SameClient(xcb_window_t a, xcb_window_t b) const {
  const std::uint32_t own = xcb_get_setup(connection_)->resource_id_mask;
  return (a & ~own) == (b & ~own);
}

bool XConnection::IsOurs(xcb_window_t window) const {
  return SameClient(window, xcb_get_setup(connection_)->resource_id_base);
}

xcb_window_t XConnection::CreateWindow() {
  const xcb_window_t window = xcb_generate_id(connection_);
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_create_window(connection_, 0, window, root_, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
  return window;
}

void XConnection::Await(unsigned sequence, ReplySink sink) {
  awaited_.push_back({sequence, std::move(sink)});
}

void XConnection::Forget(unsigned sequence) {
  const auto found = std::find_if(awaited_.begin(), awaited_.end(),
                                  [sequence](const Awaited& each) { return each.sequence == sequence; });
  // The reply is taken all the same: the library would free it as it is.
  if (found != awaited_.end()) found->sink = nullptr;
}

void XConnection::WipeBuffer(xcb_window_t window, xcb_atom_t property) {
  static constexpr std::array<std::uint8_t, kBufferBytes> kNothing{};
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_INTEGER, 8,
                      kNothing.size(), kNothing.data());
  Await(xcb_get_property(connection_, 1, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, kNothing.size() / 4)
            .sequence,
        nullptr);
  Flush();
}

void XConnection::Flush() {
  if (lost_ || dispatching_) return;  // Dispatch flushes by itself
  // While writing, xcb may have read events into its own queue, of which the descriptor then tells nothing.
  if (Send()) DispatchIn(0);
}

bool XConnection::Send() {
  // xcb would wait for a server that doesn't take anything in.
  pollfd descriptor{xcb_get_file_descriptor(connection_), POLLOUT, 0};
  if (poll(&descriptor, 1, kWriteMs) == 1) {
    xcb_flush(connection_);
    return true;
  }
  DispatchIn(kRetryMs);
  return false;
}

void XConnection::DispatchIn(int milliseconds) {
  if (soon_) return;
  soon_ = loop_.StartTimer(milliseconds, [this] {
    soon_ = 0;  // it has fired: nothing to cancel
    Dispatch();
  });
}

void XConnection::Dispatch() {
  if (lost_) return;
  if (soon_) loop_.CancelTimer(soon_);
  soon_ = 0;
  ++dispatching_;
  turnEnds_ = std::chrono::steady_clock::now() + kTimeAtOnce;
  int left = kEventsAtOnce;
  while (!lost_) {
    Send();
    const int events = TakeEvents(left);
    const int replies = TakeReplies();
    if (events + replies == 0) break;
    if (roundSink_) roundSink_();
    left -= events;
    if (left > 0 && !TurnIsOver()) continue;
    if (Send()) DispatchIn(0);
    break;
  }
  --dispatching_;
  CheckLost();
}

int XConnection::TakeEvents(int limit) {
  int taken = 0;
  while (taken < limit) {
    const XReply<xcb_generic_event_t> event(xcb_poll_for_event(connection_));
    if (!event) break;
    ++taken;
    if (eventSink_) eventSink_(*event);
    if (TurnIsOver()) break;
  }
  return taken;
}

bool XConnection::TurnIsOver() const { return std::chrono::steady_clock::now() >= turnEnds_; }

int XConnection::TakeReplies() {
  int taken = 0;
  while (!awaited_.empty()) {
    void* reply = nullptr;
    xcb_generic_error_t* error = nullptr;
    if (!xcb_poll_for_reply(connection_, awaited_.front().sequence, &reply, &error)) break;
    if (xcb_connection_has_error(connection_)) break;
    const XReply<void> ownedReply(reply);
    const XReply<xcb_generic_error_t> ownedError(error);
    const ReplySink sink = std::move(awaited_.front().sink);
    awaited_.pop_front();
    ++taken;
    if (sink) sink(reply);
    if (reply) Wipe(reply, ReplyBytes(reply));
  }
  return taken;
}

void XConnection::CheckLost() {
  if (lost_ || !xcb_connection_has_error(connection_)) return;
  lost_ = true;
  awaited_.clear();
  loop_.Unwatch(xcb_get_file_descriptor(connection_));
  if (lostSink_) lostSink_();
}

bool XConnection::Pump(const std::function<bool()>& done, int milliseconds) {
  using std::chrono::steady_clock;
  const auto end = steady_clock::now() + std::chrono::milliseconds(milliseconds);
  while (!lost_) {
    Dispatch();
    if (done()) return true;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - steady_clock::now()).count();
    if (lost_ || left <= 0) return false;
    pollfd descriptor{xcb_get_file_descriptor(connection_), POLLIN, 0};
    poll(&descriptor, 1, soon_ ? 1 : static_cast<int>(left));
  }
  return false;
}

}  // namespace quillbox

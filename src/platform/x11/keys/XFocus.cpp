#include "platform/x11/keys/XFocus.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

#include "platform/x11/keys/XKeyConnection.h"

namespace quillbox {
namespace {

constexpr int kMaxDepth = 64;  // of a window below the root; a window tree can change while it is climbed

}  // namespace

XFocus::XFocus(XKeyConnection& connection, IsOurs isOurs)
    : connection_(connection), isOurs_(std::move(isOurs)) {
  if (connection.Lost()) return;
  processId_ = connection.Atom("_NET_WM_PID");
  managerCheck_ = connection.Atom("_NET_SUPPORTING_WM_CHECK");
  windowState_ = connection.Atom("WM_STATE");
  protocols_ = connection.Atom("WM_PROTOCOLS");
  ping_ = connection.Atom("_NET_WM_PING");
  if (!isOurs_) isOurs_ = [this](xcb_window_t window) { return HasOurProcess(window); };
}

xcb_window_t XFocus::Parent(xcb_window_t window) {
  xcb_connection_t* server = connection_.Get();
  const XReply<xcb_query_tree_reply_t> tree(
      xcb_query_tree_reply(server, xcb_query_tree(server, window), nullptr));
  return tree && tree->parent != connection_.Root() ? tree->parent : xcb_window_t{XCB_NONE};
}

bool XFocus::HasOurProcess(xcb_window_t window) {
  for (int depth = 0; window != XCB_NONE && depth < kMaxDepth; ++depth, window = Parent(window)) {
    const auto process = connection_.Values(window, processId_, XCB_ATOM_CARDINAL);
    if (!process.empty()) return process[0] == static_cast<std::uint32_t>(getpid());
  }
  return false;
}

// The property of the root window may outlive its manager; the window that it names doesn't.
bool XFocus::ManagerRuns() {
  const auto check = connection_.Values(connection_.Root(), managerCheck_, XCB_ATOM_WINDOW);
  return !check.empty() && connection_.Values(check[0], managerCheck_, XCB_ATOM_WINDOW) == check;
}

bool XFocus::IsTarget(xcb_window_t window) {
  if (window == XCB_NONE || window == XCB_INPUT_FOCUS_POINTER_ROOT || window == connection_.Root())
    return false;
  if (isOurs_(window)) return false;
  // A window manager marks the windows of programs; its own frames and the place where it parks the focus
  // lack the mark. Without a window manager any window is as good as another.
  if (!ManagerRuns()) return true;
  for (int depth = 0; window != XCB_NONE && depth < kMaxDepth; ++depth, window = Parent(window)) {
    if (!connection_.Values(window, windowState_, windowState_).empty()) return true;
  }
  return false;
}

std::string XFocus::ClassOf(xcb_window_t window) {
  for (int depth = 0; window != XCB_NONE && depth < kMaxDepth; ++depth, window = Parent(window)) {
    // Two texts, each closed by a NUL: the instance's name, then the class.
    const std::string both = connection_.String(window, XCB_ATOM_WM_CLASS);
    if (const std::size_t end = both.find('\0'); end != std::string::npos) return both.c_str() + end + 1;
  }
  return {};
}

bool XFocus::AskCaughtUp() {
  xcb_window_t window = connection_.Sync();
  if (window <= XCB_INPUT_FOCUS_POINTER_ROOT) return false;
  asked_ = XCB_NONE;
  for (int depth = 0; window != XCB_NONE && depth < kMaxDepth && asked_ == XCB_NONE; ++depth) {
    const auto protocols = connection_.Values(window, protocols_, XCB_ATOM_ATOM);
    if (std::find(protocols.begin(), protocols.end(), ping_) != protocols.end()) asked_ = window;
    window = Parent(window);
  }
  if (asked_ == XCB_NONE) return false;

  // The answer is sent to the root window: by most programs to the clients that have selected
  // SubstructureNotify there, by Qt to those that have selected StructureNotify.
  const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_.Get(), connection_.Root(), XCB_CW_EVENT_MASK, &events);
  answered_ = false;
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = asked_;
  message.type = protocols_;
  message.data.data32[0] = ping_;
  message.data.data32[1] = ++question_;
  message.data.data32[2] = asked_;
  xcb_send_event(connection_.Get(), 0, asked_, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&message));
  connection_.Sync();
  return true;
}

bool XFocus::CaughtUp() {
  // The round trip fetches what has come in.
  connection_.Sync();
  while (const XReply<xcb_generic_event_t> event = connection_.NextEvent()) {
    if ((event->response_type & 0x7F) != XCB_CLIENT_MESSAGE) continue;
    const auto* message = reinterpret_cast<const xcb_client_message_event_t*>(event.get());
    if (message->type != protocols_ || message->data.data32[0] != ping_) continue;
    if (message->data.data32[1] == question_ && message->window == connection_.Root()) answered_ = true;
  }
  return answered_;
}

void XFocus::StopAsking() {
  if (asked_ == XCB_NONE || connection_.Lost()) return;
  asked_ = XCB_NONE;
  const std::uint32_t events = XCB_EVENT_MASK_NO_EVENT;
  xcb_change_window_attributes(connection_.Get(), connection_.Root(), XCB_CW_EVENT_MASK, &events);
}

}  // namespace quillbox

// key-receiver TEXT [EVENTS [HOW...]]: another program's window, which takes the focus. TEXT keeps what is
// typed into it, line breaks as line feeds. EVENTS begins with the numbers of the window and of the one in it
// that has the focus, mostly itself; then comes a line for each press, "+ code modifiers keysym", and each
// release, "- code". Like a toolkit it learns of a changed keyboard map by an event, and reads the map when
// it next has to look up a key, however late that is. It answers the question whether it has caught up, to
// another audience if HOW is `qt`, not at all if it is `mute`. `late` looks up its first key after 600 ms,
// `slow` takes a while for each; with `child` the focus is in a window within.
#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

#include <chrono>
#include <fstream>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

#include "platform/x11/keys/XKeyConnection.h"
#include "platform/x11/server/Xkb.h"

namespace quillbox::test {
namespace {

using std::chrono::microseconds;

class KeyReceiver {
 public:
  KeyReceiver(const std::string& text, const std::string& events, std::set<std::string> how)
      : how_(std::move(how)) {
    if (server_.Lost()) throw std::runtime_error("no X server");
    xcb_connection_t* const connection = server_.Get();
    const std::uint16_t changes = XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY;
    xcb_xkb_select_events(connection, XCB_XKB_ID_USE_CORE_KBD, changes, 0, changes, 0xFF, 0xFF, nullptr);
    Create(window_, server_.Root());
    const xcb_window_t child = xcb_generate_id(connection),
                       focused = how_.contains("child") ? child : window_;
    Create(child, window_);
    if (!how_.contains("mute")) {
      xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window_, protocols_, XCB_ATOM_ATOM, 32, 1,
                          &ping_);
    }
    server_.Sync();
    std::this_thread::sleep_for(microseconds(200'000));  // a window manager takes its time
    do {
      xcb_set_input_focus(connection, XCB_INPUT_FOCUS_NONE, focused, XCB_CURRENT_TIME);
      std::this_thread::sleep_for(microseconds(5000));
    } while (server_.Sync() != focused);
    events_.open(events);
    events_ << window_ << ' ' << focused << std::endl;
    text_.open(text, std::ios::binary);
  }
  void Run() {
    while (const XReply<xcb_generic_event_t> event{xcb_wait_for_event(server_.Get())}) {
      const int type = event->response_type & 0x7F;
      if (type == XCB_KEY_PRESS) HandlePress(reinterpret_cast<const xcb_key_press_event_t&>(*event));
      if (type == XCB_KEY_RELEASE) events_ << "- " << int{event->pad0} << std::endl;
      if (server_.IsOfKeyboard(*event)) mapIsOld_ = true;
      if (type == XCB_CLIENT_MESSAGE) Answer(reinterpret_cast<const xcb_client_message_event_t&>(*event));
    }
  }

 private:
  void Create(xcb_window_t window, xcb_window_t parent) {
    const std::uint32_t keys = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE;
    xcb_create_window(server_.Get(), XCB_COPY_FROM_PARENT, window, parent, 10, 10, 200, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &keys);
    xcb_map_window(server_.Get(), window);
  }
  void Answer(xcb_client_message_event_t message) {
    if (message.type != protocols_ || message.data.data32[0] != ping_) return;
    message.window = server_.Root();
    const std::uint32_t audience =
        how_.contains("qt") ? XCB_EVENT_MASK_STRUCTURE_NOTIFY : XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_send_event(server_.Get(), 0, server_.Root(), audience | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(server_.Get());
  }
  void HandlePress(const xcb_key_press_event_t& event) {
    if (how_.contains("slow")) std::this_thread::sleep_for(microseconds(300));
    if (how_.erase("late") > 0) std::this_thread::sleep_for(microseconds(600'000));
    if (std::exchange(mapIsOld_, false)) ReadMap();
    if (!state_) return;
    xkb_state_update_mask(state_.get(), event.state & 0xFF, 0, 0, 0, 0, event.state >> 13 & 3);
    char name[64] = {}, text[16] = {};
    xkb_keysym_get_name(xkb_state_key_get_one_sym(state_.get(), event.detail), name, sizeof name);
    xkb_state_key_get_utf8(state_.get(), event.detail, text, sizeof text);
    events_ << "+ " << int{event.detail} << ' ' << (event.state & 0xFF) << ' ' << name << std::endl;
    text_ << (text == std::string("\r") ? "\n" : text) << std::flush;
  }
  void ReadMap() {
    const std::int32_t device = xkb_x11_get_core_keyboard_device_id(server_.Get());
    xkb_keymap* const keymap =
        xkb_x11_keymap_new_from_device(context_.get(), server_.Get(), device, XKB_KEYMAP_COMPILE_NO_FLAGS);
    state_.reset(keymap != nullptr ? xkb_state_new(keymap) : nullptr);
    xkb_keymap_unref(keymap);  // the state holds it
  }

  XKeyConnection server_{nullptr};
  const xcb_window_t window_ = xcb_generate_id(server_.Get());
  const xcb_atom_t protocols_ = server_.Atom("WM_PROTOCOLS"), ping_ = server_.Atom("_NET_WM_PING");
  std::set<std::string> how_;
  std::ofstream text_, events_;
  std::unique_ptr<xkb_context, void (*)(xkb_context*)> context_{xkb_context_new({}), xkb_context_unref};
  std::unique_ptr<xkb_state, void (*)(xkb_state*)> state_{nullptr, xkb_state_unref};
  bool mapIsOld_ = true;
};

}  // namespace
}  // namespace quillbox::test

int main(int count, char** arguments) {
  const int named = std::min(count, 3);
  quillbox::test::KeyReceiver(arguments[1], named > 2 ? arguments[2] : "/dev/null",
                              {arguments + named, arguments + count})
      .Run();
}

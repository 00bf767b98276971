#pragma once

#include <sys/socket.h>
#include <unistd.h>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/x11/keys/XKeyConnection.h"
#include "x11/TestKeyboard.h"

namespace quillbox::test {

struct KeyPress {
  xkb_keysym_t keysym = 0;
  std::uint8_t modifiers = 0;  // the real modifiers of the event
  std::string text;            // UTF-8; may be a control character
};

// A window of another program, on a connection and a thread of its own. Like a toolkit it learns of a changed
// keyboard map by an event, and reads the map when it next has to look up a key, however late that is.
class KeyReceiver {
 public:
  struct Options {
    bool answersPings = false;
    bool answersAsQt = false;               // to another audience than the others do
    std::function<void()> overKey = [] {};  // what it does before it looks up each
  };

  explicit KeyReceiver(Options options) : options_(options) {
    if (server_.Lost()) throw std::runtime_error("no X server");
    xcb_connection_t* const connection = server_.Get();
    xkb_x11_setup_xkb_extension(connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &xkbEvent_, nullptr);
    const std::uint16_t changes = XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY;
    xcb_xkb_select_events(connection, XCB_XKB_ID_USE_CORE_KBD, changes, 0, changes, 0xFF, 0xFF, nullptr);
    Create(window_, server_.Root());
    if (options_.answersPings) Set("WM_PROTOCOLS", "ATOM", ping_);
    server_.Sync();
    thread_ = std::thread([this] {
      while (const XReply<xcb_generic_event_t> event{xcb_wait_for_event(server_.Get())}) Handle(*event);
    });
  }
  ~KeyReceiver() {
    shutdown(xcb_get_file_descriptor(server_.Get()), SHUT_RDWR);  // which ends the thread
    thread_.join();
  }
  KeyReceiver(const KeyReceiver&) = delete;
  KeyReceiver& operator=(const KeyReceiver&) = delete;

  xcb_window_t Window() const { return window_; }
  // Gives the window the focus and returns when it has it.
  void TakeFocus() { SetFocus(window_); }
  // A new child of it, which can have the focus in its place.
  xcb_window_t MakeChild() {
    const xcb_window_t child = xcb_generate_id(server_.Get());
    Create(child, window_);
    return child;
  }
  // Also to none at all, or to "wherever the pointer is", which is over this window.
  void SetFocus(xcb_window_t window) {
    xcb_warp_pointer(server_.Get(), XCB_NONE, window_, 0, 0, 0, 0, 5, 5);
    xcb_window_t focus = XCB_NONE;
    for (int tries = 0; tries < 6000; ++tries) {
      xcb_set_input_focus(server_.Get(), XCB_INPUT_FOCUS_NONE, window, XCB_CURRENT_TIME);
      if ((focus = server_.Sync()) == window) return;
      Sleep(5);
    }
    throw std::runtime_error("the focus is not on " + std::to_string(window) + " but " +
                             std::to_string(focus));
  }

  std::vector<KeyPress> Presses() const {
    const std::lock_guard lock(mutex_);
    return presses_;
  }
  // The text of all presses when there are so many, line breaks as line feeds.
  std::string Text(std::size_t presses = 0) const {
    WaitFor(presses);
    std::string text;
    for (const KeyPress& press : Presses()) text += press.text == "\r" ? "\n" : press.text;
    return text;
  }
  // How often a key was pressed that had been pressed already, or released that had not.
  int Unpaired() const { return unpaired_; }
  // How often a key of a modifier was pressed; Presses leaves these out.
  int ModifierPresses() const { return modifierPresses_; }
  void Clear() {
    const std::lock_guard lock(mutex_);
    presses_.clear();
    unpaired_ = 0;
    modifierPresses_ = 0;
  }
  // Waits until so many presses have come in, at most 60 s, and a little longer for more.
  void WaitFor(std::size_t presses) const {
    for (int tries = 0; tries < 6000 && Presses().size() < presses; ++tries) Sleep(10);
    Sleep(30);
  }

  void SetClass(const std::string& name) {
    const std::string both = name + '\0' + name + '\0';
    xcb_change_property(server_.Get(), XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(both.size()), both.data());
    server_.Sync();
  }
  // A property of the window, or of the root window.
  void Set(const char* property, const char* type, std::uint32_t value, bool ofRoot = false) {
    xcb_change_property(server_.Get(), XCB_PROP_MODE_REPLACE, ofRoot ? server_.Root() : window_,
                        server_.Atom(property), server_.Atom(type), 32, 1, &value);
    server_.Sync();
  }

 private:
  void Create(xcb_window_t window, xcb_window_t parent) {
    const std::uint32_t keys = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE;
    xcb_create_window(server_.Get(), XCB_COPY_FROM_PARENT, window, parent, 10, 10, 200, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &keys);
    xcb_map_window(server_.Get(), window);
  }
  void Handle(const xcb_generic_event_t& event) {
    const int type = event.response_type & 0x7F;
    if (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE) {
      HandleKey(reinterpret_cast<const xcb_key_press_event_t&>(event), type == XCB_KEY_PRESS);
    } else if (type == XCB_MAPPING_NOTIFY || type == xkbEvent_) {
      mapIsOld_ = true;
    } else if (type == XCB_CLIENT_MESSAGE) {
      const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
      if (message.type == protocols_ && message.data.data32[0] == ping_) AnswerPing(message);
    }
  }

  void AnswerPing(xcb_client_message_event_t message) {
    message.window = server_.Root();
    const std::uint32_t audience =
        options_.answersAsQt ? XCB_EVENT_MASK_STRUCTURE_NOTIFY : XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_send_event(server_.Get(), 0, server_.Root(), audience | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(server_.Get());
  }

  void HandleKey(const xcb_key_press_event_t& event, bool press) {
    if (down_[event.detail] == press) ++unpaired_;
    down_[event.detail] = press;
    if (!press) return;
    options_.overKey();
    if (std::exchange(mapIsOld_, false)) {
      const std::int32_t device = xkb_x11_get_core_keyboard_device_id(server_.Get());
      xkb_keymap* const keymap =
          xkb_x11_keymap_new_from_device(context_.get(), server_.Get(), device, XKB_KEYMAP_COMPILE_NO_FLAGS);
      state_.reset(keymap != nullptr ? xkb_state_new(keymap) : nullptr);
      xkb_keymap_unref(keymap);  // the state holds it
    }
    if (!state_) return;
    xkb_state_update_mask(state_.get(), event.state & 0xFF, 0, 0, 0, 0, event.state >> 13 & 3);
    const xkb_keysym_t keysym = xkb_state_key_get_one_sym(state_.get(), event.detail);
    const bool isModifier =
        (keysym >= XKB_KEY_Shift_L && keysym <= XKB_KEY_Hyper_R && keysym != XKB_KEY_Caps_Lock) ||
        (keysym >= XKB_KEY_ISO_Lock && keysym <= XKB_KEY_ISO_Level5_Lock);
    if (isModifier) {
      ++modifierPresses_;
      return;
    }
    char text[16] = {};
    xkb_state_key_get_utf8(state_.get(), event.detail, text, sizeof text);
    const std::lock_guard lock(mutex_);
    presses_.push_back({keysym, static_cast<std::uint8_t>(event.state & 0xFF), text});
  }

  Options options_;
  XKeyConnection server_{nullptr};
  xcb_window_t window_ = xcb_generate_id(server_.Get());
  xcb_atom_t protocols_ = server_.Atom("WM_PROTOCOLS"), ping_ = server_.Atom("_NET_WM_PING");
  std::uint8_t xkbEvent_ = 0;
  std::unique_ptr<xkb_context, void (*)(xkb_context*)> context_{xkb_context_new({}), xkb_context_unref};
  std::unique_ptr<xkb_state, void (*)(xkb_state*)> state_{nullptr, xkb_state_unref};
  bool mapIsOld_ = true;
  bool down_[256] = {};

  mutable std::mutex mutex_;  // guards the presses
  std::vector<KeyPress> presses_;
  std::atomic<int> unpaired_ = 0, modifierPresses_ = 0;

  std::thread thread_;
};

}  // namespace quillbox::test

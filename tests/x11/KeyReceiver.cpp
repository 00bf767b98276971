#include "x11/KeyReceiver.h"

#include <unistd.h>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <chrono>
#include <stdexcept>
#include <utility>

// The header has a member of that name.
#define explicit explicitParts
#include <xcb/xkb.h>
#undef explicit

namespace quillbox::test {
namespace {

void SleepMs(int milliseconds) { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); }

}  // namespace

KeyReceiver::KeyReceiver(Options options)
    : options_(options),
      protocols_(server_.Atom("WM_PROTOCOLS")),
      ping_(server_.Atom("_NET_WM_PING")),
      end_(server_.Atom("QUILLBOX_TEST_END")),
      context_(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {
  if (server_.Lost()) throw std::runtime_error("no X server");
  xcb_connection_t* const connection = server_.Get();
  xkb_x11_setup_xkb_extension(connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                              XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &xkbEvent_, nullptr);
  const std::uint16_t changes = XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY;
  xcb_xkb_select_events(connection, XCB_XKB_ID_USE_CORE_KBD, changes, 0, changes, 0xFF, 0xFF, nullptr);
  window_ = xcb_generate_id(connection);
  const std::uint32_t keys = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE;
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, window_, server_.Root(), 10, 10, 200, 100, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &keys);
  const auto set = [&](xcb_atom_t property, xcb_atom_t type, std::uint32_t value) {
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window_, property, type, 32, 1, &value);
  };
  if (options_.answersPings) set(protocols_, XCB_ATOM_ATOM, ping_);
  if (options_.saysOurProcess)
    set(server_.Atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, static_cast<std::uint32_t>(getpid()));
  xcb_map_window(connection, window_);
  server_.Sync();
  thread_ = std::thread([this] { Run(); });
}

KeyReceiver::~KeyReceiver() {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window_;
  message.type = end_;
  xcb_send_event(server_.Get(), 0, window_, 0, reinterpret_cast<const char*>(&message));
  xcb_flush(server_.Get());
  thread_.join();
}

void KeyReceiver::SetFocus(xcb_window_t window) {
  for (int tries = 0; tries < 200; ++tries) {
    xcb_set_input_focus(server_.Get(), XCB_INPUT_FOCUS_NONE, window, XCB_CURRENT_TIME);
    if (server_.Sync() == window) return;
    SleepMs(5);
  }
  throw std::runtime_error("no focus");
}

void KeyReceiver::TakeFocus() { SetFocus(window_); }

void KeyReceiver::GiveFocusToNobody() { SetFocus(XCB_NONE); }

void KeyReceiver::GiveFocusToPointer() {
  xcb_warp_pointer(server_.Get(), XCB_NONE, window_, 0, 0, 0, 0, 5, 5);
  SetFocus(XCB_INPUT_FOCUS_POINTER_ROOT);
}

void KeyReceiver::Run() {
  while (!ended_) {
    const XReply<xcb_generic_event_t> event(xcb_wait_for_event(server_.Get()));
    if (!event) return;
    Handle(*event);
  }
}

void KeyReceiver::Handle(const xcb_generic_event_t& event) {
  const int type = event.response_type & 0x7F;
  if (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE) {
    HandleKey(reinterpret_cast<const xcb_key_press_event_t&>(event), type == XCB_KEY_PRESS);
  } else if (type == XCB_MAPPING_NOTIFY || type == xkbEvent_) {
    mapIsOld_ = true;
  } else if (type == XCB_CLIENT_MESSAGE) {
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    if (message.type == end_) ended_ = true;
    if (message.type == protocols_ && message.data.data32[0] == ping_) AnswerPing(message);
  }
}

void KeyReceiver::AnswerPing(xcb_client_message_event_t message) {
  message.window = server_.Root();
  const std::uint32_t audience =
      options_.answersAsQt ? XCB_EVENT_MASK_STRUCTURE_NOTIFY : XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  xcb_send_event(server_.Get(), 0, server_.Root(), audience | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                 reinterpret_cast<const char*>(&message));
  xcb_flush(server_.Get());
}

void KeyReceiver::ReadMap() {
  mapIsOld_ = false;
  keymap_.reset(xkb_x11_keymap_new_from_device(context_.get(), server_.Get(),
                                               xkb_x11_get_core_keyboard_device_id(server_.Get()),
                                               XKB_KEYMAP_COMPILE_NO_FLAGS));
  state_.reset(keymap_ ? xkb_state_new(keymap_.get()) : nullptr);
}

void KeyReceiver::HandleKey(const xcb_key_press_event_t& event, bool press) {
  const bool unpaired = down_[event.detail] == press;
  down_[event.detail] = press;
  if (unpaired) ++unpaired_;
  if (!press) return;
  if (options_.millisecondsToStart > 0) SleepMs(std::exchange(options_.millisecondsToStart, 0));
  if (options_.microsecondsPerKey > 0) {
    std::this_thread::sleep_for(std::chrono::microseconds(options_.microsecondsPerKey));
  }
  if (mapIsOld_) ReadMap();
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

std::vector<KeyPress> KeyReceiver::Presses() const {
  const std::lock_guard lock(mutex_);
  return presses_;
}

std::string KeyReceiver::Text() const {
  std::string text;
  for (const KeyPress& press : Presses()) text += press.text == "\r" ? "\n" : press.text;
  return text;
}

void KeyReceiver::Clear() {
  const std::lock_guard lock(mutex_);
  presses_.clear();
  unpaired_ = 0;
  modifierPresses_ = 0;
}

bool KeyReceiver::WaitFor(std::size_t presses) const {
  for (int tries = 0; tries < 2000; ++tries) {
    if (Presses().size() >= presses) {
      SleepMs(30);
      return true;
    }
    SleepMs(10);
  }
  return false;
}

}  // namespace quillbox::test

#include "platform/x11/keys/XGlobalKey.h"

#include <utility>

#include "base/RuntimeError.h"
#include "platform/x11/keys/XKeyConnection.h"
#include "platform/x11/keys/XKeyboardMap.h"
#include "platform/x11/keys/XKeyboardState.h"
#include "platform/x11/server/Xkb.h"
#include "platform/xkb/Keysyms.h"

namespace quillbox {
namespace {

constexpr std::uint32_t kMostGroups = 4;

// News of the keyboard's map and of the group in use, and one press for a key that is held down.
void Listen(xcb_connection_t* server) {
  constexpr std::uint16_t kWhich = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY |
                                   XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
  constexpr std::uint16_t kMap = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
  xcb_xkb_select_events_details_t details{};
  details.affectNewKeyboard = details.newKeyboardDetails = XCB_XKB_NKN_DETAIL_KEYCODES;
  details.affectState = details.stateDetails = XCB_XKB_STATE_PART_GROUP_STATE;
  xcb_xkb_select_events_aux(server, XCB_XKB_ID_USE_CORE_KBD, kWhich, 0, 0, kMap, kMap, &details);
  constexpr std::uint32_t kOnePress = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
  const auto cookie =
      xcb_xkb_per_client_flags(server, XCB_XKB_ID_USE_CORE_KBD, kOnePress, kOnePress, 0, 0, 0);
  xcb_discard_reply(server, cookie.sequence);
}

}  // namespace

XGlobalKey::XGlobalKey(EventLoop& loop, std::string display) : loop_(loop), display_(std::move(display)) {}

XGlobalKey::~XGlobalKey() {
  // The server takes the grabs of a connection with it.
  if (connection_) loop_.Unwatch(xcb_get_file_descriptor(connection_->Get()));
  if (later_) loop_.CancelTimer(later_);
}

bool XGlobalKey::Connect() {
  if (connection_) return !connection_->Lost();
  auto connection = std::make_unique<XKeyConnection>(display_.empty() ? nullptr : display_.c_str());
  if (connection->Lost()) return false;
  connection_ = std::move(connection);
  Listen(connection_->Get());
  loop_.Watch(xcb_get_file_descriptor(connection_->Get()), [this] { Work(); });
  return true;
}

KeyBinding XGlobalKey::Bind(const KeyCombination& key) {
  Release();
  if (!Connect()) return binding_ = KeyBinding::Impossible;
  wanted_ = key;
  try {
    binding_ = Take(Needed());
  } catch (const RuntimeError& error) {
    Swallow(error);
    binding_ = KeyBinding::Impossible;
  }
  // What came meanwhile waits in the connection, and makes its descriptor readable no more.
  if (!later_) {
    later_ = loop_.StartTimer(0, [this] {
      later_ = 0;
      Work();
    });
  }
  return binding_;
}

void XGlobalKey::Release() {
  wanted_.reset();
  binding_ = KeyBinding::None;
  if (connection_) LetGo();
}

std::vector<XGlobalKey::Grab> XGlobalKey::Needed() {
  XKeyboardState state(*connection_);
  const std::uint32_t inUse = state.Answer(state.Ask()).group;
  std::optional<XKeyboardMap::Place> place;
  XKeyboardMap map;
  // A key that the layout in use lacks is where another layout has it.
  for (std::uint32_t group = 0; group <= kMostGroups && !place; ++group) {
    if (group > 0 && group - 1 == inUse) continue;
    map = XKeyboardMap(*connection_, group == 0 ? inUse : group - 1, 0);
    place = map.FindKeysym(KeysymOf(*wanted_));
  }
  if (!place) return {};
  std::uint16_t held = 0;
  const std::pair<std::uint8_t, std::uint8_t> kReal[] = {{modifier::kShift, realmodifier::kShift},
                                                         {modifier::kControl, realmodifier::kControl},
                                                         {modifier::kAlt, map.Alt()},
                                                         {modifier::kMeta, map.Super()}};
  for (const auto& [bit, real] : kReal) {
    if ((wanted_->modifiers & bit) == 0) continue;
    if (real == 0) return {};
    held |= real;
  }
  std::vector<Grab> grabs;
  for (const std::uint16_t caps : {std::uint16_t{0}, std::uint16_t{realmodifier::kLock}}) {
    grabs.push_back({place->code, static_cast<std::uint16_t>(held | caps)});
    if (map.NumLock() != 0)
      grabs.push_back({place->code, static_cast<std::uint16_t>(held | caps | map.NumLock())});
  }
  return grabs;
}

KeyBinding XGlobalKey::Take(std::vector<Grab> needed) {
  if (needed.empty()) return KeyBinding::NoSuchKey;
  xcb_connection_t* const server = connection_->Get();
  std::vector<xcb_void_cookie_t> cookies;
  cookies.reserve(needed.size());
  for (const Grab& grab : needed) {
    cookies.push_back(xcb_grab_key_checked(server, 0, connection_->Root(), grab.modifiers, grab.code,
                                           XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
  }
  grabs_ = std::move(needed);
  bool taken = false;
  for (const auto cookie : cookies) {
    if (XReply<xcb_generic_error_t>(xcb_request_check(server, cookie))) taken = true;
  }
  if (!taken) return KeyBinding::Bound;
  // Half of a key is none.
  LetGo();
  return KeyBinding::Taken;
}

void XGlobalKey::LetGo() {
  for (const Grab& grab : grabs_)
    xcb_ungrab_key(connection_->Get(), grab.code, connection_->Root(), grab.modifiers);
  grabs_.clear();
  down_ = false;
  xcb_flush(connection_->Get());
}

void XGlobalKey::Work() {
  while (const XReply<xcb_generic_event_t> event = connection_->NextEvent()) {
    const int type = event->response_type & 0x7F;
    if (connection_->IsOfKeyboard(*event)) mapChanged_ = true;
    if (type == XCB_KEY_RELEASE) down_ = false;
    // The press of a key that is held down comes again and again.
    if (type == XCB_KEY_PRESS && wanted_ && !std::exchange(down_, true)) TellPressed();
    if (mapChanged_ && !connection_->Lost()) Follow();
  }
  if (connection_->Lost()) loop_.Unwatch(xcb_get_file_descriptor(connection_->Get()));
}

void XGlobalKey::Follow() {
  mapChanged_ = false;
  if (!wanted_) return;
  const KeyBinding before = binding_;
  try {
    std::vector<Grab> needed = Needed();
    // Typing scripts changes the map as well, on keys that nobody has.
    if (binding_ == KeyBinding::Bound && needed == grabs_) return;
    LetGo();
    binding_ = Take(std::move(needed));
  } catch (const RuntimeError& error) {
    return Swallow(error);
  }
  if (binding_ != before) TellChanged(binding_);
}

}  // namespace quillbox

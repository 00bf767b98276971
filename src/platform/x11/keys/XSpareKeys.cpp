#include "platform/x11/keys/XSpareKeys.h"

#include "platform/x11/keys/XKeyConnection.h"

namespace quillbox {
namespace {

// With one column alone the server would add the other case of a letter by itself.
constexpr std::uint8_t kColumns = 2;

}  // namespace

XSpareKeys::XSpareKeys(XKeyConnection& connection) : connection_(connection) {
  if (!connection.Lost()) record_ = connection.Atom("_QUILLBOX_SPARE_KEYS");
}

void XSpareKeys::PutOn(const std::vector<xkb_keysym_t>& keysyms, const std::vector<xcb_keycode_t>& codes) {
  std::vector<std::uint32_t> record;
  for (std::size_t i = 0; i < keysyms.size(); ++i) {
    keys_.emplace_back(codes[i], keysyms[i]);
    record.insert(record.end(), {codes[i], keysyms[i]});
  }
  if (keys_.empty()) return;
  connection_.SetValues(connection_.Root(), record_, record);
  Write(keys_, true);
}

xcb_keycode_t XSpareKeys::CodeOf(xkb_keysym_t keysym) const {
  for (const auto& [code, symbol] : keys_) {
    if (symbol == keysym) return code;
  }
  return 0;
}

// Neighbouring codes go in one request, since every client is told of each.
void XSpareKeys::Write(const Keys& keys, bool on) {
  for (std::size_t start = 0; start < keys.size();) {
    std::size_t end = start;
    std::vector<xcb_keysym_t> symbols;
    for (; end < keys.size() && keys[end].first == keys[start].first + (end - start); ++end) {
      symbols.insert(symbols.end(), kColumns, on ? keys[end].second : xcb_keysym_t{XCB_NO_SYMBOL});
    }
    xcb_change_keyboard_mapping(connection_.Get(), static_cast<std::uint8_t>(end - start), keys[start].first,
                                kColumns, symbols.data());
    start = end;
  }
}

XSpareKeys::Keys XSpareKeys::StillOn(const Keys& keys) {
  xcb_connection_t* server = connection_.Get();
  const xcb_setup_t* setup = xcb_get_setup(server);
  const auto cookie = xcb_get_keyboard_mapping(
      server, setup->min_keycode, static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1));
  const XReply<xcb_get_keyboard_mapping_reply_t> reply(
      xcb_get_keyboard_mapping_reply(server, cookie, nullptr));
  if (!reply) return {};
  const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(reply.get());
  Keys still;
  for (const auto& key : keys) {
    if (key.first < setup->min_keycode || key.first > setup->max_keycode) continue;
    if (symbols[(key.first - setup->min_keycode) * reply->keysyms_per_keycode] == key.second)
      still.push_back(key);
  }
  return still;
}

void XSpareKeys::Clear(const Keys& keys) {
  Write(StillOn(keys), false);
  xcb_delete_property(connection_.Get(), connection_.Root(), record_);
}

void XSpareKeys::TakeOff() {
  if (!keys_.empty() && !connection_.Lost()) Clear(keys_);
  keys_.clear();
}

void XSpareKeys::Recover() {
  const auto record = connection_.Values(connection_.Root(), record_, XCB_ATOM_CARDINAL);
  Keys keys;
  for (std::size_t i = 0; i + 1 < record.size(); i += 2) {
    keys.emplace_back(static_cast<xcb_keycode_t>(record[i]), record[i + 1]);
  }
  if (!keys.empty()) Clear(keys);
}

}  // namespace quillbox

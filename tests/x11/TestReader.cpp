#include "x11/TestReader.h"

#include <cstring>

namespace quillbox::test {

void TestReader::Ask(const std::string& target, xcb_timestamp_t time) {
  taken_[target] = {};
  xcb_convert_selection(Connection(), Window(), Atom("CLIPBOARD"), Atom(target), Atom(target), time);
  xcb_flush(Connection());
}

void TestReader::AskMultiple(const std::vector<std::pair<std::string, std::string>>& pairs) {
  std::vector<xcb_atom_t> atoms;
  for (const auto& [target, property] : pairs) {
    atoms.push_back(Atom(target));
    atoms.push_back(Atom(property));
    taken_[property] = {};
  }
  xcb_change_property(Connection(), XCB_PROP_MODE_REPLACE, Window(), Atom("MULTIPLE"), Atom("ATOM_PAIR"), 32,
                      static_cast<std::uint32_t>(atoms.size()), atoms.data());
  Ask("MULTIPLE");
}

const TestReader::Taken& TestReader::Fetch(const std::string& target) {
  loop_.RunFor(10);  // what others have asked of the server comes first
  Ask(target);
  loop_.RunUntil([&] { return Got(target).complete || Got(target).refused; });
  return Got(target);
}

std::vector<std::string> TestReader::Names(const std::string& atoms) {
  std::vector<std::string> names;
  for (std::size_t at = 0; at + 4 <= atoms.size(); at += 4) {
    xcb_atom_t atom = 0;
    std::memcpy(&atom, atoms.data() + at, 4);
    names.push_back(atom ? Name(atom) : "None");
  }
  return names;
}

void TestReader::OnEvent(const xcb_generic_event_t& event) {
  const int type = event.response_type & 0x7F;
  if (type == XCB_SELECTION_NOTIFY) {
    const auto& notify = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
    const std::string name = Name(notify.target);
    taken_[name].answered = true;
    taken_[name].refused = notify.property == XCB_ATOM_NONE;
    if (taken_[name].refused) return;
    Take(notify.property, name);
    if (name != "MULTIPLE") return;
    const auto names = Names(taken_[name].bytes);
    for (std::size_t i = 1; i < names.size(); i += 2)
      if (names[i] != "None") Take(Atom(names[i]), names[i]);
  } else if (type == XCB_PROPERTY_NOTIFY) {
    const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (notify.state != XCB_PROPERTY_NEW_VALUE) return;
    const std::string name = Name(notify.atom);
    if (taken_[name].incremental) Take(notify.atom, name);
  }
}

void TestReader::Take(xcb_atom_t property, const std::string& name) {
  Taken& taken = taken_[name];
  if (taken.complete || (taken.incremental && !reading_)) return;
  const auto reply = Property(Window(), property, true);
  if (!reply || !reply->type) return;
  const std::string type = Name(reply->type);
  const std::string bytes(static_cast<const char*>(xcb_get_property_value(reply.get())),
                          static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
  if (type == "INCR") {
    taken.incremental = true;
    return;
  }
  taken.type = type;
  taken.bytes += bytes;
  if (taken.incremental && !bytes.empty())
    ++taken.pieces;
  else
    taken.complete = true;
}

}  // namespace quillbox::test

#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "x11/TestClient.h"

namespace quillbox::test {

// A program that pastes: asks the owner of a selection for targets and takes in what it is given.
class TestReader final : public TestClient {
 public:
  struct Taken {
    bool answered = false;
    bool refused = false;
    bool incremental = false;
    bool complete = false;
    std::string type;
    std::string bytes;
    std::vector<std::string> pieces{};  // of increments
  };

  using TestClient::TestClient;

  void Ask(const std::string& target, xcb_timestamp_t time = XCB_CURRENT_TIME) {
    taken_[target] = {};
    xcb_convert_selection(Connection(), Window(), Atom("CLIPBOARD"), Atom(target), Atom(target), time);
    xcb_flush(Connection());
  }
  // Each pair: a target, and the property that it is to be put into.
  void AskMultiple(const std::vector<std::pair<std::string, std::string>>& pairs) {
    std::vector<xcb_atom_t> atoms;
    for (const auto& [target, property] : pairs) {
      atoms.insert(atoms.end(), {Atom(target), Atom(property)});
      taken_[property] = {};
    }
    xcb_change_property(Connection(), XCB_PROP_MODE_REPLACE, Window(), Atom("MULTIPLE"), Atom("ATOM_PAIR"),
                        32, static_cast<std::uint32_t>(atoms.size()), atoms.data());
    Ask("MULTIPLE");
  }
  // From now on increments are left lying.
  void StopReading() { reading_ = false; }
  // What was taken under a target's name, or a pair's property; the pairs themselves under MULTIPLE.
  const Taken& Got(const std::string& name) { return taken_[name]; }
  bool Complete(const std::string& name) { return taken_[name].complete; }
  // Asks and runs until there is an answer.
  const Taken& Fetch(const std::string& target) {
    loop_.RunFor(10);  // what others have asked of the server comes first
    Ask(target);
    loop_.RunUntil([&] { return Got(target).complete || Got(target).refused; });
    return Got(target);
  }
  std::vector<std::string> Names(const std::string& atoms) {
    std::vector<std::string> names;
    for (std::size_t at = 0; at + 4 <= atoms.size(); at += 4) {
      xcb_atom_t atom = 0;
      std::memcpy(&atom, atoms.data() + at, 4);
      names.push_back(Name(atom));
    }
    return names;
  }

 private:
  void OnEvent(const xcb_generic_event_t& event) override {
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
      const std::string name = Name(notify.atom);
      if (notify.state == XCB_PROPERTY_NEW_VALUE && taken_[name].incremental) Take(notify.atom, name);
    }
  }

  void Take(xcb_atom_t property, const std::string& name) {
    Taken& taken = taken_[name];
    if (taken.complete || (taken.incremental && !reading_)) return;
    const auto reply = Property(Window(), property, true);
    if (!reply || !reply->type) return;
    const std::string type = Name(reply->type);
    if (type == "INCR") {
      taken.incremental = true;
      return;
    }
    const std::string bytes = BytesOf(*reply);
    taken.type = type;
    taken.bytes += bytes;
    if (taken.incremental && !bytes.empty())
      taken.pieces.push_back(bytes);
    else
      taken.complete = true;
  }

  std::map<std::string, Taken> taken_;
  bool reading_ = true;
};

}  // namespace quillbox::test

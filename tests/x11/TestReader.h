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
    std::size_t pieces = 0;
  };

  explicit TestReader(PollEventLoop& loop) : TestClient(loop) {}

  void Ask(const std::string& target, xcb_timestamp_t time = XCB_CURRENT_TIME);
  // Each pair: a target, and the property that it is to be put into.
  void AskMultiple(const std::vector<std::pair<std::string, std::string>>& pairs);
  // From now on increments are left lying.
  void StopReading() { reading_ = false; }
  // What was taken under a target's name, or a pair's property; the pairs themselves under MULTIPLE.
  const Taken& Got(const std::string& name) { return taken_[name]; }
  bool Complete(const std::string& name) { return taken_[name].complete; }
  // Asks and runs until there is an answer.
  const Taken& Fetch(const std::string& target);
  std::vector<std::string> Names(const std::string& atoms);

 private:
  void OnEvent(const xcb_generic_event_t& event) override;
  void Take(xcb_atom_t property, const std::string& name);

  std::map<std::string, Taken> taken_;
  bool reading_ = true;
};

}  // namespace quillbox::test

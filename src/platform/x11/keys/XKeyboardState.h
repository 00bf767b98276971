#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>

namespace quillbox {

class XKeyConnection;

// What the keyboard does at the moment: keys held down, locks, active group. It can take the locks off for a
// while; that is recorded in a property of the root window, so that a later start can put them back if this
// process is killed meanwhile.
class XKeyboardState {
 public:
  struct Snapshot {
    std::uint8_t held = 0;    // real modifiers whose keys are down
    std::uint8_t locked = 0;  // real modifiers that are locked
    std::uint8_t group = 0;   // the active group, from 0
    bool anyKey = false;      // some key is down
  };

  explicit XKeyboardState(XKeyConnection& connection);

  // RuntimeError errors::kDeviceError if the server doesn't answer.
  Snapshot Read();
  // The same without `anyKey`, in two steps: the answer tells how things stood between the requests before
  // and behind the question.
  unsigned Ask();
  Snapshot Answer(unsigned question);

  // Notes down that keys are being typed, and unlocks the `locked` modifiers too, until EndTyping.
  void BeginTyping(std::uint8_t locked);
  // Locks them again. One that the typed keys have toggled stays toggled.
  void EndTyping();
  // After a process that was killed between the two: locks what it had unlocked and releases the keys it held
  // down.
  void Recover();

 private:
  void SetLocks(std::uint8_t affected, std::uint8_t locked);

  XKeyConnection& connection_;
  xcb_atom_t record_ = XCB_NONE;
  std::optional<std::uint8_t> unlocked_;
};

}  // namespace quillbox

#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "platform/ports/KeyNotation.h"
#include "platform/ports/KeySender.h"

namespace quillbox {

class VirtualKeyboard;
class WaylandKeyConnection;
class WaylandToplevels;

// Types key strings on a virtual keyboard of the compositor's (zwp_virtual_keyboard_v1).
class WaylandKeySender : public KeySender {
 public:
  struct Options {
    std::string display;  // as in WAYLAND_DISPLAY; empty takes that variable
    // Lets the program's own events run for about so many milliseconds, 0 for those that are due.
    std::function<void(int milliseconds)> pause;
    // Whether a window of this program has the focus, as far as the program itself knows.
    std::function<bool()> focusIsOurs;
    std::string ownId;  // of this program, as compositors name it
  };

  explicit WaylandKeySender(Options options);

  // Whether there is a compositor with virtual keyboards now.
  bool Offered() const;

  // RuntimeErrors besides those of ParseKeys: errors::kBadCall for a character without a keysym,
  // errors::kPermission while a string is being typed (from within `pause`), errors::kDeviceError if the
  // compositor has no virtual keyboard, or if it tells that for 1 s no window but ours has the focus. Where
  // it doesn't tell, our own windows are given time to lose it.
  void Send(const Text& keys) override;
  void SendTo(const KeysFor& keysFor) override;

 private:
  void Type(const std::function<std::vector<KeyStroke>(const WaylandToplevels&)>& strokesFor);
  void WaitForTarget(WaylandKeyConnection& connection, const WaylandToplevels& toplevels);
  void TypeAll(WaylandKeyConnection& connection, const WaylandToplevels& toplevels,
               std::span<const KeyStroke> strokes);

  Options options_;
};

}  // namespace quillbox

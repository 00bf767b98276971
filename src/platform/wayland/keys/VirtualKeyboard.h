#pragma once

#include <cstdint>
#include <span>

#include "platform/ports/KeyNotation.h"
#include "platform/wayland/keys/VirtualKeymap.h"

struct zwp_virtual_keyboard_v1;

namespace quillbox {

class WaylandKeyConnection;

// A keyboard that the compositor takes for one more of the seat's, with a map of our own, until it is
// destroyed. The compositor destroys it, too, and releases its keys, when this process dies.
class VirtualKeyboard {
 public:
  // The connection offers virtual keyboards. RuntimeError errors::kDeviceError if the map can't be handed
  // over.
  VirtualKeyboard(WaylandKeyConnection& connection, std::span<const KeyStroke> strokes);
  // Releases what is down.
  ~VirtualKeyboard();
  VirtualKeyboard(const VirtualKeyboard&) = delete;
  VirtualKeyboard& operator=(const VirtualKeyboard&) = delete;

  // Types one of the constructor's strokes. Its modifiers stay down for the next one, as far as that wants
  // them.
  void Type(const KeyStroke& stroke);
  void ReleaseModifiers() { Hold(0); }

 private:
  void Upload();
  void Key(std::uint32_t key, bool press);
  void Hold(std::uint8_t modifiers);

  WaylandKeyConnection& connection_;
  VirtualKeymap keymap_;
  zwp_virtual_keyboard_v1* keyboard_;
  std::uint8_t down_ = 0;  // real modifiers whose keys are held down
};

}  // namespace quillbox

#pragma once

#include <xcb/xcb.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "platform/ports/KeyNotation.h"
#include "platform/x11/keys/XKeyboardMap.h"

namespace quillbox {

class XKeyConnection;
class XSpareKeys;

// Turns strokes into presses and releases of keys, with the modifiers that each needs.
class XTypist {
 public:
  XTypist(XKeyConnection& connection, const XKeyboardMap& map, XSpareKeys& spareKeys)
      : connection_(connection), map_(map), spareKeys_(spareKeys) {}

  // Puts what the keyboard lacks for the first strokes on spare keys, and returns how many strokes can be
  // typed with that: all of them unless there are too few spare keys. RuntimeError errors::kDeviceError if
  // there is none at all.
  std::size_t Prepare(std::span<const KeyStroke> strokes);
  // Types a stroke that has been prepared. Its modifiers stay down for the next one, as far as that wants
  // them.
  void Type(const KeyStroke& stroke);
  void ReleaseModifiers() { Hold(0); }
  std::uint8_t Held() const { return down_; }  // real modifiers whose keys are down for the strokes
  // Whether the strokes that need no spare key would be typed in the same way with another map.
  bool TypesAlike(std::span<const KeyStroke> strokes, const XKeyboardMap& other) const;

 private:
  static std::optional<XKeyboardMap::Place> Find(const KeyStroke& stroke, const XKeyboardMap& map);
  static xkb_keysym_t SpareSymbol(const KeyStroke& stroke);
  std::uint8_t RealModifiers(std::uint8_t modifiers) const;
  void Hold(std::uint8_t modifiers);

  XKeyConnection& connection_;
  const XKeyboardMap& map_;
  XSpareKeys& spareKeys_;
  std::uint8_t down_ = 0;  // real modifiers whose keys this object holds down
};

}  // namespace quillbox

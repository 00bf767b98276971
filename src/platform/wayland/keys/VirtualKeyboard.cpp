#include "platform/wayland/keys/VirtualKeyboard.h"

#include <sys/mman.h>
#include <unistd.h>
#include <virtual-keyboard-unstable-v1.h>

#include <chrono>
#include <iterator>

#include "base/RuntimeError.h"
#include "platform/wayland/keys/WaylandKeyConnection.h"
#include "platform/xkb/RealModifiers.h"

namespace quillbox {
namespace {

std::uint32_t Now() {
  const auto time = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(time).count());
}

std::uint8_t RealModifiers(std::uint8_t modifiers) {
  std::uint8_t real = 0;
  if ((modifiers & modifier::kShift) != 0) real |= realmodifier::kShift;
  if ((modifiers & modifier::kControl) != 0) real |= realmodifier::kControl;
  if ((modifiers & modifier::kAlt) != 0) real |= realmodifier::kMod1;
  return real;
}

bool WriteAll(int file, const std::string& text) {
  std::size_t written = 0;
  while (written < text.size()) {
    const ssize_t count = write(file, text.data() + written, text.size() - written);
    if (count <= 0) return false;
    written += static_cast<std::size_t>(count);
  }
  return true;
}

}  // namespace

VirtualKeyboard::VirtualKeyboard(WaylandKeyConnection& connection, std::span<const KeyStroke> strokes)
    : connection_(connection),
      keymap_(strokes),
      keyboard_(zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(connection.KeyboardManager(),
                                                                        connection.Seat())) {
  Upload();
}

VirtualKeyboard::~VirtualKeyboard() {
  ReleaseModifiers();
  zwp_virtual_keyboard_v1_destroy(keyboard_);
  // What is still on its way when the connection closes would be lost.
  connection_.Sync();
}

void VirtualKeyboard::Upload() {
  const int file = memfd_create("quillbox-keymap", MFD_CLOEXEC);
  // Readers expect the text's NUL in the file.
  const std::size_t size = keymap_.Text().size() + 1;
  if (file < 0 || ftruncate(file, static_cast<off_t>(size)) != 0 || !WriteAll(file, keymap_.Text())) {
    if (file >= 0) close(file);
    throw RuntimeError(errors::kDeviceError, "There is no room for a map of the keys.");
  }
  zwp_virtual_keyboard_v1_keymap(keyboard_, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file,
                                 static_cast<std::uint32_t>(size));
  close(file);  // the request has a copy of its own
}

void VirtualKeyboard::Key(std::uint32_t key, bool press) {
  zwp_virtual_keyboard_v1_key(keyboard_, Now(), key,
                              press ? WL_KEYBOARD_KEY_STATE_PRESSED : WL_KEYBOARD_KEY_STATE_RELEASED);
}

// The compositor doesn't conclude from keys what modifiers are down: it is told, as by a real keyboard's
// driver.
void VirtualKeyboard::Hold(std::uint8_t modifiers) {
  const std::uint8_t before = down_;
  for (const bool press : {false, true}) {
    for (int bit = 0; bit < 8; ++bit) {
      const int mask = 1 << bit;
      if (((modifiers & mask) != 0) != press || ((down_ & mask) != 0) == press) continue;
      Key(VirtualKeymap::ModifierKey(bit), press);
      down_ = static_cast<std::uint8_t>(down_ ^ mask);
    }
  }
  if (down_ != before) zwp_virtual_keyboard_v1_modifiers(keyboard_, down_, 0, 0, 0);
}

void VirtualKeyboard::Type(const KeyStroke& stroke) {
  const VirtualKeymap::Place place = keymap_.Find(stroke);
  // Ctrl and Alt mark a command of their own each time, unless the notation groups the strokes.
  constexpr std::uint8_t kCommands = realmodifier::kControl | realmodifier::kMod1;
  if (!stroke.joined) Hold(down_ & static_cast<std::uint8_t>(~kCommands));
  Hold(place.modifiers | RealModifiers(stroke.modifiers));
  Key(place.key, true);
  Key(place.key, false);
}

}  // namespace quillbox

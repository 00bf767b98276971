#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/ports/EventLoop.h"
#include "platform/ports/GlobalKey.h"

namespace quillbox {

class XKeyConnection;
class XKeyboardMap;

// The key by passive grabs on the root window, over a connection of its own that is made with the first Bind.
// A grab is of a key code with exact modifiers: there is one for each state of Num Lock and Caps Lock, and
// all are made anew when the keyboard's map or the group in use gives the key another code.
class XGlobalKey : public GlobalKey {
 public:
  // `display` as in DISPLAY; empty takes that variable. `loop` outlives it.
  explicit XGlobalKey(EventLoop& loop, std::string display = {});
  ~XGlobalKey() override;

  // Without a usable server: Impossible.
  KeyBinding Bind(const KeyCombination& key) override;
  void Release() override;

 private:
  struct Grab {
    xcb_keycode_t code = 0;
    std::uint16_t modifiers = 0;
    bool operator==(const Grab&) const = default;
  };

  bool Connect();
  // The grabs that the key needs now; none if no key of the keyboard gives it.
  std::vector<Grab> Needed();
  KeyBinding Take(std::vector<Grab> needed);
  void LetGo();
  void Work();
  void Follow();

  EventLoop& loop_;
  std::string display_;
  std::unique_ptr<XKeyConnection> connection_;
  std::optional<KeyCombination> wanted_;
  std::vector<Grab> grabs_;
  KeyBinding binding_ = KeyBinding::None;
  EventLoop::TimerId later_ = 0;
  bool down_ = false;  // the key, and has been told of
  bool mapChanged_ = false;
};

}  // namespace quillbox

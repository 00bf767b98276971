#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "platform/ports/KeyNotation.h"
#include "platform/ports/KeySender.h"
#include "platform/x11/keys/XFocus.h"
#include "platform/x11/keys/XKeyConnection.h"
#include "platform/x11/keys/XKeyboardState.h"
#include "platform/x11/keys/XSpareKeys.h"

namespace quillbox {

class XTypist;

// Types key strings through XTEST into the window that has the focus, with the layout and group in use. The
// program takes part through `pause`, which lets its own events run for about so many milliseconds, 0 for
// those that are due: it is called at least every few hundredths of a second, and must send what has been
// asked of the server.
class XKeySender : public KeySender {
 public:
  struct Options {
    std::string display;  // as in DISPLAY; empty takes that variable
    std::function<void(int milliseconds)> pause;
    XFocus::IsOurs isOurs;  // see XFocus; may be empty
  };

  // Never fails; without a usable server each Send does, with errors::kDeviceError.
  explicit XKeySender(Options options);

  // RuntimeErrors besides those of ParseTypeableKeys: errors::kPermission while a string is being typed (from
  // within `pause`), errors::kDeviceError if modifier keys are held down for 3 s, if for 1 s no window but
  // ours has the focus, or without a usable server. What has been typed until then is typed.
  void Send(const Text& keys) override;
  void SendTo(const KeysFor& keysFor) override;

  // Called by each Send, too.
  void Recover() override;
  // Whether a window has the focus now that keys may go to.
  bool HasTarget();

 private:
  class Session;

  void Run(const std::function<std::vector<KeyStroke>()>& strokesFor);
  void WaitForReleasedKeys();
  void WaitForTarget();
  std::size_t TypeRound(Session& session, std::span<const KeyStroke> strokes);
  void FollowFocus(XTypist& typist);
  void WaitUntilTakenIn(std::size_t strokes);
  void WaitForEffect(XTypist& typist);
  bool WaitFor(const std::function<bool()>& done, int milliseconds, int step);

  XKeyConnection connection_;
  XKeyboardState state_;
  XSpareKeys spareKeys_;
  XFocus focus_;
  std::function<void(int)> pause_;
  xcb_window_t target_ = XCB_NONE;
  int effectBudget_ = 0;  // milliseconds that may still be spent on waiting for effects
  bool sending_ = false;
};

}  // namespace quillbox

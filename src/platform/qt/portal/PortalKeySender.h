#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/ports/KeyNotation.h"
#include "platform/ports/KeySender.h"
#include "platform/qt/portal/PortalSession.h"
#include "platform/qt/portal/RestoreToken.h"

namespace quillbox {

// Types key strings through the desktop's portal, which asks the person once. Characters that the keyboard
// layout in use lacks are the desktop's affair: no answer tells what became of them.
class PortalKeySender : public KeySender {
 public:
  struct Options {
    std::function<std::string()> dataFolder;  // of the user, for the token of a permission
    // Lets the program's own events run for about so many milliseconds, 0 for those that are due.
    std::function<void(int milliseconds)> pause;
    // Whether a window of this program has the focus, as far as the program itself knows.
    std::function<bool()> focusIsOurs;
  };

  explicit PortalKeySender(Options options);

  // Whether there is such a portal now, or one that the bus can start.
  bool Offered() { return session_.Offered(); }

  // RuntimeErrors besides those of ParseTypeableKeys: errors::kDeviceError if the person or the desktop
  // refuses or ends the session, if the portal goes away, or if our windows keep the focus for 1 s. Not
  // called again from within `pause`.
  void Send(const Text& keys) override;
  // No desktop tells the class of a window.
  void SendTo(const KeysFor& keysFor) override;

 private:
  void Run(const std::function<std::vector<KeyStroke>()>& strokesFor);
  void Open();
  void WaitForTarget();
  void Type(const KeyStroke& stroke);
  void Hold(std::uint8_t modifiers);

  Options options_;
  PortalSession session_;
  RestoreToken token_;
  bool tokenGiven_ = false;  // the next session can be had without a question
  std::uint8_t down_ = 0;    // sum of `modifier`, whose keys are held down
};

}  // namespace quillbox

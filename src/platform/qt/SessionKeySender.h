#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/ports/KeySender.h"
#include "platform/qt/portal/PortalKeySender.h"
#include "platform/wayland/keys/WaylandKeySender.h"
#include "platform/x11/keys/XKeySender.h"

namespace quillbox {

// Types as the session allows, and looks for the way anew with each string: a compositor or a portal may come
// later than we do. Under Wayland that is a virtual keyboard of the compositor's, else the desktop's portal,
// else XTEST, which reaches X11 windows alone.
class SessionKeySender : public KeySender {
 public:
  // `dataFolder` gives the user's when it is needed; a permission is kept there.
  explicit SessionKeySender(const std::function<std::string()>& dataFolder);

  // RuntimeErrors of the way chosen; all of them have errors::kDeviceError, in words for the person, where
  // the string is good and can't be typed.
  void Send(const Text& keys) override;
  void SendTo(const KeysFor& keysFor) override;
  void Recover() override { x11_.Recover(); }

 private:
  void Through(const std::function<void(KeySender&)>& send);
  // And why.
  std::pair<KeySender&, const char*> Choose();

  WaylandKeySender wayland_;
  PortalKeySender portal_;
  XKeySender x11_;
  bool sending_ = false;
};

}  // namespace quillbox

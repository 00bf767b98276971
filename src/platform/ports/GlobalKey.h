#pragma once

#include <utility>

#include "base/Event.h"
#include "platform/ports/KeyCombination.h"

namespace quillbox {

// What has become of a key that was asked for.
enum class KeyBinding {
  None,        // none was
  Bound,       //
  Pending,     // the desktop hasn't answered yet; perhaps it asks the person
  Taken,       // another program has it
  Refused,     // by the desktop, or by the person whom it has asked
  NoSuchKey,   // the keyboard in use has none that gives it
  Impossible,  // this session gives no program such keys
  Unreadable,  // no key is named so
};

// One key that reaches this program whatever window has the focus.
class GlobalKey {
 public:
  virtual ~GlobalKey() = default;
  // Lets go of the key of before, and asks for this one. Waits for no other program and for no person: what
  // Pending comes to is told later.
  virtual KeyBinding Bind(const KeyCombination& key) = 0;
  virtual void Release() = 0;
  // `pressed` is called on the event loop, once for each press however long it lasts.
  Hook OnPressed(Event<>::Handler pressed) { return pressed_.Listen(std::move(pressed)); }
  // `changed` is called on the event loop when the answer has come, or another keyboard or another desktop
  // has made another one of it; never from within Bind or Release.
  Hook OnChanged(Event<KeyBinding>::Handler changed) { return changed_.Listen(std::move(changed)); }

 protected:
  void TellPressed() const { pressed_(); }
  void TellChanged(KeyBinding binding) const { changed_(binding); }

 private:
  Event<> pressed_;
  Event<KeyBinding> changed_;
};

}  // namespace quillbox

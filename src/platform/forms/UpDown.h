#pragma once

#include "platform/forms/Control.h"
#include "platform/forms/Dispatcher.h"

namespace quillbox {

// A pair of arrows. They never take the focus, so the list beside them keeps it.
class UpDown : public Control {
 public:
  UpDown(const Place& place, std::string_view name, const Text& toolTipText, bool enabled)
      : Control(place, name) {
    SetToolTipText(toolTipText);
    SetEnabled(enabled);
  }

  Event<> UpClick;
  Event<> DownClick;

  void PersonSpin(bool up) {
    Dispatch().Dispatch([&] { Raise(up ? UpClick : DownClick); });
  }
};

}  // namespace quillbox

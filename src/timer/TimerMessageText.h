#pragma once

#include "core/settings/Norvane.h"
#include "platform/forms/CommandButton.h"
#include "platform/forms/TextBox.h"
#include "platform/ports/Clipboard.h"
#include "timer/TimerSwitch.h"

namespace quillbox {

// The person's own text for the message window, stored at every change.
class TimerMessageText {
 public:
  TimerMessageText(const Place& place, TimerSwitch& timer, Norvane& settings, Clipboard& clipboard);

  TextBox Text13;           // the message
  CommandButton Command1;   // clears it
  CommandButton Command42;  // takes it from the clipboard
  CommandButton Command43;  // copies it to the clipboard

  void Store();

 private:
  void Command1_Click();
  void Command42_Click();
  void Command43_Click();

  TimerSwitch& timer_;
  Norvane& settings_;
  Clipboard& clipboard_;
};

}  // namespace quillbox

#pragma once

#include "calc/CalcDisplay.h"
#include "platform/forms/CommandButton.h"
#include "platform/ports/Clipboard.h"
#include "platform/ports/SystemInfo.h"

namespace quillbox {

// The two ways between the display and the clipboard. A number beyond the range, and a clipboard that can't
// be opened, end the handler: nothing changes.
class CalcClipboard {
 public:
  CalcClipboard(const Place& place, CalcDisplay& display, Clipboard& clipboard, SystemInfo& system);

  CommandButton Command49;  // the display's text to the clipboard
  CommandButton Command50;  // a number from the clipboard

 private:
  void Command49_Click();
  void Command50_Click();

  CalcDisplay& display_;
  Clipboard& clipboard_;
  SystemInfo& system_;
};

}  // namespace quillbox

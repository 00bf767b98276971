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

 private:
  void Command49_Click();  // to the clipboard
  void Command50_Click();  // from the clipboard

  CalcDisplay& display_;
  Clipboard& clipboard_;
  SystemInfo& system_;
  CommandButton Command49;
  CommandButton Command50;
};

}  // namespace quillbox

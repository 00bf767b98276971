#pragma once

#include <optional>

#include "core/window/MainWindow.h"
#include "platform/forms/Label.h"

namespace quillbox {

// Time and date of the system, which a click copies to the clipboard.
class ClockLabels {
 public:
  ClockLabels(MainWindow& window, Clipboard& clipboard, Clock& clock);

  Label Label5;  // the time; its change is the timer's second
  Label Label8;  // the date

  // Shows the time of now. Cheap while the clock's second is the one that is shown.
  void Refresh();

 private:
  void Label5_Click();
  void Label8_Click();
  void Copy(const Text& text);

  MainWindow& window_;
  Clipboard& clipboard_;
  Clock& clock_;
  std::optional<LocalTime> shown_;
};

}  // namespace quillbox

#pragma once

#include "platform/forms/TextBox.h"

namespace quillbox {

// Which of its four states the timer is in: two hidden texts of the page.
class TimerState {
 public:
  explicit TimerState(const Place& place)
      : Text15(place, "Text15", TextBox::Lines::One, u"", false),
        Text21(place, "Text21", TextBox::Lines::One, kCountdown, false) {}

  static constexpr char16_t kCountdown[] = u"Countdown";
  static constexpr char16_t kAlarmClock[] = u"Alarm Clock";
  static constexpr char16_t kRun[] = u"run";

  TextBox Text15;  // "run" while the timer is running, else empty
  TextBox Text21;  // the mode, which also builds the captions

  bool IsRunning() const { return Text15.GetText() == kRun; }
  bool IsCountdown() const { return Text21.GetText() == kCountdown; }
  bool IsAlarmClock() const { return Text21.GetText() == kAlarmClock; }
};

}  // namespace quillbox

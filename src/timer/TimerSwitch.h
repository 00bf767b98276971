#pragma once

#include "platform/forms/CommandButton.h"
#include "platform/forms/OptionButton.h"
#include "platform/ports/Clock.h"
#include "timer/TimerFields.h"
#include "timer/TimerState.h"

namespace quillbox {

// The buttons that choose the mode, switch the timer on and off, and set the fields.
class TimerSwitch {
 private:
  OptionGroup modes_;

 public:
  TimerSwitch(const Place& place, TimerState& state, TimerFields& fields, Clock& clock);

  OptionButton Option1;     // countdown
  OptionButton Option2;     // alarm clock
  CommandButton Command45;  // activates the timer, or stops it
  CommandButton Command46;  // back to the last starting value, or on to the next full quarter

  // Whoever touches the settings of a running timer stops it first.
  void StopTimer();
  // The timer is due: it is off, and its button offers to switch it on.
  void End();
  void Command45_Click();

  // Called right before the timer begins to run.
  Event<> Starting;

 private:
  void Option1_Click();
  void Option2_Click();
  void Command46_Click();
  void Stop();
  void SetToFullQuarterAfter(double minute, double hour);

  TimerState& state_;
  TimerFields& fields_;
  Clock& clock_;
};

}  // namespace quillbox

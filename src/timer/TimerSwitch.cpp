#include "timer/TimerSwitch.h"

#include "timer/FullQuarter.h"

namespace quillbox {

TimerSwitch::TimerSwitch(const Place& place, TimerState& state, TimerFields& fields, Clock& clock)
    : Option1(place, "Option1", u"Countdown mode", modes_, true),
      Option2(place, "Option2", u"Alarm clock mode", modes_),
      Command45(place, "Command45", u"Activate Countdown", u"Activate the Countdown"),
      Command46(place, "Command46", u"Reset Countdown to starting value",
                u"Reset the Timer to the last starting value", false),
      state_(state),
      fields_(fields),
      clock_(clock) {
  Option1.Click = [this] { Option1_Click(); };
  Option2.Click = [this] { Option2_Click(); };
  Command45.Click = [this] { Command45_Click(); };
  Command46.Click = [this] { Command46_Click(); };
}

void TimerSwitch::End() {
  state_.Text15.SetText(u"");
  Command45.SetCaption(u"Activate " + state_.Text21.GetText());
  Command45.SetToolTipText(u"Activate the " + state_.Text21.GetText());
}

void TimerSwitch::Stop() {
  End();
  if (state_.IsAlarmClock()) fields_.ShowColons();
}

void TimerSwitch::StopTimer() {
  if (state_.IsRunning()) Stop();
}

void TimerSwitch::Command45_Click() {
  if (!state_.Text15.GetText().empty()) {
    Stop();
    Command46.SetEnabled(true);
    return;
  }
  Raise(Starting);
  state_.Text15.SetText(TimerState::kRun);
  Command45.SetCaption(u"Stop " + state_.Text21.GetText());
  Command45.SetToolTipText(u"Deactivate the " + state_.Text21.GetText());
  fields_.Limit();
  fields_.TakeStartingValues();
  Command46.SetEnabled(true);
}

void TimerSwitch::Command46_Click() {
  StopTimer();
  if (state_.IsCountdown()) {
    fields_.RestoreStartingValues();
    return;
  }
  SetToFullQuarterAfter(TimerFields::ValueOf(fields_.Text17), TimerFields::ValueOf(fields_.Text16));
  fields_.ShowColons();
}

void TimerSwitch::Option1_Click() {
  state_.Text15.SetText(u"");
  Command45.SetCaption(u"Activate Countdown");
  Command45.SetToolTipText(u"Activate the Countdown");
  Command46.SetCaption(u"Reset Countdown to starting value");
  Command46.SetToolTipText(u"Reset the Countdown to the last starting value");
  Command46.SetEnabled(false);
  state_.Text21.SetText(TimerState::kCountdown);
  fields_.ShowUnits();
  fields_.Set(u"0", u"0", u"0");
  fields_.ForgetStartingValues();
}

void TimerSwitch::Option2_Click() {
  state_.Text15.SetText(u"");
  Command45.SetCaption(u"Activate Alarm Clock");
  Command45.SetToolTipText(u"Activate the Alarm Clock");
  Command46.SetCaption(u"Set Alarm Clock to next full quarter");
  Command46.SetToolTipText(u"Set the Alarm Clock to the next full quarter hour (from now on)");
  Command46.SetEnabled(true);
  state_.Text21.SetText(TimerState::kAlarmClock);
  const LocalTime now = clock_.Now();
  SetToFullQuarterAfter(now.minute, now.hour);
  fields_.ShowTimeOfDay();
}

void TimerSwitch::SetToFullQuarterAfter(double minute, double hour) {
  const FullQuarter next = NextFullQuarter(minute, hour);
  fields_.Set(next.hour, next.minute, u"00");
}

}  // namespace quillbox

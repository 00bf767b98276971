#pragma once

#include "core/window/MainWindow.h"
#include "platform/forms/FormSlot.h"
#include "platform/forms/Picture.h"
#include "timer/ClockLabels.h"
#include "timer/TimerFields.h"
#include "timer/TimerMessageText.h"
#include "timer/TimerState.h"
#include "timer/TimerSwitch.h"
#include "timer/frmMessage.h"

namespace quillbox {

// The Timer page: the clock, and one timer that is either a countdown or an alarm clock. The timer counts the
// seconds that the clock shows; it measures nothing, and a second that the clock skips is not made up.
class TimerPage {
 public:
  TimerPage(MainWindow& window, Norvane& settings, Clipboard& clipboard, Clock& clock,
            FormSlot<frmMessage>& messageWindow);

  TimerState state;
  TimerFields fields;
  TimerSwitch timer;
  TimerMessageText message;
  ClockLabels labels;
  Picture Frame1;  // around the clock
  Picture Frame2;  // around fields and buttons of the timer
  Picture Frame3;  // around the message

  // A countdown of two minutes. It works as the button does, so a countdown that runs already is stopped.
  void ShowAgainInTwoMinutes();
  // For whoever is about to look at the page: if ticks were slept through, everything becomes as if they had
  // been made.
  void CatchUp();

 private:
  void Timer2_Timer();
  void Label5_Change();
  void CountDown();
  void LookAtAlarm();
  Text TimeThatPassed() const;
  void ShowMessage(const Text& builtIn);
  void Text14_OLEDragDrop(const DragData& data);
  bool IsIdle();

  MainWindow& window_;
  Clock& clock_;
  FormSlot<frmMessage>& messageWindow_;
  bool slept_ = false;  // the event loop was told that a tick can be left out
};

}  // namespace quillbox

#pragma once

#include <QTimer>
#include <map>
#include <memory>

#include "platform/forms/Dispatcher.h"
#include "platform/forms/Timer.h"

namespace quillbox {

// Runs the timers' periods on Qt's loop. Ticks that would change nothing are slept through, so that a program
// at rest doesn't wake up.
class QtTimers : public TimerHost {
 public:
  ~QtTimers() override;
  void Started(Timer& timer) override;
  void Stopped(Timer& timer) override;
  void Gone(Timer& timer) override;
  void Woken(Timer& timer, bool atOnce) override;
  // After each input: makes the tick of every sleeping timer for which there is something to do again.
  void WakeSleepers();

 private:
  struct Run {
    std::unique_ptr<QTimer> clock;
    bool asleep = false;
    bool atOnce = false;  // the next tick has been brought forward
  };
  void Fire(Timer& timer);
  void Begin(Timer& timer, Run& run, int milliseconds);

  std::map<Timer*, Run> runs_;
};

}  // namespace quillbox

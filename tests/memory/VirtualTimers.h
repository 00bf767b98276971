#pragma once

#include <cstdint>
#include <vector>

#include "memory/MemoryClock.h"
#include "platform/forms/Dispatcher.h"

namespace quillbox {

// Timers that run while somebody lets the time pass. Every tick is made, whether it changes anything or not.
class VirtualTimers : public TimerHost {
 public:
  explicit VirtualTimers(MemoryClock& clock) : clock_(clock) {}

  void Started(Timer& timer) override;
  void Stopped(Timer& timer) override;
  void Woken(Timer&, bool) override {}

  // The ticks due within the time come in the order of their time, then of the timers' start. The clock shows
  // each tick's time while it runs. Called while a tick stands in a message box, time goes on behind it.
  void Advance(std::int64_t milliseconds);
  // The program is gone.
  void StopAll() { running_.clear(); }

 private:
  struct Running {
    Timer* timer;
    std::int64_t due;
  };
  void MoveTo(std::int64_t time);

  MemoryClock& clock_;
  std::int64_t now_ = 0;          // milliseconds that have passed; setting the clock changes nothing here
  std::vector<Running> running_;  // in the order of their start
};

}  // namespace quillbox

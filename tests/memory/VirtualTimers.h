#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "memory/MemoryClock.h"
#include "platform/forms/Dispatcher.h"
#include "platform/forms/Timer.h"

namespace quillbox {

// Timers that run while somebody lets the time pass. Every tick is made, whether it changes anything or not.
class VirtualTimers : public TimerHost {
 public:
  explicit VirtualTimers(MemoryClock& clock) : clock_(clock) {}

  void Started(Timer& timer) override {
    Stopped(timer);
    running_.push_back({&timer, now_ + timer.GetInterval()});
  }
  void Stopped(Timer& timer) override {
    std::erase_if(running_, [&](const Running& running) { return running.timer == &timer; });
  }
  void Woken(Timer&, bool) override {}

  // The ticks due within the time come in the order of their time, then of the timers' start. The clock shows
  // each tick's time while it runs. Called while a tick stands in a message box, time goes on behind it.
  void Advance(std::int64_t milliseconds) {
    const std::int64_t end = now_ + milliseconds;
    while (true) {
      // The first of the earliest: the vector is in the order of the starts.
      const auto earliest = std::min_element(
          running_.begin(), running_.end(), [](const Running& a, const Running& b) { return a.due < b.due; });
      if (earliest == running_.end() || earliest->due > end) break;
      MoveTo(earliest->due);
      Timer& timer = *earliest->timer;
      // The next period begins now; a tick that stops or restarts its timer finds that undone.
      earliest->due += timer.GetInterval();
      timer.Fire();
    }
    // Time may have gone on further while a tick stood in a message box.
    if (now_ < end) MoveTo(end);
  }
  // The program is gone.
  void StopAll() { running_.clear(); }

 private:
  struct Running {
    Timer* timer;
    std::int64_t due;
  };
  void MoveTo(std::int64_t time) {
    clock_.Advance(time - now_);
    now_ = time;
  }

  MemoryClock& clock_;
  std::int64_t now_ = 0;          // milliseconds that have passed; setting the clock changes nothing here
  std::vector<Running> running_;  // in the order of their start
};

}  // namespace quillbox

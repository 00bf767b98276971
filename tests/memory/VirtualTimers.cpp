#include "memory/VirtualTimers.h"

#include <algorithm>

#include "platform/forms/Timer.h"

namespace quillbox {

void VirtualTimers::Started(Timer& timer) {
  Stopped(timer);
  // An interval of 0 never ends.
  if (timer.GetInterval() > 0) running_.push_back({&timer, now_ + timer.GetInterval()});
}

void VirtualTimers::Stopped(Timer& timer) {
  std::erase_if(running_, [&](const Running& running) { return running.timer == &timer; });
}

void VirtualTimers::MoveTo(std::int64_t time) {
  clock_.Advance(time - now_);
  now_ = time;
}

void VirtualTimers::Advance(std::int64_t milliseconds) {
  const std::int64_t end = now_ + milliseconds;
  while (true) {
    // The first of the earliest: the vector is in the order of the starts.
    const auto earliest = std::min_element(running_.begin(), running_.end(),
                                           [](const Running& a, const Running& b) { return a.due < b.due; });
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

}  // namespace quillbox

#include "x11/PollEventLoop.h"

#include <poll.h>

#include <algorithm>

namespace quillbox::test {

EventLoop::TimerId PollEventLoop::StartTimer(int milliseconds, std::function<void()> due) {
  timers_[nextTimer_] = {Clock::now() + std::chrono::milliseconds(milliseconds), std::move(due)};
  return nextTimer_++;
}

bool PollEventLoop::RunUntil(const std::function<bool()>& done, int milliseconds) {
  const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
  while (true) {
    for (const auto& [key, work] : std::map(before_)) work();
    if (done()) return true;
    auto next = end;
    for (const auto& [id, timer] : timers_) next = std::min(next, timer.due);
    const auto wait = std::chrono::ceil<std::chrono::milliseconds>(next - Clock::now()).count();
    ServeDescriptors(static_cast<int>(std::max<long long>(wait, 0)));
    ServeTimers();
    if (Clock::now() >= end) return done();
  }
}

void PollEventLoop::ServeDescriptors(int waitMs) {
  std::vector<pollfd> descriptors;
  for (const auto& [fd, readable] : watches_) descriptors.push_back({fd, POLLIN, 0});
  for (const auto& [fd, writable] : writableWatches_) descriptors.push_back({fd, POLLOUT, 0});
  poll(descriptors.data(), descriptors.size(), waitMs);
  for (const pollfd& each : descriptors) {
    const auto& watches = each.events == POLLIN ? watches_ : writableWatches_;
    const auto watch = watches.find(each.fd);
    if (!each.revents || watch == watches.end()) continue;
    ++wakeups_;
    const auto call = watch->second;
    call();
  }
}

void PollEventLoop::ServeTimers() {
  const auto now = Clock::now();
  std::vector<TimerId> due;
  for (const auto& [id, timer] : timers_)
    if (timer.due <= now) due.push_back(id);
  for (const TimerId id : due) {
    const auto timer = timers_.find(id);
    if (timer == timers_.end()) continue;
    ++wakeups_;
    const auto call = std::move(timer->second.call);
    timers_.erase(timer);
    call();
  }
}

}  // namespace quillbox::test

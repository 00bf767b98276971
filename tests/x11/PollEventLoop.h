#pragma once

#include <poll.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <map>
#include <vector>

#include "platform/ports/EventLoop.h"

namespace quillbox::test {

// An event loop on poll() that a test turns by hand.
class PollEventLoop final : public EventLoop {
 public:
  void Watch(int fd, std::function<void()> readable) override { watches_[fd] = std::move(readable); }
  void Unwatch(int fd) override { watches_.erase(fd); }
  void WatchWritable(int fd, std::function<void()> call) override { writableWatches_[fd] = std::move(call); }
  void UnwatchWritable(int fd) override { writableWatches_.erase(fd); }
  TimerId StartTimer(int milliseconds, std::function<void()> due) override {
    timers_[nextTimer_] = {Clock::now() + std::chrono::milliseconds(milliseconds), std::move(due)};
    return nextTimer_++;
  }
  void CancelTimer(TimerId timer) override { timers_.erase(timer); }

  // Turns until `done`; false if that takes longer than `milliseconds`, which no test is to rely on.
  bool RunUntil(const std::function<bool()>& done, int milliseconds = 20'000) {
    const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
    while (true) {
      if (done()) return true;
      auto next = end;
      for (const auto& [id, timer] : timers_) next = std::min(next, timer.due);
      const auto wait = std::chrono::ceil<std::chrono::milliseconds>(next - Clock::now()).count();
      ServeDescriptors(static_cast<int>(std::max<long long>(wait, 0)));
      ServeTimers();
      if (Clock::now() >= end) return done();
    }
  }
  void RunFor(int milliseconds) {
    RunUntil([] { return false; }, milliseconds);
  }
  int Wakeups() const { return wakeups_; }  // descriptors and timers served so far
  std::size_t Timers() const { return timers_.size(); }
  std::size_t WatchCount() const { return watches_.size() + writableWatches_.size(); }

 private:
  using Clock = std::chrono::steady_clock;
  struct Timer {
    Clock::time_point due;
    std::function<void()> call;
  };

  void ServeDescriptors(int waitMs) {
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
  void ServeTimers() {
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

  std::map<int, std::function<void()>> watches_, writableWatches_;
  std::map<TimerId, Timer> timers_;
  TimerId nextTimer_ = 1;
  int wakeups_ = 0;
};

}  // namespace quillbox::test

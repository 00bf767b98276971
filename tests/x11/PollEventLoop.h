#pragma once

#include <poll.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <map>
#include <utility>
#include <vector>

#include "platform/ports/EventLoop.h"

namespace quillbox::test {

// An event loop on poll() that a test turns by hand.
class PollEventLoop final : public EventLoop {
 public:
  using Clock = std::chrono::steady_clock;

  void Watch(int fd, std::function<void()> readable) override {
    watches_[{fd, POLLIN}] = std::move(readable);
  }
  void Unwatch(int fd) override { watches_.erase({fd, POLLIN}); }
  void WatchWritable(int fd, std::function<void()> writable) override {
    watches_[{fd, POLLOUT}] = std::move(writable);
  }
  void UnwatchWritable(int fd) override { watches_.erase({fd, POLLOUT}); }
  TimerId StartTimer(int milliseconds, std::function<void()> due) override {
    timers_[nextTimer_] = {Clock::now() + std::chrono::milliseconds(milliseconds), std::move(due)};
    return nextTimer_++;
  }
  void CancelTimer(TimerId timer) override { timers_.erase(timer); }

  // Waits until there is something to do, or `end`, and does it.
  void Turn(Clock::time_point end = Clock::now() + std::chrono::minutes(1)) {
    for (const auto& [id, timer] : timers_) end = std::min(end, timer.due);
    const auto wait = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
    std::vector<pollfd> descriptors;
    for (const auto& [watched, call] : watches_) descriptors.push_back({watched.first, watched.second, 0});
    poll(descriptors.data(), descriptors.size(), static_cast<int>(std::max<long long>(wait, 0)));
    // What is called may end any other.
    for (const pollfd& each : descriptors) {
      const auto watch = watches_.find({each.fd, each.events});
      if (each.revents != 0 && watch != watches_.end()) Serve(std::function(watch->second));
    }
    const std::map<TimerId, Timer> timers = timers_;
    for (const auto& [id, timer] : timers)
      if (timer.due <= Clock::now() && timers_.erase(id) > 0) Serve(timer.call);
  }
  void RunFor(int milliseconds) {
    const auto end = Clock::now() + std::chrono::milliseconds(milliseconds);
    do Turn(end);
    while (Clock::now() < end);
  }
  int Wakeups() const { return wakeups_; }  // descriptors and timers served so far
  std::size_t Timers() const { return timers_.size(); }
  std::size_t WatchCount() const { return watches_.size(); }

 private:
  struct Timer {
    Clock::time_point due;
    std::function<void()> call;
  };

  void Serve(const std::function<void()>& call) {
    ++wakeups_;
    call();
  }

  std::map<std::pair<int, short>, std::function<void()>> watches_;  // by descriptor and POLLIN or POLLOUT
  std::map<TimerId, Timer> timers_;
  TimerId nextTimer_ = 1;
  int wakeups_ = 0;
};

}  // namespace quillbox::test

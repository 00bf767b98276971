#pragma once

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
  TimerId StartTimer(int milliseconds, std::function<void()> due) override;
  void CancelTimer(TimerId timer) override { timers_.erase(timer); }

  // Called before each wait, for clients that may have taken events in already.
  void BeforeWait(void* key, std::function<void()> work) { before_[key] = std::move(work); }
  void NoLongerBeforeWait(void* key) { before_.erase(key); }

  // Turns until `done`; false if that takes longer than `milliseconds`.
  bool RunUntil(const std::function<bool()>& done, int milliseconds = 3000);
  void RunFor(int milliseconds) {
    RunUntil([] { return false; }, milliseconds);
  }
  int Wakeups() const { return wakeups_; }  // descriptors and timers served so far
  std::size_t Timers() const { return timers_.size(); }
  bool Watches(int fd) const { return watches_.count(fd) != 0; }
  std::size_t WatchCount() const { return watches_.size() + writableWatches_.size(); }

 private:
  using Clock = std::chrono::steady_clock;
  struct Timer {
    Clock::time_point due;
    std::function<void()> call;
  };

  void ServeDescriptors(int waitMs);
  void ServeTimers();

  std::map<int, std::function<void()>> watches_, writableWatches_;
  std::map<TimerId, Timer> timers_;
  std::map<void*, std::function<void()>> before_;
  TimerId nextTimer_ = 1;
  int wakeups_ = 0;
};

}  // namespace quillbox::test

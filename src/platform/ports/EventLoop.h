#pragma once

#include <functional>

namespace quillbox {

// The one event loop of the program, as the sides see it that have connections of their own. All calls and
// call-backs are on its thread.
class EventLoop {
 public:
  using TimerId = int;  // never 0
  virtual ~EventLoop() = default;
  // Calls `readable` whenever `fd` can be read, until Unwatch. A descriptor is watched once.
  virtual void Watch(int fd, std::function<void()> readable) = 0;
  virtual void Unwatch(int fd) = 0;
  // Calls `writable` whenever `fd` takes something in, or nobody is left who would, until UnwatchWritable.
  // Has nothing to do with Watch.
  virtual void WatchWritable(int fd, std::function<void()> writable) = 0;
  virtual void UnwatchWritable(int fd) = 0;
  // Calls `due` once after `milliseconds`, unless it is cancelled before.
  virtual TimerId StartTimer(int milliseconds, std::function<void()> due) = 0;
  virtual void CancelTimer(TimerId timer) = 0;
};

}  // namespace quillbox

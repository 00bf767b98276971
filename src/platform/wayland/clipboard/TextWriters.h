#pragma once

#include <poll.h>

#include <chrono>
#include <cstddef>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "platform/ports/EventLoop.h"

namespace quillbox {

// Writes texts into the pipes of those who paste them. Any number at once; one that stops reading, or goes
// away, loses its text and delays nobody; SIGPIPE has to be without effect. What a reader gets is always
// whole characters, however it ends.
class TextWriters {
 public:
  explicit TextWriters(EventLoop& loop) : loop_(loop) {}
  ~TextWriters();
  TextWriters(const TextWriters&) = delete;
  TextWriters& operator=(const TextWriters&) = delete;

  // Takes `fd` over, and closes it when `bytes`, which are UTF-8 or ASCII, are written or nobody takes them.
  void Write(int fd, std::shared_ptr<const std::string> bytes);

  // For whoever waits outside of the event loop.
  bool Idle() const { return writers_.empty(); }
  void AddTo(std::vector<pollfd>& descriptors) const;
  void Serve(int fd);

 private:
  using Clock = std::chrono::steady_clock;
  struct Writer {
    int fd;
    std::shared_ptr<const std::string> bytes;
    std::size_t offset;
    Clock::time_point moved;
  };

  bool WriteSome(Writer& writer);  // false if it is done with
  void End(std::list<Writer>::iterator writer);
  void DropStuck();

  EventLoop& loop_;
  std::list<Writer> writers_;
  EventLoop::TimerId stuckTimer_ = 0;
};

}  // namespace quillbox

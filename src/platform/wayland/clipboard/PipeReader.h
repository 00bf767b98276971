#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "base/Wipe.h"
#include "platform/ports/EventLoop.h"

namespace quillbox {

// Reads what another program writes into a pipe, up to its end, and keeps the first bytes of it; they are
// wiped in the end. Never waits.
class PipeReader {
 public:
  // `ended` is called once, last thing of all, when the other end is closed.
  PipeReader(EventLoop& loop, std::size_t keep, std::function<void()> ended);
  ~PipeReader();
  PipeReader(const PipeReader&) = delete;
  PipeReader& operator=(const PipeReader&) = delete;

  // Makes the pipe and hands its other end to `give`, which may not keep it: the copy that it has sent on is
  // the only one then. False if the process has no descriptors left.
  bool Open(const std::function<void(int writeEnd)>& give);

  // For whoever waits outside of the event loop.
  int Descriptor() const { return fd_; }
  void Serve();

  std::string& Bytes() { return bytes_.Get(); }
  bool Truncated() const { return truncated_; }

 private:
  EventLoop& loop_;
  std::function<void()> ended_;
  WipedBytes bytes_;
  int fd_ = -1;
  bool truncated_ = false;
};

}  // namespace quillbox

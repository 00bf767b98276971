#pragma once

#include "platform/forms/Timer.h"

namespace quillbox {

// Stops the clipboard's poll while the clipboard is rewritten together with what mirrors it, and starts it
// again, also behind a failure in between.
class PollPause {
 public:
  explicit PollPause(Timer& poll) : poll_(poll) { poll_.SetEnabled(false); }
  ~PollPause() { poll_.SetEnabled(true); }
  PollPause(const PollPause&) = delete;
  PollPause& operator=(const PollPause&) = delete;

 private:
  Timer& poll_;
};

}  // namespace quillbox

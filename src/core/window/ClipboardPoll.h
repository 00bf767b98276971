#pragma once

#include <cassert>

#include "platform/forms/Timer.h"

namespace quillbox {

// The clipboard's poll: Timer1, which ticks from Start to Stop but for the pauses in between.
class ClipboardPoll {
 public:
  explicit ClipboardPoll(const Place& place) : Timer1(place, "Timer1", kInterval, false) {}

  Timer Timer1;

  void Start() { Follow(started_ = true); }
  void Stop() { Follow(started_ = false); }
  bool Runs() const { return Timer1.GetEnabled(); }

 private:
  friend class PollPause;
  static constexpr int kInterval = 250;  // milliseconds

  void Follow(bool started) { Timer1.SetEnabled(started && pauses_ == 0); }

  bool started_ = false;
  int pauses_ = 0;
};

// No tick while the clipboard is rewritten together with what mirrors it: a tick between the two would take
// the program's own text for a new one. Pauses may lie within one another; the outermost one's end, also
// behind a failure, begins a whole period.
class PollPause {
 public:
  explicit PollPause(ClipboardPoll& poll) : poll_(&poll) {
    ++poll.pauses_;
    poll.Follow(poll.started_);
  }
  ~PollPause() { End(); }
  PollPause(const PollPause&) = delete;
  PollPause& operator=(const PollPause&) = delete;

  // Ends the pause before its time.
  void End() {
    if (!poll_) return;
    assert(poll_->pauses_ > 0);
    --poll_->pauses_;
    poll_->Follow(poll_->started_);
    poll_ = nullptr;
  }

 private:
  ClipboardPoll* poll_;
};

}  // namespace quillbox

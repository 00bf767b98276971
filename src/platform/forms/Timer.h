#pragma once

#include <functional>

#include "platform/forms/Control.h"

namespace quillbox {

// A periodic tick. A tick never overlaps a tick of the same timer.
class Timer : public Control {
 public:
  // `interval`: milliseconds, at least 1.
  Timer(const Place& place, std::string_view name, int interval, bool enabled);
  ~Timer() override;

  int GetInterval() const { return interval_; }
  // Starting a stopped timer begins a whole period; enabling an enabled one changes nothing.
  void SetEnabled(bool enabled) override;

  Event<> Tick;
  // Whether a tick now would change nothing. On the event loop such ticks are slept through until Wake.
  std::function<bool()> IsIdle;
  // Something happened that a tick may have to look at: with `atOnce` it comes without delay, else in its
  // time.
  void Wake(bool atOnce);

  // A period is over. `Ticking` is true within it.
  void Fire();
  bool Ticking() const { return ticking_; }

 private:
  int interval_;
  bool ticking_ = false;
};

}  // namespace quillbox

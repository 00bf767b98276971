#include "platform/qt/ports/QtTimers.h"

#include <vector>

namespace quillbox {

QtTimers::~QtTimers() = default;

void QtTimers::Begin(Timer& timer, Run& run, int milliseconds) {
  if (!run.clock) {
    run.clock = std::make_unique<QTimer>();
    run.clock->setSingleShot(true);
    QObject::connect(run.clock.get(), &QTimer::timeout, run.clock.get(), [this, &timer] { Fire(timer); });
  }
  run.asleep = false;
  run.clock->start(milliseconds);
}

void QtTimers::Started(Timer& timer) {
  Run& run = runs_[&timer];
  // A tick that has been brought forward isn't put off by stopping and starting the timer meanwhile.
  Begin(timer, run, run.atOnce ? 0 : timer.GetInterval());
}

void QtTimers::Stopped(Timer& timer) {
  const auto found = runs_.find(&timer);
  if (found == runs_.end()) return;
  if (found->second.clock) found->second.clock->stop();
  found->second.asleep = false;
}

void QtTimers::Gone(Timer& timer) {
  const auto found = runs_.find(&timer);
  if (found == runs_.end()) return;
  // It may go within its own tick.
  if (QTimer* const clock = found->second.clock.release()) {
    clock->stop();
    clock->deleteLater();
  }
  runs_.erase(found);
}

void QtTimers::Fire(Timer& timer) {
  // While a tick of this timer waits in a message box, the next one comes in its time.
  if (timer.Ticking()) return Begin(timer, runs_[&timer], timer.GetInterval());
  runs_[&timer].atOnce = false;
  timer.Fire();
  const auto found = runs_.find(&timer);
  if (found == runs_.end() || !timer.GetEnabled() || found->second.atOnce) return;
  if (timer.IsIdle && timer.IsIdle()) {
    found->second.clock->stop();
    found->second.asleep = true;
  } else if (!found->second.clock->isActive()) {
    Begin(timer, found->second, timer.GetInterval());
  }
}

void QtTimers::Woken(Timer& timer, bool atOnce) {
  Run& run = runs_[&timer];
  if (atOnce) {
    if (run.atOnce) return;
    run.atOnce = true;
    Begin(timer, run, 0);
  } else if (run.asleep) {
    Begin(timer, run, timer.GetInterval());
  }
}

void QtTimers::WakeSleepers() {
  std::vector<Timer*> due;
  for (auto& [timer, run] : runs_) {
    if (run.asleep && timer->GetEnabled() && !(timer->IsIdle && timer->IsIdle())) due.push_back(timer);
  }
  for (Timer* timer : due) {
    const auto found = runs_.find(timer);
    if (found == runs_.end() || !found->second.asleep) continue;
    found->second.asleep = false;
    Fire(*timer);
  }
}

}  // namespace quillbox

#include "platform/forms/Timer.h"

#include <cassert>

#include "platform/forms/Dispatcher.h"
#include "platform/forms/Form.h"

namespace quillbox {

Timer::Timer(const Place& place, std::string_view name, int interval, bool enabled)
    : Control(place, name), interval_(interval) {
  assert(interval > 0);
  Control::SetEnabled(enabled);
  if (enabled && Dispatch().Timers()) Dispatch().Timers()->Started(*this);
}

Timer::~Timer() {
  if (Dispatch().Timers()) Dispatch().Timers()->Gone(*this);
}

void Timer::SetEnabled(bool enabled) {
  if (GetEnabled() == enabled) return;
  Control::SetEnabled(enabled);
  TimerHost* const host = Dispatch().Timers();
  if (!host) return;
  if (enabled) {
    host->Started(*this);
  } else {
    host->Stopped(*this);
  }
}

void Timer::Wake(bool atOnce) {
  if (GetEnabled() && Dispatch().Timers()) Dispatch().Timers()->Woken(*this, atOnce);
}

void Timer::Fire() {
  if (ticking_ || !GetEnabled()) return;
  Dispatch().Dispatch([this] {
    ticking_ = true;
    try {
      Raise(Tick);
    } catch (const RuntimeError& error) {
      Swallow(error);
    }
    ticking_ = false;
  });
}

}  // namespace quillbox

#pragma once

#include <cstdint>

#include "platform/ports/Clock.h"

namespace quillbox {

// A clock in the test's hand, to the millisecond. Texts are HH:MM:SS and YYYY-MM-DD.
class MemoryClock : public Clock {
 public:
  MemoryClock() { Set(LocalTime{}); }

  LocalTime Now() override;
  Text TimeText() override;
  Text DateText() override;

  // The start of that second; nothing in it is negative. False, and nothing changes, if there is no such time
  // between the years 1 and 9999.
  bool Set(const LocalTime& time);
  void Advance(std::int64_t milliseconds) { milliseconds_ += milliseconds; }

 private:
  std::int64_t milliseconds_ = 0;  // since 1970-01-01 00:00:00, local
};

}  // namespace quillbox

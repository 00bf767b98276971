#pragma once

#include <ctime>

#include "platform/linux/system/UserLocale.h"
#include "platform/ports/Clock.h"

namespace quillbox {

// The system's local time, and its texts in the formats of the user's locale. A time zone that the user
// changes meanwhile counts from the next second on.
class LinuxClock : public Clock {
 public:
  LinuxClock();
  LocalTime Now() override;
  Text TimeText() override;
  Text DateText() override;

 private:
  tm Local();
  Text Formatted(const wchar_t* format);

  UserLocale locale_;
  std::time_t zoneRead_ = -1;  // when the time zone was last looked at
};

}  // namespace quillbox

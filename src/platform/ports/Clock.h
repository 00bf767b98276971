#pragma once

#include "base/Text.h"

namespace quillbox {

struct LocalTime {
  int year = 2000;
  int month = 1;
  int day = 1;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

class Clock {
 public:
  virtual ~Clock() = default;
  virtual LocalTime Now() = 0;
  virtual Text TimeText() = 0;  // in the system's format, to the second
  virtual Text DateText() = 0;
};

}  // namespace quillbox

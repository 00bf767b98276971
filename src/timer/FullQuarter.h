#pragma once

#include "base/Text.h"

namespace quillbox {

// A time of day as the fields show it: the hour without a leading zero, the minute with two digits.
struct FullQuarter {
  Text hour;
  Text minute;
};

// The quarter of an hour that follows the given time; a time on a quarter moves on to the next one. Only an
// hour that moves on is brought back into the day.
FullQuarter NextFullQuarter(double minute, double hour);

}  // namespace quillbox

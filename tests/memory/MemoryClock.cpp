#include "memory/MemoryClock.h"

#include <chrono>
#include <cstdio>

namespace quillbox {

namespace {

namespace chrono = std::chrono;

Text Written(const char* format, int first, int second, int third) {
  char text[40];
  return Text(text, text + std::snprintf(text, sizeof text, format, first, second, third));
}

}  // namespace

LocalTime MemoryClock::Now() {
  const chrono::sys_time<chrono::milliseconds> now{chrono::milliseconds(milliseconds_)};
  const auto day = chrono::floor<chrono::days>(now);
  const chrono::year_month_day date(day);
  const chrono::hh_mm_ss time(now - day);
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          static_cast<int>(time.hours().count()),
          static_cast<int>(time.minutes().count()),
          static_cast<int>(time.seconds().count())};
}

Text MemoryClock::TimeText() {
  const LocalTime now = Now();
  return Written("%02d:%02d:%02d", now.hour, now.minute, now.second);
}

Text MemoryClock::DateText() {
  const LocalTime now = Now();
  return Written("%04d-%02d-%02d", now.year, now.month, now.day);
}

bool MemoryClock::Set(const LocalTime& time) {
  const chrono::year_month_day date{chrono::year(time.year), chrono::month(static_cast<unsigned>(time.month)),
                                    chrono::day(static_cast<unsigned>(time.day))};
  if (time.year < 1 || time.year > 9999 || !date.ok()) return false;
  if (time.hour > 23 || time.minute > 59 || time.second > 59) return false;
  const auto ofDay = chrono::hours(time.hour) + chrono::minutes(time.minute) + chrono::seconds(time.second);
  milliseconds_ = chrono::milliseconds(chrono::sys_days(date).time_since_epoch() + ofDay).count();
  return true;
}

}  // namespace quillbox

#include "memory/MemoryClock.h"

#include <chrono>

namespace quillbox {

namespace {

using std::chrono::floor;
using std::chrono::milliseconds;
using std::chrono::sys_days;
using std::chrono::sys_time;
using Days = std::chrono::days;

Text Digits(int number, std::size_t width) {
  Text digits = Decimal(number);
  if (digits.size() < width) digits.insert(0, width - digits.size(), u'0');
  return digits;
}

}  // namespace

LocalTime MemoryClock::Now() {
  const sys_time<milliseconds> now{milliseconds(milliseconds_)};
  const sys_days day = floor<Days>(now);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss time(now - day);
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          static_cast<int>(time.hours().count()),
          static_cast<int>(time.minutes().count()),
          static_cast<int>(time.seconds().count())};
}

Text MemoryClock::TimeText() {
  const LocalTime now = Now();
  return Digits(now.hour, 2) + u":" + Digits(now.minute, 2) + u":" + Digits(now.second, 2);
}

Text MemoryClock::DateText() {
  const LocalTime now = Now();
  return Digits(now.year, 4) + u"-" + Digits(now.month, 2) + u"-" + Digits(now.day, 2);
}

bool MemoryClock::Set(const LocalTime& time) {
  const auto within = [](int value, int last) { return value >= 0 && value <= last; };
  if (time.year < 1 || time.year > 9999 || !within(time.month, 12) || !within(time.day, 31)) return false;
  if (!within(time.hour, 23) || !within(time.minute, 59) || !within(time.second, 59)) return false;
  const std::chrono::year_month_day date{std::chrono::year(time.year),
                                         std::chrono::month(static_cast<unsigned>(time.month)),
                                         std::chrono::day(static_cast<unsigned>(time.day))};
  if (!date.ok()) return false;
  const sys_time<milliseconds> day{sys_days(date)};
  const auto ofDay =
      std::chrono::hours(time.hour) + std::chrono::minutes(time.minute) + std::chrono::seconds(time.second);
  milliseconds_ = (day + ofDay).time_since_epoch().count();
  return true;
}

}  // namespace quillbox

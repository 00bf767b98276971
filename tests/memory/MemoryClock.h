#pragma once

#include <chrono>
#include <cstdio>

#include "platform/ports/Clock.h"

namespace quillbox {

// A clock in the test's hand, to the millisecond. Texts are HH:MM:SS and YYYY-MM-DD.
class MemoryClock : public Clock {
 public:
  MemoryClock() { Set(LocalTime{}); }

  LocalTime Now() override {
    const auto day = std::chrono::floor<std::chrono::days>(now_);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(now_ - day);
    const auto number = [](auto unit) { return static_cast<int>(static_cast<unsigned>(unit)); };
    return {static_cast<int>(date.year()), number(date.month()),           number(date.day()),
            number(time.hours().count()),  number(time.minutes().count()), number(time.seconds().count())};
  }
  Text TimeText() override {
    const LocalTime now = Now();
    return Written("%02d:%02d:%02d", now.hour, now.minute, now.second);
  }
  Text DateText() override {
    const LocalTime now = Now();
    return Written("%04d-%02d-%02d", now.year, now.month, now.day);
  }

  // The start of that second; nothing in it is negative. False, and nothing changes, if there is no such time
  // between the years 1 and 9999.
  bool Set(const LocalTime& time) {
    using namespace std::chrono;
    const year_month_day date{year(time.year), month(static_cast<unsigned>(time.month)),
                              day(static_cast<unsigned>(time.day))};
    if (time.year < 1 || time.year > 9999 || !date.ok()) return false;
    if (time.hour > 23 || time.minute > 59 || time.second > 59) return false;
    now_ = sys_days(date) + hours(time.hour) + minutes(time.minute) + seconds(time.second);
    return true;
  }
  void Advance(std::int64_t time) { now_ += std::chrono::milliseconds(time); }

 private:
  static Text Written(const char* format, int first, int second, int third) {
    char text[40];
    return Text(text, text + std::snprintf(text, sizeof text, format, first, second, third));
  }

  std::chrono::sys_time<std::chrono::milliseconds> now_;  // local
};

}  // namespace quillbox

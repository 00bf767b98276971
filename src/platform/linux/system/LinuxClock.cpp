#include "platform/linux/system/LinuxClock.h"

#include <wchar.h>

#include <cstddef>

namespace quillbox {
namespace {

constexpr std::size_t kMaxLength = 128;

}  // namespace

LinuxClock::LinuxClock() : locale_(LC_TIME_MASK | LC_CTYPE_MASK) {}

tm LinuxClock::Local() {
  const std::time_t now = std::time(nullptr);
  if (now != zoneRead_) {
    ::tzset();
    zoneRead_ = now;
  }
  tm local{};
  ::localtime_r(&now, &local);
  return local;
}

LocalTime LinuxClock::Now() {
  const tm local = Local();
  return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

Text LinuxClock::Formatted(const wchar_t* format) {
  const tm local = Local();
  // Wide, so that it doesn't matter in which character set the locale is.
  wchar_t buffer[kMaxLength];
  const std::size_t length = ::wcsftime_l(buffer, kMaxLength, format, &local, locale_.Get());
  Text text;
  text.reserve(length);
  for (std::size_t i = 0; i < length; ++i) text += TextOf(static_cast<char32_t>(buffer[i]));
  return text;
}

Text LinuxClock::TimeText() { return Formatted(L"%X"); }
Text LinuxClock::DateText() { return Formatted(L"%x"); }

}  // namespace quillbox

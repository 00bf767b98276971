#pragma once

#include <chrono>
#include <thread>
#include <utility>

#include "platform/x11/keys/XKeySender.h"

namespace quillbox::test {

inline void Sleep(int milliseconds) { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); }

// A sender whose program does nothing meanwhile, and has no windows unless it says so.
inline XKeySender::Options Plain(XFocus::IsOurs isOurs = [](xcb_window_t) { return false; }) {
  return {.display = {}, .pause = Sleep, .isOurs = std::move(isOurs)};
}

}  // namespace quillbox::test

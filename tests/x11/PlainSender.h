#pragma once

#include <utility>

#include "platform/x11/keys/XKeySender.h"
#include "x11/TestKeyboard.h"

namespace quillbox::test {

// A sender whose program does nothing meanwhile, and has no windows unless it says so.
inline XKeySender::Options Plain(XFocus::IsOurs isOurs = [](xcb_window_t) { return false; }) {
  return {.display = {}, .pause = Sleep, .isOurs = std::move(isOurs)};
}

}  // namespace quillbox::test

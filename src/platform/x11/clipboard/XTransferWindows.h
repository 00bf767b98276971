#pragma once

#include <deque>

#include "platform/x11/clipboard/XConnection.h"

namespace quillbox {

// The windows that texts are read into. A window that an owner may still write to is never used again, so
// that a late piece of one text can't get into another; it is kept for a while, because a careless owner dies
// of writing to a window that is gone.
class XTransferWindows {
 public:
  explicit XTransferWindows(XConnection& connection) : connection_(connection) {}

  xcb_window_t Take();
  void GiveBack(xcb_window_t window, bool spoilt);
  // A stranger has destroyed the window.
  void OnWindowGone(xcb_window_t window);

 private:
  XConnection& connection_;
  xcb_window_t spare_ = XCB_NONE;
  std::deque<xcb_window_t> spoilt_;  // the oldest in front
};

}  // namespace quillbox

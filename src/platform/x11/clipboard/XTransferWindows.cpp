#include "platform/x11/clipboard/XTransferWindows.h"

#include <utility>

namespace quillbox {

namespace {
constexpr std::size_t kSpoiltWindows = 32;
}

xcb_window_t XTransferWindows::Take() {
  return spare_ ? std::exchange(spare_, xcb_window_t{XCB_NONE}) : connection_.CreateWindow();
}

void XTransferWindows::GiveBack(xcb_window_t window, bool spoilt) {
  if (!spoilt && !spare_) {
    spare_ = window;
    return;
  }
  spoilt_.push_back(window);
  if (spoilt_.size() <= kSpoiltWindows) return;
  xcb_destroy_window(connection_.Get(), spoilt_.front());
  spoilt_.pop_front();
}

void XTransferWindows::OnWindowGone(xcb_window_t window) {
  if (window == spare_) spare_ = XCB_NONE;
}

}  // namespace quillbox

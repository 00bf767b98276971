#pragma once

#include <vector>

#include "platform/x11/clipboard/XConnection.h"

namespace quillbox {

// Asks the clipboard manager, if one runs, to save the clipboard that `owner` owns.
class XClipboardManagerHandover {
 public:
  XClipboardManagerHandover(XConnection& connection, xcb_window_t owner)
      : connection_(connection), owner_(owner) {}

  // Hands events out itself, so that the manager's requests are served; returns when it has saved the
  // targets, at the latest after `milliseconds`. True if it has. `time` is a server time.
  bool Run(const std::vector<xcb_atom_t>& targets, xcb_timestamp_t time, int milliseconds);
  void OnSelectionNotify(const xcb_selection_notify_event_t& event);

 private:
  XConnection& connection_;
  xcb_window_t owner_;
  bool ended_ = false;
  bool saved_ = false;
};

}  // namespace quillbox

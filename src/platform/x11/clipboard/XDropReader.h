#pragma once

#include <memory>
#include <vector>

#include "platform/ports/DropText.h"
#include "platform/ports/EventLoop.h"
#include "platform/x11/clipboard/XConnection.h"
#include "platform/x11/clipboard/XIncomingValue.h"
#include "platform/x11/clipboard/XTransferWindows.h"

namespace quillbox {

// Reads the selection XdndSelection when something has been dropped. Not before: sources of Qt answer only
// to the very time of the message that they sent last, and the one of the drop stays.
class XDropReader final : public DropText {
 public:
  // `display` as in DISPLAY; null takes that variable. RuntimeError 57 as of XConnection. `loop` outlives it.
  explicit XDropReader(EventLoop& loop, const char* display = nullptr);
  ~XDropReader() override;

  void See(const void* event) override;
  void Ask(Done done) override;

 private:
  struct Part {
    xcb_atom_t target;
    xcb_atom_t property;
    bool ended;
    std::unique_ptr<XIncomingValue> value;  // null until the source has answered, and if it refuses
  };

  std::vector<xcb_atom_t> OfferedTypes() const;
  void OnEvent(const xcb_generic_event_t& event);
  void OnSelectionNotify(const xcb_selection_notify_event_t& event);
  void OnEnded(Part& part);
  void Finish();
  void Leave();

  EventLoop& loop_;
  XConnection connection_;
  XTransferWindows windows_;
  xcb_atom_t enter_ = 0, drop_ = 0, typeList_ = 0, selection_ = 0, addresses_ = 0, plain_ = 0;
  // Of the drag that came last.
  xcb_window_t source_ = XCB_NONE;
  std::vector<xcb_atom_t> types_;
  bool typesInList_ = false;  // in a property of the source's window, being more than a message holds
  xcb_timestamp_t time_ = XCB_CURRENT_TIME;
  // Of the reading under way.
  Done done_;
  xcb_window_t window_ = XCB_NONE;
  std::vector<Part> parts_;  // the text first
  EventLoop::TimerId deadline_ = 0;
};

}  // namespace quillbox

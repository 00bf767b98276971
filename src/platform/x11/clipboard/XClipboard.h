#pragma once

#include <xcb/xfixes.h>

#include <functional>
#include <memory>

#include "platform/ports/EventLoop.h"
#include "platform/ports/SessionClipboard.h"
#include "platform/x11/clipboard/XClipboardManagerHandover.h"
#include "platform/x11/clipboard/XConnection.h"
#include "platform/x11/clipboard/XSelectionServer.h"
#include "platform/x11/clipboard/XTransfer.h"
#include "platform/x11/clipboard/XTransferWindows.h"

namespace quillbox {

// The X11 selection CLIPBOARD: follows its owners, reads each one's text as it takes over, and owns the
// selection for what the program puts on it and for texts whose owners have quit.
class XClipboard final : public SessionClipboard {
 public:
  // Begins to read the present owner's text. `display` as in DISPLAY; null takes that variable. RuntimeError
  // 57 if there is no X server to be had. `loop` outlives the object.
  explicit XClipboard(EventLoop& loop, const char* display = nullptr);
  ~XClipboard() override;

  // Port. After the X server has gone away all three fail with RuntimeError 521.
  TextView Read() override;
  void Clear() override;
  void Put(TextView text) override;

  bool Settle(int milliseconds) override;
  // To the clipboard manager, if one runs.
  bool HandOver(int milliseconds) override;
  void OnLost(std::function<void()> lost) override { lost_ = std::move(lost); }

 private:
  enum class State {
    Starting,    // nothing known yet
    Reading,     // from another owner
    Held,        // another owner's text
    Owned,       // our own text
    Empty,       // no text
    Unreadable,  // an owner that didn't deliver
  };

  // What became of our last wish to own the selection, or to have it owned by nobody.
  struct Claim {
    xcb_window_t owner = XCB_NONE;
    unsigned sequence = 0;      // of the request: what the server reported before is older than the wish
    unsigned timeSequence = 0;  // of the question for the time behind it
    bool open = false;          // until the server has reported everything up to the request
    bool granted = false;
    bool repeated = false;
    bool inherited = false;  // from a dead owner: whoever has claimed it since comes first
  };

  void OnEvent(const xcb_generic_event_t& event);
  void OnOwnerChange(const xcb_xfixes_selection_notify_event_t& event);
  void OnOwnerGone();
  void OnNobody();
  void OnServerTime(const xcb_property_notify_event_t& event);
  void OnConnectionLost();
  void StartTransfer(xcb_timestamp_t time);
  void OnTransfer(XTransfer::Result result);
  void EndTransfer();
  void AskForFirstOwner(xcb_timestamp_t time);
  unsigned AskForTime();
  void MakeClaim(xcb_window_t owner);
  void Inherit();
  void SendClaim(xcb_timestamp_t time);
  void SetText(Text text);
  void Report(ClipboardNews news);

  EventLoop& loop_;
  XConnection connection_;
  xcb_window_t window_;  // owns the selection
  XTransferWindows windows_;
  XSelectionServer server_;
  std::unique_ptr<XTransfer> transfer_;
  std::unique_ptr<XClipboardManagerHandover> handover_;
  std::function<void()> lost_;
  std::shared_ptr<const Text> text_;  // never null
  State state_ = State::Starting;
  bool textOnly_ = false;            // what holds for the text of State::Held
  bool ownerGone_ = false;           // since the transfer began
  xcb_timestamp_t lastTime_ = 0;     // the latest server time seen; 0 if none
  xcb_timestamp_t inheritTime_ = 0;  // with which what a dead owner has left is claimed
  Claim claim_;
};

}  // namespace quillbox

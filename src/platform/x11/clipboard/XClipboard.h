#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/ports/EventLoop.h"
#include "platform/ports/SecretMemory.h"
#include "platform/ports/SessionClipboard.h"
#include "platform/x11/clipboard/XClipboardManagerHandover.h"
#include "platform/x11/clipboard/XConnection.h"
#include "platform/x11/clipboard/XOwnership.h"
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

  // After the X server has gone away all three fail with RuntimeError 521. So do Clear and Put while the
  // window manager refuses to show us what it holds for windows that aren't X11's: it takes nothing from us
  // then either.
  TextView Read() override;
  bool HoldsSecret() const override { return secret_; }
  void Clear() override;
  void Put(TextView text) override;
  void PutUnlessTaken(TextView text) override;

  bool Settle(int milliseconds) override;
  // To the clipboard manager, if one runs.
  bool HandOver(int milliseconds) override;
  void OnLost(std::function<void()> lost) override { lost_ = std::move(lost); }

 private:
  enum class Content {
    Unknown,     // at the start
    Reading,     // from another owner
    HasText,     // another owner's, or ours
    NoText,      // nothing, or anything but text
    Unreadable,  // of an owner that didn't deliver; or the window manager hides it
    Refused,     // of an owner that shows nobody what it has
  };

  void OnEvent(const xcb_generic_event_t& event);
  void OnProperty(const xcb_property_notify_event_t& event);
  void OnWindowGone(xcb_window_t window);
  void OnConnectionLost();
  void OnTaken(xcb_timestamp_t time);
  void OnDied();
  void OnNobody(Content content);
  void OnTransfer(XTransfer::Result result);
  void StartTransfer(xcb_timestamp_t time);
  void StartDueTransfer();
  void EndTransfer();
  void RequireWritable();
  void Hold(TextView text);
  void FollowFocus(bool follow);
  void SetText(Text text);

  EventLoop& loop_;
  XConnection connection_;
  XTransferWindows windows_;
  SecretMemory secrets_;
  XSelectionServer server_;
  XOwnership ownership_;
  std::unique_ptr<XTransfer> transfer_;
  std::optional<xcb_timestamp_t> due_;  // when the owner became it whose text is to be read after this round
  std::unique_ptr<XClipboardManagerHandover> handover_;
  std::function<void()> lost_;
  std::shared_ptr<const Text> text_;  // never null
  Content content_ = Content::Unknown;
  bool textOnly_ = false;   // the owner of the text had nothing beside it
  bool secret_ = false;     // is what Content::NoText stands for
  bool ownerGone_ = false;  // since the transfer began
  bool followsFocus_ = false;
};

}  // namespace quillbox

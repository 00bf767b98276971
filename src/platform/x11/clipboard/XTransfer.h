#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "base/Text.h"
#include "platform/ports/EventLoop.h"
#include "platform/ports/SecretMemory.h"
#include "platform/ports/TextTypes.h"
#include "platform/x11/clipboard/XConnection.h"
#include "platform/x11/clipboard/XIncomingValue.h"
#include "platform/x11/clipboard/XTransferWindows.h"

namespace quillbox {

// One reading of the clipboard from its owner: what it offers, whether it is a secret, then its text. All of
// it has five seconds.
//
// Whether it is a secret is asked of every owner, also of one that doesn't list the mark, and before the
// text: so there is never a text of which that isn't known. An owner that lists the mark and doesn't give it
// within half of the time is taken to hold a secret. One that doesn't list it and never answers has no mark,
// and its text is held up for kUnlistedHintMs only; one that answers at length is heard out first. The text
// of a secret is read, too, to be known when others offer it.
class XTransfer {
 public:
  enum class Outcome {
    Arrived,
    NoText,      // nothing that we read as text, or an empty text
    Secret,      // a password, the one before again, or an owner that doesn't say whether it is one
    Refused,     // the owner answers nothing, not even what it has to offer
    Unanswered,  // the owner was still silent, or talking, when the time was up
  };
  struct Result {
    Outcome outcome = Outcome::NoText;
    Text text;
    bool textOnly = false;  // the owner offers nothing beside text
  };
  // Called once, last thing of all.
  using Done = std::function<void(Result)>;

  static constexpr int kDeadlineMs = kOwnerDeadlineMs;
  static constexpr int kListedHintMs = kSecretHintMs, kUnlistedHintMs = 500;
  static constexpr std::size_t kMaxBytes = kMaxClipboardBytes;  // kept of a text, as the owner sends it

  // `time` is a server time at which the owner was the owner.
  XTransfer(XConnection& connection, EventLoop& loop, XTransferWindows& windows, SecretMemory& secrets,
            xcb_timestamp_t time, Done done);
  ~XTransfer();
  XTransfer(const XTransfer&) = delete;
  XTransfer& operator=(const XTransfer&) = delete;

  void OnSelectionNotify(const xcb_selection_notify_event_t& event);
  void OnPropertyNotify(const xcb_property_notify_event_t& event);
  // The owner's window is gone: what is already with the server is still read.
  void OwnerGone();

  xcb_window_t Window() const { return window_; }  // into whose properties it is read

 private:
  struct Step {
    xcb_atom_t target;
    xcb_atom_t property;
  };

  void Ask(Step step);
  std::unique_ptr<XIncomingValue> MakeValue();
  void OnAnswer();
  void ChooseTexts();
  void WaitForHint(int milliseconds);
  void OnHint();
  void OnHintLate();
  void AskNextText();
  bool FinishWithText();  // false if its type is none of text
  void OnDeadline();
  void Finish(Outcome outcome, Text text = {});
  void TakeFreshWindow();
  void CancelTimers();
  std::vector<xcb_atom_t> ListedTargets() const;

  XConnection& connection_;
  EventLoop& loop_;
  XTransferWindows& windows_;
  SecretMemory& secrets_;
  xcb_window_t window_;
  xcb_timestamp_t time_;
  Done done_;
  EventLoop::TimerId deadline_, hintDeadline_ = 0;
  Step step_{};
  std::unique_ptr<XIncomingValue> value_;  // null until the owner has answered the step
  std::vector<Step> texts_;                // still to be tried, from the last one on
  bool textOnly_ = false;
  bool hintListed_ = false;
  bool takesLongHint_ = false;
  bool secret_ = false;
  bool ownerGone_ = false;
  bool answered_ = false;  // the owner has given something
  bool spoilt_ = false;    // the owner may go on writing after the end
};

}  // namespace quillbox

#include "platform/x11/clipboard/XTransfer.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "base/Utf8.h"
#include "base/Wipe.h"
#include "platform/ports/TextTypes.h"

namespace quillbox {

namespace {

constexpr std::size_t kMaxTargetBytes = 64 * 1024;

}  // namespace

XTransfer::XTransfer(XConnection& connection, EventLoop& loop, XTransferWindows& windows,
                     SecretMemory& secrets, xcb_timestamp_t time, Done done)
    : connection_(connection),
      loop_(loop),
      windows_(windows),
      secrets_(secrets),
      window_(windows.Take()),
      time_(time),
      done_(std::move(done)) {
  deadline_ = loop_.StartTimer(kDeadlineMs, [this] {
    deadline_ = 0;
    OnDeadline();
  });
  Ask({connection_.Atoms().targets, connection_.Atoms().forTargets});
}

XTransfer::~XTransfer() {
  CancelTimers();
  if (secret_) connection_.WipeBuffer(window_, connection_.Atoms().forHint);
  // The owner may go on writing to it, though nobody will read that.
  windows_.GiveBack(window_, spoilt_ || done_);
}

void XTransfer::CancelTimers() {
  for (EventLoop::TimerId* each : {&deadline_, &hintDeadline_})
    if (const EventLoop::TimerId timer = std::exchange(*each, 0)) loop_.CancelTimer(timer);
}

// What may still come into the old one counts no more.
void XTransfer::TakeFreshWindow() {
  windows_.GiveBack(window_, true);
  window_ = windows_.Take();
  spoilt_ = false;
}

void XTransfer::Ask(Step step) {
  step_ = step;
  value_.reset();
  xcb_delete_property(connection_.Get(), window_, step.property);
  xcb_convert_selection(connection_.Get(), window_, connection_.Atoms().clipboard, step.target, step.property,
                        time_);
}

void XTransfer::OnSelectionNotify(const xcb_selection_notify_event_t& event) {
  if (!done_ || value_ || event.requestor != window_ || event.selection != connection_.Atoms().clipboard)
    return;
  const bool refused = event.property == XCB_ATOM_NONE;
  if (refused ? event.target != step_.target : event.property != step_.property) return;
  value_ = MakeValue();
  if (refused) return OnAnswer();
  answered_ = true;
  value_->Start();
}

std::unique_ptr<XIncomingValue> XTransfer::MakeValue() {
  const bool targets = step_.target == connection_.Atoms().targets;
  const bool hint = step_.target == connection_.Atoms().passwordHint;
  const std::size_t keep = targets ? kMaxTargetBytes : hint ? kMaxSecretHintBytes : kMaxBytes;
  return std::make_unique<XIncomingValue>(connection_, window_, step_.property, targets ? 32 : 8, keep,
                                          [this] { OnAnswer(); });
}

void XTransfer::OnPropertyNotify(const xcb_property_notify_event_t& event) {
  if (!done_ || !value_ || event.window != window_ || event.atom != step_.property) return;
  if (event.state == XCB_PROPERTY_NEW_VALUE) value_->OnNewValue();
}

void XTransfer::OwnerGone() {
  ownerGone_ = true;
  if (value_)
    value_->OwnerGone();
  else if (done_)
    AskNextText();
}

void XTransfer::OnAnswer() {
  const XAtoms& atoms = connection_.Atoms();
  if (value_->Incremental()) spoilt_ = true;
  if (step_.target == atoms.targets) return ChooseTexts();
  if (step_.target == atoms.passwordHint) return OnHint();
  if (!value_->Valid() || !FinishWithText()) AskNextText();
}

std::vector<xcb_atom_t> XTransfer::ListedTargets() const {
  if (!value_->Valid()) return {};
  if (value_->Type() != XCB_ATOM_ATOM && value_->Type() != connection_.Atoms().targets) return {};
  std::vector<xcb_atom_t> targets(value_->Bytes().size() / sizeof(xcb_atom_t));
  if (!targets.empty())
    std::memcpy(targets.data(), value_->Bytes().data(), targets.size() * sizeof(xcb_atom_t));
  return targets;
}

void XTransfer::ChooseTexts() {
  const XAtoms& atoms = connection_.Atoms();
  const std::vector<xcb_atom_t> targets = ListedTargets();
  const auto offers = [&targets](xcb_atom_t target) {
    return std::find(targets.begin(), targets.end(), target) != targets.end();
  };
  const Step utf8{atoms.utf8String, atoms.forUtf8};
  const Step latin1{XCB_ATOM_STRING, atoms.forLatin1};
  if (targets.empty()) {
    // An old client that knows no TARGETS may know a text all the same.
    textOnly_ = true;
    texts_ = {latin1, utf8};
  } else {
    textOnly_ = !value_->Truncated() &&
                std::all_of(targets.begin(), targets.end(),
                            [&atoms](xcb_atom_t target) { return atoms.IsTextOrProtocol(target); });
    for (const Step& step : {latin1, Step{atoms.plainUtf8, atoms.forPlain}, utf8})
      if (offers(step.target)) texts_.push_back(step);
  }
  hintListed_ = offers(atoms.passwordHint) || value_->Truncated();
  if (texts_.empty() && !hintListed_) return AskNextText();
  Ask({atoms.passwordHint, atoms.forHint});
  WaitForHint(hintListed_ ? kListedHintMs : kUnlistedHintMs);
}

void XTransfer::WaitForHint(int milliseconds) {
  hintDeadline_ = loop_.StartTimer(milliseconds, [this] {
    hintDeadline_ = 0;
    OnHintLate();
  });
}

void XTransfer::OnHint() {
  if (const EventLoop::TimerId timer = std::exchange(hintDeadline_, 0)) loop_.CancelTimer(timer);
  // Whoever offers the mark and then doesn't give it gets no benefit of the doubt; none comes in increments.
  const bool given = value_->Valid() && !value_->Incremental() && !value_->Bytes().empty();
  secret_ = given ? SaysSecret(value_->Bytes()) : hintListed_;
  AskNextText();
}

void XTransfer::OnHintLate() {
  // Some give their text whatever they are asked for, and are deaf until all of a long one has been taken.
  if (!hintListed_ && value_ && value_->Incremental() && !std::exchange(takesLongHint_, true))
    return WaitForHint(kListedHintMs);
  secret_ = hintListed_;
  TakeFreshWindow();
  AskNextText();
  connection_.Flush();
}

void XTransfer::AskNextText() {
  if (ownerGone_ || texts_.empty())
    return Finish(secret_ ? Outcome::Secret : answered_ || ownerGone_ ? Outcome::NoText : Outcome::Refused);
  const Step step = texts_.back();
  texts_.pop_back();
  Ask(step);
}

bool XTransfer::FinishWithText() {
  const XAtoms& atoms = connection_.Atoms();
  std::string& bytes = value_->Bytes();
  const bool latin1 = value_->Type() == XCB_ATOM_STRING;
  if (!latin1 && value_->Type() != atoms.utf8String && value_->Type() != atoms.plainUtf8) return false;
  if (!latin1 && value_->Truncated()) DropHalfCharacter(bytes);
  // Some give their text, here the very word, whatever they are asked for.
  if (!hintListed_ && SaysSecret(bytes)) secret_ = false;
  Text text = latin1 ? FromLatin1(bytes) : FromUtf8(bytes);
  secret_ = secrets_.Takes(text, secret_);
  Finish(secret_ ? Outcome::Secret : Outcome::Arrived, std::move(text));
  return true;
}

void XTransfer::OnDeadline() {
  spoilt_ = true;
  // All that is kept of a very long text may be there already.
  if (value_ && value_->Truncated() && FinishWithText()) return;
  Finish(secret_ ? Outcome::Secret : Outcome::Unanswered);
}

void XTransfer::Finish(Outcome outcome, Text text) {
  if (value_) value_->ForgetBytes();
  Result result{outcome, std::move(text), textOnly_};
  if (outcome == Outcome::Arrived && result.text.empty()) result.outcome = Outcome::NoText;
  CancelTimers();
  const Done done = std::move(done_);
  done_ = nullptr;
  done(std::move(result));
}

}  // namespace quillbox

#include "platform/x11/clipboard/XTransfer.h"

#include <algorithm>
#include <cstring>

#include "base/Utf8.h"
#include "platform/ports/TextTypes.h"

namespace quillbox {

namespace {

constexpr std::size_t kMaxTargetBytes = 64 * 1024;

}  // namespace

XTransfer::XTransfer(XConnection& connection, EventLoop& loop, xcb_window_t window, xcb_timestamp_t time,
                     Done done)
    : connection_(connection), loop_(loop), window_(window), time_(time), done_(std::move(done)) {
  deadline_ = loop_.StartTimer(kDeadlineMs, [this] {
    deadline_ = 0;
    OnDeadline();
  });
  Ask({connection_.Atoms().targets, connection_.Atoms().forTargets});
}

XTransfer::~XTransfer() {
  if (deadline_) loop_.CancelTimer(deadline_);
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
    Finish(Outcome::NoText);
}

void XTransfer::OnAnswer() {
  const XAtoms& atoms = connection_.Atoms();
  if (value_->Incremental()) spoilt_ = true;
  if (step_.target == atoms.targets) return ChooseTexts();
  if (step_.target == atoms.passwordHint) {
    // An owner that offers the hint but doesn't give it is taken to hold a secret.
    if (!value_->Valid() || SaysSecret(value_->Bytes())) return Finish(Outcome::Secret);
    return AskNextText();
  }
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
    return AskNextText();
  }
  textOnly_ = !value_->Truncated() &&
              std::all_of(targets.begin(), targets.end(),
                          [&atoms](xcb_atom_t target) { return atoms.IsTextOrProtocol(target); });
  for (const Step& step : {latin1, Step{atoms.plainUtf8, atoms.forPlain}, utf8})
    if (offers(step.target)) texts_.push_back(step);
  if (offers(atoms.passwordHint) || value_->Truncated())
    Ask({atoms.passwordHint, atoms.forHint});
  else
    AskNextText();
}

void XTransfer::AskNextText() {
  if (ownerGone_) return Finish(Outcome::NoText);
  if (texts_.empty()) return Finish(answered_ ? Outcome::NoText : Outcome::Refused);
  const Step step = texts_.back();
  texts_.pop_back();
  Ask(step);
}

bool XTransfer::FinishWithText() {
  const XAtoms& atoms = connection_.Atoms();
  std::string& bytes = value_->Bytes();
  if (value_->Type() == XCB_ATOM_STRING) {
    Finish(Outcome::Arrived, FromLatin1(bytes));
    return true;
  }
  if (value_->Type() != atoms.utf8String && value_->Type() != atoms.plainUtf8) return false;
  if (value_->Truncated()) DropHalfCharacter(bytes);
  Finish(Outcome::Arrived, FromUtf8(bytes));
  return true;
}

void XTransfer::OnDeadline() {
  spoilt_ = true;
  if (step_.target == connection_.Atoms().passwordHint) return Finish(Outcome::Secret);
  // All that is kept of a very long text may be there already.
  if (value_ && value_->Truncated() && FinishWithText()) return;
  Finish(Outcome::Unanswered);
}

void XTransfer::Finish(Outcome outcome, Text text) {
  if (value_) std::string().swap(value_->Bytes());
  Result result{outcome, std::move(text), textOnly_};
  if (outcome == Outcome::Arrived && result.text.empty()) result.outcome = Outcome::NoText;
  if (deadline_) loop_.CancelTimer(deadline_);
  deadline_ = 0;
  const Done done = std::move(done_);
  done_ = nullptr;
  done(std::move(result));
}

}  // namespace quillbox

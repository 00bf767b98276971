#include "platform/wayland/clipboard/TextReading.h"

#include <algorithm>
#include <utility>

#include "platform/ports/TextTypes.h"

namespace quillbox {

TextReading::TextReading(WaylandConnection& connection, EventLoop& loop, SecretMemory& secrets,
                         std::shared_ptr<const DataOffer> offer, Done done)
    : connection_(connection),
      loop_(loop),
      secrets_(secrets),
      offer_(std::move(offer)),
      done_(std::move(done)),
      types_(offer_->Types().TextTypes()) {
  std::reverse(types_.begin(), types_.end());
  deadline_ = loop_.StartTimer(kOwnerDeadlineMs, [this] {
    deadline_ = 0;
    OnDeadline();
  });
  if (!offer_->Types().HasSecretHint()) {
    AskNextText();
    return;
  }
  Ask(std::string(kSecretHintType), kMaxSecretHintBytes, &TextReading::OnHint);
  hintDeadline_ = loop_.StartTimer(kSecretHintMs, [this] {
    hintDeadline_ = 0;
    OnHintLate();
  });
}

TextReading::~TextReading() { CancelTimers(); }

void TextReading::CancelTimers() {
  for (EventLoop::TimerId* each : {&deadline_, &hintDeadline_})
    if (const EventLoop::TimerId timer = std::exchange(*each, 0)) loop_.CancelTimer(timer);
}

void TextReading::Ask(const std::string& type, std::size_t keep, void (TextReading::*ended)()) {
  type_ = type;
  pipe_ = std::make_unique<PipeReader>(loop_, keep, [this, ended] { (this->*ended)(); });
  // Without a descriptor left for it the question stays open, until the time is up.
  pipe_->Open([&](int writeEnd) { offer_->Receive(type, writeEnd); });
  connection_.Flush();
}

void TextReading::AskNextText() {
  if (types_.empty()) return Finish(secret_ ? Outcome::Secret : Outcome::NoText);
  const std::string type = types_.back();
  types_.pop_back();
  Ask(type, kMaxClipboardBytes, &TextReading::OnText);
}

void TextReading::OnHint() {
  // Whoever offers the hint and then doesn't give it gets no benefit of the doubt.
  secret_ = pipe_->Bytes().empty() || SaysSecret(pipe_->Bytes());
  if (const EventLoop::TimerId timer = std::exchange(hintDeadline_, 0)) loop_.CancelTimer(timer);
  AskNextText();
}

void TextReading::OnHintLate() {
  secret_ = true;
  AskNextText();
}

void TextReading::OnText() {
  if (!FinishWithText()) AskNextText();
}

bool TextReading::FinishWithText() {
  std::string& bytes = pipe_->Bytes();
  if (bytes.empty()) return false;
  if (pipe_->Truncated()) DropHalfCharacter(bytes);
  Text text = DecodeText(type_, bytes);
  secret_ = secrets_.Takes(text, secret_);
  Finish(secret_ ? Outcome::Secret : Outcome::Arrived, std::move(text));
  return true;
}

void TextReading::OnDeadline() {
  // All that is kept of a very long text may be there already.
  if (pipe_->Truncated() && FinishWithText()) return;
  Finish(secret_ ? Outcome::Secret : Outcome::Unanswered);
}

void TextReading::Finish(Outcome outcome, Text text) {
  CancelTimers();
  pipe_.reset();
  const Done done = std::move(done_);
  done({outcome, std::move(text)});
}

}  // namespace quillbox

#include "platform/wayland/clipboard/TextReading.h"

#include <algorithm>
#include <utility>

#include "platform/ports/TextTypes.h"

namespace quillbox {

TextReading::TextReading(WaylandConnection& connection, EventLoop& loop,
                         std::shared_ptr<const DataOffer> offer, Done done)
    : connection_(connection),
      loop_(loop),
      offer_(std::move(offer)),
      done_(std::move(done)),
      types_(offer_->Types().TextTypes()) {
  std::reverse(types_.begin(), types_.end());
  deadline_ = loop_.StartTimer(kOwnerDeadlineMs, [this] {
    deadline_ = 0;
    OnDeadline();
  });
  if (offer_->Types().HasSecretHint())
    Ask(std::string(kSecretHintType), kMaxSecretHintBytes, &TextReading::OnHint);
  else
    AskNextText();
}

TextReading::~TextReading() {
  if (deadline_) loop_.CancelTimer(deadline_);
}

void TextReading::Ask(const std::string& type, std::size_t keep, void (TextReading::*ended)()) {
  type_ = type;
  pipe_ = std::make_unique<PipeReader>(loop_, keep, [this, ended] { (this->*ended)(); });
  // Without a descriptor left for it the question stays open, until the time is up.
  pipe_->Open([&](int writeEnd) { offer_->Receive(type, writeEnd); });
  connection_.Flush();
}

void TextReading::AskNextText() {
  const std::string type = types_.back();
  types_.pop_back();
  Ask(type, kMaxClipboardBytes, &TextReading::OnText);
}

void TextReading::OnHint() {
  // Whoever offers the hint and then doesn't give it gets no benefit of the doubt.
  if (pipe_->Bytes().empty() || SaysSecret(pipe_->Bytes())) return Finish(Outcome::Secret);
  if (types_.empty()) return Finish(Outcome::NoText);
  AskNextText();
}

void TextReading::OnText() {
  if (FinishWithText()) return;
  if (types_.empty()) return Finish(Outcome::NoText);
  AskNextText();
}

bool TextReading::FinishWithText() {
  std::string& bytes = pipe_->Bytes();
  if (bytes.empty()) return false;
  if (pipe_->Truncated()) DropHalfCharacter(bytes);
  Text text = DecodeText(type_, bytes);
  std::string().swap(bytes);
  Finish(Outcome::Arrived, std::move(text));
  return true;
}

void TextReading::OnDeadline() {
  if (type_ == kSecretHintType) return Finish(Outcome::Secret);
  // All that is kept of a very long text may be there already.
  if (pipe_->Truncated() && FinishWithText()) return;
  Finish(Outcome::Unanswered);
}

void TextReading::Finish(Outcome outcome, Text text) {
  if (deadline_) loop_.CancelTimer(deadline_);
  deadline_ = 0;
  pipe_.reset();
  const Done done = std::move(done_);
  done({outcome, std::move(text)});
}

}  // namespace quillbox

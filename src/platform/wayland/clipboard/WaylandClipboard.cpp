#include "platform/wayland/clipboard/WaylandClipboard.h"

#include <malloc.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cassert>
#include <random>
#include <utility>
#include <vector>

#include "base/RuntimeError.h"
#include "base/Trace.h"
#include "base/Utf8.h"
#include "platform/ports/TextTypes.h"

namespace quillbox {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr std::size_t kLargeUnits = 256 * 1024;
constexpr int kAnswerMs = 3000;  // for a compositor that works to say what it offers
// A new connection is tried for after so long, then after twice as long, and so on; six seconds in all.
constexpr int kFirstRetryMs = 100;
constexpr int kAttempts = 6;
constexpr std::chrono::seconds kLasting{10};

// What others may read our text as.
constexpr std::string_view kServedTypes[] = {"text/plain;charset=utf-8", "UTF8_STRING", "text/plain", "TEXT",
                                             "STRING"};
constexpr std::string_view kLatin1Type = "STRING";

[[noreturn]] void ThrowBusy() { throw RuntimeError(errors::kClipboardBusy, "Can't open Clipboard"); }

std::string FreshId() {
  static std::random_device random;
  std::string id;
  for (int i = 0; i < 4; ++i) id += std::to_string(random());
  return id;
}

}  // namespace

WaylandClipboard::WaylandClipboard(EventLoop& loop, const char* display)
    : loop_(loop), display_(display ? display : ""), writers_(loop), text_(std::make_shared<const Text>()) {
  Open();
  const bool answered = Wait([this] { return connection_->GlobalsKnown(); }, kAnswerMs);
  if (answered && DataDevice::FindManager(*connection_)) return;
  if (retry_) loop_.CancelTimer(retry_);
  throw RuntimeError(errors::kDeviceError, answered ? "the Wayland compositor offers no data control"
                                                    : "the Wayland compositor doesn't answer");
}

WaylandClipboard::~WaylandClipboard() {
  if (retry_) loop_.CancelTimer(retry_);
}

void WaylandClipboard::Open() {
  connection_ = std::make_unique<WaylandConnection>(loop_, display_.empty() ? nullptr : display_.c_str());
  connection_->OnRound([this] { OnRound(); });
  connection_->OnLost([this] { OnConnectionGone(); });
  opened_ = steady_clock::now();
}

TextView WaylandClipboard::Read() {
  if (state_ == State::Starting || state_ == State::Reading || state_ == State::Unreadable) ThrowBusy();
  return *text_;
}

void WaylandClipboard::Clear() { Own(State::Empty, {}); }

void WaylandClipboard::Put(TextView text) { Own(text.empty() ? State::Empty : State::Owned, Text(text)); }

void WaylandClipboard::PutUnlessTaken(TextView text) {
  const auto heard = std::make_shared<bool>(false);
  connection_->Sync([heard] { *heard = true; });
  connection_->Flush();
  Wait([&heard] { return *heard; }, kAnswerMs);
  if (state_ == State::Empty && !secret_) Put(text);
}

bool WaylandClipboard::Settle(int milliseconds) {
  return Wait([this] { return state_ != State::Starting && state_ != State::Reading; }, milliseconds);
}

bool WaylandClipboard::HandOver(int milliseconds) {
  Wait([this] { return wish_ != Wish::Unsent && writers_.Idle(); }, milliseconds);
  return false;
}

// Everything that the compositor has said by now is known: only the latest of it matters.
void WaylandClipboard::OnRound() {
  if (retry_) return;
  if (finished_) return OnConnectionGone();
  if (!device_) MakeDevice();
  SendWish();
  if (changed_ && wish_ == Wish::None) Follow();
}

void WaylandClipboard::MakeDevice() {
  const bool ready = connection_->GlobalsKnown() && DataDevice::FindManager(*connection_) &&
                     connection_->Find(wl_seat_interface.name);
  if (!ready) return;  // a seat may come later
  device_ = std::make_unique<DataDevice>(
      *connection_, DataDevice::Events{.selection = [this](auto offer) { OnSelection(std::move(offer)); },
                                       .finished = [this] { finished_ = true; }});
  // Some compositors say nothing about an empty clipboard.
  connection_->Sync([this] { changed_ = changed_ || state_ == State::Starting; });
}

void WaylandClipboard::OnSelection(std::shared_ptr<DataOffer> offer) {
  const bool ours = offer && IsOurs(*offer);
  if (ours && wish_ == Wish::Sent) wish_ = Wish::None;
  changed_ = !ours;
  offer_ = std::move(offer);
}

bool WaylandClipboard::IsOurs(const DataOffer& offer) const {
  return source_ && offer.Types().OwnId() == ownId_;
}

void WaylandClipboard::OnCancelled() {
  source_.reset();
  if (wish_ != Wish::Sent || state_ != State::Owned) return;
  // Refused: the selection is what it was.
  Trace({"clipboard of Wayland: the compositor has refused a text of ours"});
  wish_ = Wish::None;
  changed_ = true;
}

// The selection is somebody else's now, or nobody's.
void WaylandClipboard::Follow() {
  changed_ = false;
  source_.reset();
  if (!offer_ && reading_) {
    ownerGone_ = true;  // what it has written is still read
    return;
  }
  reading_.reset();
  if (offer_)
    StartReading();
  else
    OnNobody();
}

void WaylandClipboard::OnNobody() {
  if (std::exchange(keeps_, false) || (state_ == State::Held && textOnly_)) {
    Enter(State::Owned);
    wish_ = Wish::Unsent;
    return SendWish();
  }
  const bool news = state_ != State::Empty;
  SetText({});
  Enter(State::Empty);
  if (news) Tell(ClipboardNews::Other);
}

void WaylandClipboard::StartReading() {
  SetText({});
  keeps_ = ownerGone_ = false;
  textOnly_ = offer_->Types().TextOnly();
  if (offer_->Types().TextTypes().empty()) return OnRead({});
  Enter(State::Reading);
  reading_ = std::make_unique<TextReading>(*connection_, loop_, secrets_, offer_,
                                           [this](TextReading::Result result) { OnRead(std::move(result)); });
}

void WaylandClipboard::OnRead(TextReading::Result result) {
  const std::unique_ptr<TextReading> ended = std::move(reading_);  // it is still at work further up the stack
  SetText(std::move(result.text));
  secret_ = result.outcome == TextReading::Outcome::Secret;
  if (result.outcome == TextReading::Outcome::NoText && !ownerGone_) secrets_.Forget();
  if (result.outcome == TextReading::Outcome::Arrived) {
    Enter(State::Held);
    if (ownerGone_ && textOnly_) OnNobody();
    return Tell(ClipboardNews::Text);
  }
  const bool silent = result.outcome == TextReading::Outcome::Unanswered;
  Enter(silent ? State::Unreadable : State::Empty);
  Tell(ClipboardNews::Other);
}

void WaylandClipboard::Own(State state, Text text) {
  if (!device_ || connection_->Lost() || finished_) ThrowBusy();
  reading_.reset();
  SetText(std::move(text));
  Enter(state);
  keeps_ = changed_ = false;
  wish_ = Wish::Unsent;
  SendWish();
}

// While the compositor takes nothing in only the latest wish is kept; it is sent in the round after.
void WaylandClipboard::SendWish() {
  if (wish_ != Wish::Unsent || !device_ || !connection_->CanSend()) return;
  // The old source goes last: its end would empty the clipboard for a moment.
  const std::unique_ptr<DataSource> old = std::move(source_);
  if (state_ == State::Owned) source_ = MakeSource();
  device_->SetSelection(source_.get());
  wish_ = Wish::Sent;
  connection_->Sync([this, wish = ++wishes_] { OnWishCarriedOut(wish); });
  connection_->Flush();
}

std::unique_ptr<DataSource> WaylandClipboard::MakeSource() {
  ownId_ = FreshId();
  std::vector<std::string> types(std::begin(kServedTypes), std::end(kServedTypes));
  types.push_back(std::string(OfferedTypes::kOwnType) + ownId_);
  return device_->MakeSource(types, {.send = [this](std::string_view type, int fd) { Serve(type, fd); },
                                     .cancelled = [this] { OnCancelled(); }});
}

void WaylandClipboard::OnWishCarriedOut(unsigned wish) {
  if (wish_ != Wish::Sent || wish != wishes_) return;
  wish_ = Wish::None;
  // A clear has no echo. Of a text it is still to come, and what came before it is older.
  if (state_ == State::Owned) changed_ = false;
}

void WaylandClipboard::Serve(std::string_view type, int fd) {
  const bool served =
      std::find(std::begin(kServedTypes), std::end(kServedTypes), type) != std::end(kServedTypes);
  if (!served) {
    close(fd);
    return;
  }
  const bool latin1 = type == kLatin1Type;
  std::weak_ptr<const std::string>& shared = latin1 ? latin1_ : utf8_;
  std::shared_ptr<const std::string> bytes = shared.lock();
  if (!bytes)
    shared = bytes = std::make_shared<const std::string>(latin1 ? ToLatin1(*text_) : ToUtf8(*text_));
  writers_.Write(fd, std::move(bytes));
}

void WaylandClipboard::OnConnectionGone() {
  keeps_ = keeps_ || state_ == State::Owned || (state_ == State::Held && textOnly_);
  if (!keeps_) SetText({});
  wish_ = Wish::None;
  changed_ = false;
  reading_.reset();
  offer_.reset();
  source_.reset();
  device_.reset();
  Enter(State::Starting);
  if (steady_clock::now() - opened_ > kLasting) attempts_ = 0;
  const int wait = kFirstRetryMs << std::min(attempts_++, kAttempts - 1);
  if (!retry_) retry_ = loop_.StartTimer(wait, [this] { TryAgain(); });
}

void WaylandClipboard::TryAgain() {
  retry_ = 0;
  finished_ = false;
  try {
    Open();
  } catch (const RuntimeError& error) {
    Swallow(error);
    if (attempts_ < kAttempts) return OnConnectionGone();
    if (lost_) lost_();
  }
}

bool WaylandClipboard::Wait(const std::function<bool()>& done, int milliseconds) {
  const auto end = steady_clock::now() + std::chrono::milliseconds(milliseconds);
  while (!connection_->Lost() && !retry_) {
    if (done()) return true;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - steady_clock::now()).count();
    if (left <= 0) return false;
    const short events = connection_->WantsToWrite() ? POLLIN | POLLOUT : POLLIN;
    std::vector<pollfd> descriptors = {{connection_->Descriptor(), events, 0},
                                       {reading_ ? reading_->Descriptor() : -1, POLLIN, 0}};
    writers_.AddTo(descriptors);
    if (poll(descriptors.data(), descriptors.size(), static_cast<int>(left)) <= 0) continue;
    for (std::size_t i = 2; i < descriptors.size(); ++i)
      if (descriptors[i].revents) writers_.Serve(descriptors[i].fd);
    if (descriptors[1].revents) reading_->Serve();
    if (descriptors[0].revents) connection_->Dispatch();
  }
  return false;
}

void WaylandClipboard::SetText(Text text) {
  // What a large text took, or took on its way, goes back to the system.
  const bool large = std::max(text_->size(), text.capacity()) > kLargeUnits;
  if (large && text.capacity() / 2 > text.size()) text.shrink_to_fit();
  text_ = std::make_shared<const Text>(std::move(text));
  utf8_.reset();
  latin1_.reset();
  secret_ = false;
  if (large) malloc_trim(0);
}

void WaylandClipboard::Enter(State state) {
  static constexpr std::string_view kNames[] = {"starting", "being read", "held",
                                                "owned",    "empty",      "unreadable"};
  if (state != state_) Trace({"clipboard of Wayland: ", kNames[static_cast<int>(state)]});
  state_ = state;
}

}  // namespace quillbox

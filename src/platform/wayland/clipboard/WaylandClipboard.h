#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "platform/ports/EventLoop.h"
#include "platform/ports/SecretMemory.h"
#include "platform/ports/SessionClipboard.h"
#include "platform/wayland/clipboard/DataDevice.h"
#include "platform/wayland/clipboard/TextReading.h"
#include "platform/wayland/clipboard/TextWriters.h"
#include "platform/wayland/clipboard/WaylandConnection.h"

namespace quillbox {

// The clipboard of a Wayland session, over data control: follows its owners, reads each one's text as it
// takes over, and is the owner itself for what the program puts on it and for texts whose owners have gone.
// It has no window, and nobody needs to have the focus.
//
//                    another's offer                    its text has come
//   Starting ----------------------------> Reading ------------------------> Held
//      |                                    ^  |  no text, a secret: Empty     |
//      | nobody's offer                     |  |  silent for 5 s: Unreadable   | nobody's offer: its owner
//      has v                                    |  v                               v gone, and we step in
//    Empty ------------------------------> (any) -----------------------> Owned
//             another's offer                           Put
//
// The protocol has one word, an empty selection, for a clear and for the end of an owner: what was a mere
// text is offered on, what was more than text, or a secret, is gone, and what we have cleared ourselves is
// clear.
class WaylandClipboard final : public SessionClipboard {
 public:
  // Begins to read the present owner's text. `display` as in WAYLAND_DISPLAY; null takes that variable.
  // RuntimeError 57, with words for a person, if there is no compositor, or it offers no data control, or it
  // doesn't say for three seconds what it offers. `loop` outlives the object.
  explicit WaylandClipboard(EventLoop& loop, const char* display = nullptr);
  ~WaylandClipboard() override;

  // Port. While the compositor has no seat, or a lost one is waited for, all three fail with RuntimeError
  // 521. A text that is refused later makes the one that is there news.
  TextView Read() override;
  bool HoldsSecret() const override { return secret_; }
  void Clear() override;
  void Put(TextView text) override;
  // A selection has no time by which the compositor could refuse an old wish: what has been copied by now is
  // heard of first, which waits for the compositor, at most three seconds.
  void PutUnlessTaken(TextView text) override;
  bool Settle(int milliseconds) override;
  // Nobody takes a text over by a word of the protocol: sees those off who are reading it. Always false.
  bool HandOver(int milliseconds) override;
  // The compositor is gone and for some seconds none has come to its socket.
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
  // What we want the selection to be, until the compositor has said that it is. What it says before is older
  // than the wish and counts for nothing.
  enum class Wish { None, Unsent, Sent };

  void Open();
  void MakeDevice();
  void OnRound();
  void Follow();
  void OnNobody();
  void OnSelection(std::shared_ptr<DataOffer> offer);
  void OnCancelled();
  void OnWishCarriedOut(unsigned wish);
  void StartReading();
  void OnRead(TextReading::Result result);
  void Own(State state, Text text);
  void SendWish();
  std::unique_ptr<DataSource> MakeSource();
  void Serve(std::string_view type, int fd);
  void OnConnectionGone();
  void TryAgain();
  bool Wait(const std::function<bool()>& done, int milliseconds);
  void SetText(Text text);
  void Enter(State state);
  bool IsOurs(const DataOffer& offer) const;

  EventLoop& loop_;
  const std::string display_;  // empty for that of the environment
  std::unique_ptr<WaylandConnection> connection_;
  std::unique_ptr<DataDevice> device_;
  std::unique_ptr<DataSource> source_;  // what we offer; null once it is no longer the selection
  std::shared_ptr<DataOffer> offer_;    // the latest selection; null if nobody offers anything
  std::unique_ptr<TextReading> reading_;
  TextWriters writers_;
  SecretMemory secrets_;
  std::function<void()> lost_;
  std::shared_ptr<const Text> text_;                // never null
  std::weak_ptr<const std::string> utf8_, latin1_;  // shared by the readers of the moment
  State state_ = State::Starting;
  bool textOnly_ = false;   // what holds for the text of State::Held and State::Reading
  bool secret_ = false;     // is what State::Empty stands for
  bool ownerGone_ = false;  // since the reading began
  bool keeps_ = false;      // the text, for a compositor that has none
  bool changed_ = false;    // the selection, since it was last followed
  bool finished_ = false;   // the device
  Wish wish_ = Wish::None;
  unsigned wishes_ = 0;
  std::string ownId_;  // of what we offer
  std::chrono::steady_clock::time_point opened_;
  int attempts_ = 0;  // to get a connection, since one has lasted
  EventLoop::TimerId retry_ = 0;
};

}  // namespace quillbox

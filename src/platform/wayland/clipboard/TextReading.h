#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/Text.h"
#include "platform/ports/EventLoop.h"
#include "platform/ports/SecretMemory.h"
#include "platform/wayland/clipboard/DataDevice.h"
#include "platform/wayland/clipboard/PipeReader.h"

namespace quillbox {

// One reading of the clipboard from its owner: whether it is a secret, then its text in the best type that
// the owner really delivers. All of it has five seconds.
//
// The mark is asked for where it is offered. An owner that doesn't give it within half of the time is taken
// to hold a secret. The text of a secret is read, too, to be known when others offer it.
class TextReading {
 public:
  enum class Outcome {
    Arrived,
    NoText,      // nothing that we read as text, or an empty text
    Secret,      // a password, the one before again, or an owner that doesn't say whether it is one
    Unanswered,  // the owner was still silent, or writing, when the time was up
  };
  struct Result {
    Outcome outcome = Outcome::NoText;
    Text text;
  };
  // Called once, on the event loop, last thing of all.
  using Done = std::function<void(Result)>;

  // `done` is never called from here.
  TextReading(WaylandConnection& connection, EventLoop& loop, SecretMemory& secrets,
              std::shared_ptr<const DataOffer> offer, Done done);
  ~TextReading();
  TextReading(const TextReading&) = delete;
  TextReading& operator=(const TextReading&) = delete;

  // For whoever waits outside of the event loop; -1 while nothing is being read.
  int Descriptor() const { return pipe_ ? pipe_->Descriptor() : -1; }
  void Serve() { pipe_->Serve(); }

 private:
  void Ask(const std::string& type, std::size_t keep, void (TextReading::*ended)());
  void AskNextText();
  void OnHint();
  void OnHintLate();
  void OnText();
  void OnDeadline();
  bool FinishWithText();  // false if there is none
  void Finish(Outcome outcome, Text text = {});
  void CancelTimers();

  WaylandConnection& connection_;
  EventLoop& loop_;
  SecretMemory& secrets_;
  std::shared_ptr<const DataOffer> offer_;
  Done done_;
  std::vector<std::string> types_;  // still to be asked for, the last one first
  std::string type_;                // the one that is being read
  std::unique_ptr<PipeReader> pipe_;
  EventLoop::TimerId deadline_, hintDeadline_ = 0;
  bool secret_ = false;
};

}  // namespace quillbox

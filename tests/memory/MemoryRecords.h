#pragma once

#include <deque>
#include <functional>
#include <utility>
#include <vector>

#include "platform/ports/KeyNotation.h"
#include "platform/ports/KeySender.h"
#include "platform/ports/MessageBoxes.h"
#include "platform/ports/Sound.h"

// What the program shows, types and plays is kept until somebody takes it.
namespace quillbox {

// Boxes that are answered at once: with the answers prepared for them, else Yes where there is one, else OK.
class MemoryMessageBoxes : public MessageBoxes {
 public:
  struct Box {
    Text text;
    BoxCode code = BoxCode::Plain;
    Text title;
  };

  BoxAnswer Show(const Text& text, BoxCode code, const Text& title) override {
    shown_.push_back({text, code, title});
    if (WhileOpen) WhileOpen();
    if (answers_.empty()) return Asks(code) ? BoxAnswer::Yes : BoxAnswer::Ok;
    const BoxAnswer answer = answers_.front();
    answers_.pop_front();
    return answer;
  }

  void Answer(int button) { answers_.push_back(static_cast<BoxAnswer>(button)); }
  std::vector<Box> TakeShown() { return std::exchange(shown_, {}); }
  // What happens while a box stands open.
  std::function<void()> WhileOpen;

 private:
  std::deque<BoxAnswer> answers_;
  std::vector<Box> shown_;
};

// Key strings that could have been typed.
class MemoryKeySender : public KeySender {
 public:
  void SendTo(const KeysFor& keysFor) override {
    CheckWorking();
    if (WhileSending) WhileSending();
    const Text keys = keysFor(windowClass);
    if (!keys.empty()) Keep(keys);
  }
  void Send(const Text& keys) override {
    CheckWorking();
    Keep(keys);
    if (WhileSending) WhileSending();
  }

  void SetFailing(bool failing) { failing_ = failing; }
  std::vector<Text> TakeSent() { return std::exchange(sent_, {}); }
  // Of the window that has the focus.
  std::string windowClass;
  // What happens while keys are being typed.
  std::function<void()> WhileSending;

 private:
  void CheckWorking() const {
    if (failing_) throw RuntimeError(errors::kPermission, "Permission denied");
  }
  void Keep(const Text& keys) {
    ParseKeys(keys);
    sent_.push_back(keys);
  }

  bool failing_ = false;
  std::vector<Text> sent_;
};

class MemorySound : public Sound {
 public:
  void Play(const Text& path) override { played_.push_back(path); }
  std::vector<Text> TakePlayed() { return std::exchange(played_, {}); }

 private:
  std::vector<Text> played_;
};

}  // namespace quillbox

#pragma once

#include <deque>
#include <functional>
#include <vector>

#include "platform/ports/KeyNotation.h"
#include "platform/ports/KeySender.h"
#include "platform/ports/MessageBoxes.h"
#include "platform/ports/Sound.h"

// What the program shows, types and plays is kept in public members, for whoever wants to see it.
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
    shown.push_back({text, code, title});
    if (WhileOpen) WhileOpen();
    if (answers.empty()) answers.push_back(Asks(code) ? BoxAnswer::Yes : BoxAnswer::Ok);
    const BoxAnswer answer = answers.front();
    answers.pop_front();
    return answer;
  }

  std::deque<BoxAnswer> answers;
  std::vector<Box> shown;
  // What happens while a box stands open.
  std::function<void()> WhileOpen;
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

  bool failing = false;
  std::vector<Text> sent;
  // Of the window that has the focus.
  std::string windowClass;
  // What happens while keys are being typed.
  std::function<void()> WhileSending;

 private:
  void CheckWorking() const {
    if (failing) throw RuntimeError(errors::kPermission, "Permission denied");
  }
  void Keep(const Text& keys) {
    ParseKeys(keys);
    sent.push_back(keys);
  }
};

class MemorySound : public Sound {
 public:
  void Play(const Text& path) override { played.push_back(path); }

  std::vector<Text> played;
};

}  // namespace quillbox

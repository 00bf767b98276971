#pragma once

#include "platform/ports/Clipboard.h"

namespace quillbox {

// A clipboard that other programs (the methods beginning with Other) and this one share.
class MemoryClipboard : public Clipboard {
 public:
  TextView Read() override {
    CheckOpen();
    return text_;
  }
  bool HoldsSecret() const override { return secret_; }
  void Clear() override { Put({}); }
  void Put(TextView text) override {
    CheckOpen();
    ++ownWrites_;
    text_ = Text(text);
    secret_ = false;
  }

  void OtherSets(const Text& text) { Change(text, ClipboardNews::Text); }
  // Also for a picture, or whatever else isn't text.
  void OtherClears() { Change({}, ClipboardNews::Other); }
  void OtherSetsSecret() {
    OtherClears();
    secret_ = true;
  }
  // While another program holds the clipboard, nobody else can open it.
  void OtherLocks(bool locked) { locked_ = locked; }

  // What stands on it, whoever holds it; empty for a picture.
  const Text& Content() const { return text_; }
  // How often the program cleared it or put something on it.
  int OwnWrites() const { return ownWrites_; }

 private:
  void CheckOpen() const {
    if (locked_) throw RuntimeError(errors::kClipboardBusy, "Can't open Clipboard");
  }
  void Change(const Text& text, ClipboardNews news) {
    text_ = text;
    secret_ = false;
    Tell(news);
  }

  Text text_;
  bool secret_ = false;
  bool locked_ = false;
  int ownWrites_ = 0;
};

}  // namespace quillbox

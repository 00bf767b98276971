#pragma once

#include <utility>

#include "platform/ports/Clipboard.h"

namespace quillbox {

// A clipboard that other programs (the methods beginning with Other) and this one share.
class MemoryClipboard : public Clipboard {
 public:
  TextView Read() override;
  bool HoldsSecret() const override { return secret_; }
  void Clear() override;
  void Put(TextView text) override;

  void OtherSets(const Text& text);
  void OtherClears();
  void OtherSetsPicture();
  void OtherSetsSecret();
  // While another program holds the clipboard, nobody else can open it.
  void OtherLocks(bool locked) { locked_ = locked; }

  // What stands on it, whoever holds it; empty for a picture.
  const Text& Content() const { return text_; }
  bool HoldsPicture() const { return picture_; }
  // How often the program cleared it or put something on it.
  int OwnWrites() const { return ownWrites_; }

 private:
  void CheckOpen() const;
  void Change(const Text& text, bool picture, ClipboardNews news);

  Text text_;
  bool picture_ = false;
  bool secret_ = false;
  bool locked_ = false;
  int ownWrites_ = 0;
};

}  // namespace quillbox

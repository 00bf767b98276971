#include "memory/MemoryClipboard.h"

namespace quillbox {

void MemoryClipboard::CheckOpen() const {
  if (locked_) throw RuntimeError(errors::kClipboardBusy, "Can't open Clipboard");
}

TextView MemoryClipboard::Read() {
  CheckOpen();
  return text_;
}

void MemoryClipboard::Clear() {
  CheckOpen();
  ++ownWrites_;
  text_.clear();
  picture_ = secret_ = false;
}

void MemoryClipboard::Put(TextView text) {
  CheckOpen();
  ++ownWrites_;
  text_ = Text(text);
  picture_ = secret_ = false;
}

void MemoryClipboard::Change(const Text& text, bool picture, ClipboardNews news) {
  text_ = text;
  picture_ = picture;
  secret_ = false;
  Tell(news);
}

void MemoryClipboard::OtherSets(const Text& text) { Change(text, false, ClipboardNews::Text); }

void MemoryClipboard::OtherClears() { Change({}, false, ClipboardNews::Other); }

void MemoryClipboard::OtherSetsPicture() { Change({}, true, ClipboardNews::Other); }

void MemoryClipboard::OtherSetsSecret() {
  OtherClears();
  secret_ = true;
}

}  // namespace quillbox

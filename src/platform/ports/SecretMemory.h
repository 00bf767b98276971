#pragma once

#include <array>
#include <optional>

#include "base/Sha256.h"
#include "base/Text.h"

namespace quillbox {

// The secret that was on the clipboard last. Compositors and clipboard managers offer its text again, without
// the mark, when its owner has gone; so that it is known then, a hash of it is kept, under a key that is made
// up anew at each start and never leaves the process.
class SecretMemory {
 public:
  SecretMemory();

  // A text has come, and its owner has marked it as a secret or hasn't. True if it is one: marked, or the
  // same as the one before. Nothing of it is left in `text` then. Any other text ends the memory.
  bool Takes(Text& text, bool marked);
  // Something else that is no text is on the clipboard.
  void Forget() { hash_.reset(); }

 private:
  std::array<char, Sha256::kBlockBytes> key_;
  std::optional<Sha256::Digest> hash_;
};

}  // namespace quillbox

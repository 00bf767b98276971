#include "platform/ports/SecretMemory.h"

#include <cstring>
#include <random>

#include "base/Wipe.h"

namespace quillbox {

SecretMemory::SecretMemory() {
  std::random_device random;  // the kernel's, or the processor's
  for (std::size_t at = 0; at < key_.size(); at += sizeof(unsigned)) {
    const unsigned word = random();
    std::memcpy(key_.data() + at, &word, sizeof word);
  }
}

bool SecretMemory::Takes(Text& text, bool marked) {
  if (text.empty() || (!marked && !hash_)) return marked;
  const Sha256::Digest hash =
      HmacSha256({key_.data(), key_.size()},
                 {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)});
  if (!marked && hash != hash_) {
    Forget();
    return false;
  }
  hash_ = hash;
  Wipe(text);
  return true;
}

}  // namespace quillbox

#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

namespace quillbox {

// Overwrites what may have been a secret, also where the compiler sees that nobody reads it any more.
inline void Wipe(void* memory, std::size_t bytes) { explicit_bzero(memory, bytes); }

// The same for all of a text, which is empty then.
template <class Character>
void Wipe(std::basic_string<Character>& text) {
  Wipe(text.data(), text.size() * sizeof(Character));
  text.clear();
}

// Bytes that come in pieces, of a text that may be a secret: what they leave behind while they grow, and at
// their end, is wiped.
class WipedBytes {
 public:
  // Of at most `most` bytes the room is taken all at once, if they turn out to be many.
  explicit WipedBytes(std::size_t most) : most_(most) {}
  ~WipedBytes() { Wipe(bytes_); }
  WipedBytes(const WipedBytes&) = delete;
  WipedBytes& operator=(const WipedBytes&) = delete;

  // Appends as much of `piece` as there is room for; false if that isn't all of it.
  bool Append(std::string_view piece) {
    const std::string_view taken = piece.substr(0, most_ - bytes_.size());
    Reserve(bytes_.size() + taken.size());
    bytes_ += taken;
    return taken.size() == piece.size();
  }
  std::string& Get() { return bytes_; }
  // Gives the room back, too.
  void Clear() {
    Wipe(bytes_);
    bytes_.shrink_to_fit();
  }

 private:
  static constexpr std::size_t kSmall = 64;  // more than a string holds within itself
  static constexpr std::size_t kLarge = 1024 * 1024;

  void Reserve(std::size_t size) {
    if (size <= bytes_.capacity() && bytes_.capacity() >= kSmall) return;
    std::string larger;
    // Growing by doubling would leave half as much again behind; untouched room costs nothing.
    larger.reserve(size > kLarge ? most_ : std::max({size, 2 * bytes_.size(), kSmall}));
    larger = bytes_;
    std::swap(bytes_, larger);
    Wipe(larger);
  }

  std::size_t most_;
  std::string bytes_;
};

}  // namespace quillbox

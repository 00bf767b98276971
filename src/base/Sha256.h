#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillbox {

// SHA-256 (FIPS 180-4). What has gone through it is wiped at its end.
class Sha256 {
 public:
  static constexpr std::size_t kBlockBytes = 64;
  using Digest = std::array<unsigned char, 32>;

  ~Sha256();
  void Add(std::string_view bytes);
  // Once, and nothing may be added after it.
  Digest Finish();

 private:
  void TakeBlock(const unsigned char* block);

  std::array<std::uint32_t, 8> state_ = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                         0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
  std::array<unsigned char, kBlockBytes> block_{};
  std::uint64_t bytes_ = 0;  // so far
};

// The keyed hash of RFC 2104. The key has at most a block's length.
Sha256::Digest HmacSha256(std::string_view key, std::string_view bytes);

}  // namespace quillbox

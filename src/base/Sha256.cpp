#include "base/Sha256.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstring>

#include "base/Wipe.h"

namespace quillbox {

namespace {

constexpr std::array<std::uint32_t, 64> kRounds = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

std::uint32_t Word(const unsigned char* bytes) {
  return static_cast<std::uint32_t>(bytes[0]) << 24 | static_cast<std::uint32_t>(bytes[1]) << 16 |
         static_cast<std::uint32_t>(bytes[2]) << 8 | bytes[3];
}

}  // namespace

Sha256::~Sha256() { Wipe(block_.data(), block_.size()); }

void Sha256::TakeBlock(const unsigned char* block) {
  std::array<std::uint32_t, 64> w;
  for (std::size_t i = 0; i < 16; ++i) w[i] = Word(block + 4 * i);
  for (std::size_t i = 16; i < w.size(); ++i) {
    const std::uint32_t a = std::rotr(w[i - 15], 7) ^ std::rotr(w[i - 15], 18) ^ (w[i - 15] >> 3);
    const std::uint32_t b = std::rotr(w[i - 2], 17) ^ std::rotr(w[i - 2], 19) ^ (w[i - 2] >> 10);
    w[i] = w[i - 16] + a + w[i - 7] + b;
  }
  auto [a, b, c, d, e, f, g, h] = state_;
  for (std::size_t i = 0; i < w.size(); ++i) {
    const std::uint32_t ones = std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25);
    const std::uint32_t first = h + ones + ((e & f) ^ (~e & g)) + kRounds[i] + w[i];
    const std::uint32_t zeros = std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22);
    const std::uint32_t second = zeros + ((a & b) ^ (a & c) ^ (b & c));
    h = g, g = f, f = e, e = d + first, d = c, c = b, b = a, a = first + second;
  }
  const std::array<std::uint32_t, 8> sums = {a, b, c, d, e, f, g, h};
  for (std::size_t i = 0; i < sums.size(); ++i) state_[i] += sums[i];
  Wipe(w.data(), sizeof w);
}

void Sha256::Add(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t filled = bytes_ % kBlockBytes;
    const std::size_t taken = std::min(kBlockBytes - filled, bytes.size());
    std::memcpy(block_.data() + filled, bytes.data(), taken);
    bytes_ += taken;
    bytes.remove_prefix(taken);
    if (bytes_ % kBlockBytes == 0) TakeBlock(block_.data());
  }
}

Sha256::Digest Sha256::Finish() {
  const std::uint64_t bits = bytes_ * 8;
  Add("\x80");
  while (bytes_ % kBlockBytes != kBlockBytes - sizeof bits) Add(std::string_view("\0", 1));
  for (int shift = 56; shift >= 0; shift -= 8) {
    const char byte = static_cast<char>(bits >> shift);
    Add({&byte, 1});
  }
  Digest digest;
  for (std::size_t i = 0; i < digest.size(); ++i)
    digest[i] = static_cast<unsigned char>(state_[i / 4] >> (24 - 8 * (i % 4)));
  return digest;
}

Sha256::Digest HmacSha256(std::string_view key, std::string_view bytes) {
  assert(key.size() <= Sha256::kBlockBytes);
  std::array<char, Sha256::kBlockBytes> inner{}, outer{};
  std::copy(key.begin(), key.end(), inner.begin());
  outer = inner;
  for (char& each : inner) each ^= 0x36;
  for (char& each : outer) each ^= 0x5c;
  Sha256 first, second;
  first.Add({inner.data(), inner.size()});
  first.Add(bytes);
  const Sha256::Digest digest = first.Finish();
  second.Add({outer.data(), outer.size()});
  second.Add({reinterpret_cast<const char*>(digest.data()), digest.size()});
  return second.Finish();
}

}  // namespace quillbox

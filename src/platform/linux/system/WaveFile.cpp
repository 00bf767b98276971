#include "platform/linux/system/WaveFile.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "base/Utf8.h"

namespace quillbox {

namespace {

constexpr std::uintmax_t kMostBytes = 50'000'000;
constexpr std::uint32_t kMostChannels = 8;
constexpr std::uint32_t kMostSamplesPerSecond = 384'000;
constexpr std::uint32_t kPcm = 1;
constexpr std::uint32_t kFloat = 3;
constexpr std::uint32_t kExtensible = 0xFFFE;
constexpr std::size_t kFormatBytes = 16;

using Bytes = std::array<char, kFormatBytes>;

std::uint32_t Number(const Bytes& bytes, std::size_t at, std::size_t length) {
  std::uint32_t number = 0;
  for (std::size_t i = length; i-- > 0;) number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
  return number;
}

bool IsUsual(const Bytes& format) {
  const std::uint32_t kind = Number(format, 0, 2);
  const std::uint32_t channels = Number(format, 2, 2);
  const std::uint32_t rate = Number(format, 4, 4);
  const std::uint32_t blockBytes = Number(format, 12, 2);
  const std::uint32_t bits = Number(format, 14, 2);
  return (kind == kPcm || kind == kFloat || kind == kExtensible) && channels >= 1 &&
         channels <= kMostChannels && rate >= 1 && rate <= kMostSamplesPerSecond &&
         (bits == 8 || bits == 16 || bits == 24 || bits == 32) && blockBytes == channels * bits / 8;
}

}  // namespace

bool IsPlayableWave(const Text& path) {
  std::error_code failed;
  const std::filesystem::path file(ToUtf8(path));
  // A pipe or a device is not even opened: that could wait for ever.
  if (!std::filesystem::is_regular_file(file, failed)) return false;
  const std::uintmax_t size = std::filesystem::file_size(file, failed);
  if (failed || size > kMostBytes) return false;

  std::ifstream in(file, std::ios::binary);
  Bytes bytes{};
  if (!in.read(bytes.data(), 12)) return false;
  const std::string_view head(bytes.data(), 12);
  if (head.substr(0, 4) != "RIFF" || head.substr(8) != "WAVE") return false;
  bool usual = false;
  for (std::uintmax_t at = 12; in.read(bytes.data(), 8);) {
    const std::string_view id(bytes.data(), 4);
    const std::uintmax_t length = Number(bytes, 4, 4);
    at += 8;
    if (length > size - at) return false;
    if (id == "data") return usual && length > 0;
    if (id == "fmt ") {
      if (length < kFormatBytes || !in.read(bytes.data(), kFormatBytes)) return false;
      usual = IsUsual(bytes);
    }
    // Chunks begin at even places.
    at += length + length % 2;
    if (at > size) return false;
    in.seekg(static_cast<std::streamoff>(at));
  }
  return false;
}

}  // namespace quillbox

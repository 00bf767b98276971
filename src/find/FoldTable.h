#pragma once

#include <array>
#include <memory>

#include "platform/ports/TextFolding.h"

namespace quillbox {

// Texts without case and accents. What the port says of a character is kept, in pages of 256 characters of
// which one has been met (512 bytes each), so that a text costs about a nanosecond a character and no folded
// text has to be kept.
class FoldTable {
 public:
  explicit FoldTable(TextFolding& folding) : folding_(folding) {}

  // Appends the folded text.
  void Fold(TextView text, Text& to);

 private:
  static constexpr std::size_t kPage = 256;
  // Units that aren't folded into one unit of their own: into none, or by the port each time.
  static constexpr char16_t kNone = 0;
  static constexpr char16_t kAsk = 0xFFFF;
  using Page = std::array<char16_t, kPage>;

  const Page& PageOf(char16_t unit);
  // Folds the character at `at` by asking; how many units it has.
  std::size_t Ask(TextView text, std::size_t at, Text& to);

  TextFolding& folding_;
  std::array<std::unique_ptr<Page>, 0x10000 / kPage> pages_;
};

}  // namespace quillbox

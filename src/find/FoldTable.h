#pragma once

#include <array>
#include <memory>
#include <vector>

#include "platform/ports/TextFolding.h"

namespace quillbox {

// Texts without case and accents, one behind the other. The memory grows to what they need and is kept.
struct Folded {
  TextView Get() const { return TextView(units).substr(0, length); }

  Text units;
  std::size_t length = 0;  // of the units, those that are in use
};

// Takes case and accents off texts. What the port says of a character is kept, in pages of 256 characters of
// which one has been met (512 bytes each), so that a character costs about a nanosecond and no folded text
// has to be kept.
class FoldTable {
 public:
  explicit FoldTable(TextFolding& folding);

  // Puts the folded text behind what is there.
  void Fold(TextView text, Folded& to);

 private:
  static constexpr std::size_t kPage = 256;
  // Units that aren't folded into one unit of their own: into none, or by the port each time.
  static constexpr char16_t kNone = 0;
  static constexpr char16_t kAsk = 0xFFFF;
  using Page = std::array<char16_t, kPage>;

  void MakePage(std::size_t number);
  // Folds one character by asking; how many units it has.
  std::size_t Ask(TextView text, Text& to);

  TextFolding& folding_;
  // A page that isn't made yet is one that asks.
  Page unmade_;
  std::array<const Page*, 0x10000 / kPage> pages_;
  std::vector<std::unique_ptr<Page>> made_;
};

}  // namespace quillbox

#pragma once

#include "platform/ports/PixelSize.h"
#include "platform/ports/TipSurface.h"

namespace quillbox {

// A font whose characters are all of one size.
class MemoryTips : public TipSurface {
 public:
  static constexpr int kCharacterWidth = 7;
  static constexpr int kLineHeight = 14;

  int LineHeight() override { return kLineHeight; }
  int TextWidth(TextView text) override { return kCharacterWidth * static_cast<int>(text.size()); }
  PixelSize Border() override { return {1, 1}; }
};

}  // namespace quillbox

#pragma once

#include "base/Text.h"
#include "platform/ports/PixelSize.h"

namespace quillbox {

// Measures tips with the font that draws them.
class TipSurface {
 public:
  virtual ~TipSurface() = default;
  virtual int LineHeight() = 0;
  virtual int TextWidth(TextView text) = 0;  // pixels, one line
  virtual PixelSize Border() = 0;            // width of the system's border lines
};

}  // namespace quillbox

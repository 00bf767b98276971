#pragma once

namespace quillbox {

struct PixelSize {
  int width = 0;
  int height = 0;
};

struct PixelRect {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
};

}  // namespace quillbox

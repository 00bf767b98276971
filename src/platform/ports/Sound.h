#pragma once

#include "base/Text.h"

namespace quillbox {

class Sound {
 public:
  virtual ~Sound() = default;
  // Starts to play a wave file and returns at once. A file that can't be played is silent.
  virtual void Play(const Text& path) = 0;
};

}  // namespace quillbox

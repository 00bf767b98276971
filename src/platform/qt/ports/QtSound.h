#pragma once

#include <memory>

#include "platform/ports/Sound.h"

namespace quillbox {

class SoundPlayer;

// Plays wave files through a module of its own, which brings Qt's multimedia along and is loaded with the
// first sound. Without the module, or with a file that can't be played, there is silence.
class QtSound : public Sound {
 public:
  QtSound();
  ~QtSound() override;
  void Play(const Text& path) override;

 private:
  SoundPlayer* Player();

  std::unique_ptr<SoundPlayer> player_;
  bool lookedFor_ = false;
};

}  // namespace quillbox

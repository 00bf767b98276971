#pragma once

#include <utility>
#include <vector>

#include "platform/ports/Sound.h"

namespace quillbox {

class MemorySound : public Sound {
 public:
  void Play(const Text& path) override { played_.push_back(path); }

  std::vector<Text> TakePlayed() { return std::exchange(played_, {}); }

 private:
  std::vector<Text> played_;
};

}  // namespace quillbox

#pragma once

#include <QString>

namespace quillbox {

// What the sound module gives to the program.
class SoundPlayer {
 public:
  virtual ~SoundPlayer() = default;
  // Starts the file and returns at once; a sound that is still playing ends.
  virtual void Play(const QString& path) = 0;
};

// The module's one function: makes a player, which the caller deletes.
inline constexpr char kMakeSoundPlayer[] = "quillboxMakeSoundPlayer";
using MakeSoundPlayerFunction = SoundPlayer* (*)();

}  // namespace quillbox

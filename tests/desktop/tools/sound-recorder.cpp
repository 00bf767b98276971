// Stands in for the sound module: notes in the file PLAYED which files it is asked to play, and makes no
// sound.
#include <cstdlib>
#include <fstream>

#include "platform/qt/sound/SoundPlayer.h"

namespace {

class Recorder : public quillbox::SoundPlayer {
 public:
  void Play(const QString& path) override {
    std::ofstream(std::getenv("PLAYED"), std::ios::app) << path.toStdString() << '\n';
  }
};

}  // namespace

extern "C" Q_DECL_EXPORT quillbox::SoundPlayer* quillboxMakeSoundPlayer() { return new Recorder; }

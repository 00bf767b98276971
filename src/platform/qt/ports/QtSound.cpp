#include "platform/qt/ports/QtSound.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLibrary>

#include "platform/linux/system/WaveFile.h"
#include "platform/qt/base/QtText.h"
#include "platform/qt/sound/SoundPlayer.h"

namespace quillbox {

namespace {

// Where the module lies: beside the program in a build, among the libraries when installed.
constexpr const char* kPlaces[] = {"/quillbox-sound.so", "/../libexec/quillbox/quillbox-sound.so"};

SoundPlayer* LoadPlayer() {
  for (const char* place : kPlaces) {
    const QString path = QCoreApplication::applicationDirPath() + QString::fromLatin1(place);
    if (!QFileInfo(path).isFile()) continue;
    // The module stays loaded when this goes away.
    QLibrary module(path);
    const auto make = reinterpret_cast<MakeSoundPlayerFunction>(module.resolve(kMakeSoundPlayer));
    if (make) return make();
  }
  return nullptr;
}

}  // namespace

QtSound::QtSound() = default;
QtSound::~QtSound() = default;

SoundPlayer* QtSound::Player() {
  if (!lookedFor_) player_.reset(LoadPlayer());
  lookedFor_ = true;
  return player_.get();
}

void QtSound::Play(const Text& path) {
  if (!IsPlayableWave(path)) return;
  if (SoundPlayer* const player = Player()) player->Play(QFileInfo(ToQt(path)).absoluteFilePath());
}

}  // namespace quillbox
